// The site text file "OVDSMELD.TXT" applied at start-up over the built-in
// language table, then every row of the table file "KM_SP.LNG" built from the
// result: each must keep its 312 bytes whatever the site file put in.
//
// Input: the file's bytes (8-bit text, lines ended by CR, LF or both).

#include "config/language_files.h"
#include "config/languages.h"
#include "config/paths.h"
#include "support/fuzz_support.h"

#include <cstdlib>

void kal::fuzz::fuzzOne(Input &in)
{
    freshRun();
    Pfade_Setzen();
    buildLanguageTable();
    writeFile(dataFile(MELD_TABELLE_DATEI), in.rest());
    loadSiteTexts();
    Sprachumschalt();
    for (int row = 0; row < SPRACH_IDS; ++row)
        if (languageTableRecord(row).size() != SPRACH_SATZ)
            std::abort();
}
