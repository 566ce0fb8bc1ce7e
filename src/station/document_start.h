#pragma once
// The start of a batch document made without the station running: the tables
// that loading a batch, its CSV file and its printout need, read from the data
// folder, with no channel opened, no furnace polled and nothing written to
// the folder beyond what an export writes.

namespace kal {

/// Start values, the language tables, the paths, the configuration, the
/// channel tables of every furnace and their message texts (when the message
/// store exists), the site's language file and the language switch.
void startForDocuments();

} // namespace kal
