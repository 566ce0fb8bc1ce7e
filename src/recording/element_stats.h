#pragma once
// Heating element statistics: from the element current groups (kind 160) and
// the group outputs of the sample groups (record 155) a furnace logs, a
// relative resistance figure per element, averaged over rounds of ten good
// samples and kept as a long history, so that an ageing element shows as a
// slow drift long before it fails.
//
// A sample counts only while every heating group runs at an output of at
// least 10: at a low output the currents say little. Ten samples make a
// round; the figure of an element is its mean group output / (mean current
// + 1). The first two rounds go to KM_EL<n>.DAT; the third writes the figure
// into the ring of KM_RX<n>.DAT and starts over, so one history record stands
// for 30 good samples.
//
// Unless the furnace has four heating groups, all four output bytes count as
// the output of the first group.
//
// The samples in memory are kept per furnace, so two furnaces with element
// measurement never mix their rounds.

#include "core/plant_state.h"
#include "recording/batch_record.h"
#include "recording/element_file.h"

#include <QString>
#include <array>
#include <vector>

namespace kal {

constexpr int STROM_SLOTS = 10;   ///< samples of a round
constexpr int GRUPPEN = 4;
constexpr int GRUPPE_MIN = 10;    ///< lowest group output of a counting sample

/// The element store of one furnace.
struct ElementStore {
    std::array<std::array<i16, STROM_SLOTS>, ELEMENTE> Strom_Wert{};
    std::array<std::array<i16, STROM_SLOTS>, ELEMENTE> Gruppe_Wert{};
    i16 Strom_Slot = 0;                       ///< next slot 0..9
    std::array<u8, GRUPPEN> Gruppe_Stufe{};   ///< output per group, from record 155
    std::array<i16, ELEMENTE> Strom_Neu{};    ///< values of records 160, 161, 162
};

/// The stores of furnaces 0..7.
extern std::array<ElementStore, OFEN_MAX> Elemente;

/// The recorder stored a sample group of furnace index `ofen`: after a 154
/// group the group outputs of its record 155 are kept (high and low byte of
/// w31, then of w32); after a 160 group the 18 currents of records 160, 161
/// and 162 are kept and `Element_Statistik` runs with the time of the sample
/// ("TT.MM.JJJJ HH:MM:SS").
void noteElementGroup(int ofen, const std::array<BatchRecord, 4> &gruppe, const QString &zeit);

/// `Element_Statistik(furnace index, time of the sample)`: counts the sample
/// held in the store and, after ten, writes the round (see above). A file
/// that can't be written raises RunError(ERR_FILE).
void Element_Statistik(int ofen, const QString &zeit);

/// One record of the history, with the key it is sorted by.
struct RxEntry {
    QString schluessel;   ///< "JJMMTT HH:MM:SS" of Zeit
    ElementRecord satz;
};

/// The history of furnace number 1..8 from KM_RX, records 2 on, sorted by
/// time (oldest first); records without a readable time are left out. A
/// missing file gives an empty list.
std::vector<RxEntry> rxHistory(int ofenNr);

} // namespace kal
