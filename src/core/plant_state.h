#pragma once
// The plant state: one process-wide set of plain tables that every subsystem
// shares. There are no accessors and no behaviour here; the tables are read
// and written by name. All access happens on the one event-loop thread.
//
// Index conventions (they stand behind every table):
//   furnace index 0..7; a furnace *number* shown or passed is index+1, 0 = none
//   channel index 0..8; channel 8 is the shared panel-server channel
//   slot of a channel table: 0 the batch on view, 1..8 the furnaces
//   flags are 16-bit integers, -1 true and 0 false
//   SPS_Wort: furnace + 8 * word, word 0..1140
//
// Tables are Table/Table2 (tables.h): an index outside a table raises
// RunError(9) and changes nothing.
//
// A test gets a clean plant with resetPlant(), which also puts the own state of
// every subsystem back (see StateReset).

#include "core/tables.h"

#include <QByteArray>
#include <QDateTime>
#include <QString>
#include <QStringList>
#include <cstdint>

namespace kal {

using i16 = int16_t;
using u8 = uint8_t;
using i32 = int32_t;

constexpr int OFEN_MAX = 8;          ///< furnaces
constexpr int KANAL_MAX = 9;         ///< network channels (8 = server)
constexpr int SPS_WORTE = 1141;      ///< PLC words per furnace, 0..1140
constexpr int SERVER_WORTE = 9001;   ///< server image words, 0..9000
constexpr int PUFFER_MAX = 1000;     ///< TCP receive buffer, elements 1..1000
constexpr int SPRACHEN = 6;
constexpr int SPRACH_IDS = 172;
constexpr int SPUR_MAX = 32;         ///< channels (tracks) per channel-table slot
constexpr int SLOTS = 9;             ///< channel-table slots: 0 view, 1..8 furnaces
constexpr int REGLER_MAX = 12;       ///< controllers per furnace (numbers 1..)
constexpr int KENNUNG_PAARE = 12;    ///< identity pairs per furnace
constexpr int MELD_PRO_OFEN = 48;

constexpr i16 TRUE16 = -1;
constexpr i16 FALSE16 = 0;
inline i16 flag(bool b) { return b ? TRUE16 : FALSE16; }

struct PlantState {
    // ---- PLC images -------------------------------------------------------
    Table2<i16, OFEN_MAX, SPS_WORTE> SPS_Wort;       ///< (furnace, word)
    Table<i16, SERVER_WORTE> Server_Wort;            ///< absolute server address

    // ---- furnace table (configuration) -------------------------------------
    Table2<u8, OFEN_MAX, 4> Ofen_IP;                 ///< (furnace, octet), octet 0 leftmost
    Table<i16, SLOTS> Ofen_Typ;                      ///< furnace number 1..8; 0 the batch on view
    Table<QString, OFEN_MAX> Ofen_Name;              ///< 16 chars
    Table<QString, OFEN_MAX> Ofen_Bezeichnung;       ///< 16 chars
    Table<QString, OFEN_MAX> Ofen_Serie;             ///< 12 chars "JJMM-NNN-TTT"
    Table<QString, OFEN_MAX> Ofen_Version;           ///< 2 chars
    Table<i16, OFEN_MAX> Ofen_Aktiv;
    Table<i16, OFEN_MAX> Ofen_Charge;
    Table<i16, OFEN_MAX> Ofen_TempLog;
    Table<i16, OFEN_MAX> TempLog_Takt;               ///< seconds, 5..3600
    Table<i16, OFEN_MAX> TempLog_Schwelle;           ///< 0..300
    Table<i32, OFEN_MAX> TempLog_Charge;
    Table<i16, OFEN_MAX> TempLog_Laeuft;             ///< the temperature log is writing
    Table<i16, KANAL_MAX> Ofen_UDP;                  ///< -1 memory link/UDP, 0 Modbus/TCP; [8] server
    Table<i16, OFEN_MAX> Ofen_Seriell;               ///< always 0 in this system
    Table<i16, OFEN_MAX> Ofen_Basis;
    Table<i16, OFEN_MAX> Ofen_Gross;
    Table<i16, OFEN_MAX> Ofen_Spuren;                ///< 16 plain, 30 large
    Table<i16, OFEN_MAX> Prog_Page;                  ///< 388 plain, 1088 large
    Table<i16, OFEN_MAX> Adr_Block;                  ///< 200 plain, 900 large
    Table<i16, OFEN_MAX> Ofen_Server;
    Table<i16, OFEN_MAX> Ofen_GKD;
    Table<i16, OFEN_MAX> Ofen_Nr_Prog;               ///< furnace number 1..8 for program selection
    Table<i16, OFEN_MAX> Ofen_Opt_A;
    Table<i16, OFEN_MAX> Ofen_Opt_B;

