#pragma once
// The batch recorder: stores the log block a furnace offers into its batch
// file and the mirror.
//
// The word decoder calls Charge_Schreiben when a block with a good time stamp
// has arrived and recording is on, and acknowledges the block right after (0
// into the trigger word), whatever the recorder did with it. The recorder
// decides the batch (recorder_charge.h), opens the batch file
// "D<serial><number><DDMMYY>.OVD" in the year folder, writes the header of a
// headed furnace when its markers are missing, appends the records of the
// block at the next free record (40 at the least) and closes the file again,
// so that a reader can open a running batch between two blocks. With the
// mirror on (`Backup_Aktiv`), every record goes to the same record number of
// the file of the same name in the mirror folder.
//
// A failing disk or folder loses the record, never the station: the failure
// is caught here and noted once in the error list.

namespace kal {

/// `Charge_Schreiben(furnace number 1..8)`: stores the block at `Adr_Trigger`
/// of the furnace, whose time is in `Datum_Log` and whose `Log_Neu` is set.
/// A block that is dropped clears `Log_Neu`. Never throws.
void Charge_Schreiben(int ofenNr);

} // namespace kal
