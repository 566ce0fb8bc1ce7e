#include "programs/program_view.h"

#include "config/text_ids.h"
#include "core/conversions.h"
#include "programs/program_editor.h"
#include "programs/program_transfer.h"

namespace kal {

namespace {

QString sollZeile(int v)
{
    return Text_Id(text::SET_VALUE) + QLatin1Char(' ') + Format_Zahl(v, QStringLiteral("###0")) + QStringLiteral(" °C");
}

QString maxZeile(int grenze)
{
    return Prog_Text(QStringLiteral("Max Ausgangsleistung "), QStringLiteral("Max output power ")) +
           Format_Zahl(grenze & 0xFF, QStringLiteral("##0")) + QStringLiteral(" %");
}

} // namespace

Ansicht_Seite Seite_Act(int ofenNr, const Label_Daten &label)
{
    Ansicht_Seite a;
    if (ofenNr < 1 || ofenNr > OFEN_MAX)
        return a;
    const int ofen = ofenNr - 1;
    a.leer = false;
    if (prog.Prog_Platz > 0 && Platz_Da(ofen, prog.Prog_Platz)) {
        a.offset = Speicher_Offset(ofen);
        a.titel = Text_Id(text::PROGRAM) + QLatin1Char(' ') + QString::number(prog.Prog_Platz);
    } else {
        a.titel = Text_Id(text::PROGRAM) + QLatin1Char(' ') + Text_Id(text::CURRENT).trimmed();
    }
    const Prog_Typ t = Prog_Aus_Worten(ofen, a.offset);
    a.name = t.Prog_Name;
    a.status = Page_Status(ofen);
    const int P = a.offset + 100;
    const bool argon = Label_Argon(label);
    for (int k = 0; k < PROG_SEGMENTE; ++k) {
        const int befehl = plant.SPS_Wort(ofen, P + k) & 15;
        if (befehl == BEF_ENDE) {
            a.ende = Text_Id(text::PROGRAM) + QLatin1Char(' ') + Text_Id(text::END).trimmed();
            break;
        }
        const int soll = plant.SPS_Wort(ofen, P + 20 + k);
        const int wert = plant.SPS_Wort(ofen, P + 40 + k);
        const int grenze = plant.SPS_Wort(ofen, P + 60 + k);
        Ansicht_Segment s;
        s.nr = k + 1;
        switch (befehl) {
        case BEF_RAMPE:
            s.zeilen << sollZeile(soll)
                     << Text_Id(text::RAMP) + QLatin1Char(' ') + Zehntel_Text(wert) + QStringLiteral(" K/h")
                     << maxZeile(grenze);
            break;
        case BEF_HALTEZEIT:
            s.zeilen << sollZeile(soll)
                     << Text_Id(text::HOLD) + QLatin1Char(' ') + Zehntel_Text(wert) + QStringLiteral(" h");
            break;
        case BEF_MANUELL:
            s.zeilen << sollZeile(soll)
                     << Prog_Text(QStringLiteral("Ausgangsleistung "), QStringLiteral("Output power ")) +
                            QString::number(grenze & 0xFF) + QStringLiteral(" %");
            break;
        case BEF_SPRUNG:
            s.zeilen << sollZeile(soll) << maxZeile(grenze);
            break;
        case BEF_ZYKLUS:
            s.zeilen << Prog_Text(QStringLiteral("Zielsegment "), QStringLiteral("Target segment ")) +
                            QString::number(grenze)
                     << Prog_Text(QStringLiteral("Sprunganzahl "), QStringLiteral("Repeat count ")) +
                            QString::number(wert);
            break;
        default:
            break;
        }
        const u8 bits = t.Segment[size_t(k)].Ausgang;
        for (int b = 0; b < 4; ++b)
            s.ausgang[size_t(b)] = Ausgang_Text(bits & (1 << b), b == 3 && argon);
        a.segmente.append(s);
    }
    a.laenge = Dauer_Text(Prog_Dauer_Minuten(t), QStringLiteral("#####0"));
    return a;
}

std::array<QString, 6> Platz_Tasten(int ofenNr)
{
    std::array<QString, 6> t;
    if (ofenNr < 1 || ofenNr > OFEN_MAX || !Hat_Versionswort(ofenNr - 1))
        return t;
    for (int i = 0; i < PLAETZE; ++i)
        t[size_t(i)] = Text_Id(text::MEMORY) + QLatin1Char(' ') + QString::number(i + 1);
    return t;
}

} // namespace kal
