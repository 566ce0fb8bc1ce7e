#pragma once
// One station per data folder. Two stations on one folder would both
// acknowledge the PLCs' log blocks and write the same batch files, so the
// station locks its data folder before it starts. A second start on the same
// folder polls nothing and writes nothing: it hands its batch file (or just
// "show yourself") over a local socket to the station that holds the lock and
// ends.
//
// The office viewer takes a lock of its own, so that it runs beside a station
// on the same folder. It writes nothing into the folder, which may be a
// read-only share, so its lock lives in the user's runtime folder.
//
// The lock belongs to the process, not to the plant: resetPlant() leaves it
// alone (the demo rebuilds its plant after the folder is taken).
//
// Hand-over protocol (one line of UTF-8 each way, on the local socket):
//   second start -> station   "open\t<absolute batch path>\n" or "show\n"
//   station -> second start   "ok\n" once the window was asked to come up

#include <QString>
#include <functional>

namespace kal {

/// What became of the claim on a data folder.
enum class FolderClaim {
    Own,        ///< this process holds the folder: start the station
    HandedOver, ///< a running station took the request: end with exit code 0
    Refused,    ///< neither: end with the message and exit code 4
};

/// Exit code of a start that could not take its data folder.
constexpr int EXIT_FOLDER_LOCKED = 4;

/// Lock file of the station in its data folder.
inline const QString STATION_LOCK = QStringLiteral("Kalmeron.lock");

/// Settles the paths (Pfade_Setzen) and claims the data folder Pfad[0] for a
/// station, or for a viewer when `plant.viewer` is set. A stale lock of a
/// station that died is taken over. When another process holds the folder,
/// `batch` (absolute path, or empty) is handed to it. On Refused `message`
/// says why in words an operator understands.
FolderClaim claimDataFolder(const QString &batch, QString *message);

/// Lock file and local server name of the folder `folder` for a station or a
/// viewer (both derived from the folder's canonical path).
QString lockPath(const QString &folder, bool viewer);
QString serverName(const QString &folder, bool viewer);

/// Called on the event loop when a second start handed a request over: the
/// batch file to open, or empty to only bring the window up. A request that
/// came before a handler was set is passed to it when it is set.
void setOpenRequestHandler(std::function<void(const QString &batch)> handler);

/// Gives the folder up: stops the local server and removes the lock (tests;
/// a process that ends leaves both to the system and the next start).
void releaseDataFolder();

} // namespace kal
