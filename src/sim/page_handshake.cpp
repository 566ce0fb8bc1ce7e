#include "sim/page_handshake.h"

#include "sim/program_words.h"
#include "sim/word_image.h"

namespace kal::sim {

namespace {

constexpr int kWindow = 300;
constexpr int kTransferWords = 110; ///< P-10 .. P+99

} // namespace

PageHandshake::PageHandshake(const FurnaceDescription &d) : d_(d), page_(d.pageWord()), p_(d.transferBase())
{
    for (int n = 1; n <= 6; ++n)
        setPlace(n, programWords(n <= d.places.size() ? d.places[n - 1] : ProgramDescription{},
                                 d.longProgramNames()));
}

QVector<int16_t> PageHandshake::place(int n) const
{
    return places_[size_t(n - 1)];
}

void PageHandshake::setPlace(int n, QVector<int16_t> words)
{
    words.resize(kTransferWords, 0);
    places_[size_t(n - 1)] = std::move(words);
}

void PageHandshake::clearWindow(WordImage &image) const
{
    for (int a = kWindow; a < kWindow + 100; ++a)
        if (a != page_)
            image.set(a, 0);
}

void PageHandshake::trackPage(WordImage &image) const
{
    clearWindow(image);
    for (int i = 0; i < 4; ++i)
        image.putText(300 + 8 * i, 4, d_.trackNames.value(i));
    for (int i = 0; i < 2; ++i)
        image.putText(332 + 8 * i, 8, d_.pageNames.value(i));
    for (int i = 0; i < 22; ++i)
        image.set(348 + i, d_.codes.value(i));
}

void PageHandshake::textPage(WordImage &image, int page) const
{
    clearWindow(image);
    const QStringList texts = d_.messageTexts.isEmpty() ? defaultMessageTexts() : d_.messageTexts;
    for (int i = 0; i < 4; ++i)
        image.putText(300 + 20 * i, 11, texts.value(4 * page + i));
}

void PageHandshake::stationWrote(WordImage &image, int16_t value)
{
    int16_t answer = 0;
    if (value == 122) {
        trackPage(image);
        answer = 1122;
    } else if (value >= 110 && value <= 121) {
        textPage(image, value - 110);
        answer = static_cast<int16_t>(1000 + value);
    } else if (value >= 1 && value <= 6) {
        // Names 17..30 stand before P only on the long-name layout.
        const QVector<int16_t> words = d_.longProgramNames()
                                           ? image.get(p_ - 10, kTransferWords)
                                           : QVector<int16_t>(10, 0) + image.get(p_, 100);
        setPlace(value, words);
        answer = 170;
    } else if (value >= 101 && value <= 106) {
        const QVector<int16_t> &words = places_[size_t(value - 101)];
        if (d_.longProgramNames())
            image.set(p_ - 10, words);
        else
            image.set(p_, words.mid(10));
        answer = static_cast<int16_t>(1100 + value - 100);
    } else {
        return;
    }
    image.set(page_, answer);
}

} // namespace kal::sim
