#include "app/headless_export.h"

#include "core/dialogs.h"
#include "core/plant_state.h"
#include "curves/csv_export.h"
#include "curves/curve_store.h"
#include "recording/batch_file.h"
#include "station/document_start.h"
#include "views/printing.h"

#include <QCommandLineParser>
#include <QFileInfo>
#include <cstdio>
#include <cstring>

namespace kal {

namespace {

const QString CSV = QStringLiteral("csv");
const QString PDF = QStringLiteral("pdf");
const QString OUT = QStringLiteral("out");

/// Dialogs of an export: messages go to stderr, except while the tables are
/// read (a plant without configuration is no error here); questions get Yes
/// once the export runs (a missing folder is made, a target replaced), No
/// before (reading the configuration creates no folders).
class Exportdialoge : public Dialogs {
public:
    bool laeuft = false;

    void message(const QString &text, const QString &title) override
    {
        if (!laeuft)
            return;
        const QString t = title.isEmpty() ? text : title + QStringLiteral(": ") + text;
        std::fprintf(stderr, "kalmeron: %s\n", qPrintable(QString(t).replace(QLatin1Char('\n'), QLatin1Char(' '))));
    }
    bool question(const QString &, const QString &) override { return laeuft; }
    int choice(const QString &, const QString &, const QStringList &) override { return 0; }
};

int fehler(int code, const QString &text)
{
    std::fprintf(stderr, "kalmeron: %s\n", qPrintable(text));
    return code;
}

} // namespace

void chooseHeadlessPlatform(int argc, char **argv)
{
    for (int i = 1; i < argc; ++i) {
        // --out alone is refused by the export, also without a display.
        if (std::strncmp(argv[i], "--csv", 5) == 0 || std::strncmp(argv[i], "--pdf", 5) == 0 ||
            std::strncmp(argv[i], "--out", 5) == 0) {
            if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
                qputenv("QT_QPA_PLATFORM", "offscreen");
            return;
        }
    }
}

void addHeadlessOptions(QCommandLineParser &parser)
{
    parser.addOption(QCommandLineOption(
        CSV, QStringLiteral("Write the CSV file of a batch without a window, as its CSV-Export button would "
                            "(target: --out, else the CSV folder)."),
        QStringLiteral("BATCH.OVD")));
    parser.addOption(QCommandLineOption(
        PDF, QStringLiteral("Write the printout of a batch (curve page and text pages) into the PDF file of --out."),
        QStringLiteral("BATCH.OVD")));
    parser.addOption(QCommandLineOption(OUT, QStringLiteral("Target file of --csv or --pdf."), QStringLiteral("FILE")));
}

int runHeadlessExport(const QCommandLineParser &parser)
{
    const bool csv = parser.isSet(CSV), pdf = parser.isSet(PDF);
    if (!csv && !pdf) {
        if (parser.isSet(OUT))
            return fehler(2, QStringLiteral("--out needs --csv or --pdf"));
        return -1;
    }
    if (csv && pdf)
        return fehler(2, QStringLiteral("--csv and --pdf cannot be given together"));
    if (pdf && parser.value(OUT).isEmpty())
        return fehler(2, QStringLiteral("--pdf needs --out FILE.pdf"));
    if (parser.isSet(OUT) && parser.value(OUT).isEmpty())
        return fehler(2, QStringLiteral("--out needs a file name"));

    const QString charge = QFileInfo(parser.value(csv ? CSV : PDF)).absoluteFilePath();
    if (!QFileInfo(charge).isFile())
        return fehler(3, QStringLiteral("batch file not found: ") + charge);
    BatchFile datei;
    if (!datei.openRead(charge))
        return fehler(3, QStringLiteral("batch file cannot be read: ") + charge);
    datei.close();

    Exportdialoge dialoge;
    setDialogs(&dialoge);
    if (parser.isSet(QStringLiteral("data")))
        plant.Daten_Ordner_Option = parser.value(QStringLiteral("data"));
    startForDocuments();
    plant.Kurve_Datei = charge;
    Charge_geladen();
    dialoge.laeuft = true;

    int code = 0;
    if (csv) {
        // The target the browser would give the batch: its name stem in the CSV folder.
        const QString ziel = parser.isSet(OUT) ? QFileInfo(parser.value(OUT)).absoluteFilePath() : csvTarget();
        plant.CSV_Datei = ziel;
        if (!exportCsvFile(ziel))
            code = fehler(1, QStringLiteral("CSV file not written: ") + ziel);
    } else {
        const QString ziel = QFileInfo(parser.value(OUT)).absoluteFilePath();
        if (!writeCurvePdf(ziel))
            code = fehler(1, QStringLiteral("PDF file not written: ") + ziel);
    }
    setDialogs(nullptr);
    return code;
}

} // namespace kal
