#include "config/settings_dialog.h"

#include "config/config_file.h"
#include "config/language_files.h"
#include "config/languages.h"
#include "config/paths.h"
#include "config/paths_check.h"
#include "config/text_ids.h"
#include "core/conversions.h"
#include "core/dialogs.h"

#include <QDir>
#include <QFileInfo>
#include <QStorageInfo>

#include <algorithm>
#include <cmath>

namespace kal {

ParameterDialogState Parameter;

namespace {

StateReset reset{[] { Parameter = ParameterDialogState{}; }};

FurnaceSettings &workingCopy(int ofen)
{
    if (ofen < 0 || ofen >= OFEN_MAX)
        raiseBounds("Parameter", ofen);
    return Parameter.Ofen[size_t(ofen)];
}

/// The whole number a field's text starts with (no number: 0).
long leadingInt(const QString &text)
{
    const double v = leadingNumber(text);
    if (!std::isfinite(v))
        return 0;
    return std::lround(std::clamp(v, -1e9, 1e9));
}

/// An octet field: a value below `lo` shows `lo`, above `hi` shows `hi`.
u8 octet(long v, int lo, int hi)
{
    return static_cast<u8>(std::clamp<long>(v, lo, hi));
}

QString withoutRoot(const QString &pfad)
{
    const QString wurzel = QStorageInfo(pfad).rootPath();
    QString rest = QDir::fromNativeSeparators(pfad);
    const QString w = QDir::fromNativeSeparators(wurzel);
    if (!w.isEmpty() && rest.startsWith(w))
        rest = rest.mid(w.size());
    while (rest.startsWith(QLatin1Char('/')))
        rest.remove(0, 1);
    return rest;
}

/// The message page lines "NN: text" of messages `erste`..`erste` + 15.
QString messagePage(int ofen, int erste)
{
    QStringList z;
    for (int n = erste; n < erste + 16; ++n)
        z << QStringLiteral("%1: %2").arg(n, 2, 10, QLatin1Char('0')).arg(plant.Meld_Text(ofen, n - 1).trimmed());
    return z.join(QLatin1Char('\n'));
}

QString wordHex(int v)
{
    return QStringLiteral("%1").arg(uint16_t(v), 4, 16, QLatin1Char('0')).toUpper();
}

} // namespace

void openParameters()
{
    Parameter = ParameterDialogState{};
    for (int f = 0; f < OFEN_MAX; ++f) {
        FurnaceSettings &w = workingCopy(f);
        for (int k = 0; k < 4; ++k)
            w.IP[size_t(k)] = plant.Ofen_IP(f, k);
        w.Aktiv = plant.Ofen_Aktiv[f];
        w.Seriell = plant.Ofen_Seriell[f];
        w.UDP = plant.Ofen_UDP[f];
        w.Charge = plant.Ofen_Charge[f];
        w.TempLog = plant.Ofen_TempLog[f];
        w.TempLog_Takt = plant.TempLog_Takt[f];
        w.TempLog_Schwelle = plant.TempLog_Schwelle[f];
        w.Nr_Prog = plant.Ofen_Nr_Prog[f] >= 1 && plant.Ofen_Nr_Prog[f] <= OFEN_MAX ? plant.Ofen_Nr_Prog[f]
                                                                                     : static_cast<i16>(f + 1);
        w.Bezeichnung = plant.Ofen_Bezeichnung[f];
        for (int k = 0; k < FARBEN_PRO_OFEN; ++k)
            w.Farbe[size_t(k)] = plant.Kanal_Farbe(f + 1, k);
    }
    Parameter.Sprache_Alt = plant.Sprache;
    Parameter.Backup_Aktiv = plant.Backup_Aktiv;
    Parameter.Kurve_Option = plant.Kurve_Option;
    Parameter.Druck_Prozent = plant.Druck_Prozent;
    Parameter.Druck_Rand_X = plant.Druck_Rand_X;
    Parameter.Druck_Rand_Y = plant.Druck_Rand_Y;
    for (int k = 1; k <= 4; ++k)
        Parameter.Pfad[size_t(k)] = plant.Pfad[k];
}

QString Text1_LostFocus(int ofen, int feld, const QString &text)
{
    FurnaceSettings &w = workingCopy(ofen);
    const long v = leadingInt(text);
    switch (feld) {
    case 0:
    case 1:
    case 2:
    case 3: {
        u8 &o = w.IP[size_t(feld)];
        if (w.Seriell == 0)
            o = octet(v, 0, 255);
        else
            o = octet(v, 1, feld == 0 ? 16 : 8);
        return QString::number(o);
    }
    case FELD_TAKT:
        w.TempLog_Takt = static_cast<i16>(v < 5 ? 60 : std::min<long>(v, 3600));
        return QString::number(w.TempLog_Takt);
    case FELD_NR_PROG:
        w.Nr_Prog = static_cast<i16>(v >= 1 && v <= OFEN_MAX ? v : ofen + 1);
        return QString::number(w.Nr_Prog);
    case FELD_BEZEICHNUNG:
        w.Bezeichnung = text.trimmed().left(16);
        if (w.Bezeichnung.isEmpty())
            w.Bezeichnung = plant.Ofen_Name[ofen];
        return w.Bezeichnung;
    case FELD_SCHWELLE:
        w.TempLog_Schwelle = static_cast<i16>(std::clamp<long>(v, 0, 300));
        return QString::number(w.TempLog_Schwelle);
    default:
        return text;
    }
}

QString addressCaption(int ofen)
{
    return workingCopy(ofen).Seriell != 0 ? QStringLiteral("COM / ADD") : QStringLiteral("TCP/IP-ADD");
}

void setOption1(int ofen, int option)
{
    FurnaceSettings &w = workingCopy(ofen);
    w.UDP = flag(option == 2);
    w.Seriell = flag(option == 1);
}

int option1Value(int ofen)
{
    const FurnaceSettings &w = workingCopy(ofen);
    return w.Seriell != 0 ? 1 : w.UDP != 0 ? 2 : 0;
}

QString Text2_LostFocus(int feld, const QString &text)
{
    const long v = leadingInt(text);
    i16 *ziel = nullptr;
    long lo = 10, hi = 200;
    switch (feld) {
    case FELD_DRUCK_PROZENT:
        ziel = &Parameter.Druck_Prozent;
        lo = 25;
        hi = 100;
        break;
    case FELD_DRUCK_RAND_X: ziel = &Parameter.Druck_Rand_X; break;
    case FELD_DRUCK_RAND_Y: ziel = &Parameter.Druck_Rand_Y; break;
    default: return text;
    }
    *ziel = static_cast<i16>(std::clamp(v, lo, hi));
    return QString::number(*ziel);
}

QString diskText()
{
    const QString pfad = Parameter.Pfad[1].isEmpty() ? plant.Pfad[0] : Parameter.Pfad[1];
    return QDir::toNativeSeparators(QStorageInfo(pfad).rootPath());
}

bool setDisk(const QString &disk)
{
    const QString d = disk.trimmed();
    if (d.isEmpty() || !QFileInfo(d).isDir()) {
        dialogs().message(QStringLiteral("Disk ") + d + QStringLiteral(": ") + QStringLiteral("select a real disk!"));
        return false;
    }
    for (int k = 1; k <= 4; ++k) {
        if (Parameter.Pfad[size_t(k)].isEmpty())
            continue;
        Parameter.Pfad[size_t(k)] =
            QDir::toNativeSeparators(QDir(d).filePath(withoutRoot(Parameter.Pfad[size_t(k)])));
    }
    return true;
}

QString folderCaption(int art)
{
    static const char *const titel[4] = {"CSV - Files", "LOG - Files", "SYS - Files", "USB - Files"};
    if (art < 0 || art > 3)
        raiseBounds("Ordner_Titel", art);
    return QString::fromLatin1(titel[art]);
}

QString &folderPath(int art)
{
    static constexpr int index[4] = {3, 1, 4, 2};
    if (art < 0 || art > 3)
        raiseBounds("Ordner_Pfad", art);
    return Parameter.Pfad[size_t(index[art])];
}

bool Command1_OK()
{
    for (int f = 0; f < OFEN_MAX; ++f) {
        const FurnaceSettings &w = workingCopy(f);
        const bool leer = std::all_of(w.IP.begin(), w.IP.end(), [](u8 o) { return o == 0; }) && w.Aktiv == 0;
        if (leer) {
            plant.Ofen_Name[f] = QString(16, QLatin1Char(' '));
            plant.Ofen_Serie[f] = QString(12, QLatin1Char(' '));
            plant.Ofen_Bezeichnung[f] = QString(16, QLatin1Char(' '));
            plant.Ofen_Wert216[f] = plant.Ofen_Wert217[f] = plant.Ofen_Wert218[f] = 0;
            plant.Ofen_Version[f] = QStringLiteral("00");
        }
        bool neu = plant.Ofen_UDP[f] != w.UDP; // another link kind needs another socket as well
        for (int k = 0; k < 4; ++k) {
            if (plant.Ofen_IP(f, k) != w.IP[size_t(k)])
                neu = true;
            plant.Ofen_IP(f, k) = w.IP[size_t(k)];
        }
        if (neu)
            plant.Reinit_Ofen[f] = TRUE16;
        plant.Ofen_Aktiv[f] = w.Aktiv;
        plant.Ofen_UDP[f] = w.UDP;
        plant.Ofen_Charge[f] = w.Charge;
        plant.Ofen_TempLog[f] = w.TempLog;
        plant.TempLog_Takt[f] = w.TempLog_Takt;
        plant.TempLog_Schwelle[f] = w.TempLog_Schwelle;
        plant.Ofen_Nr_Prog[f] = w.Nr_Prog;
        if (!leer)
            plant.Ofen_Bezeichnung[f] = w.Bezeichnung;
        for (int k = 0; k < FARBEN_PRO_OFEN; ++k)
            plant.Kanal_Farbe(f + 1, k) = w.Farbe[size_t(k)];
        // The choice of a serial link changes the dialog's limits only: this
        // station has no serial link.
        plant.Ofen_Seriell[f] = w.Seriell;
        plant.Ofen_Seriell[f] = 0;
    }
    plant.Kurve_Option = Parameter.Kurve_Option;
    plant.Druck_Prozent = Parameter.Druck_Prozent;
    plant.Druck_Rand_X = Parameter.Druck_Rand_X;
    plant.Druck_Rand_Y = Parameter.Druck_Rand_Y;
    for (int k = 1; k <= 4; ++k)
        plant.Pfad[k] = Parameter.Pfad[size_t(k)];

    plant.Backup_Aktiv = Parameter.Backup_Aktiv;
    if (plant.Backup_Aktiv != 0 && !folderExists(plant.Pfad[4])) {
        dialogs().message(QStringLiteral("Folder ") + plant.Pfad[4] + QStringLiteral(" not found!") +
                          QLatin1Char('\n') + QStringLiteral("select a real FOLDER!"));
        return false;
    }
    // The recorder writes into the year folders of the folders now set.
    Backup_Pruefen();
    return saveConfig();
}

void Command1_Cancel()
{
    if (plant.Sprache != Parameter.Sprache_Alt) {
        plant.Sprache = Parameter.Sprache_Alt;
        Sprachumschalt();
    }
}

void chooseLanguage(int sprache)
{
    if (sprache < 0 || sprache >= SPRACHEN || sprache == plant.Sprache)
        return;
    plant.Sprache = static_cast<u8>(sprache);
    Sprachumschalt();
}

bool Command3_Export()
{
    const QString pfad = dataFile(SPRACH_DATEI);
    if (writeLanguageTable(pfad))
        return true;
    dialogs().message(QStringLiteral("ERROR:\n") + pfad + QStringLiteral("\nnot written!"));
    return false;
}

void FarbTopf(int ofen, int kanal)
{
    if (kanal < 0 || kanal >= FARBEN_PRO_OFEN)
        raiseBounds("FarbTopf", kanal);
    workingCopy(ofen).Farbe[size_t(kanal)] = Parameter.Farbe_Stift;
}

QString colourChannelName(int ofen, int kanal)
{
    const QString name = kanal < SPUR_MAX ? plant.Kanal_Name(ofen + 1, kanal).trimmed() : QString();
    return QStringLiteral("%1  %2").arg(kanal + 1, 2).arg(name);
}

QString MTXT_Text(int ofen)
{
    switch (Parameter.MTXT_Seite) {
    case 0: return messagePage(ofen, 1);
    case 1: return messagePage(ofen, 17);
    case 2: return messagePage(ofen, 33);
    case 3: {
        QStringList z;
        for (int k = 0; k < 4; ++k)
            z << QStringLiteral("Spur %1: %2").arg(k + 1).arg(plant.Spur(ofen, k).trimmed());
        for (int k = 0; k < 2; ++k)
            z << QStringLiteral("Name %1: %2").arg(k + 1).arg(plant.Spur_Titel(ofen, k).trimmed());
        return z.join(QLatin1Char('\n'));
    }
    default: {
        QStringList z;
        for (int i = 0; i <= 10; ++i)
            z << QStringLiteral("Code %1: %2  %3")
                     .arg(i + 1, 2, 10, QLatin1Char('0'))
                     .arg(wordHex(plant.Code_A(ofen, i)), wordHex(plant.Code_B(ofen, i)));
        return z.join(QLatin1Char('\n'));
    }
    }
}

void MTXTbutton(int ofen)
{
    int seite = (Parameter.MTXT_Seite + 1) % MTXT_SEITEN;
    if (seite == 2 && plant.Meld_Anzahl[ofen] <= 32)
        seite = 3;
    Parameter.MTXT_Seite = seite;
}

QString statusLine(int ofen)
{
    const int wort = plant.SPS_Wort(ofen, plant.Prog_Page[ofen]);
    if (wort >= 0 && wort <= 200)
        return plant.Status_Text[wort];
    if (wort >= 1000 && wort <= 1200)
        return plant.Status_Text[wort - 1000];
    return QString(16, QLatin1Char(' '));
}

QString LOAD_STAT(int ofen)
{
    return plant.Ofen_Online[ofen] != 0 && plant.Meld_Seite[ofen] < 0 ? QStringLiteral("OK") : QStringLiteral("  ");
}

QStringList PLC_Info(int ofen)
{
    const int typ = plant.SPS_Wort(ofen, 29);
    QStringList z;
    z << QStringLiteral("%1 %2: %3")
             .arg(Text_Id(text::FURNACE).trimmed())
             .arg(ofen + 1)
             .arg(plant.Ofen_Online[ofen] != 0 ? Text_Id(text::ONLINE).trimmed() : Text_Id(text::OFFLINE).trimmed());
    z << QStringLiteral("%1: %2 (%3)").arg(Text_Id(text::TYPE).trimmed()).arg(typ).arg(wordHex(typ));
    z << QStringLiteral("Name: %1").arg(plant.PLC_Name[ofen]);
    z << QStringLiteral("%1 %2").arg(Text_Id(text::SERIAL_NO).trimmed(), plant.PLC_Serie[ofen]);
    z << QStringLiteral("Version: %1").arg(plant.PLC_Version[ofen]);
    z << QStringLiteral("PLC: %1").arg(plant.PLC_Bezeichnung[ofen]);
    z << QStringLiteral("W216..218: %1  %2  %3")
             .arg(plant.SPS_Wort(ofen, 216))
             .arg(plant.SPS_Wort(ofen, 217))
             .arg(plant.SPS_Wort(ofen, 218));
    z << QStringLiteral("Basis: %1   Server: %2 / .%3")
             .arg(plant.Ofen_Basis[ofen])
             .arg(plant.Server_Offset[ofen])
             .arg(plant.Server_IP4[ofen]);
    const int basis = plant.Ofen_Basis[ofen];
    if (basis >= 1) {
        QString a, b;
        for (int p = 0; p <= 10 && basis + 2 * p + 1 < SPS_WORTE; ++p) {
            a += wordHex(plant.SPS_Wort(ofen, basis + 2 * p)) + QLatin1Char(' ');
            b += wordHex(plant.SPS_Wort(ofen, basis + 2 * p + 1)) + QLatin1Char(' ');
        }
        z << QStringLiteral("A: ") + a.trimmed() << QStringLiteral("B: ") + b.trimmed();
    }
    z << QStringLiteral("%1: %2").arg(Text_Id(text::FAULT).trimmed()).arg(plant.Kennung_Fehler[ofen]);
    return z;
}

} // namespace kal
