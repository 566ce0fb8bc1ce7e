// The documents of a batch that leave the station: the CSV file and the PDF
// printout, made by the headless commands of the real executable (without a
// display) and compared with what the window's button and print give; the
// pages of a printout counted and rendered with poppler's tools. The forms
// of the value list and the current views are tested in test_curve_window.

#include "curves/csv_export.h"
#include "curve_form.h"
#include "curves/print_layout.h"
#include "demo_station.h"
#include "station/single_station.h"
#include "station/station_start.h"
#include "support/files.h"
#include "views/KM_Kurve.h"
#include "views/printing.h"

#include <QDir>
#include <QPrinter>
#include <QProcess>
#include <QRegularExpression>

using namespace kal;
using namespace kal::test;

namespace {

struct Lauf {
    int code = -1;
    QByteArray out, err;
};

/// Runs a program to its end; a program that cannot be started fails the test.
Lauf start(const QString &programm, const QStringList &args, bool ohneAnzeige = false)
{
    QProcess p;
    if (ohneAnzeige) {
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.remove(QStringLiteral("QT_QPA_PLATFORM"));
        env.remove(QStringLiteral("DISPLAY"));
        env.remove(QStringLiteral("WAYLAND_DISPLAY"));
        p.setProcessEnvironment(env);
    }
    p.start(programm, args);
    EXPECT_TRUE(p.waitForStarted(10000)) << qPrintable(programm) << " is missing (setup-debian installs it)";
    EXPECT_TRUE(p.waitForFinished(60000)) << qPrintable(programm);
    return {p.exitStatus() == QProcess::NormalExit ? p.exitCode() : -1, p.readAllStandardOutput(),
            p.readAllStandardError()};
}

Lauf kalmeron(const QStringList &args)
{
    return start(QStringLiteral(KALMERON_EXE), args, true);
}

/// Page sizes of a PDF as "L" (landscape) and "P" (portrait), in order
/// (pdfinfo stops at the last page).
QString seitenLagen(const QString &pdf)
{
    const Lauf info = start(QStringLiteral("pdfinfo"), {QStringLiteral("-f"), QStringLiteral("1"),
                                                          QStringLiteral("-l"), QStringLiteral("9999"), pdf});
    QString lagen;
    const QRegularExpression re(QStringLiteral("Page +\\d+ size: +([\\d.]+) x ([\\d.]+)"));
    for (auto it = re.globalMatch(QString::fromUtf8(info.out)); it.hasNext();) {
        const auto m = it.next();
        lagen += m.captured(1).toDouble() > m.captured(2).toDouble() ? QLatin1Char('L') : QLatin1Char('P');
    }
    return lagen;
}

/// Renders the pages into build/shots at a small resolution, for looking at.
void seitenBilder(const QString &pdf, const QString &name)
{
    QDir().mkpath(QStringLiteral(KALMERON_SHOTS));
    const Lauf r = start(QStringLiteral("pdftoppm"), {QStringLiteral("-r"), QStringLiteral("60"), QStringLiteral("-png"),
                                                        pdf, QStringLiteral(KALMERON_SHOTS "/") + name});
    EXPECT_EQ(r.code, 0) << r.err.constData();
}

/// The documents of the forms' batches, made without the window.
class Documents : public CurveForm {};

} // namespace

TEST_F(Documents, HeadlessCsvIsWhatTheButtonWrites)
{
    const QString p = heatTreatment(QStringLiteral("D2401100TST000012050324.OVD"));
    // The button: the batch loaded in the window, no column choice made.
    plant.Datum_Trenner = systemDateSeparator();
    plant.Pfad[3] = dir.filePath(QStringLiteral("Knopf"));
    QDir().mkpath(plant.Pfad[3]);
    plant.CSV_Datei = plant.Pfad[3] + QStringLiteral("/B.CSV");
    laden(p);
    ASSERT_TRUE(CSV_EXPORT(false));
    const QByteArray knopf = readFile(plant.CSV_Datei);
    ASSERT_GT(knopf.count('\n'), 120);

    const QString daten = dir.filePath(QStringLiteral("daten"));
    const QString ziel = dir.filePath(QStringLiteral("aus/nacht.csv"));
    Lauf r = kalmeron({QStringLiteral("--data"), daten, QStringLiteral("--csv"), p, QStringLiteral("--out"), ziel});
    EXPECT_EQ(r.code, 0) << r.err.constData();
    EXPECT_TRUE(r.out.isEmpty());
    EXPECT_EQ(readFile(ziel), knopf);

    // Without --out: the browser's name in the CSV folder, which is created;
    // a second run replaces the file without asking.
    const QString standard = daten + QStringLiteral("/CSV/") + QFileInfo(p).completeBaseName() + QStringLiteral(".CSV");
    for (int lauf = 0; lauf < 2; ++lauf) {
        r = kalmeron({QStringLiteral("--data"), daten, QStringLiteral("--csv"), p});
        EXPECT_EQ(r.code, 0) << r.err.constData();
        EXPECT_EQ(readFile(standard), knopf);
    }
    EXPECT_TRUE(r.out.isEmpty());
}

