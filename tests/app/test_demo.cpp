// The demo plant end to end: the station and the simulator in one process on
// loopback, as `kalmeron --demo` runs them (the live page with its curve,
// element history, USB sources and element currents, the message list), and
// the real executable ended by SIGTERM. The waits are bounded loops of the event loop; nothing is timed.

#include "core/word_map.h"
#include "curves/live_curve.h"
#include "demo_station.h"
#include "operation/live_page.h"
#include "operation/message_store.h"
#include "operation/messages_view_model.h"
#include "recording/element_file.h"
#include "sim/plant.h"
#include "support/usb_quelle.h"
#include "views/KM_Alarme.h"
#include "views/curve_widget.h"

#include <QAction>
#include <QKeyEvent>
#include <QListWidget>
#include <QProcess>
#include <QPushButton>
#include <QTest>
#include <csignal>

using namespace kal;
using namespace kal::test;

TEST_F(DemoStation, EveryFurnaceComesOnlineAndTheLiveCurveGrowsOnItsPage)
{
    plant.Live_Raster = 1; // a sample a second, so the curve grows while the test looks
    const bool ok = waitUntil([&] { return allOnline(); }, 60000);
    // Then until block 0 of the first furnace came in (its time is shown).
    waitUntil([] { return !plant.Block0_Zeit[0].isEmpty(); }, 30000);
    waitUntil([] { return false; }, 1500);
    saveSnapshot(*w, QStringLiteral("main_de.png"));
    EXPECT_TRUE(ok) << qPrintable(w->panelText(1) + "|" + w->panelText(2) + "|" + w->panelText(3));
    for (int p = OEFEN + 1; p <= 8; ++p)
        EXPECT_TRUE(w->panelText(p).startsWith(plant.Sprachtext(plant.Sprache, 8))) << p;
    EXPECT_TRUE(dialogs.shown.empty()) << qPrintable(dialogs.shown.front().text);

    // The live curve of the plain furnace 1: read between two samples, the
    // newest stands one point left of the end.
    KM_Menue &seite = *w->menuePage();
    QTest::keyClick(&seite, Qt::Key_1);
    ASSERT_EQ(plant.Seite_Ofen, 1);
    waitUntil([] { return false; }, 25000);
    const PlotPage s = livePage(0);
    EXPECT_GT(s.Punkt_Ist[1][358], 0);
    EXPECT_EQ(s.Punkt_Ist[1][0], 0) << "the ring is not full yet";
    EXPECT_TRUE(seite.livePlot()->isVisible());
    EXPECT_FALSE(seite.stromTaste()->isVisible()) << "a furnace without element currents";
    saveSnapshot(*w, QStringLiteral("live_de.png"));

    // The same page in English.
    setLanguage(1);
    waitUntil([] { return false; }, 600);
    saveSnapshot(*w, QStringLiteral("main_en.png"));
}

TEST_F(DemoStation, ElementHistoryCurrentsAndUsbSourcesOnTheLivePage)
{
    constexpr int VAKUUM = 3; // the furnace with element measurement
    for (int nr = 1; nr <= 9; ++nr) {
        ElementRecord s;
        s.Anzahl = nr == 1 ? i16(9) : i16(2);
        if (nr > 1)
            s.Zeit = QStringLiteral("%1.03.2024 %2:15:00").arg(10 + nr / 3).arg(8 + nr, 2, 10, QLatin1Char('0'));
        for (int e = 0; e < 12; ++e)
            s.RX[e] = 1.9f + 0.01f * float(e) + 0.02f * float(nr);
        writeElement(rxFilePath(VAKUUM), nr, s);
    }
    kal::test::UsbSourceBuilder q(20);
    q.addRecord(201, 12, 3, 2024, 8, 0, 0);
    for (const char *name : {"OF.DAT", "PANEL3.usb", "X7"})
        q.writeTo(QDir(plant.Pfad[2]).filePath(QString::fromLatin1(name)));

    ASSERT_TRUE(waitUntil([&] { return online(VAKUUM) && plant.Element_Spuren[VAKUUM - 1] == 12; }, 60000));
    KM_Menue &seite = *w->menuePage();
    QKeyEvent taste(QEvent::KeyPress, Qt::Key_0 + VAKUUM, Qt::NoModifier);
    QCoreApplication::sendEvent(&seite, &taste);
    ASSERT_EQ(seite.RX_List()->count(), 8);
    EXPECT_TRUE(seite.RX_List()->item(0)->text().startsWith("10.03.2024 10:15:00"));
    w->mnuImport()->setChecked(true);
    waitUntil([&] { return seite.Quell_Liste()->count() == 3; }, 3000);
    EXPECT_EQ(seite.Quell_Liste()->item(0)->text(), "OF.DAT");
    waitUntil([] { return false; }, 600);
    saveSnapshot(*w, QStringLiteral("elements_usb_de.png"));

    // The element currents of this furnace, live, and back to the page.
    ASSERT_TRUE(seite.stromTaste()->isVisible());
    QTest::mouseClick(seite.stromTaste(), Qt::LeftButton);
    KM_SNTStrom *strom = w->elementView();
    ASSERT_NE(strom, nullptr);
    EXPECT_TRUE(strom->windowTitle().startsWith(QStringLiteral("Strom Heizelemente, Vakuumofen 3")));
    waitUntil([] { return false; }, 1500);
    EXPECT_GT(plant.SPS_Wort(VAKUUM - 1, word::ELEMENT_SCALE), 0);
    saveSnapshot(*w, QStringLiteral("sntstrom_de.png"));
    setLanguage(1);
    waitUntil([] { return false; }, 600);
    saveSnapshot(*w, QStringLiteral("sntstrom_en.png"));
    QTest::mouseClick(strom->zurueckTaste(), Qt::LeftButton);
    EXPECT_FALSE(strom->parentWidget()->isVisible());
    saveSnapshot(*w, QStringLiteral("elements_usb_en.png"));

    seite.RX_Export()->click();
    EXPECT_TRUE(QFile::exists(QDir(plant.Pfad[3]).filePath("RX_" + plant.Ofen_Serie[VAKUUM - 1] + ".CSV")));
    // The switch imports the three sources; the list empties.
    seite.usbButton()->click();
    EXPECT_TRUE(waitUntil([&] { return seite.Quell_Liste()->count() == 0; }, 20000));
    EXPECT_TRUE(dialogs.shown.empty()) << qPrintable(dialogs.shown.front().text);
}

