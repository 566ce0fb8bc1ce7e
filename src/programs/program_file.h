#pragma once
// The program file of a furnace, "OV_<kind>.PRG" in the program folder:
// 2101 records of 19 bytes, numbered from 1. Record 1 is the file header
// (saving date and time in bytes 0..5, the number of programs, 100, in byte
// 6). Program p (1..100) owns records (p-1)*21 + 2 .. (p-1)*21 + 22: its
// header, then one record per segment.
//
// Program header: bytes 0..5 day, month, year - 2000, hour, minute, second;
// byte 6 the number p (any other value: the slot is empty); 7, 12, 15, 16 zero.
// Segment record k: bytes 0, 1 name characters 2k+1 and 2k+2 (only for k
// below Prog_Name_Len/2), 2 and 5 what the header left, 3, 4 `Analog` high
// byte first, 6 p, 7 `Befehl`, 8 `Sollwert`, 10 `Haltezeit`, 12 zero,
// 13 `Gradient`, 15 `MaxOut`, 16 `Ausgang`, 17 `Zuluft`; 16-bit fields low
// byte first. Every record goes through the one record buffer `prog.Satz`,
// so the bytes a record does not set hold what the record before left.
//
// Every routine opens the file, works and closes it again.

#include "programs/program_model.h"

#include <QList>
#include <QString>
#include <array>

namespace kal {

constexpr int PROG_SATZ = 19;                    ///< bytes per record
constexpr int PROG_SAETZE = 21;                  ///< records per program
constexpr int PROG_DATEI_SAETZE = 2101;          ///< records of a whole file

/// Record number of the header of program p.
inline int headerRecord(int p) { return (p - 1) * PROG_SAETZE + 2; }

/// `Prog_Laden(file, p)`: program p into the working copy. Sets the limits of
/// the file (setProgramLimits); pastes the buffer instead when
/// `Prog_Aus_Puffer` is set; else reads the slot: an empty one gives 20 fresh
/// segments dated now. `Sollwert` is
/// clamped to 0..Soll_Max, `Analog` keeps 11 bits. False when the file
/// cannot be read.
bool Prog_Laden(const QString &datei, int p);

/// `Prog_Sichern(file, p)`: the working copy as program p, dated now, its
/// name cut or padded to Prog_Name_Len, `Sollwert` clamped to 0..Soll_Max;
/// every `Befehl_Alt` becomes `Befehl`. Overwrites the slot without asking.
/// False when the file cannot be written.
bool Prog_Sichern(const QString &datei, int p);

/// `Prog_Neu()`: creates the program file of `Prog_Ofen` with 100 empty
/// slots. False when it cannot be written.
bool Prog_Neu();

/// `Prog_Loeschen(file, p)`: marks slot p empty (bytes 0..7, 12, 15, 16 of its
/// header zeroed). False when the file cannot be written.
bool Prog_Loeschen(const QString &datei, int p);

/// One line of the selection list.
struct ProgramEntry {
    int p = 0;
    QString name;     ///< first 30 characters
    QDateTime datum;
    QString text;     ///< "0##", the name and "TTMMJJHHMM"
};

/// The stored programs of a file in number order, names of `nameLen`
/// characters. A missing file gives an empty list.
QList<ProgramEntry> programList(const QString &datei, int nameLen);

/// The date of a program header's first six bytes; invalid when they make
/// no date.
QDateTime headerDate(const QByteArray &satz);

// ---- label file ---------------------------------------------------------------

constexpr int LABEL_SATZ = 370;

/// The label file "OV_SP_<n>.INI" of a furnace: the captions of OUTPUT1 to
/// OUTPUT4 (and a fifth text), and flags that hide an output button, `Zuluft`
/// or `Analog2` for a segment kind. Each flag array belongs to one segment
/// kind 1..5 (index kind - 1); a flag other than 0 hides.
struct OutputLabels {
    std::array<QString, 5> Text;                          ///< 60 characters each
    std::array<std::array<i16, 5>, 5> Ausgang_Aus{};      ///< [kind-1][output 0..3]; [4] unused
    std::array<std::array<i16, 2>, 5> Luft_Aus{};         ///< [kind-1][0 Zuluft, 1 Analog2]
    bool ausDatei = false;                                ///< read from a file
};

/// Name of the label file of a furnace number.
QString labelFileName(int ofenNr);

/// Reads the label file of a furnace number. Missing or short: the captions
/// "OUTPUT1" .. "OUTPUT4" and every flag 0; no file is written.
OutputLabels readLabels(int ofenNr);

/// The fourth output chooses between argon (set) and nitrogen (clear): the
/// label file names argon for it.
bool outputIsArgon(const OutputLabels &l);

} // namespace kal
