// Heating element statistics: which samples count, the rounds into KM_EL and
// the ring of KM_RX with their exact bytes, the wrap from 2200 to 2. (The
// recorder feeding them is checked end to end against the simulator.)

#include "recording/element_stats.h"
#include "test_recorder_fixture.h"

using namespace kal;
using namespace kal::test;

namespace {

class ElementTest : public FileTest {
protected:
    int sekunde = 0;

    void SetUp() override
    {
        ASSERT_TRUE(dir.isValid());
        FreshProcess::SetUp();
        plant.Pfad[0] = dir.path();
        plant.Element_Anz[0] = 4;
    }
    /// One sample: the group outputs of a 154 group, then a 160 group whose
    /// 18 values are all `strom`.
    void offerSample(std::array<u8, 4> stufe, i16 strom = 9)
    {
        std::array<BatchRecord, 4> g{};
        g[0].Satz_Art = Satz_Charge;
        g[1].Monat = stufe[0], g[1].Tag = stufe[1], g[1].Stunde = stufe[2], g[1].Jahr = stufe[3];
        noteElementGroup(0, g, {});
        std::array<BatchRecord, 4> s{};
        s[0].Satz_Art = Satz_Strom;
        s[0].Wert.fill(strom);
        s[1].Wert.fill(strom);
        s[2].Wert.fill(strom);
        noteElementGroup(0, s, QTime(8, 0).addSecs(sekunde++).toString(QStringLiteral("'12.03.2024 'HH:mm:ss")));
    }
    void addSamples(int n, std::array<u8, 4> stufe = {40, 50, 60, 70})
    {
        for (int i = 0; i < n; ++i)
            offerSample(stufe);
    }
};

/// 93 bytes: count, time, figures 4.0 x4, 5.0 x4, 6.0 x4, 7.0 x4, 0, 0.
QByteArray elRecord(const char *anzahl, const char *zeit, bool gruppen = true)
{
    QByteArray b = hex(anzahl) + QByteArray(zeit);
    const char *f[] = {"00008040", "0000A040", "0000C040", "0000E040"};
    for (int g = 0; g < 4; ++g)
        for (int j = 0; j < 4; ++j)
            b += hex(gruppen ? f[g] : f[0]);
    return b + QByteArray(8, '\0');
}

TEST_F(ElementTest, RoundsOfTenGoToElThenEveryThirdIntoTheRing)
{
    addSamples(9);
    EXPECT_FALSE(QFile::exists(elFilePath(1)));
    addSamples(1);
    EXPECT_EQ(fileContents(elFilePath(1)), elRecord("0100", "12.03.2024 08:00:09"));
    addSamples(10);
    EXPECT_EQ(fileContents(elFilePath(1)), elRecord("0200", "12.03.2024 08:00:19"));
    EXPECT_FALSE(QFile::exists(rxFilePath(1)));
    addSamples(10);
    // The head names record 2; the round in KM_EL starts again at 0.
    const QByteArray rx = fileContents(rxFilePath(1));
    EXPECT_EQ(rx, hex("0200") + QByteArray(19, ' ') + QByteArray(72, '\0') + elRecord("0200", "12.03.2024 08:00:29"));
    EXPECT_EQ(fileContents(elFilePath(1)), elRecord("0000", "12.03.2024 08:00:29"));
    ASSERT_EQ(rxHistory(1).size(), 1u);
    EXPECT_EQ(rxHistory(1)[0].schluessel, "240312 08:00:29");
}

TEST_F(ElementTest, OnlySamplesWithEveryGroupAt10Count)
{
    addSamples(40, {9, 9, 9, 9});
    addSamples(40, {40, 50, 9, 70});
    EXPECT_FALSE(QFile::exists(elFilePath(1)));
    EXPECT_FALSE(QFile::exists(rxFilePath(1)));

    // Without four heating groups the first group's output stands for all:
    // the low third byte no longer matters.
    plant.Element_Anz[0] = 6;
    addSamples(10);
    EXPECT_EQ(fileContents(elFilePath(1)), elRecord("0100", "12.03.2024 08:01:29", false));
}

TEST_F(ElementTest, RingEndsAt2200ThenWrapsTo2AndKeepsTheHead)
{
    ElementRecord kopf;
    kopf.Anzahl = 2199;
    kopf.Zeit = QStringLiteral("Kopf");
    writeElement(rxFilePath(1), 1, kopf);
    writeElement(rxFilePath(1), 2, ElementRecord{});
    ElementRecord el;
    el.Anzahl = 2;
    writeElement(elFilePath(1), 1, el);

    addSamples(10);
    QByteArray rx = fileContents(rxFilePath(1));
    ASSERT_EQ(rx.size(), 2200 * 93);
    EXPECT_EQ(rx.left(6), hex("9808") + "Kopf");
    EXPECT_EQ(rx.mid(2199 * 93, 21), hex("0200") + "12.03.2024 08:00:09");
    addSamples(30);
    rx = fileContents(rxFilePath(1));
    ASSERT_EQ(rx.size(), 2200 * 93);
    EXPECT_EQ(rx.left(6), hex("0200") + "Kopf");
    EXPECT_EQ(rx.mid(93, 93), elRecord("0200", "12.03.2024 08:00:39"));
}

} // namespace
