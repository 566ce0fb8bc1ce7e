// USB import on real source files in a temporary USB folder: the header
// checks and their boxes, the three forms, the targets' bytes, the duplicate
// rules, a stop in mid-file and sources that are broken.

#include "recording/usb_import.h"
#include "support/usb_quelle.h"
#include "test_recorder_fixture.h"

using namespace kal;
using namespace kal::test;

namespace {

class UsbImport : public DateiTest {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(dir.isValid());
        FreshProcess::SetUp();
        plant.Pfad[0] = dir.path();
        plant.Pfad[2] = pfad("USB");
        plant.Charge_Ordner[0] = pfad("LogBuch");
        QDir().mkpath(plant.Pfad[2]);
        QDir().mkpath(plant.Charge_Ordner[0]);
        plant.USB_Menue = -1;
    }

    QString quelle(const char *name) const { return QDir(plant.Pfad[2]).filePath(QString::fromLatin1(name)); }
    QString ziel(const char *name) const { return QDir(plant.Charge_Ordner[0]).filePath(QString::fromLatin1(name)); }
    QStringList ziele() const { return QDir(plant.Charge_Ordner[0]).entryList(QDir::Files, QDir::Name); }

    /// Switches the import on and runs the page ticks until it stops by
    /// itself (no sources left) or `takte` ran; the ticks that ran.
    int importieren(int takte = 200)
    {
        if (USB.USB_Aktiv != 0)
            USB_Button();
        USB_Import_Takt(); // the list, as the page reads it while idle
        USB_Button();
        int n = 0;
        while (n < takte && USB_Import_Takt())
            ++n;
        return n;
    }
    QStringList boxen() const
    {
        QStringList t;
        for (const auto &s : dlg.shown)
            t << s.text;
        return t;
    }
};

/// A form-60 source that sorts first and leaves its serial and name for the
/// form-20 source after it.
void form60(const QString &p)
{
    UsbQuelle q(60);
    q.satz(154, 12, 3, 2024, 8, 0, 0);
    ASSERT_TRUE(q.schreiben(p));
}

TEST_F(UsbImport, Form60EmptiesItselfAndForm20StoresItsSamplesUnderTheLastSerial)
{
    form60(quelle("A1"));
    UsbQuelle q(20);
    q.satz(212, 12, 3, 2024, 8, 29, 50);                              // announces batch 12
    q.satz(5, 12, 3, 2024, 8, 30, 10, {1234, 1235, 7, 8, 9, 10, 11}); // a sample
    ASSERT_TRUE(q.schreiben(quelle("B2.DAT")));

    importieren();
    EXPECT_TRUE(dlg.shown.empty()) << boxen().join("|").toStdString();
    EXPECT_FALSE(QFile::exists(quelle("A1")));
    EXPECT_FALSE(QFile::exists(quelle("B2.DAT")));
    ASSERT_EQ(ziele(), QStringList{"US2311042KLM00012120324.OVD"});
    const QByteArray b = inhalt(ziel("US2311042KLM00012120324.OVD"));
    ASSERT_EQ(b.size(), 3 * 22);
    // The name record with the time of the first record, the announcement,
    // then the sample: w3, w4 in tenths rounded half to even, w5..w9.
    EXPECT_EQ(satz(b, 1), hex("4861 0C0318081D32 6572 746F 6665 6E20 3320 2020 2020"));
    EXPECT_EQ(satz(b, 2), hex("D400 0C0318081D32 0000 0000 0000 0000 0000 0000 0000"));
    EXPECT_EQ(satz(b, 3), hex("0500 0C0318081E0A 7B00 7C00 0700 0800 0900 0A00 0B00"));
}

