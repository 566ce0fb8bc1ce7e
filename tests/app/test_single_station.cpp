// One station per data folder, with the real executable against the
// simulated plant in this process: further starts on the folder of a running
// station, the office viewer (in this process) beside it, the folder given up
// at SIGTERM. The lock's rules themselves are tested in process in
// tests/station, the exit codes of starts that cannot run in test_documents.
// The simulator's frame log tells which sockets reached a PLC. The waits are
// bounded loops of the event loop; nothing is timed.

#include "config/paths.h"
#include "config/text_ids.h"
#include "core/dates.h"
#include "curves/curve_store.h"
#include "link/socket.h"
#include "demo_station.h"
#include "operation/live_page.h"
#include "recording/batch_file.h"
#include "sim/log_blocks.h"
#include "sim/plant.h"
#include "station/single_station.h"
#include "support/files.h"

#include <QDirIterator>
#include <QProcess>
#include <QSet>
#include <csignal>

using namespace kal;
using namespace kal::test;

namespace {

constexpr int PLAIN = 0;  ///< memory link furnace: its log blocks are recorded
constexpr int HEADED = 1; ///< Modbus furnace
constexpr int32_t BATCH = 31;

class SharedFolder : public FreshProcess {
protected:
    QTemporaryDir dir;
    std::unique_ptr<sim::SimPlant> sim;
    std::vector<std::unique_ptr<QProcess>> procs;
    int modbusPort = 0;
    QVector<QVector<int16_t>> offered; ///< blocks queued in the plain furnace
    int samples = 0;
    QDateTime t0;

    void SetUp() override
    {
        FreshProcess::SetUp();
        ASSERT_TRUE(dir.isValid());
        modbusPort = freeTcpPort();
        const sim::PlantDescription d{
            .furnaces = {{.index = PLAIN, .address = QStringLiteral("127.0.18.11"), .name = QStringLiteral("Kammerofen"),
                          .serial = QStringLiteral("2611-018-KAM")},
                         {.index = HEADED, .address = QStringLiteral("127.0.18.12"), .protocol = sim::Protocol::Modbus,
                          .headed = true, .base = 500, .name = QStringLiteral("Haerteofen"),
                          .serial = QStringLiteral("2611-019-HRT")}},
            .udpPort = Panel_Port,
            .modbusPort = modbusPort,
        };
        sim = std::make_unique<sim::SimPlant>(d);
        QString fehler;
        ASSERT_TRUE(sim->start(&fehler)) << fehler.toStdString();
        sim->runInRealTime();

        plant.Daten_Ordner_Option = dir.path();
        Pfade_Setzen();
        writeDemoConfiguration(d);
        resetPlant();
        // Three hours back, never so close to midnight that a block falls on the next day.
        QDateTime t = now().addSecs(-3 * 3600);
        if (t.time() > QTime(22, 0))
            t = t.addSecs(-3 * 3600);
        t0 = QDateTime(t.date(), QTime(t.time().hour(), t.time().minute(), 0), Qt::UTC);
    }
    void TearDown() override
    {
        // A station ended by SIGTERM gives its lock and socket up; one that
        // does not end is killed.
        for (auto &p : procs) {
            if (p->state() != QProcess::NotRunning) {
                ::kill(static_cast<pid_t>(p->processId()), SIGTERM);
                if (!p->waitForFinished(10000)) {
                    p->kill();
                    p->waitForFinished(5000);
                }
            }
        }
        releaseDataFolder();
        setOpenRequestHandler(nullptr);
        FreshProcess::TearDown();
    }

    /// Starts kalmeron on the shared folder with `args` in front.
    QProcess &start(QStringList args)
    {
        auto p = std::make_unique<QProcess>();
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
        p->setProcessEnvironment(env);
        p->setProcessChannelMode(QProcess::MergedChannels);
        args << QStringLiteral("--data") << dir.path() << QStringLiteral("--modbus-port") << QString::number(modbusPort);
        p->start(QStringLiteral(KALMERON_EXE), args);
        EXPECT_TRUE(p->waitForStarted(10000));
        procs.push_back(std::move(p));
        return *procs.back();
    }
    /// Waits (the simulator running) until `p` ended; its exit code, -1 when it
    /// still runs or crashed.
    int ended(QProcess &p, int ms)
    {
        waitUntil([&] { return p.state() == QProcess::NotRunning; }, ms);
        if (p.state() != QProcess::NotRunning || p.exitStatus() != QProcess::NormalExit)
            return -1;
        return p.exitCode();
    }

    /// Senders of the frames furnace `f` answered: one socket of one process
    /// each, as long as only one station polls.
    QSet<QString> peers(int f) const
    {
        QSet<QString> s;
        for (const sim::FrameRecord &r : sim->frames().records())
            if (r.furnace == f)
                s.insert(r.peer);
        return s;
    }
    bool polled() const { return !peers(PLAIN).isEmpty() && !peers(HEADED).isEmpty(); }

