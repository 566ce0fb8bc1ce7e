// Controller parameters end to end: the station shows the PID values of a
// simulated furnace, a value typed and sent with Enter reaches the PLC, and
// the next poll brings it back into the form's values.

#include "operation/controller_parameters.h"
#include "plant_fixture.h"

#include <QLocale>

using namespace kal;
using namespace kal::test;

namespace {

class ControllerPlant : public PlantFixture {
protected:
    void SetUp() override
    {
        PlantFixture::SetUp();
        beschreibung.furnaces = {furnaceDescription(0, sim::Protocol::MemoryLink, false, 0),
                                 furnaceDescription(1, sim::Protocol::Modbus, false, 0)};
        ASSERT_NO_FATAL_FAILURE(startSimPlant());
        configureFurnaces();
        setUpChannels();
    }
    QString localDecimal(const char *text) const { return QString::fromLatin1(text).replace('.', QLocale().decimalPoint()); }
};

} // namespace

TEST_F(ControllerPlant, AValueSentWithEnterReachesThePlcAndComesBackWithTheNextPoll)
{
    for (int f : {0, 1}) {
        SCOPED_TRACE(f);
        ASSERT_TRUE(runCycles([&] { return plant.SPS_Wort(f, 47) == 250; }));
        setRegParFurnace(f + 1);
        const ControllerValues r = Reglerwerte_akt();
        EXPECT_EQ(r.Eingabe[0], localDecimal("2.50"));
        EXPECT_EQ(r.Ausgabe[1], localDecimal("120.0"));

        EXPECT_TRUE(inputKey(0, 13, QStringLiteral("1,5")));
        ASSERT_TRUE(runCycles([&] { return plant.SPS_Wort(f, 47) == 150; }));
        EXPECT_EQ(plc(f).lastWritten(47), 150);
        EXPECT_EQ(Reglerwerte_akt().Ausgabe[0], localDecimal("1.50"));
    }
}
