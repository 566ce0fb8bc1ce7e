#include "views/KM_Menue.h"

#include "core/plant_state.h"
#include "curves/curve_colours.h"
#include "curves/element_export.h"
#include "curves/live_curve.h"
#include "core/dates.h"
#include "views/curve_widget.h"
#include "views/form_keys.h"
#include "operation/live_page.h"
#include "operation/ui_text.h"
#include "recording/usb_import.h"
#include "views/KM_MDI.h"
#include "views/colours.h"

#include <algorithm>

#include <QFileInfo>
#include <QGridLayout>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

namespace kal {

namespace {

QLabel *cellLabel(QWidget *parent, Qt::Alignment a = Qt::AlignLeft | Qt::AlignVCenter)
{
    auto *l = new QLabel(parent);
    l->setAlignment(a);
    l->setTextFormat(Qt::PlainText);
    l->setMinimumWidth(70);
    return l;
}

} // namespace

KM_Menue::KM_Menue(QWidget *parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("KM_Menue"));
    auto *haupt = new QVBoxLayout(this);

    auto *raster = new QGridLayout;
    raster->setHorizontalSpacing(10);
    raster->setVerticalSpacing(4);
    for (int c = 0; c < 7; ++c) {
        m_kopf[c] = cellLabel(this);
        QFont f = m_kopf[c]->font();
        f.setBold(true);
        m_kopf[c]->setFont(f);
        raster->addWidget(m_kopf[c], 0, c);
    }
    for (int i = 0; i < 8; ++i) {
        FurnaceRow &r = m_reihen[i];
        r.OfenSelect = new QPushButton(this);
        r.OfenSelect->setMinimumWidth(190);
        r.OfenSelect->setMinimumHeight(40);
        r.OfenSelect->setStyleSheet(QStringLiteral("text-align: left; padding: 2px 6px;"));
        connect(r.OfenSelect, &QPushButton::clicked, this, [this, i] { furnaceClicked(i); });
        r.Status = cellLabel(this, Qt::AlignCenter);
        r.Status->setAutoFillBackground(true);
        r.Status->setFrameShape(QFrame::Panel);
        r.Status->setFrameShadow(QFrame::Sunken);
        r.Status->setMinimumWidth(120);
        r.Befehl = cellLabel(this);
        r.Befehl->setMinimumWidth(180);
        r.Soll_Bef = cellLabel(this);
        r.Soll_Bef->setMinimumWidth(150);
        r.Sollwert = cellLabel(this, Qt::AlignRight | Qt::AlignVCenter);
        r.Istwert = cellLabel(this, Qt::AlignRight | Qt::AlignVCenter);
        r.Stellwert = cellLabel(this);
        r.Stellwert->setMinimumWidth(130);
        raster->addWidget(r.OfenSelect, i + 1, 0);
        raster->addWidget(r.Status, i + 1, 1);
        raster->addWidget(r.Befehl, i + 1, 2);
        raster->addWidget(r.Soll_Bef, i + 1, 3);
        raster->addWidget(r.Sollwert, i + 1, 4);
        raster->addWidget(r.Istwert, i + 1, 5);
        raster->addWidget(r.Stellwert, i + 1, 6);
    }
    raster->setColumnStretch(2, 1);
    raster->setColumnStretch(3, 1);
    haupt->addLayout(raster);
    haupt->addStretch(1); // rows stay at the top when no detail is shown

