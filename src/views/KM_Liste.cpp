#include "views/KM_Liste.h"

#include "config/text_ids.h"
#include "core/plant_state.h"
#include "curves/csv_export.h"
#include "curves/curve_store.h"
#include "curves/print_layout.h"
#include "views/form_keys.h"
#include "views/printing.h"

#include <QCheckBox>
#include <QFileInfo>
#include <QGridLayout>
#include <QCloseEvent>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

namespace kal {

namespace {

constexpr int SCHALTER = 11; ///< element of the row switches
const QString MONO = QStringLiteral("DejaVu Sans Mono");

} // namespace

KM_Liste::KM_Liste(QWidget *parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("KM_Liste"));
    auto *haupt = new QVBoxLayout(this);
    auto *wahl = new QGridLayout;
    wahl->setHorizontalSpacing(14);
    wahl->setVerticalSpacing(2);
    for (int i = 0; i < CHECKS; ++i) {
        m_txt[size_t(i)] = new QLabel(this);
        m_soll[size_t(i)] = new QCheckBox(this);
        m_ist[size_t(i)] = new QCheckBox(this);
        m_out[size_t(i)] = new QCheckBox(this);
        // Channels side by side, one column of checks each, under the row
        // names Soll, Ist, Out at the left.
        const int spalte = i + 1;
        wahl->addWidget(m_txt[size_t(i)], 0, spalte);
        wahl->addWidget(m_soll[size_t(i)], 1, spalte);
        wahl->addWidget(m_ist[size_t(i)], 2, spalte);
        wahl->addWidget(m_out[size_t(i)], 3, spalte);
        for (QCheckBox *c : {m_soll[size_t(i)], m_ist[size_t(i)], m_out[size_t(i)]})
            connect(c, &QCheckBox::clicked, this, &KM_Liste::haekchen);
    }
    for (int r = 0; r < 3; ++r) {
        m_zeile[size_t(r)] = new QLabel(this);
        wahl->addWidget(m_zeile[size_t(r)], r + 1, 0);
    }
    wahl->setColumnStretch(CHECKS + 1, 1);
    haupt->addLayout(wahl);

    m_liste = new QListWidget(this);
    m_liste->setObjectName(QStringLiteral("CSV_LIST"));
    m_liste->setFont(QFont(MONO));
    m_liste->setUniformItemSizes(true);
    // The head lines stand above the rows and scroll sideways with them.
    m_kopf = listHeader(this, m_liste, 2);
    m_kopf->setObjectName(QStringLiteral("CSV_Text"));
    haupt->addWidget(m_kopf);
    haupt->addWidget(m_liste, 1);

    auto *tasten = new QHBoxLayout;
    m_drucken = new QPushButton(this);
    m_pdf = new QPushButton(QStringLiteral("Export PDF…"), this);
    m_ok = new QPushButton(this);
    connect(m_drucken, &QPushButton::clicked, this, [this] { drucken(false); });
    connect(m_pdf, &QPushButton::clicked, this, [this] { drucken(true); });
    connect(m_ok, &QPushButton::clicked, this, [this] { Q_EMIT closed(); });
    tasten->addStretch(1);
    tasten->addWidget(m_drucken);
    tasten->addWidget(m_pdf);
    tasten->addWidget(m_ok);
    haupt->addLayout(tasten);

    m_timer.setInterval(100);
    connect(&m_timer, &QTimer::timeout, this, [this] {
        if (listTick())
            showBatch();
    });
    resize(1100, 620);
}

KM_Liste::~KM_Liste()
{
    listClosed();
}

