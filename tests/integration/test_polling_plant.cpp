// The main cycle on real loopback sockets against the simulated plant: eight
// furnaces of every kind come online and their images follow the PLCs; a
// Modbus read that is never answered is given up, a dropped link shows
// "Connect", and both furnaces come back with current images.

#include "core/hooks.h"
#include "core/plant_state.h"
#include "link/channels.h"
#include "link/data_arrival.h"
#include "link/main_cycle.h"
#include "link/polling.h"
#include "link/qt_socket.h"
#include "link/socket.h"
#include "sim/plant.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QMap>
#include <QTcpServer>
#include <QTimer>
#include <memory>

using namespace kal;
using kal::sim::FurnaceDescription;
using kal::sim::Protocol;

namespace {

/// The plant's loopback subnet, "127.0.N.": one per test, so that tests run
/// side by side in separate processes don't share addresses and ports.
QString Netz()
{
    const auto *info = ::testing::UnitTest::GetInstance()->current_test_info();
    return QStringLiteral("127.0.%1.").arg(40 + qHash(QByteArray(info->name())) % 200);
}
/// Marker words the tests set in the PLCs, one per block the cycle reads.
constexpr int MARKEN[] = {150, 350, 450, 640};

void App()
{
    if (QCoreApplication::instance())
        return;
    static int argc = 1;
    static char name[] = "integration_tests";
    static char *argv[] = {name, nullptr};
    new QCoreApplication(argc, argv);
}

/// A port no server listens on now, for the Modbus servers of the plant.
int Freier_Port()
{
    QTcpServer s;
    s.listen(QHostAddress(Netz() + QStringLiteral("11")), 0);
    return s.serverPort();
}

FurnaceDescription Beschreibung(int f, Protocol p, bool headed, int base, int panel = 0, bool gross = false)
{
    FurnaceDescription d;
    d.index = f;
    d.address = Netz() + QString::number(11 + f);
    d.protocol = p;
    d.headed = headed;
    d.base = base;
    d.large = gross;
    d.panelCode = panel;
    d.name = QStringLiteral("Ofen %1").arg(f + 1);
    d.serial = QStringLiteral("2401-%1-TST").arg(100 + f);
    d.version = QStringLiteral("0%1").arg(f);
    d.values216 = {int16_t(f), int16_t(2 * f), int16_t(3 * f)};
    d.messageConfig = false;
    return d;
}

class PollingAnlage : public ::testing::Test {
protected:
    std::unique_ptr<sim::SimPlant> sim;
    QMap<int, QString> panel;
    QElapsedTimer uhr;
    int64_t simMs = 0;

    void SetUp() override
    {
        App();
        sim::PlantDescription d;
        d.panelAddress = Netz() + QStringLiteral("20");
        d.udpPort = Panel_Port;
        d.modbusPort = Freier_Port();
        d.furnaces = {
            Beschreibung(0, Protocol::MemoryLink, false, 0),
            Beschreibung(1, Protocol::MemoryLink, true, 240),
            Beschreibung(2, Protocol::Modbus, true, 100),
            Beschreibung(3, Protocol::Modbus, true, 500),
            Beschreibung(4, Protocol::MemoryLink, false, 0, 0x51), // behind the panel server
            Beschreibung(5, Protocol::Modbus, true, 500, 0x50),    // mixed: 300..499 in the panel
            Beschreibung(6, Protocol::Modbus, false, 0),
            Beschreibung(7, Protocol::MemoryLink, true, 240, 0, true),
        };
        sim = std::make_unique<sim::SimPlant>(d);
        QString fehler;
        ASSERT_TRUE(sim->start(&fehler)) << fehler.toStdString();
        for (int f = 0; f < OFEN_MAX; ++f)
            for (int k = 0; k < 4; ++k)
                sim->furnace(f)->setWord(MARKEN[k], static_cast<int16_t>(1000 * f + k + 1));

        Station(d);
        LogList.clear();
        uhr.start();
    }

    void TearDown() override
    {
        Winsock1.clear();
        hooks = Hooks{};
        Zyklus_Uhr_Standard();
        Modbus_Port = 502;
        sim.reset();
    }

    /// The station's configuration of the same plant, channels set up.
    void Station(const sim::PlantDescription &d)
    {
        resetPlant();
        hooks = Hooks{};
        hooks.Status_Panel = [this](int p, const QString &t) { panel[p] = t; };
        Winsock1.clear();
        Winsock1_Qt();
        Empfang_Verbinden();
        Modbus_Port = d.modbusPort;
        // A failed connect rests the furnace one round only, to keep the run short.
        Zyklus_Uhr_Aktiv().Zufall = [] { return 0.0; };
        plant.Sprachtext(0, 0) = QStringLiteral("Ofen");
        plant.Sprachtext(0, 7) = QStringLiteral("Connect");
        plant.Sprachtext(0, 8) = QStringLiteral("Offline");
        plant.Sprachtext(0, 9) = QStringLiteral("Online");
        for (int k = 0; k < KANAL_MAX; ++k)
            plant.IP_Adr[k] = -1;
        plant.Next_Ofen = -1;
        for (const FurnaceDescription &b : d.furnaces) {
            const int f = b.index;
            const QStringList o = b.address.split(QLatin1Char('.'));
            for (int k = 0; k < 4; ++k)
                plant.Ofen_IP(f, k) = static_cast<u8>(o[k].toInt());
            plant.Ofen_Aktiv[f] = -1;
            plant.Ofen_UDP[f] = b.protocol == Protocol::MemoryLink ? -1 : 0;
            plant.Ofen_Typ[f + 1] = b.typeWord();
            plant.Ofen_Name[f] = b.name;
            plant.Ofen_Serie[f] = b.serial;
            plant.Ofen_Version[f] = b.version;
            plant.Ofen_Wert216[f] = b.values216[0];
            plant.Ofen_Wert217[f] = b.values216[1];
            plant.Ofen_Wert218[f] = b.values216[2];
            for (int p = 0; p < KENNUNG_PAARE && b.headed; ++p) {
                plant.Ofen_Kennung_A(f + 1, p) = sim->furnace(f)->word(b.base + 2 * p);
                plant.Ofen_Kennung_B(f + 1, p) = sim->furnace(f)->word(b.base + 2 * p + 1);
            }
            plant.Meld_Seite[f] = -1;
        }
        for (int f = 0; f < OFEN_MAX; ++f)
            Kanal_Setup(f);
    }

