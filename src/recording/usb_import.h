#pragma once
// The USB import: reads the source files of the USB folder `Pfad`[2] one after
// the other in small slices beside the polling, turns their records into
// batch files whose names begin with "US" (batch_names.h), and deletes each
// source only after its last record is stored and the target closed. A stop
// or a crash in mid-file leaves the source in place; importing it again
// doubles nothing (form 20) or asks before replacing the target (form 80).
//
// The pump is the live page's timer: each tick takes one step, opening the
// next source (and checking its header) or storing up to 50 of its records.
// A source whose header is wrong shows its box again at every tick until the
// operator switches the import off or removes the file: a hard stop.
//
// Forms:
//   20  records of 10 words: w0 kind, w1/w2 date, w3..w9; data from record 3;
//       above 200 announces batch w0 - 200; one target file per day; the
//       header's serial and name are not read (those of the last file stay)
//   60  the header is taken, no data record of this form is stored
//   80  records 3..18 hold the 32 message texts, data from record 19: sample
//       groups of 40 words (a w0 of 0 counts as 154) and records of two
//       compact blocks (131) in words 0..15 and 20..35

#include "core/plant_state.h"
#include "recording/usb_source.h"

#include <QString>
#include <QStringList>
#include <array>

namespace kal {

constexpr int USB_SAETZE_TAKT = 50;       ///< records a tick
constexpr int USB_KOMPAKT_ADRESSE = 1100; ///< scratch words of furnace 0 for the compact blocks

/// State of the import.
struct UsbState {
    i16 USB_Aktiv = 0;        ///< the import runs
    i16 USB_Offen = 0;        ///< a source is open and its header taken
    u8 USB_Satzlaenge = 0;    ///< 20, 60 or 80
    i32 USB_Saetze = 0;       ///< records of the source
    i32 USB_Satz = 0;         ///< next record
    i16 USB_Dateien = 0;      ///< files in the source list
    i16 USB_Index = 0;        ///< list position from 1; -1 start again from the first
    QString USB_Pfad;         ///< the source
    i16 USB_Charge = 0;       ///< batch being written
    QString USB_Serie;        ///< 10 characters
    QString USB_Name;         ///< 16 characters
    QString USB_Ziel;         ///< current target
    QString USB_Neu;          ///< target asked for last
    std::array<QString, 32> USB_Texte; ///< message texts of the last form-80 header
    QStringList Quell_Liste;  ///< names in the USB folder, sorted
    bool laeuft = false;      ///< a step runs (a box inside it yields to the timers)
    QString fehler;           ///< last failure noted in the error list
};
extern UsbState USB;

/// Reads the source list anew and takes its length as `USB_Dateien`.
void readSourceList();

/// `USB_Button`, the switch: running, it stops (the open source stays where it
/// is); else, with files in the list, it starts from the first.
void USB_Button();

/// `USB_ACT`: what the import's control shows. Without files the import is
/// off; while it runs the text tells the files and the record in hand.
struct UsbDisplay {
    QString text;      ///< "USB_Import, <n> Files,  Satz:<record>" while running, else ""
    QString caption;   ///< caption of the switch
    bool aktiv = false;
};
UsbDisplay USB_ACT();

/// One tick of the live page's timer for the import. Not running: refreshes
/// the source list when the import menu entry is on (`USB_Menue`) and gives
/// false, so that the page does its slow refresh. Running: one step of the
/// import, true. Never throws; a failing target is noted once in the error
/// list and the record tried again at the next tick.
bool usbImportTick();

/// `Header60`, `Header80`: take the header of the open source (the words of
/// record 1). Header80 also reads the texts of records 3..18. Both end with
/// `USB_Offen` = -1.
void Header60(const std::vector<i16> &h);
void Header80(const std::vector<i16> &h, UsbSource &quelle);

/// `Charge80(record words, kind)`: stores one record of form 80 (kind 154 or
/// 131) into the target of its batch.
void Charge80(const std::vector<i16> &w, i16 art);
/// `Charge20(record words, date)`: stores one record of form 20.
void Charge20(const std::vector<i16> &w, const RecordTime &zeit);

} // namespace kal
