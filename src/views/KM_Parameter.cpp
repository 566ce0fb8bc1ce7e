#include "views/KM_Parameter.h"

#include "config/colour_table.h"
#include "config/languages.h"
#include "config/settings_dialog.h"
#include "config/text_ids.h"
#include "core/plant_state.h"
#include "recording/usb_import.h"
#include "views/dialog_words.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QCloseEvent>
#include <QComboBox>
#include <QFileDialog>
#include <QFontDatabase>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QStackedWidget>
#include <QTabBar>
#include <QToolButton>
#include <QVBoxLayout>

namespace kal {

namespace {

constexpr int REFRESH_MS = 500;
constexpr int SEITE_ALLGEMEIN = 0;
constexpr int SEITE_OFEN = 1;
constexpr int SEITE_INFO = 2;

QColor colourOf(int index)
{
    return QColor::fromRgb(curveColourRgb(index));
}

QLineEdit *numberEdit(QWidget *parent, int breite = 60)
{
    auto *e = new QLineEdit(parent);
    e->setMaximumWidth(breite);
    e->setAlignment(Qt::AlignRight);
    return e;
}

/// Sets a line edit's text when it differs (a field being typed in keeps its cursor).
void setIfChanged(QLineEdit *e, const QString &t)
{
    if (e->text() != t)
        e->setText(t);
}

} // namespace

KM_Parameter::KM_Parameter(QWidget *parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("KM_Parameter"));
    auto *haupt = new QVBoxLayout(this);
    m_tabs = new QTabBar(this);
    m_tabs->setExpanding(false);
    for (int i = 0; i <= TAB_PLC_INFO; ++i)
        m_tabs->addTab(QString());
    haupt->addWidget(m_tabs);

    m_seiten = new QStackedWidget(this);
    m_seiten->addWidget(buildGeneralTab());
    m_seiten->addWidget(buildFurnaceTab());
    m_seiten->addWidget(buildInfoTab());
    haupt->addWidget(m_seiten, 1);

    auto *unten = new QHBoxLayout;
    m_status = new QLabel(this);
    m_status->setFrameShape(QFrame::Panel);
    m_status->setFrameShadow(QFrame::Sunken);
    m_status->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    unten->addWidget(m_status, 1);
    for (int i = 0; i < 3; ++i) {
        m_command1[size_t(i)] = new QPushButton(this);
        m_command1[size_t(i)]->setMinimumWidth(100);
    }
    unten->addWidget(m_command1[2]);
    unten->addWidget(m_command1[0]);
    unten->addWidget(m_command1[1]);
    m_command1[0]->setDefault(true);
    haupt->addLayout(unten);

    connect(m_tabs, &QTabBar::currentChanged, this, [this](int i) { tabChosen(i); });
    connect(m_command1[0], &QPushButton::clicked, this, [this] {
        if (Command1_OK())
            Q_EMIT completed();
    });
    connect(m_command1[1], &QPushButton::clicked, this, [this] {
        Command1_Cancel();
        Q_EMIT completed();
    });
    connect(m_command1[2], &QPushButton::clicked, this, [this] {
        Parameter.Info_Ofen = Parameter.Tab_Ofen >= 1 ? Parameter.Tab_Ofen : Parameter.Info_Ofen;
        m_tabs->setCurrentIndex(TAB_PLC_INFO);
    });

    m_timer.setInterval(REFRESH_MS);
    connect(&m_timer, &QTimer::timeout, this, [this] {
        if (isVisible())
            showStatus();
    });
    m_timer.start();
    onOpen();
}

