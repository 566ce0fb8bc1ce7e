// Reading batch files back: layouts, the two passes and damaged files.

#include "test_recorder_fixture.h"

#include "recording/batch_reader.h"


using namespace kal;
using namespace kal::test;

namespace {

QDateTime dt(int d, int m, int y, int h, int mi, int s) { return QDateTime(QDate(y, m, d), QTime(h, mi, s), Qt::UTC); }

BatchRecord offerSample(i16 art, RecordTime z, i16 wert6 = 0)
{
    BatchRecord s{art};
    setRecordTime(s, z);
    s.Wert[6] = wert6;
    return s;
}

std::array<BatchRecord, 4> groupRecordsOf(i16 art, RecordTime z)
{
    LogBlock w{art};
    for (int n = 10; n < 40; ++n)
        w[n] = static_cast<i16>(n * 256 + 0xA0 + n);
    return groupRecords(w, z);
}

const std::array<i16, 12> kennungA{0x10A, 0x10B, 0x70C, 0x0D, 0x250F, 0, 0, 0, 0, 0, 0, 7};
const std::array<i16, 12> kennungB{0x2A, 0x2B, 0x31, 0x24, 0x3F, 0, 0, 0, 0, 0, 0, 8};

class BatchReaderTest : public FileTest {
protected:
    template <typename... R>
    void putRecords(const QString &p, int nr, const R &...saetze)
    {
        BatchFile f;
        f.open(p);
        (f.write(nr++, saetze), ...);
    }
    void putRecords(const QString &p, int nr, const std::array<BatchRecord, 4> &g) { putRecords(p, nr, g[0], g[1], g[2], g[3]); }
    void writeTestHead(const QString &p, bool mitVersion = true)
    {
        BatchFile f;
        f.open(p);
        for (const auto &[nr, s] : headerRecords(QStringLiteral("Ofen 2 Vakuum"), RecordTime{5, 3, 12, 14, 0, 0}, kennungA,
                                               kennungB, {QStringLiteral("Tuer offen"), QStringLiteral("Uebertemperatur")},
                                               mitVersion))
            f.write(nr, s);
    }
    void clearMarker(const QString &p, int nr)
    {
        BatchFile f;
        f.open(p);
        BatchRecord s = f.read(nr);
        s.Tag = 0;
        f.write(nr, s);
    }
    static std::vector<int> recordNumbers(const BatchRead &r)
    {
        std::vector<int> v;
        for (const auto &a : r.saetze)
            v.push_back(a.nr);
        return v;
    }
};

} // namespace

TEST_F(BatchReaderTest, HeadedFileOfThirtyNineRecordsThenTheFirstGroupAtForty)
{
    const QString p = pathOf("D1203017GKD000005050312.OVD");
    writeTestHead(p);
    BatchRead r = readBatch(p);
    EXPECT_TRUE(r.layout.kopf && r.saetze.empty());
    EXPECT_EQ((std::vector<int>{r.layout.satzZahl, r.layout.dateiTyp, r.span.zeitSaetze}),
              (std::vector<int>{39, -10, 0}));

    putRecords(p, 40, groupRecordsOf(Satz_Charge, RecordTime{5, 3, 12, 14, 7, 9}));
    putRecords(p, 44, groupRecordsOf(Satz_Charge, RecordTime{5, 3, 12, 15, 0, 0}));
    LogBlock w{};
    text(w, 31, "PROG-0815 Stahl ");
    putRecords(p, 48, programTextRecord(w, RecordTime{5, 3, 12, 14, 0, 0}));
    putRecords(p, 49, groupRecordsOf(Satz_Strom, RecordTime{5, 3, 12, 16, 0, 0}));

    r = readBatch(p);
    EXPECT_EQ(r.layout.titel + r.layout.version, QStringLiteral("Ofen 2 Vakuum   V5.5 -  2.12.2015   "));
    EXPECT_EQ(r.layout.kennungA, kennungA);
    EXPECT_EQ(r.layout.kennungB, kennungB);
    // Record 39 is read as well.
    ASSERT_EQ(r.layout.meldTexte.size(), 32u);
    EXPECT_EQ(r.layout.meldTexte[1] + r.layout.meldTexte[31], QStringLiteral("Uebertemperatur       ") + QString(22, QLatin1Char(' ')));
    EXPECT_EQ(r.span.zeitSaetze, 3);
    EXPECT_EQ(r.span.erster.toString(Qt::ISODate) + r.span.letzter.toString(Qt::ISODate),
              QStringLiteral("2012-03-05T14:07:09Z2012-03-05T16:00:00Z"));
    EXPECT_EQ(r.span.programmText, QStringLiteral("PROG-0815 Stahl "));
    // The program text holds characters where minute and second are: the curve
    // pass drops it. Group records take the key of the last record with a
    // time; the element current group has none of its own there.
    EXPECT_EQ(recordNumbers(r), (std::vector<int>{40, 41, 42, 43, 44, 45, 46, 47, 49, 50, 51, 52}));
    EXPECT_EQ(r.saetze[3].key(), QStringLiteral("120305 14:07:09"));
    EXPECT_EQ(r.saetze[8].key(), QStringLiteral("120305 15:00:00"));
}

