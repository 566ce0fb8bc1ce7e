#include "station/station_start.h"

#include "config/channel_tables.h"
#include "config/config_file.h"
#include "config/language_files.h"
#include "config/languages.h"
#include "config/paths.h"
#include "config/reg_names.h"
#include "core/dates.h"
#include "core/dialogs.h"
#include "core/plant_state.h"
#include "core/screen.h"
#include "link/channels.h"
#include "link/data_arrival.h"
#include "link/qt_socket.h"
#include "link/socket.h"
#include "operation/message_store.h"
#include "station/shutdown.h"
#include "station/wiring.h"

#include <QDate>
#include <QLocale>

namespace kal {

QString systemDateSeparator()
{
    const QString heute = QLocale::system().toString(QDate::currentDate(), QLocale::ShortFormat);
    return heute.contains(QLatin1Char('/')) ? QStringLiteral("/") : QStringLiteral(".");
}

void Station_Start()
{
    // The subsystems are connected before anything can arrive; a station that
    // would acknowledge log blocks nobody stores does not run.
    wireStation();
    const QStringList fehlt = missingHooks();
    if (!fehlt.isEmpty()) {
        dialogs().message(QStringLiteral("Kalmeron: not wired: ") + fehlt.join(QStringLiteral(", ")));
        endProcess(1);
        return;
    }

    // 1. Start values.
    plant.Live_Raster = 10;
    plant.Datum_Trenner = systemDateSeparator();
    fillStatusTexts();
    plant.Sekunden_Text = QStringLiteral("s");

    // 2. No text load is under way.
    for (int f = 0; f < OFEN_MAX; ++f)
        plant.Meld_Seite[f] = -1;

    // 3. Form entries 4, 6 and 7 and the controller entry are off; the main
    //    cycle switches the controller entry on while a furnace is online.
    for (int i : {4, 6, 7})
        screen().mnuform(i, false);
    screen().mnuRegler(false);

    // 5. The language table.
    plant.Befehl_Maske = 3;
    buildLanguageTable();

    // 6. Version pair of every furnace.
    for (int f = 0; f < OFEN_MAX; ++f)
        plant.Ofen_Version[f] = QStringLiteral("00");

    // 7. Paths.
    Pfade_Setzen();

    // 8. The message store stays open for the whole run.
    openMessageStore();

    // 9. The configuration.
    Config_Lesen();

    // 10. Channels of every furnace, then its channel tables. The channels are
    //     Qt sockets unless a test installed its own. A viewer opens no
    //     channel and makes no socket.
    if (!plant.viewer) {
        if (!Winsock1.Fabrik)
            Winsock1_Qt();
        connectReceivers();
    }
    plant.Server_Akt_IP4 = 0;
    for (int f = 0; f < OFEN_MAX; ++f) {
        if (plant.viewer)
            Ist_GKD(f);
        else
            Kanal_Setup(f);
        Spuren_Setzen(f + 1);
    }

    // 11. Message texts and track names from the store.
    loadMessageTexts();

    // 12. The other text tables (site language file, controller names), then
    //     the language switch.
    loadSiteTexts();
    Reg_Namen_Lesen();
    Sprachumschalt();

    // 13. The live page.
    plant.Prog_Anzahl = 100;
    screen().showMenu();

    // 14. No Modbus read is open on any channel.
    for (int k = 0; k < KANAL_MAX; ++k)
        plant.IP_Adr[k] = -1;

    // 15. The batch browser starts at the first of January of this year.
    const QString neujahr = Datum_Text(QDateTime(QDate(now().date().year(), 1, 1), QTime(0, 0), Qt::UTC),
                                       QStringLiteral("TTMMJJJJ"));
    plant.Datum_Von = neujahr;
    plant.Datum_Bis = neujahr;
}

} // namespace kal
