#include "core/hooks.h"

namespace kal {

Hooks hooks;

} // namespace kal
