#include "config/paths.h"

#include "core/plant_state.h"

#include <QDir>
#include <QFileInfo>

#ifdef Q_OS_WIN
#include <windows.h>
#endif

namespace kal {


namespace {

bool usable(int typ)
{
    return typ == LW_FEST || typ == LW_NETZ;
}

#ifdef Q_OS_WIN
/// The system's drive query, in the numbering of the file-system service.
int systemDriveType(const QString &drive)
{
    switch (GetDriveTypeW(reinterpret_cast<const wchar_t *>(drive.utf16()))) {
    case DRIVE_REMOVABLE: return LW_WECHSEL;
    case DRIVE_FIXED: return LW_FEST;
    case DRIVE_REMOTE: return LW_NETZ;
    case DRIVE_CDROM: return LW_CD;
    case DRIVE_RAMDISK: return LW_RAM;
    case DRIVE_NO_ROOT_DIR: return -1;
    default: return LW_UNBEKANNT;
    }
}
#endif

QString withoutTrailingSeparator(QString p)
{
    while (p.size() > 1 && (p.endsWith(QLatin1Char('/')) || p.endsWith(QLatin1Char('\\'))) &&
           !p.endsWith(QLatin1String(":\\")) && !p.endsWith(QLatin1String(":/")))
        p.chop(1);
    return p;
}

} // namespace

QString chooseDrive(const DriveQuery &typ)
{
    for (const QString &drive : {QStringLiteral("D:\\"), QStringLiteral("C:\\")}) {
        int t = -1;
        try {
            t = typ(drive);
        } catch (...) {
            t = -1; // a failing query counts as not usable
        }
        if (usable(t))
            return drive;
    }
    return QString();
}

QString joinPath(const QString &folder, const QString &name)
{
    if (folder.endsWith(QLatin1Char('/')) || folder.endsWith(QLatin1Char('\\')))
        return folder + name;
    return folder + QDir::separator() + name;
}

QString dataFile(const QString &name)
{
    return joinPath(plant.Pfad[0], name);
}

QString defaultFolder(int k)
{
    switch (k) {
    case 1: return dataFile(QStringLiteral("LogBuch"));
    case 2: return dataFile(QStringLiteral("USB"));
    case 3: return dataFile(QStringLiteral("CSV"));
    default: raiseBounds("Standard_Ordner", k);
    }
}

bool folderExists(const QString &path)
{
    return !path.isEmpty() && QFileInfo(path).isDir();
}

void Pfade_Setzen()
{
#ifdef Q_OS_WIN
    plant.Pfad_Drive = chooseDrive(systemDriveType);
#else
    plant.Pfad_Drive = QDir::toNativeSeparators(QDir::homePath()) + QDir::separator();
#endif

    if (!plant.Daten_Ordner_Option.isEmpty())
        plant.Pfad[0] = withoutTrailingSeparator(
            QDir::toNativeSeparators(QFileInfo(plant.Daten_Ordner_Option).absoluteFilePath()));
    else
        plant.Pfad[0] = plant.Pfad_Drive + QStringLiteral("Kalmeron");

    plant.Pfad_Karte[0] = dataFile(KARTE_ORDNER);
    plant.Karte_Da = flag(folderExists(plant.Pfad_Karte[0]));
    plant.Prog_Ordner = dataFile(PROG_ORDNER);

    QDir().mkpath(plant.Pfad[0]);
    QDir().mkpath(plant.Prog_Ordner);
}

} // namespace kal
