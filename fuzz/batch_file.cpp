// A batch file read back as the curve window and the browser read it: its
// layout, the first pass (time span, program and batch data texts) and the
// second (the records handed on, with their time keys).
//
// Input: one control byte (bit 0: the file lies in the folder of the furnace
// whose files are all read from record 40; bits 1..7: records already shown,
// times 8, so that a live refresh that hands on only what is new is reached),
// then the file's bytes.

#include "recording/batch_reader.h"
#include "support/fuzz_support.h"

#include <QDir>
#include <cstdlib>

void kal::fuzz::fuzzOne(Input &in)
{
    const uint8_t steuer = in.byte();
    const QString ordner = freshRun() + ((steuer & 1) ? QStringLiteral("/0708001QRV") : QString());
    QDir().mkpath(ordner);
    const QString pfad = ordner + QStringLiteral("/D1203017KHP000001150326.OVD");
    writeFile(pfad, in.rest());
    const BatchRead r = readBatch(pfad, 8 * (steuer >> 1));
    if (!r.gefunden)
        std::abort(); // the file was just written
}