QWidget *KM_Parameter::buildGeneralTab()
{
    auto *seite = new QWidget(this);
    auto *raster = new QGridLayout(seite);
    int z = 0;

    m_spracheLabel = new QLabel(seite);
    m_sprache = new QComboBox(seite);
    m_sprache->setMinimumWidth(200);
    raster->addWidget(m_spracheLabel, z, 0);
    raster->addWidget(m_sprache, z++, 1, Qt::AlignLeft);
    connect(m_sprache, &QComboBox::activated, this, [this](int i) {
        chooseLanguage(m_sprache->itemData(i).toInt()); // the station re-captions this dialog
    });

    m_druckTitel = new QLabel(seite);
    QFont fett = m_druckTitel->font();
    fett.setBold(true);
    m_druckTitel->setFont(fett);
    raster->addWidget(m_druckTitel, z++, 0, 1, 3);
    for (int i = 0; i < 3; ++i) {
        m_text2Label[size_t(i)] = new QLabel(seite);
        m_text2[size_t(i)] = numberEdit(seite);
        raster->addWidget(m_text2Label[size_t(i)], z, 0);
        raster->addWidget(m_text2[size_t(i)], z++, 1);
        QLineEdit *e = m_text2[size_t(i)];
        connect(e, &QLineEdit::editingFinished, this, [this, i, e] {
            if (!m_fuellen)
                e->setText(Text2_LostFocus(i, e->text()));
        });
    }

    m_ordnerTitel = new QLabel(seite);
    m_ordnerTitel->setFont(fett);
    raster->addWidget(m_ordnerTitel, z++, 0, 1, 3);
    m_diskLabel = new QLabel(QStringLiteral("Disk"), seite);
    m_disk = new QLineEdit(seite);
    raster->addWidget(m_diskLabel, z, 0);
    raster->addWidget(m_disk, z++, 1);
    connect(m_disk, &QLineEdit::editingFinished, this, [this] {
        if (m_fuellen || m_disk->text() == diskText())
            return;
        setDisk(m_disk->text());
        Wert_akt();
    });
    static constexpr int reihenfolge[4] = {ORDNER_LOG, ORDNER_USB, ORDNER_CSV, ORDNER_SYS};
    for (int r = 0; r < 4; ++r) {
        const int art = reihenfolge[r];
        m_ordnerLabel[size_t(art)] = new QLabel(folderCaption(art), seite);
        m_ordner[size_t(art)] = new QLineEdit(seite);
        m_ordner[size_t(art)]->setReadOnly(true);
        m_ordner[size_t(art)]->setMinimumWidth(380);
        m_suchButton[size_t(art)] = new QToolButton(seite);
        m_suchButton[size_t(art)]->setText(QStringLiteral("..."));
        raster->addWidget(m_ordnerLabel[size_t(art)], z, 0);
        raster->addWidget(m_ordner[size_t(art)], z, 1);
        raster->addWidget(m_suchButton[size_t(art)], z++, 2);
        connect(m_suchButton[size_t(art)], &QToolButton::clicked, this, [this, art] {
            // Dir1: the folder choice of this kind.
            const QString neu = QFileDialog::getExistingDirectory(this, folderCaption(art), folderPath(art));
            if (!neu.isEmpty()) {
                folderPath(art) = QDir::toNativeSeparators(neu);
                Wert_akt();
            }
        });
    }
    m_backup = new QCheckBox(seite);
    raster->addWidget(m_backup, z++, 1, 1, 2);
    connect(m_backup, &QCheckBox::toggled, this, [this](bool an) {
        if (!m_fuellen)
            Parameter.Backup_Aktiv = flag(an);
    });
    m_kurveOption = new QCheckBox(seite);
    raster->addWidget(m_kurveOption, z++, 1, 1, 2);
    connect(m_kurveOption, &QCheckBox::toggled, this, [this](bool an) {
        if (!m_fuellen)
            Parameter.Kurve_Option = flag(an);
    });

    m_command3 = new QPushButton(seite);
    raster->addWidget(m_command3, z++, 1, Qt::AlignLeft);
    connect(m_command3, &QPushButton::clicked, this, [] { Command3_Export(); });

    // The USB import: its switch and what it is doing.
    auto *usb = new QHBoxLayout;
    m_usbButton = new QPushButton(seite);
    m_usbButton->setCheckable(true);
    m_usbButton->setMinimumWidth(140);
    m_usbAct = new QLabel(seite);
    usb->addWidget(m_usbButton);
    usb->addWidget(m_usbAct, 1);
    raster->addWidget(new QLabel(QStringLiteral("USB"), seite), z, 0);
    raster->addLayout(usb, z++, 1, 1, 2);
    connect(m_usbButton, &QPushButton::clicked, this, [this] {
        if (USB.USB_Aktiv == 0)
            readSourceList(); // the files in the USB folder now
        USB_Button();
        showUsbFolder();
    });
    raster->setRowStretch(z, 1);
    raster->setColumnStretch(1, 1);
    return seite;
}

