// The demo plant that `kalmeron --demo` and `kalmeron-sim` run when no plant
// description is given: five furnaces of every kind the station knows, with
// programs that restart by themselves and a few messages that come and go.

#include "sim/plant_description.h"

namespace kal::sim {

namespace {

FurnaceDescription furnace(int number, const char *name, const char *serial, Protocol protocol, bool headed, int base)
{
    FurnaceDescription f;
    f.index = number - 1;
    f.address = QStringLiteral("127.0.0.%1").arg(10 + number);
    f.protocol = protocol;
    f.headed = headed;
    f.base = base;
    f.name = QString::fromUtf8(name);
    f.serial = QString::fromLatin1(serial);
    f.autoStart = true;
    f.pauseSeconds = 300;
    f.sampleSeconds = 10;
    f.trackNames = {QStringLiteral("Regler"), QStringLiteral("Charge"), QStringLiteral("Decke"),
                    QStringLiteral("Boden")};
    f.pageNames = {f.name, QStringLiteral("Kalmeron Demo")};
    f.smsMessages = {2};
    return f;
}

SegmentDescription seg(int befehl, int sollwert, int wert, int grenze = 100)
{
    return {befehl, sollwert, wert, grenze};
}

} // namespace

PlantDescription demoPlant()
{
    PlantDescription plant;
    plant.panelAddress = QStringLiteral("127.0.0.20");

    // A plain furnace on the memory link: announcements and single samples.
    FurnaceDescription f1 = furnace(1, "Kammerofen 1", "1203-017-KHP", Protocol::MemoryLink, false, 0);
    f1.plainType = 3;
    f1.program = {QStringLiteral("Anlassen 450"), {seg(1, 450, 9000), seg(2, 0, 2), seg(1, 150, 9000, 60)}};
    f1.hours = 18250;

    // A headed furnace on the memory link: compact blocks at 220, identity at 240.
    FurnaceDescription f2 = furnace(2, "Schutzgasofen 2", "1305-042-SGO", Protocol::MemoryLink, true, 240);
    f2.version = QStringLiteral("02");
    f2.program = {QStringLiteral("Nitrieren 600"),
                  {seg(1, 600, 9000), seg(2, 0, 1), seg(1, 500, 6000), seg(5, 0, 1, 2), seg(1, 200, 9000)}};
    f2.stopMessages = {3};
    f2.hours = 9120;

    // Headed Modbus furnaces: sample groups at 400, element currents, program texts.
    FurnaceDescription f3 = furnace(3, "Vakuumofen 3", "1410-003-VAC", Protocol::Modbus, true, 100);
    f3.maxTemp = 1300;
    f3.trackCode = 612;
    f3.elementValue = 12;
    f3.program = {QString::fromUtf8("Löten 850"), {seg(1, 850, 9000), seg(2, 0, 2), seg(3, 400, 0, 0)}};

    FurnaceDescription f4 = furnace(4, "Härteofen 4", "1512-108-HRT", Protocol::Modbus, true, 500);
    f4.clockOffsetSeconds = 150; // the station steps this clock back
    f4.version = QStringLiteral("1O"); // option bits 8..11: manual, cycle, four outputs, air feed and analog
    f4.program = {QString::fromUtf8("Härten 820"), {seg(1, 820, 9000), seg(2, 0, 3), seg(4, 300, 0)}};
    f4.places = {{QString::fromUtf8("Normalglühen"), {seg(1, 880, 6000), seg(2, 0, 5)}},
                 {QStringLiteral("Spannungsarm"), {seg(1, 600, 3000), seg(2, 0, 20), seg(1, 100, 3000)}}};

    // A Modbus furnace whose exchange words (300..499) come through the panel server.
    FurnaceDescription f5 = furnace(5, "Durchlaufofen 5", "1603-221-DLO", Protocol::Modbus, true, 500);
    f5.panelCode = 0x50; // window at 3000
    f5.program = {QStringLiteral("Durchlauf 700"), {seg(1, 700, 9000), seg(2, 0, 4), seg(1, 300, 9000)}};

    plant.furnaces = {f1, f2, f3, f4, f5};

    // The door of furnace 1 and the cooling water of furnace 3 now and then;
    // the operator acknowledges them at the station.
    plant.events = {
        {120 * 1000, 0, ScenarioEvent::Raise, 1},
        {180 * 1000, 0, ScenarioEvent::Clear, 1},
        {400 * 1000, 2, ScenarioEvent::Raise, 4},
        {460 * 1000, 2, ScenarioEvent::Clear, 4},
    };
    plant.eventPeriodMs = 900 * 1000;
    return plant;
}

} // namespace kal::sim
