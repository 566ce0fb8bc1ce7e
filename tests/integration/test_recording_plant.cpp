// Batch recording end to end: the station, started from a configuration file
// in a temporary data folder, polls a simulated plain furnace (memory link on
// UDP) and a headed furnace (Modbus/TCP) on loopback and records the log
// blocks their PLCs offer. Every block must be acknowledged once and stand
// once, in order, in the right file at the right record numbers, with the
// PLC's time; the mirror must equal the file; a dropped link and a restart of
// the station must lose nothing.

#include "core/dates.h"
#include "core/plant_state.h"
#include "link/socket.h"
#include "plant_fixture.h"
#include "recording/batch_file.h"
#include "recording/batch_names.h"
#include "recording/recorder.h"
#include "recording/recorder_block.h"
#include "sim/log_blocks.h"

#include <QDir>

using namespace kal;
using namespace kal::test;
using kal::sim::Protocol;

namespace {

constexpr int EINFACH = 0; ///< plain furnace on the memory link
constexpr int KOPF = 1;    ///< headed furnace on Modbus, identity at 500
constexpr i32 CHARGE = 12;

using Block = QVector<int16_t>;

class RecordingPlant : public PlantFixture {
protected:
    QDateTime t0;        ///< PLC time of the first block: two hours back, a backlog
    int stempelNr = 0;   ///< blocks stamped so far, ten seconds apart
    QVector<Block> angeboten[2]; ///< every block queued in the PLC, in order

    void SetUp() override
    {
        PlantFixture::SetUp();
        // Two hours back, and never so close to midnight that the blocks of a
        // test would fall on the next day.
        QDateTime jetzt = now().addSecs(-7200);
        if (jetzt.time() > QTime(23, 30))
            jetzt = jetzt.addSecs(-3600);
        t0 = QDateTime(jetzt.date(), QTime(jetzt.time().hour(), jetzt.time().minute(), 0), Qt::UTC);
        beschreibung.furnaces = {furnaceDescription(EINFACH, Protocol::MemoryLink, false, 0),
                                 furnaceDescription(KOPF, Protocol::Modbus, true, 500)};
        ASSERT_NO_FATAL_FAILURE(startSimPlant());
        plant.Backup_Aktiv = -1; // the mirror on
        writeConfig();
        startStation();
    }

    QDateTime nextStamp() { return t0.addSecs(10 * stempelNr++); }

    void offer(int f, const Block &b)
    {
        angeboten[f].append(b);
        plc(f).queueBlock(b);
    }
    /// A plain sample, or a sample group of batch CHARGE.
    void offerSample(int f, int16_t wert)
    {
        sim::SampleValues v;
        v.stamp = nextStamp();
        v.actual = wert;
        v.setpoint = static_cast<int16_t>(wert + 5);
        v.output = static_cast<int16_t>(wert % 100);
        v.segment = 2;
        v.kind = 1;
        v.batch = CHARGE;
        offer(f, f == KOPF ? sim::groupBlock(v) : sim::plainSampleBlock(v));
    }

    bool allTaken(int f) { return plc(f).log().taken().size() == angeboten[f].size(); }
    bool allTaken() { return allTaken(EINFACH) && allTaken(KOPF); }

    /// Each block taken exactly once, in order, and the trigger word written
    /// as 0 once per block.
    void checkAcknowledgements(int f)
    {
        EXPECT_EQ(plc(f).log().taken(), angeboten[f]) << "furnace " << f;
        const int trigger = plc(f).description().triggerAddress();
        int nullen = 0;
        for (const sim::StationWrite &w : plc(f).writes())
            if (w.address == trigger && w.words.value(0, 1) == 0)
                ++nullen;
        EXPECT_EQ(nullen, angeboten[f].size()) << "furnace " << f;
    }

    /// The records the blocks stand for, from record 40 on: announcements and
    /// blocks with an impossible date leave none; an operator text goes over
    /// the last record and the next.
    static std::vector<BatchRecord> expectedRecords(const QVector<Block> &bloecke)
    {
        std::vector<BatchRecord> r;
        for (const Block &q : bloecke) {
            LogBlock w{};
            std::copy(q.begin(), q.begin() + std::min<qsizetype>(q.size(), 40), w.begin());
            const QString datum = SPS_Datum(w[1], w[2]);
            if (plant.SPS_Datum_OK != -1 || (w[0] > 200 && w[0] != Satz_Text))
                continue;
            const RecordTime zeit = timeOfText(datum);
            if (w[0] == Satz_Charge || w[0] == Satz_Strom) {
                const auto g = groupRecords(w, zeit);
                r.insert(r.end(), g.begin(), g.end());
            } else if (w[0] == Satz_Programm) {
                r.push_back(programTextRecord(w, zeit));
            } else if (w[0] == Satz_Text) {
                const auto t = plcTextRecords(w, r.back());
                r.back() = t[0];
                r.push_back(t[1]);
            } else {
                r.push_back(Satz_Einzel(w, zeit));
            }
        }
        return r;
    }

