// A program file and a label file as the program forms read them: the
// selection list, one program loaded into the working copy (limits by the
// file name, segments through the one record buffer), and the labels.
//
// Input: one control byte (bit 0: names of 30 characters, else 16; bits 1..2:
// the file name, "OV_DEN", "OV_SNT", "OV_ENT" or "OV_ADD", which sets the
// limits), the program number byte (taken modulo 101, so that 0 is reached),
// a length (two bytes, high first), the program file's bytes of that length,
// and the label file's bytes.

#include "config/paths.h"
#include "programs/program_file.h"
#include "support/fuzz_support.h"

void kal::fuzz::fuzzOne(Input &in)
{
    const uint8_t steuer = in.byte();
    const int p = in.byte() % 101;
    const QByteArray programme = in.take(in.word());
    const QByteArray labels = in.rest();

    freshRun();
    Pfade_Setzen();
    static const char *arten[] = {"OV_DEN.PRG", "OV_SNT.PRG", "OV_ENT.PRG", "OV_ADD.PRG"};
    const QString datei = dataFile(QString::fromLatin1(arten[(steuer >> 1) & 3]));
    writeFile(datei, programme);
    writeFile(labelFileName(1), labels);
    programList(datei, (steuer & 1) ? PROG_NAME_MAX : PROG_NAME_KURZ);
    Prog_Laden(datei, p);
    readLabels(1);
}
