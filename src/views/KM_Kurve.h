#pragma once
// KM_Kurve, the curve window of a recorded batch: the batch's names and span
// at the top, the channel legend, the picture of the page with its cursor,
// the button bar 0..7 (F1..F8), and at the side the picture of the load and
// the batch's texts. It shows what the curve store (`Kurve`) holds and hands
// its buttons and mouse to the curve routines.

#include "views/curve_widget.h"

#include <QTimer>
#include <QWidget>
#include <array>

class QLabel;
class QPlainTextEdit;
class QPushButton;

namespace kal {

class KM_Kurve : public QWidget {
    Q_OBJECT
public:
    explicit KM_Kurve(QWidget *parent = nullptr);
    ~KM_Kurve() override;

    /// `Charge_geladen` for `Kurve_Datei`, then shows the batch.
    void load();
    /// The batch grew (a live refresh): shows it again, at most five times a
    /// second.
    void refreshLive();
    /// Captions in the current language.
    void setCaptions();

    CurveWidget *plotWidget() const { return m_bild; }
    QPushButton *keyButton(int i) const { return m_taste[size_t(i)]; }
    QPushButton *Tast_Strom() const { return m_strom; }
    /// The window's texts, for the tests: names, span, marks, info.
    QString labelText(const QString &name) const;

Q_SIGNALS:
    /// Button 2: the batch browser is wanted.
    void loadRequested();
    /// Button 7: back to the live page.
    void backToLivePage();
    /// Button 4: the value list of the batch.
    void liste();
    /// `Tast_Strom`: the element currents of the page in the 16-channel view.
    void strom();

protected:
    void keyPressEvent(QKeyEvent *e) override;

private:
    void showBatch();
    void KurveAct();
    void keyClicked(int i);
    void mouseAt(int button, double x, double y, bool bewegung);

    QLabel *m_name = nullptr;       // label 0
    QLabel *m_charge = nullptr;     // label 12
    QLabel *m_spanne = nullptr;     // start, end, duration
    QLabel *m_legende = nullptr;    // Label3: the channels in their colours
    QLabel *m_bildLadung = nullptr; // picture of the load
    QPlainTextEdit *m_info = nullptr;
    CurveWidget *m_bild = nullptr;
    QWidget *m_fokusPark = nullptr;
    std::array<QPushButton *, 8> m_taste{};
    QPushButton *m_strom = nullptr; // Tast_Strom
    QTimer m_neu;
};

} // namespace kal