TEST_F(BatchReaderTest, HeaderDamageAndMissingVersion)
{
    const QString a = pathOf("ohne_version.OVD");
    writeTestHead(a, false);
    BatchRead r = readBatch(a);
    EXPECT_TRUE(r.layout.kopf && !r.layout.versionDa);

    // Markers 13 and 10 but not 58: plain, data from record 5. Version and text
    // records have characters of code 32 and up as day: none passes as a time.
    const QString b = pathOf("ohne_58.OVD");
    writeTestHead(b);
    clearMarker(b, 4);
    putRecords(b, 40, offerSample(1, RecordTime{6, 3, 12, 8, 0, 0}));
    r = readBatch(b);
    EXPECT_FALSE(r.layout.kopf);
    EXPECT_EQ((std::vector<int>{r.layout.kennungSaetze, r.layout.kennungA[4], r.layout.kennungA[11], r.layout.startSatz,
                                r.span.zeitSaetze}),
              (std::vector<int>{2, 0x250F, 0, 5, 1}));
    EXPECT_EQ(recordNumbers(r), std::vector<int>{40});

    // Without the first marker no identity record counts at all.
    clearMarker(b, 2);
    EXPECT_EQ(readBatch(b).layout.kennungSaetze, 0);
}

TEST_F(BatchReaderTest, PlainAndQrvFiles)
{
    const QString p = pathOf("plain.OVD");
    putRecords(p, 40, offerSample(1, RecordTime{6, 3, 12, 8, 0, 0}), offerSample(2, RecordTime{6, 3, 12, 9, 30, 0}));
    BatchRead r = readBatch(p);
    EXPECT_EQ((std::vector<int>{r.layout.dateiTyp, r.layout.startSatz, r.layout.alt110}), (std::vector<int>{0, 5, 0}));
    EXPECT_EQ(r.span.letzter, dt(6, 3, 2012, 9, 30, 0));
    EXPECT_EQ(recordNumbers(r), (std::vector<int>{40, 41}));
    // Kind 110 marks the older plain form, from record 5 on only.
    putRecords(p, 3, offerSample(Satz_Alt, RecordTime{6, 3, 12, 8, 0, 0}));
    EXPECT_FALSE(readBatch(p).layout.alt110);
    putRecords(p, 42, offerSample(Satz_Alt, RecordTime{6, 3, 12, 10, 0, 0}));
    EXPECT_TRUE(readBatch(p).layout.alt110);

    QDir(dir.path()).mkpath(QStringLiteral("x"));
    const QString h = pathOf("x/D0708001QRV000001050312.OVD");
    writeTestHead(h);
    EXPECT_EQ(readBatch(h).layout.dateiTyp, 0);
    const QString q = pathOf("x/US0708001QRV00001050312.OVD");
    putRecords(q, 10, offerSample(1, RecordTime{6, 3, 12, 8, 0, 0}));
    putRecords(q, 40, offerSample(1, RecordTime{6, 3, 12, 9, 0, 0}));
    EXPECT_EQ(recordNumbers(readBatch(q)), std::vector<int>{40});
}

TEST_F(BatchReaderTest, TextRecordsAmidDataNeverReachTheDateTest)
{
    const QString p = pathOf("text.OVD");
    writeTestHead(p);
    putRecords(p, 40, groupRecordsOf(Satz_Charge, RecordTime{5, 3, 12, 14, 0, 0}));
    ASSERT_TRUE(Chargendaten_Speichern(p, QStringLiteral("Kunde Maier, Auftrag 4711")));
    putRecords(p, 60, groupRecordsOf(Satz_Charge, RecordTime{5, 3, 12, 15, 0, 0}));
    BatchRead r = readBatch(p);
    EXPECT_EQ(r.span.chargendaten, QStringLiteral("Kunde Maier, Auftrag 4711").leftJustified(160));
    EXPECT_EQ(recordNumbers(r), (std::vector<int>{40, 41, 42, 43, 60, 61, 62, 63}));

    // In a plain file every record counts; this text's first characters would
    // read as 01.01.2007 00:00:00.
    const QString q = pathOf("plain_text.OVD");
    BatchRecord t{Satz_Text, 1, 1, 7, 0, 0, 0, {0x3231, 0x3433}};
    putRecords(q, 40, offerSample(1, RecordTime{6, 3, 12, 8, 0, 0}), t, offerSample(1, RecordTime{6, 3, 12, 9, 0, 0}));
    r = readBatch(q);
    EXPECT_EQ(r.span.erster, dt(6, 3, 2012, 8, 0, 0));
    EXPECT_EQ(r.span.chargendaten.left(10), QString::fromLatin1("\x01\x01\x07\x00\x00\x00" "1234", 10));
    EXPECT_EQ(recordNumbers(r), (std::vector<int>{40, 42}));
}

