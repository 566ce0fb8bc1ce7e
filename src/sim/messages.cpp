#include "sim/messages.h"

#include "sim/word_image.h"

namespace kal::sim {

namespace {

bool valid(int n)
{
    return n >= 1 && n <= MessageBank::kMessages;
}

/// True when any of the three words from `first` on shares a bit with `bits`.
bool anyOf(const WordImage &image, int first, const std::array<uint16_t, 3> &bits)
{
    for (int w = 0; w < 3; ++w)
        if (uint16_t(image.get(first + w)) & bits[size_t(w)])
            return true;
    return false;
}

} // namespace

void MessageBank::raise(int n)
{
    if (!valid(n))
        return;
    cause_[size_t(n - 1)] = true;
    latched_[size_t(n - 1)] = true;
}

void MessageBank::clear(int n, bool waitForAck)
{
    if (!valid(n))
        return;
    cause_[size_t(n - 1)] = false;
    if (!waitForAck)
        latched_[size_t(n - 1)] = false;
}

void MessageBank::acknowledge()
{
    latched_.fill(false);
}

bool MessageBank::active(int n) const
{
    return valid(n) && (cause_[size_t(n - 1)] || latched_[size_t(n - 1)]);
}

bool MessageBank::cause(int n) const
{
    return valid(n) && cause_[size_t(n - 1)];
}

void MessageBank::writeWords(WordImage &image) const
{
    std::array<uint16_t, 3> bits{};
    for (int n = 1; n <= kMessages; ++n)
        if (active(n))
            bits[size_t((n - 1) / 16)] |= uint16_t(1u << ((n - 1) % 16));
    for (int w = 0; w < 3; ++w)
        image.set(87 + w, static_cast<int16_t>(bits[size_t(w)]));

    const uint16_t config = uint16_t(image.get(699));
    if ((config >> 8) != 0xAB)
        return;
    int status = 0;
    if (bits[0] || bits[1] || bits[2])
        status |= 1;
    if (anyOf(image, 690, bits))
        status |= 2;
    if (anyOf(image, 693, bits))
        status |= 4;
    if (anyOf(image, 696, bits))
        status |= 8;
    image.set(699, static_cast<int16_t>(0xAB00 | status));
}

bool MessageBank::stopActive(const WordImage &image) const
{
    return (uint16_t(image.get(699)) >> 8) == 0xAB && (uint16_t(image.get(699)) & 2);
}

void MessageBank::configure(WordImage &image, const QVector<int> &stop, const QVector<int> &n2,
                            const QVector<int> &sms)
{
    auto put = [&image](int first, const QVector<int> &numbers) {
        std::array<uint16_t, 3> bits{};
        for (int n : numbers)
            if (valid(n))
                bits[size_t((n - 1) / 16)] |= uint16_t(1u << ((n - 1) % 16));
        for (int w = 0; w < 3; ++w)
            image.set(first + w, static_cast<int16_t>(bits[size_t(w)]));
    };
    put(690, stop);
    put(693, n2);
    put(696, sms);
    image.set(699, static_cast<int16_t>(0xAB00));
}

} // namespace kal::sim