QWidget *KM_Parameter::buildFurnaceTab()
{
    auto *seite = new QWidget(this);
    auto *spalten = new QHBoxLayout(seite);
    auto *links = new QGridLayout;
    int z = 0;

    m_adressTitel = new QLabel(seite);
    auto *ip = new QHBoxLayout;
    for (int k = 0; k < 4; ++k) {
        m_ip[size_t(k)] = numberEdit(seite, 50);
        ip->addWidget(m_ip[size_t(k)]);
        if (k < 3)
            ip->addWidget(new QLabel(QStringLiteral("."), seite));
        connect(m_ip[size_t(k)], &QLineEdit::editingFinished, this, [this, k] { text1Left(k); });
    }
    ip->addStretch(1);
    links->addWidget(m_adressTitel, z, 0);
    links->addLayout(ip, z++, 1);

    m_optionGruppe = new QButtonGroup(this);
    auto *optionen = new QHBoxLayout;
    for (int o = 0; o < 3; ++o) {
        m_option1[size_t(o)] = new QRadioButton(seite);
        m_optionGruppe->addButton(m_option1[size_t(o)], o);
        optionen->addWidget(m_option1[size_t(o)]);
    }
    optionen->addStretch(1);
    links->addLayout(optionen, z++, 1);
    connect(m_optionGruppe, &QButtonGroup::idClicked, this, [this](int o) {
        if (m_fuellen || Parameter.Tab_Ofen < 1)
            return;
        setOption1(Parameter.Tab_Ofen - 1, o);
        // The limits of the address change with the option: apply them.
        for (int k = 0; k < 4; ++k)
            text1Left(k);
        m_adressTitel->setText(addressCaption(Parameter.Tab_Ofen - 1));
    });

    m_aktiv = new QCheckBox(seite);
    m_charge = new QCheckBox(seite);
    m_tempLog = new QCheckBox(seite);
    for (QCheckBox *c : {m_aktiv, m_charge, m_tempLog})
        links->addWidget(c, z++, 1);
    auto haken = [this](QCheckBox *c, i16 FurnaceSettings::*feld) {
        connect(c, &QCheckBox::toggled, this, [this, feld](bool an) {
            if (!m_fuellen && Parameter.Tab_Ofen >= 1)
                Parameter.Ofen[size_t(Parameter.Tab_Ofen - 1)].*feld = flag(an);
        });
    };
    haken(m_aktiv, &FurnaceSettings::Aktiv);
    haken(m_charge, &FurnaceSettings::Charge);
    haken(m_tempLog, &FurnaceSettings::TempLog);

    auto feld = [&](QLabel *&label, QLineEdit *&e, int nr, int breite) {
        label = new QLabel(seite);
        e = breite > 0 ? numberEdit(seite, breite) : new QLineEdit(seite);
        links->addWidget(label, z, 0);
        links->addWidget(e, z++, 1, breite > 0 ? Qt::AlignLeft : Qt::Alignment());
        connect(e, &QLineEdit::editingFinished, this, [this, nr] { text1Left(nr); });
    };
    feld(m_taktLabel, m_takt, FELD_TAKT, 70);
    feld(m_schwelleLabel, m_schwelle, FELD_SCHWELLE, 70);
    feld(m_nrProgLabel, m_nrProg, FELD_NR_PROG, 70);
    feld(m_bezeichnungLabel, m_bezeichnung, FELD_BEZEICHNUNG, 0);
    m_bezeichnung->setMaxLength(16);

    m_kennung = new QLabel(seite);
    m_kennung->setTextInteractionFlags(Qt::TextSelectableByMouse);
    links->addWidget(m_kennung, z++, 0, 1, 2);
    links->setRowStretch(z, 1);
    spalten->addLayout(links, 3);

    // Colours: the channel list, the 24 colours (FarbSift), the pot that
    // gives the selected channel the colour (FarbTopf) and the test text.
    auto *farben = new QVBoxLayout;
    m_kanaele = new QListWidget(seite);
    m_kanaele->setMinimumWidth(200);
    farben->addWidget(m_kanaele, 1);
    auto *palette = new QGridLayout;
    palette->setSpacing(2);
    for (int i = 0; i < FARBEN_ANZAHL; ++i) {
        auto *b = new QToolButton(seite);
        b->setCheckable(true);
        b->setAutoExclusive(true);
        b->setFixedSize(22, 22);
        b->setStyleSheet(QStringLiteral("QToolButton{background:%1;border:1px solid #808080;}"
                                        "QToolButton:checked{border:3px solid #202020;}")
                             .arg(colourOf(i).name()));
        b->setToolTip(QString::number(i));
        m_farbSift[size_t(i)] = b;
        palette->addWidget(b, i / 8, i % 8);
        connect(b, &QToolButton::clicked, this, [this, i] {
            Parameter.Farbe_Stift = i;
            showColours();
        });
    }
    farben->addLayout(palette);
    auto *topf = new QHBoxLayout;
    m_farbTopf = new QPushButton(seite);
    m_farbText = new QLabel(seite);
    m_farbText->setAutoFillBackground(true);
    m_farbText->setMinimumWidth(120);
    m_farbText->setFrameShape(QFrame::Panel);
    m_farbText->setFrameShadow(QFrame::Sunken);
    m_farbText->setTextFormat(Qt::RichText);
    {
        QPalette weiss = m_farbText->palette();
        weiss.setColor(QPalette::Window, Qt::white);
        m_farbText->setPalette(weiss);
    }
    topf->addWidget(m_farbTopf);
    topf->addWidget(m_farbText, 1);
    farben->addLayout(topf);
    connect(m_kanaele, &QListWidget::currentRowChanged, this, [this] { showColours(); });
    connect(m_farbTopf, &QPushButton::clicked, this, [this] {
        if (Parameter.Tab_Ofen < 1 || m_kanaele->currentRow() < 0)
            return;
        FarbTopf(Parameter.Tab_Ofen - 1, m_kanaele->currentRow());
        showColours();
    });
    spalten->addLayout(farben, 2);

    auto *texte = new QVBoxLayout;
    m_mtxt = new QPlainTextEdit(seite);
    m_mtxt->setReadOnly(true);
    m_mtxt->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    m_mtxt->setMinimumWidth(260);
    m_mtxt->setLineWrapMode(QPlainTextEdit::NoWrap);
    m_mtxtButton = new QPushButton(seite);
    texte->addWidget(m_mtxt, 1);
    texte->addWidget(m_mtxtButton, 0, Qt::AlignRight);
    connect(m_mtxtButton, &QPushButton::clicked, this, [this] {
        if (Parameter.Tab_Ofen < 1)
            return;
        MTXTbutton(Parameter.Tab_Ofen - 1);
        m_mtxt->setPlainText(MTXT_Text(Parameter.Tab_Ofen - 1));
    });
    spalten->addLayout(texte, 2);
    return seite;
}