    // ---- identity shadow ------------------------------------------------------
    Table2<i16, SLOTS, KENNUNG_PAARE> Ofen_Kennung_A; ///< (furnace+1, pair)
    Table2<i16, SLOTS, KENNUNG_PAARE> Ofen_Kennung_B; ///< (furnace+1, pair)
    Table<i16, OFEN_MAX> Ofen_Wert216;
    Table<i16, OFEN_MAX> Ofen_Wert217;
    Table<i16, OFEN_MAX> Ofen_Wert218;

    // ---- server link -------------------------------------------------------
    Table<i16, OFEN_MAX> Server_Offset;              ///< 0 or 3000..9000
    Table<u8, OFEN_MAX> Server_IP4;                  ///< last octet of the server, 0 none
    Table<i16, OFEN_MAX> Server_Neu;
    u8 Server_Akt_IP4 = 0;                           ///< last octet channel 8 points at
    Table<i16, OFEN_MAX> Server_Meldung;             ///< countdown of the wrong-address box

    // ---- channel state (index channel 0..8) ----------------------------------
    Table<i16, KANAL_MAX> UDP_Read_Adr;
    Table<i16, KANAL_MAX> UDP_Write_Adr;
    Table<i16, KANAL_MAX> IP_Adr;                    ///< -1 idle, -2 write, -3 given up
    Table<i16, KANAL_MAX> IP_Len;
    Table<i16, KANAL_MAX> Empfang_Fehler;

    // ---- scheduler -------------------------------------------------------------
    i16 Akt_Ofen = 0;
    i16 Next_Ofen = 0;
    i16 Next_Phase = 0;
    Table<u8, OFEN_MAX> Poll_Phase;
    Table<u8, OFEN_MAX> Poll_Sub;
    Table<i16, OFEN_MAX> Poll_Max;
    Table<u8, OFEN_MAX> Poll_Skip;
    Table<u8, OFEN_MAX> Poll_Rounds;
    Table<u8, OFEN_MAX> Retry_IP;
    Table<i16, OFEN_MAX> Reconnect_Wait;
    Table<i16, OFEN_MAX> Ofen_Online;
    Table<i16, OFEN_MAX> Write_Adr;
    Table<i16, OFEN_MAX> Write_Len;
    Table<i16, OFEN_MAX> Reinit_Ofen;
    u8 Parameter_Ofen = 0;                           ///< furnace number of the settings dialog's own traffic
    i16 Any_Online = 0;
    i16 Import_Pause = 0;                            ///< USB wait counter, counted down per round
    Table<i16, OFEN_MAX> Strip_Pos;                  ///< activity strip mark 1..12
    i16 Fehler_Pause = 0;                            ///< main-cycle error mode
    i32 Fehler_Letzter = -1;
    i16 Takt_Laeuft = 0;                             ///< a Timer1 tick runs (it never re-enters)
    QStringList LogList;                             ///< error lines of the main cycle and the recorder, oldest first
    i16 Seite_Warten = 0;                            ///< live page: ticks before its next refresh
    u8 Seite_Klick = 0;                              ///< live page: row last pressed
    i16 Seite_Index = 0;                             ///< live page: row of the selected furnace
    i16 Seite_Ofen = 0;                              ///< furnace number 1..8 on the live page, 0 none

    int Modbus_Port = 502;                           ///< remote port of Modbus/TCP channels (`--modbus-port`)

    // ---- frame flags (one for all channels) ------------------------------
    i16 Lese_Antwort = 0;
    i16 Schreib_Antwort = 0;
    Table<u8, PUFFER_MAX, 1> Empfang_Puffer;         ///< TCP receive buffer 1..1000