TEST_F(DemoStation, DoorMessageComesIsAcknowledgedAndGoes)
{
    ASSERT_TRUE(waitUntil([&] { return online(1); }, 60000));
    sim::SimFurnace *ofen = demo.plant()->furnace(0);
    ASSERT_NE(ofen, nullptr);
    const int TUER = 5; // "Tür geöffnet" in the default texts
    ofen->raiseMessage(TUER);
    ofen->clearMessage(TUER, true); // the cause is gone; it goes once acknowledged

    // The come is stored.
    ASSERT_TRUE(waitUntil([&] { return readMessage(messageRecordNumber(0, TUER)).Aktiv == 1; }, 30000));

    // The list of furnace 1 shows it, with the message number and text.
    furnaceRowClicked(Seite, 0);
    w->showAlarms(false);
    ASSERT_NE(w->alarme(), nullptr);
    tickBox(0, 1);
    w->alarme()->setCaptions();
    QListWidget *liste = w->alarme()->List1();
    ASSERT_EQ(liste->count(), 1);
    const QString zeile = liste->item(0)->text();
    EXPECT_TRUE(zeile.contains(QStringLiteral("    1: "))) << qPrintable(zeile);
    EXPECT_TRUE(zeile.contains(QStringLiteral("  05  Tür geöffnet"))) << qPrintable(zeile);
    saveSnapshot(*w, QStringLiteral("messages_normal.png"));

    // "Quitt " sends 4 to word 30; the PLC clears the bit and the go is stored.
    QPushButton *quitt = w->alarme()->Taste(6);
    ASSERT_TRUE(quitt->text().contains(QStringLiteral("Quitt"))) << qPrintable(quitt->text());
    quitt->click();
    ASSERT_TRUE(waitUntil([&] { return ofen->lastWritten(30) == int16_t(4); }, 10000));
    ASSERT_TRUE(waitUntil([&] { return readMessage(messageRecordNumber(0, TUER)).Aktiv == 0; }, 30000));
    waitUntil([&] { return liste->count() == 0; }, 5000);
    EXPECT_EQ(liste->count(), 0);
    w->alarme()->close();

    // The configuration mode of the same form.
    w->showAlarms(true);
    tickBox(0, 1);
    tickBox(1, 1);
    w->alarme()->setCaptions();
    EXPECT_GT(w->alarme()->List1()->count(), 0);
    saveSnapshot(*w, QStringLiteral("messages_config.png"));
}

TEST(Demo, ExecutableEndsCleanlyOnSigterm)
{
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    QProcess p;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    p.setProcessEnvironment(env);
    p.setProcessChannelMode(QProcess::MergedChannels);
    p.start(QStringLiteral(KALMERON_EXE),
            {QStringLiteral("--demo"), QStringLiteral("--data"), dir.path(), QStringLiteral("--modbus-port"),
             QString::number(freeTcpPort())});
    ASSERT_TRUE(p.waitForStarted(10000));
    QByteArray out;
    waitUntil(
        [&] {
            out += p.readAll();
            return out.contains("panel server") || p.state() == QProcess::NotRunning;
        },
        30000);
    ASSERT_EQ(p.state(), QProcess::Running) << out.constData();
    waitUntil([] { return false; }, 2000); // let it poll a while
    ::kill(static_cast<pid_t>(p.processId()), SIGTERM);
    ASSERT_TRUE(p.waitForFinished(15000));
    EXPECT_EQ(p.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(p.exitCode(), 0) << out.constData();
    // It wrote the demo configuration and kept its message store.
    EXPECT_TRUE(QFile::exists(dir.filePath(QStringLiteral("Kalmeron.DAT"))));
    EXPECT_TRUE(QFile::exists(dir.filePath(QStringLiteral("Kalmeron.mld"))));
}
