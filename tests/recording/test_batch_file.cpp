// Record-number access to batch files and the searches over them, on real
// files in a temporary folder.

#include "test_recorder_fixture.h"

using namespace kal;
using namespace kal::test;

namespace {

/// A distinct record for position n.
BatchRecord numberedRecord(i16 art, int n)
{
    return BatchRecord{art, static_cast<u8>(1 + n % 28), 3, 12, 0, 0, 0, {static_cast<i16>(n), 0, 1, 2, 3, 4, 5}};
}

class BatchFileTest : public FileTest {
protected:
    BatchFile f;

    /// A file of n records, record i = numberedRecord(art, i), written in one go and left open.
    void batchPath(const char *name, int n, i16 art = 100)
    {
        std::vector<BatchRecord> v;
        for (int i = 1; i <= n; ++i)
            v.push_back(numberedRecord(art, i));
        f.open(pathOf(name));
        f.write(1, v.data(), n);
    }
};

} // namespace

TEST(BatchFileCount, LengthOver22RoundsToNearestTiesToEven)
{
    const int laenge[] = {0, 10, 11, 12, 22, 33, 55, 56};
    const int zahl[] = {0, 0, 0, 1, 1, 2, 2, 3};
    for (int i = 0; i < 8; ++i)
        EXPECT_EQ(recordCountOfLength(laenge[i]), zahl[i]) << laenge[i];
    EXPECT_EQ((std::vector<int>{nextDataRecord(0), nextDataRecord(39), nextDataRecord(40)}),
              (std::vector<int>{40, 40, 41}));
}

TEST_F(BatchFileTest, GapsAreZeroAndATruncatedRecordReadsWithZeros)
{
    f.open(pathOf("gap.OVD"));
    f.write(40, numberedRecord(154, 7));
    f.close();
    EXPECT_EQ(fileContents(pathOf("gap.OVD")), QByteArray(39 * 22, '\0') + packRecord(numberedRecord(154, 7)));

    // Cut record 40 to 15 bytes: it still counts, and its missing bytes read as 0.
    QFile(pathOf("gap.OVD")).resize(39 * 22 + 15);
    f.open(pathOf("gap.OVD"));
    EXPECT_EQ(f.count(), 40);
    const BatchRecord torn = f.read(40);
    EXPECT_EQ(both(torn.Wert[3], torn.Wert[4]), both(2, 0)); // byte 14 came, byte 15 did not
    EXPECT_EQ(f.read(41), BatchRecord{});
    // Appending goes to count + 1 and fills the torn record up with zeros.
    f.write(f.count() + 1, numberedRecord(155, 8));
    EXPECT_EQ(f.count(), 41);
    EXPECT_EQ(f.read(40), torn);
    EXPECT_EQ(f.read(41), numberedRecord(155, 8));

    EXPECT_THROW(f.write(0, BatchRecord{}), RunError);
    BatchFile g;
    try {
        g.open(pathOf("fehlt/x.OVD"));
        FAIL() << "opened in a missing folder";
    } catch (const RunError &e) {
        EXPECT_EQ(e.number, ERR_FILE);
    }
    EXPECT_FALSE(g.openRead(pathOf("nicht_da.OVD")));
}

TEST_F(BatchFileTest, ImportDuplicateTests)
{
    // Single samples: a record below the number, down to 2, across read runs.
    const int n = 2 * SATZ_BLOCK + 3;
    batchPath("usb.OVD", n);
    EXPECT_EQ(CheckCharge(f, n + 1, numberedRecord(100, 2)), 0);
    EXPECT_EQ(CheckCharge(f, n + 1, numberedRecord(100, SATZ_BLOCK + 1)), 0);
    EXPECT_EQ(CheckCharge(f, n + 1, numberedRecord(100, 1)), -1); // record 1 is the name record
    EXPECT_EQ(CheckCharge(f, 3, numberedRecord(100, 2)), 0);
    EXPECT_EQ(CheckCharge(f, 2, numberedRecord(100, 2)), -1);
    EXPECT_EQ(CheckCharge(f, 10, numberedRecord(100, 10)), -1); // the record at the number is not looked at
    BatchRecord anders = numberedRecord(100, 5);
    anders.Sekunde = 1;
    EXPECT_EQ(CheckCharge(f, n + 1, anders), -1);
    // The upward walk from an odd start across a run boundary.
    f.write(SATZ_BLOCK + 2, numberedRecord(Satz_Text, 1));
    EXPECT_EQ(firstTextRecord(f, 2).nr, SATZ_BLOCK + 2);

    // Sample groups: 0 only when every record from the number down to 40
    // equals the candidate, and below 40; -1 in all ordinary cases.
    batchPath("g.OVD", 45, Satz_Charge);
    const BatchRecord s = numberedRecord(Satz_Charge, 45);
    EXPECT_EQ(Check_LogSatz80(f, nextDataRecord(f.count()), s), -1); // reads zeros there
    EXPECT_EQ(Check_LogSatz80(f, 39, s), 0);
    for (int nr = 40; nr <= 45; ++nr)
        f.write(nr, s);
    EXPECT_EQ(Check_LogSatz80(f, 45, s), 0);
    BatchRecord k = s;
    k.Satz_Art = 100;
    f.write(40, k);
    f.write(41, k);
    EXPECT_EQ(Check_LogSatz80(f, 41, k), -1); // equal, but not a 154
}

TEST_F(BatchFileTest, BatchDataTextGoesOverTheFirst9001FromRecordFiveElseBehindTheEnd)
{
    EXPECT_FALSE(Chargendaten_Speichern(pathOf("fehlt.OVD"), QStringLiteral("x")));
    EXPECT_FALSE(QFile::exists(pathOf("fehlt.OVD")));

    batchPath("a.OVD", 50);
    f.close();
    EXPECT_TRUE(Chargendaten_Speichern(pathOf("a.OVD"), QStringLiteral("Los 1")));
    EXPECT_TRUE(Chargendaten_Speichern(pathOf("a.OVD"), QStringLiteral("Los 2"))); // same place again
    QByteArray b = fileContents(pathOf("a.OVD"));
    ASSERT_EQ(b.size(), 66 * 22);
    EXPECT_EQ(recordAt(b, 51), QByteArray("\x29\x23" "Los 2     ") + QByteArray(10, '\0'));
    EXPECT_EQ(recordAt(b, 66).left(2), QByteArray("\x38\x23"));

    // A 9001 in records 1..4 does not count; the search keeps the record read last.
    batchPath("b.OVD", 50);
    f.write(3, numberedRecord(Satz_Text, 3));
    EXPECT_EQ(firstTextRecord(f, 5).zuletzt, numberedRecord(100, 50));
    f.write(45, numberedRecord(Satz_Text, 45));
    EXPECT_EQ(firstTextRecord(f, 5).nr, 45);
    f.close();
    EXPECT_TRUE(Chargendaten_Speichern(pathOf("b.OVD"), QStringLiteral("Los 3")));
    b = fileContents(pathOf("b.OVD"));
    EXPECT_EQ(b.size(), 60 * 22);
    EXPECT_EQ(recordAt(b, 45).mid(2, 10), QByteArray("Los 3     "));
    EXPECT_EQ(recordAt(b, 3), packRecord(numberedRecord(Satz_Text, 3)));
}
