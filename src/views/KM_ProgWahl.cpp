#include "views/KM_ProgWahl.h"

#include "config/text_ids.h"
#include "core/dialogs.h"
#include "programs/program_select.h"

#include <QCloseEvent>
#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

namespace kal {

KM_ProgWahl::KM_ProgWahl(QWidget *parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("KM_ProgWahl"));
    auto *haupt = new QVBoxLayout(this);
    m_combo1 = new QComboBox(this);
    m_combo1->setMinimumWidth(260);
    connect(m_combo1, &QComboBox::activated, this, [this] { furnaceChosen(); });
    haupt->addWidget(m_combo1);

    m_liste = new QListWidget(this);
    m_liste->setFont(QFont(QStringLiteral("DejaVu Sans Mono")));
    m_liste->setMinimumSize(560, 320);
    connect(m_liste, &QListWidget::itemClicked, this, [this](QListWidgetItem *it) {
        prog.Prog_Nr = static_cast<i16>(it->data(Qt::UserRole).toInt());
        m_text1->setText(programNumberText(prog.Prog_Nr));
    });
    connect(m_liste, &QListWidget::itemDoubleClicked, this, [this](QListWidgetItem *it) {
        prog.Prog_Nr = static_cast<i16>(it->data(Qt::UserRole).toInt());
        m_text1->setText(programNumberText(prog.Prog_Nr));
        okClicked();
    });
    haupt->addWidget(m_liste, 1);

    auto *unten = new QHBoxLayout;
    m_text1 = new QLineEdit(this);
    m_text1->setFixedWidth(80);
    m_text1->setAlignment(Qt::AlignRight);
    connect(m_text1, &QLineEdit::editingFinished, this, [this] {
        if (m_text1->text().trimmed().isEmpty())
            return;
        prog.Prog_Nr = static_cast<i16>(typedNumber(m_text1->text()));
        m_text1->setText(programNumberText(prog.Prog_Nr));
    });
    unten->addWidget(m_text1);
    unten->addStretch(1);
    m_ok = new QPushButton(this);
    m_loeschen = new QPushButton(this);
    m_einfuegen = new QPushButton(this);
    m_abbruch = new QPushButton(this);
    connect(m_ok, &QPushButton::clicked, this, [this] { okClicked(); });
    connect(m_loeschen, &QPushButton::clicked, this, [this] { deleteClicked(); });
    connect(m_einfuegen, &QPushButton::clicked, this, [this] {
        if (prog.Prog_Ofen < 1 || prog.Puffer_Voll == 0)
            return;
        Q_EMIT m_text1->editingFinished();
        if (prog.Prog_Nr < 1)
            return;
        prog.Prog_Aus_Puffer = TRUE16;
        close();
        Q_EMIT openProgram(prog.Prog_Ofen, prog.Prog_Nr);
    });
    connect(m_abbruch, &QPushButton::clicked, this, [this] { close(); });
    for (QPushButton *b : {m_ok, m_loeschen, m_einfuegen, m_abbruch}) {
        b->setMinimumWidth(110);
        unten->addWidget(b);
    }
    haupt->addLayout(unten);
    setCaptions();
}

void KM_ProgWahl::setCaptions()
{
    setWindowTitle(Text_Id(text::SELECT_PROGRAMS).trimmed());
    m_ok->setText(Text_Id(text::OK).trimmed());
    m_loeschen->setText(Text_Id(text::DELETE).trimmed());
    m_einfuegen->setText(Text_Id(text::PASTE).trimmed());
    m_abbruch->setText(Text_Id(text::CANCEL).trimmed());
}

void KM_ProgWahl::load()
{
    m_combo1->clear();
    for (const FurnaceChoice &o : choiceFurnaces())
        m_combo1->addItem(o.text, o.daten);
    if (m_combo1->count() > 0) {
        // The furnace of the working copy stays chosen when it is in the list.
        const int i = m_combo1->findData(int(prog.Prog_Ofen));
        m_combo1->setCurrentIndex(i < 0 ? 0 : i);
    }
    furnaceChosen();
}

void KM_ProgWahl::furnaceChosen()
{
    m_liste->clear();
    m_text1->clear();
    if (m_combo1->count() == 0) {
        prog.Prog_Ofen = 0;
        prog.Prog_Nr = 0;
    } else {
        for (const ProgramEntry &e : selectionList(choiceFurnaceNumber(m_combo1->currentData().toInt()))) {
            auto *it = new QListWidgetItem(e.text, m_liste);
            it->setData(Qt::UserRole, e.p);
        }
    }
    m_ok->setEnabled(prog.Prog_Ofen >= 1);
    m_loeschen->setEnabled(prog.Prog_Ofen >= 1);
    m_einfuegen->setEnabled(prog.Prog_Ofen >= 1 && prog.Puffer_Voll != 0);
}

void KM_ProgWahl::okClicked()
{
    if (prog.Prog_Ofen < 1)
        return;
    Q_EMIT m_text1->editingFinished();
    close();
    prog.Prog_Aus_Puffer = 0;
    Q_EMIT openProgram(prog.Prog_Ofen, prog.Prog_Nr);
}

void KM_ProgWahl::deleteClicked()
{
    Q_EMIT m_text1->editingFinished();
    if (prog.Prog_Ofen < 1 || prog.Prog_Nr < 1)
        return;
    if (!dialogs().question(deleteQuestion()))
        return;
    for (int i = 0; i < m_liste->count(); ++i) {
        if (m_liste->item(i)->data(Qt::UserRole).toInt() == prog.Prog_Nr) {
            delete m_liste->takeItem(i);
            break;
        }
    }
    deleteSelected();
    m_text1->clear();
}

void KM_ProgWahl::closeEvent(QCloseEvent *e)
{
    e->accept();
    Q_EMIT closed();
}

} // namespace kal
