// What the recorder writes, byte for byte: the header of a headed file, a
// sample group, a single sample, the operator text; the mirror; files that a
// user cut or filled with junk; folders and disks that refuse the write.
// Expected bytes are written out by hand from the record layout.

#include "test_recorder_fixture.h"

#include "recording/batch_file.h"

using namespace kal;
using namespace kal::test;

namespace {

const QByteArray ZEIT = hex("0C 03 18 08 1E 10"); // 12.03.2024 08:30:16

/// The four records of block(154, 5, stampAt(30, 16)).
QByteArray group5()
{
    return hex("9A 00") + ZEIT + hex("34 12 FE FF 72 00 05 00 00 00 A8 08 A9 09") +
           hex("9B 00 BF 1F C0 20 C1 21 AA 0A AB 0B AC 0C AD 0D AE 0E AF 0F B0 10") +
           hex("9C 00 C2 22 C3 23 C4 24 B1 11 B2 12 B3 13 B4 14 B5 15 B6 16 B7 17") +
           hex("9D 00 C5 25 C6 26 C7 27 B8 18 B9 19 BA 1A BB 1B BC 1C BD 1D BE 1E");
}

using RecorderFiles = RecorderTest;

} // namespace

TEST_F(RecorderFiles, FirstGroupOfAHeadedFurnaceWritesHeaderAndGroupAtFortyAndTheMirrorFollows)
{
    plant.Backup_Aktiv = -1;
    offerGroup(5, stampAt(30, 16));
    ASSERT_EQ(batchFiles(), QStringList{QStringLiteral("D2401017ABC000005120324.OVD")});
    QByteArray b = fileContents(batchPath("D2401017ABC000005120324.OVD"));
    ASSERT_EQ(b.size(), 43 * 22);

    EXPECT_EQ(recordAt(b, 1), QByteArray("Of") + ZEIT + QByteArray("en Eins       "));
    EXPECT_EQ(recordAt(b, 2), hex("00 01 0D 03 18 08 1E 10 00 02 01 01 01 02 02 01 02 02 03 01 03 02"));
    EXPECT_EQ(recordAt(b, 3), hex("04 01 0A 03 18 08 1E 10 04 02 05 01 05 02 06 01 06 02 07 01 07 02"));
    EXPECT_EQ(recordAt(b, 4), hex("08 01 3A 03 18 08 1E 10 08 02 09 01 09 02 0A 01 0A 02 0B 01 0B 02"));
    EXPECT_EQ(recordAt(b, 5), QByteArray("  V5.5 -2.12.2015   ") + hex("3D 23"));
    EXPECT_EQ(b.mid(5 * 22, 2 * 22), QByteArray(2 * 22, '\0'));
    EXPECT_EQ(b.mid(7 * 22, 32 * 22), QByteArray("ffTuer oen            ") + QByteArray(31 * 22, ' '));
    EXPECT_EQ(b.mid(39 * 22), group5());

    // The opening is saved for a restart (the fields of the batch state in
    // the configuration file): Charge_Pos is the high byte of w36.
    EXPECT_EQ(plant.Charge_Pos[KOPF], 0x24);
    const QByteArray cfg = fileContents(pathOf(QStringLiteral("Kalmeron.DAT")));
    EXPECT_EQ(cfg.mid(10 * 34 + 4, 2) + cfg.mid(10 * 34 + 14, 19) + cfg.mid(20 * 34 + 30, 4),
              hex("24 00") + "12.03.2024 08:30:16" + hex("05 00 00 00"));
    EXPECT_TRUE(logList.isEmpty());

    // The mirror gets every record at the same number, the operator text too.
    std::vector<i16> t = block(9001, 0, stampAt(31));
    text(t, 10, "Charge 4711 Kunde AB");
    anbieten(KOPF, t);
    offerGroup(5, stampAt(32));
    b = fileContents(plant.Charge_Datei[KOPF]);
    EXPECT_EQ(b.size(), 48 * 22);
    EXPECT_EQ(recordAt(b, 43), hex("29 23") + QByteArray("Charge 471") + hex("BA 1A BB 1B BC 1C BD 1D BE 1E"));
    EXPECT_EQ(fileContents(plant.Charge_Kopie[KOPF]), b);
    EXPECT_NE(plant.Charge_Kopie[KOPF], plant.Charge_Datei[KOPF]);
}

