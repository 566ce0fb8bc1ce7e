#include "core/conversions.h"
#include "core/dialogs.h"
#include "support/fresh.h"
#include "support/hex.h"

#include <QLocale>

#include <climits>

using namespace kal;
using namespace kal::test;

namespace {

using Conversions = FreshProcess;

TEST_F(Conversions, IntegerPackingByteOrderAndFieldLength)
{
    EXPECT_EQ(MKI(-200), hex("38 FF"));
    EXPECT_EQ(MKI_BE(0x1234), hex("12 34"));
    EXPECT_EQ(CVI(hex("00 80")), -32768);
    EXPECT_EQ(MKL(0x12345678), hex("78 56 34 12"));
    EXPECT_EQ(MKL(-16777217), hex("FF FF FF FE"));
    EXPECT_EQ(CVL(hex("00 00 00 80")), INT32_MIN);
    for (int32_t v : {-1, 65535, -65536, 16777216, INT32_MAX, INT32_MIN})
        EXPECT_EQ(CVL(MKL(v)), v);

    // Every word value both ways; CVI_BE leaves its argument low byte first.
    for (int v = -32768; v <= 32767; ++v) {
        const auto w = static_cast<int16_t>(v);
        ASSERT_EQ(CVI(MKI(w)), w);
        QByteArray be = MKI_BE(w);
        ASSERT_EQ(CVI_BE(be), w);
        ASSERT_EQ(be, MKI(w));
    }
    // A short or long frame field is no reason to stop: 0, argument untouched.
    for (const QByteArray &falsch : {hex("12"), hex("12 34 56")}) {
        QByteArray arg = falsch;
        EXPECT_EQ(CVI_BE(arg), 0);
        EXPECT_EQ(arg, falsch);
    }
}

// A packed number of the wrong length in a file is a corrupt file: the
// message goes through the dialog interface (without forms: to standard
// error) and the station ends at once.
TEST(ConversionsDeathTest, WrongLengthEndsTheProgram)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    setDialogs(nullptr);
    EXPECT_EXIT(CVI(hex("01 02 03")), ::testing::ExitedWithCode(1), "CVI: Illegal Function Call");
    EXPECT_EXIT(CVI(hex("01")), ::testing::ExitedWithCode(1), "CVI: Illegal Function Call");
    EXPECT_EXIT(CVL(hex("01 02 03")), ::testing::ExitedWithCode(1), "CVL: Illegal Function Call");
    EXPECT_EXIT(CVL(hex("01 02 03 04 05")), ::testing::ExitedWithCode(1), "CVL: Illegal Function Call");
}

TEST_F(Conversions, TextSauberAndWorteText)
{
    EXPECT_EQ(Text_Sauber(Latin1Text(QByteArray(16, '\0'))), "");
    EXPECT_EQ(Text_Sauber(Latin1Text(hex("41 42 00 00 43 44 00 00"))), "ABCD");
    EXPECT_EQ(Text_Sauber("  A B\tC\r\n "), "  A BC");
    EXPECT_EQ(Text_Sauber(Latin1Text(hex("32 30 B0 43 20"))), QString::fromUtf8("20°C"));

    // "Ofen 1" in words 200..207, first character in the low byte, the unused
    // bytes 0 as the PLC leaves them.
    plant.SPS_Wort(3, 200) = 0x664F; // "Of"
    plant.SPS_Wort(3, 201) = 0x6E65; // "en"
    plant.SPS_Wort(3, 202) = 0x3120; // " 1"
    EXPECT_EQ(wordsText(3, 200, 8), "Ofen 1");
    EXPECT_EQ(runError([] { wordsText(3, 1138, 4); }), ERR_SUBSCRIPT); // word 1141
}

TEST_F(Conversions, FormatZahlRoundsHalvesAwayFromZero)
{
    const QLocale saved;
    QLocale::setDefault(QLocale::c());
    const struct {
        double v;
        const char *format, *text;
    } faelle[] = {
        {2.5, "#0", "3"},          {-2.5, "#0", "-3"},       {0.5, "#0", "1"},
        {-1.25, "#0.0", "-1.3"},   {12.35, "#0.0", "12.4"},  {1.005, "#0.00", "1.01"},
        {99.95, "#0.0", "100.0"},  {0.3, "#0.000", "0.300"}, {1234.5, "##0", "1235"},
        {5, "#000", "005"},        {-0.04, "#0.0", "0.0"},   {2, "#0.##", "2"},
        {-32768, "####0", "-32768"},
    };
    for (const auto &f : faelle)
        EXPECT_EQ(formatNumber(f.v, f.format), f.text) << f.v << " " << f.format;

    // The decimal mark is the system's.
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    EXPECT_EQ(formatNumber(12.35, "#0.0"), "12,4");
    QLocale::setDefault(saved);
}

TEST_F(Conversions, LeadingNumberReadsLikeVal)
{
    const std::pair<const char *, double> faelle[] = {
        {" 07", 7}, {"-9", -9}, {"1a", 1},   {"ab", 0},        {"", 0},   {"1 2", 12},
        {".5", 0.5}, {"2D2", 200}, {"1e", 1}, {"12.3.4", 12.3}, {"--1", 0},
    };
    for (auto [text, wert] : faelle)
        EXPECT_DOUBLE_EQ(leadingNumber(text), wert) << text;
}

} // namespace
