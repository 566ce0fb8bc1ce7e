#pragma once
// The folder tree of the station and the names of its files.
//
//   Pfad_Drive + "Kalmeron"      Pfad[0], the data folder (or the --data folder)
//     Kalmeron.DAT               configuration
//     OV_USERLOG.DAT             user log
//     OVDSMELD.TXT, KM_SP.LNG    site language files
//     OVDSFUNC.TXT               controller names
//     Kalmeron.mld               message text file
//     MEM_CARD                   Pfad_Karte[0], memory card folder (Karte_Da)
//     Programme                  Prog_Ordner, program files
//     LogBuch, USB, CSV          default Pfad[1..3]
//
// "\" of the folder tree is the platform's separator here.

#include <QString>
#include <functional>

namespace kal {


// File and folder names under the data folder.
inline const QString CONFIG_DATEI = QStringLiteral("Kalmeron.DAT");
inline const QString USERLOG_DATEI = QStringLiteral("OV_USERLOG.DAT");
inline const QString MELD_TABELLE_DATEI = QStringLiteral("OVDSMELD.TXT");
inline const QString REG_NAMEN_DATEI = QStringLiteral("OVDSFUNC.TXT");
inline const QString MELD_DATEI = QStringLiteral("Kalmeron.mld");
inline const QString SPRACH_DATEI = QStringLiteral("KM_SP.LNG");
inline const QString KARTE_ORDNER = QStringLiteral("MEM_CARD");
inline const QString PROG_ORDNER = QStringLiteral("Programme");

/// Drive types as the file-system service reports them.
enum DriveType : int {
    LW_UNBEKANNT = 0,
    LW_WECHSEL = 1,
    LW_FEST = 2,
    LW_NETZ = 3,
    LW_CD = 4,
    LW_RAM = 5,
};

/// Asks the drive type of a drive such as "D:\"; a failing query returns -1.
using DriveQuery = std::function<int(const QString &drive)>;

/// The drive of the data folder: "D:\" when it is a fixed disk or a network
/// share, else "C:\" by the same test. Nothing further is tried, so with
/// neither usable the result is "" and the data folder lies in the working
/// folder.
QString chooseDrive(const DriveQuery &typ);

/// `folder` + separator + `name`.
QString joinPath(const QString &folder, const QString &name);
/// A file or folder directly in the data folder.
QString dataFile(const QString &name);
/// Default of Pfad[1] (log book), Pfad[2] (USB) or Pfad[3] (CSV).
QString defaultFolder(int k);

/// `Pfade_Setzen`: Pfad_Drive, Pfad[0], Pfad_Karte[0], Prog_Ordner and
/// Karte_Da. The data folder and the program folder are created without
/// asking. On Windows the drive comes from chooseDrive with the system's
/// drive query; elsewhere Pfad_Drive is the user's home folder. A folder given
/// by `--data` replaces Pfad_Drive + "Kalmeron" as the data folder.
void Pfade_Setzen();

/// True when the folder exists.
bool folderExists(const QString &path);

} // namespace kal
