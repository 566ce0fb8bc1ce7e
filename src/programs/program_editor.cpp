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

ProgramSegment &seg(int k)
{
    if (k < 0 || k >= PROG_SEGMENTE)
        raiseBounds("Segment", k);
    return prog.Prog.Segment[size_t(k)];
}

int furnaceIndex()
{
    return prog.Prog_Ofen >= 1 ? prog.Prog_Ofen - 1 : 0;
}

/// A number put into 0..`oben` (or `unten`..`oben`) and rounded to whole.
int wholeIn(double v, int unten, int oben)
{
    return static_cast<int>(std::lround(std::clamp(v, double(unten), double(oben))));
}

/// Tenths of a value limited to 0.0 .. 999.9.
i16 tenths(const QString &text)
{
    return static_cast<i16>(std::lround(std::clamp(parseNumber(text), 0.0, GRAD_MAX) * 10.0));
}

void markChanged()
{
    prog.Prog_Geaendert = TRUE16;
}

bool furnaceOnline(int ofen)
{
    return plant.Ofen_Online[ofen] != 0;
}

} // namespace

QList<CommandEntry> commandList(int zeile)
{
    QList<CommandEntry> l;
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

RowLayout segmentLayout(int k)
{
    const ProgramSegment &s = seg(k);
    RowLayout a;
    auto reihe = [&a](const QString &sollEinh, FieldState soll, const QString &gradEinh, bool gradient,
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
        reihe(grad, FieldState::Offen, QStringLiteral("K/h"), true, prog.Prog_Lang != 0, QStringLiteral("0.1"));
        a.Grad_Hinweis = QStringLiteral(" 0.0 - 999.9");
        break;
    case BEF_HALTEZEIT:
        reihe(grad, FieldState::Gesperrt, QStringLiteral("h"), true, false, QStringLiteral("0.1"));
        a.Grad_Hinweis = QStringLiteral(" 0.0 - 999.9");
        break;
    case BEF_MANUELL:
        reihe(grad, FieldState::Offen, QStringLiteral("%"), true, false, QStringLiteral("1"));
        a.Grad_Hinweis = QStringLiteral(" 0 - 100");
        break;
    case BEF_SPRUNG:
        reihe(grad, FieldState::Offen, QString(), false, true, QString());
        a.Grad_Einheit_Bleibt = true;
        break;
    case BEF_ZYKLUS:
        reihe(localText(QStringLiteral("Ziel"), QStringLiteral("Target")), FieldState::Offen,
              localText(QStringLiteral("Anzahl"), QStringLiteral("Count")), true, false, QString());
        a.Soll_Hinweis = QStringLiteral(" 1 -") + QString::number(k);
        return a;
    default:
        return a;
    }
    a.Soll_Hinweis = setpointHint();
    if (a.MaxOUT)
        a.Max_Hinweis = QStringLiteral(" 0 - 100");
    return a;
}

QString tenthsText(int v)
{
    return formatNumber(v / 10.0, QStringLiteral("###0.0")).replace(QLocale().decimalPoint(), QStringLiteral("."));
}

QString setpointHint()
{
    return QStringLiteral(" 0 -") + formatNumber(prog.Soll_Max, QStringLiteral("##0"));
}

RowTexts segmentTexts(int k)
{
    const ProgramSegment &s = seg(k);
    RowTexts t;
    t.Sollwert = formatNumber(s.Befehl == BEF_ZYKLUS ? s.MaxOut : s.Sollwert, QStringLiteral("##0"));
    switch (s.Befehl) {
    case BEF_RAMPE: t.Gradient = tenthsText(s.Gradient); break;
    case BEF_HALTEZEIT: t.Gradient = tenthsText(s.Haltezeit); break;
    case BEF_MANUELL: t.Gradient = formatNumber(s.MaxOut, QStringLiteral("##0")); break;
    case BEF_ZYKLUS: t.Gradient = formatNumber(s.Gradient, QStringLiteral("##0")); break;
    default: break;
    }
    t.MaxOUT = formatNumber(s.MaxOut, QStringLiteral("##0"));
    t.Zuluft = QString::number(s.Zuluft);
    t.Analog2 = QString::number(s.Analog);
    return t;
}

double parseNumber(const QString &text)
{
    QString t = text;
    t.replace(QLatin1Char(','), QLatin1Char('.'));
    return leadingNumber(t);
}

void SollwertFormat(int k, const QString &text)
{
    ProgramSegment &s = seg(k);
    const double v = parseNumber(text);
    if (s.Befehl == BEF_ZYKLUS)
        s.MaxOut = static_cast<u8>(wholeIn(v, 1, std::max(1, k))); // only segments before it
    else
        s.Sollwert = static_cast<i16>(wholeIn(v, 0, prog.Soll_Max));
    markChanged();
}

void GradientFormat(int k, const QString &text)
{
    ProgramSegment &s = seg(k);
    switch (s.Befehl) {
    case BEF_RAMPE: s.Gradient = tenths(text); break;
    case BEF_HALTEZEIT: s.Haltezeit = tenths(text); break;
    case BEF_MANUELL: s.MaxOut = static_cast<u8>(wholeIn(parseNumber(text), 0, 100)); break;
    case BEF_ZYKLUS: s.Gradient = static_cast<i16>(wholeIn(parseNumber(text), 1, 99)); break;
    default: return;
    }
    markChanged();
}

void MaxOutFormat(int k, const QString &text)
{
    ProgramSegment &s = seg(k);
    if (s.Befehl != BEF_RAMPE && s.Befehl != BEF_SPRUNG)
        return;
    s.MaxOut = static_cast<u8>(wholeIn(parseNumber(text), 0, 100));
    markChanged();
}

void ZuluftFormat(int k, const QString &text)
{
    seg(k).Zuluft = static_cast<i16>(wholeIn(parseNumber(text), 0, Zuluft_Max(furnaceIndex())));
    markChanged();
}

void AnalogFormat(int k, const QString &text)
{
    // The file and the command word keep 11 bits of it.
    seg(k).Analog = static_cast<i16>(wholeIn(parseNumber(text), 0, 0x7FF));
    markChanged();
}

void chooseCommand(int k, int befehl)
{
    ProgramSegment &s = seg(k);
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
    markChanged();
}

void toggleOutput(int k, int bit)
{
    if (bit < 0 || bit > 3)
        return;
    seg(k).Ausgang ^= static_cast<u8>(1 << bit);
    markChanged();
}

QString outputCaption(bool gesetzt, bool argonWahl)
{
    if (argonWahl)
        return gesetzt ? QStringLiteral("-Ar-") : QStringLiteral("-N2-");
    return gesetzt ? QStringLiteral("-1-") : QStringLiteral("-0-");
}

void fillSetpoints()
{
    i16 vorher = 0;
    for (ProgramSegment &s : prog.Prog.Segment) {
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
    const int ofen = furnaceIndex();
    const QString laden = Text_Id(text::LOAD) + QLatin1Char(' ') + QString::number(prog.Prog_Ofen) +
                          QLatin1Char(':') + plant.Ofen_Name[ofen].trimmed();
    if (prog.Prog_Aus_Puffer != 0) {
        prog.Prog_Geaendert = 0;
        t[6] = laden;
    } else if (prog.Prog_Geaendert != 0) {
        t[6] = Text_Id(text::SAVE);
    } else if (furnaceOnline(ofen) && !(plant.SPS_Wort(ofen, 74) & 1)) {
        t[6] = laden;
    }
    if (furnaceOnline(ofen))
        for (int i = 0; i < PLAETZE; ++i)
            t[size_t(i)] = Text_Id(text::LOAD) + QLatin1Char(' ') + Text_Id(text::MEMORY) + QLatin1Char(' ') +
                           QString::number(i + 1);
    return t;
}

bool saveEditor(const QString &name)
{
    prog.Prog.Prog_Name = paddedName(name, prog.Prog_Name_Len);
    if (!Prog_Sichern(prog.Prog_Datei, prog.Prog_Nr)) {
        dialogs().message(Text_Id(text::FILE_NOT_FOUND) + QStringLiteral(":\n") + prog.Prog_Datei);
        return false;
    }
    prog.Prog_Geaendert = 0;
    return true;
}

KeyEffect editorKey(int i, const QString &caption, const QString &name)
{
    if (caption.isEmpty() || prog.Prog_Ofen < 1)
        return KeyEffect::Nichts;
    int platz = -1;
    if (i >= 0 && i < PLAETZE)
        platz = i + 1;
    else if (i == 6 && caption.startsWith(Text_Id(text::LOAD)))
        platz = 0;
    if (platz >= 0) {
        if (writePending(prog.Prog_Ofen - 1))
            return KeyEffect::Nichts;
        prog.Prog.Prog_Name = paddedName(name, prog.Prog_Lang ? PROG_NAME_MAX : PROG_NAME_KURZ);
        switch (Prog_Senden(startWord(platz), platz)) {
        case SendResult::Gesendet: return KeyEffect::Gesendet;
        case SendResult::Abgelehnt: return KeyEffect::Abgelehnt;
        default: return KeyEffect::Nichts;
        }
    }
    if (i == 6 && caption == Text_Id(text::SAVE))
        return saveEditor(name) ? KeyEffect::Gesichert : KeyEffect::Fehler;
    return KeyEffect::Nichts;
}

QString closeQuestion()
{
    const int ofen = furnaceIndex();
    return typeText(ofen) + QStringLiteral(", ") + Text_Id(text::PROGRAM) +
           QStringLiteral(" Nr.") + QString::number(prog.Prog_Nr) + QLatin1Char('\n') + Text_Id(text::CHANGED) +
           QStringLiteral(" !\n") + Text_Id(text::PROGRAM) + QLatin1Char(' ') + Text_Id(text::SAVE) +
           QStringLiteral("? ");
}

QString cleanName(const QString &name, int laenge)
{
    QString n = name;
    for (QChar &c : n)
        if (c.unicode() < 32)
            c = QLatin1Char(' ');
    while (n.endsWith(QLatin1Char(' ')))
        n.chop(1);
    return n.left(laenge);
}

bool openEditor(int ofenNr, int p)
{
    setProgramFurnace(ofenNr);
    if (prog.Prog_Ofen < 1)
        return false;
    if (p < 1 || p > plant.Prog_Anzahl)
        p = 1;
    prog.Prog_Nr = static_cast<i16>(p);
    prog.Erste_Zeile = 0;
    prog.Prog_Geaendert = 0;
    if (!Prog_Laden(prog.Prog_Datei, p)) {
        // An unreadable file opens an empty program, never the one before.
        prog.Prog.Segment.fill(newSegment());
        prog.Prog.Prog_Name.clear();
        prog.Prog.Datum = QDateTime();
    }
    prog.Prog.Prog_Name = cleanName(prog.Prog.Prog_Name, prog.Prog_Name_Len);
    if (!prog.Prog.Datum.isValid())
        prog.Prog.Datum = now();
    return true;
}

QString editorTitle()
{
    return QStringLiteral("[%1]  ").arg(prog.Prog_Ofen % 10) + typeText(furnaceIndex());
}

long programMinutes(const Program &t)
{
    double stunden = 0.0;
    double vorher = 0.0;
    for (const ProgramSegment &s : t.Segment) {
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

QString durationText(long minuten, const QString &stundenFormat)
{
    return formatNumber(double(minuten / 60), stundenFormat) + QLatin1Char(':') +
           formatNumber(double(minuten % 60), QStringLiteral("00")) + QStringLiteral(" h");
}

} // namespace kal
