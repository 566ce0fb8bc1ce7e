#include "curves/curve_store.h"

#include "config/channel_tables.h"
#include "config/paths.h"
#include "config/text_ids.h"
#include "core/conversions.h"
#include "core/dates.h"
#include "core/screen.h"
#include "curves/curve_reduce.h"
#include "curves/time_axis.h"
#include "recording/batch_browser.h"

#include <QDir>
#include <QFileInfo>
#include <exception>

namespace kal {

CurveWindow Kurve;

namespace {

StateReset reset{[] { Kurve = CurveWindow{}; }};

/// Path part of the files of the one furnace whose data start at record 40
/// in every file.
const QString QRV_PFAD = QStringLiteral("0708001QRV");
const QString QRV_SERIE = QStringLiteral("0708-001-QRV");

/// Minutes of 01.01.2000 on the scale of minutesValue.
const int64_t MINUTEN_2000 = int64_t(QDate(2000, 1, 1).toJulianDay()) * 1440;

/// Time key of a kept record, appended to the time table once per record that
/// carried a time (the records of a group share the key of their first).
class TimeKeyWriter {
public:
    uint32_t index(const AcceptedRecord &a)
    {
        TimeKeys &z = Kurve.listen.zeiten;
        const RecordTime &t = a.zeit;
        if (!z.stempel.empty() && letzter_ == t)
            return uint32_t(z.stempel.size() - 1);
        letzter_ = t;
        z.stempel.push_back(Stamp{t.Jahr, t.Monat, t.Tag, t.Stunde, t.Minute, t.Sekunde});
        z.minute.push_back(int32_t(minutesValue(t) - MINUTEN_2000));
        return uint32_t(z.stempel.size() - 1);
    }

private:
    RecordTime letzter_;
};

bool allDone()
{
    const int n = plant.Kanal_Zahl[0];
    if (n < 1)
        return false;
    for (int j = 0; j < n && j < LISTEN_KANAELE; ++j)
        if (Kurve.Spur_Fertig[size_t(j)] == 0)
            return false;
    return true;
}

/// "####0" days, ",", hours and minutes of a span in seconds.
QString spanText(int32_t s)
{
    return formatNumber(s / 86400, QStringLiteral("####0")) + QLatin1Char(',') +
           QString::asprintf("%02d:%02d", (s % 86400) / 3600, (s % 3600) / 60);
}

/// The message names of a plain batch: the furnace's texts when the batch
/// belongs to a furnace of the plant, else the language's default texts.
void plainMessageNames()
{
    for (int m = 0; m < KURVE_MELDUNGEN; ++m) {
        const QString t = Kurve.Kurve_Ofen >= 1 ? plant.Meld_Text(Kurve.Kurve_Ofen - 1, m)
                                                : plant.Sprachtext(plant.Sprache, text::MESSAGE_FIRST + m);
        Kurve.Meld_Text[size_t(m)] = fixedWidth(t, 22);
    }
}

/// Slot 0 as the plain layout has it: 4 tracks, 7 for the one furnace with
/// three tracks more.
void plainChannels()
{
    plant.Kanal_Zahl[0] = 0;
    Spuren_Setzen(0);
    plant.Kanal_Zahl[0] = Kurve.Charge_Serie == QRV_SERIE ? 7 : 4;
}

/// Hands one kept record of the second pass to the decoders.
bool enterRecord(const AcceptedRecord &a, TimeKeyWriter &zeit)
{
    if (allDone())
        return false;
    Kurve.Satz_Letzter = a.nr;
    const i16 art = a.satz.Satz_Art;
    const i16 typ = plant.Ofen_Typ[0];
    if (typ < 0) {
        if (art >= 154 && art <= 163)
            Eintrag_Codiert(a.satz, zeit.index(a));
        else if (typ == -10)
            Eintrag_Messpunkt(a.satz, zeit.index(a));
    } else {
        Eintrag_Messpunkt(a.satz, zeit.index(a));
    }
    return true;
}

/// The first pass from record `von` on, then the span and its labels.
/// False when no record counted.
bool setSpan(BatchFile &datei, int von)
{
    scanTimeRange(datei, Kurve.layout, von, Kurve.span);
    Kurve.gescannt = Kurve.layout.satzZahl;
    Kurve.Charge_Text = Kurve.span.chargendaten;
    if (Kurve.span.programmDa)
        Kurve.Charge_Nummer = Kurve.span.programmText;
    if (Kurve.span.zeitSaetze == 0) {
        Kurve.zeitDa = false;
        Kurve.Label_Erster.clear();
        Kurve.Label_Letzter.clear();
        Kurve.Label_Dauer.clear();
        return false;
    }
    Kurve.zeitDa = true;
    Kurve.Kurve_Erster = Kurve.span.erster;
    Kurve.Kurve_Letzter = Kurve.span.letzter;
    Kurve.Label_Erster = Datum_Text(Kurve.Kurve_Erster, QStringLiteral("TTMMJJHHMM"));
    Kurve.Label_Letzter = Datum_Text(Kurve.Kurve_Letzter, QStringLiteral("TTMMJJHHMM"));
    Kurve.Zeit_Marke[0] = Kurve.Kurve_Erster;
    const int64_t s = DateDiff(QStringLiteral("s"), Kurve.Kurve_Erster, Kurve.Kurve_Letzter);
    Kurve.Kurve_Dauer = int32_t(std::clamp<int64_t>(s, 0, DAUER_MAX));
    Kurve.Zeit_Raster = std::max(2, Kurve.Kurve_Dauer / 360 + 1);
    Kurve.Raster_Start = Kurve.Zeit_Raster;
    timeAxis();
    Kurve.Label_Dauer = spanText(Kurve.Kurve_Dauer);
    return true;
}

/// The second pass over the records beyond Satz_Letzter.
void readEntries(BatchFile &datei)
{
    if (plant.Ofen_Typ[0] < 0)
        prepareLoad();
    // A first load reserves the columns for the whole file at once; a running
    // batch grows by a few records a time.
    const int neu = std::max(0, Kurve.layout.satzZahl - std::max(Kurve.Satz_Letzter, Kurve.layout.startSatz - 1));
    const int proSatz = plant.Ofen_Typ[0] < 0 ? neu / 4 + 1 : neu;
    if (neu > 1000) {
        for (auto &l : Kurve.listen.Wertliste)
            l.reserve(proSatz);
        for (int j = 0; j < plant.Kanal_Zahl[0] && j < LISTEN_KANAELE; ++j) {
            Kurve.listen.Sollliste[size_t(j)].reserve(proSatz);
            Kurve.listen.Sollliste[size_t(j)].out.reserve(Kurve.listen.Sollliste[size_t(j)].out.size() + size_t(proSatz));
        }
        for (int m = 0; m < 4; ++m)
            Kurve.listen.Meldliste[size_t(m)].reserve(proSatz);
        Kurve.listen.zeiten.stempel.reserve(Kurve.listen.zeiten.stempel.size() + size_t(proSatz));
        Kurve.listen.zeiten.minute.reserve(Kurve.listen.zeiten.minute.size() + size_t(proSatz));
    }
    TimeKeyWriter zeit;
    walkRecords(datei, Kurve.layout, Kurve.Satz_Letzter, [&](const AcceptedRecord &a) { return enterRecord(a, zeit); });
}

void clearCurveWindow()
{
    const QString datei = plant.Kurve_Datei;
    Kurve = CurveWindow{};
    // Buttons 3 and 4 (export and list) are there with every batch.
    Kurve.Taste_An[2] = Kurve.Taste_An[7] = true;
    Kurve.Taste_An[3] = Kurve.Taste_An[4] = true;
    Kurve.Titel = Text_Id(text::TEMPERATURE_COURSE).trimmed() + QStringLiteral("  ") + datei;
}

/// The picture of the load: per furnace first, then the plant's own.
QString findPicture()
{
    const QString stamm = dataFile(QStringLiteral("OVDSPIC"));
    const QStringList kandidaten = {stamm + QString::number(Kurve.Kurve_Ofen) + QStringLiteral(".JPG"),
                                    stamm + QString::number(Kurve.Kurve_Ofen) + QStringLiteral(".BMP"),
                                    stamm + QStringLiteral(".JPG"), stamm + QStringLiteral(".BMP")};
    for (const QString &k : kandidaten)
        if (QFileInfo(k).isFile())
            return k;
    return QString();
}

} // namespace

void Kurven_ART()
{
    for (int m = 0; m < KURVE_MELDUNGEN; ++m)
        Kurve.Meld_Text[size_t(m)] = QStringLiteral("MELD %1").arg(m, 2, 10, QLatin1Char('0'));
    Kurve.Spur_Text_1.clear();
    Kurve.Spur_Text_2.clear();
    plant.Ofen_Typ[0] = 0;
    Kurve.Meld_Anzahl = 32;
    Kurve.Neu_Datei = false;
    Kurve.layout = BatchLayout{};

    BatchFile datei;
    if (!datei.openRead(plant.Kurve_Datei))
        return;
    const BatchLayout L = detectLayout(datei);
    Kurve.layout = L;
    Kurve.Charge_Name = L.titel;
    if (L.versionDa) {
        Kurve.Spur_Text_1 = QStringLiteral("Kalmeron");
        Kurve.Spur_Text_2 = L.version;
    }
    for (int p = 0; p < 12; ++p) {
        plant.Ofen_Kennung_A(0, p) = L.kennungA[size_t(p)];
        plant.Ofen_Kennung_B(0, p) = L.kennungB[size_t(p)];
    }
    if (L.kopf && L.satzZahl >= 2) {
        plant.Ofen_Typ[0] = L.dateiTyp;
        Kurve.Neu_Datei = true;
        if (plant.Ofen_Typ[0] < 0) {
            plant.Kanal_Zahl[0] = 0;
            Spuren_Setzen(0);
        } else {
            plainChannels();
        }
        for (int m = 0; m < int(L.meldTexte.size()) && m < KURVE_MELDUNGEN; ++m)
            Kurve.Meld_Text[size_t(m)] = L.meldTexte[size_t(m)];
        return;
    }
    // Without the head the file is plain: the fixed channels of the plain
    // layout. An older file with single samples of kind 110 takes its message
    // names from the plant's texts.
    plainChannels();
    if (L.alt110)
        plainMessageNames();
}

void Kurvenwerte_NEU()
{
    Kurve.zeitDa = false;
    BatchFile datei;
    if (!datei.openRead(plant.Kurve_Datei)) {
        Kurve.Label_Erster.clear();
        Kurve.Label_Letzter.clear();
        Kurve.Label_Dauer.clear();
        timeAxis();
        return;
    }
    // The head is read again for the record count; the kind of the file stays
    // what Kurven_ART found.
    const int zahl = datei.count();
    Kurve.layout.satzZahl = zahl;
    const int von = Kurve.gescannt > 0 ? Kurve.gescannt + 1 : Kurve.layout.startSatz;
    if (zahl < 2 || !setSpan(datei, von)) {
        if (zahl < 2) {
            Kurve.Label_Erster.clear();
            Kurve.Label_Letzter.clear();
            Kurve.Label_Dauer.clear();
        }
        timeAxis();
        return;
    }
    readEntries(datei);
    datei.close();
    Eintrag_Meldung();
    Kurven_Zeichnen();
}

void Charge_geladen()
{
    try {
        clearCurveWindow();
        const FileNameParts n = parseBatchName(QFileInfo(plant.Kurve_Datei).fileName());
        Kurve.Charge_Serie = n.serie;
        Kurve.Charge_Zahl = n.nummer;
        Kurve.Charge_Import = n.import;
        Kurve.Kurve_Ofen = i16(matchingFurnace(n.serie));

        Kurven_ART();
        Kurve.Label_Name = Text_Sauber(Kurve.Charge_Name);
        // A file of the USB import folder: "\U" in its path.
        if (plant.Kurve_Datei.contains(QStringLiteral("/U")) ||
            plant.Kurve_Datei.contains(QDir::separator() + QStringLiteral("U")))
            Kurve.Label_Name += QStringLiteral("  (USB-Import)");
        Kurve.Label_Charge = Kurve.Charge_Serie + QStringLiteral(", ") + Text_Id(text::BATCH).trimmed() +
                             QLatin1Char(' ') + QString::number(Kurve.Charge_Zahl);
        Kurve.Info_Text.clear();
        Kurve.Charge_Nummer.clear();
        Kurvenwerte_NEU();
        Kurve.Bild_Datei = findPicture();
    } catch (const std::exception &) {
        // A file that breaks the loader leaves the window with what it had read.
    }
}

void Charge_Online(int)
{
    try {
        if (plant.Kurve_Datei.isEmpty())
            return;
        Kurvenwerte_NEU();
        screen().curveChanged();
    } catch (const std::exception &) {
        // The live refresh never disturbs the recorder that called it.
    }
}

} // namespace kal
