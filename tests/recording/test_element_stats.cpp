// Heating element statistics: which samples count, the rounds into KM_EL and
// the ring of KM_RX with their exact bytes, the wrap from 2200 to 2. (The
// recorder feeding them is checked end to end against the simulator.)

#include "recording/element_stats.h"
#include "test_recorder_fixture.h"

using namespace kal;
using namespace kal::test;

namespace {

class ElementTest : public DateiTest {
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
    void probe(std::array<u8, 4> stufe, i16 strom = 9)
    {
        std::array<BatchRecord, 4> g{};
        g[0].Satz_Art = Satz_Charge;
        g[1].Monat = stufe[0], g[1].Tag = stufe[1], g[1].Stunde = stufe[2], g[1].Jahr = stufe[3];
        Element_Gruppe(0, g, {});
        std::array<BatchRecord, 4> s{};
        s[0].Satz_Art = Satz_Strom;
        s[0].Wert.fill(strom);
        s[1].Wert.fill(strom);
        s[2].Wert.fill(strom);
        Element_Gruppe(0, s, QTime(8, 0).addSecs(sekunde++).toString(QStringLiteral("'12.03.2024 'HH:mm:ss")));
    }
    void proben(int n, std::array<u8, 4> stufe = {40, 50, 60, 70})
    {
        for (int i = 0; i < n; ++i)
            probe(stufe);
    }
};

/// 93 bytes: count, time, figures 4.0 x4, 5.0 x4, 6.0 x4, 7.0 x4, 0, 0.
QByteArray elSatz(const char *anzahl, const char *zeit, bool gruppen = true)
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
    proben(9);
    EXPECT_FALSE(QFile::exists(KM_EL_Pfad(1)));
    proben(1);
    EXPECT_EQ(inhalt(KM_EL_Pfad(1)), elSatz("0100", "12.03.2024 08:00:09"));
    proben(10);
    EXPECT_EQ(inhalt(KM_EL_Pfad(1)), elSatz("0200", "12.03.2024 08:00:19"));
    EXPECT_FALSE(QFile::exists(KM_RX_Pfad(1)));
    proben(10);
    // The head names record 2; the round in KM_EL starts again at 0.
    const QByteArray rx = inhalt(KM_RX_Pfad(1));
    ASSERT_EQ(rx.size(), 2 * 93);
    EXPECT_EQ(rx.left(2), hex("0200"));
    EXPECT_EQ(rx.mid(2, 91), QByteArray(19, ' ') + QByteArray(72, '\0'));
    EXPECT_EQ(rx.mid(93), elSatz("0200", "12.03.2024 08:00:29"));
    EXPECT_EQ(inhalt(KM_EL_Pfad(1)), elSatz("0000", "12.03.2024 08:00:29"));
    ASSERT_EQ(RX_Liste(1).size(), 1u);
    EXPECT_EQ(RX_Liste(1)[0].schluessel, "240312 08:00:29");
}

TEST_F(ElementTest, OnlySamplesWithEveryGroupAt10Count)
{
    proben(40, {9, 9, 9, 9});
    proben(40, {40, 50, 9, 70});
    EXPECT_FALSE(QFile::exists(KM_EL_Pfad(1)));
    EXPECT_FALSE(QFile::exists(KM_RX_Pfad(1)));

    // Without four heating groups the first group's output stands for all:
    // the low third byte no longer matters.
    plant.Element_Anz[0] = 6;
    proben(10);
    EXPECT_EQ(inhalt(KM_EL_Pfad(1)), elSatz("0100", "12.03.2024 08:01:29", false));
}

TEST_F(ElementTest, RingWrapsFrom2200To2AndKeepsTheHead)
{
    ElementSatz kopf;
    kopf.Anzahl = 2200;
    kopf.Zeit = QStringLiteral("Kopf");
    Element_Schreiben(KM_RX_Pfad(1), 1, kopf);
    ElementSatz alt;
    alt.Zeit = QStringLiteral("01.01.2024 00:00:00");
    Element_Schreiben(KM_RX_Pfad(1), 2200, alt);
    ElementSatz el;
    el.Anzahl = 2;
    Element_Schreiben(KM_EL_Pfad(1), 1, el);

    proben(10);
    const QByteArray rx = inhalt(KM_RX_Pfad(1));
    ASSERT_EQ(rx.size(), 2200 * 93);
    EXPECT_EQ(rx.left(6), hex("0200") + "Kopf");
    EXPECT_EQ(rx.mid(93, 93), elSatz("0200", "12.03.2024 08:00:09").replace(21, 72, QByteArray(72, '\0')));
    EXPECT_EQ(rx.mid(2199 * 93, 21), hex("0000") + "01.01.2024 00:00:00");
}

} // namespace
