#pragma once
// The configuration file "Kalmeron.DAT": the make-up of the plant in 34-byte
// records (config_record.h), ten groups of ten record numbers with the furnace
// index i added:
//
//   1+i   IP octets, type word, identity pairs A 0..3
//   11+i  colours 0..3, Charge_Pos, pairs A 4..7, Charge_Start
//   21+i  flag byte, colours 10, 4, 5, batch number (low 15 bits), pairs A 8..11,
//         Ofen_Name (1..16) and the batch number as 4 bytes (17..20)
//   31+i  colours 6..9, TempLog_Takt, words 216..218, Ofen_Serie (1..12),
//         Ofen_Version (13..14), TempLog_Schwelle (15..16)
//   41+i  colours 11..14, Element_Anz, pairs B 0..3, the three CSV column
//         sets (11..16), TempLog_Charge (17..20)
//   51+i  colours 15..17, Element_Spuren, pairs B 4..7, Ofen_Bezeichnung
//         (1..16) and the digit i+1 (20) as the mark of this version
//   61+i  Ofen_Nr_Prog (B3), Element_Rest, pairs B 8..11
//
// and the plant records 9 (language, print settings, last import path 1..20),
// 10 (import path 21..40), 19/20 log book, 29/30 USB, 39/40 CSV folder, and
// 49, 50, 59, 60, 70 the backup folder (100 characters).
//
// Flag byte of record 21+i: bit 0 Ofen_Aktiv, 1 Ofen_Charge, 2 Ofen_TempLog,
// 3 Backup_Aktiv (furnace 0 only), 4 Ofen_Seriell (written, never taken
// back), 6 Kurve_Option (furnace 0 only), 7 Ofen_UDP.

namespace kal {

/// `Config_Lesen`: reads the configuration from the data folder, with every
/// derived value and limit, then checks the folders. Without the file the
/// station starts with eight disabled furnaces after a message. Any run-time
/// error shows "ERROR:", the file and "not found!", and the station goes on.
void Config_Lesen();

/// `Config_Schreiben(take_plc)`: writes every record. With `take_plc` each
/// online furnace whose identity check failed repeatedly first takes over the
/// identity that its PLC reports (type, name, serial, version, words 216..218).
/// An I/O failure raises RunError(ERR_FILE).
void Config_Schreiben(bool take_plc);

/// `Config_Schreiben(false)` for a dialog's OK: a file that cannot be written
/// is shown ("ERROR:", the file, "not written!") and gives false.
bool saveConfig();

/// `Charge_Zustand_Sichern(ofen)`, ofen 0..7: writes the open batch of the
/// furnace (Charge_Pos, Charge_Start, Charge_Nr) into records 11+i and 21+i,
/// leaving every other field of the file as it is. An I/O failure raises
/// RunError(ERR_FILE).
void Charge_Zustand_Sichern(int ofen);

} // namespace kal
