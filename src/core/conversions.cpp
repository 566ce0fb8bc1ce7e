#include "core/conversions.h"

#include "core/dialogs.h"
#include "core/plant_state.h"

#include <QLocale>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <utility>

namespace kal {

QByteArray MKI(int16_t value)
{
    const uint16_t u = static_cast<uint16_t>(value);
    QByteArray b(2, '\0');
    b[0] = static_cast<char>(u & 0xFF);
    b[1] = static_cast<char>(u >> 8);
    return b;
}

QByteArray MKI_BE(int16_t value)
{
    const uint16_t u = static_cast<uint16_t>(value);
    QByteArray b(2, '\0');
    b[0] = static_cast<char>(u >> 8);
    b[1] = static_cast<char>(u & 0xFF);
    return b;
}

int16_t CVI(const QByteArray &bytes)
{
    if (bytes.size() != 2)
        abortStation(QStringLiteral("CVI: Illegal Function Call"));
    const uint16_t u = static_cast<uint8_t>(bytes[0]) | (static_cast<uint8_t>(bytes[1]) << 8);
    return static_cast<int16_t>(u);
}

int16_t CVI_BE(QByteArray &bytes)
{
    if (bytes.size() != 2)
        return 0;
    std::swap(bytes[0], bytes[1]);
    return CVI(bytes);
}

QByteArray MKL(int32_t value)
{
    const uint32_t u = static_cast<uint32_t>(value);
    QByteArray b(4, '\0');
    for (int i = 0; i < 4; ++i)
        b[i] = static_cast<char>((u >> (8 * i)) & 0xFF);
    return b;
}

int32_t CVL(const QByteArray &bytes)
{
    if (bytes.size() != 4)
        abortStation(QStringLiteral("CVL: Illegal Function Call"));
    uint32_t u = 0;
    for (int i = 0; i < 4; ++i)
        u |= static_cast<uint32_t>(static_cast<uint8_t>(bytes[i])) << (8 * i);
    return static_cast<int32_t>(u);
}

QString Latin1Text(const QByteArray &bytes)
{
    return QString::fromLatin1(bytes);
}

QByteArray Latin1Bytes(const QString &text)
{
    return text.toLatin1();
}

void Format_Nachkomma(int divisor)
{
    switch (divisor) {
    case 10: plant.Zahl_Format = QStringLiteral("#0.0"); break;
    case 100: plant.Zahl_Format = QStringLiteral("#0.00"); break;
    case 1000: plant.Zahl_Format = QStringLiteral("#0.000"); break;
    default: plant.Zahl_Format = QStringLiteral("#0"); break;
    }
}

namespace {

/// Decimal digits of |value| rounded to `decimals` places, halves away from
/// zero. The number is first taken to 15 significant digits, as the
/// platform's number formats do, so that 12.35 (stored as 12.3499...) rounds
/// to 12.4 the way a user reads it. Returns the digits and how many of them
/// stand before the decimal point (at least one).
std::pair<std::string, int> roundedDigits(double value, int decimals)
{
    char buf[40];
    std::snprintf(buf, sizeof buf, "%.14e", std::fabs(value)); // d.dddddddddddddde+XX
    std::string digits(1, buf[0]);
    digits.append(buf + 2, 14);
    int point = std::atoi(std::strchr(buf, 'e') + 1) + 1;
    if (point < 1) {
        digits.insert(0, std::string(1 - point, '0'));
        point = 1;
    }
    const size_t keep = size_t(point + decimals);
    if (digits.size() <= keep)
        digits.append(keep + 1 - digits.size(), '0');
    const bool up = digits[keep] >= '5';
    digits.resize(keep);
    if (up) {
        int i = int(keep) - 1;
        for (; i >= 0 && digits[size_t(i)] == '9'; --i)
            digits[size_t(i)] = '0';
        if (i >= 0) {
            ++digits[size_t(i)];
        } else {
            digits.insert(0, 1, '1');
            ++point;
        }
    }
    return {digits, point};
}

} // namespace

QString formatNumber(double value, const QString &format)
{
    if (!std::isfinite(value))
        return QString::number(value);
    const int dot = format.indexOf(QLatin1Char('.'));
    const QString intPart = dot < 0 ? format : format.left(dot);
    const QString fracPart = dot < 0 ? QString() : format.mid(dot + 1);
    const int minInt = int(intPart.count(QLatin1Char('0')));
    const int minFrac = int(fracPart.count(QLatin1Char('0')));
    const int maxFrac = minFrac + int(fracPart.count(QLatin1Char('#')));

    auto [digits, point] = roundedDigits(value, maxFrac);
    std::string whole = digits.substr(0, size_t(point));
    std::string frac = digits.substr(size_t(point));
    const bool zero = digits.find_first_not_of('0') == std::string::npos;
    whole.erase(0, std::min(whole.find_first_not_of('0'), whole.size()));
    if (int(whole.size()) < minInt)
        whole.insert(0, size_t(minInt) - whole.size(), '0');
    while (int(frac.size()) > minFrac && frac.back() == '0')
        frac.pop_back();

    // A value that rounds to zero shows no sign.
    QString text = (value < 0 && !zero) ? QStringLiteral("-") : QString();
    text += QString::fromLatin1(whole.data(), qsizetype(whole.size()));
    if (!frac.empty())
        text += QLocale().decimalPoint() + QString::fromLatin1(frac.data(), qsizetype(frac.size()));
    return text;
}

double leadingNumber(const QString &text)
{
    std::string num;
    bool digits = false, point = false, exponent = false, expDigits = false;
    for (QChar qc : text) {
        const char16_t c = qc.unicode();
        if (c == ' ' || c == '\t' || c == '\n' || c == '\r')
            continue;
        if (c >= '0' && c <= '9') {
            num += char(c);
            (exponent ? expDigits : digits) = true;
        } else if ((c == '+' || c == '-') && (num.empty() || (exponent && num.back() == 'e'))) {
            num += char(c);
        } else if (c == '.' && !point && !exponent) {
            num += '.';
            point = true;
        } else if ((c == 'e' || c == 'E' || c == 'd' || c == 'D') && digits && !exponent) {
            num += 'e';
            exponent = true;
        } else {
            break;
        }
    }
    if (!digits)
        return 0;
    // An exponent mark without digits counts for nothing.
    if (exponent && !expDigits)
        num.erase(num.find('e'));
    // Read in the C locale: the mark of this text is always ".".
    return QByteArray::fromStdString(num).toDouble();
}

QString Text_Sauber(const QString &text)
{
    QString t;
    t.reserve(text.size());
    int removed = 0;
    for (QChar c : text) {
        if (c.unicode() < 32)
            ++removed;
        else
            t.append(c);
    }
    t.append(QString(removed, QLatin1Char(' ')));
    int last = -1;
    for (int i = 0; i < t.size(); ++i)
        if (t[i].unicode() >= 33)
            last = i;
    return t.left(last + 1);
}

QString wordsText(int ofen, int adresse, int worte)
{
    QByteArray b;
    for (int i = 0; i < worte; ++i)
        b += MKI(plant.SPS_Wort(ofen, adresse + i));
    return Text_Sauber(Latin1Text(b));
}

QString fixedWidth(const QString &text, int width)
{
    return text.leftJustified(width, QLatin1Char(' '), true);
}

} // namespace kal
