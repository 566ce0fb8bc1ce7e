#include "config/system_dialog.h"

#include "config/config_file.h"
#include "config/paths.h"
#include "core/conversions.h"
#include "core/dialogs.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStorageInfo>

#include <algorithm>
#include <cctype>
#include <cmath>

namespace kal {

SystemDialogState System;

namespace {

StateReset reset{[] { System = SystemDialogState{}; }};

/// Limits of the stored values of fields 3..5.
struct Limits {
    int lo, hi;
};
constexpr Limits GRENZEN[3] = {{3000, 30000}, {500, 5000}, {1000, 32000}};

int chosenFurnace()
{
    if (System.Ofen < 1 || System.Ofen > OFEN_MAX)
        raiseBounds("System", System.Ofen);
    return System.Ofen - 1;
}

bool validSerial(const QString &t)
{
    return t.size() >= 9 && t[4] == QLatin1Char('-') && t[8] == QLatin1Char('-');
}

/// The type of a mounted volume in the numbering of the drive list.
int volumeType(const QStorageInfo &v)
{
    const QByteArray fs = v.fileSystemType().toLower();
    if (fs == "iso9660" || fs == "udf")
        return 4;
    if (fs == "tmpfs" || fs == "ramfs")
        return 5;
    if (fs.startsWith("nfs") || fs == "cifs" || fs.startsWith("smb") || fs.contains("sshfs"))
        return 3;
    const QByteArray dev = v.device();
    if (!dev.startsWith("/dev/"))
        return 0;
    // /dev/sdb1 -> /sys/block/sdb/removable
    QByteArray block = dev.mid(5);
    while (!block.isEmpty() && std::isdigit(static_cast<unsigned char>(block.back())))
        block.chop(1);
    QFile f(QStringLiteral("/sys/block/%1/removable").arg(QString::fromLatin1(block)));
    if (f.open(QIODevice::ReadOnly) && f.readAll().trimmed() == "1")
        return 1;
    return 2;
}

} // namespace

void openSystem(int ofenNr)
{
    System = SystemDialogState{};
    System.Ofen = std::clamp(ofenNr, 1, OFEN_MAX);
    const int f = chosenFurnace();
    System.Typ = plant.Ofen_Name[f].trimmed();
    System.Serie = plant.Ofen_Serie[f].trimmed();
    System.Werte = {plant.Ofen_Wert216[f], plant.Ofen_Wert217[f], plant.Ofen_Wert218[f]};
    System.Texte = mldFromStation(f, plant.Meld_Anzahl[f] > 32 ? 48 : 32);
    System.Ordner = plant.Pfad_Karte[0];
}

QString System_Text1(int feld)
{
    switch (feld) {
    case SYS_TYP: return System.Typ;
    case SYS_SERIE: return System.Serie;
    case SYS_MAX_TEMP:
    case SYS_TUER:
    case SYS_GRADIENT: return QString::number(System.Werte[size_t(feld - SYS_MAX_TEMP)] / 10);
    default: return QString();
    }
}

QString System_Text1_LostFocus(int feld, const QString &text)
{
    switch (feld) {
    case SYS_TYP:
        System.Typ = text.trimmed().left(16);
        break;
    case SYS_SERIE: {
        const QString t = text.trimmed().left(12);
        if (validSerial(t))
            System.Serie = t;
        else if (t != System.Serie)
            dialogs().message(QStringLiteral("Die Serien-Nr. hat nicht das") + QLatin1Char('\n') +
                              QStringLiteral("Format: >>>JJMM-NNN-TTT<<<"));
        break;
    }
    case SYS_MAX_TEMP:
    case SYS_TUER:
    case SYS_GRADIENT: {
        const Limits &g = GRENZEN[feld - SYS_MAX_TEMP];
        const double v = leadingNumber(text) * 10.0;
        const double begrenzt = std::isfinite(v) ? std::clamp(v, double(g.lo), double(g.hi)) : g.lo;
        System.Werte[size_t(feld - SYS_MAX_TEMP)] = static_cast<i16>(std::lround(begrenzt));
        break;
    }
    default: return text;
    }
    return System_Text1(feld);
}

QStringList messageCountTexts()
{
    return {QStringLiteral("32 Meldungen"), QStringLiteral("48 Meldungen")};
}

void chooseMessageCount(int anzahl)
{
    MldList &t = System.Texte;
    const int neu = anzahl == 48 ? 48 : 32;
    if (neu == t.Anzahl)
        return;
    // The texts stay where they are; the track lines exist only in the 32 form.
    QStringList zeilen;
    for (int n = 1; n <= neu; ++n)
        zeilen << mldLine(n, t.Zeilen.value(n - 1).mid(3));
    if (neu == 32)
        for (int k = 0; k < 4; ++k)
            zeilen << mldLine(33 + k, plant.Spur(chosenFurnace(), k).trimmed());
    t.Anzahl = neu;
    t.Zeilen = zeilen;
}

QStringList listLines(int art)
{
    const int f = chosenFurnace();
    QStringList z;
    if (art == LISTE_SPUR) {
        for (int k = 0; k < 4; ++k)
            z << QStringLiteral("Spur %1: %2").arg(k + 1).arg(plant.Spur(f, k).trimmed());
    } else if (art == LISTE_ANALOG) {
        for (int k = 0; k < plant.Kanal_Zahl[f + 1] && k < SPUR_MAX; ++k)
            z << QStringLiteral("Analog %1: %2").arg(k + 1, 2, 10, QLatin1Char('0')).arg(plant.Kanal_Name(f + 1, k).trimmed());
    } else {
        for (int n = 1; n <= plant.Meld_Anzahl[f] && n <= MELD_PRO_OFEN; ++n)
            z << QStringLiteral("Meld %1: %2").arg(n, 2, 10, QLatin1Char('0')).arg(plant.Meld_Text(f, n - 1).trimmed());
    }
    return z;
}

void setLine(int zeile, const QString &text)
{
    QStringList &z = System.Texte.Zeilen;
    if (zeile < 0 || zeile >= z.size())
        return;
    z[zeile] = z[zeile].left(3) + text.left(MLD_TEXT).trimmed();
}

bool System_OK()
{
    const int f = chosenFurnace();
    plant.Ofen_Name[f] = System.Typ;
    plant.Ofen_Serie[f] = System.Serie;
    Ist_GKD(f);
    plant.Ofen_Wert216[f] = System.Werte[0];
    plant.Ofen_Wert217[f] = System.Werte[1];
    plant.Ofen_Wert218[f] = System.Werte[2];
    // The program editor limits set values to a tenth of it.
    plant.Ofen_Max_Temp[f] = System.Werte[0];
    return saveConfig();
}

QList<Drive> drives()
{
    QList<Drive> l;
    for (const QStorageInfo &v : QStorageInfo::mountedVolumes())
        if (v.isValid())
            l.append({QDir::toNativeSeparators(v.rootPath()), volumeType(v)});
    return l;
}

QString driveLine(const Drive &l)
{
    static const char *const wort[6] = {"Unknown", "Removable", "Fixed", "Network", "CD-ROM", "RAM Disk"};
    const int t = l.Typ >= 0 && l.Typ <= 5 ? l.Typ : 0;
    return l.Wurzel + QStringLiteral(" : ") + QString::fromLatin1(wort[t]);
}

bool driveUsable(int typ)
{
    return typ == LW_FEST || typ == LW_NETZ;
}

bool driveReady(const QString &wurzel)
{
    if (wurzel.isEmpty())
        return false;
    const QStorageInfo v(wurzel);
    return v.isValid() && v.isReady() && QFileInfo(wurzel).isDir();
}

QString startFolder(const QString &wurzel)
{
    if (driveReady(wurzel))
        return wurzel;
#ifdef Q_OS_WIN
    return QStringLiteral("C:\\");
#else
    return QDir::rootPath();
#endif
}

} // namespace kal
