#include "programs/program_model.h"

#include "config/paths.h"

namespace kal {

Programm_Zustand prog;

namespace {
StateReset reset{[] { prog = Programm_Zustand{}; }};
} // namespace

QString Prog_Datei_Name(int ofenNr)
{
    return Pfad_Plus(plant.Prog_Ordner, QStringLiteral("OV_") + plant.Datei_Art[ofenNr] + QStringLiteral(".PRG"));
}

void Prog_Ofen_Setzen(int ofenNr)
{
    if (ofenNr < 1 || ofenNr > OFEN_MAX) {
        prog.Prog_Ofen = 0;
        return;
    }
    prog.Prog_Ofen = static_cast<u8>(ofenNr);
    prog.Prog_Name_Len = (plant.Ofen_Typ[ofenNr] & 0x1000) ? PROG_NAME_MAX : PROG_NAME_KURZ;
    prog.Prog_Lang = flag(prog.Prog_Name_Len > PROG_NAME_KURZ);
    prog.Prog_Datei = Prog_Datei_Name(ofenNr);
}

int Ofen_Option(int ofen)
{
    const QByteArray b = plant.Ofen_Version[ofen].toLatin1();
    const int lo = b.size() > 0 ? u8(b[0]) : 0;
    const int hi = b.size() > 1 ? u8(b[1]) : 0;
    return lo | hi << 8;
}

bool Hat_Versionswort(int ofen)
{
    return plant.Ofen_Typ[ofen + 1] < 0;
}

bool Versionswort_1(int ofen)
{
    return plant.Ofen_Typ[ofen + 1] == 1;
}

int Zuluft_Max(int ofen)
{
    return Versionswort_1(ofen) ? 400 : 250;
}

QString Ofen_Typtext(int ofen)
{
    const QString t = plant.Ofen_Bezeichnung[ofen].trimmed();
    return t.isEmpty() ? plant.Ofen_Name[ofen].trimmed() : t;
}

QString Prog_Text(const QString &deutsch, const QString &englisch)
{
    return plant.Sprache == 0 ? deutsch : englisch;
}

Prog_Segment Segment_Neu()
{
    return Prog_Segment{};
}

QString Name_Fest(const QString &name, int laenge)
{
    return name.left(laenge).leftJustified(laenge, QLatin1Char(' '));
}

} // namespace kal
