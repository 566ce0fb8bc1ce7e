#include "recording/recorder_elemente.h"

namespace kal {

void Element_Daten_Nehmen(int /*ofenNr*/, const std::array<BatchRecord, 4> & /*gruppe*/, const QString & /*zeit*/)
{
    // The element store and its statistics come here.
}

} // namespace kal
