// Byte layouts of every record kind of a batch file. The expected bytes are
// written out by hand from the record layout, never produced by the encoder.

#include "test_recorder_fixture.h"

#include "recording/batch_record.h"

using namespace kal;
using namespace kal::test;

namespace {

const RecordTime zeit{5, 3, 12, 14, 7, 9}; // 05.03.2012 14:07:09

/// Every word differs in both bytes: w[n] = n * 256 + 0xA0 + n from w10 on.
LogBlock block(i16 art)
{
    LogBlock w{art, 0x2BCC, 0x71C4, 0x1234, -2, 0x0312, 7, 1, 0x0A0B, 0x7FFF};
    for (int n = 10; n < 40; ++n)
        w[n] = static_cast<i16>(n * 256 + 0xA0 + n);
    return w;
}

} // namespace

TEST(BatchRecordBytes, FieldsAreLittleEndianInOrderAndTheTimeKey)
{
    BatchRecord s{-2, 31, 12, 99, 23, 59, 58, {1, -1, 0x1234, -32768, 32767, 0x00FF, 0x0100}};
    const QByteArray b = packRecord(s);
    EXPECT_EQ(b, hex("FE FF 1F 0C 63 17 3B 3A 01 00 FF FF 34 12 00 80 FF 7F FF 00 00 01"));
    EXPECT_EQ(unpackRecord(b), s);

    EXPECT_EQ(Satz_Zeit(zeit), QStringLiteral("120305 14:07:09"));
    EXPECT_EQ(Satz_Zeit(RecordTime{1, 1, 106, 0, 0, 100}), QStringLiteral("1060101 00:00:100"));
    EXPECT_EQ(timeOfText(QStringLiteral("05.03.2012 14:07:09")), zeit);
    EXPECT_EQ(timeOfText(QStringLiteral("kein Datum")), RecordTime{});
}

// The recorder's tests check the whole group, the program text, the single
// sample and the operator text as they land in the file; here what only the
// builders show: the current group's kind, the import's raw w5, and the
// rounding rules at their edges.
TEST(BatchRecordBytes, SampleGroupKindsW5AndTenths)
{
    const auto g = groupRecords(block(Satz_Charge), zeit);
    EXPECT_EQ(packRecord(g[0]), hex("9A 00 05 03 0C 0E 07 09 34 12 FE FF 32 00 07 00 01 00 0B 0A FF 7F"));
    const auto s = groupRecords(block(Satz_Strom), zeit);
    EXPECT_EQ(packRecord(s[0]), hex("A0 00") + packRecord(g[0]).mid(2));
    EXPECT_EQ(packRecord(s[3]), hex("A3 00") + packRecord(g[3]).mid(2));
    // The USB import stores w5 as it stands.
    EXPECT_EQ(packRecord(groupRecords(block(Satz_Charge), zeit, true)[0]).mid(12, 2), hex("12 03"));

    // w5: the low byte alone when the high byte is 0, else four bits of the high byte above it.
    EXPECT_EQ((std::vector<int>{storedW5(0x0012), storedW5(static_cast<i16>(0xF3A5)), storedW5(0x1012)}),
              (std::vector<int>{0x12, 0xB5, 0x12}));

    const i16 in[] = {5, 6, 15, 35, -6, -15, -35, 32767, -32768, 32765};
    const i16 out[] = {0, 1, 2, 4, -1, -2, -4, 3277, -3277, 3276};
    for (int i = 0; i < 10; ++i)
        EXPECT_EQ(tenthsRounded(in[i]), out[i]) << in[i];
}

// The header is checked byte for byte where the recorder and the import write
// it; here a message text with control characters, Latin-1 and more than 22
// characters.
TEST(BatchRecordBytes, MessageTextRecord)
{
    EXPECT_EQ(packRecord(messageTextRecord(QString::fromLatin1("\x01" "Temperatur \xB0" "C hoch!  xyz+"))),
              QByteArray("atTemperur \xB0" "C hoch!  x"));
}
