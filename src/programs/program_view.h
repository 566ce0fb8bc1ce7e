#pragma once
// The text of the program view KM_ProgView: the program a furnace runs, or
// the one of a memory place once the PLC has put it into the transfer area,
// read straight from the word image.

#include "programs/program_file.h"

#include <QList>
#include <QString>
#include <QStringList>
#include <array>

namespace kal {

/// One segment as the view shows it.
struct ViewSegment {
    int nr = 0;                      ///< 1..20
    QStringList zeilen;              ///< one to three lines
    std::array<QString, 4> ausgang;  ///< "-1-" / "-0-" ("-Ar-" / "-N2-" for the fourth)
};

struct ViewPage {
    bool leer = true;          ///< no furnace: nothing was read
    QString titel;             ///< "Programm aktuell" or "Programm n"
    QString name;
    int offset = 0;            ///< `Prog_Offset` of the words shown
    QList<ViewSegment> segmente; ///< up to the first end
    QString ende;              ///< "Programm Ende" when an end was met
    QString laenge;            ///< running time, "#####0:00 h"
    QString status;            ///< status text of the page word
};

/// `Seite_Act` of furnace number `ofenNr` (0: none, nothing is read) with the
/// place `prog.Prog_Platz`: the place's words once the page word reads
/// 1100 + place, else the active program. `label` says how the fourth output
/// shows.
ViewPage Seite_Act(int ofenNr, const OutputLabels &label);

/// Captions of the view's place keys `Taste(0)` .. `Taste(5)`: "Speicher 1" ..
/// "Speicher 6" on a furnace with memory places (one with a version word),
/// empty otherwise.
std::array<QString, 6> placeKeyCaptions(int ofenNr);

} // namespace kal
