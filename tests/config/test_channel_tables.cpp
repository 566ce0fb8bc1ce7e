// Channel tables from the furnace type and the identity code words.

#include "config/channel_tables.h"
#include "config/languages.h"
#include "support/fresh.h"

using namespace kal;
using namespace kal::test;

namespace {

class ChannelTables : public FreshProcess {
protected:
    void SetUp() override
    {
        FreshProcess::SetUp();
        buildLanguageTable();
    }

    static void setPair(int slot, int k, int a, int b)
    {
        plant.Ofen_Kennung_A(slot, k) = static_cast<i16>(a);
        plant.Ofen_Kennung_B(slot, k) = static_cast<i16>(b);
    }

    /// Name and unit of one channel described by A alone, built in slot 0.
    static std::pair<QString, QString> nameAndUnit(int a, int kanal = 0)
    {
        plant.Ofen_Typ[0] = -10;
        setPair(0, kanal, a, 1);
        Kanal_Fix(0);
        return {plant.Kanal_Name(0, kanal), plant.Kanal_Einheit(0, kanal)};
    }

    /// Set, actual, output word, divider, controller and set-curve flags of a channel.
    static std::vector<int> channelWords(int n, int k)
    {
        return {plant.Kanal_Adr_Soll(n, k), plant.Kanal_Adr_Ist(n, k), plant.Kanal_Adr_Out(n, k),
                plant.Kanal_Teiler(n, k), plant.Kanal_Regler(n, k), plant.Kanal_Soll_Kurve(n, k)};
    }
};

TEST_F(ChannelTables, PlainFurnaceGetsTheFixedTable)
{
    plant.Ofen_Typ[3] = 2;
    plant.Ofen_Gross[2] = TRUE16;
    plant.Ofen_Opt_A[2] = TRUE16;
    plant.Kanal_Regler(3, 11) = TRUE16;

    Spuren_Setzen(3);

    EXPECT_EQ((std::vector<int>{plant.Ofen_Typ[3], plant.Ofen_Gross[2], plant.Ofen_Opt_A[2], plant.Kanal_Regler(3, 11),
                                plant.Kanal_Zahl[3], plant.Adr_Trigger[2], plant.Trigger_Len[2]}),
              (std::vector<int>{0, 0, 0, 0, 4, 90, 10}));
    EXPECT_EQ(plant.Datei_Art[3], QStringLiteral("DEN03"));

    const struct { int k; const char *name, *einheit; int teiler, adr_ist; } soll[] = {
        {0, "Sollwert", " °C  ", 1, 43}, {3, "Status", "     ", 1, 37}, {4, "Strom", " A   ", 10, 64},
        {6, "Widerstand", " Ohm ", 1000, 0}, {7, "", "     ", 1000, 1},
    };
    for (const auto &z : soll) {
        SCOPED_TRACE(z.k);
        EXPECT_EQ(plant.Kanal_Name(3, z.k), QString::fromUtf8(z.name));
        EXPECT_EQ(plant.Kanal_Einheit(3, z.k), QString::fromUtf8(z.einheit));
        EXPECT_EQ(plant.Kanal_Teiler(3, z.k), z.teiler);
        EXPECT_EQ(plant.Kanal_Adr_Ist(3, z.k), z.adr_ist);
        EXPECT_EQ(plant.Kanal_Status(3, z.k), z.k == 3 ? TRUE16 : 0);
    }
    // Set point, actual value, output and state share the parameter words of the one controller.
    const int parameter[] = {47, 48, 49, 52};
    for (int k = 0; k < 16; ++k)
        EXPECT_EQ(plant.Reg_Adr(3, k), parameter[k % 4]) << k;
    EXPECT_EQ(plant.Reg_Adr(3, 16), 0);

    plant.Ofen_Serie[2] = QStringLiteral("0708-001-QRV");
    plant.Sprache = 1;
    Spuren_Setzen(3);
    EXPECT_EQ(plant.Kanal_Zahl[3], 7);
    EXPECT_EQ(plant.Kanal_Name(3, 0), plant.Sprachtext(1, 41));
}

TEST_F(ChannelTables, HeadedFurnaceFromItsCodeWords)
{
    const int n = 2, f = 1;
    plant.Ofen_Typ[n] = i16(0x9064); // block at word 100, large layout; Modbus/TCP
    plant.Ofen_Version[f] = QStringLiteral("0D"); // 0x4430: option A
    setPair(n, 0, 0x10A | 0x4000 | 0x8000, 42);          // set point, controller, set curve
    setPair(n, 1, 0x10B | 0x2000, 0x2000 | 0x1000 | 100); // actual value, decimals, words in tens
    setPair(n, 2, 0x70C | 0x2000 | 0x4000, 49);          // output with controller
    setPair(n, 3, 0x0D, 36);                             // state
    setPair(n, 5, 0x10A | 0x2000, 0x1000 | 200);         // behind a gap: not counted; words in tens, one decimal

    Spuren_Setzen(n);

    EXPECT_EQ(plant.Datei_Art[n], QStringLiteral("ADD 2"));
    EXPECT_EQ((std::vector<int>{plant.Adr_Trigger[f], plant.Trigger_Len[f], plant.Ofen_Opt_A[f], plant.Ofen_Opt_B[f],
                                plant.Ofen_Basis[f], plant.Prog_Page[f], plant.Kanal_Zahl[n]}),
              (std::vector<int>{400, 40, TRUE16, 0, 100, 1088, 4}));

    EXPECT_EQ(channelWords(n, 0), (std::vector<int>{42, 43, 44, 1, -1, -1}));
    EXPECT_EQ(channelWords(n, 1), (std::vector<int>{0, 110, 0, 100, 0, 0}));
    EXPECT_EQ(channelWords(n, 2), (std::vector<int>{0, 50, 51, 10, -1, 0}));
    EXPECT_EQ(plant.Kanal_Teiler(n, 5), 10);
    EXPECT_EQ((std::vector<int>{plant.Reg_Adr(n, 0), plant.Reg_Adr(n, 3), plant.Reg_Adr(n, 4), plant.Reg_Adr(n, 7)}),
              (std::vector<int>{45, 48, 130, 160}));
    EXPECT_EQ(plant.Kanal_Name(n, 1), QStringLiteral("  Istwert"));
    EXPECT_EQ(plant.Kanal_Status(n, 3), TRUE16);
    EXPECT_EQ(plant.Kanal_Name(n, 3), QStringLiteral("  Status"));

    // The controllers in channel order.
    EXPECT_EQ((std::vector<int>{plant.Reg_Anzahl[f], plant.Reg_Kanal(f, 1), plant.Reg_Kanal(f, 2)}),
              (std::vector<int>{2, 0, 2}));
    EXPECT_EQ(plant.Reg_Name(f, 1), QStringLiteral("Stellwert"));
    EXPECT_EQ(plant.Reg_Einheit(f, 1), QStringLiteral(" %   "));
}

TEST_F(ChannelTables, MemoryLinkFurnaceTriggerOptionsAndParameterBlock)
{
    const int n = 6, f = 5;
    plant.Ofen_Typ[n] = i16(0x8064);
    plant.Ofen_UDP[f] = TRUE16;
    plant.Ofen_Version[f] = QStringLiteral("0H"); // 0x4830: option B
    setPair(n, 0, 0x10A | 0x4000, 10);
    setPair(n, 1, 0x10A | 0x8000, 20); // first channel with a set curve
    setPair(n, 2, 0x10A | 0x8000, 30);

    Spuren_Setzen(n);

    EXPECT_EQ((std::vector<int>{plant.Adr_Trigger[f], plant.Trigger_Len[f], plant.Ofen_Opt_B[f], plant.Reg_Adr(n, 0)}),
              (std::vector<int>{220, 16, TRUE16, 13}));
    for (int j = 0; j < 4; ++j)
        EXPECT_EQ(plant.Reg_Adr(n, 4 + j), 630 + 10 * j);
    EXPECT_EQ(plant.Reg_Adr(n, 8), 33);

    plant.Ofen_Version[f].clear(); // still two characters wide: no program end
    Spuren_Setzen(n);
    EXPECT_EQ(plant.Ofen_Opt_B[f], 0);
}

TEST_F(ChannelTables, ChannelCountBetweenFourAndEleven)
{
    // A set word of 0 at the gap ends the count (other bits of B do not count).
    plant.Ofen_Typ[1] = -1;
    for (auto [luecke, b, zahl] : {std::tuple{KANAELE, 0, 11}, {6, 0x1000, 6}, {0, 0, 4}}) {
        for (int k = 0; k < KANAELE; ++k)
            setPair(1, k, 0x10A, k == luecke ? b : 10 + k);
        Kanal_Fix(1);
        EXPECT_EQ(plant.Kanal_Zahl[1], zahl) << luecke;
    }
}

// Kinds 0..3 are a reading of this station; the others depend on the unit code.
TEST_F(ChannelTables, NamesAndUnitsByKindUnitCodeAndSubCode)
{
    // With A bit 12 the sub-code completes the name, and the channel number
    // follows (only the number for an ordinary unit: 0x119A).
    const struct { int a, kanal; const char *name, *einheit; } faelle[] = {
        {0x000, 0, "Vorwärm   ", "     "}, {0x101, 0, "Vorwärm   ", " °C  "},  {0x402, 0, "Begasung ", " m³/h"},
        {0x103, 0, "Kühlung  ", " °C  "},  {0x904, 0, "Druck     ", " bar "},  {0x004, 0, "Vakuum    ", "     "},
        {0x809, 0, "Zone        ", " Ohm "}, {0x709, 0, "Widerstand", " %   "}, {0x10D, 0, "  Heizung   ", " °C  "},
        {0x63F, 0, "Loetbad   ", "L/Min"},  {0x60F, 0, "Loetbad   ", " V   "}, {0xA0E, 0, "Strom", "     "},
        {0x101A, 0, "R Sollwert 1", nullptr}, {0x106B, 1, "  L Istwert 2", nullptr}, {0x1889, 2, "Tür Zone 3      ", nullptr},
        {0x1A9A, 4, "TNV 5       ", nullptr}, {0x1B9A, 5, "C3H8 6      ", " ppm "},  {0x1C9A, 10, "O2 11       ", nullptr},
        {0x119A, 6, "Sollwert 7", nullptr},   {0x110D, 5, "  Heizung 6 ", nullptr},
    };
    for (const auto &c : faelle) {
        const auto [name, einheit] = nameAndUnit(c.a, c.kanal);
        EXPECT_EQ(name, QString::fromUtf8(c.name)) << std::hex << c.a;
        if (c.einheit)
            EXPECT_EQ(einheit, QString::fromUtf8(c.einheit)) << std::hex << c.a;
    }
}

TEST_F(ChannelTables, BatchOnViewUsesSlotZeroOnly)
{
    plant.Ofen_Typ[0] = -10;
    plant.Adr_Trigger[0] = 90;
    plant.Ofen_Basis[0] = 50;
    plant.Reg_Anzahl[0] = 3;
    setPair(0, 0, 0x10A | 0x4000, 42);
    setPair(1, 0, 0x10B, 77);

    Spuren_Setzen(0);
    EXPECT_EQ(plant.Datei_Art[0], QStringLiteral("ADD 0"));
    EXPECT_EQ((std::vector<int>{plant.Kanal_Adr_Ist(0, 0), plant.Kanal_Adr_Ist(1, 0), plant.Adr_Trigger[0],
                                plant.Ofen_Basis[0], plant.Reg_Anzahl[0]}),
              (std::vector<int>{43, 0, 90, 50, 3}));

    plant.Ofen_Typ[0] = 0;
    Spuren_Setzen(0);
    EXPECT_EQ(plant.Datei_Art[0], QStringLiteral("DEN00"));
    EXPECT_EQ(plant.Kanal_Zahl[0], 4);
}

} // namespace
