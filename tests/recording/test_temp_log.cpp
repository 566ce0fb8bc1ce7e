// Temperature text log: when lines come (interval, fresh poll round, run and
// after-run), the exact bytes of a new log with its head, the difference
// rule, and a new batch recreating the file. The clock is pinned.

#include "config/paths.h"
#include "recording/temp_log.h"
#include "test_recorder_fixture.h"

using namespace kal;
using namespace kal::test;

namespace {

class TempLogTest : public FileTest {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(dir.isValid());
        FreshProcess::SetUp();
        setNow(QDateTime(QDate(2024, 3, 12), QTime(9, 0, 0), Qt::UTC));
        plant.Pfad[0] = dir.path();
        plant.Pfad[3] = dir.path();
        plant.Ofen_Online[0] = -1;
        plant.Ofen_TempLog[0] = -1;
        plant.TempLog_Takt[0] = 5;
        plant.TempLog_Schwelle[0] = 100;
        plant.Ofen_Stunden[0] = 77; // the PLC's batch number
        plant.Ofen_Name[0] = QStringLiteral("Ofen Eins");
        plant.Ofen_Serie[0] = QStringLiteral("2401-017-ABC");
        plant.Charge_Start[0] = QStringLiteral("12.03.2024 08:15:00");
        // The log has been idle before the program starts.
        tempLogTick(0);
        setWord(74, 1);
        setWord(43, 1000);
        setWord(44, 955);
        // Program: a ramp, a hold, a manual segment, then a kind outside 1..5.
        const int seg[][4] = {{0x0101, 800, 1500, 0x0250}, {2, 800, 20, 100}, {3, 500, 7, 0}, {0x0E, 1, 2, 3}};
        for (int i = 0; i < 4; ++i)
            for (int k = 0; k < 4; ++k)
                setWord(100 + 20 * k + i, seg[i][k]);
    }
    void TearDown() override
    {
        setNow(QDateTime());
        FileTest::TearDown();
    }
    void setWord(int a, int v) { plant.SPS_Wort(0, a) = i16(v); }
    /// One second with a fresh poll round behind it.
    void tick(int n = 1)
    {
        for (int i = 0; i < n; ++i) {
            plant.Block1_Zahl[0] = 2;
            tempLogTick(0);
        }
    }
    QByteArray log() const { return fileContents(tempLogPath(0)); }
    int lineCount() const { return int(log().count("\r\n")); }
};

const QByteArray KOPF = "240312_0815_X1.TXT\r\n"
                        "12.03.2024 09:00:00\r\n"
                        "Ofen Eins       \r\n"
                        "2401-017-ABC\r\n"
                        "\r\n"
                        "12.03.24 08:15\r\n"
                        "Charge77\r\n"
                        "\r\n"
                        "GR 01\t   800\t  1500\t    80\r\n"
                        "TI 02\t   800\t    20\t   100\r\n"
                        "MN 03\t   500\t      \t     0\r\n"
                        "04\r\n"
                        "\r\n"
                        "Timestamp \tSP[\xB0" "C]\tPV[\xB0" "C]\tSP-PV[K]\r\n";

TEST_F(TempLogTest, FirstTickWritesTheHeadThenEverySixthTickALineAndANewBatchANewFile)
{
    tick();
    EXPECT_EQ(log(), KOPF + "2403120900\t 100.0\t  95.5\t   4.5\r\n") << log().toStdString();
    EXPECT_EQ(tempLogPath(0), joinPath(dir.path(), "Temp-X1.TXT"));
    EXPECT_EQ(plant.TempLog_Charge[0], 77);
    EXPECT_TRUE(QFile::exists(pathOf("Kalmeron.DAT"))); // the batch number is saved
    const int kopf = lineCount();
    tick(5);
    EXPECT_EQ(lineCount(), kopf);
    tick();
    EXPECT_EQ(lineCount(), kopf + 1);
    tick(6);
    EXPECT_EQ(lineCount(), kopf + 2);
    // Without a fresh round the line of that interval is lost.
    tick(5);
    plant.Block1_Zahl[0] = 1;
    tempLogTick(0);
    tick(5);
    EXPECT_EQ(lineCount(), kopf + 2);
    // A set value at or below 20.0 °C shows no difference.
    setWord(43, 200);
    tick(6);
    EXPECT_TRUE(log().endsWith("\t  20.0\t  95.5\t   0.0\r\n"));
    setWord(43, 201);
    tick(6);
    EXPECT_TRUE(log().endsWith("\t  20.1\t  95.5\t  75.4\r\n"));
    // Without a batch number of the PLC nothing is written.
    plant.Ofen_Stunden[0] = 0;
    tick(6);
    EXPECT_EQ(lineCount(), kopf + 4);

    // A new batch recreates the file with its head at once.
    plant.Ofen_Stunden[0] = 78;
    setWord(43, 1000);
    setNow(QDateTime(QDate(2024, 3, 12), QTime(9, 7, 0), Qt::UTC));
    tick(6);
    QByteArray neu = KOPF;
    neu.replace("Charge77", "Charge78").replace("09:00:00", "09:07:00");
    EXPECT_EQ(log(), neu + "2403120907\t 100.0\t  95.5\t   4.5\r\n");
    EXPECT_EQ(plant.TempLog_Charge[0], 78);
}

TEST_F(TempLogTest, OfflineDuringProgramChangesNothingUntilTheBitsClear)
{
    tick();
    plant.Ofen_Online[0] = 0;
    tick(20);
    EXPECT_EQ(plant.TempLog_Laeuft[0], -1);
    // Program over, furnace still offline: ten seconds of after-run.
    setWord(74, 0);
    tick(10);
    EXPECT_EQ(plant.TempLog_Laeuft[0], -1);
    tick();
    EXPECT_EQ(both(plant.TempLog_Laeuft[0], plant.TempLog_Charge[0]), both(0, -1));

    // Online and hot after the end: the log goes on while above the threshold.
    plant.Ofen_Online[0] = -1;
    plant.TempLog_Schwelle[0] = 90;
    setWord(74, 2);
    tick();
    setWord(74, 0);
    tick(30);
    EXPECT_EQ(plant.TempLog_Laeuft[0], -1);
    setWord(44, 899); // 89.9 °C, below the threshold
    tick(11);
    EXPECT_EQ(plant.TempLog_Laeuft[0], 0);
}

} // namespace
