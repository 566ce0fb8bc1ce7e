#pragma once
// Names of batch files.
//
// A live batch file is "D" + serial (10 characters, the furnace serial without
// its two dashes) + six-digit batch number + DD + MM + YY + ".OVD" in the
// batch year folder Charge_Ordner[0], with the same name in the mirror folder
// Charge_Ordner[1]. A file made by the USB import is "US" + the serial of the
// USB header + five-digit number + DD + MM + YY + ".OVD" in Charge_Ordner[0].
// The batch browser reads the number and the date back by position, so the
// widths are fixed: 1 + 10 + 6 + 6 and 2 + 10 + 5 + 6 characters before ".OVD".
//
// A name is built anew from the current values every time: two batches of one
// furnace with the same number and start day share a file, the later appends.

#include <QString>
#include <cstdint>

namespace kal {

/// The ten characters of a serial "JJMM-NNN-TTT" without its dashes
/// (characters 1-4, 6-8, 10-12; a short serial counts as blank padded).
QString serialWithoutDashes(const QString &serie);

/// "D" + serial + right six digits of number + 1000000 + DDMMYY + ".OVD".
QString batchFileName(const QString &serie, int32_t nummer, int tag, int monat, int jahr);
/// "US" + serial (10) + right five digits of number + 100000 + DDMMYY + ".OVD".
QString usbFileName(const QString &serie10, int32_t nummer, int tag, int monat, int jahr);

/// Sets Charge_Datei and Charge_Kopie of the furnace index from Ofen_Serie,
/// Charge_Nr, Charge_Start and the two batch folders.
void buildBatchNames(int ofen);
/// Full path of an import target in the batch year folder.
QString usbTargetPath(const QString &serie10, int32_t nummer, int tag, int monat, int jahr);

} // namespace kal
