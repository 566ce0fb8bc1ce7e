// The claim on a data folder inside this process: the lock a station holds
// and what another start finds, a stale lock, a folder that cannot be locked,
// the requests of a second start as the running station reads them from its
// local socket, and a viewer's start-up that makes no channel. The second
// start itself (another process) is tested with the real executable in
// tests/app.

#include "config/config_file.h"
#include "config/paths.h"
#include "core/plant_state.h"
#include "link/socket.h"
#include "station/main_cycle.h"
#include "station/single_station.h"
#include "station/station_start.h"
#include "support/events.h"
#include "support/files.h"
#include "support/fresh.h"
#include "support/scripted_socket.h"

#include <QDir>
#include <QLocalSocket>
#include <QLockFile>
#include <QProcess>
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
    EXPECT_EQ(other.error(), QLockFile::LockFailedError);
    qint64 pid = 0;
    QString host, app;
    ASSERT_TRUE(other.getLockInfo(&pid, &host, &app));
    EXPECT_EQ(pid, QCoreApplication::applicationPid());

    // Another spelling of the folder meets the same lock and server; the
    // viewer's are others, and its lock is not in the folder.
    EXPECT_EQ(serverName(dir.path() + QStringLiteral("/./"), false), serverName(dir.path(), false));
    EXPECT_NE(serverName(dir.path(), true), serverName(dir.path(), false));
    EXPECT_FALSE(lockPath(dir.path(), true).startsWith(dir.path()));

    releaseDataFolder();
    EXPECT_FALSE(QFile::exists(stationLock()));
    EXPECT_TRUE(other.tryLock(0));
}

TEST_F(FolderClaim_, StaleLockOfADeadStationIsTakenOver)
{
    ASSERT_EQ(claimDataFolder({}, &why), FolderClaim::Own);
    QByteArray inhalt = readFile(stationLock());
    releaseDataFolder();

    // The same lock, written by a process that has ended since.
    QProcess tot;
    tot.start(QStringLiteral("true"), {});
    ASSERT_TRUE(tot.waitForStarted());
    const qint64 totPid = tot.processId();
    ASSERT_TRUE(tot.waitForFinished());
    inhalt = QByteArray::number(totPid) + inhalt.mid(inhalt.indexOf('\n'));
    writeFile(stationLock(), inhalt);

    ASSERT_EQ(claimDataFolder({}, &why), FolderClaim::Own) << why.toStdString();
    EXPECT_TRUE(readFile(stationLock()).startsWith(QByteArray::number(QCoreApplication::applicationPid()) + '\n'));
}

TEST_F(FolderClaim_, RefusedWhenTheFolderCannotBeLockedOrItsHolderDoesNotAnswer)
{
    // A data folder below a plain file can be neither made nor locked.
    writeFile(dir.filePath(QStringLiteral("datei")), "x");
    plant.Daten_Ordner_Option = dir.filePath(QStringLiteral("datei/Kalmeron"));
    EXPECT_EQ(claimDataFolder({}, &why), FolderClaim::Refused);
    EXPECT_TRUE(why.contains(QDir::toNativeSeparators(plant.Daten_Ordner_Option))) << why.toStdString();
    EXPECT_TRUE(why.contains(QStringLiteral("does not start"))) << why.toStdString();

    // A lock of a live station that has no hand-over socket here (one on
    // another computer of the share): refused, naming its process.
    plant.Daten_Ordner_Option = dir.path();
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

TEST_F(FolderClaim_, ViewerMakesNoChannelAndPollsNothing)
{
    // Two furnaces on the memory link, enabled.
    Pfade_Setzen();
    for (int f = 0; f < 2; ++f) {
        plant.Ofen_Aktiv[f] = TRUE16;
        plant.Ofen_UDP[f] = TRUE16;
        plant.Ofen_Typ[f + 1] = 3;
        for (int o = 0; o < 4; ++o)
            plant.Ofen_IP(f, o) = static_cast<u8>(o == 0 ? 127 : o == 3 ? 11 + f : 0);
    }
    Config_Schreiben(false);

    for (const bool viewer : {true, false}) {
        resetPlant();
        plant.Daten_Ordner_Option = dir.path();
        plant.viewer = viewer;
        int gemacht = 0;
        Winsock1.Fabrik = [&](int) {
            ++gemacht;
            return std::make_unique<ScriptedSocket>();
        };
        Station_Start();
        for (int i = 0; i < 20; ++i)
            Timer1_Tick();
        Timer2_Tick();
        if (viewer) {
            EXPECT_EQ(gemacht, 0);
            for (int k = 0; k < KANAL_MAX; ++k)
                EXPECT_EQ(Winsock1.get(k), nullptr) << k;
        } else {
            // The same plant in a station: its channels are made and used.
            EXPECT_GE(gemacht, 2);
            ASSERT_NE(Winsock1.get(0), nullptr);
            EXPECT_FALSE(static_cast<ScriptedSocket *>(Winsock1.get(0))->sent.isEmpty());
        }
    }
}