    /// Ticks of the main cycle, with the events between them; the plant's
    /// clock follows the real one. Stops when `fertig` holds; false when it
    /// doesn't within a generous number of ticks (a guard, not a timing test).
    bool Laufen(const std::function<bool()> &fertig, int grenze = 4000)
    {
        for (int i = 0; i < grenze; ++i) {
            if (fertig())
                return true;
            Timer1_Tick();
            QEventLoop schleife;
            QTimer::singleShot(2, &schleife, &QEventLoop::quit);
            schleife.exec();
            const int64_t jetzt = uhr.elapsed();
            sim->advance(jetzt - simMs);
            simMs = jetzt;
        }
        return fertig();
    }

    bool Alle_Runden(int runden)
    {
        for (int f = 0; f < OFEN_MAX; ++f)
            if (plant.Ofen_Online[f] == 0 || plant.Poll_Rounds[f] < runden)
                return false;
        return true;
    }

    void Bild_Gleich(int f)
    {
        sim::SimFurnace &s = *sim->furnace(f);
        EXPECT_EQ(plant.SPS_Wort(f, 29), s.word(29)) << "furnace " << f;
        for (int w = 200; w <= 218; ++w)
            EXPECT_EQ(plant.SPS_Wort(f, w), s.word(w)) << "furnace " << f << " word " << w;
        for (int m : MARKEN)
            EXPECT_EQ(plant.SPS_Wort(f, m), s.word(m)) << "furnace " << f << " word " << m;
    }
};

TEST_F(PollingAnlage, MixedPlantComesOnlineWithImagesOfThePlcs)
{
    ASSERT_TRUE(Laufen([&] { return Alle_Runden(3); }));
    for (int f = 0; f < OFEN_MAX; ++f) {
        Bild_Gleich(f);
        EXPECT_TRUE(panel[f + 1].startsWith(QStringLiteral("Online "))) << panel[f + 1].toStdString();
        EXPECT_EQ(plant.Kennung_Fehler[f], 0) << "furnace " << f;
        EXPECT_EQ(plant.Empfang_Fehler[f], 0) << "furnace " << f;
    }
    // The identity block at 500 and the rare blocks come only over Modbus.
    for (int w = 500; w < 524; ++w)
        EXPECT_EQ(plant.SPS_Wort(3, w), sim->furnace(3)->word(w)) << w;
    // Furnaces 5 and 6 found their windows in the panel server through word 215.
    EXPECT_EQ(plant.Server_Offset[4], 4000);
    EXPECT_EQ(plant.Server_Offset[5], 3000);
    EXPECT_EQ(plant.Server_Akt_IP4, 20);
    EXPECT_EQ(panel[6].left(12), QStringLiteral("Online M:6 S"));
    EXPECT_TRUE(LogList.isEmpty()) << LogList.join(QLatin1Char('\n')).toStdString();

    // The PLCs change words; the images follow within a round of sequences.
    for (int f = 0; f < OFEN_MAX; ++f)
        sim->furnace(f)->setWord(350, static_cast<int16_t>(-7 - f));
    const int runden = plant.Poll_Rounds[0];
    ASSERT_TRUE(Laufen([&] {
        for (int f = 0; f < OFEN_MAX; ++f)
            if (plant.SPS_Wort(f, 350) != -7 - f)
                return false;
        return true;
    }));
    EXPECT_LE(plant.Poll_Rounds[0], runden + 2);
}

TEST_F(PollingAnlage, LostAndSilentModbusLinksAreShownAndComeBackCurrent)
{
    ASSERT_TRUE(Laufen([&] { return Alle_Runden(1); }));
    sim::SimFurnace &still = *sim->furnace(2);
    sim::SimFurnace &weg = *sim->furnace(6);
    still.link().setDelay(3600 * 1000); // answers an hour late: never, for this test
    weg.link().dropLink();
    ASSERT_TRUE(Laufen([&] { return plant.IP_Adr[2] == -3 && panel[7] == QStringLiteral("Connect T:7"); }));
    EXPECT_EQ(plant.Ofen_Online[2], -1) << "a silent PLC keeps its connection; its read is given up";
    EXPECT_EQ(plant.Ofen_Online[6], 0);

    still.link().dropLink();
    ASSERT_TRUE(Laufen([&] { return panel[3] == QStringLiteral("Connect T:3"); }));
    still.setWord(640, -4242);
    weg.setWord(450, 4242);
    still.link().resume();
    weg.link().resume();
    ASSERT_TRUE(Laufen([&] { return plant.SPS_Wort(2, 640) == -4242 && plant.SPS_Wort(6, 450) == 4242; }));
    EXPECT_TRUE(panel[3].startsWith(QStringLiteral("Online T:3")));
    EXPECT_TRUE(panel[7].startsWith(QStringLiteral("Online T:7")));
}

} // namespace
