#include "views/KM_Alarme.h"

#include "core/plant_state.h"
#include "operation/messages_view_model.h"
#include "views/colours.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QShortcut>
#include <QVBoxLayout>

namespace kal {

namespace {
const char *const LAMPEN[4] = {"AKTIV", "Stop", " N2 ", "SMS"};
}

KM_Alarme::KM_Alarme(bool konfig, QWidget *parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("KM_Alarme"));
    setAttribute(Qt::WA_DeleteOnClose);
    Alarme_Oeffnen(konfig);

    auto *haupt = new QVBoxLayout(this);
    auto *oefen = new QGridLayout;
    oefen->setHorizontalSpacing(6);
    for (int f = 0; f < 8; ++f) {
        const int zeile = f % 4, spalte = (f / 4) * 6;
        m_check[f] = new QCheckBox(this);
        m_check[f]->setMinimumWidth(200);
        connect(m_check[f], &QCheckBox::toggled, this, [this, f](bool an) {
            Meld_Anzeige_Setzen(f, an ? 1 : 0);
            zeichnen(true);
        });
        oefen->addWidget(m_check[f], zeile, spalte);
        for (int k = 0; k < 4; ++k) {
            auto *l = new QLabel(QString::fromLatin1(LAMPEN[k]).trimmed(), this);
            l->setAlignment(Qt::AlignCenter);
            l->setFrameShape(QFrame::Panel);
            l->setFrameShadow(QFrame::Raised);
            l->setAutoFillBackground(true);
            l->setMinimumWidth(48);
            m_lampen[f][k] = l;
            oefen->addWidget(l, zeile, spalte + 1 + k);
        }
    }
    oefen->setColumnStretch(5, 1); // room between the two halves
    oefen->setColumnStretch(11, 1);
    haupt->addLayout(oefen);

    m_list = new QListWidget(this);
    m_list->setFont(QFont(QStringLiteral("DejaVu Sans Mono")));
    connect(m_list, &QListWidget::currentItemChanged, this, [this](QListWidgetItem *item) {
        if (!item)
            return;
        Meld_Zeile_Klick(item->data(Qt::UserRole).toInt());
        tastenZeigen();
    });
    haupt->addWidget(m_list, 1);

    auto *leiste = new QHBoxLayout;
    for (int i = 0; i < 8; ++i) {
        m_tasten[i] = new QPushButton(this);
        m_tasten[i]->setMinimumWidth(100);
        connect(m_tasten[i], &QPushButton::clicked, this, [this, i] { tasteGedrueckt(i); });
        auto *f = new QShortcut(QKeySequence(Qt::Key_F1 + i), this);
        connect(f, &QShortcut::activated, this, [this, i] { tasteGedrueckt(i); });
        leiste->addWidget(m_tasten[i]);
    }
    haupt->addLayout(leiste);

    Beschriften();
    resize(980, 560);
}

KM_Alarme::~KM_Alarme() = default;

void KM_Alarme::Beschriften()
{
    setWindowTitle(Alarme_Titel());
    for (int f = 0; f < 8; ++f) {
        const QSignalBlocker b(m_check[f]);
        m_check[f]->setText(Check_Text(f));
        m_check[f]->setChecked(plant.Meld_Anzeige[f] != 0);
    }
    zeichnen(true);
}

void KM_Alarme::zeichnen(bool liste)
{
    lampenZeigen();
    if (liste)
        listeZeigen();
    tastenZeigen();
}

void KM_Alarme::lampenZeigen()
{
    const auto lampen = CODE_Akt();
    for (int f = 0; f < 8; ++f) {
        m_check[f]->setVisible(Check_Sichtbar(f));
        for (int k = 0; k < 4; ++k) {
            QLabel *l = m_lampen[f][k];
            l->setVisible(lampen[f].sichtbar);
            QPalette p = l->palette();
            p.setColor(QPalette::Window, Farbe_Qt(lampen[f].farbe[k], palette()));
            l->setPalette(p);
        }
    }
}

void KM_Alarme::listeZeigen()
{
    const int war = m_list->currentRow();
    const QSignalBlocker b(m_list);
    m_list->clear();
    for (const Meld_Zeile &z : Meld_Akt()) {
        auto *item = new QListWidgetItem(z.text, m_list);
        item->setData(Qt::UserRole, z.daten);
    }
    if (war >= 0 && war < m_list->count())
        m_list->setCurrentRow(war);
}

void KM_Alarme::tastenZeigen()
{
    const auto texte = Tasten_Texte();
    for (int i = 0; i < 8; ++i) {
        m_tasten[i]->setText(texte[i].trimmed().isEmpty() ? QString()
                                                          : QStringLiteral("F%1  %2").arg(i + 1).arg(texte[i].trimmed()));
        m_tasten[i]->setEnabled(!texte[i].trimmed().isEmpty());
    }
}

void KM_Alarme::tasteGedrueckt(int i)
{
    switch (Taste_Klick(i, 0)) {
    case Tasten_Folge::Nichts:
        break;
    case Tasten_Folge::Neu_Zeichnen:
        zeichnen(true);
        break;
    case Tasten_Folge::Schliessen:
        close();
        break;
    }
}

void KM_Alarme::closeEvent(QCloseEvent *e)
{
    Alarme_Schliessen();
    Q_EMIT geschlossen();
    e->accept();
}

} // namespace kal
