#pragma once
// The batch documents without a person at the screen, for a nightly job that
// files every finished batch:
//   kalmeron [--data DIR] --csv BATCH.OVD [--out FILE]
//   kalmeron [--data DIR] --pdf BATCH.OVD --out FILE.pdf
// No window opens, nothing is asked and nothing is printed on stdout; what
// went wrong goes to stderr. Exit codes: 0 done, 1 the target could not be
// written, 2 bad arguments, 3 the batch file is missing or unreadable.

class QCommandLineParser;

namespace kal {

/// Before the application is made: an export runs without any display.
void chooseHeadlessPlatform(int argc, char **argv);

/// Registers --csv, --pdf and --out in the station's parser.
void addHeadlessOptions(QCommandLineParser &parser);

/// Runs the export the arguments ask for; -1 when they ask for none (the
/// station starts as usual), else the exit code.
int runHeadlessExport(const QCommandLineParser &parser);

} // namespace kal
