// The message store "Kalmeron.mld": record layout on disk, come and go through
// the decoder's scan, restart, and the text and track-name records.

#include "operation_fixture.h"

#include "link/decoder.h"

using namespace kal;
using namespace kal::test;

namespace {

class MessageStoreTest : public OperationTest {
protected:
    QList<int> reported; ///< every message number the scan reported, in order

    void SetUp() override
    {
        OperationTest::SetUp();
        // Record what the decoder reports on the way into the store.
        auto log = hooks.MeldEintrag;
        hooks.MeldEintrag = [this, log](int ofen, int n) {
            reported.append(n);
            log(ofen, n);
        };
    }

    void writeRaw(const QByteArray &bytes) { writeFile(storePath(), bytes); }

    void scan(int ofen, int w88)
    {
        plant.SPS_Wort(ofen, 88) = i16(w88);
        MeldScan(ofen);
    }
};

TEST_F(MessageStoreTest, ComeAndGoWriteTheirBytesAndKeepTheReservedFields)
{
    // Record 103 (furnace index 1, message 3) as another program left it:
    // text, and the three reserved fields filled.
    const QByteArray text = hex("54 FC 72 20 67 65 F6 66 66 6E 65 74") + QByteArray(28, ' '); // "Tür geöffnet"
    const QByteArray seeded = text + hex("00 11223344 55 66778899 000000000000 000000000000");
    ASSERT_EQ(seeded.size(), 62);
    writeRaw(QByteArray(102 * 62, '\0') + seeded);
    ASSERT_TRUE(openMessageStore());

    setNow(wallTime(2024, 3, 5, 14, 7, 9));
    MeldEintrag(1, 3);
    EXPECT_EQ(recordBytes(103), text + hex("01 11223344 55 66778899 050318 0E0709 000000000000"));

    setNow(wallTime(2024, 3, 5, 16, 30, 59));
    MeldEintrag(1, -3);
    EXPECT_EQ(recordBytes(103), text + hex("00 11223344 55 66778899 050318 0E0709 050318 101E3B"));
    MeldEintrag(1, -3); // a go of a gone message leaves the file alone
    EXPECT_EQ(messageStoreAccesses().schreiben, 2);
    EXPECT_EQ(storeBytes().size(), 103 * 62);

    MeldEintrag(2, 1); // record 201: the gap before it reads as zeros
    EXPECT_EQ(storeBytes().mid(103 * 62, 97 * 62), QByteArray(97 * 62, '\0'));
    EXPECT_EQ(recordBytes(201), QByteArray(40, '\0') + hex("01 00000000 00 00000000 050318 101E3B 000000000000"));
}

TEST_F(MessageStoreTest, ScanReportsLowerBitFirstAndBit15AsMask8000)
{
    ASSERT_TRUE(openMessageStore());
    scan(4, 0x8005); // messages 17, 19 and 32 come in one frame
    EXPECT_EQ(reported, (QList<int>{17, 19, 32}));
    for (int n : {17, 19, 32})
        EXPECT_EQ(readMessage(messageRecordNumber(4, n)).Aktiv, 1) << n;
    EXPECT_EQ(plant.Meld_Letzt(4, 1), i16(0x8005));

    // The same words again cost no file access.
    const StoreAccesses vorher = messageStoreAccesses();
    reported.clear();
    scan(4, 0x8005);
    EXPECT_TRUE(reported.isEmpty());
    EXPECT_EQ(messageStoreAccesses().lesen + messageStoreAccesses().schreiben, vorher.lesen + vorher.schreiben);

    scan(4, 0x8000);
    scan(4, 0);
    EXPECT_EQ(reported, (QList<int>{-17, -19, -32}));
    EXPECT_EQ(readMessage(messageRecordNumber(4, 32)).Aktiv, 0);
}

TEST_F(MessageStoreTest, RestartWithActiveMessagesComesNotAgainButGoesAtFirstScan)
{
    // Furnace 0: messages 2 and 17 were active when the station stopped, and
    // message 16 (bit 15 of word 87) as well.
    QByteArray file(62 * 17, '\0');
    auto seed = [&file](int nr, const char *tail) {
        file.replace((nr - 1) * 62, 62, QByteArray("Meldung") + QByteArray(33, ' ') + hex(tail));
    };
    seed(2, "01 00000000 00 00000000 010218 080000 000000000000");
    seed(16, "01 00000000 00 00000000 010218 080100 000000000000");
    seed(17, "01 00000000 00 00000000 010218 080200 000000000000");
    writeRaw(file);
    ASSERT_TRUE(openMessageStore());
    loadMessageTexts();
    EXPECT_EQ(plant.Meld_Letzt(0, 0), i16(0x8002));
    EXPECT_EQ(plant.Meld_Letzt(0, 1), 0x0001);

    // The PLC still has messages 2 and 16, message 17 ended while the station was away.
    const QByteArray rec2 = recordBytes(2);
    const StoreAccesses vorher = messageStoreAccesses();
    plant.SPS_Wort(0, 87) = i16(0x8002);
    scan(0, 0);
    EXPECT_EQ(reported, (QList<int>{-17}));
    EXPECT_EQ(both(messageStoreAccesses().lesen - vorher.lesen, messageStoreAccesses().schreiben - vorher.schreiben),
              both(1, 1));
    EXPECT_EQ(recordBytes(2), rec2);
    EXPECT_EQ(recordBytes(17).mid(40, 1), hex("00"));
    EXPECT_EQ(recordBytes(17).mid(50, 12), hex("010218 080200 050318 0E0709"));
}

TEST_F(MessageStoreTest, TextsAreWrittenOnlyWhenTheyDifferAndReadBackAtStart)
{
    ASSERT_TRUE(openMessageStore());
    MeldEintrag(6, 5);
    const QByteArray status = recordBytes(605).mid(40);

    MeldText_Sichern(6, 5, QStringLiteral("  Tür geöffnet  "));
    EXPECT_EQ(recordBytes(605).left(40), hex("54 FC 72 20 67 65 F6 66 66 6E 65 74") + QByteArray(28, ' '));
    EXPECT_EQ(recordBytes(605).mid(40), status);
    const StoreAccesses vorher = messageStoreAccesses();
    MeldText_Sichern(6, 5, QStringLiteral("Tür geöffnet"));
    EXPECT_EQ(messageStoreAccesses().schreiben, vorher.schreiben);

    // A text longer than 22 characters is stored whole and cut when loaded.
    MeldText_Sichern(6, 48, QStringLiteral("Drehzahl Kammerkuehlung zu gering"));
    // Record 97 holds four 8-character track names, record 98 two 16-character names.
    const char *spuren[] = {"Kammer", "Argon", "Spur 3", "Spur 4 lang", "Anlage Nord", "Linie 2"};
    for (int k = 0; k < 6; ++k)
        (k < 4 ? plant.Spur(6, k) : plant.Spur_Titel(6, k - 4)) = QString::fromLatin1(spuren[k]);
    MeldText_Sichern(6, 97, QString());
    EXPECT_EQ(recordBytes(697).left(40), QByteArray("Kammer  Argon   Spur 3  Spur 4 l        "));
    EXPECT_EQ(recordBytes(698).left(40), QByteArray("Anlage Nord     Linie 2                 "));

    closeMessageStore();
    resetPlant();
    plant.Pfad[0] = dir.path();
    ASSERT_TRUE(openMessageStore());
    loadMessageTexts();
    // Message 1 was never written.
    EXPECT_EQ(QStringList({plant.Meld_Text(6, 4), plant.Meld_Text(6, 47), plant.Meld_Text(6, 0), plant.Spur(6, 3),
                           plant.Spur_Titel(6, 1)}),
              QStringList({"Tür geöffnet", "Drehzahl Kammerkuehlun", "", "Spur 4 l", "Linie 2"}));
    EXPECT_EQ(plant.Meld_Letzt(6, 0), 0x0010); // message 5 was active
}

} // namespace
