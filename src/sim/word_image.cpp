#include "sim/word_image.h"

#include "core/tables.h"

namespace kal::sim {

int16_t WordImage::get(int address) const
{
    if (!contains(address, 1))
        raiseBounds("simulated PLC image", address);
    return w_[size_t(address)];
}

void WordImage::set(int address, int16_t value)
{
    if (!contains(address, 1))
        raiseBounds("simulated PLC image", address);
    w_[size_t(address)] = value;
}

QVector<int16_t> WordImage::get(int address, int n) const
{
    if (!contains(address, n))
        raiseBounds("simulated PLC image", address + n - 1);
    return QVector<int16_t>(w_.begin() + address, w_.begin() + address + n);
}

void WordImage::set(int address, const QVector<int16_t> &words)
{
    if (!contains(address, int(words.size())))
        raiseBounds("simulated PLC image", address + int(words.size()) - 1);
    std::copy(words.begin(), words.end(), w_.begin() + address);
}

void WordImage::putText(int address, int words, const QString &text)
{
    set(address, textWords(text, words));
}

QString WordImage::text(int address, int words) const
{
    QByteArray bytes;
    for (int16_t w : get(address, words)) {
        const auto u = static_cast<uint16_t>(w);
        bytes.append(char(u & 0xFF));
        bytes.append(char(u >> 8));
    }
    const int end = bytes.indexOf('\0');
    return QString::fromLatin1(end < 0 ? bytes : bytes.left(end));
}

QVector<int16_t> textWords(const QString &text, int words)
{
    QByteArray bytes = text.toLatin1().left(2 * words);
    bytes.append(QByteArray(2 * words - bytes.size(), '\0'));
    QVector<int16_t> out;
    for (int i = 0; i < words; ++i)
        out.append(static_cast<int16_t>(uint8_t(bytes[2 * i]) | (uint8_t(bytes[2 * i + 1]) << 8)));
    return out;
}

std::array<int16_t, 2> stampWords(const QDateTime &t)
{
    const QDate d = t.date();
    const QTime c = t.time();
    const int a = (d.day() << 11) | (d.month() << 7) | ((d.year() - 2000) & 0x7F);
    const int b = (c.hour() << 11) | (c.minute() << 5) | (c.second() / 2);
    return {static_cast<int16_t>(uint16_t(a)), static_cast<int16_t>(uint16_t(b))};
}

} // namespace kal::sim
