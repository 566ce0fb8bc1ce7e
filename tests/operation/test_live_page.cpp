// The live page's rows: state texts and colours with their blink, set and
// actual temperatures, the segment line by kind, the furnace buttons, the
// selection of the furnace on view and the slow refresh.

#include "operation_fixture.h"

#include "core/conversions.h"
#include "link/derived_data.h"

#include <QLocale>

using namespace kal;
using namespace kal::test;

namespace {

class LivePageTest : public OperationTest {
protected:
    PageImage bild;

    const PageRow &row(int ofen) const { return bild.Zeile[ofen]; }

    /// A plain furnace running segment 3 of its program.
    void runningFurnace(int ofen)
    {
        onlineFurnace(ofen, QStringLiteral("Kammer"), QStringLiteral("2403-017-GKD"));
        plant.Ofen_Bezeichnung[ofen] = QStringLiteral("Kammer %1").arg(ofen + 1);
        plant.SPS_Wort(ofen, 37) = 1;
        plant.SPS_Wort(ofen, 41) = 3;
        plant.SPS_Wort(ofen, 42) = 1;
        plant.SPS_Wort(ofen, 43) = 8234;
        plant.SPS_Wort(ofen, 44) = 8125;
        plant.SPS_Wort(ofen, 122) = 850;  // end temperature of segment 3
        plant.SPS_Wort(ofen, 142) = 1255; // its rate, 0.1 K/h
        plant.Prog_Dauer_Text[ofen] = QStringLiteral(" 12:05h");
        plant.Prog_Ende_Text[ofen] = QStringLiteral("05.03.24 18:30");
    }

