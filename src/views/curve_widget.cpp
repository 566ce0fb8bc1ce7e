#include "views/curve_widget.h"

#include "operation/status_colours.h"

#include <QHelpEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QToolTip>

namespace kal {

namespace {

constexpr int ACHSE_BREITE = 96;  ///< strip of the unit labels left of the plot
constexpr int RAND_RECHTS = 12;
constexpr int RAND_OBEN = 8;
constexpr int BAND_HOEHE = 20;
constexpr int MARKEN_HOEHE = 20;

QColor bgr(uint32_t f)
{
    return QColor::fromRgb(colourRgb(f));
}

} // namespace

CurveWidget::CurveWidget(QWidget *parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("picture1"));
    setMouseTracking(true);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

QRect CurveWidget::plotRect() const
{
    return QRect(ACHSE_BREITE, RAND_OBEN, std::max(10, width() - ACHSE_BREITE - RAND_RECHTS),
                 std::max(10, height() - RAND_OBEN - BAND_HOEHE - MARKEN_HOEHE));
}

void CurveWidget::setParameter(const CurvePaintParams &p)
{
    m_p = p;
    rescale();
    update();
}

void CurveWidget::rescale()
{
    const QRect plot = plotRect();
    if (m_p.seite) {
        m_skala = scalePage(*m_p.seite, m_p.kanaele, m_p.slot, plot.height(), plot.width(), m_p.optionen);
        m_band = programBand(*m_p.seite, m_p.segmentText, m_skala);
    } else {
        m_skala = CurveScale{};
        m_band.clear();
    }
}

void CurveWidget::resizeEvent(QResizeEvent *)
{
    // A resize re-lays the page only: the same points on the new width.
    rescale();
}

void CurveWidget::paintEvent(QPaintEvent *)
{
    QPainter p(this);
    p.fillRect(rect(), palette().window());
    const QRect plot = plotRect();
    drawBackground(p, plot);
    if (m_p.seite) {
        p.setRenderHint(QPainter::Antialiasing);
        drawCurves(p, plot);
        p.setRenderHint(QPainter::Antialiasing, false);
    }
    band(p, plot);
    drawAxis(p, plot);
    cursor(p, plot);
}

void CurveWidget::drawBackground(QPainter &p, const QRect &plot)
{
    p.fillRect(plot, Qt::white);
    QPen gitter(QColor(220, 220, 220));
    gitter.setCosmetic(true);
    p.setPen(gitter);
    for (int k = 1; k < 4; ++k) {
        const int x = plot.left() + int(plot.width() * k / 4.0);
        p.drawLine(x, plot.top(), x, plot.bottom());
    }
    for (int k = 1; k < 5; ++k) {
        const int y = plot.top() + int(plot.height() * k / 5.0);
        p.drawLine(plot.left(), y, plot.right(), y);
    }
    QPen null(QColor(90, 90, 90));
    null.setCosmetic(true);
    p.setPen(null);
    const int y0 = plot.top() + int(m_skala.Null_Y);
    p.drawLine(plot.left(), y0, plot.right(), y0); // NullLine
    p.setPen(palette().color(QPalette::Mid));
    p.drawRect(plot.adjusted(0, 0, -1, -1));
}

void CurveWidget::drawCurves(QPainter &p, const QRect &plot)
{
    const PlotPage &s = *m_p.seite;
    p.save();
    p.translate(plot.topLeft());
    p.setClipRect(QRect(QPoint(0, 0), plot.size()));
    auto linie = [&](double x1, double y1, double x2, double y2, QPainterPath &path, bool &offen) {
        if (!offen) {
            path.moveTo(x1, y1);
            offen = true;
        }
        path.lineTo(x2, y2);
    };
    for (int c = 0; c < m_skala.kanaele; ++c) {
        const QColor farbe = m_p.farben[size_t(c)];
        // Actual values: solid, a polyline broken where a segment is hidden.
        QPainterPath ist, soll, out;
        bool offen = false, offenOut = false;
        for (int i = 0; i < SEGMENTE; ++i) {
            const double x1 = xOfPoint(m_skala, i), x2 = xOfPoint(m_skala, i + 1);
            if (actualVisible(s, c, i))
                linie(x1, yOfValue(m_skala, c, s.Punkt_Ist[size_t(c)][size_t(i)]), x2,
                      yOfValue(m_skala, c, s.Punkt_Ist[size_t(c)][size_t(i + 1)]), ist, offen);
            else
                offen = false;
            if (setpointVisible(m_skala, s, m_p.regeln, c, i)) {
                soll.moveTo(x1, yOfValue(m_skala, c, s.Punkt_Soll[size_t(c)][size_t(i)]));
                soll.lineTo(x2, yOfValue(m_skala, c, s.Punkt_Soll[size_t(c)][size_t(i + 1)]));
            }
            if (outputVisible(s, m_p.regeln, c, i))
                linie(x1, Y_Out(m_skala, s.Punkt_Out[size_t(c)][size_t(i)]), x2,
                      Y_Out(m_skala, s.Punkt_Out[size_t(c)][size_t(i + 1)]), out, offenOut);
            else
                offenOut = false;
        }
        QPen pen(farbe, 1.6);
        pen.setCosmetic(true);
        p.setPen(pen);
        p.drawPath(ist);
        pen.setWidthF(3);
        pen.setCapStyle(Qt::FlatCap);
        p.setPen(pen);
        p.drawPath(soll);
        QPen dot(farbe, 1, Qt::DotLine);
        dot.setCosmetic(true);
        p.setPen(dot);
        p.drawPath(out);
    }
    p.restore();
}

void CurveWidget::band(QPainter &p, const QRect &plot)
{
    const QRect grund(plot.left(), plot.bottom() + 1, plot.width(), BAND_HOEHE);
    p.fillRect(grund, palette().color(QPalette::Base)); // ProgDat 0
    p.setPen(palette().color(QPalette::Mid));
    p.drawRect(grund.adjusted(0, 0, -1, -1));
    QFont f = font();
    f.setPointSizeF(f.pointSizeF() * 0.85);
    p.setFont(f);
    for (const BandField &b : m_band) {
        const QRectF r(plot.left() + b.x, grund.top(), b.breite, grund.height());
        p.fillRect(r, bgr(b.farbe));
        p.setPen(palette().color(QPalette::Mid));
        p.drawRect(r.adjusted(0, 0, -1, -1));
        p.setPen(Qt::black);
        p.drawText(r.adjusted(3, 0, -2, 0), Qt::AlignVCenter | Qt::AlignLeft,
                   p.fontMetrics().elidedText(b.text.simplified(), Qt::ElideRight, int(r.width()) - 5));
    }
    p.setFont(font());
}

void CurveWidget::drawAxis(QPainter &p, const QRect &plot)
{
    // Unit labels at the top of the value axis, or where the right button put them.
    const int h = fontMetrics().height() + 2;
    const double y0 = m_p.maus.einheiten ? m_p.maus.Einheit_Y + plot.top() : plot.top();
    int zeile = 0;
    for (int g = 0; g < m_skala.Einheit_Zahl; ++g) {
        const QString t = m_p.maus.einheiten ? m_p.maus.einheitText[size_t(g)] : m_skala.Einheit_Label[size_t(g)];
        if (t.isEmpty())
            continue;
        const double y = unitLabelTop(y0, plot.top(), plot.bottom(), h, zeile++);
        const int c = m_skala.Einheit_Kanal[size_t(std::min(g + 1, 4))];
        p.setPen(g < 4 ? m_p.farben[size_t(c)] : palette().color(QPalette::WindowText));
        p.drawText(QRectF(2, y, ACHSE_BREITE - 8, h), Qt::AlignRight | Qt::AlignVCenter, t.trimmed());
    }
    // Time marks under the band.
    p.setPen(palette().color(QPalette::WindowText));
    const int y = plot.bottom() + BAND_HOEHE + 2;
    for (int k = 0; k < 5; ++k) {
        const QString t = m_p.marken[size_t(k)];
        const int w = fontMetrics().horizontalAdvance(t) + 4;
        int x = plot.left() + int(plot.width() * k / 4.0) - w / 2;
        x = std::clamp(x, 0, width() - w);
        p.drawText(QRect(x, y, w, MARKEN_HOEHE - 2), Qt::AlignCenter, t);
    }
}

void CurveWidget::cursor(QPainter &p, const QRect &plot)
{
    const CursorReading &m = m_p.maus;
    if (!m.linie)
        return;
    const int x = plot.left() + int(m.x);
    p.setPen(QPen(Qt::black, 1, Qt::DashLine)); // MouseLine
    p.drawLine(x, plot.top(), x, plot.bottom());
    const QFontMetrics fm = fontMetrics();
    auto schild = [&](const QString &t, double y, const QColor &farbe) {
        if (t.isEmpty())
            return;
        const int w = fm.horizontalAdvance(t) + 8;
        int links = x + 6;
        if (links + w > plot.right())
            links = x - 6 - w;
        const QRect r(links, int(std::clamp<double>(y, plot.top(), plot.bottom() - fm.height())), w, fm.height() + 2);
        p.fillRect(r, QColor(255, 255, 255, 225));
        p.setPen(farbe);
        p.drawText(r, Qt::AlignCenter, t);
    };
    schild((m.text[0] + QLatin1Char(' ') + m.text[1]).trimmed(), plot.top() + 2, Qt::black);
    // One line per channel at the curve's height, pushed apart so they don't overlap.
    std::vector<std::pair<double, int>> zeilen;
    for (int z = 2; z < MAUS_ZEILEN; ++z)
        if (!m.text[size_t(z)].isEmpty())
            zeilen.push_back({plot.top() + m.y[size_t(z)] - fm.height() / 2.0, z});
    std::sort(zeilen.begin(), zeilen.end());
    double frei = plot.top() + fm.height() + 4;
    for (auto &[y, z] : zeilen) {
        y = std::max(y, frei);
        frei = y + fm.height() + 2;
        schild(m.text[size_t(z)].trimmed(), y, m_p.farben[size_t(z - 2)]);
    }
}

void CurveWidget::sendMouse(QMouseEvent *e, bool bewegung)
{
    const QRect plot = plotRect();
    int knopf = 0;
    const Qt::MouseButtons b = bewegung ? e->buttons() : Qt::MouseButtons(e->button());
    if (b & Qt::LeftButton)
        knopf = 1;
    else if (b & Qt::RightButton)
        knopf = 2;
    if (knopf == 0)
        return;
    Q_EMIT mouseAt(knopf, e->position().x() - plot.left(), e->position().y() - plot.top(), bewegung);
}

void CurveWidget::mousePressEvent(QMouseEvent *e)
{
    sendMouse(e, false);
}

void CurveWidget::mouseMoveEvent(QMouseEvent *e)
{
    sendMouse(e, true);
}

bool CurveWidget::event(QEvent *e)
{
    if (e->type() == QEvent::ToolTip) {
        // The band fields carry their segment text as tool tip.
        auto *h = static_cast<QHelpEvent *>(e);
        const QRect plot = plotRect();
        if (h->pos().y() > plot.bottom() && h->pos().y() <= plot.bottom() + BAND_HOEHE) {
            for (const BandField &b : m_band) {
                if (h->pos().x() >= plot.left() + b.x && h->pos().x() < plot.left() + b.x + b.breite) {
                    QToolTip::showText(h->globalPos(), b.text.trimmed(), this);
                    return true;
                }
            }
        }
        QToolTip::hideText();
        e->ignore();
        return true;
    }
    return QWidget::event(e);
}

} // namespace kal
