// The two views of heating element currents: the 16-channel view of a batch
// page (its scale, its paging through the curve window, its export) and the
// live bars of the element current view.

#include "curve_fixture.h"

#include "core/word_map.h"
#include "curves/csv_writer.h"
#include "curves/element_view.h"
#include "curves/time_axis.h"
#include "curves/view16.h"
#include "support/files.h"

#include <QDir>

using namespace kal;
using namespace kal::test;

namespace {

using View16Test = CurveTest;

class ElementCurrentTest : public FreshProcess {
protected:
    void SetUp() override
    {
        FreshProcess::SetUp();
        plant.Element_Spuren[2] = 12;
        plant.Ofen_Name[2] = QStringLiteral("Vakuumofen 3");
        plant.SPS_Wort(2, word::TYPE) = -100;
    }
    static void strom(int e, i16 v) { plant.SPS_Wort(2, word::ELEMENT_CURRENTS + e) = v; }
};

} // namespace

TEST_F(View16Test, ScaleFromTheLargestValueAndSixteenCurvesInPercentBatches)
{
    laden(headedFile({SampleGroup{100, 100}, SampleGroup{100, 110}}));
    Kurve.Spur_Zahl = 16;
    Tast_Strom();
    EXPECT_EQ(both(View16.View_Spuren, View16.View_Max), both(16, 10)); // all values 0
    EXPECT_EQ(QStringList({View16.View_Titel, View16.View_Text[2], View16.View_Einheit}),
              QStringList({"Stromwerte Heizelemente", "Start   " + Kurve.Label_Marke[0], " A"}));

    // Track 17 is not drawn with 16 curves, so it does not scale either.
    View16.Punkt_Spur[16][3] = 900;
    View16.Punkt_Spur[15][200] = 37;
    View_KurveAct();
    EXPECT_EQ(View16.View_Max, 40);
    View16.Punkt_Spur[15][200] = 40;
    View_KurveAct();
    EXPECT_EQ(View16.View_Max, 50);
    EXPECT_EQ((std::vector<double>{view16Y(25, 100), view16Y(0, 100)}), (std::vector<double>{50, 100}));

    const View16Reading l = View_Mouse_Werte(200 * 2.0, 720);
    EXPECT_EQ(l.punkt, 200);
    EXPECT_EQ(l.werte[15], QStringLiteral("40 A"));
    EXPECT_EQ(View_Mouse_Werte(720, 720).punkt, -1) << "the search stops at segment 358";
}

TEST_F(View16Test, PagingGoesThroughTheCurveWindowAndTheExportWritesThePage)
{
    std::vector<SampleGroup> p(480, SampleGroup{300, 300});
    laden(headedFile(p));
    Tast_Strom();
    ASSERT_TRUE(Kurve.Taste_An[TASTE_ZOOM_EIN]);
    const int32_t vorher = View16.View_Raster;
    EXPECT_TRUE(view16Button(TASTE_ZOOM_EIN));
    EXPECT_EQ(both(View16.View_Raster, Kurve.Zeit_Raster), both(vorher - 60, vorher - 60));
    EXPECT_FALSE(view16Button(TASTE_CSV));

    plant.Pfad[3] = dir.filePath(QStringLiteral("CSV"));
    QDir().mkpath(plant.Pfad[3]);
    View16.Punkt_Spur[0][1] = 42;
    ASSERT_TRUE(View_CSV_EXPORT(false));
    const QList<QByteArray> z = readFile(CSV_Tabelle.Datei).split('\n');
    ASSERT_EQ(z.size(), 1 + PUNKTE + 1);
    EXPECT_EQ(z[0], QByteArray("Datum;Zeit;1;2;3;4;5;6;7;8;9;10;11;12;13;14;15;16;17;18\r"));
    EXPECT_EQ(z[2], QByteArray("05.03.24;08:") + QByteArray::number(View16.View_Raster / 60).rightJustified(2, '0') +
                        ":" + QByteArray::number(View16.View_Raster % 60).rightJustified(2, '0') +
                        ";42;0;0;0;0;0;0;0;0;0;0;0;0;0;0;0;0;0\r");
    ASSERT_TRUE(View_CSV_EXPORT(true));
    EXPECT_EQ(View_Liste.zeilen.size(), PUNKTE);
    EXPECT_TRUE(View_Liste.zeilen[1].contains(QStringLiteral("     42      0")));
}

TEST_F(ElementCurrentTest, BarsClampTheirHeightButShowTheTrueValue)
{
    plant.SPS_Wort(2, word::ELEMENT_SCALE) = 50;
    plant.Ofen_Gross[2] = TRUE16; // the large layout has the second picture
    openElementView(3, 200);
    EXPECT_EQ(Strom.caption, QStringLiteral("Strom Heizelemente, Vakuumofen 3"));
    EXPECT_EQ(Strom.bilder, 3);
    strom(0, 25);
    strom(1, 80);
    strom(11, -5);
    strom(12, 40); // no thirteenth element
    EXPECT_TRUE(elementViewRefresh());
    EXPECT_EQ((std::vector<double>{Strom.bars[0].hoehe, Strom.bars[1].hoehe, Strom.bars[11].hoehe}),
              (std::vector<double>{100, 200, 0}));
    EXPECT_EQ(Strom.bars[1].Stromwert + Strom.bars[12].Stromwert, QStringLiteral("80 A"));
    // The same values again move nothing.
    EXPECT_FALSE(elementViewRefresh());
    strom(0, 30);
    EXPECT_TRUE(elementViewRefresh());
    EXPECT_DOUBLE_EQ(Strom.bars[0].hoehe, 120);
}

TEST_F(ElementCurrentTest, WithoutAScaleFromThePlcTheValuesMakeOne)
{
    plant.SPS_Wort(2, word::ELEMENT_SCALE) = 0;
    openElementView(3, 100);
    EXPECT_TRUE(Strom.eigeneSkala);
    elementViewRefresh(); // all 0: no division by zero, empty bars
    EXPECT_EQ((std::vector<double>{double(Strom.bars[0].Bar_Max), Strom.bars[0].hoehe}), (std::vector<double>{10, 0}));
    strom(4, 43);
    strom(5, 20);
    elementViewRefresh();
    EXPECT_EQ((std::vector<double>{double(Strom.bars[4].Bar_Max), Strom.bars[5].hoehe}), (std::vector<double>{50, 40}));

    plant.Element_Spuren[2] = 16;
    plant.SPS_Wort(2, word::TYPE) = 0;
    openElementView(3, 100);
    EXPECT_EQ(Strom.bilder, 1) << "a plain furnace shows its one picture";
    openElementView(9, 100);
    EXPECT_FALSE(elementViewRefresh());
}
