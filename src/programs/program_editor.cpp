#include "programs/program_editor.h"

#include "config/text_ids.h"
#include "core/conversions.h"
#include "core/dates.h"
#include "core/dialogs.h"

#include <QLocale>
#include <algorithm>
#include <cmath>

namespace kal {

namespace {

Prog_Segment &seg(int k)
{
    if (k < 0 || k >= PROG_SEGMENTE)
        raiseBounds("Segment", k);
    return prog.Prog.Segment[size_t(k)];
}

int ofenIndex()
{
    return prog.Prog_Ofen >= 1 ? prog.Prog_Ofen - 1 : 0;
}

/// A number put into 0..`oben` (or `unten`..`oben`) and rounded to whole.
int ganz(double v, int unten, int oben)
{
    return static_cast<int>(std::lround(std::clamp(v, double(unten), double(oben))));
}

/// Tenths of a value limited to 0.0 .. 999.9.
i16 zehntel(const QString &text)
{
    return static_cast<i16>(std::lround(std::clamp(Zahl_Eingabe(text), 0.0, GRAD_MAX) * 10.0));
}

void geaendert()
{
    prog.Prog_Geaendert = TRUE16;
}

bool ofenOnline(int ofen)
{
    return plant.Ofen_Online[ofen] != 0;
}

} // namespace

QList<Befehl_Eintrag> Befehl_Liste(int zeile)
{
    QList<Befehl_Eintrag> l;
    l.append({plant.Befehl_Name[BEF_ENDE].trimmed(), BEF_ENDE});
    for (int k = 1; k <= 5; ++k) {
        if (!(plant.Befehl_Maske & (1 << (k - 1))))
            continue;
        if (k == BEF_ZYKLUS && zeile == 0 && prog.Erste_Zeile == 0)
            continue;
        l.append({plant.Befehl_Name[k].trimmed(), k});
    }
    return l;
}

Zeilen_Anordnung Segment_Anordnung(int k)
{
    const Prog_Segment &s = seg(k);
    Zeilen_Anordnung a;
    auto reihe = [&a](const QString &sollEinh, Feld_Zustand soll, const QString &gradEinh, bool gradient,
                      bool maxOut, const QString &leer) {
        a.Soll_Einh = sollEinh;
        a.Sollwert = soll;
        a.Grad_Einheit = gradEinh;
        a.Gradient = gradient;
        a.MaxOUT = maxOut;
        a.Gradient_Leer = leer;
    };
    const QString grad = QStringLiteral("°C");
    switch (s.Befehl) {
    case BEF_RAMPE:
        reihe(grad, Feld_Zustand::Offen, QStringLiteral("K/h"), true, prog.Prog_Lang != 0, QStringLiteral("0.1"));
        a.Grad_Hinweis = QStringLiteral(" 0.0 - 999.9");
        break;
    case BEF_HALTEZEIT:
        reihe(grad, Feld_Zustand::Gesperrt, QStringLiteral("h"), true, false, QStringLiteral("0.1"));
        a.Grad_Hinweis = QStringLiteral(" 0.0 - 999.9");
        break;
    case BEF_MANUELL:
        reihe(grad, Feld_Zustand::Offen, QStringLiteral("%"), true, false, QStringLiteral("1"));
        a.Grad_Hinweis = QStringLiteral(" 0 - 100");
        break;
    case BEF_SPRUNG:
        reihe(grad, Feld_Zustand::Offen, QString(), false, true, QString());
        a.Grad_Einheit_Bleibt = true;
        break;
    case BEF_ZYKLUS:
        reihe(Prog_Text(QStringLiteral("Ziel"), QStringLiteral("Target")), Feld_Zustand::Offen,
              Prog_Text(QStringLiteral("Anzahl"), QStringLiteral("Count")), true, false, QString());
        a.Soll_Hinweis = QStringLiteral(" 1 -") + QString::number(k);
        return a;
    default:
        return a;
    }
    a.Soll_Hinweis = Soll_Max_Hinweis();
    if (a.MaxOUT)
        a.Max_Hinweis = QStringLiteral(" 0 - 100");
    return a;
}

QString Zehntel_Text(int v)
{
    return Format_Zahl(v / 10.0, QStringLiteral("###0.0")).replace(QLocale().decimalPoint(), QStringLiteral("."));
}

QString Soll_Max_Hinweis()
{
    return QStringLiteral(" 0 -") + Format_Zahl(prog.Soll_Max, QStringLiteral("##0"));
}

Zeilen_Texte Segment_Texte(int k)
{
    const Prog_Segment &s = seg(k);
    Zeilen_Texte t;
    t.Sollwert = Format_Zahl(s.Befehl == BEF_ZYKLUS ? s.MaxOut : s.Sollwert, QStringLiteral("##0"));
    switch (s.Befehl) {
    case BEF_RAMPE: t.Gradient = Zehntel_Text(s.Gradient); break;
    case BEF_HALTEZEIT: t.Gradient = Zehntel_Text(s.Haltezeit); break;
    case BEF_MANUELL: t.Gradient = Format_Zahl(s.MaxOut, QStringLiteral("##0")); break;
    case BEF_ZYKLUS: t.Gradient = Format_Zahl(s.Gradient, QStringLiteral("##0")); break;
    default: break;
    }
    t.MaxOUT = Format_Zahl(s.MaxOut, QStringLiteral("##0"));
    t.Zuluft = QString::number(s.Zuluft);
    t.Analog2 = QString::number(s.Analog);
    return t;
}

double Zahl_Eingabe(const QString &text)
{
    QString t = text;
    t.replace(QLatin1Char(','), QLatin1Char('.'));
    return leadingNumber(t);
}

void SollwertFormat(int k, const QString &text)
{
    Prog_Segment &s = seg(k);
    const double v = Zahl_Eingabe(text);
    if (s.Befehl == BEF_ZYKLUS)
        s.MaxOut = static_cast<u8>(ganz(v, 1, std::max(1, k))); // only segments before it
    else
        s.Sollwert = static_cast<i16>(ganz(v, 0, prog.Soll_Max));
    geaendert();
}

void GradientFormat(int k, const QString &text)
{
    Prog_Segment &s = seg(k);
    switch (s.Befehl) {
    case BEF_RAMPE: s.Gradient = zehntel(text); break;
    case BEF_HALTEZEIT: s.Haltezeit = zehntel(text); break;
    case BEF_MANUELL: s.MaxOut = static_cast<u8>(ganz(Zahl_Eingabe(text), 0, 100)); break;
    case BEF_ZYKLUS: s.Gradient = static_cast<i16>(ganz(Zahl_Eingabe(text), 1, 99)); break;
    default: return;
    }
    geaendert();
}

void MaxOutFormat(int k, const QString &text)
{
    Prog_Segment &s = seg(k);
    if (s.Befehl != BEF_RAMPE && s.Befehl != BEF_SPRUNG)
        return;
    s.MaxOut = static_cast<u8>(ganz(Zahl_Eingabe(text), 0, 100));
    geaendert();
}

void ZuluftFormat(int k, const QString &text)
{
    seg(k).Zuluft = static_cast<i16>(ganz(Zahl_Eingabe(text), 0, Zuluft_Max(ofenIndex())));
    geaendert();
}

void AnalogFormat(int k, const QString &text)
{
    // The file and the command word keep 11 bits of it.
    seg(k).Analog = static_cast<i16>(ganz(Zahl_Eingabe(text), 0, 0x7FF));
    geaendert();
}

void Befehl_Waehlen(int k, int befehl)
{
    Prog_Segment &s = seg(k);
    if (s.Befehl == befehl)
        return;
    s.Befehl = static_cast<u8>(befehl);
    // A ramp or hold without a value starts at 0.1 (K/h or h), as its empty
    // field reads.
    if (befehl == BEF_RAMPE && s.Gradient <= 0)
        s.Gradient = 1;
    if (befehl == BEF_HALTEZEIT && s.Haltezeit <= 0)
        s.Haltezeit = 1;
    if (befehl == BEF_ZYKLUS) {
        s.MaxOut = static_cast<u8>(std::clamp<int>(s.MaxOut, 1, std::max(1, k)));
        s.Gradient = static_cast<i16>(std::clamp<int>(s.Gradient, 1, 99));
    }
    geaendert();
}

void Ausgang_Klick(int k, int bit)
{
    if (bit < 0 || bit > 3)
        return;
    seg(k).Ausgang ^= static_cast<u8>(1 << bit);
    geaendert();
}

QString Ausgang_Text(bool gesetzt, bool argonWahl)
{
    if (argonWahl)
        return gesetzt ? QStringLiteral("-Ar-") : QStringLiteral("-N2-");
    return gesetzt ? QStringLiteral("-1-") : QStringLiteral("-0-");
}

void Sollwert_Durchlauf()
{
    i16 vorher = 0;
    for (Prog_Segment &s : prog.Prog.Segment) {
        if (s.Befehl == BEF_HALTEZEIT)
            s.Sollwert = vorher;
        else if (s.Sollwert < 0)
            s.Sollwert = 0;
        vorher = s.Sollwert;
    }
}

std::array<QString, 7> Loadtaste()
{
    std::array<QString, 7> t;
    const int ofen = ofenIndex();
    const QString laden = Text_Id(text::LOAD) + QLatin1Char(' ') + QString::number(prog.Prog_Ofen) +
                          QLatin1Char(':') + plant.Ofen_Name[ofen].trimmed();
    if (prog.Prog_Aus_Puffer != 0) {
        prog.Prog_Geaendert = 0;
        t[6] = laden;
    } else if (prog.Prog_Geaendert != 0) {
        t[6] = Text_Id(text::SAVE);
    } else if (ofenOnline(ofen) && !(plant.SPS_Wort(ofen, 74) & 1)) {
        t[6] = laden;
    }
    if (ofenOnline(ofen))
        for (int i = 0; i < PLAETZE; ++i)
            t[size_t(i)] = Text_Id(text::LOAD) + QLatin1Char(' ') + Text_Id(text::MEMORY) + QLatin1Char(' ') +
                           QString::number(i + 1);
    return t;
}

bool Editor_Sichern(const QString &name)
{
    prog.Prog.Prog_Name = Name_Fest(name, prog.Prog_Name_Len);
    if (!Prog_Sichern(prog.Prog_Datei, prog.Prog_Nr)) {
        dialogs().message(Text_Id(text::FILE_NOT_FOUND) + QStringLiteral(":\n") + prog.Prog_Datei);
        return false;
    }
    prog.Prog_Geaendert = 0;
    return true;
}

Tasten_Folge Taste_Druck(int i, const QString &caption, const QString &name)
{
    if (caption.isEmpty() || prog.Prog_Ofen < 1)
        return Tasten_Folge::Nichts;
    int platz = -1;
    if (i >= 0 && i < PLAETZE)
        platz = i + 1;
    else if (i == 6 && caption.startsWith(Text_Id(text::LOAD)))
        platz = 0;
    if (platz >= 0) {
        if (Schreiben_Offen(prog.Prog_Ofen - 1))
            return Tasten_Folge::Nichts;
        prog.Prog.Prog_Name = Name_Fest(name, prog.Prog_Lang ? PROG_NAME_MAX : PROG_NAME_KURZ);
        switch (Prog_Senden(Start_Wort(platz), platz)) {
        case Senden_Ergebnis::Gesendet: return Tasten_Folge::Gesendet;
        case Senden_Ergebnis::Abgelehnt: return Tasten_Folge::Abgelehnt;
        default: return Tasten_Folge::Nichts;
        }
    }
    if (i == 6 && caption == Text_Id(text::SAVE))
        return Editor_Sichern(name) ? Tasten_Folge::Gesichert : Tasten_Folge::Fehler;
    return Tasten_Folge::Nichts;
}

QString Schliessen_Frage()
{
    const int ofen = ofenIndex();
    return Ofen_Typtext(ofen) + QStringLiteral(", ") + Text_Id(text::PROGRAM) +
           QStringLiteral(" Nr.") + QString::number(prog.Prog_Nr) + QLatin1Char('\n') + Text_Id(text::CHANGED) +
           QStringLiteral(" !\n") + Text_Id(text::PROGRAM) + QLatin1Char(' ') + Text_Id(text::SAVE) +
           QStringLiteral("? ");
}

QString Name_Bereinigen(const QString &name, int laenge)
{
    QString n = name;
    for (QChar &c : n)
        if (c.unicode() < 32)
            c = QLatin1Char(' ');
    while (n.endsWith(QLatin1Char(' ')))
        n.chop(1);
    return n.left(laenge);
}

bool Editor_Oeffnen(int ofenNr, int p)
{
    Prog_Ofen_Setzen(ofenNr);
    if (prog.Prog_Ofen < 1)
        return false;
    if (p < 1 || p > plant.Prog_Anzahl)
        p = 1;
    prog.Prog_Nr = static_cast<i16>(p);
    prog.Erste_Zeile = 0;
    prog.Prog_Geaendert = 0;
    if (!Prog_Laden(prog.Prog_Datei, p)) {
        // An unreadable file opens an empty program, never the one before.
        prog.Prog.Segment.fill(Segment_Neu());
        prog.Prog.Prog_Name.clear();
        prog.Prog.Datum = QDateTime();
    }
    prog.Prog.Prog_Name = Name_Bereinigen(prog.Prog.Prog_Name, prog.Prog_Name_Len);
    if (!prog.Prog.Datum.isValid())
        prog.Prog.Datum = Jetzt();
    return true;
}

QString Editor_Titel()
{
    return QStringLiteral("[%1]  ").arg(prog.Prog_Ofen % 10) + Ofen_Typtext(ofenIndex());
}

long Prog_Dauer_Minuten(const Prog_Typ &t)
{
    double stunden = 0.0;
    double vorher = 0.0;
    for (const Prog_Segment &s : t.Segment) {
        if (s.Befehl == BEF_ENDE || s.Befehl > BEF_ZYKLUS)
            break;
        if (s.Befehl == BEF_RAMPE && s.Gradient > 0)
            stunden += std::fabs(s.Sollwert - vorher) / (s.Gradient / 10.0);
        else if (s.Befehl == BEF_HALTEZEIT)
            stunden += s.Haltezeit / 10.0;
        if (s.Befehl != BEF_ZYKLUS && s.Befehl != BEF_HALTEZEIT)
            vorher = s.Sollwert;
    }
    return std::lround(stunden * 60.0);
}

QString Dauer_Text(long minuten, const QString &stundenFormat)
{
    return Format_Zahl(double(minuten / 60), stundenFormat) + QLatin1Char(':') +
           Format_Zahl(double(minuten % 60), QStringLiteral("00")) + QStringLiteral(" h");
}

} // namespace kal
