// The configuration file "Kalmeron.DAT" read at start-up, with the checks of
// the folders it names and the colour repair that writes it back.
//
// Input: the file's bytes. A '/' in them becomes '_', so that the folders the
// start-up creates for the paths it reads stay inside the scratch folder.

#include "config/config_file.h"
#include "config/paths.h"
#include "support/fuzz_support.h"

void kal::fuzz::fuzzOne(Input &in)
{
    freshRun();
    Pfade_Setzen();
    writeFile(dataFile(CONFIG_DATEI), noSeparators(in.rest()));
    Config_Lesen();
}
