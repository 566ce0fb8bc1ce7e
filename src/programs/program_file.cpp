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

i16 wortLesen(const QByteArray &s, int o)
{
    return static_cast<i16>(u8(s[o]) | u8(s[o + 1]) << 8);
}

void wortSetzen(QByteArray &s, int o, int v)
{
    s[o] = char(v & 0xFF);
    s[o + 1] = char((v >> 8) & 0xFF);
}

/// Opens a program file; every routine closes it again when it returns.
class Datei {
public:
    explicit Datei(const QString &name) : f_(name) {}
    bool lesen() { return f_.open(QIODevice::ReadOnly); }
    bool schreiben() { return f_.open(QIODevice::ReadWrite); }

    /// Record r into the buffer; bytes past the end of the file read as 0.
    void hole(int r, QByteArray &satz)
    {
        satz.fill('\0', PROG_SATZ);
        if (!f_.seek(qint64(r - 1) * PROG_SATZ))
            return;
        const QByteArray b = f_.read(PROG_SATZ);
        std::copy(b.begin(), b.end(), satz.begin());
    }
    /// The buffer as record r.
    bool lege(int r, const QByteArray &satz)
    {
        return f_.seek(qint64(r - 1) * PROG_SATZ) && f_.write(satz) == PROG_SATZ;
    }

private:
    QFile f_;
};

/// Day, month, year - 2000, hour, minute, second into bytes 0..5.
void datumSetzen(QByteArray &satz, const QDateTime &d)
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

i16 sollBegrenzt(i16 v)
{
    return static_cast<i16>(std::clamp<int>(v, 0, prog.Soll_Max));
}
} // namespace

QDateTime Kopf_Datum(const QByteArray &satz)
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
    Prog_Grenzen_Setzen(datei);
    if (p < 1 || p > plant.Prog_Anzahl)
        return false;
    if (prog.Prog_Aus_Puffer != 0) {
        Programm_Einfuegen();
        return true;
    }

    Datei f(datei);
    if (!f.lesen())
        return false;
    QByteArray &satz = prog.Satz;
    const int kopf = Prog_Kopf(p);
    f.hole(kopf, satz);
    prog.Prog.Prog_Name = QString(prog.Prog_Name_Len, QLatin1Char(' '));
    if (u8(satz[O_NR]) != p) {
        prog.Prog.Datum = Jetzt();
        prog.Prog.Segment.fill(Segment_Neu());
        return true;
    }
    prog.Prog.Datum = Kopf_Datum(satz);
    QByteArray name;
    for (int k = 0; k < PROG_SEGMENTE; ++k) {
        f.hole(kopf + 1 + k, satz);
        if (k < prog.Prog_Name_Len / 2)
            name += satz.mid(O_NAME, 2);
        Prog_Segment &s = prog.Prog.Segment[size_t(k)];
        s.Befehl = u8(satz[O_BEFEHL]);
        s.Befehl_Alt = s.Befehl;
        s.Sollwert = sollBegrenzt(wortLesen(satz, O_SOLL));
        s.Haltezeit = wortLesen(satz, O_HALTE);
        s.Gradient = wortLesen(satz, O_GRAD);
        s.MaxOut = u8(satz[O_MAXOUT]);
        s.Ausgang = u8(satz[O_AUSGANG]);
        s.Zuluft = wortLesen(satz, O_ZULUFT);
        s.Analog = static_cast<i16>((u8(satz[O_ANALOG]) << 8 | u8(satz[O_ANALOG + 1])) & ANALOG_MASKE);
    }
    prog.Prog.Prog_Name = Latin1Text(name);
    return true;
}

bool Prog_Sichern(const QString &datei, int p)
{
    if (p < 1 || p > plant.Prog_Anzahl)
        return false;
    Datei f(datei);
    if (!f.schreiben())
        return false;
    QByteArray &satz = prog.Satz;
    prog.Prog.Datum = Jetzt();
    datumSetzen(satz, prog.Prog.Datum);
    satz[O_NR] = char(p);
    satz[O_BEFEHL] = 0;
    satz[O_LEER] = 0;
    satz[O_MAXOUT] = 0;
    satz[O_AUSGANG] = 0;
    const int kopf = Prog_Kopf(p);
    bool ok = f.lege(kopf, satz);

    const QByteArray name = Latin1Bytes(Name_Fest(prog.Prog.Prog_Name, prog.Prog_Name_Len));
    for (int k = 0; k < PROG_SEGMENTE; ++k) {
        Prog_Segment &s = prog.Prog.Segment[size_t(k)];
        if (k < prog.Prog_Name_Len / 2) {
            satz[O_NAME] = name[2 * k];
            satz[O_NAME + 1] = name[2 * k + 1];
        }
        satz[O_ANALOG] = char((s.Analog >> 8) & 0xFF);
        satz[O_ANALOG + 1] = char(s.Analog & 0xFF);
        satz[O_BEFEHL] = char(s.Befehl);
        s.Sollwert = sollBegrenzt(s.Sollwert);
        wortSetzen(satz, O_SOLL, s.Sollwert);
        wortSetzen(satz, O_HALTE, s.Haltezeit);
        satz[O_LEER] = 0;
        wortSetzen(satz, O_GRAD, s.Gradient);
        satz[O_MAXOUT] = char(s.MaxOut);
        satz[O_AUSGANG] = char(s.Ausgang);
        wortSetzen(satz, O_ZULUFT, s.Zuluft);
        s.Befehl_Alt = s.Befehl;
        ok = f.lege(kopf + 1 + k, satz) && ok;
    }
    return ok;
}

