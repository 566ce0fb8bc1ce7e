// The settings dialog, the system dialog and the controller parameter form in
// the running station against the demo plant, driven by mouse and keyboard
// as a user does, with screenshots of every tab in German and English.

#include "demo_station.h"

#include "config/settings_dialog.h"
#include "config/system_dialog.h"
#include "operation/controller_parameters.h"
#include "views/KM_Parameter.h"
#include "views/KM_RegPar.h"
#include "views/KM_System.h"

#include <QAction>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QTabBar>
#include <QTest>

using namespace kal;
using namespace kal::test;

namespace {

/// The demo station with the dialogs' windows at a size of their own.
class DialogStation : public DemoStation {
protected:
    void SetUp() override
    {
        DemoStation::SetUp();
        if (HasFatalFailure())
            return;
        w->resize(1280, 860);
        ASSERT_TRUE(waitUntil([] { return plant.Ofen_Online[0] != 0 && plant.SPS_Wort(0, 47) != 0; }, 60000));
    }
    QWidget *childWindow(QWidget *form) { return form->parentWidget(); }
    void snapshot(QWidget *form, const QString &name)
    {
        QCoreApplication::processEvents();
        saveSnapshot(*childWindow(form), name);
    }
};

} // namespace

TEST_F(DialogStation, SettingsDialogTabsLimitsLanguageAndCancel)
{
    ASSERT_TRUE(w->mnuform(6)->isEnabled()) << "open once the station is up";
    w->mnuform(6)->trigger();
    KM_Parameter *p = w->parameter();
    ASSERT_NE(p, nullptr);
    childWindow(p)->resize(1180, 640);
    // Furnace 4 of the demo online and identified (its PLC-Info is shown).
    waitUntil([] { return !plant.PLC_Name[3].isEmpty(); }, 60000);

    // The general tab: the language picked switches the station at once.
    auto *sprachen = p->findChild<QComboBox *>();
    ASSERT_NE(sprachen, nullptr);
    const char *kuerzel[2] = {"de", "en"};
    for (int s : {0, 1}) {
        if (s == 1) {
            sprachen->setCurrentIndex(1);
            Q_EMIT sprachen->activated(1);
            EXPECT_EQ(plant.Sprache, 1);
        }
        for (int tab = 0; tab <= TAB_PLC_INFO; ++tab) {
            if (tab >= 2 && tab <= 8 && tab != 4)
                continue; // furnaces 2..7 look like furnace 1 and 4
            p->TabStrip1()->setCurrentIndex(tab);
            snapshot(p, QStringLiteral("settings_%1_tab%2.png").arg(QLatin1String(kuerzel[s])).arg(tab));
        }
    }
    EXPECT_EQ(p->TabStrip1()->tabText(1), QStringLiteral("furnace 1"));
    // The USB import's switch: with no file in the USB folder it stays off.
    p->TabStrip1()->setCurrentIndex(0);
    EXPECT_EQ(p->usbPathButton()->text(), QStringLiteral("USB_Import"));
    QTest::mouseClick(p->usbPathButton(), Qt::LeftButton);
    EXPECT_FALSE(p->usbPathButton()->isChecked());
    p->TabStrip1()->setCurrentIndex(1);

    // Typed and left with Tab: the replacement value stands in the field.
    QLineEdit *ip0 = p->Text1(0);
    ip0->setFocus();
    ip0->selectAll();
    QTest::keyClicks(ip0, QStringLiteral("300"));
    QTest::keyClick(ip0, Qt::Key_Tab);
    EXPECT_EQ(ip0->text(), QStringLiteral("255"));
    EXPECT_EQ(QApplication::focusWidget(), p->Text1(1)) << "Tab goes on to the next octet";
    QTest::mouseClick(p->Option1(1), Qt::LeftButton);
    EXPECT_EQ(ip0->text(), QStringLiteral("16")) << "the serial limits apply at once";

    // Cancel: nothing taken, German again.
    QTest::mouseClick(p->Command1(1), Qt::LeftButton);
    EXPECT_EQ(plant.Sprache, 0);
    EXPECT_NE(plant.Ofen_IP(0, 0), 255);
    EXPECT_FALSE(childWindow(p)->isVisible());

    // Opened again: a fresh copy, and OK writes the configuration.
    w->mnuform(6)->trigger();
    EXPECT_EQ(p->TabStrip1()->currentIndex(), 0);
    p->TabStrip1()->setCurrentIndex(1);
    EXPECT_EQ(p->Text1(0)->text(), QString::number(plant.Ofen_IP(0, 0)));
    QTest::mouseClick(p->Command1(0), Qt::LeftButton);
    EXPECT_FALSE(childWindow(p)->isVisible());
    EXPECT_TRUE(QFile::exists(QDir(dir.path()).filePath(QStringLiteral("Kalmeron.DAT"))));
    EXPECT_TRUE(dialogs.shown.empty()) << qPrintable(dialogs.shown.front().text);
}

