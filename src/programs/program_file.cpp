#include "programs/program_file.h"

#include "config/paths.h"
#include "core/conversions.h"
#include "core/dates.h"
#include "programs/program_transfer.h"

#include <QFile>
#include <algorithm>

namespace kal {

namespace {

/// Offsets inside a record.
enum : int {
    O_NAME = 0,       ///< segment: two name characters
    O_JAHR = 2,
    O_ANALOG = 3,     ///< segment: high byte, then low byte
    O_SEKUNDE = 5,
    O_NR = 6,
    O_BEFEHL = 7,
    O_SOLL = 8,
    O_HALTE = 10,
    O_LEER = 12,
    O_GRAD = 13,
    O_MAXOUT = 15,
    O_AUSGANG = 16,
    O_ZULUFT = 17,
};

constexpr int ANALOG_MASKE = 0x7FF; // 11 bits are kept

i16 getWord(const QByteArray &s, int o)
{
    return static_cast<i16>(u8(s[o]) | u8(s[o + 1]) << 8);
}

void putWord(QByteArray &s, int o, int v)
{
    s[o] = char(v & 0xFF);
    s[o + 1] = char((v >> 8) & 0xFF);
}

/// Opens a program file; every routine closes it again when it returns.
class OpenProgramFile {
public:
    explicit OpenProgramFile(const QString &name) : f_(name) {}
    bool openForRead() { return f_.open(QIODevice::ReadOnly); }
    bool openForWrite() { return f_.open(QIODevice::ReadWrite); }

