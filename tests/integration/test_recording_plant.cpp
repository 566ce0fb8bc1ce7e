// Batch recording end to end: the station, started from a configuration file
// in a temporary data folder, polls a simulated plain furnace (memory link on
// UDP) and a headed furnace (Modbus/TCP) on loopback and records the log
// blocks their PLCs offer. Every block must be acknowledged once and stand
// once, in order, in the right file at the right record numbers, with the
// PLC's time; the mirror must equal the file; a dropped link and a restart of
// the station must lose nothing.

#include "config/channel_tables.h"
#include "config/config_file.h"
#include "config/paths.h"
#include "core/dates.h"
#include "core/dialogs.h"
#include "core/hooks.h"
#include "core/plant_state.h"
#include "link/channels.h"
#include "link/data_arrival.h"
#include "link/main_cycle.h"
#include "link/polling.h"
#include "link/qt_socket.h"
#include "link/socket.h"
#include "recording/batch_file.h"
#include "recording/batch_names.h"
#include "recording/recorder.h"
#include "recording/recorder_block.h"
#include "sim/log_blocks.h"
#include "sim/plant.h"
#include "sim/word_image.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDir>
#include <QEventLoop>
#include <QTcpServer>
#include <QTemporaryDir>
#include <QTimer>
#include <memory>

using namespace kal;
using kal::sim::FurnaceDescription;
using kal::sim::Protocol;

namespace {

constexpr int EINFACH = 0; ///< plain furnace on the memory link
constexpr int KOPF = 1;    ///< headed furnace on Modbus, identity at 500
constexpr i32 CHARGE = 12;

using Block = QVector<int16_t>;

void App()
{
    if (QCoreApplication::instance())
        return;
    static int argc = 1;
    static char name[] = "integration_tests";
    static char *argv[] = {name, nullptr};
    new QCoreApplication(argc, argv);
}

/// Loopback network of the running test, "127.x.9.": tests run side by side
/// in separate processes, and the memory link servers all listen on the
/// panel port, so each test has its own addresses.
QString Netz()
{
    const char *name = ::testing::UnitTest::GetInstance()->current_test_info()->name();
    return QStringLiteral("127.%1.9.").arg(100 + qHash(QByteArray(name)) % 150);
}

int Freier_Port()
{
    QTcpServer s;
    s.listen(QHostAddress(Netz() + QStringLiteral("11")), 0);
    return s.serverPort();
}

FurnaceDescription Beschreibung(int f, Protocol p, bool headed)
{
    FurnaceDescription d;
    d.index = f;
    d.address = Netz() + QString::number(11 + f);
    d.protocol = p;
    d.headed = headed;
    d.base = headed ? 500 : 0;
    d.name = QStringLiteral("Ofen %1").arg(f + 1);
    d.serial = QStringLiteral("2401-00%1-%2").arg(f + 1).arg(headed ? QStringLiteral("HDR") : QStringLiteral("PLN"));
    d.messageConfig = false;
    return d;
}

class RecordingAnlage : public ::testing::Test {
protected:
    QTemporaryDir daten;
    QString cwd = QDir::currentPath();
    std::unique_ptr<sim::SimPlant> sim;
    sim::PlantDescription beschreibung;
    ScriptedDialogs dialoge;
    QDateTime t0;        ///< PLC time of the first block: two hours back, a backlog
    int stempelNr = 0;   ///< blocks stamped so far, ten seconds apart
    double uhrSekunden = 0;
    QVector<Block> angeboten[2]; ///< every block queued in the PLC, in order

    void SetUp() override
    {
        App();
        ASSERT_TRUE(daten.isValid());
        setDialogs(&dialoge);
        // Two hours back, and never so close to midnight that the blocks of a
        // test would fall on the next day.
        QDateTime jetzt = Jetzt().addSecs(-7200);
        if (jetzt.time() > QTime(23, 30))
            jetzt = jetzt.addSecs(-3600);
        t0 = QDateTime(jetzt.date(), QTime(jetzt.time().hour(), jetzt.time().minute(), 0), Qt::UTC);
        LogList.clear();
        beschreibung.udpPort = Panel_Port;
        beschreibung.modbusPort = Freier_Port();
        beschreibung.furnaces = {Beschreibung(EINFACH, Protocol::MemoryLink, false),
                                 Beschreibung(KOPF, Protocol::Modbus, true)};
        sim = std::make_unique<sim::SimPlant>(beschreibung);
        QString fehler;
        ASSERT_TRUE(sim->start(&fehler)) << fehler.toStdString();
        Konfiguration_Schreiben();
        Station_Starten();
    }

