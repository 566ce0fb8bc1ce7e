#pragma once
// The language table: every fixed word of the station's interface in six
// languages, `Sprachtext(column, id)` of the plant, with the width of each row
// (`Sprachbreite`) and the default message texts per furnace (`Meldtext`).
//
// Columns: 0 German, 1 English, 2 French, 3 Italian, 4 Spanish, 5 Dutch.
// The file prefixes of columns 3 and 4 are crossed against their text
// ("SP" for column 3, "IT" for column 4); see language_files.h.
//
// Some rows carry text in German, English and at most one other column; their
// remaining columns stay empty, and an empty entry stays empty on screen (no
// German stand-in).

#include "core/plant_state.h"

namespace kal {

/// First row of the default message texts: message n (1..48) is row 99 + n.
constexpr int MELD_ZEILE = 100;


/// The table builder, run once at start: sets every row of `Sprachtext` and its
/// width in `Sprachbreite`, copies rows 100..147 into `Meldtext` for every
/// column and furnace, and sets `Sprache` to 0 (German).
void buildLanguageTable();

/// `Sprachumschalt`, run after `Sprache` changed (and once at start): sets
/// `Befehl_Name` (9 characters, from rows 39, 10, 11, 12, 13, 14), the three
/// run-state texts of the curves ("  ---" + word + "--- " for off, hold, on),
/// `Meld_Text` of every furnace from `Meldtext` (22 characters), then calls the
/// hook `languageChanged` so that the main window re-captions its menus and
/// the open forms redraw. A `Sprache` of 6 or above is an error of the caller:
/// it raises RunError 9 and nothing changes.
void Sprachumschalt();

/// Text of row `id` in the current language: the caption of a menu entry,
/// button or column head. An empty entry stays empty.
QString languageText(int id);

/// Row that names the language of a column (71..76). Rows 74 and 75 name
/// Spanish and Italian, while columns 3 and 4 hold Italian and Spanish, so the
/// language menu lists column 3 under row 75 and column 4 under row 74.
int languageNameId(int column);

} // namespace kal
