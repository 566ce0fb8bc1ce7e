#include "core/hooks.h"

#include "core/plant_state.h"

namespace kal {

Hooks hooks;

namespace {
StateReset reset{[] { hooks = Hooks{}; }};
} // namespace

} // namespace kal