TEST_F(BatchReaderTest, SpanAtMinuteResolutionOfBuiltDates)
{
    const QString p = pathOf("span.OVD");
    putRecords(p, 40, offerSample(1, RecordTime{1, 3, 12, 9, 0, 0}),
             offerSample(1, RecordTime{30, 2, 12, 10, 0, 0}), // runs on to 29.02.2012, before March
             offerSample(1, RecordTime{1, 3, 12, 9, 0, 50}),  // same minute as record 40: not later
             offerSample(1, RecordTime{10, 3, 12, 24, 30, 0}), // hour 24 is 0 of the same day
             offerSample(1, RecordTime{2, 3, 12, 9, 0, 60}),   // second 60: out of the span, kept by the curve pass
             offerSample(1, RecordTime{2, 13, 12, 9, 0, 0}),   // month 13: out of both
             offerSample(1, RecordTime{2, 3, 5, 9, 0, 0}));    // year 5: out of the span only
    BatchRead r = readBatch(p);
    EXPECT_EQ(r.span.zeitSaetze, 4);
    EXPECT_EQ(r.span.erster.toString(Qt::ISODate) + r.span.letzter.toString(Qt::ISODate),
              QStringLiteral("2012-02-29T10:00:00Z2012-03-10T00:30:00Z"));
    // The curve pass takes hours up to 23 only.
    EXPECT_EQ(recordNumbers(r), (std::vector<int>{40, 41, 42, 44, 46}));
    EXPECT_EQ(r.saetze[3].key(), QStringLiteral("120302 09:00:60"));
}

TEST_F(BatchReaderTest, CurvePassDropsRepeatsAndHandsOnOnlyNewRecords)
{
    const QString p = pathOf("dup.OVD");
    const BatchRecord a = offerSample(1, RecordTime{6, 3, 12, 8, 0, 0});
    putRecords(p, 40, a, a, offerSample(1, RecordTime{6, 3, 12, 8, 0, 0}, 1), a);
    EXPECT_EQ(recordNumbers(readBatch(p)), (std::vector<int>{40, 42, 43}));
    // A refresh walks the file again and hands on only what lies beyond the last record taken.
    putRecords(p, 44, offerSample(1, RecordTime{6, 3, 12, 8, 1, 0}));
    BatchRead r = readBatch(p, 43);
    EXPECT_EQ(recordNumbers(r), std::vector<int>{44});
    EXPECT_EQ(r.satzLetzter, 44);
    r = readBatch(p, 44);
    EXPECT_TRUE(r.saetze.empty() && r.satzLetzter == 44);
    // The walk ends when the receiver says so.
    BatchFile f;
    ASSERT_TRUE(f.openRead(p));
    int gesehen = 0;
    EXPECT_EQ(walkRecords(f, detectLayout(f), 0, [&](const AcceptedRecord &) { return ++gesehen < 2; }), 42);
}

TEST_F(BatchReaderTest, MissingShortAndTruncatedFiles)
{
    EXPECT_FALSE(readBatch(pathOf("fehlt.OVD")).gefunden);
    const QString eins = pathOf("eins.OVD");
    putRecords(eins, 1, offerSample(1, RecordTime{6, 3, 12, 8, 0, 0}));
    BatchRead r = readBatch(eins); // one record: an empty batch
    EXPECT_TRUE(r.gefunden && r.span.zeitSaetze == 0 && r.saetze.empty());

    // Torn in the middle of its message texts, and in the middle of a group.
    const QString p = pathOf("riss.OVD");
    writeTestHead(p);
    putRecords(p, 40, groupRecordsOf(Satz_Charge, RecordTime{5, 3, 12, 14, 0, 0}));
    QFile::copy(p, pathOf("riss2.OVD"));
    QFile(p).resize(20 * 22 + 7);
    r = readBatch(p);
    EXPECT_TRUE(r.layout.kopf && r.saetze.empty());
    QFile(pathOf("riss2.OVD")).resize(41 * 22 + 12);
    EXPECT_EQ(recordNumbers(readBatch(pathOf("riss2.OVD"))), (std::vector<int>{40, 41, 42}));
}