QWidget *KM_Parameter::buildInfoTab()
{
    auto *seite = new QWidget(this);
    auto *l = new QVBoxLayout(seite);
    m_info = new QPlainTextEdit(seite);
    m_info->setReadOnly(true);
    m_info->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    l->addWidget(m_info);
    return seite;
}

QLineEdit *KM_Parameter::Text1(int i) const
{
    switch (i) {
    case 0:
    case 1:
    case 2:
    case 3: return m_ip[size_t(i)];
    case FELD_TAKT: return m_takt;
    case FELD_NR_PROG: return m_nrProg;
    case FELD_BEZEICHNUNG: return m_bezeichnung;
    case FELD_SCHWELLE: return m_schwelle;
    default: return nullptr;
    }
}

void KM_Parameter::text1Left(int i)
{
    if (m_fuellen || Parameter.Tab_Ofen < 1)
        return;
    QLineEdit *e = Text1(i);
    e->setText(Text1_LostFocus(Parameter.Tab_Ofen - 1, i, e->text()));
}

void KM_Parameter::onOpen()
{
    openParameters();
    setCaptions();
    m_tabs->setCurrentIndex(0);
    tabChosen(0);
}

void KM_Parameter::tabChosen(int index)
{
    if (index == TAB_PLC_INFO) {
        if (Parameter.Tab_Ofen >= 1)
            Parameter.Info_Ofen = Parameter.Tab_Ofen;
    } else {
        Parameter.Tab_Ofen = index;
    }
    Wert_akt();
}