    void offer(const QVector<int16_t> &b)
    {
        offered.append(b);
        sim->furnace(PLAIN)->queueBlock(b);
    }
    /// The opening of the batch, then `n` samples five minutes apart.
    void offerSamples(int n)
    {
        if (offered.isEmpty())
            offer(sim::announcementBlock(BATCH, t0));
        for (int i = 0; i < n; ++i, ++samples)
            offer(sim::plainSampleBlock({.stamp = t0.addSecs(300 * (samples + 1)),
                                         .setpoint = 8100,
                                         .actual = static_cast<int16_t>(6000 + 300 * samples),
                                         .kind = 1,
                                         .batch = BATCH}));
    }
    bool allTaken() const { return sim->furnace(PLAIN)->log().taken().size() == offered.size(); }
    /// Writes of 0 to the plain furnace's trigger word: one per block taken.
    int acks() const
    {
        const int trigger = sim->furnace(PLAIN)->description().triggerAddress();
        int n = 0;
        for (const sim::StationWrite &w : sim->furnace(PLAIN)->writes())
            n += w.address == trigger && w.words.value(0, 1) == 0;
        return n;
    }
    QStringList batchFiles() const
    {
        QStringList r;
        QDirIterator it(dir.path(), {QStringLiteral("*.OVD")}, QDir::Files, QDirIterator::Subdirectories);
        while (it.hasNext())
            r << it.next();
        return r;
    }
};

} // namespace

TEST_F(SharedFolder, SecondStartsHandOverAndAViewerBesideTheStationFollowsItsBatch)
{
    QProcess &station = start({});
    ASSERT_TRUE(waitUntil([&] { return polled(); }, 30000)) << station.readAll().constData();
    EXPECT_TRUE(readFile(dir.filePath(STATION_LOCK)).startsWith(QByteArray::number(station.processId()) + '\n'));

    // A second start without a batch only raises the running station.
    QProcess &zweite = start({});
    EXPECT_EQ(ended(zweite, 5000), 0) << zweite.readAll().constData();

    offerSamples(3);
    ASSERT_TRUE(waitUntil([&] { return allTaken(); }, 60000));
    const QStringList dateien = batchFiles();
    ASSERT_EQ(dateien.size(), 1) << dateien.join(' ').toStdString();
    const QString charge = dateien.first();

    // A second start with the batch hands it over while the station records.
    QProcess &dritte = start({charge});
    EXPECT_EQ(ended(dritte, 5000), 0) << dritte.readAll().constData();

    // The viewer in this process, on the station's folder.
    plant.Daten_Ordner_Option = dir.path();
    plant.viewer = true;
    QString why;
    ASSERT_EQ(claimDataFolder({}, &why), FolderClaim::Own) << why.toStdString();
    setEndProcess(noExit);
    KM_MDI w;
    setDialogs(&dlg);
    w.resize(1280, 800);
    w.show();
    w.load();
    setOpenRequestHandler([&w](const QString &b) { w.bringToFront(b); });
    EXPECT_TRUE(w.windowTitle().startsWith(QStringLiteral("Kalmeron Viewer"))) << w.windowTitle().toStdString();
    EXPECT_FALSE(w.mnuform(6)->isEnabled()); // no settings in an office
    EXPECT_FALSE(w.mnuImport()->isEnabled());
    // Its configured furnaces show offline, not a link being sought.
    Seite_Act(Seite);
    EXPECT_EQ(Seite.Zeile[PLAIN].Status, Text_Id(text::OFFLINE));

    // A viewer start hands its batch to this one.
    QProcess &zweiter = start({QStringLiteral("--view"), charge});
    EXPECT_EQ(ended(zweiter, 5000), 0) << zweiter.readAll().constData();
    ASSERT_TRUE(waitUntil([&] { return plant.Kurve_Datei == charge; }, 2000));
    ASSERT_NE(w.kurve(), nullptr);
    EXPECT_EQ(Kurve.Satz_Letzter, 39 + samples);

    // The station goes on recording; the viewer's curve grows with the file.
    offerSamples(2);
    ASSERT_TRUE(waitUntil([&] { return allTaken(); }, 60000));
    EXPECT_TRUE(waitUntil([&] { return Kurve.Satz_Letzter == 39 + samples; }, 5000)) << Kurve.Satz_Letzter;
    waitUntil([] { return false; }, 1000); // the last acknowledgement's answer

    // One socket per furnace, the station's; every block acknowledged once and stored once.
    EXPECT_EQ(peers(PLAIN).size(), 1) << QStringList(peers(PLAIN).values()).join(' ').toStdString();
    EXPECT_EQ(peers(HEADED).size(), 1) << QStringList(peers(HEADED).values()).join(' ').toStdString();
    EXPECT_EQ(sim->furnace(PLAIN)->log().taken(), offered);
    EXPECT_EQ(acks(), offered.size());
    BatchFile gespeichert;
    ASSERT_TRUE(gespeichert.openRead(charge));
    EXPECT_EQ(gespeichert.count(), 39 + samples);
    EXPECT_EQ(batchFiles(), dateien);
    EXPECT_TRUE(dlg.shown.empty()) << dlg.shown.front().text.toStdString();

    saveSnapshot(w, QStringLiteral("viewer_de.png"));
    setLanguage(1);
    waitUntil([] { return false; }, 500);
    saveSnapshot(w, QStringLiteral("viewer_en.png"));
    Programm_Ende();

    // A station that ends cleanly gives its folder up.
    ::kill(static_cast<pid_t>(station.processId()), SIGTERM);
    EXPECT_EQ(ended(station, 15000), 0);
    EXPECT_FALSE(QFile::exists(dir.filePath(STATION_LOCK)));
}
