#include "station/wiring.h"

#include "core/hooks.h"
#include "curves/curve_store.h"
#include "operation/message_store.h"
#include "operation/messages_view_model.h"
#include "operation/text_load.h"
#include "recording/recorder.h"

namespace kal {

void Station_Verdrahten()
{
    hooks.Charge_Schreiben = Charge_Schreiben;
    hooks.MeldEintrag = MeldEintrag;
    hooks.Alarme_Refresh = Alarme_Config_Neu;
    hooks.Load_Text = Load_Text;
    hooks.Charge_Online = Charge_Online;
}

QStringList Fehlende_Hooks()
{
    QStringList fehlt;
    if (!hooks.Charge_Schreiben)
        fehlt << QStringLiteral("Charge_Schreiben");
    return fehlt;
}

} // namespace kal
