// USB import on real source files in a temporary USB folder: the header
// checks and their boxes, the three forms, the targets' bytes, the duplicate
// rules, a stop in mid-file and sources that are broken.

#include "recording/usb_import.h"
#include "support/usb_quelle.h"
#include "test_recorder_fixture.h"

using namespace kal;
using namespace kal::test;

namespace {

class UsbImport : public FileTest {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(dir.isValid());
        FreshProcess::SetUp();
        plant.Pfad[0] = dir.path();
        plant.Pfad[2] = pathOf("USB");
        plant.Charge_Ordner[0] = pathOf("LogBuch");
        QDir().mkpath(plant.Pfad[2]);
        QDir().mkpath(plant.Charge_Ordner[0]);
        plant.USB_Menue = -1;
    }

    QString sourcePath(const char *name) const { return QDir(plant.Pfad[2]).filePath(QString::fromLatin1(name)); }
    QString targetPath(const char *name) const { return QDir(plant.Charge_Ordner[0]).filePath(QString::fromLatin1(name)); }
    QStringList targets() const { return QDir(plant.Charge_Ordner[0]).entryList(QDir::Files, QDir::Name); }

    /// Switches the import on and runs the page ticks until it stops by
    /// itself (no sources left) or `takte` ran; the ticks that ran.
    int runImport(int takte = 200)
    {
        if (USB.USB_Aktiv != 0)
            USB_Button();
        usbImportTick(); // the list, as the page reads it while idle
        USB_Button();
        int n = 0;
        while (n < takte && usbImportTick())
            ++n;
        return n;
    }
    QStringList boxes() const
    {
        QStringList t;
        for (const auto &s : dlg.shown)
            t << s.text;
        return t;
    }
};

TEST_F(UsbImport, Form60EmptiesItselfAndForm20StoresItsSamplesUnderTheLastSerial)
{
    // A form-60 source sorts first and leaves its serial and name for the form-20 source after it.
    UsbSourceBuilder kopf(60);
    kopf.addRecord(154, 12, 3, 2024, 8, 0, 0);
    ASSERT_TRUE(kopf.writeTo(sourcePath("A1")));
    UsbSourceBuilder q(20);
    q.addRecord(212, 12, 3, 2024, 8, 29, 50);                              // announces batch 12
    q.addRecord(5, 12, 3, 2024, 8, 30, 10, {1234, 1235, 7, 8, 9, 10, 11}); // a sample
    ASSERT_TRUE(q.writeTo(sourcePath("B2.DAT")));

    runImport();
    EXPECT_TRUE(dlg.shown.empty()) << boxes().join("|").toStdString();
    EXPECT_FALSE(QFile::exists(sourcePath("A1")) || QFile::exists(sourcePath("B2.DAT")));
    ASSERT_EQ(targets(), QStringList{"US2311042KLM00012120324.OVD"});
    const QByteArray b = fileContents(targetPath("US2311042KLM00012120324.OVD"));
    ASSERT_EQ(b.size(), 3 * 22);
    // The name record with the time of the first record, the announcement,
    // then the sample: w3, w4 in tenths rounded half to even, w5..w9.
    EXPECT_EQ(recordAt(b, 1), hex("4861 0C0318081D32 6572 746F 6665 6E20 3320 2020 2020"));
    EXPECT_EQ(recordAt(b, 2), hex("D400 0C0318081D32 0000 0000 0000 0000 0000 0000 0000"));
    EXPECT_EQ(recordAt(b, 3), hex("0500 0C0318081E0A 7B00 7C00 0700 0800 0900 0A00 0B00"));
}

TEST_F(UsbImport, Form20WithWrongCountIsToldAndARepeatedRecordIsNotWrittenAgain)
{
    UsbSourceBuilder q(20);
    q.addRecord(203, 12, 3, 2024, 23, 59, 40);
    q.addRecord(1, 12, 3, 2024, 23, 59, 50, {100});
    q.addRecord(1, 13, 3, 2024, 0, 0, 10, {200}); // after midnight: the next day's file
    q.addRecord(1, 13, 3, 2024, 0, 0, 10, {200}); // the same record again
    ASSERT_TRUE(q.writeTo(sourcePath("K.usb1"), 9)); // name of 6: passed over
    ASSERT_TRUE(q.writeTo(sourcePath("KLMN.usb"), 9));

    runImport();
    ASSERT_EQ(dlg.shown.size(), 1u);
    EXPECT_TRUE(dlg.shown[0].text.endsWith("KLMN.usb\nwrong Len\n6/10")) << dlg.shown[0].text.toStdString();
    EXPECT_TRUE(!QFile::exists(sourcePath("KLMN.usb")) && QFile::exists(sourcePath("K.usb1")));
    ASSERT_EQ(targets(), (QStringList{"US          00003120324.OVD", "US          00003130324.OVD"}));
    const QByteArray tag1 = fileContents(targetPath("US          00003120324.OVD"));
    const QByteArray tag2 = fileContents(targetPath("US          00003130324.OVD"));
    // The repeated record is not written again.
    EXPECT_EQ(both(tag1.size(), tag2.size()), both(3 * 22, 2 * 22));
}

