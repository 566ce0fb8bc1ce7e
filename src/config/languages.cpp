// Switching the station's language: the tables that hold words of the
// current language are rebuilt from the language table.

#include "config/languages.h"

#include "core/conversions.h"
#include "core/screen.h"

namespace kal {

namespace {

/// Rows of the segment commands 0..5: Ende, Rampe, Haltezeit, Manuell, Sprung, Zyklus.
constexpr int BEFEHL_ZEILE[6] = {39, 10, 11, 12, 13, 14};
constexpr int BEFEHL_BREITE = 9;
/// Rows of the run states off, hold, on ("Aus", "Halt", "Ein").
constexpr int ZUSTAND_ZEILE[3] = {56, 57, 58};
constexpr int MELD_TEXT_BREITE = 22;

} // namespace

void Sprachumschalt()
{
    const int lang = plant.Sprache;
    // Check first, so that a wrong language leaves every table as it was.
    if (lang >= SPRACHEN)
        raiseBounds("Sprache", lang);

    for (int k = 0; k < 6; ++k)
        plant.Befehl_Name[k] = fixedWidth(plant.Sprachtext(lang, BEFEHL_ZEILE[k]), BEFEHL_BREITE);
    for (int k = 0; k < 3; ++k)
        plant.Run_State_Text[k] =
            QStringLiteral("  ---") + plant.Sprachtext(lang, ZUSTAND_ZEILE[k]) + QStringLiteral("--- ");
    for (int ofen = 0; ofen < OFEN_MAX; ++ofen)
        for (int m = 0; m < MELD_PRO_OFEN; ++m)
            plant.Meld_Text(ofen, m) = fixedWidth(plant.Meldtext[m](lang, ofen), MELD_TEXT_BREITE);

    screen().languageChanged();
}

QString languageText(int id)
{
    return plant.Sprachtext(plant.Sprache, id);
}

int languageNameId(int column)
{
    static constexpr int ids[SPRACHEN] = {71, 72, 73, 75, 74, 76};
    if (column < 0 || column >= SPRACHEN)
        raiseBounds("language column", column);
    return ids[column];
}

} // namespace kal
