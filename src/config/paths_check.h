#pragma once
// Checks of the working folders after the configuration was read.

namespace kal {

/// `Ordner_Pruefen`: the log book, USB and CSV folders (Pfad[1..3]) in that
/// order. A stored folder that does not exist is replaced by its default under
/// the data folder; when that is missing too the user is asked "Folder Not
/// found!" ... "Create? ". Yes creates it and writes the configuration; No
/// keeps the path, and the features that use it fail softly.
void Ordner_Pruefen();

/// `Backup_Pruefen`: the batch year folder Charge_Ordner[0] = Pfad[1] + the
/// present year, created when missing; with the mirror on and Pfad[4] present,
/// the mirror year folder Charge_Ordner[1] likewise. A mirror that is the same
/// folder as the year folder switches the mirror off with a message.
void Backup_Pruefen();

} // namespace kal