    // ---- decode results ------------------------------------------------------
    Table<i16, OFEN_MAX> Block0_Neu;
    Table<i16, OFEN_MAX> Block1_Neu;
    Table<i16, OFEN_MAX> Block2_Neu;
    Table<i16, OFEN_MAX> Block3_Neu;
    Table<u8, OFEN_MAX> Block1_Zahl;
    Table<i32, OFEN_MAX> Ofen_Stunden;
    Table<QString, OFEN_MAX> Datum_Block0;
    Table<QString, OFEN_MAX> Datum_Log;
    Table<i16, OFEN_MAX> Log_Neu;
    Table<i16, OFEN_MAX> Kennung_Fehler;
    Table<u8, OFEN_MAX> Kennung_Zaehler;
    Table<i16, OFEN_MAX> Meld_Seite;                 ///< -1 idle, else text-load page counter
    Table<i16, OFEN_MAX> Prog_Neu;
    Table<i16, OFEN_MAX> Prog_Page_Fehlt;
    Table<i16, OFEN_MAX> Trigger_Wert;
    Table<i16, OFEN_MAX> Uhr_Korrektur;
    i16 Meld_Pruefen = 0;
    i16 Config_Save = 0;
    Table2<i32, OFEN_MAX, 3> Meld_Letzt;             ///< (furnace, word index 0..2)
    Table2<i16, OFEN_MAX, 10> Meld_Config;           ///< (furnace, 0..9) shadow of words 690..699
    Table<i16, OFEN_MAX> Meld_Config_Da;
    Table2<QString, OFEN_MAX, MELD_PRO_OFEN> Meld_Text; ///< (furnace, message 0..47), 22 chars
    Table<i16, OFEN_MAX> Meld_Anzahl;                ///< messages of the furnace: 32, or 48 on the large layout
    Table2<QString, OFEN_MAX, 4> Spur;               ///< (furnace, 0..3) track names, 8 chars
    Table2<QString, OFEN_MAX, 2> Spur_Titel;         ///< (furnace, 0..1) the two 16-char names of the text page

    // ---- message form ------------------------------------------------------
    i16 Meld_Konfig = 0;                             ///< the form runs in configuration mode
    Table<i16, OFEN_MAX> Meld_Anzeige;               ///< tick of each furnace's box; never saved
    i16 Alarme_Gezeigt = 0;                          ///< the form is shown
    int Meld_Auswahl = -1;                           ///< item data of the line last clicked (configuration mode)

    // ---- text images of the identity ------------------------------------------
    Table<QString, OFEN_MAX> PLC_Name;               ///< 16 chars, words 200..207
    Table<QString, OFEN_MAX> PLC_Serie;              ///< 12 chars, words 208..213
    Table<QString, OFEN_MAX> PLC_Version;            ///< 2 chars, word 214
    Table<QString, OFEN_MAX> PLC_Bezeichnung;        ///< 30 chars, words 180..187, 90..96

    // ---- derived program display ------------------------------------------------
    Table<QString, OFEN_MAX> Prog_Start_Text;        ///< "TTMMJJHHMM" form
    Table<QString, OFEN_MAX> Prog_Ende_Text;
    Table<QString, OFEN_MAX> Prog_Dauer_Text;        ///< 7 chars
    Table<QString, OFEN_MAX> Block0_Zeit;            ///< "TTMMJJHHMM" of the last block 0 stamp (live page)
    Table<i32, OFEN_MAX> Rest_Min;

    // ---- element data ------------------------------------------------------
    Table<i16, OFEN_MAX> Element_Anz;
    Table<i16, OFEN_MAX> Element_Spuren;             ///< limited to 18
    Table<i16, OFEN_MAX> Element_Rest;

    // ---- USB import, temperature log, element statistics ------------------
    // The furnace's heating groups (`Ofen_Gruppen`) are `Element_Anz`, its
    // elements (`Ofen_Elemente`) `Element_Spuren`.
    i16 USB_Menue = 0;                               ///< the import menu entry is on: the live page lists the sources

    // ---- batch recording ---------------------------------------------------
    Table<i32, OFEN_MAX> Charge_Nr;                  ///< open batch; below 1 none
    Table<i32, OFEN_MAX> Charge_Nr_Neu;
    Table<QString, OFEN_MAX> Charge_Start;           ///< Datum_Log of the opening block
    Table<i16, OFEN_MAX> Charge_Gueltig;
    Table<i16, OFEN_MAX> Charge_Pos;
    Table<QString, OFEN_MAX> Charge_Datei;
    Table<QString, OFEN_MAX> Charge_Kopie;
    Table<QString, 2> Charge_Ordner;                 ///< [0] year folder, [1] mirror
    i16 Backup_Aktiv = 0;
    Table<QString, OFEN_MAX> Charge_Fehler_Text;     ///< last error line of the furnace's recorder
    Table<i16, OFEN_MAX> Charge_Fehler_Block;        ///< an error was logged during the block in hand
    i16 Log_Art = 0;                                 ///< kind of the log block in hand
    QString Kurve_Datei;                             ///< batch file loaded in the curve view
    i16 Kurve_Online = 0;                            ///< the curve view follows Kurve_Datei live

