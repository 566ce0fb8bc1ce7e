#include "views/KM_View16.h"

#include "config/text_ids.h"
#include "core/conversions.h"
#include "core/plant_state.h"
#include "curves/curve_colours.h"
#include "curves/curve_store.h"
#include "curves/print_layout.h"
#include "curves/time_axis.h"
#include "curves/view16.h"
#include "operation/status_colours.h"
#include "views/form_keys.h"
#include "views/printing.h"

#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QPushButton>
#include <QVBoxLayout>

namespace kal {

namespace {

constexpr int ACHSE = 70;   ///< strip of the scale labels left of the plot
constexpr int RAND = 10;
constexpr int MARKEN = 22;  ///< time marks under the plot
constexpr int LEGENDE = 150; ///< names and values right of the plot
constexpr int VIEW_SEITE = 7; ///< Aktive_Seite of the view
const QString MONO = QStringLiteral("DejaVu Sans Mono");

QColor farbe(int c)
{
    return QColor::fromRgb(colourRgb(Kurve_Farbe(View16.View_Ofen, c)));
}

/// Where a printout of the view is offered: beside the batch's CSV file.
QString vorschlag(const QString &anhang)
{
    return QFileInfo(plant.CSV_Datei).absolutePath() + QLatin1Char('/') +
           QFileInfo(plant.Kurve_Datei).completeBaseName() + anhang;
}

} // namespace

View16Plot::View16Plot(QWidget *parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("picture1"));
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

QRect View16Plot::plotRect() const
{
    return QRect(ACHSE, RAND, std::max(10, width() - ACHSE - LEGENDE - RAND),
                 std::max(10, height() - RAND - MARKEN));
}

void View16Plot::setCursor(double x)
{
    m_cursor = x;
    update();
}

void View16Plot::paintEvent(QPaintEvent *)
{
    QPainter p(this);
    p.fillRect(rect(), palette().window());
    const QRect plot = plotRect();
    p.fillRect(plot, Qt::white);
    p.setPen(QColor(220, 220, 220));
    for (int k = 1; k < 4; ++k)
        p.drawLine(plot.left() + plot.width() * k / 4, plot.top(), plot.left() + plot.width() * k / 4, plot.bottom());
    for (int k = 1; k < 5; ++k)
        p.drawLine(plot.left(), plot.top() + plot.height() * k / 5, plot.right(), plot.top() + plot.height() * k / 5);
    p.setPen(palette().color(QPalette::Mid));
    p.drawRect(plot.adjusted(0, 0, -1, -1));

    // The scale: its top with the unit, its bottom 0.
    p.setPen(palette().color(QPalette::WindowText));
    const int h = fontMetrics().height();
    p.drawText(QRect(0, plot.top(), ACHSE - 6, h), Qt::AlignRight,
               formatNumber(View16.View_Max, QStringLiteral("#0")) + View16.View_Einheit);
    p.drawText(QRect(0, plot.bottom() - h, ACHSE - 6, h), Qt::AlignRight, QStringLiteral("0"));
    for (int k = 0; k < 5; ++k) {
        const QString t = View16.marken[size_t(k)];
        const int w = fontMetrics().horizontalAdvance(t) + 4;
        const int x = std::clamp(plot.left() + plot.width() * k / 4 - w / 2, 0, width() - w);
        p.drawText(QRect(x, plot.bottom() + 3, w, MARKEN - 4), Qt::AlignCenter, t);
    }

    const double pb = plot.width() / double(SEGMENTE);
    const View16Reading l = m_cursor >= 0 ? View_Mouse_Werte(m_cursor, plot.width()) : View16Reading{};
    if (View16.daten) {
        p.save();
        p.translate(plot.topLeft());
        p.setClipRect(QRect(QPoint(0, 0), plot.size()));
        p.setRenderHint(QPainter::Antialiasing);
        for (int c = 0; c < View16.View_Spuren; ++c) {
            QPainterPath pfad;
            const auto &s = View16.Punkt_Spur[size_t(c)];
            pfad.moveTo(0, view16Y(s[0], plot.height()));
            for (int i = 1; i < PUNKTE; ++i)
                pfad.lineTo(i * pb, view16Y(s[size_t(i)], plot.height()));
            QPen pen(farbe(c), 1.4);
            pen.setCosmetic(true);
            p.setPen(pen);
            p.drawPath(pfad);
        }
        p.restore();
    }
    // Legend: each curve's name, and its value under the cursor.
    const int x0 = plot.right() + 12;
    for (int c = 0; c < View16.View_Spuren; ++c) {
        const int y = plot.top() + c * (h + 1);
        p.fillRect(QRect(x0, y + 3, 10, h - 6), farbe(c));
        p.setPen(palette().color(QPalette::WindowText));
        p.drawText(QPoint(x0 + 16, y + fontMetrics().ascent()),
                   view16ChannelName(c).rightJustified(2) + QStringLiteral("  ") + l.werte[size_t(c)]);
    }
    if (l.punkt >= 0) {
        const int x = plot.left() + int(l.punkt * pb);
        p.setPen(QPen(Qt::black, 1, Qt::DashLine)); // MouseLine
        p.drawLine(x, plot.top(), x, plot.bottom());
        const QString t = l.datum + QLatin1Char(' ') + l.zeit;
        const int w = fontMetrics().horizontalAdvance(t) + 8;
        const QRect r(x + 6 + w > plot.right() ? x - 6 - w : x + 6, plot.top() + 2, w, h + 2);
        p.fillRect(r, QColor(255, 255, 255, 225));
        p.drawText(r, Qt::AlignCenter, t);
    }
}

void View16Plot::mousePressEvent(QMouseEvent *e)
{
    if (e->button() == Qt::LeftButton)
        setCursor(e->position().x() - plotRect().left());
}

KM_View16::KM_View16(QWidget *parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("KM_View16"));
    setModal(true);
    auto *haupt = new QVBoxLayout(this);
    m_titel = new QLabel(this);
    QFont f = m_titel->font();
    f.setBold(true);
    f.setPointSizeF(f.pointSizeF() * 1.15);
    m_titel->setFont(f);
    m_text = new QLabel(this);
    m_text->setTextFormat(Qt::PlainText);
    m_text->setFont(QFont(MONO));
    auto *kopf = new QHBoxLayout;
    kopf->addWidget(m_titel);
    kopf->addStretch(1);
    kopf->addWidget(m_text);
    haupt->addLayout(kopf);
    m_bild = new View16Plot(this);
    haupt->addWidget(m_bild, 1);
    m_taste = keyRow(this, haupt, [this](int i) { keyClicked(i); });
    auto *druck = new QHBoxLayout;
    m_drucken = new QPushButton(this);
    m_pdf = new QPushButton(QStringLiteral("Export PDF…"), this);
    connect(m_drucken, &QPushButton::clicked, this, [this] { drucken(false); });
    connect(m_pdf, &QPushButton::clicked, this, [this] { drucken(true); });
    druck->addStretch(1);
    druck->addWidget(m_drucken);
    druck->addWidget(m_pdf);
    haupt->addLayout(druck);
    setPageOnFocus(this, VIEW_SEITE);
    resize(1100, 640);
}