void KM_Liste::setCaptions()
{
    m_drucken->setText(Text_Id(text::PRINT_PAGE).trimmed());
    m_ok->setText(Text_Id(text::OK).trimmed());
    const int n = std::clamp<int>(plant.Kanal_Zahl[0], 0, SCHALTER);
    m_zeile[0]->setText(Text_Id(text::SET_VALUE).trimmed());
    m_zeile[1]->setText(Text_Id(text::ACTUAL_VALUE).trimmed());
    m_zeile[2]->setText(Text_Id(text::OUTPUT).trimmed());
    // The row names keep their whole text in every language.
    for (QLabel *z : m_zeile)
        z->setMinimumWidth(z->fontMetrics().horizontalAdvance(z->text()) + 6);
    for (int i = 0; i < n; ++i)
        m_txt[size_t(i)]->setText(plant.Kanal_Name(0, i).trimmed());
    // The row switches have checks of their own unless channel 10 is in use,
    // whose Soll and Ist they are.
    m_txt[SCHALTER]->setText(QString());
    m_soll[SCHALTER]->setText(Text_Id(text::PROGRAM).trimmed());
    m_ist[SCHALTER]->setText(Text_Id(text::MESSAGES).trimmed());
    setWindowTitle(QStringLiteral("Kalmeron: ") + Kurve.Label_Charge);
}

void KM_Liste::onOpen()
{
    Listen.Offen = true;
    plant.List16_Offen = TRUE16;
    Listen.Zaehler = LISTE_TAKTE;
    CSV_EXPORT(true);
    const int n = std::clamp<int>(plant.Kanal_Zahl[0], 0, SCHALTER);
    for (int i = 0; i < CHECKS; ++i) {
        const bool kanal = i < n;
        const bool schalter = i == SCHALTER && n < SCHALTER;
        const bool status = kanal && plant.Kanal_Status(0, i) != 0;
        m_txt[size_t(i)]->setVisible(kanal || schalter);
        m_soll[size_t(i)]->setVisible((kanal && !status) || schalter);
        m_ist[size_t(i)]->setVisible(kanal || schalter);
        m_out[size_t(i)]->setVisible(kanal && !status);
        // Check i shows flag i + 1 of a channel; the switches are flag 11.
        const int k = i == SCHALTER ? SCHALTER : i + 1;
        if (k > SCHALTER)
            continue;
        m_soll[size_t(i)]->setChecked(Liste_Soll(k) != 0);
        m_ist[size_t(i)]->setChecked(Liste_Ist(k) != 0);
        m_out[size_t(i)]->setChecked(Liste_Out(k) != 0);
    }
    setCaptions();
    showBatch();
    m_timer.start();
}

void KM_Liste::haekchen()
{
    const int n = std::clamp<int>(plant.Kanal_Zahl[0], 0, SCHALTER);
    for (int i = 0; i < n; ++i) {
        Liste_Soll(i + 1) = flag(m_soll[size_t(i)]->isChecked() && m_soll[size_t(i)]->isVisible());
        Liste_Ist(i + 1) = flag(m_ist[size_t(i)]->isChecked());
        Liste_Out(i + 1) = flag(m_out[size_t(i)]->isChecked() && m_out[size_t(i)]->isVisible());
    }
    if (n < SCHALTER) {
        Liste_Soll(SCHALTER) = flag(m_soll[SCHALTER]->isChecked());
        Liste_Ist(SCHALTER) = flag(m_ist[SCHALTER]->isChecked());
    }
    listChecked();
}

void KM_Liste::showBatch()
{
    m_kopf->clear();
    m_kopf->addItems(Listen.CSV_Text);
    m_liste->clear();
    m_liste->addItems(Listen.CSV_LIST);
}

void KM_Liste::drucken(bool pdf)
{
    const QFileInfo csv(plant.CSV_Datei);
    outputList(this, pdf, csv.absolutePath() + QLatin1Char('/') + csv.completeBaseName() + QStringLiteral(".pdf"),
                   curveListHead(), Listen.CSV_Text, Listen.CSV_LIST);
}

void KM_Liste::closeEvent(QCloseEvent *e)
{
    m_timer.stop();
    listClosed();
    QWidget::closeEvent(e);
}

} // namespace kal
