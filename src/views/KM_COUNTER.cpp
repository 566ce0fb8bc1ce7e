#include "views/KM_COUNTER.h"

#include "config/text_ids.h"
#include "core/plant_state.h"
#include "programs/program_transfer.h"

#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

namespace kal {

namespace {
constexpr int TAKT_MS = 50;
constexpr int NACHLAUF_MS = 400; ///< the full bar stays this long before the form closes
} // namespace

KM_COUNTER::KM_COUNTER(int ofen, int anzahl, const QString &name, QWidget *parent)
    : QDialog(parent), m_ofen(ofen), m_start(turnsUntil(ofen) + 1)
{
    setObjectName(QStringLiteral("KM_COUNTER"));
    setWindowTitle(Text_Id(text::TRANSFER).trimmed());
    setModal(true);
    auto *l = new QVBoxLayout(this);
    m_text = new QLabel(this);
    m_text->setText(Text_Id(text::TRANSFER).trimmed() + QStringLiteral(" \"") + name.trimmed() +
                    QStringLiteral("\"  →  ") + Text_Id(text::FURNACE).trimmed() + QLatin1Char(' ') +
                    QString::number(ofen + 1) + QStringLiteral(": ") + plant.Ofen_Name[ofen].trimmed() +
                    QStringLiteral("  (") + QString::number(anzahl) + QLatin1Char(' ') +
                    localText(QStringLiteral("Worte"), QStringLiteral("words")) + QLatin1Char(')'));
    l->addWidget(m_text);
    m_balken = new QProgressBar(this);
    m_balken->setRange(0, 100);
    m_balken->setMinimumWidth(420);
    l->addWidget(m_balken);
    m_abbruch = new QPushButton(Text_Id(text::CANCEL).trimmed(), this);
    connect(m_abbruch, &QPushButton::clicked, this, [this] {
        plant.Write_Len[m_ofen] = 0; // the block never goes out
        reject();
    });
    l->addWidget(m_abbruch, 0, Qt::AlignRight);
    m_timer.setInterval(TAKT_MS);
    connect(&m_timer, &QTimer::timeout, this, [this] { tick(); });
    m_timer.start();
    tick();
}

void KM_COUNTER::tick()
{
    if (m_fertig)
        return;
    if (!writePending(m_ofen)) {
        m_fertig = true;
        m_balken->setValue(100);
        m_abbruch->setEnabled(false);
        QTimer::singleShot(NACHLAUF_MS, this, &QDialog::accept);
        return;
    }
    // The block goes out at the furnace's turn: the bar follows the turns of
    // the main cycle still to come. It never runs back (a furnace resting
    // after a lost link is passed over and comes round again).
    const int zuege = turnsUntil(m_ofen) + 1;
    const int wert = 100 * (m_start - std::min(zuege, m_start)) / (m_start + 1);
    m_balken->setValue(std::max(m_balken->value(), wert));
}

bool KM_COUNTER::showModal(int ofen, int anzahl, const QString &name, QWidget *parent)
{
    KM_COUNTER f(ofen, anzahl, name, parent);
    return f.exec() == QDialog::Accepted;
}

} // namespace kal