TEST_F(RecorderFiles, CompactBlockIsStoredAsAGroupOf154)
{
    // c13 = 0x6355: output 0x55 with high bits 3, bits 14 and 13 set.
    const PlcStamp s = stampAt(30, 16);
    plant.Ofen_Typ[KOPF + 1] = static_cast<i16>(0x8000 | 240);
    plant.Adr_Trigger[KOPF] = 220;
    anbieten(KOPF, {131, s.a, s.b, 9, 0, 0x0102, 0x0304, static_cast<i16>(0x0506), static_cast<i16>(0x7F12), 640, 35,
                    1200, 1195, 0x6355, 0x1234, static_cast<i16>(0xABCD)});
    const QByteArray b = fileContents(plant.Charge_Datei[KOPF]);
    ASSERT_EQ(b.size(), 43 * 22);
    EXPECT_EQ(recordAt(b, 40), hex("9A 00") + ZEIT + hex("B0 04 AB 04 75 00 09 00 00 00 02 01 04 03"));
    // w31 = c8 high byte as high byte; w32, w33 zero; w10..w16: c11, 0, 0, 0, c15 high, 0, 0.
    EXPECT_EQ(recordAt(b, 41), hex("9B 00 00 7F 00 00 00 00 B0 04 00 00 00 00 00 00 AB 00 00 00 00 00"));
    // w36 = c7; w17..w19 0, w20 = c12, w21 = 3, w22 = 0x34 + 256, w23 = 0x12 + 256.
    EXPECT_EQ(recordAt(b, 42), hex("9C 00 00 00 00 00 06 05 00 00 00 00 00 00 AB 04 03 00 34 01 12 01"));
    // w37 = c9, w38 = c8 low byte and 100; w24 = c15 low byte, w30 = c10.
    EXPECT_EQ(recordAt(b, 43), hex("9D 00 80 02 64 12 00 00 CD 00 00 00 00 00 00 00 00 00 00 00 23 00"));
    EXPECT_EQ(both(plant.Charge_Nr[KOPF], plant.Charge_Pos[KOPF]), both(9, i16(5)));

    // Only bit 14: the first value (from the high byte) gets 256, the second doesn't.
    CompactBlock k{};
    k[13] = 0x4001;
    k[14] = 0x1234;
    const LogBlock w = unpackCompact(k);
    EXPECT_EQ((std::vector<int>{w[23], w[22], w[5]}), (std::vector<int>{0x112, 0x34, 0x01}));
}

TEST_F(RecorderFiles, PlainFurnaceSingleSampleProgramTextAndOperatorText)
{
    // Announcement: the batch opens, its file is created, nothing stored.
    const PlcStamp s = stamp(1, 2, 2024, 23, 59, 58);
    anbieten(EINFACH, {205, s.a, s.b});
    const QString pfad = batchPath("D2312004XY 000005010224.OVD");
    ASSERT_TRUE(QFile::exists(pfad)) << batchFiles().join(' ').toStdString();
    EXPECT_EQ(fileContents(pfad).size(), 0);

    // An operator text into a file without records has no place and is lost.
    std::vector<i16> t = block(9001, 0, s);
    text(t, 10, "Charge 4711 Kunde AB");
    anbieten(EINFACH, t);
    EXPECT_EQ(fileContents(pfad).size(), 0);

    // A single sample: w3 / 10 and w4 / 10 round half to even, w5..w9 as they are.
    anbieten(EINFACH, {1, s.a, s.b, 1235, 1225, -1, 0x0102, 7, 8, -300});
    QByteArray b = fileContents(pfad);
    ASSERT_EQ(b.size(), 40 * 22);
    EXPECT_EQ(b.left(39 * 22), QByteArray(39 * 22, '\0')); // no header on a plain furnace
    EXPECT_EQ(recordAt(b, 40), hex("01 00 01 02 18 17 3B 3A 7C 00 7A 00 FF FF 02 01 07 00 08 00 D4 FE"));

    // A program text: characters 1 and 2 in Minute and Sekunde, w32..w38 in Wert.
    std::vector<i16> p = block(159, 0, s);
    text(p, 31, "Haerten 860 Grad");
    anbieten(EINFACH, p);
    b = fileContents(pfad);
    EXPECT_EQ(recordAt(b, 41), hex("9F 00 01 02 18 17") + QByteArray("Haerten 860 Grad"));

    // With no text record yet, the operator text overwrites the last record
    // and the one after it; Wert[2..6] keep what the search read last.
    anbieten(EINFACH, t);
    b = fileContents(pfad);
    ASSERT_EQ(b.size(), 42 * 22);
    EXPECT_EQ(recordAt(b, 41), hex("29 23") + QByteArray("Charge 471") + QByteArray("n 860 Grad"));
    EXPECT_EQ(recordAt(b, 42), hex("2A 23") + QByteArray("1 Kunde AB") + QByteArray("n 860 Grad"));
    // The next text finds the first and goes over it again.
    text(t, 10, "Charge 4811 Kunde CD");
    anbieten(EINFACH, t);
    b = fileContents(pfad);
    ASSERT_EQ(b.size(), 42 * 22);
    EXPECT_EQ(recordAt(b, 41), hex("29 23") + QByteArray("Charge 481") + QByteArray("n 860 Grad"));
    EXPECT_EQ(recordAt(b, 42), hex("2A 23") + QByteArray("1 Kunde CD") + QByteArray("n 860 Grad"));
}

