#include "views/KM_System.h"

#include "config/message_files.h"
#include "config/system_dialog.h"
#include "config/text_ids.h"
#include "core/plant_state.h"
#include "views/dialog_words.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFileDialog>
#include <QFontDatabase>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QToolButton>
#include <QVBoxLayout>

namespace kal {

namespace {

constexpr int REFRESH_MS = 1000;
constexpr int FELDER[5] = {SYS_TYP, SYS_SERIE, SYS_MAX_TEMP, SYS_TUER, SYS_GRADIENT};

QLabel *headingLabel(QWidget *parent)
{
    auto *l = new QLabel(parent);
    QFont f = l->font();
    f.setBold(true);
    l->setFont(f);
    return l;
}

} // namespace

KM_System::KM_System(QWidget *parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("KM_System"));
    auto *haupt = new QVBoxLayout(this);
    auto *spalten = new QHBoxLayout;
    haupt->addLayout(spalten, 1);

    // Left: the furnace and its make-up.
    auto *links = new QGridLayout;
    int z = 0;
    m_ofenTitel = headingLabel(this);
    links->addWidget(m_ofenTitel, z++, 0, 1, 2);
    m_ofen = new QComboBox(this);
    links->addWidget(m_ofen, z++, 0, 1, 2);
    connect(m_ofen, &QComboBox::activated, this, [this](int i) { onOpen(i + 1); });
    for (int feld : FELDER) {
        m_text1Label[size_t(feld)] = new QLabel(this);
        m_text1[size_t(feld)] = new QLineEdit(this);
        links->addWidget(m_text1Label[size_t(feld)], z, 0);
        links->addWidget(m_text1[size_t(feld)], z++, 1);
        QLineEdit *e = m_text1[size_t(feld)];
        if (feld >= SYS_MAX_TEMP) {
            e->setAlignment(Qt::AlignRight);
            e->setMaximumWidth(90);
        } else {
            e->setMaxLength(feld == SYS_TYP ? 16 : 12);
        }
        connect(e, &QLineEdit::editingFinished, this, [e, feld] { e->setText(System_Text1_LostFocus(feld, e->text())); });
    }

    m_karteTitel = headingLabel(this);
    links->addWidget(m_karteTitel, z++, 0, 1, 2);
    m_drive = new QComboBox(this);
    links->addWidget(m_drive, z++, 0, 1, 2);
    m_check1 = new QCheckBox(this);
    links->addWidget(m_check1, z++, 0, 1, 2);
    connect(m_check1, &QCheckBox::toggled, this, [this] { showDrives(); });
    connect(m_drive, &QComboBox::activated, this, [this] { System.Laufwerk = m_drive->currentData().toString(); });
    m_kopieren = new QPushButton(this);
    links->addWidget(m_kopieren, z++, 0, 1, 2);
    connect(m_kopieren, &QPushButton::clicked, this,
            [] { DateiCopy(plant.Pfad_Karte[0], System.Laufwerk); });
    links->setRowStretch(z, 1);
    spalten->addLayout(links, 2);

    // Middle: what the station holds.
    auto *mitte = new QVBoxLayout;
    m_texteTitel = headingLabel(this);
    mitte->addWidget(m_texteTitel);
    m_art = new QComboBox(this);
    m_art->addItems({QStringLiteral("Meld"), QStringLiteral("Spur"), QStringLiteral("Analog")});
    mitte->addWidget(m_art);
    connect(m_art, &QComboBox::activated, this, [this](int i) {
        System.Liste_Art = i;
        showList();
    });
    m_liste = new QListWidget(this);
    m_liste->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    m_liste->setMinimumWidth(250);
    mitte->addWidget(m_liste, 1);
    spalten->addLayout(mitte, 2);

