#include "link/derived_data.h"

#include "core/conversions.h"
#include "core/dates.h"
#include "core/plant_state.h"
#include "core/word_map.h"

#include <cmath>
#include <cstdlib>

namespace kal {

namespace {

constexpr int SEGMENTE = 20;
constexpr int BASIS_MIT_UHR = 500;    ///< only these panels take clock steps
constexpr int BASIS_OHNE_VERSION = 50;

i16 plcWord(int ofen, int adr)
{
    return plant.SPS_Wort(ofen, adr);
}

/// Minutes of a number of hours, the minutes rounded.
int minutesOf(double stunden)
{
    int minuten = 0;
    durationText(stunden, minuten);
    return minuten;
}

/// Steps the PLC clock towards the station's: one unit per pass, the largest
/// that differs, with the smaller command when the PLC is ahead.
void stepPlcClock(int ofen, const QDateTime &stempel)
{
    const QDateTime jetzt = now();
    const int64_t minuten = DateDiff(QStringLiteral("n"), jetzt, stempel);
    const int64_t stunden = DateDiff(QStringLiteral("h"), jetzt, stempel);
    const int64_t tage = DateDiff(QStringLiteral("d"), jetzt, stempel);
    const int64_t monate = DateDiff(QStringLiteral("m"), jetzt, stempel);
    const int64_t jahre = DateDiff(QStringLiteral("yyyy"), jetzt, stempel);
    // A minute either way is the PLC's stamp lagging its clock, not a wrong clock.
    if (std::llabs(minuten) > 1)
        plant.Uhr_Korrektur[ofen] = -1;
    if (minuten == 0)
        plant.Uhr_Korrektur[ofen] = 0;
    if (plcWord(ofen, word::CLOCK_STEP) > 0 || plant.Uhr_Korrektur[ofen] != -1)
        return;

    auto schritt = [](int64_t d, int vor, int nach) { return d > 0 ? vor : nach; };
    int befehl = 0;
    if (jahre != 0)
        befehl = schritt(jahre, 1, 2);
    else if (monate != 0)
        befehl = schritt(monate, 4, 8);
    else if (tage != 0)
        befehl = schritt(tage, 16, 32);
    else if (stunden != 0)
        befehl = schritt(stunden, 64, 128);
    else if (minuten != 0)
        befehl = schritt(minuten, 256, 512);
    i16 &w58 = plant.SPS_Wort(ofen, word::CLOCK_STEP);
    w58 = static_cast<i16>(w58 + befehl);
    if (w58 != 0) {
        plant.Write_Adr[ofen] = word::CLOCK_STEP;
        plant.Write_Len[ofen] = 1;
    }
}

/// Minutes the segments after the running one still take, up to the first
/// segment whose command is no program command (1..5).
int remainingSegmentMinutes(int ofen)
{
    int summe = 0;
    for (int n = plcWord(ofen, word::SEGMENT) + 1; n <= SEGMENTE; ++n) {
        const int art = plcWord(ofen, word::SEGMENT_COMMANDS - 1 + n) & 0xF;
        if (art < 1 || art > 5)
            break;
        const double spanne =
            std::abs(plcWord(ofen, word::SEGMENT_TARGETS + n) - plcWord(ofen, word::SEGMENT_TARGETS - 1 + n)) * 10.0;
        const int t = plcWord(ofen, word::SEGMENT_TIMES - 1 + n);
        switch (art) {
        case 1: // ramp at t (0.1 K/h)
            if (t > 0)
                summe += minutesOf(spanne / t);
            break;
        case 2: // hold time in 0.1 h
            summe += t * 6;
            break;
        case 3: // fixed ramp of 100 K/h
            summe += minutesOf(spanne / 1000.0);
            break;
        case 4: // fixed ramp of 500 K/h
            summe += minutesOf(spanne / 5000.0);
            break;
        default: // kind 5 takes no time
            break;
        }
    }
    return summe;
}

/// Text of words in address order, two characters a word, low byte first.
QByteArray wordBytes(int ofen, int adr, int worte)
{
    QByteArray b;
    for (int i = 0; i < worte; ++i)
        b += MKI(plcWord(ofen, adr + i));
    return b;
}

void readTextImages(int ofen)
{
    plant.PLC_Name[ofen] = wordsText(ofen, word::NAME, 8);
    plant.PLC_Serie[ofen] = wordsText(ofen, word::SERIAL, 6);
    plant.PLC_Version[ofen] = wordsText(ofen, word::VERSION, 1);
    plant.PLC_Bezeichnung[ofen] =
        Text_Sauber(Latin1Text(wordBytes(ofen, word::DESCRIPTION_1, 8) + wordBytes(ofen, word::DESCRIPTION_2, 7)));
}

void readElementData(int ofen)
{
    const int w = plcWord(ofen, word::ELEMENT_CODE);
    if (w < 1) {
        plant.Element_Anz[ofen] = 0;
        plant.Element_Spuren[ofen] = 0;
        plant.Element_Rest[ofen] = 0;
        return;
    }
    int rest = w;
    int anzahl = 0;
    while (rest > 100) {
        rest -= 100;
        ++anzahl;
    }
    plant.Element_Anz[ofen] = static_cast<i16>(anzahl);
    plant.Element_Spuren[ofen] = static_cast<i16>(std::min(rest, 18));
    plant.Element_Rest[ofen] = plcWord(ofen, word::ELEMENT_REST);
}

/// Which comparison of the identity failed, 0 none; a later failure
/// overwrites an earlier one, the identity block ends at its first.
int identityMismatch(int ofen)
{
    int fehler = 0;
    if (plant.Ofen_Typ[ofen + 1] != plcWord(ofen, word::TYPE))
        fehler = 1;
    if (plant.Ofen_Name[ofen] != plant.PLC_Name[ofen])
        fehler = 2;
    if (plant.Ofen_Serie[ofen] != plant.PLC_Serie[ofen])
        fehler = 3;
    if (plant.Ofen_Basis[ofen] != BASIS_OHNE_VERSION) {
        if (plant.Ofen_Version[ofen] != plant.PLC_Version[ofen])
            fehler = 4;
        if (plcWord(ofen, word::IDENTITY_216) != plant.Ofen_Wert216[ofen])
            fehler = 5;
        if (plcWord(ofen, word::IDENTITY_216 + 1) != plant.Ofen_Wert217[ofen])
            fehler = 6;
        if (plcWord(ofen, word::IDENTITY_216 + 2) != plant.Ofen_Wert218[ofen])
            fehler = 7;
    }
    const int basis = plant.Ofen_Basis[ofen];
    if (basis >= 1) {
        // A word of 0 has not come from the PLC yet and counts as equal.
        for (int paar = 0; paar <= 10; ++paar) {
            const i16 a = plcWord(ofen, basis + 2 * paar);
            const i16 b = plcWord(ofen, basis + 2 * paar + 1);
            if ((a != plant.Ofen_Kennung_A(ofen + 1, paar) && a != 0) ||
                (b != plant.Ofen_Kennung_B(ofen + 1, paar) && b != 0)) {
                fehler = 8;
                break;
            }
        }
    }
    return fehler;
}

} // namespace

QString durationText(double stunden, int &minuten)
{
    const double h = std::floor(stunden);
    const int m = static_cast<int>(std::floor((stunden - h) * 60.0 + 0.5));
    minuten = static_cast<int>(h) * 60 + m;
    return (QStringLiteral("  ") + QString::number(static_cast<int>(h))).right(3) + QLatin1Char(':') +
           QStringLiteral("%1").arg(m, 2, 10, QLatin1Char('0')) + QLatin1Char('h');
}

void programTimes(int ofen, int &schritt)
{
    if (plant.Prog_Neu[ofen] == 0)
        return;
    // Everything here measures against the stamp of the block 0 that just
    // came; without a fresh stamp the PLC clock is not compared again.
    schritt = 170;
    plant.Prog_Neu[ofen] = 0;
    QString text = plant.Datum_Block0[ofen];
    text = text.left(text.size() - 2) + QStringLiteral("00");
    const QDateTime stempel = dateValue(text);
    plant.Prog_Start_Text[ofen] = Datum_Text(stempel, QStringLiteral("TTMMJJHHMM"));

    schritt = 180;
    if (plant.Ofen_Basis[ofen] == BASIS_MIT_UHR && plant.Write_Len[ofen] < 1)
        stepPlcClock(ofen, stempel);

    schritt = 190;
    int rest = 0;
    plant.Prog_Dauer_Text[ofen] = durationText(plcWord(ofen, word::REMAINING) / 100.0, rest);
    plant.Rest_Min[ofen] = rest;

    schritt = 200;
    if (plcWord(ofen, word::SEGMENT) >= 1) {
        plant.Rest_Min[ofen] += remainingSegmentMinutes(ofen);
        plant.Prog_Ende_Text[ofen] =
            Datum_Text(DateAdd(QStringLiteral("n"), plant.Rest_Min[ofen], stempel), QStringLiteral("TTMMJJHHMM"));
    }
}

void checkIdentity(int ofen, int &schritt)
{
    if (plant.Block0_Neu[ofen] != 0 && plant.Block1_Neu[ofen] != 0 && plant.Block2_Neu[ofen] != 0) {
        schritt = 230;
        plant.Block0_Neu[ofen] = 0;
        plant.Block1_Neu[ofen] = 0;
        plant.Block2_Neu[ofen] = 0;
        plant.Kennung_Fehler[ofen] = 0;
        schritt = 240;
        readElementData(ofen);
        schritt = 250;
        readTextImages(ofen);
        schritt = 260;
        plant.Kennung_Fehler[ofen] = static_cast<i16>(identityMismatch(ofen));
        schritt = 270;
        if (plant.Kennung_Fehler[ofen] == 0)
            plant.Kennung_Zaehler[ofen] = 0;
        else
            ++plant.Kennung_Zaehler[ofen];
    }

    // One failed pass may be a torn read across blocks; the second in a row
    // is a furnace that changed.
    schritt = 280;
    if (plant.Kennung_Zaehler[ofen] <= 1)
        return;
    if (plant.Kennung_Zaehler[ofen] > 10)
        plant.Kennung_Zaehler[ofen] = 10;
    if (plant.Kennung_Fehler[ofen] <= 0)
        return;
    schritt = 290;
    if (plant.Ofen_Typ[ofen + 1] < 0) {
        if (plant.Meld_Seite[ofen] < 0)
            plant.Meld_Seite[ofen] = 13;
    } else {
        plant.Config_Save = -1;
    }
}

void deriveFurnace(int ofen, int &schritt)
{
    if (plant.Ofen_Online[ofen] == 0) {
        plant.Prog_Start_Text[ofen].clear();
        return;
    }
    programTimes(ofen, schritt);
    checkIdentity(ofen, schritt);
}

} // namespace kal