    // Detail of the selected furnace: its data.
    m_detail = new QGroupBox(this);
    auto *dl = new QVBoxLayout(m_detail);
    auto *dOben = new QHBoxLayout;
    m_detailText = new QLabel(m_detail);
    m_detailText->setTextFormat(Qt::PlainText);
    m_detailText->setFont(QFont(QStringLiteral("DejaVu Sans Mono")));
    m_detailText->setAlignment(Qt::AlignTop | Qt::AlignLeft);
    dOben->addWidget(m_detailText);
    // The online curve of the furnace: its last hour from the live ring.
    auto *kurve = new QVBoxLayout;
    auto *kKopf = new QHBoxLayout;
    m_liveLegende = new QLabel(m_detail);
    m_liveLegende->setTextFormat(Qt::RichText);
    m_liveLegende->setWordWrap(true);
    m_label2 = new QLabel(m_detail);
    m_label2->setTextFormat(Qt::PlainText);
    kKopf->addWidget(m_liveLegende, 1);
    kKopf->addWidget(m_label2);
    kurve->addLayout(kKopf);
    m_liveBild = new CurveWidget(m_detail);
    m_liveBild->setObjectName(QStringLiteral("Kurve_Online"));
    connect(m_liveBild, &CurveWidget::mouseAt, this, [this](int knopf, double x, double y, bool bewegung) {
        if (bewegung && plant.List16_Offen != 0)
            return;
        CurvePaintParams p = m_liveBild->parameter();
        if (!p.seite || m_liveOfen < 1)
            return;
        const LiveLabels b = liveMarks(m_liveOfen - 1, now());
        p.maus = Mouse_Werte(knopf, x, y, m_liveBild->scale(), *p.seite,
                             CursorFrame{b.start, plant.Live_Raster, plant.Ofen_Typ[m_liveOfen]});
        m_liveBild->setParameter(p);
    });
    kurve->addWidget(m_liveBild, 1);
    dOben->addLayout(kurve, 1);
    dl->addLayout(dOben, 1);
    auto *tasten = new QHBoxLayout;
    m_kurve = new QPushButton(m_detail);
    m_logdaten = new QPushButton(m_detail);
    connect(m_kurve, &QPushButton::clicked, this, [] {
        KM_MDI *w = mainWindow();
        const int n = plant.Seite_Ofen;
        if (!w || n < 1 || n > 8)
            return;
        // The batch the furnace writes now; without one the browser.
        const QString datei = plant.Charge_Datei[n - 1];
        if (!datei.isEmpty() && QFileInfo(datei).isFile())
            w->showCurve(datei);
        else
            w->showBatchBrowser();
    });
    connect(m_logdaten, &QPushButton::clicked, this, [] {
        if (KM_MDI *w = mainWindow())
            w->showLogBook(plant.Seite_Ofen);
    });
    m_strom = new QPushButton(m_detail);
    connect(m_strom, &QPushButton::clicked, this, [] {
        if (KM_MDI *w = mainWindow())
            w->showElementView(plant.Seite_Ofen);
    });
    tasten->addWidget(m_kurve);
    tasten->addWidget(m_logdaten);
    tasten->addWidget(m_strom);
    tasten->addStretch(1);
    dl->addLayout(tasten);
    m_detail->setMinimumHeight(260);

    // The element history of the selected furnace, with its export.
    m_elemente = new QGroupBox(this);
    auto *el = new QVBoxLayout(m_elemente);
    m_rxList = new QListWidget(m_elemente);
    m_rxList->setFont(QFont(QStringLiteral("DejaVu Sans Mono")));
    el->addWidget(m_rxList, 1);
    m_rxExport = new QPushButton(m_elemente);
    connect(m_rxExport, &QPushButton::clicked, this, [this] { ElementStatistik(m_rxOfen); });
    el->addWidget(m_rxExport, 0, Qt::AlignRight);
    m_elemente->setVisible(false);

    // The sources of the USB import and its switch.
    m_usb = new QGroupBox(QStringLiteral("USB-Import"), this);
    auto *ul = new QVBoxLayout(m_usb);
    m_quellListe = new QListWidget(m_usb);
    ul->addWidget(m_quellListe, 1);
    m_usbText = new QLabel(m_usb);
    m_usbText->setTextFormat(Qt::PlainText);
    ul->addWidget(m_usbText);
    m_usbTaste = new QPushButton(m_usb);
    m_usbTaste->setCheckable(true);
    connect(m_usbTaste, &QPushButton::clicked, this, [this] {
        USB_Button();
        showUsb();
    });
    ul->addWidget(m_usbTaste, 0, Qt::AlignRight);
    m_usb->setVisible(false);

