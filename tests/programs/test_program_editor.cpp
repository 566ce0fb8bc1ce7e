// Editor rules, selection and program view: what a typed value becomes,
// which commands a row offers, how a row is arranged, the button captions,
// the foot total, the selection's number field and delete question, and the
// view's lines straight from the image.

#include "config/text_ids.h"
#include "programs/program_editor.h"
#include "programs/program_select.h"
#include "programs/program_view.h"
#include "programs_fixture.h"

using namespace kal;
using namespace kal::test;

namespace {

class Editor : public ProgramsTest {
protected:
    void SetUp() override
    {
        ProgramsTest::SetUp();
        Ofen(1, 3, OPT_MANUELL | OPT_ZYKLUS);
        plant.Ofen_Bezeichnung[0] = QStringLiteral("Kammerofen");
        ASSERT_TRUE(Prog_Neu());
        ASSERT_TRUE(openEditor(1, 5));
    }
    QList<int> commandValues(int zeile)
    {
        QList<int> l;
        for (const CommandEntry &e : commandList(zeile))
            l << e.befehl;
        return l;
    }
};

TEST_F(Editor, TypedValuesAreTakenWithinTheirLimits)
{
    Seg(0, 1, 0);
    struct {
        int befehl;
        void (*feld)(int, const QString &);
        QString text;
        std::function<int()> wert;
        int erwartet;
    } const faelle[] = {
        {1, GradientFormat, "1000", [&] { return S(1).Gradient; }, 9999},
        {1, GradientFormat, "12,5", [&] { return S(1).Gradient; }, 125},
        {1, GradientFormat, "-3", [&] { return S(1).Gradient; }, 0},
        {2, GradientFormat, "2,25 h", [&] { return S(1).Haltezeit; }, 23},
        {3, GradientFormat, "140", [&] { return S(1).MaxOut; }, 100},
        {5, GradientFormat, "0", [&] { return S(1).Gradient; }, 1},
        {5, GradientFormat, "250", [&] { return S(1).Gradient; }, 99},
        {1, SollwertFormat, "2000", [&] { return S(1).Sollwert; }, 1720},
        {1, SollwertFormat, "abc", [&] { return S(1).Sollwert; }, 0},
        {5, SollwertFormat, "5", [&] { return S(1).MaxOut; }, 1}, // segment 2 aims only at 1
        {1, MaxOutFormat, "101", [&] { return S(1).MaxOut; }, 100},
        {4, MaxOutFormat, "55", [&] { return S(1).MaxOut; }, 55},
        {1, ZuluftFormat, "300", [&] { return S(1).Zuluft; }, 250},
        {1, AnalogFormat, "5000", [&] { return S(1).Analog; }, 2047},
    };
    for (const auto &f : faelle) {
        S(1) = newSegment();
        S(1).Befehl = u8(f.befehl);
        prog.Prog_Geaendert = 0;
        f.feld(1, f.text);
        EXPECT_EQ(f.wert(), f.erwartet) << f.befehl << " " << qPrintable(f.text);
        EXPECT_TRUE(prog.Prog_Geaendert);
    }
    // What the field shows again: 1000 typed in a ramp reads 999.9.
    S(1).Befehl = 1;
    GradientFormat(1, QStringLiteral("1000"));
    EXPECT_EQ(segmentTexts(1).Gradient, QStringLiteral("999.9"));
    // A cycle at segment 7 may aim at 1..6; the version word 1 allows 400 of air.
    S(6).Befehl = 5;
    SollwertFormat(6, QStringLiteral("9"));
    EXPECT_EQ(S(6).MaxOut, 6);
    Ofen(1, 1);
    ZuluftFormat(1, QStringLiteral("999"));
    EXPECT_EQ(S(1).Zuluft, 400);
    // A ramp or hold chosen on an empty segment starts at 0.1.
    S(9) = newSegment();
    chooseCommand(9, 1);
    EXPECT_EQ(S(9).Gradient, 1);
    chooseCommand(9, 2);
    EXPECT_EQ(S(9).Haltezeit, 1);
}

TEST_F(Editor, CommandListByMaskAndRow)
{
    EXPECT_EQ(commandValues(0), (QList<int>{0, 1, 2, 3})); // no cycle in the table's first row
    EXPECT_EQ(commandValues(1), (QList<int>{0, 1, 2, 3, 5}));
    prog.Erste_Zeile = 1;
    EXPECT_EQ(commandValues(0), (QList<int>{0, 1, 2, 3, 5}));
    Ofen(1, 3, 0);
    EXPECT_EQ(commandValues(3), (QList<int>{0, 1, 2})); // "Sprung" is never offered
    EXPECT_EQ(commandList(3).value(1).text, QStringLiteral("Rampe"));
}

TEST_F(Editor, ArrangementPerCommand)
{
    struct Case {
        int befehl;
        QString einh, grad;
        FieldState soll;
        bool gradient, maxOut;
        QString leer;
    };
    const Case faelle[] = {
        {1, "°C", "K/h", FieldState::Offen, true, false, "0.1"},
        {2, "°C", "h", FieldState::Gesperrt, true, false, "0.1"},
        {3, "°C", "%", FieldState::Offen, true, false, "1"},
        {4, "°C", "", FieldState::Offen, false, true, ""},
        {5, "Ziel", "Anzahl", FieldState::Offen, true, false, ""},
        {0, "", "", FieldState::Verborgen, false, false, ""},
    };
    for (const Case &f : faelle) {
        S(2).Befehl = u8(f.befehl);
        const RowLayout a = segmentLayout(2);
        EXPECT_EQ(std::tie(a.Soll_Einh, a.Grad_Einheit, a.Sollwert, a.Gradient, a.MaxOUT, a.Gradient_Leer),
                  std::tie(f.einh, f.grad, f.soll, f.gradient, f.maxOut, f.leer))
            << f.befehl;
    }
    S(2).Befehl = 1;
    EXPECT_EQ(segmentLayout(2).Soll_Hinweis, QStringLiteral(" 0 -1720"));
    S(2).Befehl = 5;
    EXPECT_EQ(segmentLayout(2).Soll_Hinweis, QStringLiteral(" 1 -2"));
    Ofen(1, i16(0x9000 | 50)); // long names: a ramp shows its output limit
    S(2).Befehl = 1;
    EXPECT_TRUE(segmentLayout(2).MaxOUT);
}

TEST_F(Editor, HoldInheritsItsPredecessorAndTheFootTotal)
{
    Seg(0, 2, 500, 10);         // a hold first starts from 0: 1.0 h
    Seg(1, 1, 850, 0, 1000);     // 0 -> 850 at 100 K/h: 8.5 h
    Seg(2, 2, 999, 25);          // 2.5 h at 850
    Seg(3, 1, 400, 0, 2000);     // 850 -> 400 at 200 K/h: 2.25 h
    Seg(4, 4, -50, 0, 0, 70);    // a negative set value becomes 0
    Seg(5, 1, 300, 0, 0);        // rate 0 counts nothing
    Seg(7, 2, 0, 100);           // behind the end: not counted
    fillSetpoints();
    EXPECT_EQ((std::vector<int>{S(0).Sollwert, S(2).Sollwert, S(4).Sollwert}), (std::vector<int>{0, 850, 0}));
    EXPECT_EQ(programMinutes(prog.Prog), 855); // 14.25 h
    EXPECT_EQ(durationText(855, QStringLiteral("###0")), QStringLiteral("14:15 h"));
    EXPECT_EQ(durationText(5, QStringLiteral("#####0")), QStringLiteral("0:05 h"));
}

TEST_F(Editor, ButtonCaptionsAndWhatTheyDo)
{
    const QString laden = QStringLiteral("Laden 1:Ofen 1");
    EXPECT_EQ(Loadtaste(), (std::array<QString, 7>{})); // offline, unchanged: no button
    plant.Ofen_Online[0] = TRUE16;
    std::array<QString, 7> t = Loadtaste();
    EXPECT_EQ(QStringList({t[0], t[5], t[6]}), QStringList({"Laden Speicher 1", "Laden Speicher 6", laden}));
    plant.SPS_Wort(0, 74) = 1; // a program runs: not loaded over it
    EXPECT_EQ(Loadtaste()[6], QString());
    prog.Prog_Geaendert = TRUE16;
    EXPECT_EQ(Loadtaste()[6], QStringLiteral("speichern"));
    // After a paste the flag is cleared: closing asks nothing.
    prog.Prog_Aus_Puffer = TRUE16;
    EXPECT_EQ(Loadtaste()[6], laden);
    EXPECT_FALSE(prog.Prog_Geaendert);

    // Saving takes the name, cut or padded to the name length.
    prog.Prog_Aus_Puffer = 0;
    Seg(0, 1, 700, 0, 500);
    prog.Prog_Geaendert = TRUE16;
    EXPECT_EQ(editorKey(6, QStringLiteral("speichern"), QStringLiteral("Anlassen mit langem Namen")),
              KeyEffect::Gesichert);
    EXPECT_FALSE(prog.Prog_Geaendert);
    EXPECT_EQ(programList(prog.Prog_Datei, 16).value(0).name, QStringLiteral("Anlassen mit lan"));
    // Place 2: the name in the working copy, the block queued at 300.
    EXPECT_EQ(editorKey(1, t[1], QStringLiteral("Kurz")), KeyEffect::Gesendet);
    EXPECT_EQ(prog.Prog.Prog_Name, QStringLiteral("Kurz            "));
    EXPECT_EQ(both(plant.Write_Adr[0], plant.SPS_Wort(0, 388)), both(300, 2));
    EXPECT_EQ(editorKey(6, laden, QStringLiteral("Kurz")), KeyEffect::Nichts); // still pending
    EXPECT_EQ(editorKey(3, QString(), QStringLiteral("Kurz")), KeyEffect::Nichts);
}

TEST_F(Editor, OpeningAndTheQuestionOnClosing)
{
    prog.Prog.Prog_Name = QStringLiteral("Alt\tname");
    Prog_Sichern(prog.Prog_Datei, 5);
    ASSERT_TRUE(openEditor(1, 0)); // 0 opens program 1
    EXPECT_EQ(prog.Prog_Nr, 1);
    ASSERT_TRUE(openEditor(1, 5));
    EXPECT_EQ(prog.Prog.Prog_Name + editorTitle(), QStringLiteral("Alt name[1]  Kammerofen"));
    EXPECT_EQ(closeQuestion(),
              QStringLiteral("Kammerofen, Programm Nr.5\ngeändert !\nProgramm speichern? "));
    EXPECT_FALSE(openEditor(0, 5));
    // An unreadable file opens an empty program, not the one before.
    QFile::remove(prog.Prog_Datei);
    ASSERT_TRUE(openEditor(1, 5));
    EXPECT_EQ(prog.Prog.Prog_Name, QString());
    EXPECT_EQ(prog.Prog.Datum, jetzt);
    EXPECT_EQ(outputCaption(true, false) + outputCaption(false, true), QStringLiteral("-1--N2-"));
    toggleOutput(3, 2);
    toggleOutput(3, 0);
    EXPECT_EQ(S(3).Ausgang, 0b0101);
}

class EditorChoice : public ProgramsTest {};

TEST_F(EditorChoice, FreshFileEmptyListNumbersAndDelete)
{
    Ofen(2, 3);
    plant.Ofen_Aktiv[1] = TRUE16;
    plant.Ofen_Nr_Prog[1] = 2;
    plant.Ofen_Name[1] = QStringLiteral("Glühofen");
    const QList<FurnaceChoice> oefen = choiceFurnaces();
    ASSERT_EQ(oefen.size(), 1);
    EXPECT_EQ(oefen[0].text, QStringLiteral("2: Glühofen"));
    EXPECT_EQ(choiceFurnaceNumber(oefen[0].daten), 2);
    EXPECT_EQ(choiceFurnaceNumber(23), 3);

    EXPECT_TRUE(selectionList(2).isEmpty()); // the file is made on the way
    EXPECT_TRUE(QFile::exists(prog.Prog_Datei));
    EXPECT_EQ(both(typedNumber(QStringLiteral("0")), typedNumber(QStringLiteral("101"))), both(1, 100));

    for (int p : {4, 5}) {
        ASSERT_TRUE(openEditor(2, p));
        ASSERT_TRUE(saveEditor(QStringLiteral("P%1").arg(p)));
    }
    EXPECT_EQ(selectionList(2).size(), 2);
    prog.Prog_Nr = 4;
    EXPECT_EQ(deleteQuestion(), QStringLiteral("Glühofen, Programm 4\nSoll das Progamm\nwirklich gelöscht werden? "));
    EXPECT_TRUE(deleteSelected());
    EXPECT_EQ(prog.Prog_Nr, 0);
    const QList<ProgramEntry> rest = selectionList(2);
    ASSERT_EQ(rest.size(), 1);
    EXPECT_EQ(rest[0].p, 5);
}

class EditorView : public ProgramsTest {};

TEST_F(EditorView, LinesPerCommandUpToTheEnd)
{
    Ofen(2, i16(0x8000 | 240), OPT_MANUELL | OPT_ZYKLUS);
    plant.Ofen_Gross[1] = 0;
    prog.Prog.Prog_Name = QStringLiteral("Nitrieren");
    Seg(0, 1, 600, 0, 905, 80, 0b1001);
    Seg(1, 2, 600, 15);
    Seg(2, 3, 500, 0, 0, 35);
    Seg(3, 4, 200, 0, 0, 60);
    Seg(4, 5, 0, 0, 2, 1);
    Seg(6, 1, 900, 0, 100); // behind the end
    ASSERT_EQ(Prog_Senden(START_AKTIV, 0), SendResult::Gesendet);

    OutputLabels label;
    label.Text[3] = QStringLiteral("Argon");
    EXPECT_TRUE(Seite_Act(0, label).leer);
    const ViewPage a = Seite_Act(2, label);
    EXPECT_EQ(QStringList({a.titel, a.name, a.ende, a.laenge}),
              QStringList({"Programm aktuell", "Nitrieren", "Programm Ende", "8:08 h"})); // 600 K at 90.5 K/h, 1.5 h
    ASSERT_EQ(a.segmente.size(), 5);
    EXPECT_EQ(a.segmente[0].zeilen, (QStringList{"Sollwert 600 °C", "Rampe 90.5 K/h", "Max Ausgangsleistung 80 %"}));
    EXPECT_EQ(a.segmente[1].zeilen, (QStringList{"Sollwert 600 °C", "Haltezeit 1.5 h"}));
    EXPECT_EQ(a.segmente[2].zeilen, (QStringList{"Sollwert 500 °C", "Ausgangsleistung 35 %"}));
    EXPECT_EQ(a.segmente[3].zeilen, (QStringList{"Sollwert 200 °C", "Max Ausgangsleistung 60 %"}));
    EXPECT_EQ(a.segmente[4].zeilen, (QStringList{"Zielsegment 1", "Sprunganzahl 2"}));
    EXPECT_EQ(a.segmente[0].ausgang, (std::array<QString, 4>{"-1-", "-0-", "-0-", "-Ar-"}));

    // Place 3 asked for: the active program until the PLC answers 1103.
    plant.Write_Len[1] = 0;
    requestPlace(1, 3);
    EXPECT_EQ(Seite_Act(2, label).titel, QStringLiteral("Programm aktuell"));
    prog.Prog.Prog_Name = QStringLiteral("Platz drei");
    Seg(0, 2, 0, 5);
    ASSERT_EQ(Prog_Senden(START_PLATZ, 3), SendResult::Gesendet);
    plant.SPS_Wort(1, 388) = 1103;
    const ViewPage p = Seite_Act(2, label);
    EXPECT_EQ(p.titel + "/" + p.name, QStringLiteral("Programm 3/Platz drei"));
    EXPECT_EQ(p.segmente.value(0).zeilen.value(1), QStringLiteral("Haltezeit 0.5 h"));
    EXPECT_EQ(placeKeyCaptions(2)[2], QStringLiteral("Speicher 3"));
    Ofen(1, 3);
    EXPECT_EQ(placeKeyCaptions(1)[2], QString()); // no memory places without a version word
}

} // namespace
