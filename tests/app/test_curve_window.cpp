// The curve window, the batch browser, the log data page, the value list and
// the sixteen-channel view of the element currents as a user meets them:
// batches in a year folder, chosen in the browser, paged and zoomed with the
// buttons, read with the mouse; screenshots in German and English in
// build/shots.

#include "curves/csv_export.h"
#include "curves/curve_fixture.h"
#include "curves/curve_store.h"
#include "curves/time_axis.h"
#include "curves/view16.h"
#include "curve_form.h"
#include "demo_station.h"
#include "views/KM_View16.h"

#include <QCheckBox>
#include <QDir>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>

using namespace kal;
using namespace kal::test;

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
    EXPECT_FALSE(b->OKButton()->isEnabled());

    // Furnace 3 alone; then by number; then back.
    b->OfenCheck(2)->click();
    EXPECT_EQ(b->List1()->count(), 1);
    b->OfenCheck(2)->click();
    b->Sortierung(1)->click();
    EXPECT_TRUE(b->List1()->item(0)->text().startsWith(QStringLiteral("Charge 000012 1:Haertofen 1")));

    b->List1()->setCurrentRow(0);
    EXPECT_TRUE(b->OKButton()->isEnabled());
    EXPECT_TRUE(b->Text1().startsWith(QStringLiteral("Auftrag 4711")));
    w->tempDatei()->parentWidget()->resize(1300, 560);
    saveSnapshot(*b->parentWidget(), QStringLiteral("browser_de.png"));

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
        setLanguage(sprache);
        w->showCurve(f);
        KM_Kurve *k = w->kurve();
        ASSERT_NE(k, nullptr);
        QCoreApplication::processEvents();
        const QString s = sprache == 0 ? QStringLiteral("de") : QStringLiteral("en");
        saveSnapshot(*k, QStringLiteral("curve_%1.png").arg(s));

        // Zoom in to raster 20 and page forward with F2.
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
        saveSnapshot(*k, QStringLiteral("curve_zoom_%1.png").arg(s));
    }
}

TEST_F(CurveForm, PlainBatchAndLogData)
{
    const QString f = plainBatch(QStringLiteral("D2402300TST000003060324.OVD"));
    w->showCurve(f);
    QCoreApplication::processEvents();
    EXPECT_EQ(plant.Kanal_Zahl[0], 4);
    saveSnapshot(*w->kurve(), QStringLiteral("curve_plain_de.png"));

    plant.Charge_Datei[2] = f;
    w->showLogBook(3);
    ASSERT_NE(w->logdaten(), nullptr);
    EXPECT_EQ(w->logdaten()->LogList()->count(), 339);
    EXPECT_FALSE(w->mnuform(2)->isEnabled());
    w->logdaten()->parentWidget()->resize(900, 500);
    saveSnapshot(*w->logdaten()->parentWidget(), QStringLiteral("logdata_de.png"));
    w->logdaten()->parentWidget()->close();
    QCoreApplication::processEvents();
    EXPECT_TRUE(w->mnuform(2)->isEnabled());
}

TEST_F(CurveForm, ValueListWithItsChoiceInGermanAndEnglish)
{
    w->showCurve(heatTreatment(QStringLiteral("D2401100TST000012050324.OVD")));
    KM_Kurve *k = w->kurve();
    ASSERT_TRUE(k->keyButton(TASTE_LISTE)->isEnabled());
    QTest::mouseClick(k->keyButton(TASTE_LISTE), Qt::LeftButton);
    KM_Liste *l = w->liste();
    ASSERT_NE(l, nullptr);
    EXPECT_NE(plant.List16_Offen, 0) << "mouse moves over the curve read nothing now";
    EXPECT_EQ(l->CSV_LIST()->count(), Listen.CSV_LIST.size());
    EXPECT_FALSE(l->CB_Soll(3)->isVisible()) << "a status channel has only its Ist check";
    waitUntil([] { return false; }, 200); // the form lays out its captions
    saveSnapshot(*l->parentWidget(), QStringLiteral("liste_de.png"));

    // A click on a check rebuilds the list after the pause.
    l->CB_Soll(0)->click();
    ASSERT_TRUE(waitUntil([] { return Listen.Liste_Gewaehlt; }, 3000));
    EXPECT_EQ(Liste_Soll(1), 0);

    // The page in front for printing follows the window; a list prints its own way.
    plant.Aktive_Seite = 2;
    EXPECT_EQ(w->druckFenster(), k);
    plant.Aktive_Seite = 3;
    EXPECT_EQ(w->druckFenster(), w->menuePage());
    plant.Aktive_Seite = 5;
    EXPECT_EQ(w->druckFenster(), nullptr);

    setLanguage(1);
    w->showValueList();
    saveSnapshot(*l->parentWidget(), QStringLiteral("liste_en.png"));
    w->liste()->parentWidget()->close();
    EXPECT_EQ(plant.List16_Offen, 0);
}

TEST_F(CurveForm, SixteenChannelViewOfTheElementCurrents)
{
    w->showCurve(stromCharge());
    KM_Kurve *k = w->kurve();
    ASSERT_TRUE(k->Tast_Strom()->isVisible());
    for (int s : {0, 1}) {
        setLanguage(s);
        KM_View16 v(k);
        v.onOpen();
        v.show();
        QTest::mouseClick(v.plotWidget(), Qt::LeftButton, {}, v.plotWidget()->plotRect().center());
        saveSnapshot(v, s == 0 ? QStringLiteral("view16_de.png") : QStringLiteral("view16_en.png"));
        if (s == 0) {
            KM_List16 liste(&v);
            liste.onOpen();
            liste.show();
            EXPECT_NE(plant.List16_Offen, 0);
            saveSnapshot(liste, QStringLiteral("list16_de.png"));
            liste.accept();
            EXPECT_EQ(plant.List16_Offen, 0);
        }
    }
}
