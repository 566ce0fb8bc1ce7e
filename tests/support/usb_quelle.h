#pragma once
// Source files of the USB import as a panel writes them: records of
// little-endian words, a header in record 1 (999, count - 1, form, 0,
// serial, name, and in form 80 the identity pairs), then data records.

#include <QByteArray>
#include <QFile>
#include <QString>
#include <QtEndian>
#include <cstdint>
#include <vector>

namespace kal::test {

using Words = std::vector<int16_t>;

/// The packed date words of a data record (w1, w2).
inline int16_t usbDate(int tag, int monat, int jahr) { return int16_t((tag << 11) | (monat << 7) | (jahr - 2000)); }
inline int16_t usbTime(int stunde, int minute, int sekunde) { return int16_t((stunde << 11) | (minute << 5) | (sekunde / 2)); }

/// Two characters a word from w[von] on, first character in the low byte.
inline void usbText(Words &w, int von, const char *t)
{
    for (int i = 0; t[i]; i += 2)
        w[von++] = int16_t(uint8_t(t[i]) | (t[i + 1] ? uint8_t(t[i + 1]) << 8 : 0));
}

struct UsbSourceBuilder {
    int form = 20;             ///< record length in bytes
    std::vector<Words> saetze; ///< every record, header first

    /// A source of `form` with the header of serial "2311-042-KLM" and name
    /// "Haertofen 3"; form 80 also gets identity pairs (0x100 + p, 0x200 + p)
    /// and the 16 text records "Meldung nn".
    explicit UsbSourceBuilder(int f) : form(f)
    {
        Words h(40);
        h[0] = 999;
        h[2] = int16_t(form);
        usbText(h, 4, "2311-042-KLM");
        usbText(h, 10, "Haertofen 3     ");
        for (int p = 0; p < 11; ++p) {
            h[18 + 2 * p] = int16_t(0x100 + p);
            h[19 + 2 * p] = int16_t(0x200 + p);
        }
        // Form 20 has room for no more than the first words of its header.
        h.resize(form / 2);
        saetze.push_back(h);
        if (form == 20)
            saetze.push_back(Words(10)); // the rest of the header
        for (int r = 2; form == 80 && r <= 18; ++r) {
            Words t(40);
            for (int k = 0; r >= 3 && k < 2; ++k) {
                const QString text = QStringLiteral("Meldung %1").arg(2 * (r - 3) + k, 2, 10, QLatin1Char('0'));
                usbText(t, 20 * k, text.toLatin1().constData());
            }
            saetze.push_back(t);
        }
    }

    /// A data record: kind, date, and the words w3.. as given (the rest 0).
    Words &addRecord(int16_t art, int tag, int monat, int jahr, int stunde, int minute, int sekunde, Words werte = {})
    {
        Words w(form / 2);
        w[0] = art;
        w[1] = usbDate(tag, monat, jahr);
        w[2] = usbTime(stunde, minute, sekunde);
        for (size_t i = 0; i < werte.size() && 3 + i < w.size(); ++i)
            w[3 + i] = werte[i];
        saetze.push_back(w);
        return saetze.back();
    }

    /// The bytes, with h1 = records - 1 unless `h1` is given.
    QByteArray bytes(int h1 = -1) const
    {
        QByteArray b;
        for (size_t r = 0; r < saetze.size(); ++r) {
            Words w = saetze[r];
            w.resize(form / 2);
            if (r == 0)
                w[1] = int16_t(h1 >= 0 ? h1 : int(saetze.size()) - 1);
            for (int16_t x : w) {
                char le[2];
                qToLittleEndian<qint16>(x, le);
                b.append(le, 2);
            }
        }
        return b;
    }

    bool writeTo(const QString &pfad, int h1 = -1) const
    {
        QFile f(pfad);
        return f.open(QIODevice::WriteOnly | QIODevice::Truncate) && f.write(bytes(h1)) >= 0;
    }
};

} // namespace kal::test