    QList<ColourValue> blink(int ofen, int refreshes)
    {
        QList<ColourValue> farben;
        for (int k = 0; k < refreshes; ++k) {
            Seite_Act(bild);
            farben.append(row(ofen).Status_Farbe);
        }
        return farben;
    }
};

QString decimalText(const char *zahl)
{
    return QString::fromLatin1(zahl).replace(QLatin1Char('.'), QLocale::system().decimalPoint());
}

TEST_F(LivePageTest, SegmentLineByKindAndRemainingTime)
{
    runningFurnace(0);
    struct Case {
        int art;
        QString befehl;
        QString sollBef;
    };
    const Case faelle[] = {
        {1, QStringLiteral("3 Rampe  ( 12:05h)"), QStringLiteral("850°C  ") + decimalText("125.5") + QStringLiteral("K/h")},
        {2, QStringLiteral("3 Haltezeit  ( 12:05h)"), QStringLiteral("850°C  ") + decimalText("125.5") + QStringLiteral("h")},
        {3, QStringLiteral("3 Manuell"), QStringLiteral("850°C          ")},
        {4, QStringLiteral("3 Laden"), QString()},
        {5, QStringLiteral("3 Aufruf Programm"), QString()},
        {0, QStringLiteral("3 Ende"), QString()},
        {6, QStringLiteral("3 Ende"), QString()},
    };
    for (const Case &f : faelle) {
        plant.SPS_Wort(0, 42) = i16(f.art);
        Seite_Act(bild);
        EXPECT_EQ(row(0).Befehl, f.befehl) << "Art " << f.art;
        EXPECT_EQ(row(0).Soll_Bef, f.sollBef) << "Art " << f.art;
    }
    // 812.5 rounds away from zero.
    EXPECT_EQ(QStringList({row(0).Sollwert, row(0).Istwert, row(0).Stellwert}),
              QStringList({"823 °C", "813 °C", "  05.03.24 18:30"}));

    // A segment number pointing outside the image shows no target, no error.
    plant.SPS_Wort(0, 41) = 2000;
    plant.SPS_Wort(0, 42) = 1;
    Seite_Act(bild);
    EXPECT_EQ(row(0).Befehl + row(0).Soll_Bef, QStringLiteral("2000 Rampe  ( 12:05h)"));

    // The transport layout keeps the segment and kind of the refresh before.
    plant.SPS_Wort(0, 41) = 4;
    plant.SPS_Wort(0, 42) = 3;
    plant.SPS_Wort(0, 123) = 640;
    Seite_Act(bild);
    plant.Ofen_Basis[0] = 50;
    plant.SPS_Wort(0, 41) = 9;
    plant.SPS_Wort(0, 42) = 1;
    Seite_Act(bild);
    EXPECT_EQ(row(0).Befehl + row(0).Soll_Bef, QStringLiteral("4 Manuell640°C          "));
    plant.Ofen_Basis[0] = 0;

    // The remaining time above 99 hours keeps three digits.
    plant.SPS_Wort(0, 41) = 1;
    plant.SPS_Wort(0, 57) = 12345; // 123.45 h left in the segment
    plant.SPS_Wort(0, 101) = 0;    // no further segment
    plant.Datum_Block0[0] = QStringLiteral("05.03.2024 14:07:09");
    plant.Prog_Neu[0] = -1;
    int schritt = 0;
    deriveFurnace(0, schritt);
    Seite_Act(bild);
    EXPECT_EQ(row(0).Befehl, QStringLiteral("1 Rampe  (123:27h)"));
}

TEST_F(LivePageTest, StateTextsAndColoursOfAPlainFurnace)
{
    runningFurnace(1);
    plant.SPS_Wort(1, 16) = 7; // a timed start waits for 7:05
    plant.SPS_Wort(1, 17) = 5;
    struct Case {
        int w37, w9, basis;
        const char *text;
        ColourValue farbe;
    };
    const Case faelle[] = {
        {1, 0, 0, "Automatik", Farbe_Aktiv},
        {2, 0, 0, "angehalten", Farbe_Warnung},
        {2, 0, 50, "Manuell", Farbe_Warnung},
        {0, 0x4000, 0, "Start um  07:05", Farbe_Warnung},
        {0, 0, 0, "Aus", Farbe_Normal},
    };
    plant.SPS_Wort(1, 87) = 0x03; // bits 0 and 1 of word 87 are no fault
    for (const Case &f : faelle) {
        plant.SPS_Wort(1, 37) = i16(f.w37);
        plant.SPS_Wort(1, 9) = i16(f.w9);
        plant.Ofen_Basis[1] = i16(f.basis);
        Seite_Act(bild);
        EXPECT_EQ(row(1).Status, QString::fromUtf8(f.text));
        EXPECT_EQ(row(1).Status_Farbe, f.farbe) << f.text;
    }
    // The table values are blue-green-red; painted as red-green-blue.
    EXPECT_EQ(colourRgb(Farbe_Stoerung), 0xFFFF8080u);
}

TEST_F(LivePageTest, FaultBlinksAgainstTheStateColourAlsoOnType4)
{
    runningFurnace(0);
    plant.SPS_Wort(0, 88) = 1;
    EXPECT_EQ(blink(0, 4), (QList<ColourValue>{Farbe_Stoerung, Farbe_Aktiv, Farbe_Stoerung, Farbe_Aktiv}));
    plant.SPS_Wort(0, 88) = 0;
    plant.SPS_Wort(0, 87) = 0x04; // bit 2 of word 87 is a fault below type 4
    QStringList texte;
    for (int k = 0; k < 2; ++k, texte << row(0).Status)
        Seite_Act(bild);
    EXPECT_EQ(texte, QStringList({"Fehler", "Automatik"}));

    // Enabled but not connected: red and button face in turn; disabled: Offline.
    plant.Ofen_Aktiv[3] = -1;
    EXPECT_EQ(blink(3, 3), (QList<ColourValue>{Farbe_Stoerung, Farbe_Normal, Farbe_Stoerung}));
    EXPECT_EQ(row(3).Status, QStringLiteral("Connect"));
    EXPECT_EQ(blink(4, 2), (QList<ColourValue>{Farbe_Normal, Farbe_Normal}));
    EXPECT_EQ(row(4).Status, QStringLiteral("Offline"));

    // A type 4 furnace shows only its status colour; any bit of word 87 is a
    // fault from type 4 on.
    runningFurnace(2);
    plant.Ofen_Typ[3] = 4;
    Seite_Act(bild);
    EXPECT_EQ(row(2).Status_Farbe, Farbe_Aktiv);
    EXPECT_EQ(row(2).Status + row(2).Sollwert + row(2).Istwert + row(2).Befehl + row(2).Soll_Bef +
                  row(2).Stellwert,
              QString());
    plant.SPS_Wort(2, 87) = 0x01;
    EXPECT_EQ(blink(2, 3), (QList<ColourValue>{Farbe_Stoerung, Farbe_Aktiv, Farbe_Stoerung}));
    EXPECT_EQ(row(2).Status, QStringLiteral("Fehler"));
}

TEST_F(LivePageTest, FurnaceButtonsAndTheFurnaceOnView)
{
    runningFurnace(1);
    plant.Ofen_Basis[1] = 50;
    plant.Datum_Block0[1] = QStringLiteral("05.03.2024 14:07:09");
    updateBlock0Time(1);
    plant.TempLog_Laeuft[1] = -1;
    plant.Ofen_Bezeichnung[6] = QStringLiteral("Haube");
    Seite_Act(bild);
    EXPECT_EQ(QStringList({row(1).OfenSelect, row(6).OfenSelect}),
              QStringList({"2: Kammer 2        \n05.03.24 14:07  CSV", "7: Haube           "}));

    EXPECT_FALSE(furnaceRowClicked(bild, 6)); // offline: selects nothing
    EXPECT_EQ(both(plant.Seite_Ofen, plant.Seite_Klick), both(0, 6));
    EXPECT_TRUE(furnaceRowClicked(bild, 1));
    EXPECT_EQ((std::vector<int>{plant.Seite_Ofen, plant.Seite_Index, row(1).Markiert, scr.elemente}),
              (std::vector<int>{2, 1, true, 2}));
    EXPECT_EQ(row(1).OfenSelect_Tipp, QStringLiteral("Kammer            2403-017-GKD"));
    EXPECT_EQ(bild.Detail, PageDetailKind::Transport);

    // The furnace on view is lost: the page shows no detail and no mark.
    bild.Label2 = QStringLiteral("x");
    plant.Seite_Ofen = 0;
    Seite_Act(bild);
    EXPECT_EQ(bild.Detail, PageDetailKind::Keine);
    EXPECT_FALSE(row(1).Markiert || bild.Taste_Aktiv || !bild.Label2.isEmpty());
}

TEST_F(LivePageTest, RefreshWaitsThreeCountsAfterEachRefresh)
{
    plant.Ofen_Aktiv[0] = -1; // blinks once per refresh
    QList<bool> gelaufen;
    for (int tick = 0; tick < 8; ++tick) {
        gelaufen.append(pageTick());
        countPageWait();
    }
    EXPECT_EQ(gelaufen, (QList<bool>{true, false, false, true, false, false, true, false}));
    EXPECT_EQ(Seite.Zeile[0].Status_Farbe, Farbe_Stoerung); // three refreshes: red, face, red
}

} // namespace