/// A form-80 source: two groups of batch 7, the second with a w0 of 0.
UsbSourceBuilder form80()
{
    UsbSourceBuilder q(80);
    Words &a = q.addRecord(154, 12, 3, 2024, 8, 30, 10, {1000, 990, 0x0342, 7, 0, 0x11, 0x22});
    a[31] = 0x0B0A;
    Words &b = q.addRecord(0, 12, 3, 2024, 8, 30, 20, {1001, 991, 0x0042, 7, 0, 0x11, 0x22});
    b[31] = 0x0B0A;
    return q;
}

TEST_F(UsbImport, Form80WritesTheHeaderWithoutVersionAndItsGroupsFromRecord40AndAgainAsks)
{
    ASSERT_TRUE(form80().writeTo(sourcePath("P1.DAT")));
    runImport();
    EXPECT_TRUE(dlg.shown.empty());
    EXPECT_FALSE(QFile::exists(sourcePath("P1.DAT")));
    const char *name = "US2311042KLM00007120324.OVD";
    ASSERT_EQ(targets(), QStringList{name});
    const QByteArray b = fileContents(targetPath(name));
    ASSERT_EQ(b.size(), 47 * 22);
    EXPECT_EQ(recordAt(b, 1), hex("4861 0C0318081E0A 6572 746F 6665 6E20 3320 2020 2020"));
    EXPECT_EQ(recordAt(b, 2), hex("0001 0D0318081E0A 0002 0101 0102 0201 0202 0301 0302"));
    EXPECT_EQ(recordAt(b, 4), hex("0801 3A0318081E0A 0802 0901 0902 0A01 0A02 0000 0000"));
    for (int r = 5; r <= 7; ++r)
        EXPECT_EQ(recordAt(b, r), QByteArray(22, '\0')) << r;
    EXPECT_EQ(recordAt(b, 8), hex("6720 4D656C64756E 3030 2020 2020 2020 2020 2020 2020"));
    EXPECT_EQ(recordAt(b, 39).mid(8, 2), hex("3331")); // text 31 in record 39
    // w5 stands as it came; the kind-0 record became a group of 154.
    EXPECT_EQ(recordAt(b, 40), hex("9A00 0C0318081E0A E803 DE03 4203 0700 0000 1100 2200"));
    EXPECT_EQ(recordAt(b, 41).left(8), hex("9B00 0A0B00000000"));
    EXPECT_EQ(recordAt(b, 44), hex("9A00 0C0318081E14 E903 DF03 4200 0700 0000 1100 2200"));
    EXPECT_EQ(recordAt(b, 47).left(2), hex("9D00"));

    // A fresh station meets its own target: yes replaces it, same bytes.
    resetPlant();
    SetUp();
    ASSERT_TRUE(form80().writeTo(sourcePath("P1")));
    dlg.answers = {0};
    runImport();
    ASSERT_EQ(dlg.shown.size(), 1u);
    EXPECT_EQ(dlg.shown[0].kind, "choice");
    EXPECT_TRUE(dlg.shown[0].text.startsWith(targetPath(name) + "\n")) << dlg.shown[0].text.toStdString();
    EXPECT_TRUE(dlg.shown[0].text.endsWith("? "));
    EXPECT_EQ(fileContents(targetPath(name)), b);

    // Cancel passes the batch over; the source is done all the same.
    resetPlant();
    SetUp();
    ASSERT_TRUE(form80().writeTo(sourcePath("P1")));
    rawFile(targetPath(name), "kept");
    dlg.answers = {2};
    runImport();
    EXPECT_EQ(fileContents(targetPath(name)), "kept");
    EXPECT_FALSE(QFile::exists(sourcePath("P1")));
}

TEST_F(UsbImport, CompactRecordsGiveOneGroupPerBlockUntilABadDate)
{
    UsbSourceBuilder q(80);
    Words &r = q.addRecord(131, 12, 3, 2024, 9, 0, 0);
    r[3] = 9;                                    // batch
    r[11] = 500, r[12] = 480, r[13] = 0x0523;    // w3, w4; w5 the low byte alone, w21 the high byte
    Words zweiter(16);
    zweiter[0] = 131, zweiter[1] = usbDate(12, 3, 2024), zweiter[2] = usbTime(9, 1, 0), zweiter[3] = 9;
    std::copy(zweiter.begin(), zweiter.end(), r.begin() + 20);
    Words &s = q.addRecord(131, 12, 3, 2024, 9, 2, 0); // second block empty: its date ends the record
    s[3] = 9;
    ASSERT_TRUE(q.writeTo(sourcePath("C1")));
    runImport();
    const QByteArray b = fileContents(targetPath("US2311042KLM00009120324.OVD"));
    ASSERT_EQ(b.size(), 51 * 22);
    EXPECT_EQ(recordAt(b, 40), hex("9A00 0C0318090000 F401 E001 2300 0900 0000 0000 0000"));
    EXPECT_EQ(recordAt(b, 42).mid(16, 2), hex("0500"));
    EXPECT_EQ(recordAt(b, 44).left(8), hex("9A00 0C0318090100"));
    EXPECT_EQ(recordAt(b, 48).left(8), hex("9A00 0C0318090200"));
}

