// What the main cycle derives from the image of an online furnace: program
// times, clock correction, remaining time and the identity check.

#include "link/derived_data.h"
#include "test_polling_fixture.h"

using namespace kal;
using namespace kal::test;

namespace {

class Abgeleitet : public Anlage {
protected:
    int schritt = 0;

    void SetUp() override
    {
        Anlage::SetUp();
        Ofen(0, false, static_cast<i16>(0x81F4)); // layout block at 500: takes clock steps
        plant.Ofen_Online[0] = -1;
    }
    void Block0_Stempel(const QDateTime &d)
    {
        plant.Datum_Block0[0] = Datum_System(d);
        plant.Prog_Neu[0] = -1;
    }
    /// Command and time of segment n; its start and end are the targets n-1, n.
    void Segment(int n, int art, int zeit)
    {
        plant.SPS_Wort(0, 99 + n) = static_cast<i16>(art);
        plant.SPS_Wort(0, 139 + n) = static_cast<i16>(zeit);
    }
    void Ziele(int erstes, const std::vector<int> &werte)
    {
        for (size_t i = 0; i < werte.size(); ++i)
            plant.SPS_Wort(0, 119 + erstes + static_cast<int>(i)) = static_cast<i16>(werte[i]);
    }
};

TEST_F(Abgeleitet, RemainingTimeTextIsSevenCharacters)
{
    int min = 0;
    EXPECT_EQ(Dauer_Text(1.5, min), QStringLiteral("  1:30h"));
    EXPECT_EQ(min, 90);
    EXPECT_EQ(Dauer_Text(12.34, min), QStringLiteral(" 12:20h"));
    EXPECT_EQ(min, 740);
    EXPECT_EQ(Dauer_Text(0.0, min), QStringLiteral("  0:00h"));
}

TEST_F(Abgeleitet, ForecastEndSumsSegmentsUntilAKindOutsideOneToFive)
{
    Block0_Stempel(QDateTime(QDate(2024, 3, 15), QTime(9, 59, 48), Qt::UTC));
    plant.SPS_Wort(0, 41) = 1;
    plant.SPS_Wort(0, 57) = 50;       // 0.5 h left in segment 1
    Ziele(2, {100, 600, 600, 600, 400, 900});
    Segment(2, 1, 1000);              // 500 K at 100 K/h: 5 h
    Segment(3, 0x12, 15);             // hold 1.5 h (the high bits are no part of the kind)
    Segment(4, 5, 999);               // kind 5 takes no time and doesn't stop
    Segment(5, 3, 0);                 // 200 K at the fixed 100 K/h: 2 h
    Segment(6, 4, 0);                 // 500 K at the fixed 500 K/h: 1 h
    Segment(7, 0, 0);                 // end of program
    Segment(8, 2, 100);               // never reached
    Ofen_Ableiten(0, schritt);
    EXPECT_EQ(plant.Prog_Neu[0], 0);
    EXPECT_EQ(plant.Prog_Start_Text[0], QStringLiteral("15.03.24 09:59"));
    EXPECT_EQ(plant.Prog_Dauer_Text[0], QStringLiteral("  0:30h"));
    EXPECT_EQ(plant.Rest_Min[0], 30 + 300 + 90 + 120 + 60);
    EXPECT_EQ(plant.Prog_Ende_Text[0], QStringLiteral("15.03.24 19:59"));

    // A ramp without a rate adds nothing.
    Block0_Stempel(jetzt);
    Segment(2, 1, 0);
    Segment(3, 0, 0);
    Ofen_Ableiten(0, schritt);
    EXPECT_EQ(plant.Rest_Min[0], 30);
    EXPECT_EQ(plant.Prog_Ende_Text[0], QStringLiteral("15.03.24 10:30"));
    // Without a running segment no end is forecast.
    Block0_Stempel(jetzt);
    plant.SPS_Wort(0, 41) = 0;
    Ofen_Ableiten(0, schritt);
    EXPECT_EQ(plant.Prog_Ende_Text[0], QStringLiteral("15.03.24 10:30"));
}

TEST_F(Abgeleitet, ClockStepsTheLargestUnitThatDiffers)
{
    struct Fall {
        QDateTime plc;
        i16 befehl;
    } faelle[] = {
        {jetzt.addDays(-1), 32},                  // a day behind
        {jetzt.addDays(40), 4},                   // months ahead: the smaller number
        {jetzt.addYears(-1), 2},
        {jetzt.addSecs(2 * 3600), 64},
        {jetzt.addSecs(5 * 60), 256},
        {jetzt.addSecs(-5 * 60), 128},            // 09:55 lies across an hour boundary
    };
    for (const Fall &f : faelle) {
        plant.SPS_Wort(0, 58) = 0;
        plant.Write_Len[0] = 0;
        Block0_Stempel(f.plc);
        Ofen_Ableiten(0, schritt);
        EXPECT_EQ(plant.SPS_Wort(0, 58), f.befehl) << f.plc.toString().toStdString();
        EXPECT_EQ(plant.Write_Adr[0], 58);
        EXPECT_EQ(plant.Write_Len[0], 1);
        EXPECT_EQ(plant.Uhr_Korrektur[0], -1);
    }

    // In step: nothing more, and the correction flag is cleared.
    plant.SPS_Wort(0, 58) = 0;
    plant.Write_Len[0] = 0;
    Block0_Stempel(jetzt);
    Ofen_Ableiten(0, schritt);
    EXPECT_EQ(plant.Write_Len[0], 0);
    EXPECT_EQ(plant.Uhr_Korrektur[0], 0);

    // A step still under way in word 58, or another panel: no new step.
    plant.SPS_Wort(0, 58) = 16;
    Block0_Stempel(jetzt.addDays(-3));
    Ofen_Ableiten(0, schritt);
    EXPECT_EQ(plant.SPS_Wort(0, 58), 16);
    EXPECT_EQ(plant.Write_Len[0], 0);
    plant.SPS_Wort(0, 58) = 0;
    plant.Ofen_Basis[0] = 100;
    Block0_Stempel(jetzt.addDays(-3));
    Ofen_Ableiten(0, schritt);
    EXPECT_EQ(plant.Write_Len[0], 0);
}

class Kennung : public Abgeleitet {
protected:
    void SetUp() override
    {
        Abgeleitet::SetUp();
        plant.Ofen_Basis[0] = 100;
        plant.Ofen_Typ[1] = 5;
        plant.SPS_Wort(0, 29) = 5;
        plant.Ofen_Name[0] = QStringLiteral("Ofen A");
        plant.SPS_Wort(0, 200) = 0x664F; // "Of"
        plant.SPS_Wort(0, 201) = 0x6E65; // "en"
        plant.SPS_Wort(0, 202) = 0x4120; // " A"
        plant.Ofen_Serie[0] = QString();
        plant.Ofen_Version[0] = QString();
    }
    void Pass()
    {
        plant.Block0_Neu[0] = plant.Block1_Neu[0] = plant.Block2_Neu[0] = -1;
        Ofen_Ableiten(0, schritt);
    }
};

TEST_F(Kennung, OneFailedPassIsATornReadTwoAreAChangedFurnace)
{
    Pass();
    EXPECT_EQ(plant.PLC_Name[0], QStringLiteral("Ofen A"));
    EXPECT_EQ(plant.Kennung_Fehler[0], 0);

    plant.SPS_Wort(0, 202) = 0x4220; // " B"
    Pass();
    EXPECT_EQ(plant.Kennung_Fehler[0], 2);
    EXPECT_EQ(plant.Kennung_Zaehler[0], 1);
    EXPECT_EQ(plant.Config_Save, 0);
    EXPECT_EQ(plant.Block0_Neu[0], 0);

    Ofen_Ableiten(0, schritt); // no new blocks: no new pass
    EXPECT_EQ(plant.Kennung_Zaehler[0], 1);

    Pass();
    EXPECT_EQ(plant.Kennung_Zaehler[0], 2);
    EXPECT_EQ(plant.Config_Save, -1) << "plain type: the configuration takes the PLC's identity";

    // A furnace with a layout block loads its texts instead.
    plant.Config_Save = 0;
    plant.Ofen_Typ[1] = -5;
    Pass();
    EXPECT_EQ(plant.Meld_Seite[0], 13);
    EXPECT_EQ(plant.Config_Save, 0);
}

TEST_F(Kennung, LaterComparisonsOverwriteAndIdentityBlockIgnoresZeroWords)
{
    plant.Ofen_Typ[1] = 6;
    plant.SPS_Wort(0, 217) = 3; // word 217 differs too: 6 wins over 1
    Pass();
    EXPECT_EQ(plant.Kennung_Fehler[0], 6);

    plant.Ofen_Typ[1] = 5;
    plant.SPS_Wort(0, 217) = 0;
    plant.Ofen_Kennung_A(1, 3) = 11;
    plant.SPS_Wort(0, 106) = 0; // pair 3, first word: not delivered yet, counts as equal
    Pass();
    EXPECT_EQ(plant.Kennung_Fehler[0], 0);
    plant.SPS_Wort(0, 121) = 9; // pair 10, second word
    Pass();
    EXPECT_EQ(plant.Kennung_Fehler[0], 8);
    plant.SPS_Wort(0, 121) = 0;
    plant.SPS_Wort(0, 122) = 9; // pair 11 lies outside the comparison
    Pass();
    EXPECT_EQ(plant.Kennung_Fehler[0], 0);
}

TEST_F(Kennung, ElementDataAndTextImages)
{
    plant.SPS_Wort(0, 278) = 305;
    plant.SPS_Wort(0, 279) = 77;
    plant.SPS_Wort(0, 180) = 0x4241; // "AB"
    plant.SPS_Wort(0, 90) = 0x4443;  // "CD" after the first 16 characters
    plant.SPS_Wort(0, 214) = 0x3035; // version "50"
    Pass();
    EXPECT_EQ(plant.Element_Anz[0], 3);
    EXPECT_EQ(plant.Element_Spuren[0], 5);
    EXPECT_EQ(plant.Element_Rest[0], 77);
    EXPECT_EQ(plant.PLC_Bezeichnung[0], QStringLiteral("ABCD"));
    EXPECT_EQ(plant.PLC_Version[0], QStringLiteral("50"));

    plant.SPS_Wort(0, 278) = 1999; // 19 hundreds, 99 tracks limited to 18
    Pass();
    EXPECT_EQ(plant.Element_Anz[0], 19);
    EXPECT_EQ(plant.Element_Spuren[0], 18);
    plant.SPS_Wort(0, 278) = 100;  // not above 100: no hundred taken
    Pass();
    EXPECT_EQ(plant.Element_Anz[0], 0);
    EXPECT_EQ(plant.Element_Spuren[0], 18);
    plant.SPS_Wort(0, 278) = 0;
    Pass();
    EXPECT_EQ(plant.Element_Rest[0], 0);
}

TEST_F(Abgeleitet, OfflineFurnaceOnlyLosesItsStartText)
{
    plant.Ofen_Online[0] = 0;
    plant.Prog_Start_Text[0] = QStringLiteral("01.01.24 00:00");
    Block0_Stempel(jetzt.addDays(-1));
    Ofen_Ableiten(0, schritt);
    EXPECT_TRUE(plant.Prog_Start_Text[0].isEmpty());
    EXPECT_EQ(plant.Prog_Neu[0], -1);
    EXPECT_EQ(plant.Write_Len[0], 0);
}

} // namespace
