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
    openMessages(konfig);

    auto *haupt = new QVBoxLayout(this);
    auto *oefen = new QGridLayout;
    oefen->setHorizontalSpacing(6);
    for (int f = 0; f < 8; ++f) {
        const int zeile = f % 4, spalte = (f / 4) * 6;
        m_check[f] = new QCheckBox(this);
        m_check[f]->setMinimumWidth(200);
        connect(m_check[f], &QCheckBox::toggled, this, [this, f](bool an) {
            tickBox(f, an ? 1 : 0);
            redraw(true);
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
        messageLineClicked(item->data(Qt::UserRole).toInt());
        showKeys();
    });
    haupt->addWidget(m_list, 1);

    auto *leiste = new QHBoxLayout;
    for (int i = 0; i < 8; ++i) {
        m_tasten[i] = new QPushButton(this);
        m_tasten[i]->setMinimumWidth(100);
        connect(m_tasten[i], &QPushButton::clicked, this, [this, i] { keyPressed(i); });
        auto *f = new QShortcut(QKeySequence(Qt::Key_F1 + i), this);
        connect(f, &QShortcut::activated, this, [this, i] { keyPressed(i); });
        leiste->addWidget(m_tasten[i]);
    }
    haupt->addLayout(leiste);

    setCaptions();
    resize(980, 560);
}

KM_Alarme::~KM_Alarme() = default;

void KM_Alarme::setCaptions()
{
    setWindowTitle(messagesTitle());
    for (int f = 0; f < 8; ++f) {
        const QSignalBlocker b(m_check[f]);
        m_check[f]->setText(boxCaption(f));
        m_check[f]->setChecked(plant.Meld_Anzeige[f] != 0);
    }
    redraw(true);
}

void KM_Alarme::redraw(bool liste)
{
    showLamps();
    if (liste)
        showList();
    showKeys();
}

void KM_Alarme::showLamps()
{
    const auto lampen = CODE_Akt();
    for (int f = 0; f < 8; ++f) {
        m_check[f]->setVisible(boxVisible(f));
        for (int k = 0; k < 4; ++k) {
            QLabel *l = m_lampen[f][k];
            l->setVisible(lampen[f].sichtbar);
            QPalette p = l->palette();
            p.setColor(QPalette::Window, qtColour(lampen[f].farbe[k], palette()));
            l->setPalette(p);
        }
    }
}

void KM_Alarme::showList()
{
    const int war = m_list->currentRow();
    const QSignalBlocker b(m_list);
    m_list->clear();
    for (const MessageLine &z : Meld_Akt()) {
        auto *item = new QListWidgetItem(z.text, m_list);
        item->setData(Qt::UserRole, z.daten);
    }
    if (war >= 0 && war < m_list->count())
        m_list->setCurrentRow(war);
}

void KM_Alarme::showKeys()
{
    const auto texte = messageKeyCaptions();
    for (int i = 0; i < 8; ++i) {
        m_tasten[i]->setText(texte[i].trimmed().isEmpty() ? QString()
                                                          : QStringLiteral("F%1  %2").arg(i + 1).arg(texte[i].trimmed()));
        m_tasten[i]->setEnabled(!texte[i].trimmed().isEmpty());
    }
}

void KM_Alarme::keyPressed(int i)
{
    switch (messageKey(i, 0)) {
    case KeyEffect::Nichts:
        break;
    case KeyEffect::Neu_Zeichnen:
        redraw(true);
        break;
    case KeyEffect::Schliessen:
        close();
        break;
    }
}

void KM_Alarme::closeEvent(QCloseEvent *e)
{
    messagesClosed();
    Q_EMIT closed();
    e->accept();
}

} // namespace kal