void KM_Parameter::setCaptions()
{
    setWindowTitle(Text_Id(text::SETTINGS).trimmed());
    m_tabs->setTabText(0, Text_Id(text::SETTINGS).trimmed());
    for (int n = 1; n <= OFEN_MAX; ++n)
        m_tabs->setTabText(n, Text_Id(text::FURNACE).trimmed() + QLatin1Char(' ') + QString::number(n));
    m_tabs->setTabText(TAB_PLC_INFO, QStringLiteral("PLC-Info"));
    m_command1[0]->setText(Text_Id(text::OK).trimmed());
    m_command1[1]->setText(Text_Id(text::CANCEL).trimmed());
    m_command1[2]->setText(QStringLiteral("PLC-Info"));

    m_spracheLabel->setText(Text_Id(text::LANGUAGE).trimmed());
    {
        const QSignalBlocker b(m_sprache);
        m_sprache->clear();
        for (int s = 0; s < SPRACHEN; ++s)
            m_sprache->addItem(Text_Id(languageNameId(s)).trimmed(), s);
        m_sprache->setCurrentIndex(plant.Sprache);
    }
    m_druckTitel->setText(pickWord("Drucken", "Printing"));
    m_text2Label[0]->setText(pickWord("Zoom [%]", "Zoom [%]"));
    m_text2Label[1]->setText(pickWord("Rand links", "Left margin"));
    m_text2Label[2]->setText(pickWord("Rand oben", "Top margin"));
    m_ordnerTitel->setText(pickWord("Ordner", "Folders"));
    m_diskLabel->setText(QStringLiteral("Disk"));
    m_backup->setText(pickWord("Sicherung in SYS-Ordner (Backup)", "Backup into the SYS folder"));
    m_kurveOption->setText(pickWord("Kurvenoption", "Curve option"));
    m_command3->setText(pickWord("Sprachtabelle exportieren (KM_SP.LNG)", "Export language table (KM_SP.LNG)"));

    m_option1[0]->setText(QStringLiteral("Modbus/TCP"));
    m_option1[1]->setText(pickWord("Seriell", "Serial"));
    m_option1[2]->setText(QStringLiteral("UDP (Panel)"));
    m_aktiv->setText(pickWord("aktiv (wird abgefragt)", "active (polled)"));
    m_charge->setText(pickWord("Chargen aufzeichnen", "Record batches"));
    m_tempLog->setText(pickWord("Temperaturlog", "Temperature log"));
    m_taktLabel->setText(pickWord("Temperaturlog Takt [s]", "Temperature log interval [s]"));
    m_schwelleLabel->setText(pickWord("Temperaturlog Schwelle [°C]", "Temperature log threshold [°C]"));
    m_nrProgLabel->setText(pickWord("Programmwahl Ofen", "Program selection furnace"));
    m_bezeichnungLabel->setText(pickWord("Bezeichnung", "Description"));
    m_farbTopf->setText(Text_Id(text::COLOUR).trimmed());
    m_mtxtButton->setText(Text_Id(text::NEXT).trimmed());
    Wert_akt();
}

