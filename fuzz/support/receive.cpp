#include "support/receive.h"

#include "app/demo.h"
#include "config/paths.h"
#include "core/dates.h"
#include "core/plant_state.h"
#include "link/polling.h"
#include "link/socket.h"
#include "sim/plant_description.h"
#include "station/main_cycle.h"
#include "station/station_start.h"
#include "support/fuzz_support.h"

#include <QDir>
#include <QFile>

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <utility>

namespace kal::fuzz {

namespace {

/// Answers of one input at most: enough for a log block offered, taken and
/// acknowledged on several furnaces, few enough to keep a run short.
constexpr int ANTWORTEN_MAX = 400;

QByteArray konfiguration; ///< the configuration file of the plant
int gesendet = -1;        ///< channel of the last frame sent, -1 none since the last answer
QByteArray rahmen;        ///< that frame
double sekunden = 36000;  ///< the cycle's clock, seconds since midnight
int takte = 0;

/// A channel that is connected as soon as it is opened, keeps nothing of what
/// is sent but notes the channel, and hands over the bytes it is given.
class Zufuhr : public Socket {
public:
    explicit Zufuhr(int kanal) : kanal_(kanal) {}
    int State() const override { return state_; }
    void Connect() override { state_ = SCK_CONNECTED; }
    void Close() override
    {
        state_ = SCK_CLOSED;
        pending_.clear();
    }
    void SendData(const QByteArray &bytes) override
    {
        if (state_ != SCK_CONNECTED)
            return;
        gesendet = kanal_;
        rahmen = bytes;
    }
    QByteArray GetData() override { return std::exchange(pending_, QByteArray()); }
    QByteArray GetData(int maxLen) override
    {
        const QByteArray b = pending_.left(maxLen);
        pending_.remove(0, b.size());
        return b;
    }
    void arrive(const QByteArray &bytes)
    {
        pending_ += bytes;
        if (DataArrival)
            DataArrival(static_cast<int>(pending_.size()));
    }

private:
    int kanal_;
    int state_ = SCK_CLOSED;
    QByteArray pending_;
};

} // namespace

sim::PlantDescription plantOf(Kanal_Art art)
{
    sim::PlantDescription demo = sim::demoPlant();
    sim::PlantDescription d = demo;
    d.furnaces.clear();
    d.events.clear();
    for (const sim::FurnaceDescription &f : demo.furnaces) {
        const bool udp = f.protocol == sim::Protocol::MemoryLink;
        const bool server = f.panelCode != 0;
        if ((art == Kanal_Art::Panel && udp) || (art == Kanal_Art::Modbus && !udp && !server) ||
            (art == Kanal_Art::Server && server))
            d.furnaces.append(f);
    }
    for (const sim::ScenarioEvent &e : demo.events)
        if (d.furnace(e.furnace))
            d.events.append(e);
    if (art != Kanal_Art::Server)
        d.panelAddress.clear();
    return d;
}

void receiveSetUp(Kanal_Art art)
{
    freshRun();
    Pfade_Setzen();
    writeDemoConfiguration(plantOf(art));
    QFile f(dataFile(CONFIG_DATEI));
    if (!f.open(QIODevice::ReadOnly) || (konfiguration = f.readAll()).isEmpty()) {
        std::fprintf(stderr, "fuzz: the configuration of the plant was not written\n");
        std::abort();
    }
}

void stationStart()
{
    freshRun();
    // The data folder of a station in service: its configuration and the
    // folders it names.
    Pfade_Setzen();
    writeFile(dataFile(CONFIG_DATEI), konfiguration);
    for (int k = 1; k <= 3; ++k)
        QDir().mkpath(defaultFolder(k));
    gesendet = -1;
    sekunden = 36000;
    takte = 0;
    CycleClock &uhr = cycleClock();
    uhr.Sekunden = [] { return sekunden; };
    uhr.Nachgeben = [] { sekunden += 0.25; };
    uhr.Zufall = [] { return 0.5; };
    Winsock1.Fabrik = [](int kanal) { return std::make_unique<Zufuhr>(kanal); };
    Station_Start();
}

int tick(QByteArray *frame)
{
    gesendet = -1;
    ++takte;
    sekunden += 0.1;
    setNow(QDateTime(QDate(2026, 3, 15), QTime(10, 0, 0), Qt::UTC).addMSecs(100LL * takte));
    Timer1_Tick();
    if (frame)
        *frame = rahmen;
    return gesendet;
}

int deliver(int kanal, const QByteArray &bytes, QByteArray *frame)
{
    gesendet = -1;
    if (Socket *s = Winsock1.get(kanal))
        static_cast<Zufuhr *>(s)->arrive(bytes);
    if (frame)
        *frame = rahmen;
    return gesendet;
}

void runAnswers(Input &in)
{
    stationStart();
    for (int n = 0; n < ANTWORTEN_MAX && !in.empty(); ++n) {
        const uint8_t steuer = in.byte();
        const QByteArray bytes = in.take(in.word());
        if (!(steuer & 0x80))
            tick();
        if (steuer & 0x40)
            continue;
        deliver(gesendet >= 0 ? gesendet : (steuer & 0x0F) % KANAL_MAX, bytes);
    }
}

QByteArray answerRecord(bool tickFirst, bool answer, int kanal, const QByteArray &bytes)
{
    QByteArray r;
    r.append(static_cast<char>((tickFirst ? 0 : 0x80) | (answer ? 0 : 0x40) | (kanal & 0x0F)));
    r.append(static_cast<char>((bytes.size() >> 8) & 0xFF)).append(static_cast<char>(bytes.size() & 0xFF));
    return r + bytes;
}

} // namespace kal::fuzz
