// Plant descriptions: the JSON form, what is refused, the panel windows, and
// the plants that ship: the example file and the demo plant.

#include "sim_test_support.h"

#include <QFile>
#include <gtest/gtest.h>

using namespace simtest;

namespace {

const char *kPlant = R"({
  "modbusPort": 1502, "panel": "127.0.0.40",
  "furnaces": [
    { "number": 2, "address": "127.0.0.41", "protocol": "udp", "type": 1, "sampleSeconds": 5,
      "program": { "name": "Anlassen", "segments": [[1, 550, 3000, 100], [2, 0, 5, 100]] } },
    { "number": 8, "address": "127.0.0.48", "protocol": "modbus", "layout": "headed", "base": 100,
      "large": true, "panelCode": "0x53", "identity": [1, 2, 3], "sms": [1, 48], "clockOffset": -90,
      "places": [{ "name": "P1", "segments": [[4, 300, 0, 100]] }] }
  ],
  "events": [ { "at": 30, "furnace": 2, "do": "raise", "message": 1 },
              { "at": 60, "furnace": "panel", "do": "drop" } ],
  "eventPeriod": 120
})";

TEST(PlantDescriptionTest, ReadsAPlant)
{
    QString error;
    const auto p = parsePlantDescription(kPlant, &error);
    ASSERT_TRUE(p) << qPrintable(error);
    EXPECT_EQ((std::vector<int>{p->modbusPort, p->panelOctet(), int(p->furnaces.size())}),
              (std::vector<int>{1502, 40, 2}));
    const FurnaceDescription &a = p->furnaces[0];
    ASSERT_EQ(a.program.segments.size(), 2);
    EXPECT_EQ((std::vector<int>{a.index, a.typeWord(), a.sampleSeconds, a.program.segments[1].wert}),
              (std::vector<int>{1, 1, 5, 5}));
    const FurnaceDescription &b = p->furnaces[1];
    EXPECT_EQ(b.protocol, Protocol::Modbus);
    EXPECT_EQ((std::vector<int>{uint16_t(b.typeWord()), b.panelOffset(), b.clockOffsetSeconds}),
              (std::vector<int>{0x9064, 6000, -90}));
    EXPECT_EQ(b.smsMessages, (QVector<int>{1, 48}));
    EXPECT_EQ(b.identityWords().mid(0, 3), (QVector<int16_t>{0, 0, 0}))
        << "the block at 100 holds the (empty) active program";
    ASSERT_EQ(p->events.size(), 2);
    EXPECT_EQ((std::vector<int>{int(p->events[0].atMs), p->events[0].furnace, p->events[1].furnace,
                                int(p->eventPeriodMs)}),
              (std::vector<int>{30000, 1, -1, 120000}));
    EXPECT_EQ(p->events[1].action, ScenarioEvent::DropLink);

    // 0x48 and 0x50..0x56 name a fixed window, 0x49 the window of the
    // furnace's index; the codes around them name none.
    FurnaceDescription f;
    f.index = 5;
    for (auto [code, offset] : {std::pair{0x48, 3000}, {0x49, 8000}, {0x50, 3000}, {0x56, 9000}, {0x47, 0}, {0x57, 0}}) {
        f.panelCode = code;
        EXPECT_EQ(f.panelOffset(), offset) << std::hex << code;
    }
}

TEST(PlantDescriptionTest, RefusesWhatWouldNotWork)
{
    const struct {
        const char *json;
        const char *says;
    } bad[] = {
        {R"({"furnaces": []})", "no furnaces"},
        {R"({"furnaces": [{"number": 1, "address": "127.0.0.11", "colour": 3}]})", "unknown key \"colour\""},
        {R"({"furnaces": [{"number": 9, "address": "127.0.0.11"}]})", "furnaces[0].number"},
        {R"({"furnaces": [{"number": 1, "address": "127.0.0.11", "protocol": "tcp"}]})", "\"udp\" or \"modbus\""},
        {R"({"furnaces": [{"number": 1, "address": "127.0.0.11"}, {"number": 1, "address": "127.0.0.12"}]})",
         "furnace 1 is described twice"},
        {R"({"furnaces": [{"number": 1, "address": "127.0.0.11"}, {"number": 2, "address": "127.0.0.11"}]})",
         "address 127.0.0.11 is taken"},
        {R"({"furnaces": [{"number": 1, "address": "127.0.0.11", "panelCode": 80}]})", "there is none"},
        {R"({"panel": "127.0.0.20", "furnaces": [{"number": 1, "address": "127.0.0.11", "panelCode": 72},
             {"number": 2, "address": "127.0.0.12", "panelCode": 80}]})", "window 3000 is taken"},
        {R"({"panel": "127.0.0.20", "furnaces": [{"number": 1, "address": "127.0.0.11", "panelCode": 86}]})",
         "beyond"},
        {R"({"furnaces": [{"number": 1, "address": "127.0.0.11", "large": true}]})", "large layout"},
        {R"({"furnaces": [{"number": 1, "address": "127.0.0.11",
             "program": {"segments": [[1, 500, 3000]]}}]})", "[command, target, value, limit]"},
        {R"({"furnaces": [{"number": 1, "address": "127.0.0.11"}],
             "events": [{"at": 1, "furnace": 2, "do": "raise", "message": 1}]})", "furnace 2 is not described"},
        {R"({"furnaces": [{"number": 1, "address": "127.0.0.11"}],
             "events": [{"at": 1, "furnace": 1, "do": "raise"}]})", "\"message\" 1..48"},
        {R"({"furnaces": [{"number": 1, "address": "127.0.0.11"})", "JSON"},
    };
    for (const auto &b : bad) {
        QString error;
        EXPECT_FALSE(parsePlantDescription(b.json, &error)) << b.json;
        EXPECT_TRUE(error.contains(QString::fromUtf8(b.says))) << qPrintable(error);
    }
}

TEST(ShippedPlantTest, ExampleAndDemoAreValidAndTheDemoRuns)
{
    QFile file(QStringLiteral(KALMERON_TEST_DIR "/../../src/sim/example_plant.json"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    QString error;
    const auto example = parsePlantDescription(file.readAll(), &error);
    ASSERT_TRUE(example) << qPrintable(error);
    EXPECT_EQ(example->furnaces[1].name, QString::fromUtf8("Härteofen 2"));

    // Moved to other addresses and free ports, the demo runs and offers log blocks.
    PlantDescription d = demoPlant();
    for (auto &f : d.furnaces)
        f.address.replace(QStringLiteral("127.0.0."), QStringLiteral("127.0.1."));
    d.panelAddress = QStringLiteral("127.0.1.20");
    auto plant = startPlant(d);
    EXPECT_EQ(plant->summary().size(), 6) << "five furnaces and the panel server";
    plant->advance(200 * 1000);
    for (const auto &f : plant->furnaces())
        EXPECT_TRUE(f->runner().active() && f->log().offering()) << f->index();
    EXPECT_EQ(plant->furnace(0)->log().offered()[0], 201) << "the first batch's announcement";
}

} // namespace
