#pragma once
// The decoder of a furnace's word image: runs after every answer that stored
// words into `SPS_Wort` and reacts to the addresses that close a block (99,
// 199, 299, 399, 699), to the identity block at `Ofen_Basis` and to the log
// trigger at `Adr_Trigger` + 2. It hands the log block to the recorder, starts
// the text load and reports message changes, all through the hooks.

#include <cstdint>

namespace kal {

/// `Server_Offset` of a furnace index from word 215: the high byte chooses the
/// server window (0x48 and 0x50 -> 3000, 0x49 -> 3000 + 1000 * furnace index,
/// 0x51..0x56 -> 4000..9000), anything else 0 (no server).
int16_t serverBase(int ofen, int16_t wort215);

/// `Block_Decode(furnace, start, count)`: goes through the addresses start ..
/// start + count - 1 of the words just stored and does what each address
/// means; then the text load, the recorder hand-over of a log block and the
/// message scan. Bounds errors travel to the caller (the receive handler).
void Block_Decode(int ofen, int start, int count);

/// `MeldScan(furnace)`: compares words 87..89 with `Meld_Letzt` and reports
/// each message bit that came (+n) or went (-n), lower bit first, to the
/// message log; clears `Meld_Pruefen`.
void MeldScan(int ofen);

} // namespace kal
