#pragma once
// The logic of the settings dialog `KM_Parameter`: a working copy of the
// plant's settings that the dialog edits, the limits of its fields, and what
// OK and Cancel do with it. Tab 0 is the general tab, tabs 1..8 the furnaces
// ("Ofen 1".."Ofen 8"), tab 9 "PLC-Info" of a furnace.
//
// Only OK (`Command1_OK`) moves the working copy into the plant state and
// writes the configuration; Cancel (`Command1_Cancel`) takes nothing over and
// only puts the language back. A language picked in the dialog switches the
// station at once, so that the dialog shows it.

#include "core/plant_state.h"

#include <QString>
#include <QStringList>
#include <array>

namespace kal {

constexpr int FARBEN_PRO_OFEN = 18;  ///< channel colours of a furnace in the configuration
constexpr int TAB_ALLGEMEIN = 0;
constexpr int TAB_PLC_INFO = 9;
constexpr int MTXT_SEITEN = 5;       ///< message pages 0..4 of the text box

/// Fields of `Text1` on a furnace tab.
enum Text1Field : int {
    FELD_IP0 = 0,          ///< 0..3: octets of the address
    FELD_TAKT = 4,         ///< TempLog_Takt, seconds
    FELD_NR_PROG = 5,      ///< Ofen_Nr_Prog, furnace number 1..8 of the program selection
    FELD_BEZEICHNUNG = 12, ///< Ofen_Bezeichnung
    FELD_SCHWELLE = 13,    ///< TempLog_Schwelle
};

/// Fields of `Text2` on the general tab.
enum Text2Field : int {
    FELD_DRUCK_PROZENT = 0, ///< 25..100
    FELD_DRUCK_RAND_X = 1,  ///< 10..200
    FELD_DRUCK_RAND_Y = 2,  ///< 10..200
};

/// Kinds of folder of the folder choice (`SuchButton`).
enum FolderKind : int { ORDNER_CSV = 0, ORDNER_LOG = 1, ORDNER_SYS = 2, ORDNER_USB = 3 };

/// The working copy of one furnace.
struct FurnaceSettings {
    std::array<u8, 4> IP{};
    i16 Aktiv = 0;
    i16 Seriell = 0;   ///< option 1 chosen: changes the limits of the address, never the link
    i16 UDP = 0;
    i16 Charge = 0;
    i16 TempLog = 0;
    i16 TempLog_Takt = 60;
    i16 TempLog_Schwelle = 0;
    i16 Nr_Prog = 1;
    QString Bezeichnung;
    std::array<i32, FARBEN_PRO_OFEN> Farbe{};
};

/// What the dialog holds while it is open.
struct ParameterDialogState {
    std::array<FurnaceSettings, OFEN_MAX> Ofen;
    u8 Sprache_Alt = 0;       ///< the language when the dialog opened
    i16 Backup_Aktiv = 0;
    i16 Kurve_Option = 0;
    i16 Druck_Prozent = 87;
    i16 Druck_Rand_X = 60;
    i16 Druck_Rand_Y = 55;
    std::array<QString, 5> Pfad; ///< [1] log book, [2] USB, [3] CSV, [4] backup
    int Tab_Ofen = 0;         ///< furnace number of the tab (0: the general tab)
    int Info_Ofen = 1;        ///< furnace number that "PLC-Info" shows
    int MTXT_Seite = 0;       ///< message page 0..4 of the furnace tabs
    int Farbe_Stift = 0;      ///< colour picked by `FarbSift`, 0..23
};
extern ParameterDialogState Parameter;

/// `Wert_akt`'s source: fills the working copy from the plant state and
/// remembers the language. Run when the dialog opens.
void openParameters();

/// A field of `Text1` of furnace index `ofen` is left: the value goes into the
/// working copy within its limits; returns the text the field shows now (the
/// replacement value when the input was out of range).
///   0..3   octets: 0..255 ("0", "255"); with option 1 chosen field 0 1..16
///          and fields 1..3 1..8 ("1", "16", "8")
///   4      below 5 becomes 60, above 3600 becomes 3600
///   5      a furnace number 1..8; anything else the furnace's own number
///   12     trimmed, 16 characters; all blanks takes `Ofen_Name`
///   13     below 0 becomes 0, above 300 becomes 300
QString Text1_LostFocus(int ofen, int feld, const QString &text);

/// Label of the address fields: "TCP/IP-ADD", or "COM / ADD" with option 1.
QString addressCaption(int ofen);

/// `Option1`: 0 Modbus/TCP, 1 serial, 2 memory link over UDP.
void setOption1(int ofen, int option);
int option1Value(int ofen);

/// A field of `Text2` is left: the three print values, out of range to the
/// nearest limit; returns the text the field shows now.
QString Text2_LostFocus(int feld, const QString &text);

/// The disk of the working folders (the root of the log book folder).
QString diskText();
/// Another disk: the log book, USB, CSV and backup folders are rebuilt under
/// it. A disk that does not exist shows "Disk <text>: select a real disk!" and
/// changes nothing; false then.
bool setDisk(const QString &disk);

/// Caption of a folder kind: "CSV - Files", "LOG - Files", "SYS - Files",
/// "USB - Files".
QString folderCaption(int art);
/// The working folder of a kind (SYS is the backup folder).
QString &folderPath(int art);

/// `Command1`(0), OK. For each furnace: all octets 0 and not active clears the
/// furnace (names and serial blank, words 216..218 0, version "00"); a changed
/// octet or link kind sets `Reinit_Ofen`; the working values go to the plant
/// (`Ofen_Seriell` is taken and dropped at once). Then the plant-wide values
/// and the backup setting. When a backup is wanted and its folder is missing:
/// "Folder <path> not found!" / "select a real FOLDER!" and false (the dialog
/// stays open). Else the year folders are checked, the configuration is
/// written, and true (the dialog closes).
bool Command1_OK();

/// `Command1`(1), Cancel: the language goes back to the one at opening.
void Command1_Cancel();

/// A language picked in the dialog: the station switches at once.
void chooseLanguage(int sprache);

/// `Command3`: writes the language table file "KM_SP.LNG" in the data folder;
/// a failure is shown. True when written.
bool Command3_Export();

/// The channel colour `kanal` (0..17) of a furnace takes the colour of
/// `FarbSift` (`FarbTopf`).
void FarbTopf(int ofen, int kanal);
/// Name of channel `kanal` of a furnace for the colour list.
QString colourChannelName(int ofen, int kanal);

/// `MTXT` of a furnace: page 0..2 its messages 1..16, 17..32, 33..48, page 3
/// the track names and the two names, page 4 the code table.
QString MTXT_Text(int ofen);
/// `MTXTbutton`: the next page; page 2 is skipped on a furnace of at most 32
/// messages, after page 4 comes page 0.
void MTXTbutton(int ofen);

/// The status line of a furnace: the text of its page word.
QString statusLine(int ofen);
/// `LOAD_STAT`: "OK" when the furnace is online and no text load runs, else blanks.
QString LOAD_STAT(int ofen);

/// The lines of the "PLC-Info" page of a furnace: what its PLC reports.
QStringList PLC_Info(int ofen);

} // namespace kal
