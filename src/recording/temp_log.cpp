#include "recording/temp_log.h"

#include "config/config_file.h"
#include "config/paths.h"
#include "core/conversions.h"
#include "core/dates.h"
#include "core/word_map.h"

#include <QFile>
#include <cstdlib>

namespace kal {

TempLogState TempLog;

namespace {
StateReset reset{[] { TempLog = TempLogState{}; }};

const QByteArray CRLF("\r\n");
const QByteArray TAB("\t");
constexpr int SOLL_MIN_DIFF = 200;  ///< set values at or below 20.0 °C show no difference
constexpr int SEGMENTE = 20;

int plcWord(int ofen, int adresse)
{
    return plant.SPS_Wort(ofen, adresse);
}

/// A number in `format`, right-aligned in six characters.
QByteArray numberField(double wert, const char *format)
{
    return Latin1Bytes(formatNumber(wert, QString::fromLatin1(format)).rightJustified(6, QLatin1Char(' ')));
}

QByteArray crlfLine(const QString &text)
{
    return Latin1Bytes(text) + CRLF;
}

/// The segment lines of the program the PLC holds: one per segment of kind
/// 1..5; the first other kind gives a line of its number alone and ends the list.
QByteArray segmentLines(int ofen)
{
    static const char *const anfang[] = {"", "GR ", "TI ", "MN ", "SV ", "LP "};
    QByteArray out;
    for (int i = 0; i < SEGMENTE; ++i) {
        const int t = (plcWord(ofen, word::SEGMENT_COMMANDS + i) & 0xFF) & 7;
        const QByteArray nn = QByteArray::number(i + 1).rightJustified(2, '0');
        if (t < 1 || t > 5) {
            out += nn + CRLF;
            break;
        }
        const bool ohneZweites = t == 3 || t == 4;
        out += QByteArray(anfang[t]) + nn + TAB + numberField(plcWord(ofen, word::SEGMENT_TARGETS + i), "0") + TAB +
               (ohneZweites ? QByteArray(6, ' ') : numberField(plcWord(ofen, word::SEGMENT_TIMES + i), "0")) + TAB +
               numberField(plcWord(ofen, word::SEGMENT_FIFTH + i) & 0xFF, "0") + CRLF;
    }
    return out;
}

/// "JJMMTT_HHMM_X<n>.TXT" from the start of the batch.
QString tempLogName(int ofen)
{
    const QDateTime start = dateValue(plant.Charge_Start[ofen]);
    const QString tag = start.isValid() ? start.toString(QStringLiteral("yyMMdd")) : QString();
    const QString zeit = start.isValid() ? start.toString(QStringLiteral("HHmm")) : QString();
    return tag + QStringLiteral("_") + zeit + QStringLiteral("_X") + QString::number(ofen + 1) + QStringLiteral(".TXT");
}

void appendToFile(const QString &pfad, const QByteArray &bytes, QIODevice::OpenMode modus)
{
    QFile f(pfad);
    if (!f.open(modus) || f.write(bytes) != bytes.size())
        throw RunError(ERR_FILE, "temperature log: " + pfad.toStdString() + ": " + f.errorString().toStdString());
}

} // namespace

i32 Ofen_Charge_SPS(int ofen)
{
    return plant.Ofen_Stunden[ofen];
}

QString tempLogPath(int ofen)
{
    return joinPath(plant.Pfad[3], QStringLiteral("Temp-X%1.TXT").arg(ofen + 1));
}

QByteArray tempLogLine(int ofen)
{
    const int soll = plcWord(ofen, word::SET_VALUE);
    const int ist = plcWord(ofen, word::ACTUAL_VALUE);
    const double diff = soll > SOLL_MIN_DIFF ? std::abs(soll - ist) / 10.0 : 0.0;
    return Latin1Bytes(now().toString(QStringLiteral("yyMMddHHmm"))) + TAB + numberField(soll / 10.0, "0.0") + TAB +
           numberField(ist / 10.0, "0.0") + TAB + numberField(diff, "0.0") + CRLF;
}

QByteArray tempLogHead(int ofen)
{
    const QDateTime start = dateValue(plant.Charge_Start[ofen]);
    QByteArray k;
    k += crlfLine(tempLogName(ofen));
    k += crlfLine(systemDateText(now()));
    k += crlfLine(fixedWidth(plant.Ofen_Name[ofen], 16));
    k += crlfLine(fixedWidth(plant.Ofen_Serie[ofen], 12));
    k += CRLF;
    k += crlfLine(start.isValid() ? Datum_Text(start, QStringLiteral("TTMMJJHHMM")) : QString());
    k += crlfLine(QStringLiteral("Charge") + QString::number(Ofen_Charge_SPS(ofen)));
    k += CRLF;
    k += segmentLines(ofen);
    k += CRLF;
    k += crlfLine(QStringLiteral("Timestamp \tSP[°C]\tPV[°C]\tSP-PV[K]"));
    return k;
}

void TempLog_Zeile(int ofen)
{
    const i32 charge = Ofen_Charge_SPS(ofen);
    if (charge <= 0)
        return;
    const QString pfad = tempLogPath(ofen);
    if (!QFile::exists(pfad))
        plant.TempLog_Charge[ofen] = -1;
    if (plant.TempLog_Charge[ofen] == charge) {
        appendToFile(pfad, tempLogLine(ofen), QIODevice::WriteOnly | QIODevice::Append);
        return;
    }
    // A new batch: the old log goes, the new one starts with its head.
    plant.TempLog_Charge[ofen] = charge;
    Config_Schreiben(false);
    appendToFile(pfad, tempLogHead(ofen) + tempLogLine(ofen), QIODevice::WriteOnly | QIODevice::Truncate);
}

void tempLogTick(int ofen)
{
    const bool programm = (plcWord(ofen, word::PROGRAM_STATE) & 3) != 0;
    i16 &nachlauf = TempLog.TempLog_Nachlauf[ofen];
    if (!programm && plant.TempLog_Laeuft[ofen] != 0) {
        // After the program: on while the furnace is still hot.
        if (plant.Ofen_Online[ofen] != 0 && plant.Ofen_TempLog[ofen] != 0 &&
            plcWord(ofen, word::ACTUAL_VALUE) / 10.0 >= plant.TempLog_Schwelle[ofen]) {
            nachlauf = NACHLAUF_TAKTE;
        } else if (nachlauf < 1) {
            nachlauf = NACHLAUF_TAKTE;
            plant.TempLog_Laeuft[ofen] = 0;
        } else {
            --nachlauf;
        }
    }
    if (programm) {
        // Offline, the furnace keeps the state it had.
        if (plant.Ofen_Online[ofen] != 0)
            plant.TempLog_Laeuft[ofen] = plant.Ofen_TempLog[ofen];
        nachlauf = NACHLAUF_TAKTE;
    }
    i16 &zaehler = TempLog.TempLog_Zaehler[ofen];
    if (plant.TempLog_Laeuft[ofen] == 0) {
        // The first line comes at the first tick after a start.
        zaehler = plant.TempLog_Takt[ofen];
        plant.TempLog_Charge[ofen] = -1;
        return;
    }
    ++zaehler;
    if (zaehler <= plant.TempLog_Takt[ofen])
        return;
    zaehler = 0;
    TempLog.TempLog_Datei[ofen] = tempLogPath(ofen);
    // Only words of a complete fresh poll round; otherwise this interval is lost.
    if (plant.Block1_Zahl[ofen] == 2) {
        plant.Block1_Zahl[ofen] = 0;
        TempLog_Zeile(ofen);
    }
}

} // namespace kal
