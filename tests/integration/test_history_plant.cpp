// The station's histories against the simulated plant: a headed Modbus
// furnace with element measurement runs a program with the temperature log
// on; its text log grows by the interval rule, its element groups fill
// KM_EL and KM_RX. A form-80 source dropped into the USB folder becomes a
// "US" batch file through the live page's timer while the furnace
// keeps being polled.

#include "config/channel_tables.h"
#include "core/dates.h"
#include "core/hooks.h"
#include "operation/live_page.h"
#include "plant_fixture.h"
#include "recording/batch_file.h"
#include "recording/element_file.h"
#include "recording/recorder.h"
#include "recording/temp_log.h"
#include "recording/usb_import.h"
#include "sim/log_blocks.h"
#include "station/main_cycle.h"
#include "support/files.h"
#include "support/usb_quelle.h"

#include <QCoreApplication>
#include <QDir>

using namespace kal;
using namespace kal::test;
using kal::sim::Protocol;

namespace {

constexpr int OFEN = 0;
constexpr uint32_t CHARGE_SPS = 4711; ///< the PLC's running batch number (words 7/8)

class HistoryPlant : public PlantFixture {
protected:
    int takte = 0;
    QVector<int> logZeilen; ///< lines of the temperature log after each second

    void SetUp() override
    {
        PlantFixture::SetUp();
        sim::FurnaceDescription d = furnaceDescription(OFEN, Protocol::Modbus, true, 500);
        d.trackCode = 416;    // four heating groups, sixteen elements
        d.sampleSeconds = 2;
        d.elementEvery = 1;   // an element group with every sample
        d.hours = CHARGE_SPS;
        d.autoStart = true;
        d.program.name = QStringLiteral("Aufheizen");
        d.program.segments = {{1, 900, 30000, 100}, {2, 900, 10, 100}};
        beschreibung.furnaces = {d};
        ASSERT_NO_FATAL_FAILURE(startSimPlant());

        dataFolders();
        plant.Charge_Ordner[0] = daten.filePath("LogBuch/2026");
        QDir().mkpath(plant.Charge_Ordner[0]);
        configureFurnaces();
        plant.Ofen_Charge[OFEN] = -1;
        plant.Ofen_TempLog[OFEN] = -1;
        plant.TempLog_Takt[OFEN] = 5;
        setUpChannels();
        Spuren_Setzen(OFEN + 1);
        hooks.Charge_Schreiben = Charge_Schreiben;
    }

    /// The station's three timers as the main window and the live page run
    /// them: the main cycle and the page every 100 ms, Timer2 every second.
    bool runStation(const std::function<bool()> &fertig, int grenze)
    {
        for (int i = 0; i < grenze; ++i) {
            if (fertig())
                return true;
            Timer1_Tick();
            pageTick();
            if (++takte % 10 == 0) {
                Timer2_Tick();
                logZeilen << int(fileBytes(tempLogPath(OFEN)).count("\r\n"));
            }
            for (int k = 0; k < 3; ++k)
                QCoreApplication::processEvents();
            sim->advance(100);
        }
        return fertig();
    }
    static QByteArray fileBytes(const QString &p) { return readFile(p); }
};

TEST_F(HistoryPlant, TemperatureLogAndElementHistoryFillWhileTheProgramRuns)
{
    ASSERT_TRUE(runStation([] { return QFile::exists(rxFilePath(OFEN + 1)); }, 8000));
    EXPECT_TRUE(plant.LogList.isEmpty()) << plant.LogList.join('\n').toStdString();

    // The log: its head names the PLC's batch; after the first line, lines
    // come only at every sixth second (a second without a fresh poll round
    // loses its line, never moves the rhythm).
    const QList<QByteArray> zeilen = fileBytes(tempLogPath(OFEN)).split('\n');
    ASSERT_GT(zeilen.size(), 16);
    EXPECT_EQ(zeilen[0], dateValue(plant.Charge_Start[OFEN]).toString("yyMMdd_HHmm").toLatin1() + "_X1.TXT\r");
    EXPECT_EQ(zeilen[6], "Charge4711\r");
    EXPECT_EQ(zeilen[9], "TI 02\t   900\t    10\t   100\r");
    int letzte = -1, neue = 0;
    for (int s = 1; s < logZeilen.size(); ++s)
        if (logZeilen[s] != logZeilen[s - 1]) {
            if (letzte >= 0) {
                EXPECT_EQ((s - letzte) % 6, 0) << "second " << s;
            }
            letzte = s;
            ++neue;
        }
    EXPECT_GE(neue, 3);

    // Thirty good samples: one history record, the round starts again.
    EXPECT_EQ(readElement(rxFilePath(OFEN + 1), 1).Anzahl, 2);
    EXPECT_GT(readElement(rxFilePath(OFEN + 1), 2).RX[0], 0.0f);
    EXPECT_EQ(readElement(elFilePath(OFEN + 1), 1).Anzahl, 0);
}

TEST_F(HistoryPlant, UsbSourcesBecomeBatchFilesWhileThePlantIsPolled)
{
    UsbSourceBuilder q80(80);
    for (int i = 0; i < 300; ++i) {
        Words &w = q80.addRecord(154, 12, 3, 2024, 8 + i / 60, i % 60, 0, {int16_t(1000 + i), 990, 50, 21, 0});
        w[31] = 0x3232;
    }
    ASSERT_TRUE(q80.writeTo(QDir(plant.Pfad[2]).filePath("P1.DAT")));

    ASSERT_TRUE(runStation([] { return plant.Ofen_Online[OFEN] != 0; }, 200));
    plant.USB_Menue = -1;
    pageTick();
    USB_Button();
    int offline = 0, angeboten = 0;
    ASSERT_TRUE(runStation(
        [&] {
            offline += plant.Ofen_Online[OFEN] == 0;
            // A block the PLC offers in the middle of the import is taken.
            if (USB.USB_Satz > 100 && angeboten++ == 0)
                plc(OFEN).queueOperatorText(QStringLiteral("mitten im Import"));
            return QDir(plant.Pfad[2]).isEmpty();
        },
        3000));
    EXPECT_EQ(offline, 0);
    const auto textGenommen = [&] {
        for (const auto &b : plc(OFEN).log().taken())
            if (b.value(0) == 9001)
                return true;
        return false;
    };
    EXPECT_TRUE(runStation(textGenommen, 300));

    BatchFile f80;
    ASSERT_TRUE(f80.openRead(QDir(plant.Charge_Ordner[0]).filePath("US2311042KLM00021120324.OVD")));
    EXPECT_EQ(f80.count(), 39 + 4 * 300);
}

} // namespace
