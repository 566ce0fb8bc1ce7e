#pragma once
// The office viewer (`kalmeron --view`): the same program without PLC traffic,
// recording, USB import or temperature log, beside a station that may be
// writing the batches it shows. Start-up and the main cycle ask
// `plant.viewer` and leave out what a viewer must not do; this file holds
// what only a viewer does.

namespace kal {

/// Once a second in a viewer: the batch on view in the curve window is read
/// again when its file grew since the last look, for a batch that a station
/// on the same folder is still writing. A file that shrank or vanished is
/// left as it was shown.
void viewerTick();

} // namespace kal
