#include "programs/program_view.h"

#include "config/text_ids.h"
#include "core/conversions.h"
#include "programs/program_editor.h"
#include "programs/program_transfer.h"

namespace kal {

namespace {

QString setpointLine(int v)
{
    return Text_Id(text::SET_VALUE) + QLatin1Char(' ') + formatNumber(v, QStringLiteral("###0")) + QStringLiteral(" °C");
}

QString maxLine(int grenze)
{
    return localText(QStringLiteral("Max Ausgangsleistung "), QStringLiteral("Max output power ")) +
           formatNumber(grenze & 0xFF, QStringLiteral("##0")) + QStringLiteral(" %");
}

} // namespace

ViewPage Seite_Act(int ofenNr, const OutputLabels &label)
{
    ViewPage a;
    if (ofenNr < 1 || ofenNr > OFEN_MAX)
        return a;
    const int ofen = ofenNr - 1;
    a.leer = false;
    if (prog.Prog_Platz > 0 && placeReady(ofen, prog.Prog_Platz)) {
        a.offset = memoryOffset(ofen);
        a.titel = Text_Id(text::PROGRAM) + QLatin1Char(' ') + QString::number(prog.Prog_Platz);
    } else {
        a.titel = Text_Id(text::PROGRAM) + QLatin1Char(' ') + Text_Id(text::CURRENT).trimmed();
    }
    const Program t = programFromWords(ofen, a.offset);
    a.name = t.Prog_Name;
    a.status = Page_Status(ofen);
    const int P = a.offset + 100;
    const bool argon = outputIsArgon(label);
    for (int k = 0; k < PROG_SEGMENTE; ++k) {
        const int befehl = plant.SPS_Wort(ofen, P + k) & 15;
        if (befehl == BEF_ENDE) {
            a.ende = Text_Id(text::PROGRAM) + QLatin1Char(' ') + Text_Id(text::END).trimmed();
            break;
        }
        const int soll = plant.SPS_Wort(ofen, P + 20 + k);
        const int wert = plant.SPS_Wort(ofen, P + 40 + k);
        const int grenze = plant.SPS_Wort(ofen, P + 60 + k);
        ViewSegment s;
        s.nr = k + 1;
        switch (befehl) {
        case BEF_RAMPE:
            s.zeilen << setpointLine(soll)
                     << Text_Id(text::RAMP) + QLatin1Char(' ') + tenthsText(wert) + QStringLiteral(" K/h")
                     << maxLine(grenze);
            break;
        case BEF_HALTEZEIT:
            s.zeilen << setpointLine(soll)
                     << Text_Id(text::HOLD) + QLatin1Char(' ') + tenthsText(wert) + QStringLiteral(" h");
            break;
        case BEF_MANUELL:
            s.zeilen << setpointLine(soll)
                     << localText(QStringLiteral("Ausgangsleistung "), QStringLiteral("Output power ")) +
                            QString::number(grenze & 0xFF) + QStringLiteral(" %");
            break;
        case BEF_SPRUNG:
            s.zeilen << setpointLine(soll) << maxLine(grenze);
            break;
        case BEF_ZYKLUS:
            s.zeilen << localText(QStringLiteral("Zielsegment "), QStringLiteral("Target segment ")) +
                            QString::number(grenze)
                     << localText(QStringLiteral("Sprunganzahl "), QStringLiteral("Repeat count ")) +
                            QString::number(wert);
            break;
        default:
            break;
        }
        const u8 bits = t.Segment[size_t(k)].Ausgang;
        for (int b = 0; b < 4; ++b)
            s.ausgang[size_t(b)] = outputCaption(bits & (1 << b), b == 3 && argon);
        a.segmente.append(s);
    }
    a.laenge = durationText(programMinutes(t), QStringLiteral("#####0"));
    return a;
}

std::array<QString, 6> placeKeyCaptions(int ofenNr)
{
    std::array<QString, 6> t;
    if (ofenNr < 1 || ofenNr > OFEN_MAX || !hasVersionWord(ofenNr - 1))
        return t;
    for (int i = 0; i < PLAETZE; ++i)
        t[size_t(i)] = Text_Id(text::MEMORY) + QLatin1Char(' ') + QString::number(i + 1);
    return t;
}

} // namespace kal
