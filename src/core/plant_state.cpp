#include "core/plant_state.h"

#include <vector>

namespace kal {

PlantState plant;

namespace {

/// The resets of the subsystems' own state. A function-local list, so that it
/// exists before the first StateReset of any file registers in it.
std::vector<void (*)()> &resets()
{
    static std::vector<void (*)()> list;
    return list;
}

} // namespace

StateReset::StateReset(void (*reset)())
{
    resets().push_back(reset);
}

void resetPlant()
{
    plant = PlantState{};
    for (auto reset : resets())
        reset();
}

bool Ist_Typ_1(int ofenNr)
{
    return plant.Ofen_Typ[ofenNr] == 1;
}

bool Ist_Argon(int ofenNr)
{
    if (Ist_Typ_1(ofenNr))
        return true;
    return plant.Spur(ofenNr - 1, 3).contains(QLatin1String("Argon"));
}

void Ist_GKD(int ofen)
{
    plant.Ofen_GKD[ofen] = flag(plant.Ofen_Serie[ofen].contains(QLatin1String("GKD")));
}

void setFurnaceLayout(int ofen, i16 typ)
{
    bool gross = false;
    if (typ >= 0) {
        plant.Ofen_Basis[ofen] = 0;
    } else {
        plant.Ofen_Basis[ofen] = static_cast<i16>(typ & 0xFFF);
        gross = (typ & 0x1000) != 0;
    }
    plant.Ofen_Gross[ofen] = flag(gross);
    plant.Ofen_Spuren[ofen] = gross ? 30 : 16;
    plant.Prog_Page[ofen] = gross ? 1088 : 388;
    plant.Adr_Block[ofen] = gross ? 900 : 200;
}

void fillStatusTexts()
{
    // Rows that are not named stay blank: 16 blanks, the width of the field.
    const QString blank(16, QLatin1Char(' '));
    for (int i = 0; i <= 200; ++i)
        plant.Status_Text[i] = blank;
    for (int n = 1; n <= 6; ++n) {
        plant.Status_Text[n] = QStringLiteral("Upload Prog %1   ").arg(n);
        plant.Status_Text[100 + n] = QStringLiteral("Download Prog %1 ").arg(n);
    }
    for (int k = 0; k < 12; ++k) {
        plant.Status_Text[110 + k] = QStringLiteral("Load ERROR %1/%2")
                                         .arg(4 * k + 1, 2, 10, QLatin1Char('0'))
                                         .arg(4 * k + 4, 2, 10, QLatin1Char('0'));
    }
    plant.Status_Text[122] = QStringLiteral("Load Spur / CODE");
}

} // namespace kal