// Headless commands (without a display) and starts of the station that
// cannot do their work: an exit code, a word on stderr, nothing on stdout,
// and the data folder not taken.
TEST_F(Documents, ExitCodesOfRunsThatCannotDoTheirWork)
{
    const QString p = heatTreatment(QStringLiteral("D2401100TST000012050324.OVD"));
    const QString d = dir.filePath(QStringLiteral("daten"));
    const QString fehlt = dir.filePath(QStringLiteral("fehlt.OVD"));
    QDir().mkpath(dir.filePath(QStringLiteral("ordner.OVD")));
    writeFile(dir.filePath(QStringLiteral("datei")), "x");
    struct Case {
        bool headless;
        QStringList args;
        int code;
        QByteArray says;
    };
    const Case faelle[] = {
        {true, {QStringLiteral("--data"), d, QStringLiteral("--csv"), fehlt}, 3, "not found"},
        {true, {QStringLiteral("--data"), d, QStringLiteral("--pdf"), fehlt, QStringLiteral("--out"), dir.filePath(QStringLiteral("x.pdf"))}, 3, "not found"},
        {true, {QStringLiteral("--data"), d, QStringLiteral("--csv"), dir.filePath(QStringLiteral("ordner.OVD"))}, 3, "not found"},
        {true, {QStringLiteral("--data"), d, QStringLiteral("--pdf"), p}, 2, "--out"},
        {true, {QStringLiteral("--data"), d, QStringLiteral("--csv"), p, QStringLiteral("--pdf"), p}, 2, "together"},
        {true, {QStringLiteral("--data"), d, QStringLiteral("--out"), dir.filePath(QStringLiteral("x.csv"))}, 2, "--csv"},
        // A data folder that can be neither made nor locked.
        {false, {QStringLiteral("--data"), dir.filePath(QStringLiteral("datei/Kalmeron"))}, 4, "does not start"},
        {false, {QStringLiteral("--data"), dir.path(), fehlt}, 3, "fehlt.OVD"},
        {false, {QStringLiteral("--view"), QStringLiteral("--demo")}, 2, "--view"},
        {false, {QStringLiteral("--data"), dir.path(), p, p}, 2, "one batch"},
    };
    for (const Case &f : faelle) {
        const Lauf r = f.headless ? kalmeron(f.args) : start(QStringLiteral(KALMERON_EXE), f.args);
        EXPECT_EQ(r.code, f.code) << qPrintable(f.args.join(QLatin1Char(' '))) << "\n" << r.err.constData();
        EXPECT_TRUE(r.err.contains(f.says)) << r.err.constData();
        EXPECT_TRUE(r.out.isEmpty());
    }
    EXPECT_FALSE(QFile::exists(dir.filePath(STATION_LOCK))); // none of them took the folder
}

TEST_F(Documents, HeadlessPdfIsTheCurvePageThenItsText)
{
    const QString p = heatTreatment(QStringLiteral("D2401100TST000012050324.OVD"));
    const QString pdf = dir.filePath(QStringLiteral("charge.pdf"));
    const Lauf r = kalmeron({QStringLiteral("--data"), dir.filePath(QStringLiteral("daten")), QStringLiteral("--pdf"), p,
                             QStringLiteral("--out"), pdf});
    ASSERT_EQ(r.code, 0) << r.err.constData();
    EXPECT_TRUE(r.out.isEmpty());
    EXPECT_EQ(seitenLagen(pdf), QStringLiteral("LP"));
    const Lauf text = start(QStringLiteral("pdftotext"), {pdf, QStringLiteral("-")});
    EXPECT_TRUE(text.out.contains("Seite 1"));
    EXPECT_TRUE(text.out.contains("kommt 05 Text 5")) << text.out.constData();
    seitenBilder(pdf, QStringLiteral("pdf_charge"));
}

TEST_F(Documents, ThreeCopiesAlternateImageAndText)
{
    laden(heatTreatment(QStringLiteral("D2401100TST000012050324.OVD")));
    ASSERT_GE(Kurve.Info_Text.size(), INFO_MIN_ZEICHEN);
    KM_Kurve fenster;
    fenster.setAttribute(Qt::WA_DeleteOnClose, false);
    fenster.load();
    fenster.resize(1100, 640);
    fenster.show();

    const QString pdf = dir.filePath(QStringLiteral("drei.pdf"));
    {
        QPrinter d(QPrinter::HighResolution);
        setPdfOutput(d, pdf);
        d.setPageOrientation(QPageLayout::Landscape);
        ASSERT_TRUE(printWindow(d, &fenster, 3, true));
    }
    EXPECT_EQ(seitenLagen(pdf), QStringLiteral("LPLPLP"));
}

TEST_F(Documents, ListPagesCarryTheirHeadAndNumber)
{
    laden(heatTreatment(QStringLiteral("D2401100TST000012050324.OVD")));
    plant.Pfad[3] = dir.filePath(QStringLiteral("CSV"));
    QDir().mkpath(plant.Pfad[3]);
    ASSERT_TRUE(CSV_EXPORT(true));
    const QString pdf = dir.filePath(QStringLiteral("liste.pdf"));
    {
        QPrinter d(QPrinter::HighResolution);
        setPdfOutput(d, pdf);
        d.setPageOrientation(QPageLayout::Landscape);
        ASSERT_TRUE(printList(d, curveListHead(), Listen.CSV_Text, Listen.CSV_LIST, 1));
    }
    const int seiten = int(Listen.CSV_LIST.size() + DRUCK_ZEILEN_LISTE - 1) / DRUCK_ZEILEN_LISTE;
    EXPECT_EQ(seitenLagen(pdf), QString(seiten, QLatin1Char('L')));
    const QString text = QString::fromUtf8(start(QStringLiteral("pdftotext"), {QStringLiteral("-layout"), pdf,
                                                                                 QStringLiteral("-")}).out);
    EXPECT_TRUE(text.contains(QStringLiteral("Seite %1").arg(seiten)));
    EXPECT_EQ(text.count(QStringLiteral("Kalmeron: 2401-100-TST, Charge 12")), seiten);
    seitenBilder(pdf, QStringLiteral("pdf_liste"));
}
