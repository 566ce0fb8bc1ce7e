#include "recording/recorder_block.h"

#include "core/plant_state.h"

namespace kal {

LogFields Log_Satz;

namespace {
StateReset reset{[] { Log_Satz = LogFields{}; }};
} // namespace

namespace {

int lowByte(i16 w) { return static_cast<uint16_t>(w) & 0xFF; }
int highByte(i16 w) { return static_cast<uint16_t>(w) >> 8; }
i16 wordOf(int high, int low) { return static_cast<i16>(((high & 0xFF) << 8) | (low & 0xFF)); }

} // namespace

i32 LogFields::batchNumber() const
{
    return static_cast<i32>(static_cast<uint32_t>(static_cast<uint16_t>(w[6])) |
                            (static_cast<uint32_t>(static_cast<uint16_t>(w[7])) << 16));
}

LogBlock blockWords(int ofen, int basis, int count)
{
    LogBlock w{};
    for (int n = 0; n < count && n < int(w.size()); ++n)
        w[n] = plant.SPS_Wort(ofen, basis + n);
    return w;
}

LogBlock unpackCompact(const CompactBlock &c, bool usb)
{
    LogBlock w{};
    w[0] = Satz_Charge;
    w[1] = c[1];
    w[2] = c[2];
    w[6] = c[3];
    w[7] = c[4];
    w[8] = c[5];
    w[9] = c[6];
    w[36] = c[7];
    w[30] = c[10];
    w[37] = c[9];
    w[3] = w[10] = c[11];
    w[4] = w[20] = c[12];
    // c13: output in the low byte, two more bits of it in the high byte, and
    // the ninth bits of the two values packed into c14.
    const int stufe = highByte(c[13]) & 3;
    w[5] = usb ? static_cast<i16>(lowByte(c[13])) : wordOf(stufe, lowByte(c[13]));
    w[21] = static_cast<i16>(usb ? highByte(c[13]) : stufe);
    const int erster = highByte(c[14]) + ((c[13] & 0x4000) ? 256 : 0);
    const int zweiter = lowByte(c[14]) + ((c[13] & 0x2000) ? 256 : 0);
    w[22] = static_cast<i16>(zweiter);
    w[23] = static_cast<i16>(erster);
    w[14] = static_cast<i16>(highByte(c[15]));
    w[24] = static_cast<i16>(lowByte(c[15]));
    w[31] = wordOf(highByte(c[8]), 0);
    w[38] = wordOf(lowByte(c[8]), 100);
    return w;
}

bool Kompakt_Lesen(int ofen, int basis, LogBlock &ziel, bool usb)
{
    CompactBlock c{};
    for (int n = 0; n < KOMPAKT_WORTE; ++n)
        c[n] = plant.SPS_Wort(ofen, basis + n);
    ziel = unpackCompact(c, usb);
    return true;
}

void LogBlock_Lesen(int ofen)
{
    const int basis = plant.Adr_Trigger[ofen];
    if (plant.Log_Art == Log_Kompakt) {
        if (Kompakt_Lesen(ofen, basis, Log_Satz.w))
            plant.Log_Art = Satz_Charge;
    } else if (plant.Log_Art == Satz_Charge || plant.Log_Art == Satz_Strom) {
        Log_Satz.w = blockWords(ofen, basis);
    }
}

} // namespace kal
