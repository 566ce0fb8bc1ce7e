// The claim on a data folder inside this process: the lock a station holds
// and what another start finds, a holder that does not answer, and the
// requests of a second start as the running station reads them from its local
// socket. A stale lock, a folder that cannot be made and the viewer's start-up
// are tested with the real executable in tests/app.

#include "station/single_station.h"
#include "support/events.h"
#include "support/files.h"
#include "support/fresh.h"

#include <QLocalSocket>
#include <QLockFile>
#include <QTemporaryDir>

using namespace kal;
using namespace kal::test;

namespace {

class FolderClaim_ : public FreshProcess {
protected:
    QTemporaryDir dir;
    QString why;

    void SetUp() override
    {
        FreshProcess::SetUp();
        testApp();
        ASSERT_TRUE(dir.isValid());
        plant.Daten_Ordner_Option = dir.path();
    }
    void TearDown() override
    {
        releaseDataFolder();
        setOpenRequestHandler(nullptr);
        FreshProcess::TearDown();
    }
    QString stationLock() const { return dir.filePath(QStringLiteral("Kalmeron.lock")); }

    /// Sends `request` as a second start would and returns the answer line
    /// ("" when the station closed without one).
    QByteArray send(const QByteArray &request)
    {
        QLocalSocket s;
        s.connectToServer(serverName(dir.path(), plant.viewer));
        EXPECT_TRUE(pumpUntil([&] { return s.state() == QLocalSocket::ConnectedState; }, 5000));
        s.write(request);
        s.flush();
        pumpUntil([&] { return s.canReadLine() || s.state() == QLocalSocket::UnconnectedState; }, 5000);
        return s.canReadLine() ? s.readLine() : QByteArray();
    }
};

} // namespace

TEST_F(FolderClaim_, StationHoldsItsFolderUntilReleased)
{
    ASSERT_EQ(claimDataFolder({}, &why), FolderClaim::Own) << why.toStdString();
    EXPECT_EQ(lockPath(dir.path(), false), stationLock());

    QLockFile other(stationLock());
    EXPECT_FALSE(other.tryLock(0));

    // Another spelling of the folder meets the same lock and server; the
    // viewer's are others, and its lock is not in the folder.
    EXPECT_EQ(serverName(dir.path() + QStringLiteral("/./"), false), serverName(dir.path(), false));
    EXPECT_NE(serverName(dir.path(), true), serverName(dir.path(), false));
    EXPECT_FALSE(lockPath(dir.path(), true).startsWith(dir.path()));

    releaseDataFolder();
    EXPECT_FALSE(QFile::exists(stationLock()));
    EXPECT_TRUE(other.tryLock(0));
}

TEST_F(FolderClaim_, RefusedWhenItsHolderDoesNotAnswer)
{
    // A lock of a live station that has no hand-over socket here (one on
    // another computer of the share): refused, naming its process.
    ASSERT_EQ(claimDataFolder({}, &why), FolderClaim::Own);
    const QByteArray inhalt = readFile(stationLock());
    releaseDataFolder();
    writeFile(stationLock(), inhalt);
    EXPECT_EQ(claimDataFolder(QStringLiteral("/x/D1.OVD"), &why), FolderClaim::Refused);
    EXPECT_TRUE(why.contains(QStringLiteral("process %1").arg(QCoreApplication::applicationPid()))) << why.toStdString();
    EXPECT_EQ(readFile(stationLock()), inhalt); // not taken, not removed
}

TEST_F(FolderClaim_, RequestsOfASecondStartReachTheWindow)
{
    ASSERT_EQ(claimDataFolder({}, &why), FolderClaim::Own);
    // A request before the window is up waits for it.
    EXPECT_EQ(send("open\t/daten/D1.OVD\n"), "ok\n");
    QStringList geoeffnet;
    setOpenRequestHandler([&](const QString &b) { geoeffnet << b; });
    EXPECT_EQ(geoeffnet, QStringList{QStringLiteral("/daten/D1.OVD")});

    struct Case {
        QByteArray request, answer;
        QStringList opened;
    };
    const Case faelle[] = {
        {"show\n", "ok\n", {QString()}},
        {"open\t/Öfen/Halle 2/D2.OVD\r\n", "ok\n", {QStringLiteral("/Öfen/Halle 2/D2.OVD")}},
        {"open\t\n", "?\n", {}},
        {"OPEN /x.OVD\n", "?\n", {}},
        {QByteArray(9000, 'x'), "", {}}, // no line end: cut off
    };
    for (const Case &f : faelle) {
        geoeffnet.clear();
        EXPECT_EQ(send(f.request), f.answer) << f.request.left(40).constData();
        pumpUntil([] { return false; }, 50);
        EXPECT_EQ(geoeffnet, f.opened) << f.request.left(40).constData();
    }
}
