#include "programs/program_select.h"

#include "config/text_ids.h"
#include "core/conversions.h"

#include <QFile>
#include <algorithm>
#include <cmath>

namespace kal {

QList<FurnaceChoice> choiceFurnaces()
{
    QList<FurnaceChoice> l;
    for (int f = 0; f < OFEN_MAX; ++f) {
        const bool adresse = plant.Ofen_IP(f, 0) != 0;
        if (plant.Ofen_Aktiv[f] == 0 && !adresse)
            continue;
        const int nr = plant.Ofen_Nr_Prog[f] >= 1 && plant.Ofen_Nr_Prog[f] <= OFEN_MAX ? plant.Ofen_Nr_Prog[f] : f + 1;
        l.append({QStringLiteral("%1: %2").arg(f + 1).arg(plant.Ofen_Name[f].trimmed()), nr});
    }
    return l;
}

int choiceFurnaceNumber(int daten)
{
    while (daten >= 10)
        daten -= 10;
    return daten;
}

QList<ProgramEntry> selectionList(int ofenNr)
{
    prog.Prog_Nr = 0;
    setProgramFurnace(ofenNr);
    if (prog.Prog_Ofen < 1)
        return {};
    if (!QFile::exists(prog.Prog_Datei))
        Prog_Neu();
    if (!QFile::exists(prog.Prog_Datei))
        return {};
    return programList(prog.Prog_Datei, prog.Prog_Name_Len);
}

int typedNumber(const QString &text)
{
    const double v = leadingNumber(text);
    return static_cast<int>(std::clamp(std::lround(v), 1L, long(plant.Prog_Anzahl)));
}

QString programNumberText(int p)
{
    return formatNumber(p, QStringLiteral("#000"));
}

QString deleteQuestion()
{
    const int ofen = prog.Prog_Ofen >= 1 ? prog.Prog_Ofen - 1 : 0;
    return typeText(ofen) + QStringLiteral(", ") + Text_Id(text::PROGRAM) + QLatin1Char(' ') +
           QString::number(prog.Prog_Nr) + QLatin1Char('\n') + Text_Id(text::DELETE_PROGRAM_Q) + QLatin1Char('\n') +
           Text_Id(text::REALLY_DELETED) + QStringLiteral("? ");
}

bool deleteSelected()
{
    const bool ok = Prog_Loeschen(prog.Prog_Datei, prog.Prog_Nr);
    prog.Prog_Nr = 0;
    return ok;
}

} // namespace kal
