// The curve window, the batch browser and the log data page as a user meets
// them: batches in a year folder, chosen in the browser, paged and zoomed
// with the buttons, read with the mouse; screenshots in German and English
// in build/shots.

#include "config/languages.h"
#include "curves/curve_fixture.h"
#include "curves/curve_store.h"
#include "curves/time_axis.h"
#include "demo_station.h"
#include "views/KM_MDI.h"

#include <QCheckBox>
#include <QDir>
#include <QLineEdit>
#include <QListWidget>
#include <QMdiSubWindow>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>

using namespace kal;
using namespace kal::test;

namespace {

void snapshot(QWidget &w, const QString &name)
{
    QDir().mkpath(QStringLiteral(KALMERON_SHOTS));
    w.grab().save(QStringLiteral(KALMERON_SHOTS "/") + name);
}

class CurveForm : public CurveTest {
protected:
    std::unique_ptr<KM_MDI> w;
    QString jahr;

    void SetUp() override
    {
        CurveTest::SetUp();
        plant.Pfad[0] = dir.path();
        plant.Pfad[3] = dir.filePath(QStringLiteral("CSV"));
        jahr = dir.filePath(QStringLiteral("2024"));
        QDir().mkpath(jahr);
        plant.Charge_Ordner[0] = jahr;
        plant.Ofen_Serie[0] = QStringLiteral("2401-100-TST");
        plant.Ofen_Bezeichnung[0] = QStringLiteral("Haertofen 1");
        plant.Ofen_Server[0] = TRUE16;
        plant.Ofen_Serie[2] = QStringLiteral("2402-300-TST");
        plant.Ofen_Bezeichnung[2] = QStringLiteral("Anlassofen 3");
        plant.Ofen_Server[2] = TRUE16;
        plant.Kurve_Option = TRUE16;
        plant.Datum_Von = QStringLiteral("01.01.2024");
        w = testFenster(dlg);
    }
    void TearDown() override
    {
        w.reset();
        CurveTest::TearDown();
    }

    /// A heat treatment of eight hours: ramp to 850 °C, hold, cool; zone and
    /// pressure follow, a door message comes and goes.
    QString heatTreatment(const QString &name)
    {
        std::vector<SampleGroup> p;
        for (int m = 0; m < 480; m += 2) {
            SampleGroup x;
            const int soll = m < 150 ? 200 + m * 4 : (m < 330 ? 850 : std::max(200, 850 - (m - 330) * 4));
            x.soll = i16(soll);
            x.ist = i16(soll - 12 + (m % 7));
            x.zone = i16(x.ist - 25);
            x.out = i16(m < 150 ? 85 : (m < 330 ? 40 : 5));
            x.druck = i16(12 + (m / 40) % 4);
            x.seg = m < 150 ? 1 : (m < 330 ? 2 : 3);
            x.art = m < 150 ? 1 : (m < 330 ? 2 : 1);
            x.ziel = x.seg == 1 ? 8500 : (x.seg == 2 ? 8500 : 2000);
            x.rest = x.seg == 1 ? 2600 : 30;
            x.meld = (m > 200 && m < 220) ? 0x0010 : 0;
            p.push_back(x);
        }
        const QString f = QDir(jahr).filePath(name);
        BatchFile b;
        b.open(f);
        writeFurnaceHead(b, t0);
        int nr = SATZ_DATEN_START;
        for (size_t i = 0; i < p.size(); ++i) {
            const auto g = groupRecords(groupBlock(p[i]), recordTime(t0.addSecs(120 * qint64(i))));
            b.write(nr, g.data(), 4);
            nr += 4;
        }
        std::array<BatchRecord, TEXT_SAETZE> text =
            batchDataRecords(QStringLiteral("Auftrag 4711 Zahnraeder 16MnCr5    Kunde Muster GmbH"));
        b.write(nr, text.data(), TEXT_SAETZE);
        return f;
    }

    QString plainBatch(const QString &name)
    {
        const QString f = QDir(jahr).filePath(name);
        std::vector<BatchRecord> s;
        for (int m = 0; m < 300; ++m) {
            const i16 soll = i16(m < 100 ? 100 + m * 5 : 600);
            s.push_back(singleSample(t0.addSecs(60 * m), {soll, i16(soll - 8), i16(m < 100 ? 70 : 30), 0, 0, i16(m < 290 ? 1 : 0), 0}, 110));
        }
        appendRecords(f, s);
        return f;
    }
};

} // namespace

