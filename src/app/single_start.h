#pragma once
// The part of start-up that runs before the main window: the batch file given
// on the command line, and the claim on the data folder (one station, and one
// viewer, per folder; see station/single_station.h).

#include <QString>

namespace kal {

/// Exit code of a batch argument that names no readable file.
constexpr int EXIT_BATCH_MISSING = 3;

/// The batch file of the command line as an absolute path; "" without one.
/// A file that cannot be read gives `ok` false with the reason on stderr.
QString batchArgument(const QString &arg, bool *ok);

/// Claims the data folder (Daten_Ordner_Option, or the default folder). -1
/// when this process is to run; else the exit code: 0 when a running station
/// took `batch` over, EXIT_FOLDER_LOCKED when the folder cannot be had (the
/// reason on stderr and, with a display, in a message box).
int claimOrHandOver(const QString &batch);

} // namespace kal
