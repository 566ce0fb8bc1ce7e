// The batch documents against the demo plant: the live curve of a furnace on
// its page while the simulator runs, and a batch the station recorded,
// exported by the headless commands and by the curve window's button.

#include "core/word_map.h"
#include "curves/live_curve.h"
#include "demo_station.h"
#include "recording/batch_file.h"
#include "support/files.h"
#include "views/curve_widget.h"

#include <QFile>
#include <QProcess>
#include <QPushButton>
#include <QTest>

using namespace kal;
using namespace kal::test;

namespace {

constexpr int KAMMER = 1; ///< the plain furnace: its live curve shows set, actual value and output
constexpr int VAKUUM = 3; ///< the headed Modbus furnace with element currents

int kalmeron(const QStringList &args, QByteArray *out)
{
    QProcess p;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.remove(QStringLiteral("DISPLAY"));
    p.setProcessEnvironment(env);
    p.start(QStringLiteral(KALMERON_EXE), args);
    EXPECT_TRUE(p.waitForFinished(60000));
    *out = p.readAllStandardOutput();
    return p.exitCode();
}

} // namespace

TEST_F(DemoStation, LiveCurveOnThePageAndARecordedBatchAsItsDocuments)
{
    plant.Live_Raster = 1; // a sample a second, so the curve grows while the test looks
    ASSERT_TRUE(waitUntil([&] { return online(VAKUUM) && online(KAMMER); }, 60000));
    KM_Menue &seite = *w->menuePage();
    QTest::keyClick(&seite, Qt::Key_1);
    ASSERT_EQ(plant.Seite_Ofen, KAMMER);
    // A batch with some groups in it, and half a minute of live curve.
    ASSERT_TRUE(waitUntil(
        [] {
            const QString f = plant.Charge_Datei[VAKUUM - 1];
            return !f.isEmpty() && QFileInfo(f).size() >= 22 * 60;
        },
        90000));
    waitUntil([] { return false; }, 25000);
    // Read between two samples, the newest stands one point left of the end.
    const PlotPage s = livePage(KAMMER - 1);
    EXPECT_GT(s.Punkt_Ist[1][358], 0);
    EXPECT_EQ(s.Punkt_Ist[1][0], 0) << "the ring is not full yet";
    EXPECT_TRUE(seite.livePlot()->isVisible());
    EXPECT_FALSE(seite.stromTaste()->isVisible()) << "a furnace without element currents";
    saveSnapshot(*w, QStringLiteral("live_de.png"));
    plant.Sprache = 1;
    Sprachumschalt();
    waitUntil([] { return false; }, 1500);
    saveSnapshot(*w, QStringLiteral("live_en.png"));
    plant.Sprache = 0;
    Sprachumschalt();

    // The element currents of the furnace that has them, live.
    QTest::keyClick(&seite, Qt::Key_3);
    ASSERT_TRUE(seite.stromTaste()->isVisible());
    QTest::mouseClick(seite.stromTaste(), Qt::LeftButton);
    ASSERT_NE(w->elementView(), nullptr);
    waitUntil([] { return false; }, 1500);
    EXPECT_GT(plant.SPS_Wort(VAKUUM - 1, word::ELEMENT_SCALE), 0);
    saveSnapshot(*w, QStringLiteral("sntstrom_demo.png"));

    // The batch as it stood: the CSV file of the button and of the command.
    const QString charge = dir.filePath(QFileInfo(plant.Charge_Datei[VAKUUM - 1]).fileName());
    ASSERT_TRUE(QFile::copy(plant.Charge_Datei[VAKUUM - 1], charge));
    w->showCurve(charge);
    QDir().mkpath(plant.Pfad[3]);
    QFile::remove(plant.CSV_Datei);
    plant.CSV_Datei = plant.Pfad[3] + QStringLiteral("/knopf.CSV");
    QTest::mouseClick(w->kurve()->keyButton(3), Qt::LeftButton);
    const QByteArray knopf = readFile(plant.CSV_Datei);
    ASSERT_GT(knopf.count('\n'), 3);
    QByteArray out;
    const QString ziel = dir.filePath(QStringLiteral("nacht.CSV"));
    EXPECT_EQ(kalmeron({QStringLiteral("--data"), dir.path(), QStringLiteral("--csv"), charge, QStringLiteral("--out"), ziel}, &out), 0);
    EXPECT_TRUE(out.isEmpty());
    EXPECT_EQ(readFile(ziel), knopf);
    const QString pdf = dir.filePath(QStringLiteral("nacht.pdf"));
    EXPECT_EQ(kalmeron({QStringLiteral("--data"), dir.path(), QStringLiteral("--pdf"), charge, QStringLiteral("--out"), pdf}, &out), 0);
    EXPECT_TRUE(readFile(pdf).startsWith("%PDF"));
    QProcess r;
    r.start(QStringLiteral("pdftoppm"), {QStringLiteral("-r"), QStringLiteral("60"), QStringLiteral("-png"), pdf,
                                         QStringLiteral(KALMERON_SHOTS "/pdf_demo")});
    ASSERT_TRUE(r.waitForFinished(30000)) << "pdftoppm (poppler-utils) is missing";
    EXPECT_EQ(r.exitCode(), 0);
}