TEST_F(UsbImport, WrongHeaderIsAHardStopAndShortForm80IsToldEveryTick)
{
    UsbSourceBuilder falsch(20);
    falsch.addRecord(203, 12, 3, 2024, 8, 0, 0);
    QByteArray b = falsch.bytes();
    b[0] = char(0xE6); // 998
    rawFile(sourcePath("A1"), b);
    ASSERT_TRUE(falsch.writeTo(sourcePath("B1")));
    runImport(3);
    EXPECT_EQ(boxes(), QStringList(3, "USB-Import \n" + sourcePath("A1") + "\nwrong Header"));
    EXPECT_TRUE(targets().isEmpty());
    USB_Button(); // the operator switches it off
    EXPECT_FALSE(usbImportTick());
    EXPECT_EQ(dlg.shown.size(), 3u);

    // The operator takes the sources away.
    dlg.shown.clear();
    QFile::remove(sourcePath("A1"));
    QFile::remove(sourcePath("B1"));
    UsbSourceBuilder kurz(80);
    kurz.saetze.resize(17);
    ASSERT_TRUE(kurz.writeTo(sourcePath("S1")));
    runImport(2);
    EXPECT_EQ(boxes(), QStringList(2, "USB-Import \n" + sourcePath("S1") + "\nwrong header-len")) << boxes().join("|").toStdString();
    EXPECT_TRUE(QFile::exists(sourcePath("S1")));
}

TEST_F(UsbImport, StopInMidFileKeepsTheSourceAndTheRestartDoublesNothing)
{
    UsbSourceBuilder q(20);
    q.addRecord(201, 12, 3, 2024, 8, 0, 0);
    for (int i = 0; i < 120; ++i)
        q.addRecord(1, 12, 3, 2024, 8 + i / 60, i % 60, 0, {int16_t(i * 10)});
    ASSERT_TRUE(q.writeTo(sourcePath("L1")));
    runImport(2); // opens, then stores 50 records
    USB_Button();
    EXPECT_EQ(USB.USB_Satz, 53);
    EXPECT_TRUE(QFile::exists(sourcePath("L1")));
    runImport();
    EXPECT_FALSE(QFile::exists(sourcePath("L1")));
    EXPECT_EQ(fileContents(targetPath(targets().value(0).toLatin1())).size(), 122 * 22);
}

TEST_F(UsbImport, BrokenSourcesNeverStopTheStation)
{
    rawFile(sourcePath("Z0"), QByteArray());                    // empty
    UsbSourceBuilder luegt(80);
    luegt.addRecord(154, 12, 3, 2024, 8, 0, 0);
    QByteArray kurz = luegt.bytes(40);
    rawFile(sourcePath("Z1"), kurz.left(kurz.size() - 30));     // truncated, header lies
    UsbSourceBuilder ungerade(20);
    ungerade.addRecord(204, 12, 3, 2024, 8, 0, 0);
    ungerade.addRecord(1, 0, 3, 2024, 8, 0, 0);              // day 0
    ungerade.addRecord(1, 12, 13, 2024, 8, 0, 0);            // month 13
    ungerade.addRecord(1, 12, 3, 2005, 8, 0, 0);             // year 5
    ungerade.addRecord(1, 12, 3, 2024, 24, 0, 0);            // hour 24
    ungerade.addRecord(1, 12, 3, 2024, 8, 60, 0);            // minute 60
    ungerade.addRecord(1, 12, 3, 2024, 8, 1, 0, {5});        // the one good sample
    rawFile(sourcePath("Z2"), ungerade.bytes() + "x");          // odd length
    QDir().mkpath(sourcePath("Z3"));                        // a folder named like a source

    for (const char *n : {"Z0", "Z1"}) {
        runImport(1);
        EXPECT_TRUE(QFile::exists(sourcePath(n)));
        QFile::remove(sourcePath(n)); // the operator takes it away
    }
    EXPECT_EQ(boxes(), (QStringList{"USB-Import \n" + sourcePath("Z0") + "\nwrong Header",
                                    "USB-Import \n" + sourcePath("Z1") + "\nwrong Len\n19/41"}));
    runImport();
    EXPECT_FALSE(QFile::exists(sourcePath("Z2")));
    EXPECT_TRUE(QFileInfo(sourcePath("Z3")).isDir());
    // No header of form 80 or 60 came before: the form-20 file has no serial.
    const QByteArray b = fileContents(targetPath("US          00004120324.OVD"));
    ASSERT_EQ(b.size(), 3 * 22);
    EXPECT_EQ(recordAt(b, 3).left(2), hex("0100"));
}

} // namespace
