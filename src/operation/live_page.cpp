#include "operation/live_page.h"

#include "core/conversions.h"
#include "core/dates.h"
#include "core/screen.h"
#include "core/word_map.h"
#include "operation/ui_text.h"
#include "recording/element_stats.h"
#include "recording/temp_log.h"
#include "recording/usb_import.h"

namespace kal {

PageImage Seite;

namespace {
StateReset reset{[] { Seite = PageImage{}; }};
} // namespace

namespace {

constexpr int REFRESH_RUNDEN = 3;  // refreshes wait this many main-cycle ticks
constexpr int BASIS_TRANSPORT = 50; // identity block at 50: the transport layout

const QString GRAD = QStringLiteral(" °C");

int plcWord(int ofen, int adresse)
{
    return plant.SPS_Wort(ofen, adresse);
}

/// Tenths of a degree as whole degrees in the "###0" format.
QString degrees(int zehntel)
{
    return formatNumber(zehntel / 10.0, QStringLiteral("###0"));
}

/// Number, ": " and the 16-character second name of the furnace.
QString furnaceText(int ofen)
{
    return QString::number(ofen + 1) + QStringLiteral(": ") + fixedWidth(plant.Ofen_Bezeichnung[ofen], 16);
}

void offlineRow(int ofen, PageRow &z)
{
    z.OfenSelect = furnaceText(ofen);
    z.Befehl.clear();
    z.Soll_Bef.clear();
    z.Sollwert.clear();
    z.Stellwert.clear();
    z.Istwert.clear();
    z.Status.clear();
    // A viewer connects to nothing: its furnaces show offline, without the
    // blinking of a lost link.
    if (plant.Ofen_Aktiv[ofen] == 0 || plant.viewer) {
        z.Status_Farbe = Farbe_Normal;
        z.Status = Text_Id(text::OFFLINE);
        return;
    }
    // An enabled furnace that is not connected blinks red.
    z.Status_Farbe = z.Status_Farbe == Farbe_Stoerung ? Farbe_Normal : Farbe_Stoerung;
    // A serial furnace (none in this plant) keeps the emptied text.
    if (plant.Ofen_Seriell[ofen] != TRUE16)
        z.Status = Text_Id(text::CONNECT);
}

/// State text and colour. A fault shows red with its word; at the next refresh
/// the colour is red already, so the state colour comes back: a fault blinks
/// against the state.
void setRowStatus(int ofen, PageRow &z, int typ)
{
    const int w37 = plcWord(ofen, word::STATUS);
    if (typ >= 4) {
        const bool fault = plcWord(ofen, word::MESSAGES) != 0 || plcWord(ofen, word::MESSAGES + 1) != 0;
        if (fault && z.Status_Farbe != Farbe_Stoerung) {
            z.Status_Farbe = Farbe_Stoerung;
            z.Status = Text_Id(text::FAULT);
        } else {
            z.Status_Farbe = Farbe_Aktiv;
            z.Status.clear();
        }
        return;
    }
    const bool fault = plcWord(ofen, word::MESSAGES + 1) != 0 || (plcWord(ofen, word::MESSAGES) & 0xFC) != 0;
    if (fault && z.Status_Farbe != Farbe_Stoerung) {
        z.Status_Farbe = Farbe_Stoerung;
        z.Status = Text_Id(text::FAULT);
    } else if (w37 & 1) {
        z.Status_Farbe = Farbe_Aktiv;
        z.Status = Text_Id(text::AUTOMATIC);
    } else if (w37 & 2) {
        z.Status_Farbe = Farbe_Warnung;
        z.Status = Text_Id(plant.Ofen_Basis[ofen] == BASIS_TRANSPORT ? text::MANUAL : text::HALTED);
    } else if (plcWord(ofen, word::START_FLAGS) & 0x4000) {
        // A timed start: the hour and minute it waits for.
        z.Status_Farbe = Farbe_Warnung;
        z.Status = Text_Id(text::START_AT) + QStringLiteral("  ") + twoDigits(plcWord(ofen, word::START_HOUR)) + QStringLiteral(":") +
                   twoDigits(plcWord(ofen, word::START_MINUTE));
    } else {
        z.Status_Farbe = Farbe_Normal;
        z.Status = Text_Id(text::OFF);
    }
}

/// Target of segment `seg`: its end temperature (word 119 + seg) and, for a
/// ramp or a hold, its rate or time (word 139 + seg). A segment number that
/// points outside the word image shows no target.
QString segmentTarget(int ofen, int seg, int art)
{
    try {
        const QString ziel = formatNumber(plcWord(ofen, word::SEGMENT_TARGETS - 1 + seg), QStringLiteral("###0")) + QStringLiteral("°C  ");
        switch (art) {
        case 1: return ziel + formatNumber(plcWord(ofen, word::SEGMENT_TIMES - 1 + seg) / 10.0, QStringLiteral("##0.0")) + QStringLiteral("K/h");
        case 2: return ziel + formatNumber(plcWord(ofen, word::SEGMENT_TIMES - 1 + seg) / 10.0, QStringLiteral("###0.0")) + QStringLiteral("h");
        case 3: return ziel + QString(8, QLatin1Char(' '));
        default: return QString();
        }
    } catch (const RunError &) {
        return QString();
    }
}

/// The running segment: number, kind and, for a ramp or a hold, the time left.
QString segmentText(int ofen, int seg, int art)
{
    const QString nr = QString::number(seg) + QStringLiteral(" ");
    const QString rest = QStringLiteral(" (") + plant.Prog_Dauer_Text[ofen] + QStringLiteral(")");
    switch (art) {
    case 1: return nr + QStringLiteral("Rampe ") + rest;
    case 2: return nr + QStringLiteral("Haltezeit ") + rest;
    case 3: return nr + QStringLiteral("Manuell");
    case 4: return nr + Text_Id(text::LOAD);
    case 5: return nr + QStringLiteral("Aufruf Programm");
    default: return nr + Text_Id(text::END);
    }
}

void onlineRow(int ofen, PageRow &z)
{
    const int typ = plant.Ofen_Typ[ofen + 1];
    // The transport layout has no segment words: Seg and Art keep their last values.
    if (plant.Ofen_Basis[ofen] != BASIS_TRANSPORT) {
        z.Seg = plcWord(ofen, word::SEGMENT);
        z.Art = plcWord(ofen, word::SEGMENT_KIND);
    }
    setRowStatus(ofen, z, typ);

    if ((plcWord(ofen, word::STATUS) & 3) != 0 && typ < 4) {
        z.Sollwert = degrees(plcWord(ofen, word::SET_VALUE)) + GRAD;
        z.Stellwert = QStringLiteral("  ") + plant.Prog_Ende_Text[ofen];
        z.Befehl = segmentText(ofen, z.Seg, z.Art);
        z.Soll_Bef = segmentTarget(ofen, z.Seg, z.Art);
    } else {
        z.Sollwert.clear();
        z.Stellwert.clear();
        z.Befehl.clear();
        z.Soll_Bef.clear();
    }
    z.Istwert = typ < 4 ? degrees(plcWord(ofen, word::ACTUAL_VALUE)) + GRAD : QString();
    z.OfenSelect = furnaceText(ofen) + QStringLiteral("\n") + plant.Block0_Zeit[ofen];
    if (plant.TempLog_Laeuft[ofen] == TRUE16)
        z.OfenSelect += QStringLiteral("  CSV");
}

/// Marks the furnace on view and chooses the detail area by its layout.
void showSelection(PageImage &bild)
{
    const int n = plant.Seite_Ofen - 1;
    if (n < 0 || n >= OFEN_MAX) {
        Kein_Ofen(bild);
        bild.Detail = PageDetailKind::Keine;
        return;
    }
    for (int i = 0; i < OFEN_MAX; ++i)
        bild.Zeile[i].Markiert = i == n;
    bild.Detail = plant.Ofen_Basis[n] == BASIS_TRANSPORT ? PageDetailKind::Transport : PageDetailKind::Kurve;
    bild.Taste_Aktiv = true;
}

} // namespace

void Seite_Act(PageImage &bild)
{
    for (int ofen = 0; ofen < OFEN_MAX; ++ofen) {
        if (plant.Ofen_Online[ofen] == 0)
            offlineRow(ofen, bild.Zeile[ofen]);
        else
            onlineRow(ofen, bild.Zeile[ofen]);
    }
    showSelection(bild);
}

bool furnaceRowClicked(PageImage &bild, int n)
{
    if (n < 0 || n >= OFEN_MAX)
        raiseBounds("OfenSelect", n);
    plant.Seite_Klick = u8(n);
    bild.Zeile[n].OfenSelect_Tipp = fixedWidth(plant.Ofen_Name[n], 16) + QStringLiteral("  ") + fixedWidth(plant.Ofen_Serie[n], 12);
    const bool gewaehlt = plant.Ofen_Online[n] != 0;
    if (gewaehlt) {
        plant.Seite_Ofen = i16(n + 1);
        plant.Seite_Index = i16(n);
        showSelection(bild);
    }
    screen().showElements();
    return gewaehlt;
}

void Kein_Ofen(PageImage &bild)
{
    for (auto &z : bild.Zeile)
        z.Markiert = false;
    bild.Label2.clear();
    bild.Label3.clear();
    bild.Taste_Aktiv = false;
}

void livePageClosed()
{
    plant.Seite_Ofen = 0;
}

void countPageWait()
{
    if (plant.Seite_Warten > 0)
        --plant.Seite_Warten;
}

bool pageTick()
{
    // A viewer imports nothing from USB sticks.
    if (!plant.viewer && usbImportTick())
        return false;
    if (plant.Seite_Warten > 0)
        return false;
    plant.Seite_Warten = REFRESH_RUNDEN;
    Seite_Act(Seite);
    return true;
}

void refreshPageNow()
{
    plant.Seite_Warten = 0;
}

void updateBlock0Time(int ofen)
{
    const QDateTime d = dateValue(plant.Datum_Block0[ofen]);
    plant.Block0_Zeit[ofen] = d.isValid() ? Datum_Text(d, QStringLiteral("TTMMJJHHMM")) : QString();
}

} // namespace kal