    /// The batch file of the furnace holds exactly `erwartet` from record 40
    /// on (a header before it on a headed furnace), and the mirror is equal.
    void checkBatchFile(int f, const std::vector<BatchRecord> &erwartet)
    {
        const QString name = batchFileName(plant.Ofen_Serie[f], CHARGE, t0.date().day(), t0.date().month(),
                                              t0.date().year());
        const QStringList dateien =
            QDir(plant.Charge_Ordner[0]).entryList({name.left(11) + QLatin1Char('*')}, QDir::Files);
        EXPECT_EQ(dateien, QStringList{name}) << "furnace " << f << ": " << dateien.join(' ').toStdString();
        const QString pfad = QDir(plant.Charge_Ordner[0]).filePath(name);
        BatchFile datei;
        ASSERT_TRUE(datei.openRead(pfad));
        ASSERT_EQ(datei.count(), 39 + int(erwartet.size())) << "furnace " << f;
        for (int i = 0; i < int(erwartet.size()); ++i)
            EXPECT_EQ(datei.read(40 + i), erwartet[i]) << "furnace " << f << " record " << 40 + i;
        EXPECT_EQ(datei.read(4).Tag, f == KOPF ? 58 : 0);
        datei.close();

        QFile a(pfad), b(QDir(plant.Charge_Ordner[1]).filePath(name));
        ASSERT_TRUE(a.open(QIODevice::ReadOnly) && b.open(QIODevice::ReadOnly)) << "furnace " << f;
        EXPECT_EQ(a.readAll(), b.readAll()) << "mirror of furnace " << f;
    }
};

} // namespace

TEST_F(RecordingPlant, EveryOfferedBlockIsStoredOnceInItsFileAndMirror)
{
    offer(EINFACH, sim::announcementBlock(CHARGE, nextStamp()));
    offerSample(KOPF, 8100); // opens the batch: a program text before it would have none
    offer(KOPF, sim::programTextBlock(QStringLiteral("Haerten 860"), nextStamp(), CHARGE));
    for (int i = 0; i < 4; ++i) {
        offerSample(EINFACH, static_cast<int16_t>(8000 + 10 * i + 5));
        offerSample(KOPF, static_cast<int16_t>(8200 + i));
    }
    // A block whose stamp is no date is taken and thrown away.
    Block falsch = sim::plainSampleBlock({nextStamp(), 1, 2, 3});
    falsch[1] = 0;
    offer(EINFACH, falsch);
    offer(KOPF, sim::elementBlock({101, 102, 103, 104, 105}, nextStamp(), CHARGE));
    offerSample(EINFACH, 7000);
    offerSample(KOPF, 8300);
    offer(KOPF, sim::operatorTextBlock(QStringLiteral("Auftrag 4711 Kunde A"), nextStamp()));

    ASSERT_TRUE(runCycles([&] { return allTaken(); }));
    checkAcknowledgements(EINFACH);
    checkAcknowledgements(KOPF);
    checkBatchFile(EINFACH, expectedRecords(angeboten[EINFACH]));
    checkBatchFile(KOPF, expectedRecords(angeboten[KOPF]));
    EXPECT_EQ(plant.Charge_Nr[EINFACH], CHARGE);
    EXPECT_EQ(plant.Charge_Nr[KOPF], CHARGE);
    EXPECT_TRUE(plant.LogList.isEmpty()) << plant.LogList.join('\n').toStdString();
}

TEST_F(RecordingPlant, NothingIsLostAcrossALinkDropAndARestartOfTheStation)
{
    offer(EINFACH, sim::announcementBlock(CHARGE, nextStamp()));
    for (int i = 0; i < 2; ++i) {
        offerSample(EINFACH, static_cast<int16_t>(9000 + i));
        offerSample(KOPF, static_cast<int16_t>(9100 + i));
    }
    ASSERT_TRUE(runCycles([&] { return allTaken(); }));

    // Both links go down; the PLCs go on logging. The Modbus furnace fails
    // to connect again and again, longer than its rest after each try.
    const auto versuche = [this] {
        int n = 0;
        for (const auto &[p, text] : scr.panels)
            n += p == KOPF + 1 && text.startsWith(QStringLiteral("Connect"));
        return n;
    };
    plc(EINFACH).link().dropLink();
    plc(KOPF).link().dropLink();
    for (int i = 0; i < 3; ++i) {
        offerSample(EINFACH, static_cast<int16_t>(9010 + i));
        offerSample(KOPF, static_cast<int16_t>(9110 + i));
    }
    ASSERT_TRUE(runCycles([&] { return versuche() >= 3; }));
    EXPECT_EQ(plant.Ofen_Online[KOPF], 0);
    plc(EINFACH).link().resume();
    plc(KOPF).link().resume();
    ASSERT_TRUE(runCycles([&] { return allTaken(); }));

    // The station stops; the PLCs hold their next blocks until it is back.
    Winsock1.clear();
    for (int i = 0; i < 3; ++i) {
        offerSample(EINFACH, static_cast<int16_t>(9020 + i));
        offerSample(KOPF, static_cast<int16_t>(9120 + i));
    }
    sim->advance(5000);
    startStation();
    EXPECT_EQ(plant.Charge_Nr[EINFACH], CHARGE);
    EXPECT_EQ(plant.Charge_Nr[KOPF], CHARGE);
    EXPECT_EQ(plant.Charge_Gueltig[KOPF], -1);
    ASSERT_TRUE(runCycles([&] { return allTaken(); }));

    checkAcknowledgements(EINFACH);
    checkAcknowledgements(KOPF);
    checkBatchFile(EINFACH, expectedRecords(angeboten[EINFACH]));
    checkBatchFile(KOPF, expectedRecords(angeboten[KOPF]));
}

