#include "station/wiring.h"

#include "core/hooks.h"
#include "curves/curve_store.h"
#include "operation/message_store.h"
#include "operation/messages_view_model.h"
#include "operation/text_load.h"
#include "recording/recorder.h"

namespace kal {

void wireStation()
{
    hooks.Charge_Schreiben = Charge_Schreiben;
    hooks.MeldEintrag = MeldEintrag;
    hooks.Alarme_Refresh = messageConfigChanged;
    hooks.Load_Text = Load_Text;
    hooks.Charge_Online = Charge_Online;
}

QStringList missingHooks()
{
    QStringList fehlt;
    if (!hooks.Charge_Schreiben)
        fehlt << QStringLiteral("Charge_Schreiben");
    return fehlt;
}

} // namespace kal
