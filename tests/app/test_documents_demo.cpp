// The live curves against the demo plant: the curve of a furnace on its page
// while the simulator runs, and the element currents of the furnace that
// has them. A recorded batch as CSV and PDF is tested in test_documents.

#include "core/word_map.h"
#include "curves/live_curve.h"
#include "demo_station.h"
#include "views/curve_widget.h"

#include <QPushButton>
#include <QTest>

using namespace kal;
using namespace kal::test;

namespace {

constexpr int KAMMER = 1; ///< the plain furnace: its live curve shows set, actual value and output
constexpr int VAKUUM = 3; ///< the headed Modbus furnace with element currents

} // namespace

TEST_F(DemoStation, LiveCurveAndElementCurrentsOnThePage)
{
    plant.Live_Raster = 1; // a sample a second, so the curve grows while the test looks
    ASSERT_TRUE(waitUntil([&] { return online(VAKUUM) && online(KAMMER); }, 60000));
    KM_Menue &seite = *w->menuePage();
    QTest::keyClick(&seite, Qt::Key_1);
    ASSERT_EQ(plant.Seite_Ofen, KAMMER);
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
}
