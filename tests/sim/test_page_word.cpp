// The page word handshake of the exchange window: text pages and program
// places, on the plain and the large layout.

#include "sim/program_words.h"
#include "sim_test_support.h"

#include <gtest/gtest.h>

using namespace simtest;

namespace {

class PageWordTest : public FreshProcess {
protected:
    void make(bool large)
    {
        FurnaceDescription fd = furnaceDesc(1, Protocol::Modbus, true, 500);
        fd.large = large;
        fd.trackNames = {QStringLiteral("Regler"), QStringLiteral("Charge"), QStringLiteral("Decke"),
                         QStringLiteral("Argon")};
        fd.pageNames = {QStringLiteral("Haubenofen"), QStringLiteral("Halle 3")};
        for (int i = 0; i < 22; ++i)
            fd.codes.append(int16_t(100 + i));
        fd.places = {{}, {QStringLiteral("Platz zwei"), {{1, 700, 1500, 90}, {2, 0, 30, 90}}}};
        plant = startPlant({fd});
        f = plant->furnace(0);
    }
    void station(int address, const QVector<int16_t> &words)
    {
        ASSERT_TRUE(f->write(address, words, QStringLiteral("test")));
    }

    std::unique_ptr<SimPlant> plant;
    SimFurnace *f = nullptr;
};

TEST_F(PageWordTest, TrackPageAndMessagePagesAnswerWithThousandPlusRequest)
{
    make(false);
    EXPECT_EQ(writeWord(f, 388, 122), 1122);
    EXPECT_EQ(f->image().text(300, 4), QStringLiteral("Regler"));
    EXPECT_EQ(f->image().text(324, 4), QStringLiteral("Argon"));
    EXPECT_EQ(f->image().text(332, 8), QStringLiteral("Haubenofen"));
    EXPECT_EQ(f->image().text(340, 8), QStringLiteral("Halle 3"));
    EXPECT_EQ(f->word(348) + f->word(369), 100 + 121);

    EXPECT_EQ(writeWord(f, 388, 110), 1110);
    EXPECT_EQ(f->image().text(300, 11), QString::fromUtf8("Tür geöffnet"));
    EXPECT_EQ(f->image().text(320, 11), QString::fromUtf8("Übertemperatur"));
    EXPECT_EQ(f->word(351), 0) << "the codes of the track page are cleared before a text page";
    EXPECT_EQ(uint16_t(f->word(300)), uint16_t('T' | 0xFC << 8)) << "Latin-1, first character low";

    EXPECT_EQ(writeWord(f, 388, 121), 1121);
    EXPECT_EQ(f->image().text(360, 11), QStringLiteral("Meldung 48"));

    EXPECT_EQ(writeWord(f, 388, 0), 0);
    EXPECT_EQ(writeWord(f, 388, 1122), 1122) << "an answer written back starts nothing";
}

TEST_F(PageWordTest, UploadIsStoredAndComesBackOnDownload)
{
    make(false);
    ProgramDescription p{QStringLiteral("Hochgeladen"), {{1, 450, 2000, 70}, {5, 0, 3, 1}}};
    QVector<int16_t> block = programWords(p, false).mid(10);
    block[88] = 3; // memory place 3
    station(300, block);
    EXPECT_EQ(f->word(388), 170) << "taken; the station clears it";
    station(388, {0});

    station(300, QVector<int16_t>(100, 0));
    EXPECT_EQ(writeWord(f, 388, 103), 1103);
    EXPECT_EQ(f->image().get(300, 88), block.mid(0, 88));
    EXPECT_EQ(f->image().text(380, 8), QStringLiteral("Hochgeladen"));

    EXPECT_EQ(writeWord(f, 388, 102), 1102);
    EXPECT_EQ((std::vector<int>{f->word(300), f->word(320), f->word(360), f->word(341), f->word(90)}),
              (std::vector<int>{1, 700, 90, 30, 0}))
        << "short names leave the words before the table alone";
}

TEST_F(PageWordTest, LargeLayoutUsesPageWord1088AndLongNames)
{
    make(true);
    EXPECT_EQ(writeWord(f, 388, 122), 122) << "388 is no page word on the large layout";

    ProgramDescription p{QStringLiteral("Ein Name mit dreissig Zeichen!"), {{1, 300, 1000, 100}}};
    QVector<int16_t> block = programWords(p, true);
    block[98] = 6; // P + 88 = 1088
    station(990, block);
    EXPECT_EQ(f->word(1088), 170);
    station(990, QVector<int16_t>(110, 0));
    EXPECT_EQ(writeWord(f, 1088, 106), 1106);
    EXPECT_EQ(f->image().text(1080, 8) + f->image().text(990, 7), p.name);
    EXPECT_EQ(f->word(1020), 300);

    EXPECT_EQ(writeWord(f, 1088, 111), 1111);
    EXPECT_EQ(f->image().text(300, 11), QStringLiteral("Netzausfall"));

    // A new active program on the large layout: the PLC takes it and clears bit 15.
    EXPECT_EQ(writeWord(f, 188, int16_t(0x8000 | 5)), 5);
}

} // namespace
