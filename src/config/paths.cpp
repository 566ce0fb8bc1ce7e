#include "config/paths.h"

#include "core/plant_state.h"

#include <QDir>
#include <QFileInfo>

#ifdef Q_OS_WIN
#include <windows.h>
#endif

namespace kal {


namespace {

bool nutzbar(int typ)
{
    return typ == LW_FEST || typ == LW_NETZ;
}

#ifdef Q_OS_WIN
/// The system's drive query, in the numbering of the file-system service.
int system_Laufwerk_Typ(const QString &drive)
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

QString ohne_Trenner_am_Ende(QString p)
{
    while (p.size() > 1 && (p.endsWith(QLatin1Char('/')) || p.endsWith(QLatin1Char('\\'))) &&
           !p.endsWith(QLatin1String(":\\")) && !p.endsWith(QLatin1String(":/")))
        p.chop(1);
    return p;
}

} // namespace

QString Laufwerk_Waehlen(const Laufwerk_Abfrage &typ)
{
    for (const QString &drive : {QStringLiteral("D:\\"), QStringLiteral("C:\\")}) {
        int t = -1;
        try {
            t = typ(drive);
        } catch (...) {
            t = -1; // a failing query counts as not usable
        }
        if (nutzbar(t))
            return drive;
    }
    return QString();
}

QString Pfad_Plus(const QString &folder, const QString &name)
{
    if (folder.endsWith(QLatin1Char('/')) || folder.endsWith(QLatin1Char('\\')))
        return folder + name;
    return folder + QDir::separator() + name;
}

QString Daten_Datei(const QString &name)
{
    return Pfad_Plus(plant.Pfad[0], name);
}

QString Standard_Ordner(int k)
{
    switch (k) {
    case 1: return Daten_Datei(QStringLiteral("LogBuch"));
    case 2: return Daten_Datei(QStringLiteral("USB"));
    case 3: return Daten_Datei(QStringLiteral("CSV"));
    default: raiseBounds("Standard_Ordner", k);
    }
}

bool Ordner_Da(const QString &path)
{
    return !path.isEmpty() && QFileInfo(path).isDir();
}

void Pfade_Setzen()
{
#ifdef Q_OS_WIN
    plant.Pfad_Drive = Laufwerk_Waehlen(system_Laufwerk_Typ);
#else
    plant.Pfad_Drive = QDir::toNativeSeparators(QDir::homePath()) + QDir::separator();
#endif

    if (!plant.Daten_Ordner_Option.isEmpty())
        plant.Pfad[0] = ohne_Trenner_am_Ende(
            QDir::toNativeSeparators(QFileInfo(plant.Daten_Ordner_Option).absoluteFilePath()));
    else
        plant.Pfad[0] = plant.Pfad_Drive + QStringLiteral("Kalmeron");

    plant.Pfad_Karte[0] = Daten_Datei(KARTE_ORDNER);
    plant.Karte_Da = flag(Ordner_Da(plant.Pfad_Karte[0]));
    plant.Prog_Ordner = Daten_Datei(PROG_ORDNER);

    QDir().mkpath(plant.Pfad[0]);
    QDir().mkpath(plant.Prog_Ordner);
}

} // namespace kal
