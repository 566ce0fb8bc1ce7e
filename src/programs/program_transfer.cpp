#include "programs/program_transfer.h"

#include "config/text_ids.h"
#include "core/conversions.h"
#include "core/dates.h"
#include "core/dialogs.h"
#include "link/frames.h"
#include "link/write_journal.h"

#include <algorithm>

namespace kal {

namespace {

constexpr int NEUES_PROGRAMM_WORT = 188; ///< bit 15 on the large layout: a new program was written
constexpr int ZULUFT_BYTE_MAX = 250;

/// Two characters of a name as one word, the first in the low byte.
i16 charWord(const QByteArray &name, int i)
{
    return static_cast<i16>(u8(name[i]) | u8(name[i + 1]) << 8);
}

/// `Zuluft` as it goes into the high byte of the limit word.
int airByte(int ofen, const ProgramSegment &s)
{
    const int v = versionWordIsOne(ofen) ? s.Zuluft / 2 : std::min<int>(s.Zuluft, ZULUFT_BYTE_MAX);
    return std::clamp(v, 0, 255);
}

void putPlcWord(int ofen, int adresse, int wert)
{
    plant.SPS_Wort(ofen, adresse) = static_cast<i16>(wert);
}

QString placeText(int platz)
{
    return platz == 0 ? QStringLiteral("active program") : QStringLiteral("place %1").arg(platz);
}

} // namespace

int startWord(int platz)
{
    if (platz == 0)
        return prog.Prog_Lang ? START_AKTIV_LANG : START_AKTIV;
    return prog.Prog_Lang ? START_PLATZ_LANG : START_PLATZ;
}

SendResult Prog_Senden(int start, int platz)
{
    if (prog.Prog_Ofen < 1)
        return SendResult::Kein_Ofen;
    const int ofen = prog.Prog_Ofen - 1;
    if (writePending(ofen))
        return SendResult::Belegt;

    const int opt = optionWord(ofen);
    bool manuell = false, zyklus = false;
    const bool lang = start == START_AKTIV_LANG || start == START_PLATZ_LANG;
    const int P = lang ? start + 10 : start;
    const int anzahl = lang ? 110 : 100;
    const QByteArray name = Latin1Bytes(paddedName(prog.Prog.Prog_Name, PROG_NAME_MAX));
    if (lang)
        for (int i = 0; i < 7; ++i)
            putPlcWord(ofen, start + i, charWord(name, 16 + 2 * i));

    // Zuluft rides in the limit word's high byte on a furnace with a version
    // word, and on one of version word 1, whose range of 0..400 fits the byte
    // only halved.
    const bool luftImWort = hasVersionWord(ofen) || versionWordIsOne(ofen);
    bool luftGesetzt = false;
    for (int k = 0; k < PROG_SEGMENTE; ++k) {
        const ProgramSegment &s = prog.Prog.Segment[size_t(k)];
        int befehl = 0, soll = 0, wert = 0, grenze = 0;
        if (s.Befehl >= BEF_RAMPE && s.Befehl <= BEF_ZYKLUS) {
            befehl = hasVersionWord(ofen) ? (s.Analog & 0x7FF) * 16 + s.Befehl : s.Befehl;
            soll = s.Sollwert;
            switch (s.Befehl) {
            case BEF_RAMPE: wert = s.Gradient; break;
            case BEF_HALTEZEIT: wert = s.Haltezeit; break;
            case BEF_ZYKLUS: wert = s.Gradient; break;
            default: wert = 0; break;
            }
            if (s.Befehl == BEF_ZYKLUS) {
                grenze = s.MaxOut; // the target segment, in full
            } else if (luftImWort) {
                grenze = airByte(ofen, s) << 8 | s.MaxOut;
                luftGesetzt = luftGesetzt || airByte(ofen, s) > 0;
            } else {
                grenze = s.MaxOut;
            }
            manuell = manuell || s.Befehl == BEF_MANUELL;
            zyklus = zyklus || s.Befehl == BEF_ZYKLUS;
        } else if (luftGesetzt) {
            // An end keeps the air feed that an earlier segment set.
            grenze = airByte(ofen, s) << 8 | s.MaxOut;
        }
        putPlcWord(ofen, P + k, befehl);
        putPlcWord(ofen, P + 20 + k, soll);
        putPlcWord(ofen, P + 40 + k, wert);
        putPlcWord(ofen, P + 60 + k, grenze);
    }
    for (int j = 0; j < PROG_SEGMENTE / 2; ++j) {
        const int a = (prog.Prog.Segment[size_t(2 * j + 1)].Ausgang & 15) << 4 |
                      (prog.Prog.Segment[size_t(2 * j)].Ausgang & 15);
        putPlcWord(ofen, P + 90 + j, a);
    }

    if (opt & OPT_MANUELL)
        manuell = false;
    if (opt & OPT_ZYKLUS)
        zyklus = false;
    if (manuell || zyklus) {
        const int grund = manuell && zyklus ? text::MANUAL_AND_CYCLE
                          : manuell         ? text::MANUAL_PRESENT
                                            : text::CYCLE_PRESENT;
        dialogs().message(Text_Id(text::PROGRAM_INVALID) + QLatin1Char('\n') + Text_Id(grund));
        return SendResult::Abgelehnt;
    }

    for (int i = 0; i < 8; ++i)
        putPlcWord(ofen, P + 80 + i, charWord(name, 2 * i));
    if (P != START_AKTIV)
        putPlcWord(ofen, P + 88, platz);

    plant.Write_Adr[ofen] = static_cast<i16>(start);
    plant.Write_Len[ofen] = static_cast<i16>(anzahl);
    nameWriteCause(ofen, QStringLiteral("program \"%1\" -> %2")
                             .arg(prog.Prog.Prog_Name.trimmed(), placeText(platz)));
    if (plant.Ofen_Gross[ofen] != 0)
        putPlcWord(ofen, NEUES_PROGRAMM_WORT, plant.SPS_Wort(ofen, NEUES_PROGRAMM_WORT) | 0x8000);
    return SendResult::Gesendet;
}

Program programFromWords(int ofen, int offset)
{
    Program t;
    const int P = offset + 100;
    int w[100];
    for (int i = 0; i < 100; ++i)
        w[i] = plant.SPS_Wort(ofen, P + i);

    QByteArray name;
    for (int i = 0; i < 8; ++i)
        name += MKI(plant.SPS_Wort(ofen, offset + 180 + i));
    if (programNameWidth(ofen + 1) > PROG_NAME_KURZ)
        for (int i = 0; i < 7; ++i)
            name += MKI(plant.SPS_Wort(ofen, offset + 90 + i));
    t.Prog_Name = Text_Sauber(Latin1Text(name));

    const bool version = hasVersionWord(ofen);
    for (int k = 0; k < PROG_SEGMENTE; ++k) {
        ProgramSegment &s = t.Segment[size_t(k)];
        s = ProgramSegment{};
        const int bef = w[k] & 0xFFFF;
        if (version) {
            s.Befehl = u8(bef & 15);
            s.Analog = static_cast<i16>((bef >> 4) & 0x7FF);
        } else {
            s.Befehl = u8(std::min(bef, 255));
        }
        s.Befehl_Alt = s.Befehl;
        s.Sollwert = static_cast<i16>(w[20 + k]);
        const int ausgang = w[90 + k / 2];
        s.Ausgang = u8(k % 2 == 0 ? ausgang & 15 : (ausgang >> 4) & 15);
        const int grenze = w[60 + k] & 0xFFFF;
        s.MaxOut = u8(grenze & 0xFF);
        s.Zuluft = static_cast<i16>((grenze >> 8) * (versionWordIsOne(ofen) ? 2 : 1));
        switch (s.Befehl) {
        case BEF_RAMPE: s.Gradient = static_cast<i16>(w[40 + k]); break;
        case BEF_HALTEZEIT: s.Haltezeit = static_cast<i16>(w[40 + k]); break;
        case BEF_ZYKLUS:
            s.Gradient = static_cast<i16>(w[40 + k]);
            s.MaxOut = u8(std::min(grenze, 255));
            break;
        default: break;
        }
    }
    return t;
}

void ProgCopy_aus_SPS(int ofen, int offset)
{
    prog.Prog_Puffer = programFromWords(ofen, offset);
    prog.Puffer_Voll = TRUE16;
}

void ProgCopy_aus_PC()
{
    prog.Prog_Puffer.Segment = prog.Prog.Segment;
    prog.Prog_Puffer.Prog_Name = prog.Prog.Prog_Name.left(PROG_NAME_MAX);
    prog.Puffer_Voll = TRUE16;
}

void Programm_Einfuegen()
{
    prog.Prog.Segment = prog.Prog_Puffer.Segment;
    prog.Prog.Prog_Name = prog.Prog_Puffer.Prog_Name;
    prog.Prog.Datum = now();
}

int memoryOffset(int ofen)
{
    return plant.Ofen_Gross[ofen] != 0 ? 900 : 200;
}

void requestPlace(int ofen, int n)
{
    prog.Prog_Platz = static_cast<u8>(n);
    const int wert = 100 + n;
    plant.SPS_Wort(ofen, plant.Prog_Page[ofen]) = static_cast<i16>(wert);
    SEND_BEF(static_cast<u8>(ofen + 1), plant.Prog_Page[ofen], static_cast<i16>(wert),
             QStringLiteral("page word %1: fetch place %2").arg(wert).arg(n));
}

bool placeReady(int ofen, int n)
{
    return n >= 1 && plant.SPS_Wort(ofen, plant.Prog_Page[ofen]) == 1100 + n;
}

QString Page_Status(int ofen)
{
    int v = plant.SPS_Wort(ofen, plant.Prog_Page[ofen]);
    if (v > 1000)
        v -= 1000;
    return v >= 1 && v <= 200 ? plant.Status_Text[v].trimmed() : QString();
}

bool writePending(int ofen)
{
    return plant.Write_Len[ofen] > 0;
}

int turnsUntil(int ofen)
{
    const int akt = plant.Akt_Ofen >= 0 && plant.Akt_Ofen < OFEN_MAX ? plant.Akt_Ofen : 0;
    return (ofen - akt + OFEN_MAX) % OFEN_MAX;
}

} // namespace kal
