// The language table, the site text file, the table file and the language switch.

#include "config_fixture.h"

#include "config/language_files.h"
#include "core/conversions.h"

#include <QRegularExpression>

using namespace kal;
using namespace kal::test;

namespace {

QString de(int id) { return plant.Sprachtext(0, id); }

// Rows with German, English and at most one other column.
bool isPartialRow(int id)
{
    return (id >= 94 && id <= 97) || id == 99 || id == 107 || id == 119 || id == 131 ||
           (id >= 161 && id <= 171);
}

class LanguageTest : public ConfigFixture {
protected:
    int site(const QByteArray &lines)
    {
        writeFile(dataFile(MELD_TABELLE_DATEI), lines);
        return readSiteTexts(dataFile(MELD_TABELLE_DATEI));
    }
};

} // namespace

// Every row is filled where a text is due, fits its width and the 8-bit code
// page of the files; numbered rows count from their first shown number, and
// the names of the Italian and Spanish columns are crossed like their prefixes.
TEST_F(LanguageTest, EveryEntryIsFilledAndFitsItsRow)
{
    for (int id = 0; id < SPRACH_IDS; ++id) {
        const int width = plant.Sprachbreite[id];
        int others = 0;
        for (int col = 0; col < SPRACHEN; ++col) {
            const QString t = plant.Sprachtext(col, id);
            others += (col >= 2 && !t.isEmpty()) ? 1 : 0;
            // Row 148 is wider than any field in German and stays whole.
            if (!(id == 148 && col == 0))
                EXPECT_LE(t.size(), width) << id << "/" << col;
            EXPECT_EQ(Latin1Text(Latin1Bytes(t)), t) << id << "/" << col;
            // Segment commands are shown 9 wide, translated messages 22 wide.
            if ((id >= 10 && id <= 14) || id == 39)
                EXPECT_LE(t.size(), 9) << id << "/" << col;
            if (id >= MELD_ZEILE && id < MELD_ZEILE + MELD_PRO_OFEN && col > 0)
                EXPECT_LE(t.size(), 22) << id << "/" << col;
            // Channel names keep one length in every language.
            if (id >= 161 && !t.isEmpty())
                EXPECT_EQ(t.size(), de(id).size()) << id << "/" << col;
        }
        if (id == 98 || id == 77) {
            // Row 98 is empty; 77 names a seventh language without a column of its own.
            EXPECT_TRUE(plant.Sprachtext(1, id).isEmpty() && others == 0) << id;
        } else {
            EXPECT_FALSE(de(id).isEmpty() || plant.Sprachtext(1, id).isEmpty()) << id;
            EXPECT_EQ(others, isPartialRow(id) ? std::min(others, 1) : 4) << id;
        }
    }
    EXPECT_EQ(QStringList({de(110), de(115), de(132), plant.Sprachtext(3, languageNameId(3)),
                           plant.Sprachtext(4, languageNameId(4))}),
              QStringList({"Fehler Heizung 1", "Fehler Heizung 6", "Meldung 33", "italiano", QString::fromUtf8("Español")}));
}

TEST_F(LanguageTest, SiteLinesOfTheWrongFormAreSkipped)
{
    const QString before = plant.Sprachtext(1, 0);
    for (const char *line : {
             "RU_001;0;pech",  // unknown prefix
             "en_001;0;kiln",  // prefixes are capitals
             "EN-001;0;kiln",  // no "_"
             "EN_0A1;0;kiln",  // row not a number
             "EN_001;10;kiln", // two digits: 9th is not ";"
             "EN_001;9;kiln",  // furnace digit 9
             "EN_000;0;kiln",  // rows count from 1
             "EN_173;0;kiln",  // beyond the last row
             "EN_001;0",       // too short
         })
        EXPECT_FALSE(applySiteLine(QString::fromLatin1(line))) << line;
    EXPECT_EQ(plant.Sprachtext(1, 0), before);

    // Row 172 (the last) and furnace digit 8 are still inside.
    EXPECT_TRUE(applySiteLine(QStringLiteral("EN_172;8;exit")));
    EXPECT_EQ(plant.Sprachtext(1, 171), QStringLiteral("exit      "));
}

