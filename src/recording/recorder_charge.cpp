#include "recording/recorder_charge.h"

#include "config/config_file.h"
#include "config/paths.h"
#include "core/dates.h"
#include "core/plant_state.h"
#include "core/screen.h"
#include "recording/recorder_block.h"

#include <exception>

namespace kal {

namespace {

bool validFurnace(int ofen) { return ofen >= 0 && ofen < OFEN_MAX; }

/// The block lies more than the least life of a batch after its start. A start
/// that can't be read counts as no batch, so the new number opens one.
bool minimumLifePassed(int ofen)
{
    const QDateTime start = dateValue(plant.Charge_Start[ofen]);
    const QDateTime jetzt = dateValue(plant.Datum_Log[ofen]);
    if (!start.isValid() || !jetzt.isValid())
        return true;
    return DateDiff(QStringLiteral("n"), start, jetzt) > CHARGE_MIN_MINUTEN;
}

/// Headed furnace. `neu` is set when the block opens a batch, `N` is its
/// number. False when the block is not stored at all.
bool checkHeadedBatch(int ofen, bool &neu, i32 &N)
{
    LogBlock_Lesen(ofen);
    N = Log_Satz.batchNumber();
    if (plant.Log_Art != Satz_Charge)
        return plant.Log_Art == Satz_Text || plant.Log_Art == Satz_Programm || N > 0;

    i16 &logNeu = plant.Log_Neu[ofen];
    if (N <= 0) {
        logNeu = 0;
        return true;
    }
    if (plant.Charge_Gueltig[ofen] == 0) {
        neu = true;
    } else if (N != plant.Charge_Nr[ofen]) {
        if (plant.Charge_Nr_Neu[ofen] != N)
            logNeu = 0; // first sighting of a new number
        else if (minimumLifePassed(ofen))
            neu = true;
        else
            logNeu = 0;
    }
    // The last number seen: a pending number is forgotten when the number of
    // the open batch comes back.
    plant.Charge_Nr_Neu[ofen] = N;
    return true;
}

/// Plain furnace: an announcement names the batch; samples keep the last one.
/// The operator text (9001) is no announcement of batch 8801: it belongs to
/// the batch announced last, like a sample.
void checkPlainBatch(int ofen, bool &neu, i32 &N)
{
    N = plant.Charge_Nr[ofen];
    if (plant.Log_Art > 200 && plant.Log_Art != Satz_Text) {
        N = plant.Log_Art - 200;
        if (plant.Charge_Gueltig[ofen] == 0 || N != plant.Charge_Nr[ofen])
            neu = true;
    }
    if (N <= 0)
        plant.Log_Neu[ofen] = 0;
}

void openBatch(int ofen, i32 N)
{
    plant.Charge_Nr[ofen] = N;
    plant.Charge_Start[ofen] = plant.Datum_Log[ofen];
    plant.Charge_Gueltig[ofen] = flag(Datum_Gueltig(plant.Datum_Log[ofen]) == QLatin1String("True"));
    plant.Charge_Pos[ofen] = static_cast<i16>(static_cast<uint16_t>(Log_Satz.w[36]) >> 8);
    // The batch file is written even when the configuration can't be: the
    // record is worth more than the state for a restart.
    try {
        Charge_Zustand_Sichern(ofen);
    } catch (const RunError &e) {
        recordFailure(ofen, 30, e.number, dataFile(CONFIG_DATEI));
    } catch (const std::exception &) {
        recordFailure(ofen, 30, ERR_FILE, dataFile(CONFIG_DATEI));
    }
}

} // namespace

bool checkBatch(int ofen)
{
    const i16 typ = plant.Ofen_Typ[ofen + 1];
    bool neu = false;
    i32 N = 0;
    if (typ < 0) {
        if (!checkHeadedBatch(ofen, neu, N))
            return false;
    } else if (typ <= 6) {
        checkPlainBatch(ofen, neu, N);
    } else {
        return false;
    }
    if (neu && plant.Log_Neu[ofen] != 0 && N > 0)
        openBatch(ofen, N);
    return plant.Log_Neu[ofen] != 0 && plant.Charge_Nr[ofen] > 0;
}

void recordFailure(int ofen, int schritt, int nummer, const QString &pfad)
{
    const QString line = systemDateText(now()) + QStringLiteral("   Line ") + QString::number(schritt) +
                         QStringLiteral("   Err: ") + QString::number(nummer) + QStringLiteral("   ") + pfad;
    if (validFurnace(ofen)) {
        plant.Charge_Fehler_Block[ofen] = TRUE16;
        // A full disk fails every block, at whatever step: the list gets the
        // line once per error and file.
        const QString art = QString::number(nummer) + QLatin1Char('|') + pfad;
        if (plant.Charge_Fehler_Text[ofen] == art)
            return;
        plant.Charge_Fehler_Text[ofen] = art;
    }
    LogList_Add(line);
}

void beginBlockFailures(int ofen)
{
    if (validFurnace(ofen))
        plant.Charge_Fehler_Block[ofen] = FALSE16;
}

void endBlockFailures(int ofen)
{
    if (validFurnace(ofen) && plant.Charge_Fehler_Block[ofen] == 0)
        plant.Charge_Fehler_Text[ofen].clear();
}

} // namespace kal
