#include "station/single_station.h"

#include "config/paths.h"
#include "core/plant_state.h"

#include <QCryptographicHash>
#include <QDeadlineTimer>
#include <QDir>
#include <QFileInfo>
#include <QLocalServer>
#include <QLocalSocket>
#include <QLockFile>
#include <QThread>
#include <algorithm>
#include <memory>
#include <optional>

namespace kal {

namespace {

/// Longest request line a second start sends (a path and its verb).
constexpr qint64 REQUEST_MAX = 8192;
/// How long a second start tries to reach the holder: it listens right
/// after taking the lock, but may still be in its start-up.
constexpr int CONNECT_MS = 3000;
constexpr int ANSWER_MS = 4000;

struct FolderLock {
    std::unique_ptr<QLockFile> lock;
    std::unique_ptr<QLocalServer> server;
    std::function<void(const QString &)> handler;
    std::optional<QString> pending; ///< a request that came before the window was up
};
FolderLock g;

/// Short stable key of a folder for one user: a station started with
/// "./data" and one started with its full path meet on the same lock and
/// server; two users' viewers of one share do not.
QString folderKey(const QString &folder)
{
    const QFileInfo fi(folder);
    const QString canon = fi.canonicalFilePath().isEmpty() ? fi.absoluteFilePath() : fi.canonicalFilePath();
    const QByteArray key = canon.toUtf8() + '\n' + QDir::homePath().toUtf8();
    return QString::fromLatin1(QCryptographicHash::hash(key, QCryptographicHash::Sha1).toHex().left(16));
}

/// The user's runtime folder of the desktop session, else the temporary
/// folder (sockets and the viewer's lock live there).
QString runtimeFolder()
{
    const QString d = qEnvironmentVariable("XDG_RUNTIME_DIR");
    return !d.isEmpty() && QFileInfo(d).isDir() ? d : QDir::tempPath();
}

QByteArray requestLine(const QString &batch)
{
    if (batch.isEmpty())
        return QByteArrayLiteral("show\n");
    return QByteArrayLiteral("open\t") + batch.toUtf8() + '\n';
}

/// The batch of a request line; false for a line that is no request.
bool parseRequest(QByteArray line, QString *batch)
{
    while (line.endsWith('\n') || line.endsWith('\r'))
        line.chop(1);
    if (line == "show") {
        batch->clear();
        return true;
    }
    if (line.startsWith("open\t") && line.size() > 5) {
        *batch = QString::fromUtf8(line.mid(5));
        return true;
    }
    return false;
}

/// Answers one second start: reads its line, says "ok" and passes the
/// request on; anything else is dropped.
void serve(QLocalSocket *s)
{
    QObject::connect(s, &QLocalSocket::disconnected, s, &QObject::deleteLater);
    QObject::connect(s, &QLocalSocket::readyRead, s, [s] {
        if (!s->canReadLine()) {
            if (s->bytesAvailable() > REQUEST_MAX)
                s->abort();
            return;
        }
        QString batch;
        const bool ok = parseRequest(s->readLine(REQUEST_MAX), &batch);
        s->write(ok ? QByteArrayLiteral("ok\n") : QByteArrayLiteral("?\n"));
        s->flush();
        s->disconnectFromServer();
        if (!ok)
            return;
        if (g.handler)
            g.handler(batch);
        else
            g.pending = batch;
    });
}

void listen(const QString &name)
{
    g.server = std::make_unique<QLocalServer>();
    g.server->setSocketOptions(QLocalServer::UserAccessOption);
    // A socket file that a killed holder left behind would refuse the listen;
    // the lock says it is ours now.
    QLocalServer::removeServer(name);
    if (!g.server->listen(name)) {
        // The station runs on; a later second start finds the lock and is
        // refused with its message instead of being handed over.
        qWarning("kalmeron: no hand-over socket %s: %s", qPrintable(name), qPrintable(g.server->errorString()));
        return;
    }
    QObject::connect(g.server.get(), &QLocalServer::newConnection, g.server.get(), [] {
        while (QLocalSocket *s = g.server->nextPendingConnection())
            serve(s);
    });
}

/// Sends the request to the holder of the folder; true once it said "ok".
bool handOver(const QString &name, const QString &batch)
{
    QLocalSocket s;
    const QDeadlineTimer connectBy(CONNECT_MS);
    for (;;) {
        s.connectToServer(name);
        if (s.waitForConnected(500))
            break;
        s.abort();
        if (connectBy.hasExpired())
            return false;
        QThread::msleep(100);
    }
    s.write(requestLine(batch));
    if (!s.waitForBytesWritten(ANSWER_MS))
        return false;
    const QDeadlineTimer answerBy(ANSWER_MS);
    while (!s.canReadLine()) {
        if (answerBy.hasExpired() || !s.waitForReadyRead(int(std::max<qint64>(1, answerBy.remainingTime()))))
            return false;
    }
    return s.readLine(16).trimmed() == "ok";
}

QString lockErrorText(QLockFile::LockError e)
{
    switch (e) {
    case QLockFile::PermissionError: return QStringLiteral("no right to write there, or the folder is read-only");
    default: return QStringLiteral("the folder cannot be reached");
    }
}

} // namespace

QString lockPath(const QString &folder, bool viewer)
{
    if (!viewer)
        return joinPath(folder, STATION_LOCK);
    return QDir(runtimeFolder()).filePath(QStringLiteral("kalmeron-viewer-") + folderKey(folder) + QStringLiteral(".lock"));
}

QString serverName(const QString &folder, bool viewer)
{
    return QDir(runtimeFolder())
        .filePath((viewer ? QStringLiteral("kalmeron-viewer-") : QStringLiteral("kalmeron-station-")) + folderKey(folder));
}

FolderClaim claimDataFolder(const QString &batch, QString *message)
{
    Pfade_Setzen();
    const QString folder = plant.Pfad[0];
    const bool viewer = plant.viewer;
    const QString who = viewer ? QStringLiteral("viewer") : QStringLiteral("station");

    releaseDataFolder();
    auto lock = std::make_unique<QLockFile>(lockPath(folder, viewer));
    // A station runs for months without touching its lock: only a holder
    // that no longer runs makes it stale, never its age.
    lock->setStaleLockTime(0);
    if (lock->tryLock(0)) {
        g.lock = std::move(lock);
        listen(serverName(folder, viewer));
        return FolderClaim::Own;
    }
    if (lock->error() != QLockFile::LockFailedError) {
        *message = QStringLiteral("Kalmeron cannot lock its data folder\n%1\n(%2: %3).\nThe %4 does not start.")
                       .arg(QDir::toNativeSeparators(folder), lock->fileName(), lockErrorText(lock->error()), who);
        return FolderClaim::Refused;
    }
    if (handOver(serverName(folder, viewer), batch))
        return FolderClaim::HandedOver;
    qint64 pid = 0;
    QString host, app;
    lock->getLockInfo(&pid, &host, &app);
    *message = QStringLiteral("The data folder\n%1\nis in use by another Kalmeron %2 (process %3 on %4), which does not "
                              "answer.\nThis %2 does not start.")
                   .arg(QDir::toNativeSeparators(folder), who)
                   .arg(pid)
                   .arg(host.isEmpty() ? QStringLiteral("?") : host);
    return FolderClaim::Refused;
}

void setOpenRequestHandler(std::function<void(const QString &batch)> handler)
{
    g.handler = std::move(handler);
    if (g.handler && g.pending) {
        const QString batch = *g.pending;
        g.pending.reset();
        g.handler(batch);
    }
}

void releaseDataFolder()
{
    if (g.server) {
        g.server->close();
        g.server.reset();
    }
    g.lock.reset(); // unlocks and removes the file
    g.pending.reset();
}

} // namespace kal