TEST_F(UsbImport, Form20WithWrongCountIsToldAndImportedTwiceDoublesNothing)
{
    UsbQuelle q(20);
    q.satz(203, 12, 3, 2024, 23, 59, 40);
    q.satz(1, 12, 3, 2024, 23, 59, 50, {100});
    q.satz(1, 13, 3, 2024, 0, 0, 10, {200}); // after midnight: the next day's file
    q.satz(1, 13, 3, 2024, 0, 0, 10, {200}); // the same record again
    ASSERT_TRUE(q.schreiben(quelle("K.usb1"), 9)); // name of 6: passed over
    ASSERT_TRUE(q.schreiben(quelle("KLMN.usb"), 9));

    importieren();
    ASSERT_EQ(dlg.shown.size(), 1u);
    EXPECT_TRUE(dlg.shown[0].text.endsWith("KLMN.usb\nwrong Len\n6/10")) << dlg.shown[0].text.toStdString();
    EXPECT_FALSE(QFile::exists(quelle("KLMN.usb")));
    EXPECT_TRUE(QFile::exists(quelle("K.usb1")));
    const QStringList dateien = ziele();
    ASSERT_EQ(dateien.size(), 2);
    EXPECT_TRUE(dateien[0].endsWith("00003120324.OVD"));
    EXPECT_TRUE(dateien[1].endsWith("00003130324.OVD"));
    const QByteArray tag1 = inhalt(ziel(dateien[0].toLatin1()));
    const QByteArray tag2 = inhalt(ziel(dateien[1].toLatin1()));
    EXPECT_EQ(tag1.size(), 3 * 22);
    EXPECT_EQ(tag2.size(), 2 * 22); // the repeated record is not written again

    ASSERT_TRUE(q.schreiben(quelle("KLMN.usb"), 9));
    importieren();
    EXPECT_EQ(inhalt(ziel(dateien[0].toLatin1())), tag1);
    EXPECT_EQ(inhalt(ziel(dateien[1].toLatin1())), tag2);
}

/// A form-80 source: two groups of batch 7, the second with a w0 of 0.
UsbQuelle form80()
{
    UsbQuelle q(80);
    Worte &a = q.satz(154, 12, 3, 2024, 8, 30, 10, {1000, 990, 0x0342, 7, 0, 0x11, 0x22});
    a[31] = 0x0B0A;
    Worte &b = q.satz(0, 12, 3, 2024, 8, 30, 20, {1001, 991, 0x0042, 7, 0, 0x11, 0x22});
    b[31] = 0x0B0A;
    return q;
}

TEST_F(UsbImport, Form80WritesTheHeaderWithoutVersionAndItsGroupsFromRecord40)
{
    ASSERT_TRUE(form80().schreiben(quelle("P1.DAT")));
    importieren();
    EXPECT_TRUE(dlg.shown.empty());
    EXPECT_FALSE(QFile::exists(quelle("P1.DAT")));
    const QString name = "US2311042KLM00007120324.OVD";
    ASSERT_EQ(ziele(), QStringList{name});
    const QByteArray b = inhalt(ziel(name.toLatin1()));
    ASSERT_EQ(b.size(), 47 * 22);
    EXPECT_EQ(satz(b, 1), hex("4861 0C0318081E0A 6572 746F 6665 6E20 3320 2020 2020"));
    EXPECT_EQ(satz(b, 2), hex("0001 0D0318081E0A 0002 0101 0102 0201 0202 0301 0302"));
    EXPECT_EQ(satz(b, 4), hex("0801 3A0318081E0A 0802 0901 0902 0A01 0A02 0000 0000"));
    for (int r = 5; r <= 7; ++r)
        EXPECT_EQ(satz(b, r), QByteArray(22, '\0')) << r;
    EXPECT_EQ(satz(b, 8), hex("6720 4D656C64756E 3030 2020 2020 2020 2020 2020 2020"));
    EXPECT_EQ(satz(b, 39).mid(8, 2), hex("3331")); // text 31 in record 39
    // w5 stands as it came; the kind-0 record became a group of 154.
    EXPECT_EQ(satz(b, 40), hex("9A00 0C0318081E0A E803 DE03 4203 0700 0000 1100 2200"));
    EXPECT_EQ(satz(b, 41).left(8), hex("9B00 0A0B00000000"));
    EXPECT_EQ(satz(b, 44), hex("9A00 0C0318081E14 E903 DF03 4200 0700 0000 1100 2200"));
    EXPECT_EQ(satz(b, 47).left(2), hex("9D00"));
}

