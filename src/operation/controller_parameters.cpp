#include "operation/controller_parameters.h"

#include "config/text_ids.h"
#include "core/conversions.h"
#include "core/word_map.h"
#include "link/frames.h"

#include <algorithm>
#include <cmath>

namespace kal {

RegParState RegPar;

namespace {

StateReset reset{[] { RegPar = RegParState{}; }};

/// Words of the loop of a furnace without version word.
constexpr i16 STANDARD_ADR[9] = {0,           word::PID_P,        word::PID_I,  word::PID_D,
                                 word::PID_SAMPLE, word::SET_VALUE, word::ACTUAL_VALUE, word::OUTPUT,
                                 word::CONTROLLER_EXTRA};
/// Loops a furnace with a version word offers at most.
constexpr int REGEL_KREISE = 10;
/// Loops of a furnace without version word: the first, and six more at
/// `Mess_Basis` 200..250.
constexpr int STANDARD_KREISE = 7;

constexpr int ENTER = 13;

/// Divider and format of each parameter field.
constexpr int TEILER[4] = {100, 10, 10, 100};
const char *const FORMAT[4] = {"####0.00", "#####0.0", "#####0.0", "####0.00"};

bool hasVersion(int ofenNr)
{
    return plant.Ofen_Typ[ofenNr] < 0;
}

bool online(int ofenNr)
{
    return ofenNr >= 1 && ofenNr <= OFEN_MAX && plant.Ofen_Online[ofenNr - 1] != 0;
}

/// Channel (0..11) of loop `kreis` (1..) of a furnace with a version word.
int channelOfLoop(int ofenNr, int kreis)
{
    return plant.Reg_Kanal(ofenNr - 1, kreis);
}

void fillLoops()
{
    RegPar.MesswertWahl.clear();
    const int nr = RegPar.Reg_Ofen;
    if (nr == 0)
        return;
    const int f = nr - 1;
    const bool version = hasVersion(nr);
    const int anzahl = version ? std::min<int>(plant.Reg_Anzahl[f], REGEL_KREISE)
                               : std::clamp<int>(plant.Reg_Anzahl[f], 1, STANDARD_KREISE);
    for (int k = 1; k <= anzahl; ++k) {
        const QString name = k <= REGLER_MAX ? plant.Reg_Name(f, k - 1).trimmed() : QString();
        RegPar.MesswertWahl << (name.isEmpty() ? QString::number(k) : QStringLiteral("%1  %2").arg(k).arg(name));
    }
}

/// The image word of entry k (1..8), or 0 when the loop has none.
i16 loopWord(int k)
{
    const int adr = RegPar.Reg_Adr[k];
    if (RegPar.Reg_Ofen == 0 || adr <= 0 || adr >= SPS_WORTE)
        return 0;
    return plant.SPS_Wort(RegPar.Reg_Ofen - 1, adr);
}

/// Divider of the loop's live values: the channel's, 1 without version word.
int liveDivider()
{
    const int nr = RegPar.Reg_Ofen;
    if (nr == 0 || !hasVersion(nr) || RegPar.Wahl + 1 > REGLER_MAX)
        return 1;
    const int kanal = channelOfLoop(nr, RegPar.Wahl + 1);
    if (!decltype(plant.Kanal_Teiler)::valid(nr, kanal))
        return 1;
    return std::max<int>(1, plant.Kanal_Teiler(nr, kanal));
}

void sendField(int i, const QString &text)
{
    if (RegPar.Reg_Ofen == 0 || i < 0 || i > 3)
        return;
    SEND_BEF(RegPar.Reg_Ofen, RegPar.Reg_Adr[i + 1], inputWord(i, text),
             QStringLiteral("controller parameter %1").arg(i + 1));
    RegPar.Gezeigt[i] = text;
}

} // namespace

QList<int> regParFurnaces()
{
    QList<int> oefen;
    for (int nr = 1; nr <= OFEN_MAX; ++nr)
        if (online(nr))
            oefen << nr;
    return oefen;
}

void Ofen_Wahl()
{
    const int alt = RegPar.Reg_Ofen;
    if (!online(alt)) {
        int neu = 0;
        for (int schritt = 1; schritt <= OFEN_MAX && neu == 0; ++schritt) {
            const int nr = (alt + schritt - 1) % OFEN_MAX + 1;
            if (online(nr))
                neu = nr;
        }
        RegPar.Reg_Ofen = static_cast<u8>(neu);
    }
    fillLoops();
    if (RegPar.Reg_Ofen != alt)
        Regler_Umwahl(0);
}

void setRegParFurnace(int ofenNr)
{
    if (!online(ofenNr))
        return;
    RegPar.Reg_Ofen = static_cast<u8>(ofenNr);
    fillLoops();
    Regler_Umwahl(0);
}

void Regler_Umwahl(int wahl)
{
    RegPar.Wahl = std::max(0, wahl);
    RegPar.Reg_Adr.fill(0);
    RegPar.Mess_Basis = 0;
    const int nr = RegPar.Reg_Ofen;
    if (nr != 0 && RegPar.Wahl < RegPar.MesswertWahl.size()) {
        if (!hasVersion(nr)) {
            RegPar.Mess_Basis = static_cast<i16>(RegPar.Wahl == 0 ? 0 : 190 + 10 * RegPar.Wahl);
            for (int k = 1; k <= 8; ++k)
                RegPar.Reg_Adr[k] = static_cast<i16>(STANDARD_ADR[k] + RegPar.Mess_Basis);
        } else {
            const int kanal = channelOfLoop(nr, RegPar.Wahl + 1);
            if (kanal >= 0 && kanal < SPUR_MAX) {
                for (int j = 0; j < 4; ++j)
                    RegPar.Reg_Adr[1 + j] = plant.Reg_Adr(nr, kanal * 4 + j);
                RegPar.Reg_Adr[5] = plant.Kanal_Adr_Soll(nr, kanal);
                RegPar.Reg_Adr[6] = plant.Kanal_Adr_Ist(nr, kanal);
                RegPar.Reg_Adr[7] = plant.Kanal_Adr_Out(nr, kanal);
            }
        }
    }
    RegPar.Reg_Neu = true;
    RegPar.Per_Taste.fill(false);
    RegPar.Verlauf.clear();
}

QString regParTitle()
{
    QString titel = Text_Id(text::CONTROL_PARAMETERS).trimmed();
    const int nr = RegPar.Reg_Ofen;
    if (nr == 0)
        return titel;
    titel += QStringLiteral(" - ") + Text_Id(text::FURNACE).trimmed() + QLatin1Char(' ') + QString::number(nr);
    const QString name = plant.Ofen_Name[nr - 1].trimmed();
    if (!name.isEmpty())
        titel += QStringLiteral(": ") + name;
    if (RegPar.Wahl < RegPar.MesswertWahl.size())
        titel += QStringLiteral(" - ") + RegPar.MesswertWahl[RegPar.Wahl];
    return titel;
}

ControllerValues Reglerwerte_akt()
{
    ControllerValues r;
    r.eingabe_neu = RegPar.Reg_Neu;
    RegPar.Reg_Neu = false;
    if (RegPar.Reg_Ofen == 0) {
        if (r.eingabe_neu)
            RegPar.Gezeigt = r.Eingabe;
        return r;
    }
    for (int i = 0; i < 4; ++i) {
        const QString t = formatNumber(double(loopWord(i + 1)) / TEILER[i], QString::fromLatin1(FORMAT[i])).trimmed();
        r.Ausgabe[i] = t;
        r.Eingabe[i] = t;
    }
    if (r.eingabe_neu)
        RegPar.Gezeigt = r.Eingabe;

    const int teiler = liveDivider();
    const QString format = teiler > 1 ? QStringLiteral("#####0.0") : QStringLiteral("#####0");
    for (int k = 0; k < 4; ++k) {
        const double v = double(loopWord(5 + k)) / (k < 2 ? teiler : 1);
        r.Live[k] = RegPar.Reg_Adr[5 + k] > 0 ? formatNumber(v, k < 2 ? format : QStringLiteral("#####0")).trimmed()
                                              : QString();
    }
    const int f = RegPar.Reg_Ofen - 1;
    const int kreis = RegPar.Wahl + 1;
    if (kreis <= REGLER_MAX)
        r.Einheit = plant.Reg_Einheit(f, kreis - 1).trimmed();

    RegPar.Verlauf.append({loopWord(5), loopWord(6), loopWord(7)});
    while (RegPar.Verlauf.size() > REGPAR_VERLAUF)
        RegPar.Verlauf.removeFirst();
    return r;
}

i16 inputWord(int i, const QString &text)
{
    QString t = text;
    t.replace(QLatin1Char(','), QLatin1Char('.'));
    const double zahl = leadingNumber(t) * (i == 0 || i == 3 ? 100 : 10);
    if (!std::isfinite(zahl) || zahl < 0)
        return 0;
    if (zahl > 32767)
        return 32767;
    return static_cast<i16>(std::lround(zahl));
}

bool inputKey(int i, int taste, const QString &text)
{
    if (taste != ENTER || i < 0 || i > 3)
        return false;
    RegPar.Per_Taste[i] = true;
    sendField(i, text);
    return RegPar.Reg_Ofen != 0;
}

void inputLeft(int i, const QString &text)
{
    if (i < 0 || i > 3)
        return;
    if (RegPar.Per_Taste[i]) {
        RegPar.Per_Taste[i] = false;
        return;
    }
    if (text != RegPar.Gezeigt[i])
        sendField(i, text);
}

} // namespace kal