    // Right: the text file of the panels.
    auto *rechts = new QVBoxLayout;
    m_dateiTitel = headingLabel(this);
    rechts->addWidget(m_dateiTitel);
    auto *ordner = new QHBoxLayout;
    m_dir = new QLineEdit(this);
    auto *such = new QToolButton(this);
    such->setText(QStringLiteral("..."));
    ordner->addWidget(m_dir, 1);
    ordner->addWidget(such);
    rechts->addLayout(ordner);
    connect(m_dir, &QLineEdit::editingFinished, this, [this] { System.Ordner = m_dir->text(); });
    connect(such, &QToolButton::clicked, this, [this] {
        const QString neu = QFileDialog::getExistingDirectory(this, QStringLiteral("Dir"),
                                                              System.Ordner.isEmpty() ? startFolder(System.Laufwerk)
                                                                                      : System.Ordner);
        if (!neu.isEmpty()) {
            System.Ordner = QDir::toNativeSeparators(neu);
            m_dir->setText(System.Ordner);
        }
    });
    m_mNr = new QComboBox(this);
    m_mNr->addItems(messageCountTexts());
    rechts->addWidget(m_mNr);
    connect(m_mNr, &QComboBox::activated, this, [this](int i) {
        chooseMessageCount(i == 1 ? 48 : 32);
        showTexts();
    });
    m_mldtxt = new QListWidget(this);
    m_mldtxt->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    m_mldtxt->setMinimumWidth(260);
    rechts->addWidget(m_mldtxt, 1);
    m_mtxt = new QLineEdit(this);
    m_mtxt->setMaxLength(MLD_TEXT);
    rechts->addWidget(m_mtxt);
    connect(m_mldtxt, &QListWidget::currentRowChanged, this, [this](int zeile) {
        m_mtxt->setText(System.Texte.Zeilen.value(zeile).mid(3));
    });
    connect(m_mtxt, &QLineEdit::editingFinished, this, [this] {
        const int zeile = m_mldtxt->currentRow();
        setLine(zeile, m_mtxt->text());
        if (zeile >= 0 && zeile < m_mldtxt->count())
            m_mldtxt->item(zeile)->setText(System.Texte.Zeilen[zeile]);
    });
    auto *knoepfe = new QGridLayout;
    for (int i = 0; i < 4; ++i) {
        m_dateiButton[size_t(i)] = new QPushButton(this);
        knoepfe->addWidget(m_dateiButton[size_t(i)], i / 2, i % 2);
    }
    rechts->addLayout(knoepfe);
    connect(m_dateiButton[0], &QPushButton::clicked, this, [this] { laden(MLD_IMPORT_DATEI); });
    connect(m_dateiButton[1], &QPushButton::clicked, this, [this] { laden(MLD_XXX_DATEI); });
    connect(m_dateiButton[2], &QPushButton::clicked, this, [this] {
        QString meldung;
        MLD_XXX_Sichern(System.Ordner, System.Texte, meldung);
        m_meldung->setText(meldung);
    });
    connect(m_dateiButton[3], &QPushButton::clicked, this, [this] {
        System.Texte = mldFromStation(System.Ofen - 1, System.Texte.Anzahl);
        showTexts();
    });
    m_meldung = new QLabel(this);
    m_meldung->setWordWrap(true);
    rechts->addWidget(m_meldung);
    spalten->addLayout(rechts, 3);

    auto *unten = new QHBoxLayout;
    unten->addStretch(1);
    m_ok = new QPushButton(this);
    m_abbruch = new QPushButton(this);
    for (QPushButton *b : {m_ok, m_abbruch}) {
        b->setMinimumWidth(100);
        unten->addWidget(b);
    }
    haupt->addLayout(unten);
    connect(m_ok, &QPushButton::clicked, this, [this] {
        if (System_OK())
            Q_EMIT completed();
    });
    connect(m_abbruch, &QPushButton::clicked, this, [this] { Q_EMIT completed(); });

    // Timer1: is the card drive ready? Only then may the card be written.
    m_timer.setInterval(REFRESH_MS);
    connect(&m_timer, &QTimer::timeout, this, [this] {
        if (isVisible())
            m_kopieren->setEnabled(driveReady(System.Laufwerk));
    });
    m_timer.start();
    onOpen(1);
}

void KM_System::onOpen(int ofenNr)
{
    openSystem(ofenNr);
    showDrives();
    setCaptions();
}