    void TearDown() override
    {
        Winsock1.clear();
        hooks = Hooks{};
        Zyklus_Uhr_Standard();
        Modbus_Port = 502;
        Daten_Ordner_Option.clear();
        setDialogs(nullptr);
        QDir::setCurrent(cwd);
        sim.reset();
    }

    QString ordner(const char *name) const
    {
        const QString p = daten.filePath(QString::fromLatin1(name));
        QDir().mkpath(p);
        return p;
    }

    /// The configuration a site would have: both furnaces active and
    /// recording, the mirror on, the identity of each PLC.
    void Konfiguration_Schreiben()
    {
        resetPlant();
        plant.Pfad[0] = daten.path();
        plant.Pfad[1] = ordner("LogBuch");
        plant.Pfad[2] = ordner("USB");
        plant.Pfad[3] = ordner("CSV");
        plant.Pfad[4] = ordner("Sicherung");
        plant.Backup_Aktiv = -1;
        for (const FurnaceDescription &b : beschreibung.furnaces) {
            const int f = b.index;
            const QStringList o = b.address.split(QLatin1Char('.'));
            for (int k = 0; k < 4; ++k)
                plant.Ofen_IP(f, k) = static_cast<u8>(o[k].toInt());
            plant.Ofen_Aktiv[f] = -1;
            plant.Ofen_Charge[f] = -1;
            plant.Ofen_UDP[f] = b.protocol == Protocol::MemoryLink ? -1 : 0;
            plant.Ofen_Typ[f + 1] = b.typeWord();
            plant.Ofen_Name[f] = b.name;
            plant.Ofen_Serie[f] = b.serial;
            plant.Ofen_Version[f] = b.version;
            for (int p = 0; p < KENNUNG_PAARE && b.headed; ++p) {
                plant.Ofen_Kennung_A(f + 1, p) = sim->furnace(f)->word(b.base + 2 * p);
                plant.Ofen_Kennung_B(f + 1, p) = sim->furnace(f)->word(b.base + 2 * p + 1);
            }
        }
        Config_Schreiben(false);
    }

    /// A start of the station as far as recording needs it: a fresh process
    /// reads the configuration file, sets up channels and the recorder.
    void Station_Starten()
    {
        resetPlant();
        hooks = Hooks{};
        Log_Art = 0;
        Log_Satz = Log_Felder{};
        Daten_Ordner_Option = daten.path();
        Pfade_Setzen();
        Config_Lesen();
        ASSERT_TRUE(dialoge.shown.empty()) << dialoge.shown.front().text.toStdString();
        for (int f = 0; f < OFEN_MAX; ++f)
            plant.Meld_Seite[f] = -1;
        for (int k = 0; k < KANAL_MAX; ++k)
            plant.IP_Adr[k] = -1;
        plant.Next_Ofen = -1;
        Winsock1.clear();
        Winsock1_Qt();
        Empfang_Verbinden();
        Modbus_Port = beschreibung.modbusPort;
        // A connect try waits a few short yields, not two real seconds, and a
        // failed one rests the furnace a single round.
        Zyklus_Uhr &uhr = Zyklus_Uhr_Aktiv();
        uhr.Sekunden = [this] { return uhrSekunden; };
        uhr.Nachgeben = [this] {
            QEventLoop schleife;
            QTimer::singleShot(1, &schleife, &QEventLoop::quit);
            schleife.exec();
            uhrSekunden += 0.1;
        };
        uhr.Zufall = [] { return 0.0; };
        plant.Sprachtext(0, 7) = QStringLiteral("Connect");
        plant.Sprachtext(0, 9) = QStringLiteral("Online");
        for (int f = 0; f < OFEN_MAX; ++f) {
            Kanal_Setup(f);
            Spuren_Setzen(f + 1);
        }
        Recorder_Init();
    }

