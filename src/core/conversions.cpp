#include "core/conversions.h"

#include "core/dialogs.h"
#include "core/plant_state.h"

#include <cmath>

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
        Programm_Abbruch(QStringLiteral("CVI: Illegal Function Call"));
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
        Programm_Abbruch(QStringLiteral("CVL: Illegal Function Call"));
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

QString Format_Zahl(double value, const QString &format)
{
    const int dot = format.indexOf(QLatin1Char('.'));
    const int decimals = dot < 0 ? 0 : int(format.size() - dot - 1);
    return QString::number(value, 'f', decimals);
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

void Auftragliste_Reset()
{
    if (plant.Seiten_Name == QLatin1String("Auftragliste"))
        plant.Seiten_Name.clear();
}

QString Worte_Text(int ofen, int adresse, int worte)
{
    QByteArray b;
    for (int i = 0; i < worte; ++i)
        b += MKI(plant.SPS_Wort(ofen, adresse + i));
    return Text_Sauber(Latin1Text(b));
}

QString Fest(const QString &text, int width)
{
    return text.leftJustified(width, QLatin1Char(' '), true);
}

} // namespace kal