void KM_Parameter::Wert_akt()
{
    m_fuellen = true;
    const int tab = m_tabs->currentIndex();
    m_seiten->setCurrentIndex(tab == 0 ? SEITE_ALLGEMEIN : tab == TAB_PLC_INFO ? SEITE_INFO : SEITE_OFEN);
    m_command1[2]->setEnabled(Parameter.Tab_Ofen >= 1);

    setIfChanged(m_text2[0], QString::number(Parameter.Druck_Prozent));
    setIfChanged(m_text2[1], QString::number(Parameter.Druck_Rand_X));
    setIfChanged(m_text2[2], QString::number(Parameter.Druck_Rand_Y));
    setIfChanged(m_disk, diskText());
    for (int art = 0; art < 4; ++art)
        setIfChanged(m_ordner[size_t(art)], folderPath(art));
    m_backup->setChecked(Parameter.Backup_Aktiv != 0);
    m_kurveOption->setChecked(Parameter.Kurve_Option != 0);

    if (Parameter.Tab_Ofen >= 1) {
        const int f = Parameter.Tab_Ofen - 1;
        const FurnaceSettings &w = Parameter.Ofen[size_t(f)];
        m_adressTitel->setText(addressCaption(f));
        for (int k = 0; k < 4; ++k)
            setIfChanged(m_ip[size_t(k)], QString::number(w.IP[size_t(k)]));
        m_option1[size_t(option1Value(f))]->setChecked(true);
        m_aktiv->setChecked(w.Aktiv != 0);
        m_charge->setChecked(w.Charge != 0);
        m_tempLog->setChecked(w.TempLog != 0);
        setIfChanged(m_takt, QString::number(w.TempLog_Takt));
        setIfChanged(m_schwelle, QString::number(w.TempLog_Schwelle));
        setIfChanged(m_nrProg, QString::number(w.Nr_Prog));
        setIfChanged(m_bezeichnung, w.Bezeichnung.trimmed());
        m_kennung->setText(QStringLiteral("%1: %2\n%3 %4   Version %5   %6 %7")
                               .arg(Text_Id(text::FURNACE).trimmed(), plant.Ofen_Name[f].trimmed(),
                                    Text_Id(text::SERIAL_NO).trimmed(), plant.Ofen_Serie[f].trimmed(),
                                    plant.Ofen_Version[f].trimmed(), Text_Id(text::TYPE).trimmed())
                               .arg(plant.Ofen_Typ[f + 1]));
        const int zeile = m_kanaele->currentRow();
        m_kanaele->clear();
        for (int k = 0; k < FARBEN_PRO_OFEN; ++k)
            m_kanaele->addItem(colourChannelName(f, k));
        m_kanaele->setCurrentRow(zeile >= 0 ? zeile : 0);
        showColours();
        m_mtxt->setPlainText(MTXT_Text(f));
    }
    showStatus();
    m_fuellen = false;
}

void KM_Parameter::showColours()
{
    if (Parameter.Tab_Ofen < 1)
        return;
    const FurnaceSettings &w = Parameter.Ofen[size_t(Parameter.Tab_Ofen - 1)];
    for (int k = 0; k < m_kanaele->count(); ++k) {
        QPixmap p(14, 14);
        p.fill(colourOf(w.Farbe[size_t(k)]));
        m_kanaele->item(k)->setIcon(QIcon(p));
    }
    m_farbSift[size_t(Parameter.Farbe_Stift)]->setChecked(true);
    // The test text shows the pair: the channel in its colour now, and in
    // the colour picked.
    const int kanal = std::max(0, m_kanaele->currentRow());
    const QString name = colourChannelName(Parameter.Tab_Ofen - 1, kanal).trimmed().toHtmlEscaped();
    m_farbText->setText(QStringLiteral("<b><span style=\"color:%1\">%3</span> &rarr; "
                                       "<span style=\"color:%2\">%3</span></b>")
                            .arg(colourOf(w.Farbe[size_t(kanal)]).name(), colourOf(Parameter.Farbe_Stift).name(), name));
}

void KM_Parameter::showUsbFolder()
{
    const UsbDisplay a = USB_ACT();
    m_usbButton->setText(a.caption);
    m_usbButton->setChecked(a.aktiv);
    m_usbAct->setText(a.text);
}

void KM_Parameter::showStatus()
{
    showUsbFolder();
    const int nr = m_tabs->currentIndex() == TAB_PLC_INFO ? Parameter.Info_Ofen : Parameter.Tab_Ofen;
    if (nr < 1) {
        m_status->clear();
        return;
    }
    m_status->setText(QStringLiteral("%1 %2: %3  %4")
                          .arg(Text_Id(text::FURNACE).trimmed())
                          .arg(nr)
                          .arg(statusLine(nr - 1), LOAD_STAT(nr - 1)));
    if (m_tabs->currentIndex() == TAB_PLC_INFO) {
        const QString t = PLC_Info(nr - 1).join(QLatin1Char('\n'));
        if (m_info->toPlainText() != t)
            m_info->setPlainText(t);
    } else if (Parameter.Tab_Ofen >= 1) {
        const QString t = MTXT_Text(Parameter.Tab_Ofen - 1);
        if (m_mtxt->toPlainText() != t)
            m_mtxt->setPlainText(t);
    }
}

void KM_Parameter::closeEvent(QCloseEvent *e)
{
    // Closing the window is Cancel.
    Command1_Cancel();
    Q_EMIT completed();
    e->accept();
}

} // namespace kal
