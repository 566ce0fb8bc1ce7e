#include "station/document_start.h"

#include "config/channel_tables.h"
#include "config/config_file.h"
#include "config/language_files.h"
#include "config/languages.h"
#include "config/paths.h"
#include "core/plant_state.h"
#include "operation/message_store.h"
#include "station/station_start.h"

#include <QDir>
#include <QFileInfo>

namespace kal {

void startForDocuments()
{
    plant.Live_Raster = 10;
    plant.Datum_Trenner = systemDateSeparator();
    fillStatusTexts();
    plant.Sekunden_Text = QStringLiteral("s");
    plant.Befehl_Maske = 3;
    buildLanguageTable();
    for (int f = 0; f < OFEN_MAX; ++f)
        plant.Ofen_Version[f] = QStringLiteral("00");
    Pfade_Setzen();
    // The message store is only read: a folder without one keeps the texts of
    // the language table.
    const bool meldungen = QFileInfo(QDir(plant.Pfad[0]).filePath(MELD_DATEI)).isFile() && openMessageStore();
    Config_Lesen();
    for (int f = 0; f < OFEN_MAX; ++f)
        Spuren_Setzen(f + 1);
    if (meldungen)
        loadMessageTexts();
    loadSiteTexts();
    Sprachumschalt();
    if (meldungen)
        closeMessageStore();
}

} // namespace kal
