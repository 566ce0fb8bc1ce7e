#pragma once
// The channel tables of a furnace, derived from its type word and from the
// code words of its identity block.
//
// A slot of the channel tables is 0 for the batch on view in the curve window
// and 1..8 for the furnaces. Slot n uses Ofen_Typ[n] and the identity pairs
// Ofen_Kennung_A/B(n, pair); the per-furnace tables (layout values, log
// trigger, options, controller list) are only touched for slots 1..8, as
// furnace n-1.

#include "core/plant_state.h"

namespace kal {

constexpr int KANAELE = 12; ///< channels described by the identity pairs



/// `Kanal_Fix(n)`: the channel tables of slot n from the identity pairs, one
/// pair (A, B) per channel 0..11:
///   B bits 0..9  word of the set value; channels are counted from 0 up to
///                the first without one (at least 4, at most 11)
///   B bit 12     the channel's words lie ten apart instead of side by side
///   B bit 13     with A bit 13: divider 100 instead of 10
///   A bits 0..3  kind, bits 4..7 sub-code, bits 8..11 unit code
///   A bit 12     the name is completed from the sub-code (see the source)
///   A bit 13     the value carries decimals (divider 10 or 100)
///   A bit 14     the channel has a controller
///   A bit 15     the channel has a set value curve
void Kanal_Fix(int n);

/// `Spuren_Setzen(n)`: all channel tables of slot n from its type: a plain
/// furnace gets the fixed table of the plain layout, a furnace with a layout
/// block gets Kanal_Fix, its log trigger, its options and its controller list.
void Spuren_Setzen(int n);

} // namespace kal
