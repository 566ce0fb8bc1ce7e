#pragma once
// One page of curves: 361 points (0..360) per curve in steps of the raster,
// whatever the length of the batch. The reducer fills it from the entry
// lists, the scaling and the painter read it. The live curve and the
// 16-channel view use the same page form.

#include "core/plant_state.h"

#include <array>
#include <cstdint>

namespace kal {

constexpr int PUNKTE = 361;          ///< points 0..360 of a page
constexpr int SEGMENTE = 360;        ///< segment i joins point i and i + 1
constexpr int SEITEN_KANAELE = 11;   ///< channels 0..10 of a page
constexpr int RESERVE_KURVE = 11;    ///< Punkt_Ist[11]: the spare curve
constexpr int SEITEN_SPUREN = 18;    ///< auxiliary tracks of a page

template <typename T>
using PointRow = std::array<T, PUNKTE>;

struct PlotPage {
    std::array<PointRow<i16>, SEITEN_KANAELE + 1> Punkt_Ist{}; ///< actual values; [11] the spare curve
    std::array<PointRow<i16>, SEITEN_KANAELE> Punkt_Soll{};    ///< set values
    std::array<PointRow<i16>, SEITEN_KANAELE> Punkt_Out{};     ///< outputs, percent
    PointRow<i16> Punkt_Segment{};                             ///< programme segment number
    std::array<PointRow<int32_t>, SEITEN_SPUREN> Punkt_Spur{}; ///< auxiliary values
    /// `Punkt_Text`: the entry of Wertliste 0 whose text the point carries, -1 none.
    PointRow<int32_t> Punkt_Eintrag{};
    std::array<i16, SEITEN_KANAELE> Spur_Letzter{};              ///< last point with a real sample

    /// Every point 0, no point texts.
    void clear();
};

} // namespace kal