TEST_F(LanguageTest, SiteLinesSetTextsAndMessagesCutToTheRowWidth)
{
    // Row 0 is 12 wide.
    EXPECT_TRUE(applySiteLine(QStringLiteral("FR_001;3;Four de trempe sous vide")));
    EXPECT_EQ(plant.Sprachtext(2, 0), QStringLiteral("Four de trem"));
    // An empty text empties the entry.
    EXPECT_TRUE(applySiteLine(QStringLiteral("NL_002;0;")));
    EXPECT_TRUE(plant.Sprachtext(5, 1).isEmpty());
    // Channel names are padded to their fixed width again.
    EXPECT_TRUE(applySiteLine(QStringLiteral("EN_162;0;hall")));
    EXPECT_EQ(plant.Sprachtext(1, 161), QStringLiteral("hall      "));

    // NNN 105 is message 5 (row 104): digit 0 all furnaces, 1..8 one furnace.
    EXPECT_TRUE(applySiteLine(QStringLiteral("EN_105;0;door open")));
    EXPECT_TRUE(applySiteLine(QStringLiteral("EN_105;3;loading door open")));
    for (int ofen = 0; ofen < OFEN_MAX; ++ofen)
        EXPECT_EQ(plant.Meldtext[4](1, ofen),
                  ofen == 2 ? QStringLiteral("loading door open") : QStringLiteral("door open"));
    EXPECT_EQ(plant.Sprachtext(1, 104), QStringLiteral("door opened"));

    // Messages 1 and 32 are the bounds; the row width (30) cuts. Message 33
    // (NNN 133) and the row before message 1 (NNN 100) are plain rows.
    for (const char *line : {"DE_101;8;Automatikbetrieb mit Fernsteuerung aktiv", "DE_132;0;USB-Stick voll",
                             "DE_133;0;Druck zu hoch", "DE_100;5;Start ab"})
        EXPECT_TRUE(applySiteLine(QString::fromLatin1(line))) << line;
    EXPECT_EQ(QStringList({plant.Meldtext[0](0, 7), plant.Meldtext[31](0, 0), de(132), plant.Meldtext[32](0, 0), de(99)}),
              QStringList({"Automatikbetrieb mit Fernsteue", "USB-Stick voll", "Druck zu hoch", "Meldung 33", "Start ab"}));
}

TEST_F(LanguageTest, SiteFileWithFewLinesLeavesTheRestBuiltIn)
{
    EXPECT_EQ(site("EN_001;0;kiln\r\n"
                   "garbage line\n"
                   "NL_004;0;Inladen\r"
                   "\r\n"
                   "EN_001;10;oven\r\n"),
              2);
    EXPECT_EQ(QStringList({plant.Sprachtext(1, 0), plant.Sprachtext(5, 3), plant.Sprachtext(5, 0)}),
              QStringList({"kiln", "Inladen", "Oven"}));

    // 8-bit characters are read as the system code page.
    EXPECT_EQ(site(QByteArray("DE_027;0;Men\xfc") + "\r\n"), 1);
    EXPECT_EQ(de(26), QString::fromUtf8("Menü"));

    EXPECT_EQ(readSiteTexts(dataFile(QStringLiteral("missing.txt"))), 0);
}

