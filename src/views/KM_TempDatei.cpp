#include "views/KM_TempDatei.h"

#include "config/text_ids.h"
#include "core/plant_state.h"
#include "recording/batch_browser.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFileSystemModel>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QStorageInfo>
#include <QTreeView>
#include <QVBoxLayout>

namespace kal {

KM_TempDatei::KM_TempDatei(QWidget *parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("KM_TempDatei"));
    auto *haupt = new QHBoxLayout(this);

    auto *links = new QVBoxLayout;
    m_drive = new QComboBox(this);
    for (const QStorageInfo &s : QStorageInfo::mountedVolumes())
        if (s.isValid() && s.isReady())
            m_drive->addItem(s.rootPath());
    connect(m_drive, &QComboBox::activated, this, &KM_TempDatei::driveChosen);
    links->addWidget(m_drive);
    m_model = new QFileSystemModel(this);
    m_model->setFilter(QDir::AllDirs | QDir::NoDotAndDotDot);
    m_model->setRootPath(QDir::rootPath());
    m_dir = new QTreeView(this);
    m_dir->setModel(m_model);
    for (int c = 1; c < m_model->columnCount(); ++c)
        m_dir->hideColumn(c);
    m_dir->header()->hide();
    m_dir->setMinimumWidth(220);
    connect(m_dir, &QTreeView::clicked, this, [this](const QModelIndex &i) { chooseFolder(m_model->filePath(i)); });
    links->addWidget(m_dir, 1);
    haupt->addLayout(links);

    m_list = new QListWidget(this);
    m_list->setFont(QFont(QStringLiteral("DejaVu Sans Mono")));
    m_list->setMinimumWidth(640);
    connect(m_list, &QListWidget::itemClicked, this, &KM_TempDatei::lineClicked);
    connect(m_list, &QListWidget::currentRowChanged, this, &KM_TempDatei::lineClicked);
    connect(m_list, &QListWidget::itemDoubleClicked, this, [this] {
        lineClicked();
        okClicked();
    });
    haupt->addWidget(m_list, 1);

    auto *rechts = new QVBoxLayout;
    auto *oefen = new QGroupBox(this);
    auto *ol = new QVBoxLayout(oefen);
    for (int i = 0; i < 8; ++i) {
        m_ofen[size_t(i)] = new QCheckBox(oefen);
        connect(m_ofen[size_t(i)], &QCheckBox::clicked, this, &KM_TempDatei::furnaceClicked);
        ol->addWidget(m_ofen[size_t(i)]);
    }
    rechts->addWidget(oefen);

    auto *filter = new QGridLayout;
    m_label1 = new QLabel(this);
    m_datum = new QLineEdit(this);
    m_datum->setMaximumWidth(110);
    connect(m_datum, &QLineEdit::editingFinished, this, [this] {
        Datum_IN_LostFocus(m_datum->text());
        Liste_Aufbauen();
    });
    filter->addWidget(m_label1, 0, 0);
    filter->addWidget(m_datum, 0, 1);
    m_label2 = new QLabel(this);
    filter->addWidget(m_label2, 1, 0);
    auto *sortierung = new QVBoxLayout;
    for (int i = 0; i < 2; ++i) {
        m_sort[size_t(i)] = new QRadioButton(this);
        connect(m_sort[size_t(i)], &QRadioButton::clicked, this, [this, i] {
            plant.Sort_Art = u8(i);
            Liste_Aufbauen();
        });
        sortierung->addWidget(m_sort[size_t(i)]);
    }
    filter->addLayout(sortierung, 1, 1);
    rechts->addLayout(filter);

    m_text = new QPlainTextEdit(this);
    m_text->setReadOnly(true);
    m_text->setFont(QFont(QStringLiteral("DejaVu Sans Mono")));
    m_text->setLineWrapMode(QPlainTextEdit::NoWrap);
    m_text->setFixedHeight(m_text->fontMetrics().height() * 5 + 12);
    m_text->setMinimumWidth(m_text->fontMetrics().horizontalAdvance(QString(41, QLatin1Char('M'))));
    rechts->addWidget(m_text);

    m_user = new QPushButton(this);
    connect(m_user, &QPushButton::clicked, this, &KM_TempDatei::userClicked);
    rechts->addWidget(m_user);
    rechts->addStretch(1);
    auto *knoepfe = new QHBoxLayout;
    m_ok = new QPushButton(this);
    m_cancel = new QPushButton(this);
    connect(m_ok, &QPushButton::clicked, this, &KM_TempDatei::okClicked);
    connect(m_cancel, &QPushButton::clicked, this, [this] {
        if (parentWidget())
            parentWidget()->hide();
        else
            hide();
    });
    knoepfe->addWidget(m_ok);
    knoepfe->addWidget(m_cancel);
    rechts->addLayout(knoepfe);
    haupt->addLayout(rechts);
    setCaptions();
}

