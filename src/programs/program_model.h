#pragma once
// The temperature program as the station holds it: 20 segments, a name and
// the date of saving. There is one working copy `Prog` for the whole station,
// through which every open, edit, save and send goes, and one copy buffer
// `Prog_Puffer` for moving a program between slots and furnaces.
//
// Segment commands (`Befehl`): 0 end, 1 ramp, 2 hold, 3 manual, 4 jump,
// 5 cycle; anything above 5 counts as an end when the program goes to the PLC.
// Units: `Sollwert` whole °C; `Haltezeit` 0.1 h; `Gradient` 0.1 K/h for a
// ramp, the repeat count of a cycle; `MaxOut` percent, the output of a manual
// segment, the target segment (1-based) of a cycle.

#include "core/plant_state.h"

#include <QByteArray>
#include <QDateTime>
#include <QString>
#include <array>

namespace kal {

constexpr int PROG_SEGMENTE = 20;
constexpr int PROG_NAME_MAX = 30;   ///< long program names
constexpr int PROG_NAME_KURZ = 16;  ///< short program names
constexpr int SOLL_MAX_STANDARD = 1720;
constexpr int SOLL_MAX_ENT = 350;

enum CommandKind : int {
    BEF_ENDE = 0,
    BEF_RAMPE = 1,
    BEF_HALTEZEIT = 2,
    BEF_MANUELL = 3,
    BEF_SPRUNG = 4,
    BEF_ZYKLUS = 5,
};

/// Bits of a furnace's option word (the two characters of `Ofen_Version`).
constexpr int OPT_MANUELL = 0x100;
constexpr int OPT_ZYKLUS = 0x200;
constexpr int OPT_AUSGANG = 0x400;
constexpr int OPT_ZULUFT = 0x800;

struct ProgramSegment {
    u8 Befehl = 0;
    u8 Befehl_Alt = 0;   ///< the command as loaded
    i16 Sollwert = 0;
    i16 Haltezeit = 0;
    i16 Gradient = 0;
    u8 MaxOut = 100;
    u8 Ausgang = 0;      ///< bits 0..3: OUTPUT1..OUTPUT4
    i16 Zuluft = 0;
    i16 Analog = 0;
};

struct Program {
    std::array<ProgramSegment, PROG_SEGMENTE> Segment{};
    QString Prog_Name;   ///< up to 30 characters
    QDateTime Datum;     ///< date of saving; invalid when none
};

/// The station's own state of the program forms and routines.
struct ProgramFormsState {
    Program Prog;               ///< the working copy
    Program Prog_Puffer;        ///< the copy buffer (its date is not used)
    i16 Puffer_Voll = 0;         ///< the buffer has been filled once

    u8 Prog_Ofen = 0;            ///< furnace number 1..8 of the working copy, 0 none
    i16 Prog_Nr = 0;             ///< program number 1..100, 0 none
    QString Prog_Datei;          ///< program file of Prog_Ofen
    int Prog_Name_Len = PROG_NAME_KURZ;
    i16 Prog_Lang = 0;           ///< Prog_Name_Len above 16
    i16 Soll_Max = 0;            ///< highest set value, whole °C
    i16 Mit_Ausgang = 0;         ///< the furnace has OUTPUT1..OUTPUT4
    i16 Mit_Zuluft = 0;          ///< the furnace has Zuluft and Analog

    i16 Prog_Geaendert = 0;      ///< the working copy differs from the file
    i16 Prog_Aus_Puffer = 0;     ///< the editor opened to paste the buffer
    int Erste_Zeile = 0;         ///< segment in the editor's top row

    /// The record buffer that every read and write of a program file goes
    /// through; fields a record does not set keep what the last one left.
    QByteArray Satz = QByteArray(19, '\0');

    u8 Prog_Platz = 0;           ///< program view: memory place shown, 0 the active program
};

extern ProgramFormsState prog;

/// Sets the furnace of the working copy (number 1..8): `Prog_Ofen`,
/// `Prog_Name_Len` (30 with bit 12 of the version word, else 16), `Prog_Lang`,
/// `Prog_Datei` and the limits of its file. A number outside 1..8 sets
/// `Prog_Ofen` 0 and nothing else.
void setProgramFurnace(int ofenNr);

/// The limits of the working copy's furnace for a program file: `Befehl_Maske`
/// bit 2 from option bit 8 and bit 4 from option bit 9 (the other bits stay),
/// the output and `Zuluft` flags from option bits 10 and 11, `Soll_Max` a
/// tenth of the furnace's maximum, then by the file name: "OV_DEN" 1720,
/// "OV_SNT" 1720 with outputs and Zuluft, "OV_ENT" 350 with both, "OV_ADD"
/// 1720; the first name that matches decides.
void setProgramLimits(const QString &datei);

/// Program name width of a furnace number: 30 with bit 12 of the version
/// word, else 16.
int programNameWidth(int ofenNr);

/// Program file of a furnace number: Prog_Ordner + "OV_" + kind + ".PRG".
QString programFileName(int ofenNr);

/// The option word of a furnace index: the two bytes of `Ofen_Version`, the
/// first the low byte.
int optionWord(int ofen);
/// The furnace has a version word: its type word has the sign bit.
bool hasVersionWord(int ofen);
/// The version word is 1: `Zuluft` runs 0..400 and goes to the PLC halved.
bool versionWordIsOne(int ofen);
/// Highest `Zuluft` of a furnace index: 400 for version word 1, else 250.
int Zuluft_Max(int ofen);

/// The type text of a furnace index: `Ofen_Bezeichnung`, or `Ofen_Name` while
/// that is empty.
QString typeText(int ofen);

/// A text of the program forms that the language table does not hold: the
/// German one, or the English one in any other language.
QString localText(const QString &deutsch, const QString &englisch);

/// A fresh segment: command 0, `MaxOut` 100, all else 0.
ProgramSegment newSegment();

/// `Prog_Name` of the working copy cut or blank-padded to `laenge`.
QString paddedName(const QString &name, int laenge);

} // namespace kal
