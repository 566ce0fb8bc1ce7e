// When a block opens a batch, goes on in the open one, or is dropped; headed
// furnaces by the number in their sample groups (also packed as 131), plain
// furnaces by their announcements; the header of the old single-sample PLCs;
// the live curve's notification.

#include "test_recorder_fixture.h"

using namespace kal;
using namespace kal::test;

namespace {

class RecorderBatches : public RecorderTest {
protected:
    qint64 recordCount(i32 charge) const
    {
        const QString name = QStringLiteral("D2401017ABC%1%2.OVD").arg(charge, 6, 10, QLatin1Char('0')).arg(120324);
        return fileContents(batchPath(name)).size() / 22;
    }
};

/// The batch number of a headed furnace, from sample groups of 154 or packed as 131.
class RecorderNumbers : public RecorderBatches, public ::testing::WithParamInterface<bool> {
protected:
    void SetUp() override
    {
        RecorderBatches::SetUp();
        if (GetParam()) {
            plant.Ofen_Typ[KOPF + 1] = static_cast<i16>(0x8000 | 240);
            plant.Adr_Trigger[KOPF] = 220;
        }
    }
    void offerSample(i32 charge, PlcStamp s)
    {
        if (GetParam())
            anbieten(KOPF, {131, s.a, s.b, static_cast<i16>(charge), 0, 0, 0, 0x2401, 0, 0, 0, 1200, 1190, 0x40, 0, 0});
        else
            offerGroup(charge, s);
    }
};

INSTANTIATE_TEST_SUITE_P(GroupAndCompact, RecorderNumbers, ::testing::Bool());

} // namespace

TEST_P(RecorderNumbers, StrayNumberNeverSplitsABatch)
{
    offerSample(5, stampAt(30));
    offerSample(7, stampAt(31));
    offerSample(5, stampAt(32));
    EXPECT_EQ(both(plant.Charge_Nr[KOPF], plant.Charge_Nr_Neu[KOPF]), both(5, 5));
    EXPECT_EQ(both(batchFiles().size(), recordCount(5)), both(1, 47));
    // 7 after the return of 5 is a first sighting again.
    offerSample(7, stampAt(40));
    EXPECT_EQ(batchFiles().size(), 1);
    offerSample(7, stampAt(41));
    EXPECT_EQ(both(batchFiles().size(), recordCount(7)), both(2, 43));
}

TEST_P(RecorderNumbers, NewNumberOpensAtSecondSightingMoreThanFiveMinutesOn)
{
    offerSample(5, stampAt(30));
    offerSample(7, stampAt(31));
    offerSample(7, stampAt(33));
    offerSample(7, stampAt(35)); // five minutes after the start is not more than five
    EXPECT_EQ(both(plant.Charge_Nr[KOPF], plant.Charge_Nr_Neu[KOPF]), both(5, 7));
    EXPECT_EQ(batchFiles().size(), 1);
    EXPECT_EQ(recordCount(5), 43);
    offerSample(7, stampAt(36));
    EXPECT_EQ(plant.Charge_Nr[KOPF], 7);
    EXPECT_EQ(plant.Charge_Start[KOPF], QStringLiteral("12.03.2024 08:36:00"));
    EXPECT_EQ(both(recordCount(5), recordCount(7)), both(43, 43));
    offerSample(5, stampAt(37)); // the old number is now a stray one
    EXPECT_EQ(both(recordCount(5), recordCount(7)), both(43, 43));
}

TEST_F(RecorderBatches, NothingIsStoredWithoutABatchAndAnInvalidStartOpensAtOnce)
{
    // Number 0, and a sample or a text before any group named a batch.
    const PlcStamp s = stampAt(30, 16);
    offerGroup(0, s);
    anbieten(KOPF, {100, s.a, s.b, 1000, 1000});
    anbieten(KOPF, block(9001, 0, s));
    EXPECT_TRUE(batchFiles().isEmpty());
    EXPECT_EQ(plant.Charge_Nr[KOPF], 0);

    // Restarted with a start date that can't be read: the batch counts as none.
    plant.Charge_Nr[KOPF] = 5;
    plant.Charge_Nr_Neu[KOPF] = 5;
    plant.Charge_Start[KOPF] = QStringLiteral("31.13.2024 08:00:00");
    offerGroup(5, stampAt(31));
    EXPECT_EQ(plant.Charge_Gueltig[KOPF], -1);
    EXPECT_EQ(plant.Charge_Start[KOPF], QStringLiteral("12.03.2024 08:31:00"));
    // A single sample then takes the number of the group before.
    anbieten(KOPF, {100, s.a, s.b, 1000, 1000});
    EXPECT_EQ(recordCount(5), 44);
}