void KM_TempDatei::setCaptions()
{
    m_ok->setText(Text_Id(text::OK).trimmed());
    m_cancel->setText(Text_Id(text::CANCEL).trimmed());
    m_label1->setText(Text_Id(text::SHOW_FROM).trimmed());
    m_label2->setText(Text_Id(text::SORT_ORDER).trimmed());
    m_sort[0]->setText(Text_Id(text::DATE).trimmed());
    m_sort[1]->setText(Text_Id(text::BATCH).trimmed());
}

void KM_TempDatei::load()
{
    m_text->clear();
    setCaptions();
    m_sort[size_t(plant.Sort_Art & 1)]->setChecked(true);
    if (!loadBrowser()) {
        m_list->clear();
        return;
    }
    showFolder(plant.Browser_Ordner);
    Liste_Aufbauen();
}

void KM_TempDatei::showFolder(const QString &pfad)
{
    const int d = m_drive->findText(driveOf(pfad));
    if (d >= 0)
        m_drive->setCurrentIndex(d);
    const QModelIndex i = m_model->index(pfad);
    if (i.isValid()) {
        m_dir->setCurrentIndex(i);
        m_dir->scrollTo(i);
        m_dir->expand(i);
    }
}

void KM_TempDatei::chooseFolder(const QString &pfad)
{
    changeFolder(pfad);
    plant.Browser_Laufwerk = driveOf(pfad);
    showFolder(pfad);
    Liste_Aufbauen();
}

void KM_TempDatei::driveChosen(int index)
{
    const QString laufwerk = m_drive->itemText(index);
    if (!QDir(laufwerk).exists()) {
        m_drive->setCurrentText(plant.Browser_Laufwerk); // the old drive comes back
        return;
    }
    chooseFolder(laufwerk);
}

void KM_TempDatei::Liste_Aufbauen()
{
    m_baut = true;
    m_ok->setEnabled(false);
    setWindowTitle(plant.Browser_Ordner);
    for (int i = 0; i < 8; ++i) {
        const QString t = OfenCheck_Text(i);
        m_ofen[size_t(i)]->setText(t);
        m_ofen[size_t(i)]->setVisible(!t.isEmpty());
        m_ofen[size_t(i)]->setChecked(plant.Ofen_Filter & (1 << i));
    }
    m_list->clear();
    const auto zeilen = kal::Liste_Aufbauen(folderFiles(plant.Browser_Ordner));
    m_datum->setText(Datum_IN_Text());
    for (const BrowserLine &z : zeilen) {
        auto *item = new QListWidgetItem(z.text, m_list);
        item->setData(Qt::UserRole, z.kB);
    }
    const UserButton k = User_Taste_Setzen();
    m_userZustand = k.zustand;
    m_user->setText(k.text);
    m_user->setEnabled(k.an);
    m_user->setVisible(k.zustand != USER_AUS || !k.text.isEmpty());
    m_baut = false;
}

void KM_TempDatei::lineClicked()
{
    m_ok->setEnabled(false);
    setWindowTitle(plant.Browser_Ordner);
    QListWidgetItem *item = m_list->currentItem();
    if (!item || !chooseLine(item->text()))
        return;
    setWindowTitle(plant.Kurve_Datei);
    m_text->setPlainText(INFO_anzeigen());
    m_ok->setEnabled(true);
}

void KM_TempDatei::okClicked()
{
    if (!m_ok->isEnabled())
        return;
    if (parentWidget())
        parentWidget()->hide();
    else
        hide();
    Q_EMIT batchChosen();
}

void KM_TempDatei::furnaceClicked()
{
    if (m_baut)
        return;
    int filter = 0;
    for (int i = 0; i < 8; ++i)
        if (m_ofen[size_t(i)]->isChecked())
            filter |= 1 << i;
    plant.Ofen_Filter = i16(filter);
    Liste_Aufbauen();
}

void KM_TempDatei::userClicked()
{
    USER_LogButton_Click(m_userZustand);
    showFolder(plant.Browser_Ordner);
    Liste_Aufbauen();
}

QString KM_TempDatei::Text1() const
{
    return m_text->toPlainText();
}

} // namespace kal