TEST_F(DialogStation, ControllerFormSendsWithEnterAndShowsTheNewValue)
{
    ASSERT_TRUE(w->mnuRegler()->isEnabled() || waitUntil([&] { return w->mnuRegler()->isEnabled(); }, 5000));
    w->mnuRegler()->trigger();
    KM_RegPar *r = w->regPar();
    ASSERT_NE(r, nullptr);
    childWindow(r)->resize(760, 520);
    ASSERT_TRUE(waitUntil([&] { return !r->Ausgabe(0)->text().isEmpty() && RegPar.Verlauf.size() > 8; }, 10000));

    QLineEdit *xp = r->Eingabe(0);
    xp->setFocus();
    xp->selectAll();
    QTest::keyClicks(xp, QStringLiteral("1,5"));
    QTest::keyClick(xp, Qt::Key_Return);
    // The PLC's value comes back with the next poll.
    const QString neu = QStringLiteral("1") + QLocale().decimalPoint() + QStringLiteral("50");
    EXPECT_TRUE(waitUntil([&] { return r->Ausgabe(0)->text() == neu; }, 20000)) << qPrintable(r->Ausgabe(0)->text());
    QTest::keyClick(xp, Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), r->Eingabe(1));
    snapshot(r, QStringLiteral("regpar_de.png"));
    setLanguage(1);
    waitUntil([] { return false; }, 600);
    snapshot(r, QStringLiteral("regpar_en.png"));
}

TEST_F(DialogStation, SystemDialogChecksTheSerialNumberAndShowsTheTexts)
{
    ASSERT_TRUE(w->mnuform(7)->isEnabled());
    w->mnuform(7)->trigger();
    KM_System *s = w->system();
    ASSERT_NE(s, nullptr);
    childWindow(s)->resize(1180, 620);
    s->onOpen(2);
    QLineEdit *serie = s->Text1(SYS_SERIE);
    serie->setFocus();
    serie->selectAll();
    QTest::keyClicks(serie, QStringLiteral("1305042SGO"));
    QTest::keyClick(serie, Qt::Key_Tab);
    ASSERT_EQ(dialogs.shown.size(), 1u);
    EXPECT_EQ(dialogs.shown.front().text, QStringLiteral("Die Serien-Nr. hat nicht das\nFormat: >>>JJMM-NNN-TTT<<<"));
    EXPECT_EQ(serie->text(), QStringLiteral("1305-042-SGO"));
    EXPECT_GE(s->List_MLDTXT()->count(), 32);
    snapshot(s, QStringLiteral("system_de.png"));
    setLanguage(1);
    snapshot(s, QStringLiteral("system_en.png"));
    QTest::mouseClick(s->OKButton(), Qt::LeftButton);
    EXPECT_FALSE(childWindow(s)->isVisible());
}
