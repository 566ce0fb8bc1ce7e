#include "core/dates.h"
#include "support/fresh.h"

using namespace kal;
using namespace kal::test;

namespace {

QDateTime W(int y, int mo, int d, int h = 0, int mi = 0, int s = 0)
{
    return QDateTime(QDate(y, mo, d), QTime(h, mi, s), Qt::UTC);
}

/// The PLC's packed stamp: word A day/month/year, word B hour/minute/seconds/2.
int16_t stampWordA(int day, int month, int year)
{
    return static_cast<int16_t>((day << 11) | (month << 7) | year);
}
int16_t stampWordB(int hour, int minute, int second)
{
    return static_cast<int16_t>((hour << 11) | (minute << 5) | (second / 2));
}

class Dates : public FreshProcess {
protected:
    void SetUp() override
    {
        FreshProcess::SetUp();
        setNow(W(2024, 6, 15, 12, 0, 0));
    }
};

TEST_F(Dates, DateAddAndDateDiffCountBoundariesNotElapsedTime)
{
    const std::tuple<const char *, int, QDateTime, QDateTime> add[] = {
        {"m", 1, W(2000, 1, 31), W(2000, 2, 29)},         {"m", 1, W(2001, 1, 31, 8, 30), W(2001, 2, 28, 8, 30)},
        {"m", -1, W(2004, 3, 31), W(2004, 2, 29)},        {"yyyy", 1, W(2012, 2, 29), W(2013, 2, 28)},
        {"h", 1, W(2011, 12, 31, 23, 30), W(2012, 1, 1, 0, 30)}, {"n", -2, W(2012, 1, 1, 0, 1), W(2011, 12, 31, 23, 59)},
    };
    for (const auto &[unit, n, from, to] : add)
        EXPECT_EQ(DateAdd(unit, n, from), to) << unit << " " << n;
    EXPECT_EQ(runError([] { DateAdd("w", 1, W(2012, 1, 1)); }), 5);
    EXPECT_EQ(runError([] { DateAdd("yyyy", 8000, W(2012, 1, 1)); }), 5);
    EXPECT_EQ(runError([] { DateDiff("n", now(), dateValue("kein Datum")); }), 13);

    // 31 Dec -> 1 Jan, one second apart: one year and one month.
    const QDateTime a = W(2012, 5, 10, 23, 59), b = W(2012, 5, 11, 0, 1);
    const QDateTime silvester = W(2011, 12, 31, 23, 59, 59), neujahr = W(2012, 1, 1);
    const std::tuple<const char *, QDateTime, QDateTime, int> diff[] = {
        {"d", a, b, 1},           {"n", a, b, 2},          {"d", b, a, -1},
        {"n", W(2012, 5, 10, 8, 0, 59), W(2012, 5, 10, 8, 1, 0), 1},
        {"n", W(2012, 5, 10, 8, 1, 0), W(2012, 5, 10, 8, 1, 59), 0},
        {"yyyy", silvester, neujahr, 1}, {"m", silvester, neujahr, 1}, {"s", silvester, neujahr, 1},
        {"m", W(2012, 3, 31), W(2011, 4, 1), -11}, {"h", W(2011, 2, 28), W(2011, 3, 1), 24},
    };
    for (const auto &[unit, x, y, n] : diff)
        EXPECT_EQ(DateDiff(unit, x, y), n) << unit << " " << x.toString().toStdString();
}

TEST_F(Dates, DatumTextFormsValidityAndFullForm)
{
    const QDateTime d = W(2012, 3, 1, 7, 5, 9);
    EXPECT_EQ(QStringList({Datum_Text(d, "TTMMJJHHMM"), Datum_Text(d, "TTMMJJ"), Datum_Text(d, "TTMMJJJJHHMMSS"),
                           Datum_Text(d, "HHMM")}),
              QStringList({"01.03.12 07:05", "01.03.12", "01.03.2012 07:05:09", "07:05"}));

    EXPECT_EQ(dateValue(" 01/03/2012 "), W(2012, 3, 1));
    EXPECT_FALSE(dateValue("31.02.2012 00:00:00").isValid());
    EXPECT_FALSE(dateValue("01.03.2012 24:00:00").isValid());

    EXPECT_EQ(QStringList({Datum_Gueltig(W(2005, 12, 31, 23, 59, 59)), Datum_Gueltig(W(2006, 1, 1)),
                           Datum_Gueltig(W(2025, 1, 1)), Datum_Gueltig(QString(""))}),
              QStringList({"False", "True", "False", "False"}));
    EXPECT_EQ(QStringList({Datum_Voll("01.03.12 07:05"), Datum_Voll("01.03.0100 07:05:09"),
                           Datum_Voll("01.03.0101 07:05:09"), Datum_Voll("")}),
              QStringList({"01.03.2012 07:05:00", "01.03.2100 07:05:09", "01.03.0101 07:05:09", ""}));
}

TEST_F(Dates, DatumParseReadsBothLengthsAndTestsEachField)
{
    EXPECT_EQ(Datum_Parse("24.12.2011 18:30:15"), W(2011, 12, 24, 18, 30, 15));
    EXPECT_EQ(plant.Datum_OK, -1);
    // Control characters and trailing blanks of a fixed field go first.
    plant.Datum_OK = 0;
    EXPECT_EQ(Datum_Parse(QString("24.12.11 18:30:15") + QChar(0) + "  "), W(2011, 12, 24, 18, 30, 15));
    EXPECT_EQ(plant.Datum_OK, -1);
    // Another length: every field 0, the base date, the flag cleared.
    EXPECT_EQ(Datum_Parse("24.12.2011 18:30"), W(2000, 1, 1));
    EXPECT_EQ(plant.Datum_OK, 0);

    // Datum_Bau hands day and month back reduced by 1 when they were above 1.
    int day = 31, month = 3;
    EXPECT_EQ(Datum_Bau(day, month, 2012, 6, 7, 8), W(2012, 3, 31, 6, 7, 8));
    EXPECT_EQ(std::make_pair(day, month), std::make_pair(30, 2));
    day = month = 1;
    EXPECT_EQ(Datum_Bau(day, month, 0, 0, 0, 0), W(2000, 1, 1));
    EXPECT_EQ(day + month, 2);
    // Day 31 of month 2: 1 Jan + 30 days = 31 Jan, + 1 month = 29 Feb 2000,
    // then the years. Not rejected.
    EXPECT_EQ(Datum_Parse("31.02.2012 00:00:00"), W(2012, 2, 29));
    EXPECT_EQ(Datum_Parse("31.02.2013 00:00:00"), W(2013, 2, 28));
    // An hour of 24 passes and runs into the next day.
    EXPECT_EQ(Datum_Parse("31.12.2011 24:00:00"), W(2012, 1, 1));
    EXPECT_EQ(plant.Datum_OK, -1);

    // The six tests of the flag, each on its own; the present year comes from the clock.
    const std::pair<const char *, int16_t> faelle[] = {
        {"01.01.2001 00:00:00", -1}, {"01.01.2000 00:00:00", 0}, {"15.06.2024 23:59:59", -1},
        {"01.01.2025 00:00:00", 0},  {"00.05.2011 10:00:00", 0}, {"32.05.2011 10:00:00", 0},
        {"10.13.2011 10:00:00", 0},  {"10.05.2011 25:00:00", 0}, {"10.05.2011 10:60:00", 0},
        {"10.05.11 10:00:60", 0},
    };
    for (auto [text, ok] : faelle) {
        plant.Datum_OK = ok ? 0 : -1;
        Datum_Parse(text);
        EXPECT_EQ(plant.Datum_OK, ok) << text;
    }
    setNow(W(2030, 1, 1));
    Datum_Parse("01.01.2025 00:00:00");
    EXPECT_EQ(plant.Datum_OK, -1);
}

// Found by fuzzing: a four-digit year field that reads as "9D46" was stored
// into an integer out of its range.
TEST_F(Dates, DatumParseYearTooLargeForAnIntegerIsAnOverflowError)
{
    EXPECT_EQ(runError([] { Datum_Parse("01.01.9D46 00:00:00"); }), 6);
    EXPECT_EQ(runError([] { Datum_Parse("01.01.1E99 00:00:00"); }), 6);
    EXPECT_EQ(runError([] { Datum_Parse("01.01.9E08 00:00:00"); }), 5) << "fits, but no calendar year";
}

TEST_F(Dates, DatumSortGivesSortableText)
{
    EXPECT_EQ(Datum_Sort("24.12.11 18:30:15"), "111224 18:30:15");
    // The 19-character form is read by the last two digits of its year.
    EXPECT_EQ(Datum_Sort("01.02.2106 00:00:00"), "060201 00:00:00");
    EXPECT_EQ(plant.Datum_Sort_OK, -1);

    const std::pair<const char *, int16_t> faelle[] = {
        {"01.02.05 00:00:00", 0}, {"00.02.11 00:00:00", 0}, {"01.13.11 00:00:00", 0},
        {"01.02.11 24:00:00", 0}, {"01.02.11 23:60:00", 0}, {"01.02.11 23:59:60", 0},
        {"31.12.99 23:59:59", -1},
    };
    for (auto [text, ok] : faelle) {
        plant.Datum_Sort_OK = ok ? 0 : -1;
        Datum_Sort(text);
        EXPECT_EQ(plant.Datum_Sort_OK, ok) << text;
    }
    EXPECT_EQ(Datum_Sort("24.12.2011 18:30"), "");
    EXPECT_EQ(plant.Datum_Sort_OK, 0);
}

TEST_F(Dates, SpsDatumUnpacksBitFieldsAndSetsItsFlag)
{
    // Raw words: 0x0C8C = day 1, month 9, year 12; 0x9C3D = 19:33:58.
    EXPECT_EQ(SPS_Datum(0x0C8C, static_cast<int16_t>(0x9C3D)), "01.09.2012 19:33:58");
    EXPECT_EQ(plant.SPS_Datum_OK, -1);
    // Day 31 sets the top bit: word A is negative and still reads as day 31.
    EXPECT_EQ(SPS_Datum(stampWordA(31, 12, 127), stampWordB(23, 59, 58)), "31.12.2127 23:59:58");
    // Day 30 of month 2 is built, not refused: 30 Jan + 1 month, clamped.
    EXPECT_EQ(SPS_Datum(stampWordA(30, 2, 13), 0), "28.02.2013 00:00:00");
    EXPECT_EQ(plant.SPS_Datum_OK, -1);
    // Seconds field 30 is 60 seconds: the date runs into the next minute.
    EXPECT_EQ(SPS_Datum(stampWordA(5, 6, 12), static_cast<int16_t>((7 << 11) | (8 << 5) | 30)), "05.06.2012 07:09:00");
    EXPECT_EQ(plant.SPS_Datum_OK, 0);

    // Word A 0: the base date; month 0 clears whatever the flag held.
    plant.SPS_Datum_OK = -1;
    EXPECT_EQ(SPS_Datum(0, 0), "01.01.2000 00:00:00");
    EXPECT_EQ(plant.SPS_Datum_OK, 0);

    // A good stamp with a year field of 6 or less leaves the flag as it was;
    // year 7 is the first that sets it.
    for (int16_t vorher : {int16_t(-1), int16_t(0)}) {
        plant.SPS_Datum_OK = vorher;
        EXPECT_EQ(SPS_Datum(stampWordA(5, 6, 6), stampWordB(7, 8, 10)), "05.06.2006 07:08:10");
        EXPECT_EQ(plant.SPS_Datum_OK, vorher);
    }
    SPS_Datum(stampWordA(5, 6, 7), stampWordB(7, 8, 10));
    EXPECT_EQ(plant.SPS_Datum_OK, -1);

    const std::pair<int16_t, int16_t> schlecht[] = {
        {stampWordA(0, 6, 12), stampWordB(7, 8, 10)},  {stampWordA(5, 13, 12), stampWordB(7, 8, 10)},
        {stampWordA(5, 6, 12), stampWordB(24, 8, 10)}, {stampWordA(5, 6, 12), stampWordB(7, 60, 10)},
    };
    for (auto [a, b] : schlecht) {
        plant.SPS_Datum_OK = -1;
        SPS_Datum(a, b);
        EXPECT_EQ(plant.SPS_Datum_OK, 0) << a << " " << b;
    }
}

} // namespace