    /// Ticks of the main cycle with the events between them; the plant moves
    /// 100 ms a tick. False when `fertig` doesn't come within `grenze` ticks
    /// (a guard, not a timing test).
    bool Laufen(const std::function<bool()> &fertig, int grenze = 6000)
    {
        for (int i = 0; i < grenze; ++i) {
            if (fertig())
                return true;
            Timer1_Tick();
            for (int k = 0; k < 3; ++k)
                QCoreApplication::processEvents();
            sim->advance(100);
        }
        return fertig();
    }

    sim::SimFurnace &plc(int f) { return *sim->furnace(f); }

    QDateTime naechsterStempel() { return t0.addSecs(10 * stempelNr++); }

    void anbieten(int f, const Block &b)
    {
        angeboten[f].append(b);
        plc(f).queueBlock(b);
    }
    /// A plain sample, or a sample group of batch CHARGE.
    void probe(int f, int16_t wert)
    {
        sim::SampleValues v;
        v.stamp = naechsterStempel();
        v.actual = wert;
        v.setpoint = static_cast<int16_t>(wert + 5);
        v.output = static_cast<int16_t>(wert % 100);
        v.segment = 2;
        v.kind = 1;
        v.batch = CHARGE;
        anbieten(f, f == KOPF ? sim::groupBlock(v) : sim::plainSampleBlock(v));
    }

    bool alleGenommen(int f) { return plc(f).log().taken().size() == angeboten[f].size(); }
    bool alleGenommen() { return alleGenommen(EINFACH) && alleGenommen(KOPF); }

