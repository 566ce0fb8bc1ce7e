// The words of a program in the image, compared with hand-worked layouts,
// the refusals, the lock of a pending write, and the way back into the
// copy buffer.

#include "config/text_ids.h"
#include "link/write_journal.h"
#include "programs/program_transfer.h"
#include "programs_fixture.h"

#include <vector>

using namespace kal;
using namespace kal::test;

namespace {

constexpr i16 KOPF = i16(0x8000 | 240);        // version word, short names
constexpr i16 GROSS = i16(0x8000 | 0x1000 | 50); // version word, long names, large image

class Transfer : public ProgramsTest {
protected:
    /// Ramp, hold, manual, jump, cycle, then an end that carries an air feed.
    void loadExample()
    {
        prog.Prog.Prog_Name = QStringLiteral("Härten 820");
        Seg(0, 1, 820, 0, 1500, 90, 0b0001, 100, 5);
        Seg(1, 2, 820, 25, 0, 100, 0b0010);
        Seg(2, 3, 600, 0, 0, 40, 0b0100);
        Seg(3, 4, 300, 0, 0, 70);
        Seg(4, 5, 0, 0, 3, 2);
        Seg(5, 0, 0, 0, 0, 100, 0, 80);
    }
    std::vector<int> imageWords(int ofen, int ab, int n)
    {
        std::vector<int> w;
        for (int i = 0; i < n; ++i)
            w.push_back(plant.SPS_Wort(ofen, ab + i));
        return w;
    }
    static std::vector<int> zeros(int n) { return std::vector<int>(size_t(n), 0); }
};

TEST_F(Transfer, ActiveProgramOfAFurnaceWithoutVersionWord)
{
    Ofen(1, 3, OPT_MANUELL | OPT_ZYKLUS);
    loadExample();
    plant.SPS_Wort(0, 188) = 0x1234;
    ASSERT_EQ(Prog_Senden(START_AKTIV, 0), SendResult::Gesendet);
    EXPECT_EQ(imageWords(0, 100, 6), (std::vector<int>{1, 2, 3, 4, 5, 0}));
    EXPECT_EQ(imageWords(0, 120, 6), (std::vector<int>{820, 820, 600, 300, 0, 0}));
    EXPECT_EQ(imageWords(0, 140, 6), (std::vector<int>{1500, 25, 0, 0, 3, 0}));
    // Limit words: the output alone, the cycle's target; no air feed here.
    EXPECT_EQ(imageWords(0, 160, 6), (std::vector<int>{90, 100, 40, 70, 2, 0}));
    EXPECT_EQ(imageWords(0, 166, 14), zeros(14));
    // "Härten 820" padded to 16, first character in the low byte.
    EXPECT_EQ(imageWords(0, 180, 8), (std::vector<int>{i16(0xE448), 0x7472, 0x6E65, 0x3820, 0x3032, 0x2020, 0x2020,
                                                  0x2020}));
    EXPECT_EQ(plant.SPS_Wort(0, 188), 0x1234); // no place number for the active program
    EXPECT_EQ(imageWords(0, 190, 3), (std::vector<int>{0x21, 0x04, 0}));
    EXPECT_EQ(both(plant.Write_Adr[0], plant.Write_Len[0]), both(100, 100));
    // The write journal names the queued block by its program and place.
    writeJournal(0, 100, {1}, QString(), true);
    EXPECT_TRUE(QString::fromUtf8(readFile(journalFile()))
                    .contains(QStringLiteral("\tprogram \"Härten 820\" -> active program")));
}

TEST_F(Transfer, MemoryPlaceOfAFurnaceWithVersionWord)
{
    Ofen(2, KOPF, OPT_MANUELL | OPT_ZYKLUS | OPT_ZULUFT);
    loadExample();
    ASSERT_EQ(Prog_Senden(START_PLATZ, 3), SendResult::Gesendet);
    // Analog * 16 + command.
    EXPECT_EQ(imageWords(1, 300, 6), (std::vector<int>{5 * 16 + 1, 2, 3, 4, 5, 0}));
    // Air feed in the high byte; the cycle's target in full; the end after a
    // segment with air feed still carries its own air feed and output.
    EXPECT_EQ(imageWords(1, 360, 7), (std::vector<int>{100 << 8 | 90, 100, 40, 70, 2, 80 << 8 | 100, 100}));
    EXPECT_EQ(plant.SPS_Wort(1, 388), 3);
    EXPECT_EQ(plant.SPS_Wort(1, 380), i16(0xE448));
    EXPECT_EQ(both(plant.Write_Adr[1], plant.Write_Len[1]), both(300, 100));
    writeJournal(1, 300, {1}, QString(), true);
    EXPECT_TRUE(QString::fromUtf8(readFile(journalFile())).contains(QStringLiteral("\tprogram \"Härten 820\" -> place 3")));
}

TEST_F(Transfer, VersionWordOneHalvesTheAirFeedAndTheWayBackDoublesIt)
{
    Ofen(1, 1, OPT_ZULUFT);
    Seg(0, 1, 500, 0, 1000, 90, 0, 400, 7);
    ASSERT_EQ(Prog_Senden(START_AKTIV, 0), SendResult::Gesendet);
    EXPECT_EQ(plant.SPS_Wort(0, 100), 1); // no version word: the command alone
    EXPECT_EQ(plant.SPS_Wort(0, 160), i16(200 << 8 | 90));
    ProgCopy_aus_SPS(0, 0);
    EXPECT_EQ((std::vector<int>{prog.Prog_Puffer.Segment[0].Zuluft, prog.Prog_Puffer.Segment[0].MaxOut, prog.Puffer_Voll}),
              (std::vector<int>{400, 90, TRUE16}));
}

TEST_F(Transfer, LongNamesOnTheLargeImage)
{
    Ofen(3, GROSS);
    prog.Prog.Prog_Name = QStringLiteral("ABCDEFGHIJKLMNOPQRSTUVWXYZ1234");
    Seg(0, 1, 700, 0, 900);
    plant.SPS_Wort(2, 188) = 1;
    ASSERT_EQ(startWord(2), START_PLATZ_LANG);
    ASSERT_EQ(Prog_Senden(START_PLATZ_LANG, 2), SendResult::Gesendet);
    // Characters 17..30 at 990..996, the table from P = 1000, the place at 1088.
    EXPECT_EQ(imageWords(2, 990, 7), (std::vector<int>{0x5251, 0x5453, 0x5655, 0x5857, 0x5A59, 0x3231, 0x3433}));
    EXPECT_EQ((std::vector<int>{plant.SPS_Wort(2, 1000), plant.SPS_Wort(2, 1020), plant.SPS_Wort(2, 1080),
                                plant.SPS_Wort(2, 1087), plant.SPS_Wort(2, 1088), plant.Write_Adr[2], plant.Write_Len[2]}),
              (std::vector<int>{1, 700, 0x4241, 0x504F, 2, 990, 110}));
    EXPECT_EQ(plant.SPS_Wort(2, 188), i16(0x8001)); // the large image's mark of a new program

    ProgCopy_aus_SPS(2, memoryOffset(2));
    EXPECT_EQ(prog.Prog_Puffer.Prog_Name, prog.Prog.Prog_Name);

    plant.Write_Len[2] = 0;
    ASSERT_EQ(Prog_Senden(START_AKTIV_LANG, 0), SendResult::Gesendet);
    EXPECT_EQ(both(plant.SPS_Wort(2, 90), plant.SPS_Wort(2, 180)), both(0x5251, 0x4241));
    EXPECT_EQ(plant.SPS_Wort(2, 188), i16(0x8001)); // no place number for the active program
    EXPECT_EQ(both(plant.Write_Adr[2], plant.Write_Len[2]), both(90, 110));
}

TEST_F(Transfer, RefusalRowsAndNothingQueued)
{
    struct Case {
        int option;
        std::vector<int> befehle;
        int zeile; ///< second line, 0 = sent
    };
    const Case faelle[] = {
        {0, {1, 3}, text::MANUAL_PRESENT},
        {0, {5, 3}, text::MANUAL_AND_CYCLE},
        {0, {1, 5}, text::CYCLE_PRESENT},
        {OPT_MANUELL, {3, 5}, text::CYCLE_PRESENT},
        {OPT_ZYKLUS, {1, 5}, 0},
        {OPT_MANUELL | OPT_ZYKLUS, {3, 5}, 0},
    };
    for (const Case &f : faelle) {
        for (i16 typ : {i16(3), KOPF}) {
            Ofen(1, typ, f.option);
            prog.Prog = Program{};
            for (size_t k = 0; k < f.befehle.size(); ++k)
                Seg(int(k), f.befehle[k], 100, 0, 10, 1);
            plant.Write_Len[0] = 0;
            dlg.shown.clear();
            const SendResult e = Prog_Senden(START_AKTIV, 0);
            if (f.zeile == 0) {
                EXPECT_EQ(e, SendResult::Gesendet);
                EXPECT_TRUE(dlg.shown.empty());
                continue;
            }
            EXPECT_EQ(e, SendResult::Abgelehnt);
            EXPECT_EQ(plant.Write_Len[0], 0);
            ASSERT_EQ(dlg.shown.size(), 1u);
            EXPECT_EQ(dlg.shown[0].text,
                      QStringLiteral("Das Programm ist für diesen Ofen ungültig!\n") + Text_Id(f.zeile));
        }
    }
}

TEST_F(Transfer, PendingWriteLocksTheFurnace)
{
    Ofen(1, 3);
    Seg(0, 1, 300, 0, 100);
    plant.Write_Adr[0] = 90;
    plant.Write_Len[0] = 1;
    EXPECT_EQ(Prog_Senden(START_AKTIV, 0), SendResult::Belegt);
    EXPECT_EQ(both(plant.SPS_Wort(0, 100), plant.Write_Adr[0]), both(0, 90));
    prog.Prog_Ofen = 0;
    EXPECT_EQ(Prog_Senden(START_AKTIV, 0), SendResult::Kein_Ofen);
}

TEST_F(Transfer, CopyBufferRoundTrip)
{
    Ofen(2, KOPF, OPT_MANUELL | OPT_ZYKLUS | OPT_ZULUFT | OPT_AUSGANG);
    loadExample();
    ASSERT_EQ(Prog_Senden(START_PLATZ, 4), SendResult::Gesendet);
    ProgCopy_aus_SPS(1, 200);
    const auto felder = [](const ProgramSegment &s) {
        return std::vector<int>{s.Befehl, s.Sollwert, s.Haltezeit, s.Gradient, s.MaxOut, s.Ausgang, s.Zuluft, s.Analog};
    };
    for (size_t k = 0; k < 6; ++k)
        EXPECT_EQ(felder(prog.Prog_Puffer.Segment[k]), felder(prog.Prog.Segment[k])) << k;
    EXPECT_EQ(prog.Prog_Puffer.Prog_Name, QStringLiteral("Härten 820"));

    // Pasted into another furnace's working copy, dated now.
    Ofen(1, 3);
    prog.Prog = Program{};
    Programm_Einfuegen();
    EXPECT_EQ(prog.Prog.Segment[4].MaxOut, 2);
    EXPECT_EQ(prog.Prog.Prog_Name, QStringLiteral("Härten 820"));
    EXPECT_EQ(prog.Prog.Datum, jetzt);

    // From the working copy the same way.
    prog.Prog.Segment[0].Sollwert = 111;
    ProgCopy_aus_PC();
    EXPECT_EQ(prog.Prog_Puffer.Segment[0].Sollwert, 111);
}

TEST_F(Transfer, PageWordOfAMemoryPlace)
{
    Ofen(2, KOPF);
    fillStatusTexts();
    plant.SPS_Wort(1, 388) = 170;
    EXPECT_FALSE(placeReady(1, 3));
    requestPlace(1, 3); // no socket: the command is lost, the image holds the request
    EXPECT_EQ(both(plant.SPS_Wort(1, 388), prog.Prog_Platz), both(103, 3));
    EXPECT_EQ(Page_Status(1), QStringLiteral("Download Prog 3"));
    plant.SPS_Wort(1, 388) = 1103;
    EXPECT_TRUE(placeReady(1, 3) && !placeReady(1, 4));
    EXPECT_EQ(Page_Status(1), QStringLiteral("Download Prog 3"));
    plant.SPS_Wort(1, 388) = 2;
    EXPECT_EQ(Page_Status(1), QStringLiteral("Upload Prog 2"));
}

} // namespace