bool Prog_Neu()
{
    if (prog.Prog_Ofen < 1)
        return false;
    Datei f(Prog_Datei_Name(prog.Prog_Ofen));
    if (!f.schreiben())
        return false;
    QByteArray &satz = prog.Satz;
    satz.fill('\0', PROG_SATZ);
    datumSetzen(satz, Jetzt());
    satz[O_NR] = char(plant.Prog_Anzahl);
    bool ok = f.lege(1, satz);
    for (int p = 1; p <= plant.Prog_Anzahl; ++p) {
        for (int r = 0; r < PROG_SAETZE; ++r) {
            for (int o : {int(O_NR), int(O_BEFEHL), int(O_LEER), int(O_MAXOUT), int(O_AUSGANG)})
                satz[o] = 0;
            ok = f.lege(Prog_Kopf(p) + r, satz) && ok;
        }
    }
    return ok;
}

bool Prog_Loeschen(const QString &datei, int p)
{
    if (p < 1 || p > plant.Prog_Anzahl || !QFile::exists(datei))
        return false;
    Datei f(datei);
    if (!f.schreiben())
        return false;
    QByteArray &satz = prog.Satz;
    f.hole(Prog_Kopf(p), satz);
    for (int o = 0; o < 8; ++o)
        satz[o] = 0;
    satz[O_LEER] = 0;
    satz[O_MAXOUT] = 0;
    satz[O_AUSGANG] = 0;
    return f.lege(Prog_Kopf(p), satz);
}

QList<Prog_Eintrag> Prog_Liste(const QString &datei, int nameLen)
{
    QList<Prog_Eintrag> liste;
    Datei f(datei);
    if (!f.lesen())
        return liste;
    QByteArray &satz = prog.Satz;
    for (int p = 1; p <= plant.Prog_Anzahl; ++p) {
        const int r = Prog_Kopf(p);
        f.hole(r, satz);
        if (u8(satz[O_NR]) != p)
            continue;
        QByteArray name;
        for (int k = 0; k < nameLen / 2; ++k) {
            f.hole(r + 1 + k, satz);
            name += satz.mid(O_NAME, 2);
        }
        f.hole(r, satz);
        Prog_Eintrag e;
        e.p = p;
        e.name = Latin1Text(name).left(PROG_NAME_MAX);
        e.datum = Kopf_Datum(satz);
        e.text = QStringLiteral("%1").arg(p, 3, 10, QLatin1Char('0')) + QLatin1Char(' ') +
                 e.name.leftJustified(nameLen, QLatin1Char(' ')) + QLatin1Char(' ') +
                 Datum_Text(e.datum, QStringLiteral("TTMMJJHHMM"));
        liste.append(e);
    }
    return liste;
}

// ---- label file ---------------------------------------------------------------

QString Label_Datei_Name(int ofenNr)
{
    return Daten_Datei(QStringLiteral("OV_SP_%1.INI").arg(ofenNr));
}

Label_Daten Label_Lesen(int ofenNr)
{
    Label_Daten l;
    for (int i = 0; i < 4; ++i)
        l.Text[size_t(i)] = QStringLiteral("OUTPUT%1").arg(i + 1);
    QFile f(Label_Datei_Name(ofenNr));
    if (!f.open(QIODevice::ReadOnly))
        return l;
    const QByteArray b = f.read(LABEL_SATZ);
    if (b.size() < LABEL_SATZ)
        return l;
    for (int i = 0; i < 5; ++i)
        l.Text[size_t(i)] = Latin1Text(b.mid(60 * i, 60)).trimmed();
    for (int a = 0; a < 5; ++a) {
        for (int e = 0; e < 5; ++e)
            l.Ausgang_Aus[size_t(a)][size_t(e)] = wortLesen(b, 300 + 2 * (5 * a + e));
        for (int e = 0; e < 2; ++e)
            l.Luft_Aus[size_t(a)][size_t(e)] = wortLesen(b, 350 + 2 * (2 * a + e));
    }
    l.ausDatei = true;
    return l;
}

bool Label_Argon(const Label_Daten &l)
{
    return l.Text[3].contains(QLatin1String("Argon"), Qt::CaseInsensitive);
}

} // namespace kal