    auto *mitte = new QHBoxLayout;
    mitte->addWidget(m_detail, 6);
    mitte->addWidget(m_elemente, 4);
    mitte->addWidget(m_usb, 2);
    haupt->addLayout(mitte, 3);

    auto *unten = new QHBoxLayout;
    m_logList = new QListWidget(this);
    m_logList->setMaximumHeight(90);
    unten->addWidget(m_logList, 1);
    m_meldungen = new QPushButton(this);
    connect(m_meldungen, &QPushButton::clicked, this, [] {
        if (KM_MDI *w = mainWindow())
            w->showAlarms(false);
    });
    unten->addWidget(m_meldungen);
    haupt->addLayout(unten);

    for (const QString &line : plant.LogList)
        m_logList->addItem(line);

    setPageOnFocus(this, 3); // the page in front for printing
    setCaptions();
    refreshPageNow();
    m_timer1.setInterval(100);
    connect(&m_timer1, &QTimer::timeout, this, [this] {
        if (pageTick())
            showModal();
        showUsb();
    });
    m_timer1.start();
}

KM_Menue::~KM_Menue()
{
    livePageClosed();
}

void KM_Menue::showLogLine(const QString &line)
{
    m_logList->addItem(line);
    m_logList->setCurrentRow(m_logList->count() - 1);
}

void KM_Menue::setCaptions()
{
    setWindowTitle(Text_Id(text::MENU).trimmed());
    const int ids[7] = {text::FURNACE, text::STATE, text::COMMAND, text::PRESET,
                         text::SET_VALUE, text::ACTUAL_VALUE, text::END};
    // A heading keeps its whole text in every language: its column is at
    // least as wide as the heading ("actual value" is wider than the values).
    for (int c = 0; c < 7; ++c) {
        m_kopf[c]->setText(Text_Id(ids[c]).trimmed());
        const int textWidth = m_kopf[c]->fontMetrics().horizontalAdvance(m_kopf[c]->text());
        m_kopf[c]->setMinimumWidth(std::max(70, textWidth + 4));
    }
    m_meldungen->setText(Text_Id(text::MESSAGES).trimmed());
    m_rxExport->setText(QStringLiteral("CSV-Export"));
    m_kurve->setText(Text_Id(text::TEMPERATURE_CURVE).trimmed());
    m_logdaten->setText(Text_Id(text::LOG_DATA).trimmed());
    m_strom->setText(Text_Id(text::CURRENT_A).trimmed());
    m_liveOfen = 0; // the legend in the new language
    showModal();
    showUsb();
}

void KM_Menue::showModal()
{
    for (int i = 0; i < 8; ++i) {
        const PageRow &z = Seite.Zeile[i];
        FurnaceRow &r = m_reihen[i];
        r.OfenSelect->setText(z.OfenSelect);
        r.OfenSelect->setToolTip(z.OfenSelect_Tipp);
        QFont f = r.OfenSelect->font();
        f.setBold(z.Markiert);
        r.OfenSelect->setFont(f);
        r.Status->setText(z.Status);
        QPalette p = r.Status->palette();
        p.setColor(QPalette::Window, qtColour(z.Status_Farbe, palette()));
        r.Status->setPalette(p);
        r.Befehl->setText(z.Befehl);
        r.Soll_Bef->setText(z.Soll_Bef);
        r.Sollwert->setText(z.Sollwert);
        r.Istwert->setText(z.Istwert);
        r.Stellwert->setText(z.Stellwert);
    }
    showDetail();
}

void KM_Menue::showDetail()
{
    const int n = plant.Seite_Ofen;
    m_detail->setVisible(Seite.Detail != PageDetailKind::Keine && n >= 1 && n <= 8);
    if (!m_detail->isVisible())
        return;
    const PageDetail d = pageDetailText(n - 1);
    m_detail->setTitle(d.titel);
    m_detailText->setText(d.zeilen.join(QLatin1Char('\n')));
    m_strom->setVisible(plant.Element_Spuren[n - 1] > 0);
    const bool kurve = Seite.Detail == PageDetailKind::Kurve;
    m_liveBild->setVisible(kurve);
    m_liveLegende->setVisible(kurve);
    m_label2->setVisible(kurve);
    if (kurve && m_liveOfen != n) {
        KurveInit();
        Kurve_Online();
    }
}