    // ---- curve view and batch browser --------------------------------------------
    QString CSV_Datei;                               ///< CSV export of the chosen batch: Pfad[3] + name + ".CSV"
    QString CSV_Info_Datei;                          ///< the same with "I" for the name's first character
    i32 Wahl_Charge = 0;                             ///< batch number of the chosen line
    QString Wahl_Serie;                              ///< serial of the chosen line, "JJMM-NNN-TTT"
    QString Info_Text;                               ///< batch data text of the chosen batch, 160 chars
    QString Browser_Ordner;                          ///< folder the browser shows; survives closing it
    QString Browser_Laufwerk;                        ///< drive the browser shows
    QString User_Ordner;                             ///< the user's saved folder (OV_USERLOG.DAT)
    QString User_Laufwerk;
    QString User_Datei;                              ///< full path of OV_USERLOG.DAT
    i16 Ist_User_Ordner = 0;                         ///< Browser_Ordner is User_Ordner
    u8 User_Taste = 0;                               ///< user folder button: 0 off, 1 open, 2 default, 3 save
    i16 Ofen_Filter = 0;                             ///< bit i: furnace i ticked; 0 all
    u8 Sort_Art = 0;                                 ///< 0 by date, 1 by batch number
    i16 List16_Offen = 0;                            ///< a value list window is open: mouse moves read nothing

    // ---- channel tables (slot 0 view, 1..8 furnaces) ---------------------------
    Table<i16, SLOTS> Kanal_Zahl;
    Table2<QString, SLOTS, SPUR_MAX> Kanal_Name;
    Table2<QString, SLOTS, SPUR_MAX> Kanal_Einheit;
    Table2<i16, SLOTS, SPUR_MAX> Kanal_Teiler;
    Table2<i16, SLOTS, SPUR_MAX> Kanal_Status;
    Table2<i16, SLOTS, SPUR_MAX> Kanal_Soll_Kurve;
    Table2<i16, SLOTS, SPUR_MAX> Kanal_Adr_Soll;
    Table2<i16, SLOTS, SPUR_MAX> Kanal_Adr_Ist;
    Table2<i16, SLOTS, SPUR_MAX> Kanal_Adr_Out;
    Table2<i16, SLOTS, SPUR_MAX> Kanal_Regler;
    Table2<i32, SLOTS, SPUR_MAX> Kanal_Farbe;        ///< colour index 0..23 (configuration)
    Table<QString, SLOTS> Datei_Art;                 ///< "DEN01", "ADD 1", ...
    Table<i16, OFEN_MAX> Adr_Trigger;
    Table<i16, OFEN_MAX> Trigger_Len;

    // ---- controllers ----------------------------------------------------------
    Table<i16, OFEN_MAX> Reg_Anzahl;
    Table2<QString, OFEN_MAX, REGLER_MAX> Reg_Name;  ///< (furnace, controller number - 1)
    Table2<QString, OFEN_MAX, REGLER_MAX> Reg_Einheit;
    Table2<i16, OFEN_MAX, REGLER_MAX + 1> Reg_Kanal; ///< (furnace, controller number)
    Table2<i16, SLOTS, SPUR_MAX * 4> Reg_Adr;        ///< (slot, channel * 4 + k) parameter words

    // ---- programs ---------------------------------------------------------------
    Table<i16, OFEN_MAX> Ofen_Max_Temp;              ///< maximum temperature, 0.1 °C (system data);
                                                     ///< a tenth of it is the highest program set value

