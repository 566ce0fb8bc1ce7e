#pragma once
// CurveWidget, the picture of one page of curves (`picture1`): the unit labels
// of the value axis at the left, the plot, the programme band under it and
// the time marks under that. It paints from one parameter struct, in layers:
// back (grid, zero line) -> curves -> cursor and readout. The scales are made
// from the page and the plot's size at each paint; the reading under the
// mouse is handed back to the window through `maus`.

#include "curves/curve_scale.h"
#include "curves/cursor.h"

#include <QColor>
#include <QWidget>
#include <array>
#include <vector>

namespace kal {

/// Everything one paint needs.
struct CurvePaintParams {
    const PlotPage *seite = nullptr;
    int kanaele = 0;
    int slot = 0;
    CurveRules regeln;
    std::array<QColor, SEITEN_KANAELE> farben;
    std::array<QString, 21> segmentText;   ///< Segment_Text for the band
    std::array<QString, 5> marken;         ///< time labels of points 0, 90, 180, 270, 360
    CursorReading maus;                     ///< cursor and readout
    ScaleOptions optionen;               ///< the live page scales otherwise
};

class CurveWidget : public QWidget {
    Q_OBJECT
public:
    explicit CurveWidget(QWidget *parent = nullptr);

    /// New page or new reading: repaints.
    void setParameter(const CurvePaintParams &p);
    const CurvePaintParams &parameter() const { return m_p; }
    /// The scales of the last layout (valid after the first resize).
    const CurveScale &scale() const { return m_skala; }
    /// The plot in widget coordinates.
    QRect plotRect() const;

    QSize minimumSizeHint() const override { return {560, 260}; }

Q_SIGNALS:
    /// A press (button 1 left, 2 right) or, with `bewegung`, a move over the
    /// plot; x and y in pixels of the plot.
    void mouseAt(int button, double x, double y, bool bewegung);

protected:
    void paintEvent(QPaintEvent *) override;
    void resizeEvent(QResizeEvent *) override;
    void mousePressEvent(QMouseEvent *e) override;
    void mouseMoveEvent(QMouseEvent *e) override;
    bool event(QEvent *e) override;

private:
    void rescale();
    void drawBackground(QPainter &p, const QRect &plot);
    void drawCurves(QPainter &p, const QRect &plot);
    void band(QPainter &p, const QRect &plot);
    void drawAxis(QPainter &p, const QRect &plot);
    void cursor(QPainter &p, const QRect &plot);
    void sendMouse(QMouseEvent *e, bool bewegung);

    CurvePaintParams m_p;
    CurveScale m_skala;
    std::vector<BandField> m_band;
};

} // namespace kal
