#pragma once
// The page word handshake of the exchange window (page word 388, or 1088 on
// the large layout). The station writes a request into the page word; the PLC
// fills the window and answers in the same word:
//   122        track page: four track names (300, 308, 316, 324; 8 characters),
//              two names (332, 340; 16 characters), 11 code pairs from 348 on;
//              answered 1122
//   110..121   message texts 4p+1 .. 4p+4 of page p = request - 110, at 300,
//              320, 340, 360 (22 characters each); answered 1000 + request
//   1..6       the station has written a program into the transfer area for
//              memory place n: the PLC stores it and answers 170, which the
//              station clears
//   101..106   the station asks for memory place n: the PLC puts it into the
//              transfer area and answers 1100 + n
// Other values (0, the PLC's own answers written back) leave the PLC idle.

#include "sim/plant_description.h"

#include <QVector>
#include <array>
#include <cstdint>

namespace kal::sim {

class WordImage;

class PageHandshake {
public:
    explicit PageHandshake(const FurnaceDescription &d);

    int pageWord() const { return page_; }
    /// The station wrote `value` into the page word.
    void stationWrote(WordImage &image, int16_t value);

    /// Memory place n (1..6) as stored: words P-10..P+99 of the transfer area.
    QVector<int16_t> place(int n) const;
    void setPlace(int n, QVector<int16_t> words);

private:
    void clearWindow(WordImage &image) const;
    void trackPage(WordImage &image) const;
    void textPage(WordImage &image, int page) const;

    const FurnaceDescription &d_;
    int page_;
    int p_;
    std::array<QVector<int16_t>, 6> places_;
};

} // namespace kal::sim