void KM_View16::setCaptions()
{
    for (int i = 0; i < 8; ++i)
        m_taste[size_t(i)]->setText(curveKeyCaption(i));
    m_drucken->setText(Text_Id(text::PRINT_PAGE).trimmed());
}

void KM_View16::onOpen()
{
    Tast_Strom();
    setCaptions();
    m_bild->setCursor(-1);
    showBatch();
}

void KM_View16::showBatch()
{
    setWindowTitle(QStringLiteral("Kalmeron: ") + View16.View_Titel);
    m_titel->setText(View16.View_Titel + QStringLiteral("   ") + View16.View_Text[0] + QStringLiteral("   ") +
                     View16.View_Text[1]);
    m_text->setText(View16.View_Text[2] + QLatin1Char('\n') + View16.View_Text[3] + QLatin1Char('\n') +
                    View16.View_Text[4]);
    for (int i = 0; i < 8; ++i)
        m_taste[size_t(i)]->setEnabled(i == TASTE_LADEN ? false : Kurve.Taste_An[size_t(i)]);
    m_bild->update();
}

void KM_View16::keyClicked(int i)
{
    if (view16Button(i)) {
        m_bild->setCursor(-1);
        showBatch();
        Q_EMIT seiteGeaendert();
    } else if (i == TASTE_CSV) {
        View_CSV_EXPORT(false);
    } else if (i == TASTE_LISTE) {
        KM_List16 liste(this);
        liste.onOpen();
        liste.exec();
    } else if (i == TASTE_ENDE) {
        accept();
    }
}

void KM_View16::drucken(bool pdf)
{
    outputWindow(this, pdf, vorschlag(QStringLiteral("_A.pdf")), false);
}

KM_List16::KM_List16(QWidget *parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("KM_List16"));
    auto *l = new QVBoxLayout(this);
    m_liste = new QListWidget(this);
    m_liste->setObjectName(QStringLiteral("List1"));
    m_liste->setFont(QFont(MONO));
    m_liste->setUniformItemSizes(true);
    m_kopf = listHeader(this, m_liste, 1);
    l->addWidget(m_kopf);
    l->addWidget(m_liste, 1);
    auto *tasten = new QHBoxLayout;
    auto *drucken = new QPushButton(Text_Id(text::PRINT_PAGE).trimmed(), this);
    drucken->setObjectName(QStringLiteral("Print_Button"));
    auto *pdf = new QPushButton(QStringLiteral("Export PDF…"), this);
    auto *ok = new QPushButton(Text_Id(text::OK).trimmed(), this);
    ok->setObjectName(QStringLiteral("OKButton"));
    connect(drucken, &QPushButton::clicked, this, [this] { this->drucken(false); });
    connect(pdf, &QPushButton::clicked, this, [this] { this->drucken(true); });
    connect(ok, &QPushButton::clicked, this, &QDialog::accept);
    tasten->addStretch(1);
    tasten->addWidget(drucken);
    tasten->addWidget(pdf);
    tasten->addWidget(ok);
    l->addLayout(tasten);
    resize(1000, 560);
}

void KM_List16::onOpen()
{
    plant.List16_Offen = TRUE16;
    setWindowTitle(QStringLiteral("Kalmeron: ") + View16.View_Titel);
    View_CSV_EXPORT(true);
    m_kopf->clear();
    m_kopf->addItem(View_Liste.kopf);
    m_liste->clear();
    m_liste->addItems(View_Liste.zeilen);
}

void KM_List16::done(int r)
{
    plant.List16_Offen = 0;
    QDialog::done(r);
}

void KM_List16::drucken(bool pdf)
{
    ListHead k = curveListHead();
    k.titel = QStringLiteral("Kalmeron: ") + View16.View_Titel;
    outputList(this, pdf, vorschlag(QStringLiteral("_A_Liste.pdf")), k, {View_Liste.kopf}, View_Liste.zeilen);
}

} // namespace kal