void KM_Menue::KurveInit()
{
    const int n = plant.Seite_Ofen;
    m_liveOfen = n;
    if (n < 1 || n > OFEN_MAX)
        return;
    QStringList legende;
    for (int c = 0; c < plant.Kanal_Zahl[n] && c < SEITEN_KANAELE; ++c)
        legende << QStringLiteral("<span style='color:%1; white-space:nowrap'>&#9632;&nbsp;%2</span>")
                       .arg(QColor::fromRgb(colourRgb(Kurve_Farbe(n, c))).name(),
                            plant.Kanal_Name(n, c).simplified().toHtmlEscaped());
    m_liveLegende->setText(legende.join(QStringLiteral("&nbsp;&nbsp; ")));
}

void KM_Menue::Kurve_Online()
{
    const int n = plant.Seite_Ofen;
    if (n < 1 || n > OFEN_MAX || !m_liveBild->isVisible())
        return;
    if (m_liveOfen != n)
        KurveInit();
    m_liveSeite = livePage(n - 1);
    const LiveLabels b = liveMarks(n - 1, now());
    CurvePaintParams p;
    p.seite = &m_liveSeite;
    p.kanaele = plant.Kanal_Zahl[n];
    p.slot = n;
    p.regeln = CurveRules{plant.Ofen_Typ[n], plant.Kurve_Option != 0};
    for (int c = 0; c < SEITEN_KANAELE; ++c)
        p.farben[size_t(c)] = QColor::fromRgb(colourRgb(Kurve_Farbe(n, c)));
    p.marken = b.marken;
    p.optionen = liveScaleOptions(n - 1);
    p.maus = MAUS_AUS(); // a new sample removes the cursor
    m_liveBild->setParameter(p);
    m_label2->setText(b.Label2);
}

void KM_Menue::showElements()
{
    m_rxOfen = plant.Seite_Ofen;
    const ElementHistory b = elementHistory(m_rxOfen);
    m_rxList->clear();
    m_rxList->addItems(b.zeilen);
    m_rxList->scrollToBottom();
    m_elemente->setTitle(b.caption);
    m_rxExport->setEnabled(!b.zeilen.isEmpty());
    const bool mitElementen = m_rxOfen >= 1 && m_rxOfen <= 8 && plant.Element_Spuren[m_rxOfen - 1] > 0;
    m_elemente->setVisible(!b.zeilen.isEmpty() || mitElementen);
}

void KM_Menue::showUsb()
{
    const UsbDisplay a = USB_ACT();
    m_usb->setVisible(plant.USB_Menue != 0 || a.aktiv);
    if (!m_usb->isVisible())
        return;
    QStringList jetzt;
    for (int i = 0; i < m_quellListe->count(); ++i)
        jetzt << m_quellListe->item(i)->text();
    if (jetzt != USB.Quell_Liste) {
        m_quellListe->clear();
        m_quellListe->addItems(USB.Quell_Liste);
    }
    m_quellListe->setCurrentRow(a.aktiv ? USB.USB_Index - 1 : -1);
    m_usbText->setText(a.text);
    m_usbTaste->setText(a.caption);
    m_usbTaste->setChecked(a.aktiv);
}

void KM_Menue::furnaceClicked(int n)
{
    furnaceRowClicked(Seite, n);
    showModal();
}

void KM_Menue::keyPressEvent(QKeyEvent *e)
{
    // Keys 1..8 select a furnace row, Escape clears the selection.
    if (e->key() >= Qt::Key_1 && e->key() <= Qt::Key_8) {
        furnaceClicked(e->key() - Qt::Key_1);
        return;
    }
    if (e->key() == Qt::Key_Escape) {
        Kein_Ofen(Seite);
        showModal();
        return;
    }
    QWidget::keyPressEvent(e);
}

} // namespace kal
