#include "recording/recorder.h"

#include "core/conversions.h"
#include "core/dates.h"
#include "core/hooks.h"
#include "core/plant_state.h"
#include "recording/batch_file.h"
#include "recording/batch_names.h"
#include "recording/element_file.h"
#include "recording/element_stats.h"
#include "recording/recorder_block.h"
#include "recording/recorder_charge.h"

#include <exception>
#include <vector>

namespace kal {

namespace {

/// Serial of the one furnace whose header carries three pairs of its own.
const QString SERIE_QRV = QStringLiteral("0708-001-QRV");

/// Step numbers of the error list line.
enum RecorderStep : int {
    S_TEST = 10,
    S_DATEIEN = 50,
    S_MARKEN = 60,
    S_KOPF = 70,
    S_SAETZE = 90,
    S_ELEMENTE = 95,
    S_LIVE = 100,
    S_TEXT = 110,
};

/// The batch file and its mirror, open for one block. The file leads: its
/// record count decides where records go, and a failure on it ends the block.
/// The mirror follows at the same record numbers; a failure there is noted and
/// the mirror left alone for the rest of the block.
class OpenBatchFiles {
public:
    OpenBatchFiles(int ofen, const int &schritt) : ofen_(ofen), schritt_(schritt)
    {
        // Without a year folder the name would land in the root folder.
        if (plant.Charge_Ordner[0].isEmpty())
            throw RunError(ERR_FILE, "no batch folder");
        haupt.open(plant.Charge_Datei[ofen]);
        satzZahl = haupt.count();
        // A mirror switched on whose backup folder was missing at start has no
        // year folder: it is left out rather than written to the root folder.
        if (plant.Backup_Aktiv == 0 || plant.Charge_Ordner[1].isEmpty())
            return;
        try {
            kopie_.open(plant.Charge_Kopie[ofen]);
            mitKopie_ = true;
        } catch (const RunError &e) {
            mirrorFailed(e.number);
        }
    }

    void write(int nr, const BatchRecord *saetze, int n)
    {
        haupt.write(nr, saetze, n);
        if (!mitKopie_)
            return;
        try {
            kopie_.write(nr, saetze, n);
        } catch (const RunError &e) {
            mirrorFailed(e.number);
        }
    }
    void write(int nr, const BatchRecord &satz) { write(nr, &satz, 1); }

    BatchFile haupt;
    int satzZahl = 0; ///< records of the file when it was opened

private:
    void mirrorFailed(int nummer)
    {
        mitKopie_ = false;
        kopie_.close();
        recordFailure(ofen_, schritt_, nummer, plant.Charge_Kopie[ofen_]);
    }