TEST_F(UsbImport, Form80AgainAsksAndReplacesOrSkips)
{
    ASSERT_TRUE(form80().schreiben(quelle("P1")));
    importieren();
    const QString name = "US2311042KLM00007120324.OVD";
    const QByteArray erst = inhalt(ziel(name.toLatin1()));

    // A fresh station meets its own target: yes replaces it, same bytes.
    resetPlant();
    SetUp();
    ASSERT_TRUE(form80().schreiben(quelle("P1")));
    dlg.answers = {0};
    importieren();
    ASSERT_EQ(dlg.shown.size(), 1u);
    EXPECT_EQ(dlg.shown[0].kind, "choice");
    EXPECT_TRUE(dlg.shown[0].text.startsWith(ziel(name.toLatin1()) + "\n")) << dlg.shown[0].text.toStdString();
    EXPECT_TRUE(dlg.shown[0].text.endsWith("? "));
    EXPECT_EQ(inhalt(ziel(name.toLatin1())), erst);

    // Cancel passes the batch over; the source is done all the same.
    resetPlant();
    SetUp();
    ASSERT_TRUE(form80().schreiben(quelle("P1")));
    roh(ziel(name.toLatin1()), "kept");
    dlg.answers = {2};
    importieren();
    EXPECT_EQ(inhalt(ziel(name.toLatin1())), "kept");
    EXPECT_FALSE(QFile::exists(quelle("P1")));
}

TEST_F(UsbImport, CompactRecordsGiveOneGroupPerBlockUntilABadDate)
{
    UsbQuelle q(80);
    Worte &r = q.satz(131, 12, 3, 2024, 9, 0, 0);
    r[3] = 9;                                    // batch
    r[11] = 500, r[12] = 480, r[13] = 0x0523;    // w3, w4; w5 the low byte alone, w21 the high byte
    Worte zweiter(16);
    zweiter[0] = 131, zweiter[1] = usbTag(12, 3, 2024), zweiter[2] = usbZeit(9, 1, 0), zweiter[3] = 9;
    std::copy(zweiter.begin(), zweiter.end(), r.begin() + 20);
    Worte &s = q.satz(131, 12, 3, 2024, 9, 2, 0); // second block empty: its date ends the record
    s[3] = 9;
    ASSERT_TRUE(q.schreiben(quelle("C1")));
    importieren();
    const QByteArray b = inhalt(ziel("US2311042KLM00009120324.OVD"));
    ASSERT_EQ(b.size(), 51 * 22);
    EXPECT_EQ(satz(b, 40), hex("9A00 0C0318090000 F401 E001 2300 0900 0000 0000 0000"));
    EXPECT_EQ(satz(b, 42).mid(16, 2), hex("0500"));
    EXPECT_EQ(satz(b, 44).left(8), hex("9A00 0C0318090100"));
    EXPECT_EQ(satz(b, 48).left(8), hex("9A00 0C0318090200"));
}

