#pragma once
// The rules of the program selection KM_ProgWahl: the furnaces to choose
// from, the list of a furnace's stored programs, the number field and the
// delete question.

#include "programs/program_file.h"

#include <QList>
#include <QString>

namespace kal {

/// A furnace of the choice: its caption and item data.
struct FurnaceChoice {
    QString text;
    int daten = 0;
};

/// The configured furnaces (enabled, or with an address): "n: name", item
/// data `Ofen_Nr_Prog` (the furnace whose program file it uses).
QList<FurnaceChoice> choiceFurnaces();

/// `Prog_Ofen` of an item: its last digit (10 taken off while 10 or above).
int choiceFurnaceNumber(int daten);

/// The list build after a change of furnace: `Prog_Nr` 0, the furnace set,
/// its file created with `Prog_Neu` when missing; the stored programs, empty
/// when the file still isn't there.
QList<ProgramEntry> selectionList(int ofenNr);

/// The number typed, limited to 1..100.
int typedNumber(const QString &text);
/// A program number as the field shows it, "#000".
QString programNumberText(int p);

/// The question before deleting `Prog_Nr`, in three lines.
QString deleteQuestion();
/// Deletes `Prog_Nr` from the file and sets `Prog_Nr` back to 0. False when
/// the file could not be written.
bool deleteSelected();

} // namespace kal
