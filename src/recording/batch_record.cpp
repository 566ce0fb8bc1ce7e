#include "recording/batch_record.h"

#include "core/conversions.h"
#include "core/dates.h"

namespace kal {

namespace {

void putI16(char *p, i16 v)
{
    const uint16_t u = static_cast<uint16_t>(v);
    p[0] = static_cast<char>(u & 0xFF);
    p[1] = static_cast<char>(u >> 8);
}

i16 getI16(const char *p)
{
    return static_cast<i16>(static_cast<uint8_t>(p[0]) | (static_cast<uint8_t>(p[1]) << 8));
}

u8 lowByte(i16 w) { return static_cast<u8>(static_cast<uint16_t>(w) & 0xFF); }
u8 highByte(i16 w) { return static_cast<u8>(static_cast<uint16_t>(w) >> 8); }

/// Puts the two bytes of each of three words into bytes 2..7, low byte first.
void setWordBytes(BatchRecord &s, i16 a, i16 b, i16 c)
{
    s.Tag = lowByte(a);
    s.Monat = highByte(a);
    s.Jahr = lowByte(b);
    s.Stunde = highByte(b);
    s.Minute = lowByte(c);
    s.Sekunde = highByte(c);
}

i16 &wordRef(BatchRecord &s, int index)
{
    return index < 0 ? s.Satz_Art : s.Wert[index];
}

i16 wordValue(const BatchRecord &s, int index)
{
    return index < 0 ? s.Satz_Art : s.Wert[index];
}

/// Puts `text` (already of the right width) into bytes 2..7 (6 characters).
void setTimeText(BatchRecord &s, const QByteArray &b)
{
    s.Tag = static_cast<u8>(b[0]);
    s.Monat = static_cast<u8>(b[1]);
    s.Jahr = static_cast<u8>(b[2]);
    s.Stunde = static_cast<u8>(b[3]);
    s.Minute = static_cast<u8>(b[4]);
    s.Sekunde = static_cast<u8>(b[5]);
}

/// Puts two characters a word into the words first..last, starting at byte
/// `from` of `b`; each pair goes through CVI as the file stores it.
void setWordText(BatchRecord &s, int first, int last, const QByteArray &b, int from)
{
    for (int i = first; i <= last; ++i, from += 2)
        wordRef(s, i) = CVI(b.mid(from, 2));
}

/// Latin-1 bytes of a text, blank padded or cut to `width`.
QByteArray fixedBytes(const QString &text, int width)
{
    return Latin1Bytes(fixedWidth(text, width));
}

} // namespace

void packRecord(const BatchRecord &s, char *out)
{
    putI16(out, s.Satz_Art);
    out[2] = static_cast<char>(s.Tag);
    out[3] = static_cast<char>(s.Monat);
    out[4] = static_cast<char>(s.Jahr);
    out[5] = static_cast<char>(s.Stunde);
    out[6] = static_cast<char>(s.Minute);
    out[7] = static_cast<char>(s.Sekunde);
    for (int i = 0; i < 7; ++i)
        putI16(out + 8 + 2 * i, s.Wert[i]);
}

QByteArray packRecord(const BatchRecord &s)
{
    QByteArray b(SATZ_LAENGE, '\0');
    packRecord(s, b.data());
    return b;
}

BatchRecord unpackRecord(const char *in)
{
    BatchRecord s;
    s.Satz_Art = getI16(in);
    s.Tag = static_cast<u8>(in[2]);
    s.Monat = static_cast<u8>(in[3]);
    s.Jahr = static_cast<u8>(in[4]);
    s.Stunde = static_cast<u8>(in[5]);
    s.Minute = static_cast<u8>(in[6]);
    s.Sekunde = static_cast<u8>(in[7]);
    for (int i = 0; i < 7; ++i)
        s.Wert[i] = getI16(in + 8 + 2 * i);
    return s;
}

BatchRecord unpackRecord(const QByteArray &bytes)
{
    char b[SATZ_LAENGE] = {};
    std::copy_n(bytes.constData(), std::min<qsizetype>(bytes.size(), SATZ_LAENGE), b);
    return unpackRecord(b);
}

RecordTime timeOfDate(const QDateTime &d)
{
    if (!d.isValid())
        return {};
    const QDate t = d.date();
    const QTime z = d.time();
    return RecordTime{static_cast<u8>(t.day()), static_cast<u8>(t.month()),
                    static_cast<u8>((t.year() - 2000) & 0xFF), static_cast<u8>(z.hour()),
                    static_cast<u8>(z.minute()), static_cast<u8>(z.second())};
}

RecordTime timeOfText(const QString &datumText)
{
    return timeOfDate(dateValue(datumText));
}

void setRecordTime(BatchRecord &s, const RecordTime &z)
{
    s.Tag = z.Tag;
    s.Monat = z.Monat;
    s.Jahr = z.Jahr;
    s.Stunde = z.Stunde;
    s.Minute = z.Minute;
    s.Sekunde = z.Sekunde;
}

RecordTime timeOf(const BatchRecord &s)
{
    return RecordTime{s.Tag, s.Monat, s.Jahr, s.Stunde, s.Minute, s.Sekunde};
}

QString Satz_Zeit(const RecordTime &z)
{
    return QString::asprintf("%02d%02d%02d %02d:%02d:%02d", z.Jahr, z.Monat, z.Tag, z.Stunde,
                             z.Minute, z.Sekunde);
}

QString timeText(const BatchRecord &s)
{
    const char b[6] = {static_cast<char>(s.Tag),    static_cast<char>(s.Monat),
                       static_cast<char>(s.Jahr),   static_cast<char>(s.Stunde),
                       static_cast<char>(s.Minute), static_cast<char>(s.Sekunde)};
    return Latin1Text(QByteArray(b, 6));
}

QString wordText(const BatchRecord &s, int first, int last)
{
    QByteArray b;
    for (int i = first; i <= last; ++i)
        b += MKI(wordValue(s, i));
    return Latin1Text(b);
}

i16 storedW5(i16 w5)
{
    const u8 hi = highByte(w5);
    const u8 lo = lowByte(w5);
    if (hi == 0)
        return lo;
    return static_cast<i16>(((hi & 15) * 16) | lo);
}

i16 tenthsRounded(i16 value)
{
    // Integer division truncates toward zero; a remainder of exactly 5 is a tie,
    // which goes to the even neighbour.
    int q = value / 10;
    const int r = value % 10;
    if (r > 5 || (r == 5 && (q & 1)))
        ++q;
    else if (r < -5 || (r == -5 && (q & 1)))
        --q;
    return static_cast<i16>(q);
}

std::array<BatchRecord, 4> groupRecords(const LogBlock &w, const RecordTime &zeit, bool w5Roh)
{
    std::array<BatchRecord, 4> g;
    const i16 k = w[0];
    g[0].Satz_Art = k;
    setRecordTime(g[0], zeit);
    g[0].Wert = {w[3], w[4], w5Roh ? w[5] : storedW5(w[5]), w[6], w[7], w[8], w[9]};
    // The following records carry three block words each in bytes 2..7 and
    // seven words in Wert: w31..w39 and w10..w30, every word in one place.
    for (int r = 1; r <= 3; ++r) {
        BatchRecord &s = g[r];
        s.Satz_Art = static_cast<i16>(k + r);
        const int b = 31 + 3 * (r - 1);
        setWordBytes(s, w[b], w[b + 1], w[b + 2]);
        const int v = 10 + 7 * (r - 1);
        for (int i = 0; i < 7; ++i)
            s.Wert[i] = w[v + i];
    }
    return g;
}

BatchRecord programTextRecord(const LogBlock &w, const RecordTime &zeit)
{
    BatchRecord s;
    s.Satz_Art = Satz_Programm;
    setRecordTime(s, zeit);
    s.Minute = lowByte(w[31]);
    s.Sekunde = highByte(w[31]);
    for (int i = 0; i < 7; ++i)
        s.Wert[i] = w[32 + i];
    return s;
}

BatchRecord Satz_Einzel(const LogBlock &w, const RecordTime &zeit)
{
    BatchRecord s;
    s.Satz_Art = w[0];
    setRecordTime(s, zeit);
    s.Wert = {tenthsRounded(w[3]), tenthsRounded(w[4]), w[5], w[6], w[7], w[8], w[9]};
    return s;
}

std::array<BatchRecord, 2> plcTextRecords(const LogBlock &w, const BatchRecord &puffer)
{
    std::array<BatchRecord, 2> t{puffer, puffer};
    for (int r = 0; r < 2; ++r) {
        const int b = 10 + 5 * r;
        t[r].Satz_Art = static_cast<i16>(Satz_Text + r);
        setWordBytes(t[r], w[b], w[b + 1], w[b + 2]);
        t[r].Wert[0] = w[b + 3];
        t[r].Wert[1] = w[b + 4];
    }
    return t;
}

std::array<BatchRecord, TEXT_SAETZE> batchDataRecords(const QString &chargendaten)
{
    const QByteArray b = fixedBytes(chargendaten, CHARGENDATEN_LAENGE);
    std::array<BatchRecord, TEXT_SAETZE> t;
    for (int k = 0; k < TEXT_SAETZE; ++k) {
        t[k].Satz_Art = static_cast<i16>(Satz_Text + k);
        setTimeText(t[k], b.mid(10 * k, 6));
        setWordText(t[k], 0, 1, b, 10 * k + 6);
    }
    return t;
}

BatchRecord nameRecord(const QString &name, const RecordTime &zeit)
{
    BatchRecord s;
    setRecordTime(s, zeit);
    setWordText(s, -1, 6, fixedBytes(name, 16), 0);
    return s;
}

std::array<BatchRecord, 3> identityRecords(const std::array<i16, 12> &a, const std::array<i16, 12> &b,
                                          const RecordTime &zeit)
{
    std::array<BatchRecord, 3> k;
    for (int r = 0; r < 3; ++r) {
        BatchRecord &s = k[r];
        setRecordTime(s, zeit);
        s.Tag = Marke_Kennung[r];
        const int p = 4 * r;
        s.Satz_Art = a[p];
        s.Wert = {b[p], a[p + 1], b[p + 1], a[p + 2], b[p + 2], a[p + 3], b[p + 3]};
    }
    return k;
}

BatchRecord versionRecord()
{
    const QByteArray b(Version_Text);
    BatchRecord s;
    setTimeText(s, b.left(6));
    setWordText(s, -1, 5, b, 6);
    s.Wert[6] = Satz_Version_Marke;
    return s;
}

BatchRecord messageTextRecord(const QString &text)
{
    const QByteArray b = fixedBytes(Text_Sauber(text), 22);
    BatchRecord s;
    setTimeText(s, b.left(6));
    setWordText(s, -1, 6, b, 6);
    return s;
}

std::vector<std::pair<int, BatchRecord>> headerRecords(const QString &name, const RecordTime &zeit,
                                                     const std::array<i16, 12> &kennungA,
                                                     const std::array<i16, 12> &kennungB,
                                                     const std::vector<QString> &meldTexte,
                                                     bool mitVersion)
{
    std::vector<std::pair<int, BatchRecord>> kopf;
    kopf.reserve(37);
    kopf.emplace_back(1, nameRecord(name, zeit));
    const auto kennung = identityRecords(kennungA, kennungB, zeit);
    for (int r = 0; r < 3; ++r)
        kopf.emplace_back(2 + r, kennung[r]);
    if (mitVersion)
        kopf.emplace_back(5, versionRecord());
    for (int i = 0; i < KOPF_MELDTEXTE; ++i) {
        const QString t = i < int(meldTexte.size()) ? meldTexte[i] : QString();
        kopf.emplace_back(8 + i, messageTextRecord(t));
    }
    return kopf;
}

} // namespace kal
