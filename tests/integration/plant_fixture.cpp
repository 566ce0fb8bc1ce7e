#include "plant_fixture.h"

#include "config/channel_tables.h"
#include "config/config_file.h"
#include "config/paths.h"
#include "link/channels.h"
#include "link/data_arrival.h"
#include "station/main_cycle.h"
#include "link/polling.h"
#include "link/qt_socket.h"
#include "link/socket.h"
#include "operation/message_store.h"
#include "station/wiring.h"
#include "support/events.h"

#include <QTcpServer>

namespace kal::test {

QString subnet()
{
    const auto *info = ::testing::UnitTest::GetInstance()->current_test_info();
    const size_t h = qHash(QByteArray(info->test_suite_name()) + '.' + info->name());
    return QStringLiteral("127.%1.%2.").arg(1 + h % 250).arg(1 + h / 250 % 250);
}

int freePort()
{
    QTcpServer s;
    s.listen(QHostAddress(subnet() + QStringLiteral("11")), 0);
    return s.serverPort();
}

sim::FurnaceDescription furnaceDescription(int f, sim::Protocol p, bool headed, int base)
{
    sim::FurnaceDescription d;
    d.index = f;
    d.address = subnet() + QString::number(11 + f);
    d.protocol = p;
    d.headed = headed;
    d.base = base;
    d.name = QStringLiteral("Ofen %1").arg(f + 1);
    d.serial = QStringLiteral("2401-%1-TST").arg(100 + f);
    d.messageConfig = false;
    return d;
}

void PlantFixture::SetUp()
{
    FreshProcess::SetUp();
    ASSERT_TRUE(daten.isValid());
    testApp();
    beschreibung.udpPort = Panel_Port;
    beschreibung.modbusPort = freePort();
}

void PlantFixture::TearDown()
{
    QDir::setCurrent(cwd);
    FreshProcess::TearDown();
    sim.reset();
}

void PlantFixture::dataFolders()
{
    plant.Pfad[0] = daten.path();
    const char *ordner[] = {"LogBuch", "USB", "CSV", "Sicherung"};
    for (int k = 1; k <= 4; ++k) {
        plant.Pfad[k] = daten.filePath(QString::fromLatin1(ordner[k - 1]));
        QDir().mkpath(plant.Pfad[k]);
    }
}

void PlantFixture::writeConfig()
{
    dataFolders();
    configureFurnaces();
    for (const sim::FurnaceDescription &b : beschreibung.furnaces)
        plant.Ofen_Charge[b.index] = -1;
    Config_Schreiben(false);
}

void PlantFixture::startStation()
{
    resetPlant();
    plant.Daten_Ordner_Option = daten.path();
    Pfade_Setzen();
    ASSERT_TRUE(openMessageStore());
    Config_Lesen();
    ASSERT_TRUE(dlg.shown.empty()) << dlg.shown.front().text.toStdString();
    setUpChannels();
    for (int f = 0; f < OFEN_MAX; ++f)
        Spuren_Setzen(f + 1);
    loadMessageTexts();
    wireStation();
}

void PlantFixture::startSimPlant()
{
    sim = std::make_unique<sim::SimPlant>(beschreibung);
    QString fehler;
    ASSERT_TRUE(sim->start(&fehler)) << fehler.toStdString();
}

void PlantFixture::configureFurnaces()
{
    for (const sim::FurnaceDescription &b : beschreibung.furnaces) {
        const int f = b.index;
        const QStringList o = b.address.split(QLatin1Char('.'));
        for (int k = 0; k < 4; ++k)
            plant.Ofen_IP(f, k) = static_cast<u8>(o[k].toInt());
        plant.Ofen_Aktiv[f] = -1;
        plant.Ofen_UDP[f] = b.protocol == sim::Protocol::MemoryLink ? -1 : 0;
        plant.Ofen_Typ[f + 1] = b.typeWord();
        plant.Ofen_Name[f] = b.name;
        plant.Ofen_Serie[f] = b.serial;
        plant.Ofen_Version[f] = b.version;
        plant.Ofen_Wert216[f] = b.values216[0];
        plant.Ofen_Wert217[f] = b.values216[1];
        plant.Ofen_Wert218[f] = b.values216[2];
        for (int p = 0; p < KENNUNG_PAARE && b.headed; ++p) {
            plant.Ofen_Kennung_A(f + 1, p) = plc(f).word(b.base + 2 * p);
            plant.Ofen_Kennung_B(f + 1, p) = plc(f).word(b.base + 2 * p + 1);
        }
    }
}

void PlantFixture::setUpChannels()
{
    for (int f = 0; f < OFEN_MAX; ++f)
        plant.Meld_Seite[f] = -1;
    for (int k = 0; k < KANAL_MAX; ++k)
        plant.IP_Adr[k] = -1;
    plant.Next_Ofen = -1;
    Winsock1.clear();
    Winsock1_Qt();
    connectReceivers();
    plant.Modbus_Port = beschreibung.modbusPort;
    CycleClock &uhr = cycleClock();
    uhr.Sekunden = [this] { return uhrSekunden; };
    uhr.Nachgeben = [this] {
        QEventLoop schleife;
        QTimer::singleShot(1, &schleife, &QEventLoop::quit);
        schleife.exec();
        uhrSekunden += 0.1;
    };
    uhr.Zufall = [] { return 0.0; };
    plant.Sprachtext(0, 0) = QStringLiteral("Ofen");
    plant.Sprachtext(0, 7) = QStringLiteral("Connect");
    plant.Sprachtext(0, 8) = QStringLiteral("Offline");
    plant.Sprachtext(0, 9) = QStringLiteral("Online");
    for (int f = 0; f < OFEN_MAX; ++f)
        Kanal_Setup(f);
}

bool PlantFixture::runCycles(const std::function<bool()> &fertig, int grenze)
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

} // namespace kal::test
