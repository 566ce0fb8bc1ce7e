#pragma once
// The log block in hand: the words a furnace offers at its `Adr_Trigger`,
// taken apart into one shared record of fields before the recorder stores
// them.
//
// A headed furnace logs sample groups of 40 words (kind 154, element
// currents 160); the furnaces with a 16-word trigger send the same sample
// packed into 16 words (kind 131), which is unpacked into the 40-word form of
// 154 first, so that the rest of the recorder sees only 154.
//
// Compact block c0..c15 (c0 = 131), unpacked into w0..w39 of a 154 block:
//
//   w1, w2      c1, c2 (time stamp)        w30   c10
//   w6, w7      c3, c4 (batch number)      w36   c7
//   w8, w9      c5, c6                     w37   c9
//   w3, w10     c11                        w14   high byte of c15
//   w4, w20     c12                        w24   low byte of c15
//   w5          low byte of c13, (high byte of c13 AND 3) as high byte
//   w21         high byte of c13 AND 3
//   w23         high byte of c14, plus 256 when bit 14 of c13 is set
//   w22         low byte of c14, plus 256 when bit 13 of c13 is set
//   w31         high byte of c8 as high byte, low byte 0
//   w38         low byte of c8 as high byte, 100 as low byte
//
// every other word 0.

#include "recording/batch_record.h"

#include <array>

namespace kal {

constexpr i16 Log_Kompakt = 131;   ///< compact sample of the 16-word trigger
constexpr int KOMPAKT_WORTE = 16;

using CompactBlock = std::array<i16, KOMPAKT_WORTE>;

/// The record of fields of the block in hand. It is one for the whole plant,
/// and only a sample group (131, 154, 160) refills its words: a single sample,
/// a program text or an operator text leaves the words of the group before,
/// and with them the batch number that such a block is stored under.
struct LogFields {
    LogBlock w{};    ///< w0..w39 in the form of 154 or 160

    /// Batch number of w6 (low word) and w7 (high word).
    i32 batchNumber() const;
};

/// The unpacked block (see LogFields).
extern LogFields Log_Satz;

/// Words n = 0..count-1 at `basis` + n of the furnace's image (missing words
/// of a shorter block are 0). An address past the image raises RunError(9).
LogBlock blockWords(int ofen, int basis, int count = 40);

/// The 154 form of a compact block (table above); w0 = 154. For the USB
/// import (`usb`) w5 is the low byte of c13 alone and w21 its whole high byte.
LogBlock unpackCompact(const CompactBlock &c, bool usb = false);

/// `Kompakt_Lesen(furnace index, base address, USB buffer)`: the compact block
/// of 16 words at `basis` of the furnace's image, unpacked into `ziel`.
/// Always succeeds. The USB import lays its records into scratch words of
/// the image and unpacks them with `usb` set.
bool Kompakt_Lesen(int ofen, int basis, LogBlock &ziel, bool usb = false);

/// `LogBlock_Lesen(furnace index)`: takes the block at `Adr_Trigger` apart by
/// `Log_Art`: 131 is unpacked and becomes 154; 154 and 160 are copied word by
/// word; any other kind leaves the words as they were. (The records take their
/// time from `Datum_Log` of the furnace.)
void LogBlock_Lesen(int ofen);

} // namespace kal