// The table file's records byte by byte. Its lines need the furnace digit in
// place of the width to act as site lines; so edited, they give every entry
// back as written.
TEST_F(LanguageTest, TableFileLayoutAndItsLinesReadBackAsSiteLines)
{
    ASSERT_TRUE(writeLanguageTable(dataFile(SPRACH_DATEI)));
    const QByteArray all = readFile(dataFile(SPRACH_DATEI));
    ASSERT_EQ(all.size(), SPRACH_IDS * SPRACH_SATZ);

    // Parts in the order DE, EN, FR, SP, IT, NL; "SP" carries Italian, "IT" Spanish.
    EXPECT_EQ(all.mid(0, 52), QByteArray("DE_001;12;Ofen") + QByteArray(36, ' ') + "\r\n");
    EXPECT_EQ(all.mid(3 * 52, 14) + all.mid(4 * 52, 14), QByteArray("SP_001;12;fornIT_001;12;Horn"));
    EXPECT_EQ(all.mid(5 * 52, 15), QByteArray("NL_001;12;Oven "));

    // Row 27 "Menü": Latin-1 byte; row 57 width 8 as "08"; row 149 (148) cut to 40.
    EXPECT_EQ(all.mid(26 * SPRACH_SATZ, 15), QByteArray("DE_027;12;Men\xfc "));
    EXPECT_EQ(all.mid(56 * SPRACH_SATZ, 10), QByteArray("DE_057;08;"));
    EXPECT_EQ(all.mid(148 * SPRACH_SATZ, 52),
              QByteArray("DE_149;40;Das Programm ist f\xfcr diesen Ofen ung\xfclti\r\n"));
    // Empty entries are blank fields.
    EXPECT_EQ(all.mid(98 * SPRACH_SATZ + 5 * 52, 52), QByteArray("NL_099;12;") + QByteArray(40, ' ') + "\r\n");
    EXPECT_EQ(all.mid(171 * SPRACH_SATZ, 10), QByteArray("DE_172;10;"));

    // As written, the width stands where a site line has the furnace digit.
    EXPECT_EQ(site(all), 0);

    // Keep what was written, then spoil every entry, and read the edited lines back.
    auto saved = plant.Sprachtext;
    plant.Sprachtext.fill(QStringLiteral("x"));
    for (int m = 0; m < MELD_PRO_OFEN; ++m)
        plant.Meldtext[m].fill(QStringLiteral("x"));
    QString edited = Latin1Text(all);
    edited.replace(QRegularExpression(QStringLiteral("(?<=^.._\\d\\d\\d;)\\d\\d(?=;)"),
                                      QRegularExpression::MultilineOption),
                   QStringLiteral("0"));
    EXPECT_EQ(site(Latin1Bytes(edited)), SPRACH_IDS * SPRACHEN);

    for (int id = 0; id < SPRACH_IDS; ++id) {
        for (int col = 0; col < SPRACHEN; ++col) {
            const bool message = id >= MELD_ZEILE && id < MELD_ZEILE + 32;
            QString expect = message ? QStringLiteral("x") : saved(col, id);
            if (id == 148 && col == 0)
                expect = expect.left(40);
            EXPECT_EQ(plant.Sprachtext(col, id), expect) << id << "/" << col;
            if (message)
                for (int ofen = 0; ofen < OFEN_MAX; ++ofen)
                    EXPECT_EQ(plant.Meldtext[id - MELD_ZEILE](col, ofen), saved(col, id));
        }
    }
    EXPECT_EQ(plant.Meldtext[32](0, 0), QStringLiteral("x"));
}

TEST_F(LanguageTest, SwitchCarriesTheLanguageIntoCommandsMessagesAndStates)
{
    ASSERT_TRUE(applySiteLine(QStringLiteral("FR_105;2;Porte four 2")));
    plant.Sprache = 2;
    Sprachumschalt();
    EXPECT_EQ(scr.sprache, 1);
    // Commands 0..5 from rows 39, 10..14, 9 characters each.
    EXPECT_EQ(QStringList({plant.Befehl_Name[0], plant.Befehl_Name[5], plant.Run_State_Text[0], plant.Meld_Text(0, 4),
                           plant.Meld_Text(1, 4), plant.Meld_Text(7, 47)}),
              QStringList({"Fin      ", "Cycle    ", QString::fromUtf8("  ---Arrêt--- "), "Porte ouverte         ",
                           "Porte four 2          ", "Message 48            "}));

    // Italian has no text for message 8: it stays empty, no German stand-in.
    plant.Sprache = 3;
    Sprachumschalt();
    EXPECT_EQ(plant.Meld_Text(0, 7), QString(22, QLatin1Char(' ')));
    EXPECT_EQ(plant.Befehl_Name[3], QStringLiteral("manuale  "));

    // A language beyond the table is the caller's fault and changes nothing.
    plant.Sprache = 6;
    EXPECT_EQ(runError(Sprachumschalt), ERR_SUBSCRIPT);
    EXPECT_EQ(plant.Befehl_Name[3], QStringLiteral("manuale  "));
    EXPECT_EQ(scr.sprache, 2);
}

TEST_F(LanguageTest, LoaderReadsTheDataFolderAndNamesTracksOfPlainFurnaces)
{
    writeFile(dataFile(MELD_TABELLE_DATEI), "EN_001;0;kiln\r\n");
    plant.Ofen_Typ[1] = 0;
    plant.Ofen_Typ[2] = static_cast<i16>(0x9000 | 50); // version word: the PLC gives the names
    plant.Spur(1, 0) = QStringLiteral("Argon");
    plant.Spur_Titel(0, 0) = QStringLiteral("old title");
    loadSiteTexts();
    EXPECT_EQ(QStringList({plant.Sprachtext(1, 0), plant.Spur(0, 0), plant.Spur(7, 3), plant.Spur_Titel(0, 0),
                           plant.Spur(1, 0)}),
              QStringList({"kiln", "Spur 1", "Spur 4", "", "Argon"}));
    EXPECT_EQ(both(plant.Meld_Anzahl[0], plant.Meld_Anzahl[1]), both(32, 0));
}
