// The controller names file "OVDSFUNC.TXT" read at start-up: sections by
// furnace serial, names and units of controllers 1..6.
//
// Input: the file's bytes (8-bit text). The furnaces carry the serials of the
// demo plant, so that sections of the seed match furnaces.

#include "config/paths.h"
#include "config/reg_names.h"
#include "core/plant_state.h"
#include "support/fuzz_support.h"

void kal::fuzz::fuzzOne(Input &in)
{
    freshRun();
    Pfade_Setzen();
    const char *serien[] = {"1203-017-KHP", "1305-042-SGO", "1410-003-VAC", "1512-108-HRT"};
    for (int f = 0; f < 4; ++f)
        plant.Ofen_Serie[f] = QLatin1String(serien[f]);
    writeFile(dataFile(REG_NAMEN_DATEI), in.rest());
    Reg_Namen_Lesen();
}