TEST_F(RecorderBatches, OldSingleSamplePlcGetsTheFixedIdentityInItsHeader)
{
    // A batch open from before, and the number of the group before in hand.
    plant.Charge_Nr[KOPF] = 5;
    plant.Charge_Start[KOPF] = QStringLiteral("12.03.2024 08:30:16");
    plant.Charge_Gueltig[KOPF] = -1;
    Log_Satz.w[6] = 5;
    const PlcStamp s = stampAt(30, 16);
    anbieten(KOPF, {110, s.a, s.b, 1000, 1000});
    QByteArray b = fileContents(plant.Charge_Datei[KOPF]);
    ASSERT_EQ(b.size(), 40 * 22);
    EXPECT_EQ(recordAt(b, 2), hex("0A 01 0D 03 18 08 1E 10 2A 00 0B 01 2B 00 0C 07 31 00 0D 00 24 00"));
    EXPECT_EQ(recordAt(b, 3), hex("0F 25 0A 03 18 08 1E 10 3F 00 00 00 00 00 00 00 00 00 00 00 00 00"));
    EXPECT_EQ(recordAt(b, 4), hex("00 00 3A 03 18 08 1E 10 00 00 00 00 00 00 00 00 00 00 00 00 00 00"));
    EXPECT_EQ(recordAt(b, 40).left(2), hex("6E 00"));
    EXPECT_EQ(plant.Ofen_Kennung_A(KOPF + 1, 11), 0);

    // The one furnace of its kind has three pairs of its own.
    plant.Ofen_Serie[KOPF] = QStringLiteral("0708-001-QRV");
    anbieten(KOPF, {100, s.a, s.b, 1000, 1000});
    b = fileContents(plant.Charge_Datei[KOPF]);
    EXPECT_EQ(plant.Charge_Datei[KOPF].right(27), QStringLiteral("D0708001QRV000005120324.OVD"));
    EXPECT_EQ(recordAt(b, 3), hex("0F 25 0A 03 18 08 1E 10 54 00 0E 06 55 00 09 28 56 20 00 00 00 00"));
    EXPECT_EQ(recordAt(b, 40).left(2), hex("64 00"));
}

TEST_F(RecorderBatches, PlainFurnaceFollowsItsAnnouncements)
{
    const PlcStamp s = stamp(1, 2, 2024, 10, 0, 0);
    anbieten(EINFACH, {1, s.a, s.b, 100});
    EXPECT_TRUE(batchFiles().isEmpty()); // no batch announced yet

    anbieten(EINFACH, {205, s.a, s.b});
    anbieten(EINFACH, {1, s.a, s.b, 100});
    const PlcStamp spaeter = stamp(1, 2, 2024, 11, 0, 0);
    anbieten(EINFACH, {205, spaeter.a, spaeter.b}); // the same batch again: no new start
    anbieten(EINFACH, {2, spaeter.a, spaeter.b, 100});
    EXPECT_EQ(plant.Charge_Start[EINFACH], QStringLiteral("01.02.2024 10:00:00"));
    EXPECT_EQ(fileContents(batchPath("D2312004XY 000005010224.OVD")).size(), 41 * 22);

    anbieten(EINFACH, {206, spaeter.a, spaeter.b});
    anbieten(EINFACH, {3, spaeter.a, spaeter.b, 100});
    EXPECT_EQ(fileContents(batchPath("D2312004XY 000006010224.OVD")).size(), 40 * 22);

    // A furnace of a type above 6 records nothing.
    plant.Ofen_Typ[EINFACH + 1] = 7;
    anbieten(EINFACH, {207, spaeter.a, spaeter.b});
    anbieten(EINFACH, {4, spaeter.a, spaeter.b, 100});
    EXPECT_EQ(plant.Charge_Nr[EINFACH], 6);
    EXPECT_EQ(batchFiles().size(), 2);
}

TEST_F(RecorderBatches, LiveCurveOfTheFileHearsOfEachSample)
{
    offerGroup(5, stampAt(30));
    plant.Kurve_Datei = plant.Charge_Datei[KOPF];
    offerGroup(5, stampAt(31));
    EXPECT_TRUE(online.empty()) << "the view is not live";

    plant.Kurve_Online = -1;
    offerGroup(5, stampAt(32));
    anbieten(KOPF, block(9001, 0, stampAt(33)));
    offerGroup(5, stampAt(34));
    EXPECT_EQ(online, (std::vector<int>{KOPF, KOPF}));

    plant.Kurve_Datei = batchPath("anders.OVD");
    offerGroup(5, stampAt(35));
    EXPECT_EQ(online.size(), 2u);
}
