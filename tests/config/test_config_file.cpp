// The configuration file: the writer's byte layout and the round trip, a file
// laid out by hand (with colour repair), the old kind of file, the missing file
// and corrupt files, the batch state and the identity taken from the PLC.

#include "config_fixture.h"

#include "config/config_file.h"
#include "core/conversions.h"
#include "support/hex.h"

#include <random>

using namespace kal;
using namespace kal::test;

namespace {

/// A configuration file built by hand, independent of the writer.
struct RawFile {
    QByteArray b;
    explicit RawFile(int records) : b(records * 34, '\0') {}
    void byte(int nr, int off, int v) { b[at(nr, off)] = char(v & 0xFF); }
    void word(int nr, int w, int v) { byte(nr, 4 + 2 * w, v), byte(nr, 5 + 2 * w, v >> 8); }
    void put(int nr, int off, const QByteArray &t) { b.replace(at(nr, off), t.size(), t); }
    /// TEXT characters from 1-based position `pos`.
    void text(int nr, int pos, const QByteArray &t) { put(nr, 13 + pos, t); }
};

QByteArray padded(const char *t, int width)
{
    return QByteArray(t).leftJustified(width, ' ');
}

class ConfigFile : public ConfigFixture {
protected:
    /// A plant that uses every field of the file with values it keeps exactly.
    void fillPlant()
    {
        for (int f = 0; f < OFEN_MAX; ++f) {
            for (int j = 0; j < 4; ++j)
                plant.Ofen_IP(f, j) = u8(10 * f + j + 1);
            for (int p = 0; p < KENNUNG_PAARE; ++p) {
                plant.Ofen_Kennung_A(f + 1, p) = i16(0x4000 + 100 * f + p);
                plant.Ofen_Kennung_B(f + 1, p) = i16(-1000 - 100 * f - p);
            }
            for (int k = 0; k < 18; ++k)
                plant.Kanal_Farbe(f + 1, k) = (f + k) % 24;
            plant.Ofen_Typ[f + 1] = i16(f);
            plant.Charge_Nr[f] = 100 * f;
            plant.Charge_Pos[f] = i16(f + 3);
            plant.Charge_Start[f] = QStringLiteral("0%1.02.2023 08:09:10").arg(f + 1);
            plant.Ofen_Aktiv[f] = flag(f % 2 == 0);
            plant.Ofen_Charge[f] = flag(f % 3 == 0);
            plant.Ofen_TempLog[f] = flag(f % 2 == 1);
            plant.Ofen_UDP[f] = flag(f >= 4);
            plant.Ofen_Name[f] = QStringLiteral("Ofen Nr. %1").arg(f + 1);
            plant.TempLog_Takt[f] = i16(5 + 500 * f);
            plant.Ofen_Wert216[f] = i16(-217 - f);
            plant.Ofen_Serie[f] = QStringLiteral("2301-00%1-GKD").arg(f);
            plant.Ofen_Version[f] = QStringLiteral("0%1").arg(f);
            plant.TempLog_Schwelle[f] = i16(40 * f);
            plant.Element_Spuren[f] = i16(18 - f);
            plant.TempLog_Charge[f] = 100000 * f - 7;
            plant.Ofen_Bezeichnung[f] = QStringLiteral("Härterei %1").arg(f + 1);
            plant.Ofen_Nr_Prog[f] = i16(8 - f);
        }
        plant.Ofen_Typ[2] = i16(0x9064); // block at word 100: the number lies in TEXT 17..20
        plant.Charge_Nr[1] = 1234567;
        plant.Ofen_Typ[3] = i16(0x8032); // block at word 50: the PLC keeps the number
        plant.Charge_Nr[2] = -1;
        for (int set = 0; set < 3; ++set)
            for (int k = 0; k < 12; ++k)
                plant.CSV_Spalten(set, k) = flag((k + set) % 3 == 0);
        plant.Backup_Aktiv = TRUE16;
        plant.Kurve_Option = TRUE16;
        plant.Sprache = 2;
        plant.Druck_Prozent = 100;
        plant.Druck_Rand_X = 10;
        plant.Druck_Rand_Y = 200;
        plant.Pfad_Karte[1] = QStringLiteral("/media/usb-stick/Ofen-Daten/Import");
        for (int k = 1; k <= 4; ++k) {
            plant.Pfad[k] = tmp.filePath(QStringLiteral("ordner-%1").arg(k));
            QDir().mkpath(plant.Pfad[k]);
        }
    }

};

// The writer's layout field by field; everything written is read back, so
// writing the plant read from the file gives the same bytes again.
TEST_F(ConfigFile, WriterLayoutRoundTripAndBatchState)
{
    fillPlant();
    plant.Ofen_Seriell[1] = TRUE16;
    Config_Schreiben(false);
    QByteArray b = configBytes();
    ASSERT_EQ(b.size(), 70 * 34);
    auto feld = [&](int nr, int off, int n) { return b.mid(at(nr, off), n); };

    EXPECT_EQ(feld(2, 0, 6), hex("0b0c0d0e6490")); // IP, type low byte first
    // Furnace 1: on, batch, backup, curve option; furnace 2: log, serial link.
    EXPECT_EQ(feld(21, 0, 1) + feld(22, 0, 1), hex("4b 14"));
    EXPECT_EQ(feld(22, 14, 20), padded("Ofen Nr. 2", 16) + MKL(1234567));
    EXPECT_EQ(feld(42, 24, 10), MKI(0x249) + MKI(0x924) + MKI(0x492) + MKL(99993));
    EXPECT_EQ(feld(52, 14, 20), QByteArray("H\xe4rterei 2      ") + feld(42, 30, 3) + "2"); // Latin-1, digit
    EXPECT_EQ(feld(9, 14, 20) + feld(10, 14, 20), padded("/media/usb-stick/Ofen-Daten/Import", 40));
    EXPECT_EQ(feld(69, 0, 34), QByteArray(34, '\0')); // between the groups and record 70

    // Fields a record doesn't use keep what the record before left in the
    // one shared buffer; the first record starts from an empty one.
    EXPECT_EQ(feld(1, 14, 20), QByteArray(20, '\0'));
    for (int f = 0; f < OFEN_MAX; ++f) {
        SCOPED_TRACE(f);
        if (f > 0) {
            EXPECT_EQ(feld(1 + f, 14, 20), feld(51 + f - 1, 14, 20));
        }
        EXPECT_EQ(feld(31 + f, 12, 2), feld(21 + f, 12, 2));   // W4
        EXPECT_EQ(feld(31 + f, 30, 4), feld(21 + f, 30, 4));   // characters 17..20
        EXPECT_EQ(feld(41 + f, 14, 10), feld(31 + f, 14, 10)); // characters 1..10
        EXPECT_EQ(feld(61 + f, 14, 20), feld(51 + f, 14, 20));
    }
    EXPECT_EQ(feld(10, 0, 14), feld(9, 0, 14));

    resetPlant();
    plant.Daten_Ordner_Option = tmp.filePath(QStringLiteral("data"));
    buildLanguageTable();
    Pfade_Setzen();
    Config_Lesen();
    EXPECT_TRUE(dlg.shown.empty());
    EXPECT_EQ((std::vector<int>{plant.Charge_Nr[1], plant.Charge_Nr[2], plant.Charge_Gueltig[0]}),
              (std::vector<int>{1234567, -1, TRUE16}));
    EXPECT_EQ(plant.Ofen_Bezeichnung[7], QStringLiteral("Härterei 8"));
    Config_Schreiben(false);
    b[at(22, 0)] = char(0x04); // the serial link is never read back
    EXPECT_EQ(configBytes(), b);

    // Saving the batch state writes its own fields only.
    plant.Charge_Pos[1] = 99;
    plant.Charge_Start[1] = QStringLiteral("24.12.2023 23:59:58");
    plant.Charge_Nr[1] = 7654321;
    plant.Ofen_Name[1] = QStringLiteral("nicht gesichert"); // not the batch state, nor furnace 3's position:
    plant.Charge_Pos[2] = 55;
    Charge_Zustand_Sichern(1);
    b.replace(at(12, 4), 2, MKI(99));
    b.replace(at(12, 14), 20, "24.12.2023 23:59:58 ");
    b.replace(at(22, 4), 2, MKI(i16(7654321 & 0x7FFF)));
    b.replace(at(22, 30), 4, MKL(7654321));
    EXPECT_EQ(configBytes(), b);
}

// A colour outside the table (24) sends every colour back to the standard
// and mends the file at once, keeping the other fields.
TEST_F(ConfigFile, FileWrittenByHandReadsWithItsRulesLimitsAndColourRepair)
{
    makeDefaultFolders();
    RawFile r(70);
    // Furnace 1: plain; the number is W0 (the 4 bytes are ignored); no backup bit.
    r.put(1, 0, hex("c0a8010a") + MKI(3));
    r.text(11, 1, "01.03.2012 07:05:00 ");
    r.byte(21, 0, 0x01 | 0x10 | 0x40 | 0x80);
    r.word(21, 0, 1234);
    r.text(21, 1, padded("Ofen eins", 16) + MKL(999999));
    r.word(31, 0, 4);
    r.text(31, 1, "1203-004-GKD0D" + MKI(-5));
    r.word(51, 0, 25);
    r.text(51, 1, padded("Haerteofen", 16) + "   1");
    // Furnace 2: block at word 100, large; the number is the 4 bytes.
    r.word(2, 0, 0x9064);
    r.byte(22, 0, 0x08); // backup bit outside furnace 1: ignored
    r.text(22, 1, padded("Zwei", 16) + MKL(70000));
    r.word(32, 0, 5000);
    r.text(32, 15, MKI(999));
    r.text(52, 1, padded("Anderer Name", 16) + "   7");
    r.byte(62, 3, 9);
    // Furnace 3: block at word 50: the PLC keeps the number.
    r.word(3, 0, 0x8032);
    r.word(23, 0, 55);
    r.text(13, 1, "31.13.2012 07:05:00");
    r.text(41, 11, MKI(0x0FFF));
    r.text(48, 11, MKI(0x0001) + MKI(0x0800)); // furnace 8 decides the CSV sets
    r.byte(9, 0, 9);
    r.put(9, 6, MKI(24) + MKI(10) + MKI(201) + QByteArray(2, 0) + padded("/media/stick", 20));
    r.byte(46, 2, 24); // colour 13 of furnace 6
    writeConfig(r.b);

    Config_Lesen();
    EXPECT_TRUE(dlg.shown.empty());
    const auto werte = [](int f) {
        return std::vector<int>{plant.Ofen_Typ[f + 1], plant.Charge_Nr[f], plant.Charge_Gueltig[f],
                                plant.TempLog_Takt[f], plant.TempLog_Schwelle[f], plant.Element_Spuren[f],
                                plant.Ofen_Nr_Prog[f], plant.Ofen_Basis[f], plant.Prog_Page[f]};
    };
    EXPECT_EQ(werte(0), (std::vector<int>{3, 1234, -1, 60, 0, 18, 1, 0, 388}));
    EXPECT_EQ(werte(1), (std::vector<int>{i16(0x9064), 70000, 0, 3600, 300, 0, 2, 100, 1088}));
    EXPECT_EQ(werte(2), (std::vector<int>{i16(0x8032), -1, 0, 60, 0, 0, 3, 50, 388}));
    EXPECT_EQ((std::vector<int>{plant.Charge_Nr_Neu[1], plant.Ofen_IP(0, 0), plant.Ofen_Aktiv[0],
                                plant.Ofen_Seriell[0], plant.Kurve_Option, plant.Ofen_UDP[0], plant.Backup_Aktiv}),
              (std::vector<int>{70000, 192, -1, 0, -1, -1, 0}));
    // Furnace 2's designation carries digit 7, another furnace's: its name stands in.
    EXPECT_EQ(QStringList({plant.Ofen_Name[0], plant.Ofen_Version[0], plant.Ofen_Bezeichnung[0],
                           plant.Ofen_Bezeichnung[1]}),
              QStringList({"Ofen eins", "0D", "Haerteofen", "Zwei"}));
    EXPECT_EQ((std::vector<int>{plant.CSV_Spalten(0, 0), plant.CSV_Spalten(0, 1), plant.CSV_Spalten(1, 11)}),
              (std::vector<int>{-1, 0, -1}));
    EXPECT_EQ((std::vector<int>{plant.Sprache, plant.Druck_Prozent, plant.Druck_Rand_X, plant.Druck_Rand_Y}),
              (std::vector<int>{0, 87, 10, 55}));
    EXPECT_EQ(plant.Pfad_Karte[1], QStringLiteral("/media/stick"));
    EXPECT_EQ(plant.Pfad[1], dataFile(QStringLiteral("LogBuch"))); // empty: the default

    for (int s = 0; s <= OFEN_MAX; ++s)
        for (int k = 0; k < 16; ++k)
            ASSERT_EQ(plant.Kanal_Farbe(s, k), k + 8) << s << "/" << k;
    const QByteArray neu = configBytes();
    for (int f = 0; f < OFEN_MAX; ++f) {
        EXPECT_EQ(neu.mid(at(11 + f, 0), 4), hex("08090a0b"));
        EXPECT_EQ(neu[at(41 + f, 2)], char(13 + 8));
    }
    EXPECT_EQ(neu.mid(at(21, 14), 20), padded("Ofen eins", 16) + MKL(1234));
}

TEST_F(ConfigFile, FileOfFortyRecordsIsTheOldKind)
{
    makeDefaultFolders();
    for (int n : {40, 41}) {
        SCOPED_TRACE(n);
        RawFile r(n);
        r.word(1, 1, 0x1234);
        r.word(11, 4, 0x5678);
        if (n > 40)
            r.word(41, 1, 0x4321);
        writeConfig(r.b);
        plant.Ofen_Nr_Prog[4] = 0;
        Config_Lesen();
        // Old kind: records 41 and above aren't read; new kind: past the end reads as zeros.
        EXPECT_EQ((std::vector<int>{plant.Ofen_Kennung_A(1, 0), plant.Ofen_Kennung_A(1, 7), plant.Ofen_Kennung_B(1, 0),
                                    plant.Ofen_Nr_Prog[4]}),
                  (n > 40 ? std::vector<int>{0x1234, 0x5678, 0x4321, 5} : std::vector<int>(4, 0)));
    }
}

// Without the file: furnaces off, default folders, nothing written. A folder
// where the file should be cannot be read: a message, and the station goes on.
TEST_F(ConfigFile, MissingOrUnreadableFileShowsAMessageAndGoesOn)
{
    plant.Ofen_Name[3] = QStringLiteral("alt");
    Config_Lesen();
    EXPECT_EQ(plant.Neu_Datei, TRUE16);
    EXPECT_EQ(QStringList({plant.Ofen_Name[3], plant.Datei_Art[8], plant.Pfad[3]}),
              QStringList({"", "DEN08", dataFile(QStringLiteral("CSV"))}));
    EXPECT_FALSE(QFile::exists(configPath()));

    QDir().mkpath(configPath());
    Config_Lesen();
    EXPECT_EQ(shown(QStringLiteral("message")),
              (QStringList{QStringLiteral("Datei nicht gefunden:\n\n") + configPath() +
                               QStringLiteral("\n\nDatei nicht gefunden!"),
                           QStringLiteral("ERROR:\n") + configPath() + QStringLiteral("\nnot found!")}));
}

// A packed number read with a wrong length would end the program. Fields are
// cut from records of fixed width, so short, empty or random files only give
// zero or odd bytes: none of these reads may end the test program.
TEST_F(ConfigFile, EmptyTruncatedAndRandomFilesNeverEndTheProgram)
{
    makeDefaultFolders();
    writeConfig(QByteArray());
    Config_Lesen();
    EXPECT_EQ(both(plant.TempLog_Takt[0], plant.Druck_Rand_X), both(60, 60));

    RawFile r(21);
    r.word(1, 0, 0x8064); // block at 100: the number comes from characters 17..20
    r.byte(21, 0, 0x01);
    r.text(21, 1, "Kurz");
    writeConfig(r.b.left(20 * 34 + 20)); // record 21 cut after 6 text characters
    Config_Lesen();
    EXPECT_EQ(both(plant.Ofen_Aktiv[0], plant.Charge_Nr[0]), both(TRUE16, 0));
    EXPECT_EQ(plant.Ofen_Name[0], QStringLiteral("Kurz"));

    std::mt19937 gen(4711);
    for (int laenge : {70 * 34, 45 * 34 + 7, 13}) {
        QByteArray b(laenge, '\0');
        for (auto &c : b)
            c = char(gen() & 0xFF);
        writeConfig(b);
        Config_Lesen();
        EXPECT_LE(plant.Sprache, 5);
        EXPECT_LE(plant.Element_Spuren[7], 18);
    }
}

// One failure of the identity check is not enough; a repeated one, online,
// takes type, names, serial and version from the PLC and writes them.
TEST_F(ConfigFile, TakingThePlcIdentityNeedsARepeatedFailureOnline)
{
    for (int f : {2, 3}) {
        plant.Ofen_Online[f] = TRUE16;
        plant.Kennung_Zaehler[f] = u8(f == 2 ? 2 : 1);
        plant.SPS_Wort(f, 29) = i16(0x9064);
        plant.SPS_Wort(f, 216) = 1;
        plant.PLC_Name[f] = QStringLiteral("Neuer Ofen");
        plant.PLC_Serie[f] = QStringLiteral("2401-007-GKD");
        plant.PLC_Version[f] = QStringLiteral("0D");
    }
    Config_Schreiben(true);

    EXPECT_EQ((std::vector<int>{plant.Kennung_Zaehler[2], plant.Ofen_GKD[2], plant.Ofen_Wert216[2],
                                plant.Kennung_Zaehler[3]}),
              (std::vector<int>{0, TRUE16, 1, 1}));
    EXPECT_EQ(QStringList({plant.Ofen_Name[2], plant.Ofen_Bezeichnung[2], plant.Ofen_Version[2], plant.Ofen_Name[3]}),
              QStringList({"Neuer Ofen", "Neuer Ofen", "0D", ""}));
    EXPECT_EQ(configBytes().mid(at(3, 4), 2), MKI(i16(0x9064)));
}

} // namespace