void KM_System::setCaptions()
{
    setWindowTitle(Text_Id(text::SYSTEM).trimmed());
    m_ofenTitel->setText(Text_Id(text::FURNACE).trimmed());
    m_texteTitel->setText(Text_Id(text::MESSAGES).trimmed());
    m_karteTitel->setText(pickWord("Speicherkarte", "Memory card"));
    m_dateiTitel->setText(pickWord("Textdatei der Panels", "Text file of the panels"));
    m_text1Label[SYS_TYP]->setText(Text_Id(text::TYPE).trimmed());
    m_text1Label[SYS_SERIE]->setText(Text_Id(text::SERIAL_NO).trimmed());
    m_text1Label[SYS_MAX_TEMP]->setText(Text_Id(text::MAX_TEMPERATURE).trimmed() + QStringLiteral(" [°C]"));
    m_text1Label[SYS_TUER]->setText(Text_Id(text::DOOR_RELEASE).trimmed() + QStringLiteral(" [°C]"));
    m_text1Label[SYS_GRADIENT]->setText(Text_Id(text::MAX_GRADIENT).trimmed() + QStringLiteral(" [K/h]"));
    m_check1->setText(pickWord("nur Datenlaufwerke", "Data drives only"));
    m_kopieren->setText(pickWord("CF-Karte schreiben", "Write CF card"));
    m_dateiButton[0]->setText(QStringLiteral("MLD_IMPORT.TXT ") + Text_Id(text::LOAD).trimmed());
    m_dateiButton[1]->setText(QStringLiteral("MLD_XXX.TXT ") + Text_Id(text::LOAD).trimmed());
    m_dateiButton[2]->setText(QStringLiteral("MLD_XXX.TXT ") + Text_Id(text::SAVE).trimmed());
    m_dateiButton[3]->setText(pickWord("Texte der Station", "Station's texts"));
    m_ok->setText(Text_Id(text::OK).trimmed());
    m_abbruch->setText(Text_Id(text::CANCEL).trimmed());
    {
        const QSignalBlocker b(m_ofen);
        m_ofen->clear();
        for (int n = 1; n <= OFEN_MAX; ++n)
            m_ofen->addItem(QStringLiteral("%1  %2").arg(n).arg(plant.Ofen_Name[n - 1].trimmed()));
        m_ofen->setCurrentIndex(System.Ofen - 1);
    }
    showValues();
}

void KM_System::showValues()
{
    for (int feld : FELDER)
        m_text1[size_t(feld)]->setText(System_Text1(feld));
    m_art->setCurrentIndex(System.Liste_Art);
    m_dir->setText(System.Ordner);
    showList();
    showTexts();
}

void KM_System::showList()
{
    m_liste->clear();
    m_liste->addItems(listLines(System.Liste_Art));
}

void KM_System::showTexts()
{
    const int zeile = m_mldtxt->currentRow();
    m_mNr->setCurrentIndex(System.Texte.Anzahl == 48 ? 1 : 0);
    m_mldtxt->clear();
    m_mldtxt->addItems(System.Texte.Zeilen);
    m_mldtxt->setCurrentRow(zeile >= 0 && zeile < m_mldtxt->count() ? zeile : 0);
}

void KM_System::showDrives()
{
    const QSignalBlocker b(m_drive);
    m_drive->clear();
    for (const Drive &l : drives())
        if (!m_check1->isChecked() || driveUsable(l.Typ))
            m_drive->addItem(driveLine(l), l.Wurzel);
    const int i = m_drive->findData(System.Laufwerk);
    m_drive->setCurrentIndex(i >= 0 ? i : 0);
    System.Laufwerk = m_drive->currentData().toString();
    m_kopieren->setEnabled(driveReady(System.Laufwerk));
}

void KM_System::laden(const QString &name)
{
    System.Ordner = m_dir->text();
    MldList t;
    const QString meldung = loadMld(System.Ordner, name, t);
    m_meldung->setText(meldung);
    if (meldung.isEmpty()) {
        System.Texte = t;
        showTexts();
    }
}

} // namespace kal
