#include "curves/curve_page.h"

namespace kal {

void PlotPage::clear()
{
    for (auto &r : Punkt_Ist)
        r.fill(0);
    for (auto &r : Punkt_Soll)
        r.fill(0);
    for (auto &r : Punkt_Out)
        r.fill(0);
    Punkt_Segment.fill(0);
    for (auto &r : Punkt_Spur)
        r.fill(0);
    Punkt_Eintrag.fill(-1);
    Spur_Letzter.fill(0);
}

} // namespace kal
