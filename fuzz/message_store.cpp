// The message store "Kalmeron.mld" restored at start-up (texts, active
// messages, track names of every furnace), then one message of each furnace
// coming or going on top of what was restored.
//
// Input: one byte of furnace kinds (bit f: furnace f has a version word with
// 48 messages, else 32), one byte per furnace for the message that comes or
// goes (bit 7: goes; bits 0..5: its number, 0 none), then the file's bytes.

#include "core/plant_state.h"
#include "operation/message_store.h"
#include "support/fuzz_support.h"

void kal::fuzz::fuzzOne(Input &in)
{
    const QString ordner = freshRun();
    plant.Pfad[0] = ordner;
    const uint8_t arten = in.byte();
    uint8_t meldung[OFEN_MAX];
    for (int f = 0; f < OFEN_MAX; ++f) {
        plant.Ofen_Typ[f + 1] = (arten >> f & 1) ? i16(0x9000) : i16(3);
        meldung[f] = in.byte();
    }
    writeFile(ordner + QStringLiteral("/Kalmeron.mld"), in.rest());
    if (!openMessageStore())
        std::abort();
    loadMessageTexts();
    for (int f = 0; f < OFEN_MAX; ++f) {
        const int n = meldung[f] & 0x3F;
        if (n != 0)
            MeldEintrag(f, (meldung[f] & 0x80) ? -n : n);
    }
    closeMessageStore();
}