namespace kal {

PageDetail pageDetailText(int f)
{
    PageDetail d;
    d.titel = QStringLiteral("%1 %2: %3").arg(Text_Id(text::FURNACE).trimmed()).arg(f + 1).arg(plant.Ofen_Name[f]);
    d.zeilen << QStringLiteral("%1  %2").arg(plant.Ofen_Serie[f], plant.PLC_Bezeichnung[f]);
    d.zeilen << QStringLiteral("%1: %2 °C    %3: %4 °C    %5: %6 %")
                    .arg(Text_Id(text::SET_VALUE).trimmed())
                    .arg(plant.SPS_Wort(f, word::SET_VALUE) / 10)
                    .arg(Text_Id(text::ACTUAL_VALUE).trimmed())
                    .arg(plant.SPS_Wort(f, word::ACTUAL_VALUE) / 10)
                    .arg(Text_Id(text::OUTPUT).trimmed())
                    .arg(plant.SPS_Wort(f, word::OUTPUT));
    d.zeilen << QStringLiteral("%1: %2    %3: %4")
                    .arg(Text_Id(text::START).trimmed(), plant.Prog_Start_Text[f], Text_Id(text::END).trimmed(),
                         plant.Prog_Ende_Text[f]);
    d.zeilen << QStringLiteral("%1: %2").arg(Text_Id(text::BATCH).trimmed()).arg(plant.Charge_Nr[f]);
    return d;
}

} // namespace kal

namespace kal {

ElementHistory elementHistory(int ofenNr)
{
    ElementHistory b;
    const int f = ofenNr - 1;
    if (f < 0 || f >= OFEN_MAX)
        return b;
    b.caption = QStringLiteral("Elemente");
    if (Ofen_Charge_SPS(f) != plant.Charge_Nr[f])
        b.caption += QStringLiteral(", Charge ") + plant.Ofen_Serie[f];
    const int elemente = std::clamp<int>(plant.Element_Spuren[f], 1, ELEMENTE);
    for (const RxEntry &e : rxHistory(ofenNr)) {
        QString z = e.satz.Zeit;
        for (int k = 0; k < elemente; ++k)
            z += formatNumber(e.satz.RX[k], QStringLiteral("#0.00")).rightJustified(5, QLatin1Char(' '));
        b.zeilen << z;
    }
    return b;
}

} // namespace kal
