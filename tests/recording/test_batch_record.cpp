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

TEST(BatchRecordBytes, SampleGroupPlacesEveryWordOnce)
{
    const auto g = groupRecords(block(Satz_Charge), zeit);
    EXPECT_EQ(packRecord(g[0]), hex("9A 00 05 03 0C 0E 07 09 34 12 FE FF 32 00 07 00 01 00 0B 0A FF 7F"));
    EXPECT_EQ(packRecord(g[1]), hex("9B 00 BF 1F C0 20 C1 21 AA 0A AB 0B AC 0C AD 0D AE 0E AF 0F B0 10"));
    EXPECT_EQ(packRecord(g[2]), hex("9C 00 C2 22 C3 23 C4 24 B1 11 B2 12 B3 13 B4 14 B5 15 B6 16 B7 17"));
    EXPECT_EQ(packRecord(g[3]), hex("9D 00 C5 25 C6 26 C7 27 B8 18 B9 19 BA 1A BB 1B BC 1C BD 1D BE 1E"));
    const auto s = groupRecords(block(Satz_Strom), zeit);
    EXPECT_EQ(packRecord(s[0]), hex("A0 00") + packRecord(g[0]).mid(2));
    EXPECT_EQ(packRecord(s[3]), hex("A3 00") + packRecord(g[3]).mid(2));
    // The USB import stores w5 as it stands.
    EXPECT_EQ(packRecord(groupRecords(block(Satz_Charge), zeit, true)[0]).mid(12, 2), hex("12 03"));

    // w5: the low byte alone when the high byte is 0, else four bits of the high byte above it.
    EXPECT_EQ((std::vector<int>{storedW5(0x0012), storedW5(static_cast<i16>(0xF3A5)), storedW5(0x1012)}),
              (std::vector<int>{0x12, 0xB5, 0x12}));
}

TEST(BatchRecordBytes, ProgramTextAndSingleSample)
{
    LogBlock w = block(Satz_Programm);
    text(w, 31, "PROG-0815 Stahl ");
    EXPECT_EQ(packRecord(programTextRecord(w, zeit)), hex("9F 00 05 03 0C 0E") + QByteArray("PROG-0815 Stahl "));

    w = block(100);
    w[3] = 215; // 21.5 -> 22
    w[4] = -25; // -2.5 -> -2
    EXPECT_EQ(packRecord(Satz_Einzel(w, zeit)),
              hex("64 00 05 03 0C 0E 07 09 16 00 FE FF 12 03 07 00 01 00 0B 0A FF 7F"));
    const i16 in[] = {5, 6, 15, 35, -6, -15, -35, 32767, -32768, 32765};
    const i16 out[] = {0, 1, 2, 4, -1, -2, -4, 3277, -3277, 3276};
    for (int i = 0; i < 10; ++i)
        EXPECT_EQ(tenthsRounded(in[i]), out[i]) << in[i];
}

TEST(BatchRecordBytes, TextRecords)
{
    // Batch data text, 160 characters in 9001..9016, blank padded.
    const auto t = batchDataRecords(QStringLiteral("Auftrag 4711, Kunde Maier, Los 12"));
    EXPECT_EQ(packRecord(t[0]), hex("29 23") + QByteArray("Auftrag 47") + QByteArray(10, '\0'));
    EXPECT_EQ(packRecord(t[3]), hex("2C 23") + QByteArray(" 12       ") + QByteArray(10, '\0'));
    EXPECT_EQ(packRecord(t[15]), hex("38 23") + QByteArray(10, ' ') + QByteArray(10, '\0'));

    // The PLC's short form takes w10..w14 and w15..w19; the rest is the buffer's.
    LogBlock w = block(9001);
    text(w, 10, "Auftrag 12Los 7/B   ");
    BatchRecord puffer{157, 9, 9, 9, 9, 9, 9, {-1, -1, 1, 2, 3, 4, 5}};
    const auto s = plcTextRecords(w, puffer);
    const QByteArray rest = hex("01 00 02 00 03 00 04 00 05 00");
    EXPECT_EQ(packRecord(s[0]), hex("29 23") + QByteArray("Auftrag 12") + rest);
    EXPECT_EQ(packRecord(s[1]), hex("2A 23") + QByteArray("Los 7/B   ") + rest);
}

// The header as the recorder writes it is checked byte for byte with the
// recorder; here the import's set without record 5, and message texts with
// control characters, Latin-1 and more than 22 characters.
TEST(BatchRecordBytes, HeaderRecords)
{
    EXPECT_EQ(packRecord(messageTextRecord(QString::fromLatin1("\x01" "Temperatur \xB0" "C hoch!  xyz+"))),
              QByteArray("atTemperur \xB0" "C hoch!  x"));
    const auto usb = headerRecords(QStringLiteral("Ofen 1"), zeit, {}, {}, {}, false);
    ASSERT_EQ(usb.size(), 36u);
    EXPECT_EQ(usb[3].first, 4);
    EXPECT_EQ(usb[4].first, 8);
    EXPECT_EQ(usb.back().first, 39);
}