    int ofen_;
    const int &schritt_;
    BatchFile kopie_;
    bool mitKopie_ = false;
};

/// Records 2, 3 and 4 carry the markers 13, 10, 58 of a written header.
bool hasMarkers(BatchFile &datei)
{
    for (int r = 0; r < 3; ++r)
        if (datei.read(2 + r).Tag != Marke_Kennung[r])
            return false;
    return true;
}

/// The identity pairs that a header written for an old single-record PLC
/// (kinds 100 and 110) carries: they describe its fixed tracks.
void setOldIdentity(int ofen)
{
    const int slot = ofen + 1;
    auto paar = [slot](int p, int a, int b) {
        plant.Ofen_Kennung_A(slot, p) = static_cast<i16>(a);
        plant.Ofen_Kennung_B(slot, p) = static_cast<i16>(b);
    };
    for (int p = 0; p < KENNUNG_PAARE; ++p)
        paar(p, 0, 0);
    paar(0, 0x10A, 0x2A);
    paar(1, 0x10B, 0x2B);
    paar(2, 0x70C, 0x31);
    paar(3, 0x0D, 0x24);
    if (Text_Sauber(plant.Ofen_Serie[ofen]) == SERIE_QRV) {
        paar(4, 0x250F, 0x54);
        paar(5, 0x060E, 0x55);
        paar(6, 0x2809, 0x2056);
    } else {
        paar(4, 0x250F, 0x3F);
    }
}

/// Records 1..5 and 8..39 of a headed file: name, identity, version, the first
/// 32 message texts of the furnace.
void writeHeader(int ofen, OpenBatchFiles &d, const RecordTime &zeit)
{
    if (plant.Log_Art == 100 || plant.Log_Art == Satz_Alt)
        setOldIdentity(ofen);
    std::array<i16, 12> a{}, b{};
    for (int p = 0; p < KENNUNG_PAARE; ++p) {
        a[p] = plant.Ofen_Kennung_A(ofen + 1, p);
        b[p] = plant.Ofen_Kennung_B(ofen + 1, p);
    }
    std::vector<QString> texte(KOPF_MELDTEXTE);
    for (int i = 0; i < KOPF_MELDTEXTE; ++i)
        texte[i] = plant.Meld_Text(ofen, i);
    for (const auto &[nr, satz] : headerRecords(plant.Ofen_Name[ofen], zeit, a, b, texte, true))
        d.write(nr, satz);
}

/// The records of a sample, a group or a program text at the next free record.
void writeRecords(int ofen, OpenBatchFiles &d, const RecordTime &zeit)
{
    const int nr = nextDataRecord(d.satzZahl);
    if (plant.Log_Art == Satz_Programm) {
        d.write(nr, programTextRecord(blockWords(ofen, plant.Adr_Trigger[ofen]), zeit));
    } else if (plant.Log_Art == Satz_Charge || plant.Log_Art == Satz_Strom) {
        LogBlock w = Log_Satz.w;
        w[0] = plant.Log_Art;
        const auto gruppe = groupRecords(w, zeit);
        d.write(nr, gruppe.data(), int(gruppe.size()));
        // The element statistics take the group outputs and the currents of
        // the stored group; a failing element file loses the round, not the sample.
        try {
            noteElementGroup(ofen, gruppe, Datum_Voll(plant.Datum_Log[ofen]));
        } catch (const RunError &e) {
            recordFailure(ofen, S_ELEMENTE, e.number, elFilePath(ofen + 1));
        }
    } else {
        d.write(nr, Satz_Einzel(blockWords(ofen, plant.Adr_Trigger[ofen]), zeit));
    }
}

/// A curve view that follows this batch file live draws the new sample.
void notifyLiveView(int ofen)
{
    if (plant.Kurve_Online != 0 && !plant.Kurve_Datei.isEmpty() && plant.Kurve_Datei == plant.Charge_Datei[ofen])
        callHook(hooks.Charge_Online, ofen);
}

/// The operator text of the panel, two records: over the first text record of
/// the file, or over the last record when there is none (the last sample then
/// gives way to the text). The records keep in Wert[2..6] what the search read
/// last. A file without any record has no place for it: the text is lost.
void writeOperatorText(int ofen, OpenBatchFiles &d)
{
    const TextSearch t = firstTextRecord(d.haupt, 1);
    const int platz = t.nr > 0 ? t.nr : d.haupt.count();
    if (platz < 1)
        return;
    const auto texte = plcTextRecords(blockWords(ofen, plant.Adr_Trigger[ofen]), t.zuletzt);
    d.write(platz, texte.data(), int(texte.size()));
}

void recordBlock(int ofen, int &schritt)
{
    schritt = S_TEST;
    plant.Log_Art = plant.SPS_Wort(ofen, plant.Adr_Trigger[ofen]);
    if (!checkBatch(ofen))
        return;

    schritt = S_DATEIEN;
    buildBatchNames(ofen);
    bool probe = false;
    {
        OpenBatchFiles d(ofen, schritt);

        // The time of every record comes from Datum_Log, on plain furnaces too,
        // whose blocks are never taken apart into the fields.
        const RecordTime zeit = timeOfText(plant.Datum_Log[ofen]);
        schritt = S_MARKEN;
        if (plant.Ofen_Typ[ofen + 1] < 0 && !hasMarkers(d.haupt)) {
            schritt = S_KOPF;
            writeHeader(ofen, d, zeit);
        }
        if (plant.Log_Art != 0 && plant.Log_Art < 200) {
            schritt = S_SAETZE;
            writeRecords(ofen, d, zeit);
            probe = true;
        }
        if (plant.Log_Art == Satz_Text) {
            schritt = S_TEXT;
            writeOperatorText(ofen, d);
        }
    }
    // The curve view reads the file anew: only once it is closed does the
    // file hold the whole sample.
    if (probe) {
        schritt = S_LIVE;
        notifyLiveView(ofen);
    }
}

} // namespace

void Charge_Schreiben(int ofenNr)
{
    const int ofen = ofenNr - 1;
    if (ofen < 0 || ofen >= OFEN_MAX)
        return;
    int schritt = 0;
    beginBlockFailures(ofen);
    try {
        recordBlock(ofen, schritt);
    } catch (const RunError &e) {
        recordFailure(ofen, schritt, e.number, plant.Charge_Datei[ofen]);
    } catch (const std::exception &) {
        recordFailure(ofen, schritt, ERR_FILE, plant.Charge_Datei[ofen]);
    }
    endBlockFailures(ofen);
}

} // namespace kal