TEST_F(UsbImport, WrongHeaderIsAHardStopAndShortForm80IsToldEveryTick)
{
    UsbQuelle falsch(20);
    falsch.satz(203, 12, 3, 2024, 8, 0, 0);
    QByteArray b = falsch.bytes();
    b[0] = char(0xE6); // 998
    roh(quelle("A1"), b);
    ASSERT_TRUE(falsch.schreiben(quelle("B1")));
    importieren(3);
    EXPECT_EQ(boxen(), QStringList(3, "USB-Import \n" + quelle("A1") + "\nwrong Header"));
    EXPECT_TRUE(ziele().isEmpty());
    USB_Button(); // the operator switches it off
    EXPECT_FALSE(USB_Import_Takt());
    EXPECT_EQ(dlg.shown.size(), 3u);

    resetPlant();
    SetUp();
    dlg.shown.clear();
    QFile::remove(quelle("A1"));
    QFile::remove(quelle("B1"));
    UsbQuelle kurz(80);
    kurz.saetze.resize(17);
    ASSERT_TRUE(kurz.schreiben(quelle("S1")));
    importieren(2);
    EXPECT_EQ(boxen(), QStringList(2, "USB-Import \n" + quelle("S1") + "\nwrong header-len")) << boxen().join("|").toStdString();
    EXPECT_TRUE(QFile::exists(quelle("S1")));
}

TEST_F(UsbImport, StopInMidFileKeepsTheSourceAndTheRestartDoublesNothing)
{
    UsbQuelle q(20);
    q.satz(201, 12, 3, 2024, 8, 0, 0);
    for (int i = 0; i < 120; ++i)
        q.satz(1, 12, 3, 2024, 8 + i / 60, i % 60, 0, {int16_t(i * 10)});
    ASSERT_TRUE(q.schreiben(quelle("L1")));
    importieren(2); // opens, then stores 50 records
    USB_Button();
    EXPECT_EQ(USB.USB_Satz, 53);
    EXPECT_TRUE(QFile::exists(quelle("L1")));
    importieren();
    EXPECT_FALSE(QFile::exists(quelle("L1")));
    EXPECT_EQ(inhalt(ziel(ziele().value(0).toLatin1())).size(), 122 * 22);
}

TEST_F(UsbImport, BrokenSourcesNeverStopTheStation)
{
    roh(quelle("Z0"), QByteArray());                    // empty
    UsbQuelle luegt(80);
    luegt.satz(154, 12, 3, 2024, 8, 0, 0);
    QByteArray kurz = luegt.bytes(40);
    roh(quelle("Z1"), kurz.left(kurz.size() - 30));     // truncated, header lies
    UsbQuelle ungerade(20);
    ungerade.satz(204, 12, 3, 2024, 8, 0, 0);
    ungerade.satz(1, 0, 3, 2024, 8, 0, 0);              // day 0
    ungerade.satz(1, 12, 13, 2024, 8, 0, 0);            // month 13
    ungerade.satz(1, 12, 3, 2005, 8, 0, 0);             // year 5
    ungerade.satz(1, 12, 3, 2024, 24, 0, 0);            // hour 24
    ungerade.satz(1, 12, 3, 2024, 8, 60, 0);            // minute 60
    ungerade.satz(1, 12, 3, 2024, 8, 1, 0, {5});        // the one good sample
    roh(quelle("Z2"), ungerade.bytes() + "x");          // odd length
    QDir().mkpath(quelle("Z3"));                        // a folder named like a source

    for (const char *n : {"Z0", "Z1"}) {
        importieren(1);
        EXPECT_TRUE(QFile::exists(quelle(n)));
        QFile::remove(quelle(n)); // the operator takes it away
    }
    EXPECT_EQ(boxen(), (QStringList{"USB-Import \n" + quelle("Z0") + "\nwrong Header",
                                    "USB-Import \n" + quelle("Z1") + "\nwrong Len\n19/41"}));
    importieren();
    EXPECT_FALSE(QFile::exists(quelle("Z2")));
    EXPECT_TRUE(QFileInfo(quelle("Z3")).isDir());
    // No header of form 80 or 60 came before: the form-20 file has no serial.
    const QByteArray b = inhalt(ziel("US          00004120324.OVD"));
    ASSERT_EQ(b.size(), 3 * 22);
    EXPECT_EQ(satz(b, 3).left(2), hex("0100"));
}

} // namespace
