#include "config/paths_check.h"

#include "config/config_file.h"
#include "config/paths.h"
#include "core/conversions.h"
#include "core/dates.h"
#include "core/dialogs.h"
#include "core/plant_state.h"

#include <QDir>
#include <QFileInfo>

namespace kal {

namespace {

/// Creates one folder level when missing; a missing parent makes it fail
/// quietly (the log book folder may have been refused by the user).
void createFolder(const QString &path)
{
    if (!folderExists(path))
        QDir().mkdir(path);
}

/// Same folder: equal texts, or (both existing) the same folder on disk.
bool sameFolder(const QString &a, const QString &b)
{
    if (Text_Sauber(a) == Text_Sauber(b))
        return true;
    const QString ka = QFileInfo(a).canonicalFilePath();
    return !ka.isEmpty() && ka == QFileInfo(b).canonicalFilePath();
}

} // namespace

void Ordner_Pruefen()
{
    static const char *const art[4] = {"", "LOG-Files", "USB-Files", "CSV-Files"};
    for (int k = 1; k <= 3; ++k) {
        if (folderExists(plant.Pfad[k]))
            continue;
        plant.Pfad[k] = defaultFolder(k);
        if (folderExists(plant.Pfad[k]))
            continue;
        const QString frage = QString::fromLatin1(art[k]) + QLatin1Char('\n') + plant.Pfad[k] +
                              QLatin1Char('\n') + QStringLiteral("Create? ");
        if (dialogs().question(frage, QStringLiteral("Folder Not found!"))) {
            QDir().mkpath(plant.Pfad[k]);
            Config_Schreiben(false);
        }
    }
}

void Backup_Pruefen()
{
    // The year is taken once, when the configuration is read: a batch that
    // starts after New Year stays in the old year's folder until the next start.
    int jahr = now().date().year();
    if (jahr < 2000)
        jahr += 2000;
    const QString jahr_Text = QStringLiteral("%1").arg(jahr, 4, 10, QLatin1Char('0'));

    plant.Charge_Ordner[0] = joinPath(plant.Pfad[1], jahr_Text);
    createFolder(plant.Charge_Ordner[0]);

    if (plant.Backup_Aktiv == 0 || !folderExists(plant.Pfad[4]))
        return;
    plant.Charge_Ordner[1] = joinPath(plant.Pfad[4], jahr_Text);
    createFolder(plant.Charge_Ordner[1]);
    if (sameFolder(plant.Charge_Ordner[1], plant.Charge_Ordner[0])) {
        plant.Backup_Aktiv = 0;
        dialogs().message(QStringLiteral("Backup-Folder ") + plant.Charge_Ordner[1] + QLatin1Char('\n') +
                          QStringLiteral("is the same as the Logfile-Folder") + QLatin1Char('!') +
                          QLatin1Char('\n') + QStringLiteral("select a real FOLDER!"));
    }
}

} // namespace kal
