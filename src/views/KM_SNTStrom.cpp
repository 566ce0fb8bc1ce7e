#include "views/KM_SNTStrom.h"

#include "config/paths.h"
#include "config/text_ids.h"
#include "core/conversions.h"
#include "curves/element_view.h"
#include "views/form_keys.h"

#include <QFileInfo>
#include <QHBoxLayout>
#include <QPainter>
#include <QPainterPath>
#include <QPushButton>
#include <QVBoxLayout>

namespace kal {

namespace {

constexpr int STROM_SEITE = 6;   ///< Aktive_Seite of the view
constexpr int ACHSE = 64;        ///< scale labels left of the furnace
constexpr int RAND = 16;
constexpr int WERT_ABSTAND = 15; ///< value labels beside their bar
constexpr int FUSS = 56;         ///< under the furnace: element names, button

/// The plant's own picture of the furnace, if there is one.
QString bildDatei(int ofenNr)
{
    for (const QString &n : {QStringLiteral("OVDSSNT%1.JPG").arg(ofenNr), QStringLiteral("OVDSSNT%1.BMP").arg(ofenNr)}) {
        const QString p = dataFile(n);
        if (QFileInfo(p).isFile())
            return p;
    }
    return QString();
}

/// The schematic of a furnace: the casing, the chamber, and one heating
/// element a bar, as rods on the chamber walls; `teile` 2 draws the two
/// halves of a large furnace.
void ofenZeichnen(QPainter &p, const QRectF &r, int elemente, int teile)
{
    p.save();
    p.setRenderHint(QPainter::Antialiasing);
    p.setPen(QPen(QColor(90, 90, 90), 2));
    p.setBrush(QColor(214, 214, 208));
    p.drawRoundedRect(r, 10, 10);
    const double h = (r.height() - 30) / teile;
    for (int t = 0; t < teile; ++t) {
        const QRectF kammer(r.left() + 18, r.top() + 15 + t * h, r.width() - 36, h - 12);
        p.setPen(QPen(QColor(120, 110, 100), 1.5));
        p.setBrush(QColor(250, 236, 214));
        p.drawRect(kammer);
        const int n = std::max(1, elemente / teile);
        const double schritt = kammer.width() / n;
        QPen heiz(QColor(200, 80, 40), 2.5);
        p.setPen(heiz);
        for (int e = 0; e < n; ++e) {
            QPainterPath zick;
            const double x = kammer.left() + schritt * (e + 0.5);
            zick.moveTo(x, kammer.top() + 6);
            for (int k = 1; k <= 8; ++k)
                zick.lineTo(x + ((k % 2) ? -4 : 4), kammer.top() + 6 + k * (kammer.height() - 12) / 8);
            p.drawPath(zick);
        }
    }
    p.restore();
}

} // namespace

KM_SNTStrom::KM_SNTStrom(QWidget *parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("KM_SNTStrom"));
    auto *l = new QVBoxLayout(this);
    l->addStretch(1);
    auto *tasten = new QHBoxLayout;
    m_zurueck = new QPushButton(this);
    m_zurueck->setObjectName(QStringLiteral("Taste7"));
    connect(m_zurueck, &QPushButton::clicked, this, [this] { Q_EMIT backToLivePage(); });
    tasten->addStretch(1);
    tasten->addWidget(m_zurueck);
    l->addLayout(tasten);
    m_timer.setInterval(1000);
    connect(&m_timer, &QTimer::timeout, this, &KM_SNTStrom::Seite_Act);
    setPageOnFocus(this, STROM_SEITE);
    setMinimumSize(760, 520);
    resize(900, 560);
}

void KM_SNTStrom::setCaptions()
{
    m_zurueck->setText(Text_Id(text::BACK).trimmed());
    setWindowTitle(Strom.caption);
}

QRect KM_SNTStrom::scale() const
{
    return QRect(ACHSE + RAND, RAND + fontMetrics().height(), width() - ACHSE - 2 * RAND - 40,
                 height() - 2 * RAND - FUSS - fontMetrics().height());
}

void KM_SNTStrom::onOpen(int ofenNr)
{
    openElementView(ofenNr, scale().height());
    setCaptions();
    Seite_Act();
    m_timer.start();
}

void KM_SNTStrom::Seite_Act()
{
    if (elementViewRefresh())
        update();
}

void KM_SNTStrom::resizeEvent(QResizeEvent *)
{
    // The bars take the new height of the scale at once.
    Strom.skalaHoehe = scale().height();
    for (Strom_Bar &b : Strom.bars)
        b.Bar_Wert = -1;
    elementViewRefresh();
}

void KM_SNTStrom::paintEvent(QPaintEvent *)
{
    QPainter p(this);
    p.fillRect(rect(), palette().window());
    const QRect s = scale();
    const int n = Strom.Strom_Ofen >= 1 ? std::clamp<int>(Strom.Element_Zahl[size_t(Strom.Strom_Ofen - 1)], 0, STROM_ELEMENTE) : 0;
    const QString bild = bildDatei(Strom.Strom_Ofen);
    if (!bild.isEmpty())
        p.drawImage(QRectF(s), QImage(bild));
    else
        ofenZeichnen(p, s, std::max(n, 1), Strom.bilder == 2 ? 2 : 1);

    // Scale_Y: 0, half and the top of the scale.
    const i16 grenze = n > 0 ? Strom.bars[0].Bar_Max : 0;
    p.setPen(palette().color(QPalette::WindowText));
    const int fh = fontMetrics().height();
    for (int k = 0; k <= 2; ++k) {
        const int y = s.bottom() - s.height() * k / 2;
        p.drawLine(s.left() - 6, y, s.left(), y);
        p.drawText(QRect(RAND, y - fh / 2, ACHSE - 4, fh), Qt::AlignRight | Qt::AlignVCenter,
                   formatNumber(grenze * k / 2.0, QStringLiteral("###0")) + QStringLiteral(" A"));
    }
    if (n == 0)
        return;
    const double feld = s.width() / double(n);
    const double breite = std::max(6.0, feld * 0.28);
    for (int e = 0; e < n; ++e) {
        const Strom_Bar &b = Strom.bars[size_t(e)];
        const double x = s.left() + feld * e + (feld - breite) / 2 - WERT_ABSTAND / 2.0;
        const QRectF bar(x, s.bottom() - b.hoehe, breite, b.hoehe);
        p.fillRect(bar, QColor(40, 110, 200, 190)); // the furnace shows through
        p.setPen(QColor(20, 60, 120));
        p.drawRect(QRectF(x, s.top(), breite, s.height())); // the bar's frame
        // Stromwert beside its bar, Heizlabel under the furnace.
        p.setPen(palette().color(QPalette::WindowText));
        p.save();
        p.translate(x + breite + WERT_ABSTAND, s.bottom() - 4);
        p.rotate(-90);
        p.drawText(QPointF(0, 0), b.Stromwert);
        p.restore();
        p.drawText(QRectF(s.left() + feld * e, s.bottom() + 4, feld, fh), Qt::AlignCenter, QString::number(e + 1));
    }
    QFont f = font();
    f.setBold(true);
    p.setFont(f);
    p.drawText(QRect(s.left(), 2, s.width(), fh), Qt::AlignLeft | Qt::AlignVCenter, Strom.caption);
}

} // namespace kal