TEST_F(CurveForm, BrowserListsFiltersAndOpensTheBatch)
{
    heatTreatment(QStringLiteral("D2401100TST000012050324.OVD"));
    plainBatch(QStringLiteral("D2402300TST000003060324.OVD"));
    plainBatch(QStringLiteral("D2402300TST00003060324.OVD")); // 26 characters: no batch
    w->showBatchBrowser();
    KM_TempDatei *b = w->tempDatei();
    ASSERT_NE(b, nullptr);
    ASSERT_EQ(b->List1()->count(), 2);
    EXPECT_TRUE(b->List1()->item(0)->text().startsWith(QStringLiteral("24/03/06 3:Anlassofen 3     Charge 000003")));
    EXPECT_TRUE(b->List1()->item(1)->text().endsWith(QStringLiteral("D2401100TST000012050324.OVD      22kB")))
        << qPrintable(b->List1()->item(1)->text());
    EXPECT_FALSE(b->OKButton()->isEnabled());

    // Furnace 3 alone; then by number; then back.
    b->OfenCheck(2)->click();
    EXPECT_EQ(plant.Ofen_Filter, 4);
    EXPECT_EQ(b->List1()->count(), 1);
    b->OfenCheck(2)->click();
    b->Sortierung(1)->click();
    EXPECT_TRUE(b->List1()->item(0)->text().startsWith(QStringLiteral("Charge 000012 1:Haertofen 1")));

    b->List1()->setCurrentRow(0);
    EXPECT_TRUE(b->OKButton()->isEnabled());
    EXPECT_EQ(plant.Wahl_Charge, 12);
    EXPECT_EQ(plant.Wahl_Serie, QStringLiteral("2401-100-TST"));
    EXPECT_TRUE(plant.CSV_Info_Datei.endsWith(QStringLiteral("I2401100TST000012050324.CSV")));
    EXPECT_TRUE(b->Text1().startsWith(QStringLiteral("Auftrag 4711")));
    w->tempDatei()->parentWidget()->resize(1300, 560);
    snapshot(*b->parentWidget(), QStringLiteral("browser_de.png"));

    QTest::mouseClick(b->OKButton(), Qt::LeftButton);
    ASSERT_NE(w->kurve(), nullptr);
    EXPECT_EQ(plant.Kurve_Datei, QDir(jahr).filePath(QStringLiteral("D2401100TST000012050324.OVD")));
    EXPECT_EQ(w->kurve()->labelText(QStringLiteral("name")), QStringLiteral("Ofen Test"));
    EXPECT_TRUE(w->kurve()->labelText(QStringLiteral("info")).contains(QStringLiteral("S01 B1 Rampe")));
    EXPECT_EQ(plant.Aktive_Seite, 2);
}

TEST_F(CurveForm, CurvePagesZoomsAndReadsInBothLanguages)
{
    const QString f = heatTreatment(QStringLiteral("D2401100TST000012050324.OVD"));
    for (int sprache : {0, 1}) {
        plant.Sprache = u8(sprache);
        Sprachumschalt();
        w->showCurve(f);
        KM_Kurve *k = w->kurve();
        ASSERT_NE(k, nullptr);
        QCoreApplication::processEvents();
        const QString s = sprache == 0 ? QStringLiteral("de") : QStringLiteral("en");
        snapshot(*k, QStringLiteral("curve_%1.png").arg(s));

        // Zoom in to raster 20 and page forward with F2.
        EXPECT_FALSE(k->keyButton(TASTE_ZOOM_AUS)->isEnabled());
        while (k->keyButton(TASTE_ZOOM_EIN)->isEnabled())
            QTest::mouseClick(k->keyButton(TASTE_ZOOM_EIN), Qt::LeftButton);
        EXPECT_EQ(Kurve.Zeit_Raster, 20);
        QTest::keyClick(k, Qt::Key_F2);
        EXPECT_EQ(Kurve.Zeit_Marke[0], t0.addSecs(9000));
        // The left button reads the curves under the mouse.
        const QRect plot = k->plotWidget()->plotRect();
        QTest::mouseClick(k->plotWidget(), Qt::LeftButton, {}, plot.topLeft() + QPoint(plot.width() / 2, plot.height() / 2));
        EXPECT_TRUE(k->plotWidget()->parameter().maus.linie);
        EXPECT_TRUE(k->plotWidget()->parameter().maus.text[1].startsWith(QStringLiteral("11:"))); // the middle of 10:30 .. 12:30
        snapshot(*k, QStringLiteral("curve_zoom_%1.png").arg(s));
    }
}

TEST_F(CurveForm, PlainBatchAndLogData)
{
    const QString f = plainBatch(QStringLiteral("D2402300TST000003060324.OVD"));
    w->showCurve(f);
    QCoreApplication::processEvents();
    EXPECT_EQ(plant.Kanal_Zahl[0], 4);
    snapshot(*w->kurve(), QStringLiteral("curve_plain_de.png"));

    plant.Charge_Datei[2] = f;
    w->showLogBook(3);
    ASSERT_NE(w->logdaten(), nullptr);
    EXPECT_EQ(w->logdaten()->LogList()->count(), 339);
    EXPECT_FALSE(w->mnuform(2)->isEnabled());
    EXPECT_EQ(w->logdaten()->LogList()->item(39)->text(),
              QStringLiteral("05.03.2024 08:00:00  110    100     92    70     0     0     1     0"));
    w->logdaten()->parentWidget()->resize(900, 500);
    snapshot(*w->logdaten()->parentWidget(), QStringLiteral("logdata_de.png"));
    w->logdaten()->parentWidget()->close();
    QCoreApplication::processEvents();
    EXPECT_TRUE(w->mnuform(2)->isEnabled());
}
