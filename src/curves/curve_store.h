#pragma once
// The curve store: the batch on view in the curve window, from its file to
// the page arrays.
//
// `Charge_geladen` classifies the file named by `Kurve_Datei` (`Kurven_ART`),
// finds its span and fills the entry lists (`Kurvenwerte_NEU`): a first pass
// over all records for the first and last time and the texts, a second pass
// that decodes every new record into entries. The records of a headed
// furnace come in groups of four (154..157) that only count when complete
// and in order; a plain file has one sample a record. `Charge_Online` walks a
// batch that is still written again and appends only the records beyond
// `Satz_Letzter`.
//
// The slot 0 of the channel tables belongs to the batch on view: the loader
// fills it from the identity words in the file's head.
//
// All state of the window lives in `Kurve` (reset with the plant). The texts
// of the labels are kept here too, so the form only shows them.

#include "curves/curve_page.h"
#include "curves/entry_lists.h"
#include "recording/batch_reader.h"

#include <QDateTime>
#include <QString>
#include <array>

namespace kal {

constexpr int KURVE_MELDUNGEN = 48;     ///< message names of a batch
constexpr int KURVE_SEGMENTE = 20;      ///< programme segments 1..20
constexpr int CHARGE_BILD_WORTE = 701;  ///< recorded words 0..700
constexpr int RASTER_MIN = 20;          ///< seconds per point at the closest zoom
constexpr int32_t DAUER_MAX = 2400000;  ///< longest span of a batch, seconds
constexpr int TASTEN = 8;               ///< button bar 0..7

/// What the window shows and keeps of the batch on view.
struct CurveWindow {
    EntryLists listen;
    PlotPage seite;

    // ---- span and page --------------------------------------------------
    bool zeitDa = false;                 ///< a valid time was found (Kurve_Erster known)
    QDateTime Kurve_Erster;
    QDateTime Kurve_Letzter;
    int32_t Kurve_Dauer = 0;             ///< seconds, 0..2400000
    int32_t Zeit_Raster = RASTER_MIN;    ///< seconds per point
    int32_t Raster_Start = RASTER_MIN;   ///< the raster that shows the whole file
    int32_t Satz_Letzter = 0;            ///< highest record decoded
    std::array<QDateTime, 5> Zeit_Marke; ///< times of points 0, 90, 180, 270, 360
    std::array<i16, LISTEN_KANAELE> Spur_Fertig{};

    // ---- the batch ----------------------------------------------------------
    i16 Kurve_Ofen = 0;                  ///< furnace number 1..8 of the batch's serial, 0 none
    QString Charge_Serie;                ///< "JJMM-NNN-TTT"
    int32_t Charge_Zahl = 0;             ///< batch number from the file name
    bool Charge_Import = false;          ///< a USB import ("US"/"DS" name)
    QString Charge_Name;                 ///< 16 characters of record 1
    QString Charge_Nummer;               ///< programme text of a 159 record
    QString Charge_Text;                 ///< 160 characters of the text records
    QString Spur_Text_1, Spur_Text_2;    ///< writing program and its version
    QString Info_Text;                   ///< segment lines and message lines
    std::array<QString, KURVE_MELDUNGEN> Meld_Text;
    std::array<QString, KURVE_SEGMENTE + 1> Segment_Text; ///< [1..20]
    i16 Meld_Anzahl = 32;
    bool Neu_Datei = false;              ///< the file has its identity head
    bool Meld_Label = false;             ///< the segment walk met an impossible number

    // ---- decoding of the coded layout ---------------------------------------------
    std::array<i16, CHARGE_BILD_WORTE> Charge_Bild{};
    bool Alles_Prozent = false;
    i16 Spur_Zahl = 0;
    i16 Gruppe_Stand = 0;
    bool Gruppe_Gut = false;
    SegmentFields Segment;               ///< fields of the group in hand
    std::array<i16, LISTEN_KANAELE> K_Soll{}, K_Ist{}, K_Out{};
    std::array<i16, HILFS_SPUREN> Hilf{}; ///< auxiliary track values in hand
    bool codiertGesehen = false;         ///< a coded group set the number format

    // ---- first pass, kept for the refresh of a running batch ------------------------
    BatchLayout layout;
    BatchSpan span;
    int gescannt = 0;                    ///< records the first pass has read

    // ---- texts of the window ---------------------------------------------------------
    QString Titel;                       ///< caption
    QString Label_Name;                  ///< label 0
    QString Label_Charge;                ///< label 12
    QString Label_Erster, Label_Letzter, Label_Dauer;
    std::array<QString, 5> Label_Marke;
    std::array<bool, TASTEN> Taste_An{}; ///< enabled buttons
    QString Bild_Datei;                  ///< picture of the load, "" none
};

/// The curve window's store (reset with the plant).
extern CurveWindow Kurve;

/// `Charge_geladen()`: clears the window and loads the file of `Kurve_Datei`:
/// caption, furnace, `Kurven_ART`, empty lists, labels, `Kurvenwerte_NEU` and
/// the first page, then the picture of the load. Never throws.
void Charge_geladen();
/// `Charge_Online(furnace index)`: the recorder wrote a sample into the batch
/// on view: the file is walked again and only its new records are appended;
/// span, page and messages follow. Never throws.
void Charge_Online(int ofen = -1);

/// `Kurven_ART()`: the kind of the file and slot 0 of the channel tables.
void Kurven_ART();
/// `Kurvenwerte_NEU()`: span, labels, entry lists, messages and the page.
void Kurvenwerte_NEU();

/// `Eintrag_Messpunkt()`: a single-record sample into the lists.
void Eintrag_Messpunkt(const BatchRecord &satz, uint32_t zeitIndex);
/// `Eintrag_Codiert()`: a record of a group (154..163) into the decoder; a
/// complete group writes its entries.
void Eintrag_Codiert(const BatchRecord &satz, uint32_t zeitIndex);
/// The address repair of old files and the percent mode, before the first
/// group of a load.
void prepareLoad();
/// `Eintrag_Meldung()`: `Segment_Text` and `Info_Text` from the message lists.
void Eintrag_Meldung();
/// The fields of a segment read back from the last 28 characters of its code,
/// the way the code was written (a field cut on the left stays cut).
SegmentFields readSegmentCode(const QString &code);
/// Unit of the gas column of the segment lines (4 characters); `zehntel` is
/// set when the flow is shown with one decimal.
QString gasUnit(bool &zehntel);
/// `Segment_Zeile`: the 54-character line of a segment.
QString Segment_Zeile(const SegmentFields &s, const QString &gasEinheit, bool gasZehntel);

} // namespace kal
