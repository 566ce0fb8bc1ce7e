// A program's whole round in the demo plant, driven through the forms: chosen
// in the selection, typed into the step editor, saved, sent to furnace 2's
// active program and to its memory place 3, run by the simulated furnace and
// shown by the live page and the program view; place 3 fetched back into the
// copy buffer, pasted into furnace 4's program 7 and saved. Screenshots of
// the forms in German and English go to build/shots.

#include "config/text_ids.h"
#include "demo_station.h"
#include "operation/live_page.h"
#include "programs/program_editor.h"
#include "programs/program_file.h"
#include "programs/program_transfer.h"
#include "sim/plant.h"
#include "views/KM_ProgView.h"
#include "views/KM_ProgWahl.h"
#include "views/KM_Schritte.h"

#include <QComboBox>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTableWidget>
#include <QTest>

using namespace kal;
using namespace kal::test;

namespace {

class ProgramRound : public DemoStation {
protected:
    /// Picks the entry of a combo box that carries `daten`, as a click does.
    void pick(QComboBox *c, int daten)
    {
        const int i = c->findData(daten);
        ASSERT_GE(i, 0) << daten;
        c->setCurrentIndex(i);
        Q_EMIT c->activated(i);
    }
    /// Opens program p of a furnace from the selection.
    KM_Schritte *openFromSelection(int ofenNr, int p)
    {
        w->showProgramChoice();
        KM_ProgWahl *wahl = w->progWahl();
        pick(wahl->Combo1(), ofenNr);
        wahl->Text1()->clear();
        QTest::keyClicks(wahl->Text1(), QString::number(p));
        QTest::mouseClick(wahl->okButton(), Qt::LeftButton);
        return w->schritte();
    }
    void typeInto(QLineEdit *e, const QString &text)
    {
        e->setFocus();
        e->selectAll();
        QTest::keyClicks(e, text);
        QTest::keyClick(e, Qt::Key_Return);
    }
};

TEST_F(ProgramRound, EditSaveSendRunFetchAndPaste)
{
    ASSERT_TRUE(waitUntil([&] { return online(2) && online(4); }, 60000));
    sim::SimFurnace *plc2 = demo.plant()->furnace(1);
    plc2->stopProgram(); // the active program may only be loaded while none runs
    ASSERT_TRUE(waitUntil([] { return (plant.SPS_Wort(1, 74) & 3) == 0; }, 20000));

    // Furnace 2, program 12: ramp to 500 °C at 600 K/h, hold 0.5 h, cycle
    // back to segment 1 once, ramp down to 100 °C at 450.5 K/h.
    KM_Schritte *ed = openFromSelection(2, 12);
    ASSERT_NE(ed, nullptr);
    ASSERT_TRUE(ed->isVisible());
    pick(ed->Combo2(0), 1);
    typeInto(ed->Sollwert(0), "500");
    typeInto(ed->Gradient(0), "600");
    pick(ed->Combo2(1), 2);
    typeInto(ed->Gradient(1), "0,5");
    pick(ed->Combo2(2), 5);
    typeInto(ed->Sollwert(2), "1");
    typeInto(ed->Gradient(2), "1");
    pick(ed->Combo2(3), 1);
    typeInto(ed->Sollwert(3), "100");
    typeInto(ed->Gradient(3), "450,5");
    ed->Text1()->setFocus();
    QTest::keyClicks(ed->Text1(), "E2E Probe");
    EXPECT_EQ(ed->Sollwert(1)->text(), QStringLiteral("500")); // the hold shows its predecessor's value
    EXPECT_EQ(ed->footer()->text(), QStringLiteral("Dauer: 2:13 h"));
    ASSERT_EQ(ed->Taste(6)->text(), QStringLiteral("speichern"));
    QTest::mouseClick(ed->Taste(6), Qt::LeftButton);
    EXPECT_TRUE(programList(programFileName(2), 16).value(0).name.startsWith("E2E Probe"));
    saveSnapshot(*w, QStringLiteral("programs_editor_de.png"));

    // Into the active program: the progress form runs until the block went out.
    ASSERT_TRUE(ed->Taste(6)->text().startsWith(QStringLiteral("Laden 2:"))) << qPrintable(ed->Taste(6)->text());
    QTest::mouseClick(ed->Taste(6), Qt::LeftButton);
    EXPECT_EQ(plant.Write_Len[1], 0);
    ASSERT_TRUE(waitUntil([&] { return plc2->word(100) == 1 && plc2->word(183) != 0; }, 10000));
    // The typed values as the PLC holds them; the layout of the block is
    // tested in tests/programs.
    const QVector<int16_t> aktiv = plc2->image().get(100, 100);
    EXPECT_EQ(aktiv.mid(20, 5), (QVector<int16_t>{500, 500, 0, 100, 0}));
    EXPECT_EQ(aktiv.mid(40, 5), (QVector<int16_t>{6000, 5, 1, 4505, 0}));
    EXPECT_EQ(plc2->image().text(180, 8), QStringLiteral("E2E Probe       "));

    // Into memory place 3.
    ASSERT_EQ(ed->Taste(2)->text(), QStringLiteral("Laden Speicher 3"));
    QTest::mouseClick(ed->Taste(2), Qt::LeftButton);
    ASSERT_TRUE(waitUntil([&] { return plc2->pages().place(3).value(10) == 1; }, 10000));
    const QVector<int16_t> platz = plc2->pages().place(3);
    EXPECT_EQ(platz.mid(10, 88), aktiv.mid(0, 88));
    ed->close();

    // The furnace runs it; the live page and the program view show it.
    plc2->startProgram();
    furnaceRowClicked(Seite, 1);
    ASSERT_TRUE(waitUntil([] { return plant.SPS_Wort(1, 41) == 1; }, 20000));
    ASSERT_TRUE(waitUntil([] { return Seite.Zeile[1].Befehl.contains(QStringLiteral("Rampe")); }, 20000))
        << qPrintable(Seite.Zeile[1].Befehl);
    w->showProgramView();
    KM_ProgView *view = w->progView();
    view->Seite_Act();
    QTableWidget *t = view->segmentTable();
    ASSERT_EQ(t->rowCount(), 5);
    EXPECT_EQ(t->item(0, 2)->text(), QStringLiteral("Rampe 600.0 K/h"));
    saveSnapshot(*w, QStringLiteral("programs_view_de.png"));

    // Place 3 fetched back by the page word, into the copy buffer.
    ASSERT_EQ(view->Taste(2)->text(), QStringLiteral("Speicher 3"));
    QTest::mouseClick(view->Taste(2), Qt::LeftButton);
    ASSERT_TRUE(waitUntil([&] {
        view->Seite_Act();
        return view->titleLabel()->text().endsWith(QStringLiteral("Programm 3"));
    }, 20000)) << qPrintable(view->titleLabel()->text());
    QTest::mouseClick(view->Taste(6), Qt::LeftButton);
    EXPECT_TRUE(prog.Puffer_Voll);
    EXPECT_EQ(prog.Prog_Puffer.Prog_Name, QStringLiteral("E2E Probe"));
    view->close();

    // Pasted into furnace 4's program 7 from the selection, renamed, saved.
    w->showProgramChoice();
    KM_ProgWahl *wahl = w->progWahl();
    pick(wahl->Combo1(), 4);
    QTest::keyClicks(wahl->Text1(), "7");
    saveSnapshot(*w, QStringLiteral("programs_selection_de.png"));
    ASSERT_TRUE(wahl->insertButton()->isEnabled());
    QTest::mouseClick(wahl->insertButton(), Qt::LeftButton);
    ed = w->schritte();
    EXPECT_TRUE(ed->Taste(6)->text().startsWith(QStringLiteral("Laden 4:"))); // pasted: nothing to ask
    EXPECT_EQ(ed->Sollwert(0)->text(), QStringLiteral("500"));
    ed->Text1()->setFocus();
    ed->Text1()->selectAll();
    QTest::keyClicks(ed->Text1(), "E2E Kopie");
    ASSERT_EQ(ed->Taste(6)->text(), QStringLiteral("speichern"));
    QTest::mouseClick(ed->Taste(6), Qt::LeftButton);
    const QList<ProgramEntry> liste4 = programList(programFileName(4), 16);
    ASSERT_EQ(liste4.size(), 1);
    EXPECT_EQ(liste4[0].p, 7);
    EXPECT_TRUE(liste4[0].name.startsWith(QStringLiteral("E2E Kopie")));
    ASSERT_TRUE(Prog_Laden(programFileName(4), 7));
    EXPECT_EQ(prog.Prog.Segment[3].Gradient, 4505);
    EXPECT_TRUE(dialogs.shown.empty()) << qPrintable(dialogs.shown.front().text);

    // The forms in English: the editor of furnace 4 (outputs and air feed),
    // the selection and the program view.
    setLanguage(1);
    waitUntil([] { return false; }, 300);
    saveSnapshot(*w, QStringLiteral("programs_editor_en.png"));
    ed->close();
    w->showProgramChoice();
    pick(w->progWahl()->Combo1(), 2);
    saveSnapshot(*w, QStringLiteral("programs_selection_en.png"));
    w->progWahl()->close();
    w->showProgramView();
    waitUntil([] { return false; }, 1200);
    saveSnapshot(*w, QStringLiteral("programs_view_en.png"));
}

} // namespace
