#pragma once
// The one place where the subsystems are connected: every hook through which a
// lower layer reaches a higher one (core/hooks.h) is set here.

#include <QStringList>

namespace kal {

/// Sets every hook: the recorder, the message log, the message form's refresh
/// and the curve view's live refresh for the decoder and the recorder.
void wireStation();

/// Names of the hooks that must be set before the first tick because the
/// station would lose data without them (the recorder); empty when all are set.
QStringList missingHooks();

} // namespace kal