    /// Record r into the buffer; bytes past the end of the file read as 0.
    void readRecord(int r, QByteArray &satz)
    {
        satz.fill('\0', PROG_SATZ);
        if (!f_.seek(qint64(r - 1) * PROG_SATZ))
            return;
        const QByteArray b = f_.read(PROG_SATZ);
        std::copy(b.begin(), b.end(), satz.begin());
    }
    /// The buffer as record r.
    bool writeRecord(int r, const QByteArray &satz)
    {
        return f_.seek(qint64(r - 1) * PROG_SATZ) && f_.write(satz) == PROG_SATZ;
    }

private:
    QFile f_;
};

/// Day, month, year - 2000, hour, minute, second into bytes 0..5.
void putDate(QByteArray &satz, const QDateTime &d)
{
    int jahr = d.date().year();
    if (jahr >= 100)
        jahr -= 2000;
    satz[0] = char(d.date().day());
    satz[1] = char(d.date().month());
    satz[2] = char(jahr & 0xFF);
    satz[3] = char(d.time().hour());
    satz[4] = char(d.time().minute());
    satz[5] = char(d.time().second());
}

i16 limitedSetpoint(i16 v)
{
    return static_cast<i16>(std::clamp<int>(v, 0, prog.Soll_Max));
}
} // namespace

QDateTime headerDate(const QByteArray &satz)
{
    auto b = [&](int i) { return int(u8(satz[i])); };
    const QDate d(2000 + b(2), b(1), b(0));
    const QTime t(b(3), b(4), b(5));
    if (!d.isValid() || !t.isValid())
        return QDateTime();
    return QDateTime(d, t, Qt::UTC); // a plain wall-clock reading, as every station date
}

bool Prog_Laden(const QString &datei, int p)
{
    // The limits come before the paste too: a pasted program is saved with
    // the set values of this furnace.
    setProgramLimits(datei);
    if (p < 1 || p > plant.Prog_Anzahl)
        return false;
    if (prog.Prog_Aus_Puffer != 0) {
        Programm_Einfuegen();
        return true;
    }

    OpenProgramFile f(datei);
    if (!f.openForRead())
        return false;
    QByteArray &satz = prog.Satz;
    const int kopf = headerRecord(p);
    f.readRecord(kopf, satz);
    prog.Prog.Prog_Name = QString(prog.Prog_Name_Len, QLatin1Char(' '));
    if (u8(satz[O_NR]) != p) {
        prog.Prog.Datum = now();
        prog.Prog.Segment.fill(newSegment());
        return true;
    }
    prog.Prog.Datum = headerDate(satz);
    QByteArray name;
    for (int k = 0; k < PROG_SEGMENTE; ++k) {
        f.readRecord(kopf + 1 + k, satz);
        if (k < prog.Prog_Name_Len / 2)
            name += satz.mid(O_NAME, 2);
        ProgramSegment &s = prog.Prog.Segment[size_t(k)];
        s.Befehl = u8(satz[O_BEFEHL]);
        s.Befehl_Alt = s.Befehl;
        s.Sollwert = limitedSetpoint(getWord(satz, O_SOLL));
        s.Haltezeit = getWord(satz, O_HALTE);
        s.Gradient = getWord(satz, O_GRAD);
        s.MaxOut = u8(satz[O_MAXOUT]);
        s.Ausgang = u8(satz[O_AUSGANG]);
        s.Zuluft = getWord(satz, O_ZULUFT);
        s.Analog = static_cast<i16>((u8(satz[O_ANALOG]) << 8 | u8(satz[O_ANALOG + 1])) & ANALOG_MASKE);
    }
    prog.Prog.Prog_Name = Latin1Text(name);
    return true;
}

bool Prog_Sichern(const QString &datei, int p)
{
    if (p < 1 || p > plant.Prog_Anzahl)
        return false;
    OpenProgramFile f(datei);
    if (!f.openForWrite())
        return false;
    QByteArray &satz = prog.Satz;
    prog.Prog.Datum = now();
    putDate(satz, prog.Prog.Datum);
    satz[O_NR] = char(p);
    satz[O_BEFEHL] = 0;
    satz[O_LEER] = 0;
    satz[O_MAXOUT] = 0;
    satz[O_AUSGANG] = 0;
    const int kopf = headerRecord(p);
    bool ok = f.writeRecord(kopf, satz);

    const QByteArray name = Latin1Bytes(paddedName(prog.Prog.Prog_Name, prog.Prog_Name_Len));
    for (int k = 0; k < PROG_SEGMENTE; ++k) {
        ProgramSegment &s = prog.Prog.Segment[size_t(k)];
        if (k < prog.Prog_Name_Len / 2) {
            satz[O_NAME] = name[2 * k];
            satz[O_NAME + 1] = name[2 * k + 1];
        }
        satz[O_ANALOG] = char((s.Analog >> 8) & 0xFF);
        satz[O_ANALOG + 1] = char(s.Analog & 0xFF);
        satz[O_BEFEHL] = char(s.Befehl);
        s.Sollwert = limitedSetpoint(s.Sollwert);
        putWord(satz, O_SOLL, s.Sollwert);
        putWord(satz, O_HALTE, s.Haltezeit);
        satz[O_LEER] = 0;
        putWord(satz, O_GRAD, s.Gradient);
        satz[O_MAXOUT] = char(s.MaxOut);
        satz[O_AUSGANG] = char(s.Ausgang);
        putWord(satz, O_ZULUFT, s.Zuluft);
        s.Befehl_Alt = s.Befehl;
        ok = f.writeRecord(kopf + 1 + k, satz) && ok;
    }
    return ok;
}

bool Prog_Neu()
{
    if (prog.Prog_Ofen < 1)
        return false;
    OpenProgramFile f(programFileName(prog.Prog_Ofen));
    if (!f.openForWrite())
        return false;
    QByteArray &satz = prog.Satz;
    satz.fill('\0', PROG_SATZ);
    putDate(satz, now());
    satz[O_NR] = char(plant.Prog_Anzahl);
    bool ok = f.writeRecord(1, satz);
    for (int p = 1; p <= plant.Prog_Anzahl; ++p) {
        for (int r = 0; r < PROG_SAETZE; ++r) {
            for (int o : {int(O_NR), int(O_BEFEHL), int(O_LEER), int(O_MAXOUT), int(O_AUSGANG)})
                satz[o] = 0;
            ok = f.writeRecord(headerRecord(p) + r, satz) && ok;
        }
    }
    return ok;
}

bool Prog_Loeschen(const QString &datei, int p)
{
    if (p < 1 || p > plant.Prog_Anzahl || !QFile::exists(datei))
        return false;
    OpenProgramFile f(datei);
    if (!f.openForWrite())
        return false;
    QByteArray &satz = prog.Satz;
    f.readRecord(headerRecord(p), satz);
    for (int o = 0; o < 8; ++o)
        satz[o] = 0;
    satz[O_LEER] = 0;
    satz[O_MAXOUT] = 0;
    satz[O_AUSGANG] = 0;
    return f.writeRecord(headerRecord(p), satz);
}

QList<ProgramEntry> programList(const QString &datei, int nameLen)
{
    QList<ProgramEntry> liste;
    OpenProgramFile f(datei);
    if (!f.openForRead())
        return liste;
    QByteArray &satz = prog.Satz;
    for (int p = 1; p <= plant.Prog_Anzahl; ++p) {
        const int r = headerRecord(p);
        f.readRecord(r, satz);
        if (u8(satz[O_NR]) != p)
            continue;
        QByteArray name;
        for (int k = 0; k < nameLen / 2; ++k) {
            f.readRecord(r + 1 + k, satz);
            name += satz.mid(O_NAME, 2);
        }
        f.readRecord(r, satz);
        ProgramEntry e;
        e.p = p;
        e.name = Latin1Text(name).left(PROG_NAME_MAX);
        e.datum = headerDate(satz);
        e.text = QStringLiteral("%1").arg(p, 3, 10, QLatin1Char('0')) + QLatin1Char(' ') +
                 e.name.leftJustified(nameLen, QLatin1Char(' ')) + QLatin1Char(' ') +
                 Datum_Text(e.datum, QStringLiteral("TTMMJJHHMM"));
        liste.append(e);
    }
    return liste;
}

// ---- label file ---------------------------------------------------------------

QString labelFileName(int ofenNr)
{
    return dataFile(QStringLiteral("OV_SP_%1.INI").arg(ofenNr));
}

OutputLabels readLabels(int ofenNr)
{
    OutputLabels l;
    for (int i = 0; i < 4; ++i)
        l.Text[size_t(i)] = QStringLiteral("OUTPUT%1").arg(i + 1);
    QFile f(labelFileName(ofenNr));
    if (!f.open(QIODevice::ReadOnly))
        return l;
    const QByteArray b = f.read(LABEL_SATZ);
    if (b.size() < LABEL_SATZ)
        return l;
    for (int i = 0; i < 5; ++i)
        l.Text[size_t(i)] = Latin1Text(b.mid(60 * i, 60)).trimmed();
    for (int a = 0; a < 5; ++a) {
        for (int e = 0; e < 5; ++e)
            l.Ausgang_Aus[size_t(a)][size_t(e)] = getWord(b, 300 + 2 * (5 * a + e));
        for (int e = 0; e < 2; ++e)
            l.Luft_Aus[size_t(a)][size_t(e)] = getWord(b, 350 + 2 * (2 * a + e));
    }
    l.ausDatei = true;
    return l;
}

bool outputIsArgon(const OutputLabels &l)
{
    return l.Text[3].contains(QLatin1String("Argon"), Qt::CaseInsensitive);
}

} // namespace kal