    /// Each block taken exactly once, in order, and the trigger word written
    /// as 0 once per block.
    void Quittungen_Pruefen(int f)
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
    static std::vector<BatchRecord> Erwartet(const QVector<Block> &bloecke)
    {
        std::vector<BatchRecord> r;
        for (const Block &q : bloecke) {
            LogBlock w{};
            std::copy(q.begin(), q.begin() + std::min<qsizetype>(q.size(), 40), w.begin());
            const QString datum = SPS_Datum(w[1], w[2]);
            if (plant.SPS_Datum_OK != -1 || (w[0] > 200 && w[0] != Satz_Text))
                continue;
            const SatzZeit zeit = zeitVonText(datum);
            if (w[0] == Satz_Charge || w[0] == Satz_Strom) {
                const auto g = Satz_Gruppe(w, zeit);
                r.insert(r.end(), g.begin(), g.end());
            } else if (w[0] == Satz_Programm) {
                r.push_back(Satz_Programm_Bauen(w, zeit));
            } else if (w[0] == Satz_Text) {
                const auto t = Satz_Text_SPS(w, r.back());
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
    void Datei_Pruefen(int f, const std::vector<BatchRecord> &erwartet)
    {
        const QString name = Charge_Dateiname(plant.Ofen_Serie[f], CHARGE, t0.date().day(), t0.date().month(),
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

TEST_F(RecordingAnlage, EveryOfferedBlockIsStoredOnceInItsFileAndMirror)
{
    anbieten(EINFACH, sim::announcementBlock(CHARGE, naechsterStempel()));
    probe(KOPF, 8100); // opens the batch: a program text before it would have none
    anbieten(KOPF, sim::programTextBlock(QStringLiteral("Haerten 860"), naechsterStempel(), CHARGE));
    for (int i = 0; i < 4; ++i) {
        probe(EINFACH, static_cast<int16_t>(8000 + 10 * i + 5));
        probe(KOPF, static_cast<int16_t>(8200 + i));
    }
    // A block whose stamp is no date is taken and thrown away.
    Block falsch = sim::plainSampleBlock({naechsterStempel(), 1, 2, 3});
    falsch[1] = 0;
    anbieten(EINFACH, falsch);
    anbieten(KOPF, sim::elementBlock({101, 102, 103, 104, 105}, naechsterStempel(), CHARGE));
    probe(EINFACH, 7000);
    probe(KOPF, 8300);
    anbieten(KOPF, sim::operatorTextBlock(QStringLiteral("Auftrag 4711 Kunde A"), naechsterStempel()));

    ASSERT_TRUE(Laufen([&] { return alleGenommen(); }));
    Quittungen_Pruefen(EINFACH);
    Quittungen_Pruefen(KOPF);
    Datei_Pruefen(EINFACH, Erwartet(angeboten[EINFACH]));
    Datei_Pruefen(KOPF, Erwartet(angeboten[KOPF]));
    EXPECT_EQ(plant.Charge_Nr[EINFACH], CHARGE);
    EXPECT_EQ(plant.Charge_Nr[KOPF], CHARGE);
    EXPECT_TRUE(LogList.isEmpty()) << LogList.join('\n').toStdString();
}

TEST_F(RecordingAnlage, NothingIsLostAcrossALinkDropAndARestartOfTheStation)
{
    anbieten(EINFACH, sim::announcementBlock(CHARGE, naechsterStempel()));
    for (int i = 0; i < 2; ++i) {
        probe(EINFACH, static_cast<int16_t>(9000 + i));
        probe(KOPF, static_cast<int16_t>(9100 + i));
    }
    ASSERT_TRUE(Laufen([&] { return alleGenommen(); }));

    // Both links go down; the PLCs go on logging. The Modbus furnace fails
    // to connect again and again, longer than its rest after each try.
    int versuche = 0;
    hooks.Status_Panel = [&](int panel, const QString &text) {
        if (panel == KOPF + 1 && text.startsWith(QStringLiteral("Connect")))
            ++versuche;
    };
    plc(EINFACH).link().dropLink();
    plc(KOPF).link().dropLink();
    for (int i = 0; i < 3; ++i) {
        probe(EINFACH, static_cast<int16_t>(9010 + i));
        probe(KOPF, static_cast<int16_t>(9110 + i));
    }
    ASSERT_TRUE(Laufen([&] { return versuche >= 3; }));
    EXPECT_EQ(plant.Ofen_Online[KOPF], 0);
    plc(EINFACH).link().resume();
    plc(KOPF).link().resume();
    ASSERT_TRUE(Laufen([&] { return alleGenommen(); }));

    // The station stops; the PLCs hold their next blocks until it is back.
    Winsock1.clear();
    for (int i = 0; i < 3; ++i) {
        probe(EINFACH, static_cast<int16_t>(9020 + i));
        probe(KOPF, static_cast<int16_t>(9120 + i));
    }
    sim->advance(5000);
    Station_Starten();
    EXPECT_EQ(plant.Charge_Nr[EINFACH], CHARGE);
    EXPECT_EQ(plant.Charge_Nr[KOPF], CHARGE);
    EXPECT_EQ(plant.Charge_Gueltig[KOPF], -1);
    ASSERT_TRUE(Laufen([&] { return alleGenommen(); }));

    Quittungen_Pruefen(EINFACH);
    Quittungen_Pruefen(KOPF);
    Datei_Pruefen(EINFACH, Erwartet(angeboten[EINFACH]));
    Datei_Pruefen(KOPF, Erwartet(angeboten[KOPF]));
}

TEST_F(RecordingAnlage, RecordingOffKeepsTheBlockRaisedUntilSwitchedOn)
{
    plant.Ofen_Charge[EINFACH] = 0;
    anbieten(EINFACH, sim::announcementBlock(CHARGE, naechsterStempel()));
    probe(EINFACH, 5555);
    int ticks = 0;
    Laufen([&] { return ++ticks > 400; });
    EXPECT_EQ(plant.Trigger_Wert[EINFACH], 200 + CHARGE) << "the station has seen the block";
    EXPECT_TRUE(plc(EINFACH).log().taken().isEmpty());
    EXPECT_TRUE(plc(EINFACH).log().offering());
    EXPECT_TRUE(QDir(plant.Charge_Ordner[0]).entryList(QDir::Files).isEmpty());

    plant.Ofen_Charge[EINFACH] = -1;
    ASSERT_TRUE(Laufen([&] { return alleGenommen(EINFACH); }));
    Quittungen_Pruefen(EINFACH);
    Datei_Pruefen(EINFACH, Erwartet(angeboten[EINFACH]));
}