TEST_F(RecorderFiles, CutOrJunkFileIsAppendedWithoutHarmToItsRecords)
{
    offerGroup(5, stampAt(30, 16));
    const QString pfad = plant.Charge_Datei[KOPF];
    // A user fills the file with junk and leaves a torn record at its end.
    QByteArray junk;
    for (int i = 0; i < 45 * 22 + 7; ++i)
        junk.append(static_cast<char>((i * 37 + 11) & 0xFF));
    rawFile(pfad, junk);
    offerGroup(5, stampAt(31));
    QByteArray b = fileContents(pfad);
    ASSERT_EQ(b.size(), 49 * 22);
    // The header is written again; records 6, 7 and the data from 40 on are untouched.
    EXPECT_EQ(recordAt(b, 2).mid(2, 1), hex("0D"));
    EXPECT_EQ(recordAt(b, 6), recordAt(junk, 6));
    EXPECT_EQ(b.mid(39 * 22, 6 * 22), junk.mid(39 * 22, 6 * 22));
    EXPECT_EQ(recordAt(b, 46).left(2), hex("9A 00"));

    // Markers 13 and 10 but not 58: the header counts as missing.
    QFile f(pfad);
    ASSERT_TRUE(f.open(QIODevice::ReadWrite));
    f.seek(3 * 22 + 2);
    f.write("X");
    f.resize(49 * 22 + 15); // a torn last record: rounds up to 50 records
    f.close();
    const QByteArray vorher = b;
    offerGroup(5, stampAt(32));
    b = fileContents(pfad);
    EXPECT_EQ(recordAt(b, 4).mid(2, 1), hex("3A"));
    EXPECT_EQ(b.mid(39 * 22, 10 * 22), vorher.mid(39 * 22, 10 * 22));
    ASSERT_EQ(b.size(), 54 * 22);
    EXPECT_EQ(recordAt(b, 51).left(2), hex("9A 00"));
    EXPECT_TRUE(logList.isEmpty());
}

TEST_F(RecorderFiles, RefusedFolderOrFullDiskLosesTheRecordNotTheStation)
{
    // The mirror on a full disk: the batch file is written all the same.
    plant.Backup_Aktiv = -1;
    ASSERT_TRUE(QFile::link(QStringLiteral("/dev/full"),
                            QDir(plant.Charge_Ordner[1]).filePath(QStringLiteral("D2401017ABC000005120324.OVD"))));
    offerGroup(5, stampAt(30, 16));
    offerGroup(5, stampAt(31));
    EXPECT_EQ(fileContents(plant.Charge_Datei[KOPF]).size(), 47 * 22);
    ASSERT_EQ(logList.size(), 1) << logList.join('\n').toStdString();
    EXPECT_TRUE(logList[0].contains(QStringLiteral("   Err: 53   ") + plant.Charge_Kopie[KOPF]))
        << logList[0].toStdString();

    // The year folder is a file: nothing can be written, once noted, and the
    // batch state still follows the PLC.
    plant.Backup_Aktiv = 0;
    logList.clear();
    QDir(plant.Charge_Ordner[0]).removeRecursively();
    QFile(plant.Charge_Ordner[0]).open(QIODevice::WriteOnly);
    offerGroup(6, stampAt(32));
    offerGroup(6, stampAt(40));
    offerGroup(6, stampAt(41));
    EXPECT_EQ(both(plant.Charge_Nr[KOPF], logList.size()), both(6, 1)) << logList.join('\n').toStdString();

    // A configuration that can't be written doesn't keep the record out.
    QDir(plant.Charge_Ordner[0]).removeRecursively();
    QFile::remove(plant.Charge_Ordner[0]);
    QDir().mkpath(plant.Charge_Ordner[0]);
    plant.Pfad[0] = dir.filePath(QStringLiteral("fehlt/nicht/da"));
    logList.clear();
    offerGroup(7, stampAt(47));
    offerGroup(7, stampAt(48));
    EXPECT_EQ(both(plant.Charge_Nr[KOPF], fileContents(plant.Charge_Datei[KOPF]).size()), both(7, 43 * 22));
    ASSERT_EQ(logList.size(), 1);
    EXPECT_TRUE(logList[0].contains(QStringLiteral("   Line 30   "))) << logList[0].toStdString();

    // No year folder at all (the configuration was never read): nothing goes to the root folder.
    plant.Charge_Ordner[0].clear();
    offerGroup(7, stampAt(50));
    EXPECT_FALSE(QFile::exists(QStringLiteral("/D2401017ABC000007120324.OVD")));
}