    // ---- plant-wide configuration ---------------------------------------------
    u8 Sprache = 0;                                  ///< 0..5
    Table2<QString, SPRACHEN, SPRACH_IDS> Sprachtext; ///< (language, text id)
    Table<u8, SPRACH_IDS> Sprachbreite;
    Table<QString, 6> Befehl_Name;                   ///< segment commands 0..5 in the language, 9 chars
    Table<QString, 3> Run_State_Text;                ///< "  ---" word "--- ": [0] off, [1] hold, [2] on
    /// `Meldtext[message 0..47](language, furnace 0..7)`: filled from rows
    /// 100..147 by the table builder, changed per furnace by the site text
    /// file, and carried into `Meld_Text` by `Sprachumschalt`.
    Table<Table2<QString, SPRACHEN, OFEN_MAX>, MELD_PRO_OFEN> Meldtext;
    i16 Druck_Prozent = 87;
    i16 Druck_Rand_X = 60;
    i16 Druck_Rand_Y = 55;
    i16 Kurve_Option = 0;
    i16 Aktive_Seite = 0;                            ///< page in front for printing: 1 editor, 2 curve, 3 furnace page,
                                                     ///< 4 program view, 6 element currents, 7 16-channel view, 0 none
    Table2<i16, 3, 12> CSV_Spalten;                  ///< three column sets of 12 flags
    i16 Neu_Datei = 0;
    i16 Neu_Laden = 0;
    i16 Farbe_Fehler = 0;
    i16 Karte_Da = 0;

    // ---- settings, system dialog, controller parameters, message texts --------
    Table2<i16, OFEN_MAX, 11> Code_A;                ///< (furnace, 0..10) code table of the PLC's track page
    Table2<i16, OFEN_MAX, 11> Code_B;                ///< (furnace, 0..10), the second word of each pair

    // ---- paths ------------------------------------------------------------------
    QString Daten_Ordner_Option;                     ///< folder of `--data DIR`; "" the data folder is Pfad_Drive + "Kalmeron"
    QString Pfad_Drive;
    Table<QString, 5> Pfad;                          ///< data, log book, USB, CSV, backup
    Table<QString, 2> Pfad_Karte;                    ///< memory card folder, last import path
    QString Prog_Ordner;

    // ---- office viewer -----------------------------------------------------------
    bool viewer = false;                             ///< `--view`: no PLC traffic, recording, USB import or temperature log

    // ---- start-up values ---------------------------------------------------------
    Table<QString, 201> Status_Text;                 ///< 16 chars each, rows 0..200
    QString Datum_Trenner = ".";
    QString Sekunden_Text = "s";
    i16 Live_Raster = 10;
    i16 Befehl_Maske = 3;                            ///< segment commands the editor offers: bit k-1 for command k
    i16 Prog_Anzahl = 100;                           ///< program places
    QString Datum_Von;
    QString Datum_Bis;
    QString Zahl_Format = "#0";                      ///< set by Format_Nachkomma
    i16 Datum_OK = 0;                                ///< set by Datum_Parse
    i16 Datum_Sort_OK = 0;                           ///< set by Datum_Sort
    i16 SPS_Datum_OK = 0;                            ///< set by SPS_Datum
};

/// The one plant of the process.
extern PlantState plant;

/// Zeroes every table and puts every subsystem's own state back to its start
/// values (a fresh process).
void resetPlant();

/// A subsystem whose routines keep process-wide state of their own (a form's
/// memory between refreshes, the block in hand, a test seam such as a clock)
/// defines one StateReset beside that state, so that resetPlant() resets it:
///     StateReset reset{[] { Log_Satz = LogFields{}; }};
class StateReset {
public:
    explicit StateReset(void (*reset)());
};

/// `Ist_Typ_1(furnace number)`: true when `Ofen_Typ` of that number is 1.
bool Ist_Typ_1(int ofenNr);
/// `Ist_Argon(furnace number)`: "Argon" in the fourth track name of the furnace
/// (Spur_Name, filled by the message texts), or `Ofen_Typ` 1.
bool Ist_Argon(int ofenNr);
/// `Ist_GKD(furnace index)`: sets `Ofen_GKD` to -1 when "GKD" occurs in the
/// serial number, else 0.
void Ist_GKD(int ofen);

/// The layout values of a furnace index from a type word, always set together:
/// at or above 0 the plain layout (`Ofen_Basis` 0); below 0 `Ofen_Basis` is
/// bits 0..11 and bit 12 the large layout. Large: `Ofen_Gross` -1,
/// `Ofen_Spuren` 30, `Prog_Page` 1088, `Adr_Block` 900; plain: 0, 16, 388, 200.
void setFurnaceLayout(int ofen, i16 typ);

/// Fills the non-empty rows of `Status_Text` (the words of the PLC's load state).
void fillStatusTexts();

} // namespace kal
