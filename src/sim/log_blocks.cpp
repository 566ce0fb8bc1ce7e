#include "sim/log_blocks.h"

#include "sim/word_image.h"

namespace kal::sim {

namespace {

QVector<int16_t> block(int length, int16_t kind, const QDateTime &stamp)
{
    QVector<int16_t> b(length, 0);
    b[0] = kind;
    const auto s = stampWords(stamp);
    b[1] = s[0];
    b[2] = s[1];
    return b;
}

void putBatch(QVector<int16_t> &b, int at, int32_t batch)
{
    const auto w = longWords(batch);
    b[at] = w[0];
    b[at + 1] = w[1];
}

int16_t bytePair(int low, int high)
{
    return static_cast<int16_t>((low & 0xFF) | ((high & 0xFF) << 8));
}

} // namespace

QVector<int16_t> announcementBlock(int32_t batch, const QDateTime &stamp)
{
    return block(10, static_cast<int16_t>(200 + batch), stamp);
}

QVector<int16_t> plainSampleBlock(const SampleValues &v, int16_t kind)
{
    QVector<int16_t> b = block(10, kind, v.stamp);
    b[3] = v.actual;
    b[4] = v.setpoint;
    b[5] = v.output;
    // Heating current and voltage of a resistance heater driven by the output.
    b[6] = static_cast<int16_t>(v.output * 12);
    b[7] = static_cast<int16_t>(v.output * 23);
    b[8] = v.state;
    b[9] = v.messages[0];
    return b;
}

QVector<int16_t> groupBlock(const SampleValues &v)
{
    QVector<int16_t> b = block(40, 154, v.stamp);
    b[3] = v.setpoint;
    b[4] = v.actual;
    b[5] = static_cast<int16_t>(v.output & 0xFF);
    putBatch(b, 6, v.batch);
    b[8] = v.messages[0];
    b[9] = v.messages[1];
    // Zones 1..10: set values (w10..w19) and actual values (w20..w29), the
    // zones a little apart from the leading one.
    for (int z = 0; z < 10; ++z) {
        b[10 + z] = v.setpoint;
        b[20 + z] = static_cast<int16_t>(v.actual - 5 * (z + 1));
    }
    b[30] = v.remaining;
    const int out = v.output & 0xFF;
    for (int w = 31; w <= 35; ++w)
        b[w] = bytePair(out, out);
    b[36] = bytePair(v.kind, v.segment);
    b[37] = v.target;
    return b;
}

QVector<int16_t> compactBlock(const SampleValues &v)
{
    QVector<int16_t> c = block(16, 131, v.stamp);
    putBatch(c, 3, v.batch);
    c[5] = v.messages[0];
    c[6] = v.messages[1];
    c[7] = bytePair(v.kind, v.segment);
    c[9] = v.target;
    c[10] = v.remaining;
    c[11] = v.setpoint;
    c[12] = v.actual;
    c[13] = static_cast<int16_t>(v.output & 0xFF);
    return c;
}

QVector<int16_t> programTextBlock(const QString &name, const QDateTime &stamp, int32_t batch)
{
    QVector<int16_t> b = block(40, 159, stamp);
    putBatch(b, 6, batch);
    const QVector<int16_t> t = textWords(name, 8);
    std::copy(t.begin(), t.end(), b.begin() + 31);
    return b;
}

QVector<int16_t> elementBlock(const QVector<int16_t> &currents, const QDateTime &stamp, int32_t batch)
{
    QVector<int16_t> b = block(40, 160, stamp);
    putBatch(b, 6, batch);
    static constexpr int places[] = {3, 4, 5, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18, 19, 20};
    for (int i = 0; i < int(std::size(places)) && i < currents.size(); ++i)
        b[places[i]] = places[i] == 5 ? static_cast<int16_t>(currents[i] & 0xFF) : currents[i];
    return b;
}

QVector<int16_t> operatorTextBlock(const QString &text, const QDateTime &stamp)
{
    QVector<int16_t> b = block(20, 9001, stamp);
    const QVector<int16_t> t = textWords(text, 10);
    std::copy(t.begin(), t.end(), b.begin() + 10);
    return b;
}

} // namespace kal::sim
