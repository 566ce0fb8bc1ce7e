#include "views/KM_Logdaten.h"

#include "core/plant_state.h"
#include "core/screen.h"
#include "recording/log_book.h"

#include <QListWidget>
#include <QVBoxLayout>

namespace kal {

namespace {
constexpr int MENUE_LOGDATEN = 2; ///< entry of the form menu
} // namespace

KM_Logdaten::KM_Logdaten(QWidget *parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("KM_Logdaten"));
    setAttribute(Qt::WA_DeleteOnClose);
    auto *l = new QVBoxLayout(this);
    m_list = new QListWidget(this);
    m_list->setFont(QFont(QStringLiteral("DejaVu Sans Mono")));
    m_list->setUniformItemSizes(true);
    l->addWidget(m_list);
    kal::screen().mnuform(MENUE_LOGDATEN, false);
    resize(820, 560);
}

KM_Logdaten::~KM_Logdaten()
{
    kal::screen().mnuform(MENUE_LOGDATEN, true);
}

void KM_Logdaten::load(int ofenNr)
{
    m_list->clear();
    const QString pfad = (ofenNr >= 1 && ofenNr <= OFEN_MAX) ? plant.Charge_Datei[ofenNr - 1] : QString();
    const LogBookPage L = readLogBook(pfad);
    setWindowTitle(L.titel);
    for (int i = 0; i < L.zeilen.size(); ++i) {
        auto *item = new QListWidgetItem(L.zeilen[i], m_list);
        item->setData(Qt::UserRole, L.werte[size_t(i)]);
    }
}

} // namespace kal
