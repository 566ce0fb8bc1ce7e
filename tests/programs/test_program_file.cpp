// Program files and label files: the bytes on disk against hand-worked
// records, and what a load makes of them.

#include "programs/program_file.h"
#include "programs_fixture.h"
#include "support/hex.h"

using namespace kal;
using namespace kal::test;

namespace {

constexpr i16 GROSS = i16(0x9000 | 50); // version word with bit 12: names of 30 characters

class ProgramFileTest : public ProgramsTest {};

TEST_F(ProgramFileTest, FreshFileHas2101RecordsAllDatedNowAndEmpty)
{
    Ofen(1, 3);
    ASSERT_TRUE(Prog_Neu());
    const QByteArray b = readFile(prog.Prog_Datei);
    ASSERT_EQ(b.size(), PROG_DATEI_SAETZE * PROG_SATZ);
    // 23.11.26 09:15:42, then the number of programs.
    EXPECT_EQ(Satz(b, 1), hex("17 0B 1A 09 0F 2A 64 00 00 00 00 00 00 00 00 00 00 00 00"));
    for (int r : {2, 3, 23, 2080, 2101})
        EXPECT_EQ(Satz(b, r), hex("17 0B 1A 09 0F 2A 00 00 00 00 00 00 00 00 00 00 00 00 00")) << r;
    EXPECT_TRUE(programList(prog.Prog_Datei, prog.Prog_Name_Len).isEmpty());
}

TEST_F(ProgramFileTest, SegmentRecordByteByByte)
{
    Ofen(1, 3);
    ASSERT_TRUE(Prog_Neu());
    prog.Prog.Prog_Name = QStringLiteral("AB");
    Seg(0, 1, 850, 0, 1200, 80, 5, 300, 0x123);
    Seg(1, 2, 2000, 25);
    ASSERT_TRUE(Prog_Sichern(prog.Prog_Datei, 5));
    const QByteArray b = readFile(prog.Prog_Datei);
    const int kopf = headerRecord(5);
    ASSERT_EQ(kopf, 86);
    EXPECT_EQ(Satz(b, kopf).left(8), hex("17 0B 1A 09 0F 2A 05 00"));
    EXPECT_EQ(Satz(b, kopf)[12] | Satz(b, kopf)[15] | Satz(b, kopf)[16], 0);
    // Name, year (header), Analog high byte first, second (header), p,
    // command, set value, hold, 0, rate, output, outputs, air feed.
    EXPECT_EQ(Satz(b, kopf + 1), hex("41 42 1A 01 23 2A 05 01 52 03 00 00 00 B0 04 50 05 2C 01"));
    // A set value above 1720 is saved as 1720 (06B8).
    EXPECT_EQ(Satz(b, kopf + 2).mid(7, 5), hex("02 B8 06 19 00"));
    EXPECT_EQ(prog.Prog.Segment[1].Sollwert, 1720);
    // The neighbours stay untouched.
    EXPECT_EQ(Satz(b, kopf - 1), hex("17 0B 1A 09 0F 2A 00 00 00 00 00 00 00 00 00 00 00 00 00"));
    EXPECT_EQ(u8(Satz(b, kopf + 21)[6]), 0);
}

TEST_F(ProgramFileTest, NameCharactersByNameLengthAndTheBufferLeftovers)
{
    struct Case {
        i16 typ;
        QString name;
        int saetze;         ///< records that carry name characters
        const char *rest;   ///< bytes 0, 1 of the records behind them
    };
    const Case faelle[] = {
        {GROSS, QStringLiteral("ABCDEFGHIJKLMNOPQRSTUVWXYZ1234"), 15, "34"},
        {3, QStringLiteral("Anlassen 450"), 8, "  "},
    };
    for (const Case &f : faelle) {
        Ofen(2, f.typ);
        ASSERT_TRUE(Prog_Neu());
        prog.Prog.Prog_Name = f.name;
        ASSERT_TRUE(Prog_Sichern(prog.Prog_Datei, 1));
        const QByteArray b = readFile(prog.Prog_Datei);
        const QByteArray name = paddedName(f.name, prog.Prog_Name_Len).toLatin1();
        for (int k = 0; k < 20; ++k) {
            const QByteArray erwartet = k < f.saetze ? name.mid(2 * k, 2) : QByteArray(f.rest);
            EXPECT_EQ(Satz(b, headerRecord(1) + 1 + k).left(2), erwartet) << f.saetze << " k=" << k;
        }
        ASSERT_TRUE(Prog_Laden(prog.Prog_Datei, 1));
        EXPECT_EQ(prog.Prog.Prog_Name, name);
        EXPECT_EQ(programList(prog.Prog_Datei, prog.Prog_Name_Len).value(0).text,
                  QStringLiteral("001 ") + QString::fromLatin1(name) + QStringLiteral(" 23.11.26 09:15"));
    }
}

TEST_F(ProgramFileTest, LoadTakesFieldsAsStoredButClampsSetValueAndKeeps11BitsOfAnalog)
{
    Ofen(1, 3);
    ASSERT_TRUE(Prog_Neu());
    Seg(0, 1, 400, 0, 1000, 90, 3, 120, 0x7FF);
    Seg(1, 4, 100, 0, 0, 55);
    ASSERT_TRUE(Prog_Sichern(prog.Prog_Datei, 2));
    // Analog FFFF straight into the file.
    QFile f(prog.Prog_Datei);
    ASSERT_TRUE(f.open(QIODevice::ReadWrite));
    f.seek(qint64(headerRecord(2)) * 19 + 3);
    f.write(hex("FF FF"));
    f.close();

    prog.Prog = Program{};
    ASSERT_TRUE(Prog_Laden(prog.Prog_Datei, 2));
    EXPECT_EQ((std::vector<int>{S(0).Analog, S(0).Befehl_Alt, S(0).Zuluft, S(0).Ausgang, S(1).Befehl, S(1).MaxOut}),
              (std::vector<int>{0x7FF, 1, 120, 3, 4, 55}));
    EXPECT_EQ(prog.Prog.Datum, jetzt);

    // The same file as "OV_ENT": 350 whatever the furnace's maximum, outputs
    // and air feed forced on.
    const QString ent = programFileName(1).replace(QStringLiteral("DEN01"), QStringLiteral("ENT01"));
    ASSERT_TRUE(QFile::copy(prog.Prog_Datei, ent));
    plant.Ofen_Max_Temp[0] = 12000;
    ASSERT_TRUE(Prog_Laden(ent, 2));
    EXPECT_EQ((std::vector<int>{S(0).Sollwert, S(1).Sollwert, prog.Soll_Max}), (std::vector<int>{350, 100, 350}));
    EXPECT_TRUE(prog.Mit_Ausgang && prog.Mit_Zuluft);
}

TEST_F(ProgramFileTest, DeletedSlotIsEmptyUntilSavedAgainAtTheSamePlace)
{
    Ofen(1, 3);
    ASSERT_TRUE(Prog_Neu());
    for (int p : {3, 7, 9}) {
        prog.Prog.Prog_Name = QStringLiteral("P%1").arg(p);
        Seg(0, 1, 100 * p, 0, 500);
        ASSERT_TRUE(Prog_Sichern(prog.Prog_Datei, p));
    }
    ASSERT_TRUE(Prog_Loeschen(prog.Prog_Datei, 7));
    const QByteArray kopf = Satz(readFile(prog.Prog_Datei), headerRecord(7));
    EXPECT_EQ(kopf.left(8), QByteArray(8, '\0'));
    auto nummern = [&] {
        QList<int> l;
        for (const ProgramEntry &e : programList(prog.Prog_Datei, prog.Prog_Name_Len))
            l << e.p;
        return l;
    };
    EXPECT_EQ(nummern(), (QList<int>{3, 9}));

    ASSERT_TRUE(Prog_Laden(prog.Prog_Datei, 7));
    EXPECT_EQ((std::vector<int>{S(0).Befehl, S(0).MaxOut, S(0).Sollwert}), (std::vector<int>{0, 100, 0}));

    prog.Prog.Prog_Name = QStringLiteral("neu");
    ASSERT_TRUE(Prog_Sichern(prog.Prog_Datei, 7));
    EXPECT_EQ(nummern(), (QList<int>{3, 7, 9}));
    EXPECT_FALSE(Prog_Loeschen(prog.Prog_Datei, 0));
    EXPECT_FALSE(Prog_Laden(prog.Prog_Datei, 101));
}

TEST_F(ProgramFileTest, CommandMaskAndOptionFlagsFollowTheOptionWord)
{
    Ofen(1, 3, OPT_MANUELL | OPT_AUSGANG);
    ASSERT_TRUE(Prog_Neu());
    plant.Befehl_Maske = 0xFF;
    Prog_Laden(prog.Prog_Datei, 1);
    // Bit 4 (Zyklus) off, bit 3 (Sprung) left as it was.
    EXPECT_EQ((std::vector<int>{plant.Befehl_Maske, prog.Mit_Ausgang, prog.Mit_Zuluft}), (std::vector<int>{0xEF, TRUE16, 0}));
    Ofen(1, 3, OPT_ZYKLUS | OPT_ZULUFT);
    Prog_Laden(prog.Prog_Datei, 1);
    EXPECT_EQ((std::vector<int>{plant.Befehl_Maske, prog.Mit_Ausgang, prog.Mit_Zuluft}), (std::vector<int>{0xFB, 0, TRUE16}));
}

TEST_F(ProgramFileTest, LabelFileOrItsDefaults)
{
    OutputLabels l = readLabels(3);
    EXPECT_FALSE(l.ausDatei || outputIsArgon(l));
    EXPECT_EQ(l.Text[0] + l.Text[3], QStringLiteral("OUTPUT1OUTPUT4"));
    EXPECT_FALSE(QFile::exists(labelFileName(3))); // nothing is written

    QByteArray b(LABEL_SATZ, ' ');
    b.replace(0, 8, "Heizung\xb0");
    b.replace(180, 16, "Argon/Stickstoff");
    b.replace(300, 50, QByteArray(50, '\0'));
    b.replace(350, 20, QByteArray(20, '\0'));
    b.replace(300 + 2 * (5 * 1 + 2), 2, hex("FF FF")); // hold segments: third output hidden
    b.replace(350 + 2 * (2 * 4 + 1), 2, hex("01 00")); // cycle segments: Analog2 hidden
    writeFile(labelFileName(3), b);
    l = readLabels(3);
    EXPECT_TRUE(l.ausDatei);
    EXPECT_EQ(l.Text[0], QStringLiteral("Heizung°")); // Latin-1
    EXPECT_TRUE(outputIsArgon(l));
    EXPECT_EQ((std::vector<int>{l.Ausgang_Aus[1][2], l.Ausgang_Aus[1][1], l.Luft_Aus[4][1], l.Luft_Aus[4][0]}),
              (std::vector<int>{-1, 0, 1, 0}));
}

} // namespace
