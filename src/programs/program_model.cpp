#include "programs/program_model.h"

#include "config/paths.h"

namespace kal {

ProgramFormsState prog;

namespace {
StateReset reset{[] { prog = ProgramFormsState{}; }};

/// Befehl_Maske and the two option flags of the furnace of the working copy.
void setOptions()
{
    const int opt = prog.Prog_Ofen >= 1 ? optionWord(prog.Prog_Ofen - 1) : 0;
    int maske = plant.Befehl_Maske;
    maske = (opt & OPT_MANUELL) ? maske | 4 : maske & ~4;
    maske = (opt & OPT_ZYKLUS) ? maske | 16 : maske & ~16;
    plant.Befehl_Maske = static_cast<i16>(maske);
    prog.Mit_Ausgang = flag(opt & OPT_AUSGANG);
    prog.Mit_Zuluft = flag(opt & OPT_ZULUFT);
}

/// Soll_Max from the furnace's maximum temperature, then from the file name;
/// the first name that matches decides.
void deriveSetpointMax(const QString &datei)
{
    prog.Soll_Max = prog.Prog_Ofen >= 1 ? static_cast<i16>(plant.Ofen_Max_Temp[prog.Prog_Ofen - 1] / 10) : 0;
    if (datei.contains(QLatin1String("OV_DEN"))) {
        prog.Soll_Max = SOLL_MAX_STANDARD;
    } else if (datei.contains(QLatin1String("OV_SNT"))) {
        prog.Soll_Max = SOLL_MAX_STANDARD;
        prog.Mit_Ausgang = prog.Mit_Zuluft = TRUE16;
    } else if (datei.contains(QLatin1String("OV_ENT"))) {
        prog.Soll_Max = SOLL_MAX_ENT;
        prog.Mit_Ausgang = prog.Mit_Zuluft = TRUE16;
    } else if (datei.contains(QLatin1String("OV_ADD"))) {
        prog.Soll_Max = SOLL_MAX_STANDARD;
    }
}

} // namespace

QString programFileName(int ofenNr)
{
    return joinPath(plant.Prog_Ordner, QStringLiteral("OV_") + plant.Datei_Art[ofenNr] + QStringLiteral(".PRG"));
}

int programNameWidth(int ofenNr)
{
    return (plant.Ofen_Typ[ofenNr] & 0x1000) ? PROG_NAME_MAX : PROG_NAME_KURZ;
}

void setProgramFurnace(int ofenNr)
{
    if (ofenNr < 1 || ofenNr > OFEN_MAX) {
        prog.Prog_Ofen = 0;
        return;
    }
    prog.Prog_Ofen = static_cast<u8>(ofenNr);
    prog.Prog_Name_Len = programNameWidth(ofenNr);
    prog.Prog_Lang = flag(prog.Prog_Name_Len > PROG_NAME_KURZ);
    prog.Prog_Datei = programFileName(ofenNr);
    setProgramLimits(prog.Prog_Datei);
}

void setProgramLimits(const QString &datei)
{
    setOptions();
    deriveSetpointMax(datei);
}

int optionWord(int ofen)
{
    const QByteArray b = plant.Ofen_Version[ofen].toLatin1();
    const int lo = b.size() > 0 ? u8(b[0]) : 0;
    const int hi = b.size() > 1 ? u8(b[1]) : 0;
    return lo | hi << 8;
}

bool hasVersionWord(int ofen)
{
    return plant.Ofen_Typ[ofen + 1] < 0;
}

bool versionWordIsOne(int ofen)
{
    return plant.Ofen_Typ[ofen + 1] == 1;
}

int Zuluft_Max(int ofen)
{
    return versionWordIsOne(ofen) ? 400 : 250;
}

QString typeText(int ofen)
{
    const QString t = plant.Ofen_Bezeichnung[ofen].trimmed();
    return t.isEmpty() ? plant.Ofen_Name[ofen].trimmed() : t;
}

QString localText(const QString &deutsch, const QString &englisch)
{
    return plant.Sprache == 0 ? deutsch : englisch;
}

ProgramSegment newSegment()
{
    return ProgramSegment{};
}

QString paddedName(const QString &name, int laenge)
{
    return name.left(laenge).leftJustified(laenge, QLatin1Char(' '));
}

} // namespace kal
