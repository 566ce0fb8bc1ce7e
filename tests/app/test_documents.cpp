// The documents of a batch that leave the station: the CSV file and the PDF
// printout, made by the headless commands of the real executable (without a
// display) and compared with what the window's button and print give; the
// pages of a printout counted and rendered with poppler's tools.

#include "core/word_map.h"
#include "curves/csv_export.h"
#include "curves/element_view.h"
#include "curves/time_axis.h"
#include "curves/view16.h"
#include "demo_station.h"
#include "curves/curve_fixture.h"
#include "curves/print_layout.h"
#include "station/station_start.h"
#include "support/files.h"
#include "views/KM_Kurve.h"
#include "views/KM_MDI.h"
#include "views/KM_View16.h"
#include "views/printing.h"

#include <QDir>
#include <QPrinter>
#include <QProcess>
#include <QCheckBox>
#include <QListWidget>
#include <QMdiSubWindow>
#include <QPushButton>
#include <QRegularExpression>
#include <QTest>

using namespace kal;
using namespace kal::test;

namespace {

struct Lauf {
    int code = -1;
    QByteArray out, err;
};

/// Runs a program to its end; a program that cannot be started fails the test.
Lauf start(const QString &programm, const QStringList &args, bool ohneAnzeige = false)
{
    QProcess p;
    if (ohneAnzeige) {
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.remove(QStringLiteral("QT_QPA_PLATFORM"));
        env.remove(QStringLiteral("DISPLAY"));
        env.remove(QStringLiteral("WAYLAND_DISPLAY"));
        p.setProcessEnvironment(env);
    }
    p.start(programm, args);
    EXPECT_TRUE(p.waitForStarted(10000)) << qPrintable(programm) << " is missing (setup-debian installs it)";
    EXPECT_TRUE(p.waitForFinished(60000)) << qPrintable(programm);
    return {p.exitStatus() == QProcess::NormalExit ? p.exitCode() : -1, p.readAllStandardOutput(),
            p.readAllStandardError()};
}

Lauf kalmeron(const QStringList &args)
{
    return start(QStringLiteral(KALMERON_EXE), args, true);
}

/// Page sizes of a PDF as "L" (landscape) and "P" (portrait), in order.
QString seitenLagen(const QString &pdf)
{
    const QRegularExpression zahl(QStringLiteral("Pages: +(\\d+)"));
    const QString seiten = zahl.match(QString::fromUtf8(start(QStringLiteral("pdfinfo"), {pdf}).out)).captured(1);
    const Lauf info = start(QStringLiteral("pdfinfo"), {QStringLiteral("-f"), QStringLiteral("1"),
                                                          QStringLiteral("-l"), seiten, pdf});
    QString lagen;
    const QRegularExpression re(QStringLiteral("Page +\\d+ size: +([\\d.]+) x ([\\d.]+)"));
    for (auto it = re.globalMatch(QString::fromUtf8(info.out)); it.hasNext();) {
        const auto m = it.next();
        lagen += m.captured(1).toDouble() > m.captured(2).toDouble() ? QLatin1Char('L') : QLatin1Char('P');
    }
    return lagen;
}

/// Renders the pages into build/shots at a small resolution, for looking at.
void seitenBilder(const QString &pdf, const QString &name)
{
    QDir().mkpath(QStringLiteral(KALMERON_SHOTS));
    const Lauf r = start(QStringLiteral("pdftoppm"), {QStringLiteral("-r"), QStringLiteral("60"), QStringLiteral("-png"),
                                                        pdf, QStringLiteral(KALMERON_SHOTS "/") + name});
    EXPECT_EQ(r.code, 0) << r.err.constData();
}

class Documents : public CurveTest {
protected:
    /// A batch of two hours: ramp and hold in two segments, a door message
    /// that comes and goes, so the info text has several lines.
    QString charge()
    {
        std::vector<SampleGroup> p;
        for (int m = 0; m < 120; ++m) {
            SampleGroup x;
            x.soll = i16(m < 60 ? 200 + m * 10 : 800);
            x.ist = i16(x.soll - 8 + m % 5);
            x.zone = i16(x.ist - 20);
            x.out = i16(m < 60 ? 80 : 35);
            x.druck = 12;
            x.meld = (m >= 30 && m < 40) ? 1 : 0;
            x.seg = m < 60 ? 1 : 2;
            x.art = m < 60 ? 1 : 2;
            x.ziel = 8000;
            x.rest = 100;
            p.push_back(x);
        }
        return headedFile(p);
    }
};

} // namespace

TEST_F(Documents, HeadlessCsvIsWhatTheButtonWrites)
{
    const QString p = charge();
    // The button: the batch loaded in the window, no column choice made.
    plant.Datum_Trenner = systemDateSeparator();
    plant.Pfad[3] = dir.filePath(QStringLiteral("Knopf"));
    QDir().mkpath(plant.Pfad[3]);
    plant.CSV_Datei = plant.Pfad[3] + QStringLiteral("/B.CSV");
    laden(p);
    ASSERT_TRUE(CSV_EXPORT(false));
    const QByteArray knopf = readFile(plant.CSV_Datei);
    ASSERT_GT(knopf.count('\n'), 120);

    const QString daten = dir.filePath(QStringLiteral("daten"));
    const QString ziel = dir.filePath(QStringLiteral("aus/nacht.csv"));
    Lauf r = kalmeron({QStringLiteral("--data"), daten, QStringLiteral("--csv"), p, QStringLiteral("--out"), ziel});
    EXPECT_EQ(r.code, 0) << r.err.constData();
    EXPECT_TRUE(r.out.isEmpty());
    EXPECT_EQ(readFile(ziel), knopf);

    // Without --out: the browser's name in the CSV folder, which is created;
    // a second run replaces the file without asking.
    const QString standard = daten + QStringLiteral("/CSV/") + QFileInfo(p).completeBaseName() + QStringLiteral(".CSV");
    for (int lauf = 0; lauf < 2; ++lauf) {
        r = kalmeron({QStringLiteral("--data"), daten, QStringLiteral("--csv"), p});
        EXPECT_EQ(r.code, 0) << r.err.constData();
        EXPECT_EQ(readFile(standard), knopf);
    }
    EXPECT_TRUE(r.out.isEmpty());
}

TEST_F(Documents, HeadlessExitCodes)
{
    const QString p = charge();
    const QString d = dir.filePath(QStringLiteral("daten"));
    struct Case {
        QStringList args;
        int code;
    };
    QDir().mkpath(dir.filePath(QStringLiteral("ordner.OVD")));
    const Case faelle[] = {
        {{QStringLiteral("--csv"), dir.filePath(QStringLiteral("fehlt.OVD"))}, 3},
        {{QStringLiteral("--pdf"), dir.filePath(QStringLiteral("fehlt.OVD")), QStringLiteral("--out"), dir.filePath(QStringLiteral("x.pdf"))}, 3},
        {{QStringLiteral("--csv"), dir.filePath(QStringLiteral("ordner.OVD"))}, 3},
        {{QStringLiteral("--pdf"), p}, 2},
        {{QStringLiteral("--csv"), p, QStringLiteral("--pdf"), p}, 2},
        {{QStringLiteral("--out"), dir.filePath(QStringLiteral("x.csv"))}, 2},
    };
    for (const Case &f : faelle) {
        const Lauf r = kalmeron(QStringList{QStringLiteral("--data"), d} + f.args);
        EXPECT_EQ(r.code, f.code) << qPrintable(f.args.join(QLatin1Char(' ')));
        EXPECT_TRUE(r.out.isEmpty());
        EXPECT_FALSE(r.err.isEmpty()) << "says what went wrong";
    }
}

TEST_F(Documents, HeadlessPdfIsTheCurvePageThenItsText)
{
    const QString p = charge();
    const QString pdf = dir.filePath(QStringLiteral("charge.pdf"));
    const Lauf r = kalmeron({QStringLiteral("--data"), dir.filePath(QStringLiteral("daten")), QStringLiteral("--pdf"), p,
                             QStringLiteral("--out"), pdf});
    ASSERT_EQ(r.code, 0) << r.err.constData();
    EXPECT_TRUE(r.out.isEmpty());
    EXPECT_EQ(seitenLagen(pdf), QStringLiteral("LP"));
    const Lauf text = start(QStringLiteral("pdftotext"), {pdf, QStringLiteral("-")});
    EXPECT_TRUE(text.out.contains("Seite 1"));
    EXPECT_TRUE(text.out.contains("kommt 01 Text 1")) << text.out.constData();
    seitenBilder(pdf, QStringLiteral("pdf_charge"));
}

TEST_F(Documents, ThreeCopiesAlternateImageAndTextAndShortInfoPrintsNoText)
{
    laden(charge());
    ASSERT_GE(Kurve.Info_Text.size(), INFO_MIN_ZEICHEN);
    KM_Kurve fenster;
    fenster.setAttribute(Qt::WA_DeleteOnClose, false);
    fenster.load();
    fenster.resize(1100, 640);
    fenster.show();

    const QString pdf = dir.filePath(QStringLiteral("drei.pdf"));
    {
        QPrinter d(QPrinter::HighResolution);
        setPdfOutput(d, pdf);
        d.setPageOrientation(QPageLayout::Landscape);
        ASSERT_TRUE(printWindow(d, &fenster, 3, true));
    }
    EXPECT_EQ(seitenLagen(pdf), QStringLiteral("LPLPLP"));

    Kurve.Info_Text = QString(40, QLatin1Char('x'));
    {
        QPrinter d(QPrinter::HighResolution);
        setPdfOutput(d, pdf);
        d.setPageOrientation(QPageLayout::Landscape);
        ASSERT_TRUE(printWindow(d, &fenster, 3, true));
    }
    EXPECT_EQ(seitenLagen(pdf), QStringLiteral("LLL"));
}

TEST_F(Documents, ListPagesCarryTheirHeadAndNumber)
{
    laden(charge());
    plant.Pfad[3] = dir.filePath(QStringLiteral("CSV"));
    QDir().mkpath(plant.Pfad[3]);
    ASSERT_TRUE(CSV_EXPORT(true));
    const QString pdf = dir.filePath(QStringLiteral("liste.pdf"));
    {
        QPrinter d(QPrinter::HighResolution);
        setPdfOutput(d, pdf);
        d.setPageOrientation(QPageLayout::Landscape);
        ASSERT_TRUE(printList(d, curveListHead(), Listen.CSV_Text, Listen.CSV_LIST, 1));
    }
    const int seiten = int(Listen.CSV_LIST.size() + DRUCK_ZEILEN_LISTE - 1) / DRUCK_ZEILEN_LISTE;
    EXPECT_EQ(seitenLagen(pdf), QString(seiten, QLatin1Char('L')));
    const QString text = QString::fromUtf8(start(QStringLiteral("pdftotext"), {QStringLiteral("-layout"), pdf,
                                                                                 QStringLiteral("-")}).out);
    for (int s = 1; s <= seiten; ++s)
        EXPECT_TRUE(text.contains(QStringLiteral("Seite %1").arg(s))) << s;
    EXPECT_EQ(text.count(QStringLiteral("Kalmeron: 2401-100-TST, Charge 7")), seiten);
    EXPECT_EQ(text.count(QStringLiteral("Datum")), seiten);
    seitenBilder(pdf, QStringLiteral("pdf_liste"));
}

namespace {

/// The forms of the documents with the main window around them.
class DocumentForms : public Documents {
protected:
    std::unique_ptr<KM_MDI> w;

    void SetUp() override
    {
        Documents::SetUp();
        plant.Pfad[0] = dir.path();
        plant.Pfad[3] = dir.filePath(QStringLiteral("CSV"));
        QDir().mkpath(plant.Pfad[3]);
        w = testFenster(dlg);
    }
    void TearDown() override
    {
        w.reset();
        Documents::TearDown();
    }

    void setLanguage(int s)
    {
        plant.Sprache = u8(s);
        Sprachumschalt();
    }

    /// A batch whose samples carry the currents of 12 heating elements.
    QString stromCharge()
    {
        BatchFile f;
        const QString p = batchPath(21);
        f.open(p);
        writeFurnaceHead(f, t0);
        int nr = SATZ_DATEN_START;
        for (int m = 0; m < 240; ++m) {
            SampleGroup x{i16(300 + m * 2), i16(295 + m * 2), 60, i16(290 + m * 2), 10, 0, 1, 1, 8000, 100};
            const auto g = groupRecords(groupBlock(x), recordTime(t0.addSecs(60 * m)));
            f.write(nr, g.data(), 4);
            nr += 4;
            LogBlock s{};
            s[0] = 160;
            static constexpr int platz[] = {3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14};
            for (int e = 0; e < 12; ++e)
                s[size_t(platz[e])] = i16(std::max(0, 20 + e * 3 + (m < 120 ? m / 4 : 30 - (m - 120) / 6)));
            const auto h = groupRecords(s, recordTime(t0.addSecs(60 * m)));
            f.write(nr, h.data(), 4);
            nr += 4;
        }
        return p;
    }
};

} // namespace

TEST_F(DocumentForms, ValueListWithItsChoiceInGermanAndEnglish)
{
    w->showCurve(charge());
    KM_Kurve *k = w->kurve();
    ASSERT_TRUE(k->keyButton(TASTE_LISTE)->isEnabled());
    QTest::mouseClick(k->keyButton(TASTE_LISTE), Qt::LeftButton);
    KM_Liste *l = w->liste();
    ASSERT_NE(l, nullptr);
    EXPECT_NE(plant.List16_Offen, 0) << "mouse moves over the curve read nothing now";
    const int zeilen = l->CSV_LIST()->count();
    EXPECT_EQ(zeilen, Listen.CSV_LIST.size());
    EXPECT_FALSE(l->CB_Soll(3)->isVisible()) << "a status channel has only its Ist check";
    waitUntil([] { return false; }, 200); // the form lays out its captions
    saveSnapshot(*l->parentWidget(), QStringLiteral("liste_de.png"));

    // Two clicks within the pause: one rebuild, without the set values of channel 0.
    l->CB_Soll(0)->click();
    l->CB_Ist(0)->click();
    l->CB_Ist(0)->click();
    EXPECT_FALSE(Listen.Liste_Gewaehlt);
    ASSERT_TRUE(waitUntil([] { return Listen.Liste_Gewaehlt; }, 3000));
    EXPECT_EQ(Liste_Soll(1), 0);
    EXPECT_FALSE(Listen.CSV_Text[0].startsWith(QStringLiteral("Datum     Zeit    Sollwert  Sollwert")));

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

TEST_F(DocumentForms, SixteenChannelViewOfTheElementCurrents)
{
    w->showCurve(stromCharge());
    KM_Kurve *k = w->kurve();
    ASSERT_TRUE(k->Tast_Strom()->isVisible());
    for (int s : {0, 1}) {
        setLanguage(s);
        KM_View16 v(k);
        v.onOpen();
        v.show();
        EXPECT_EQ(View16.View_Spuren, 18);
        EXPECT_EQ(View16.View_Max, 90);
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

TEST_F(DocumentForms, ElementCurrentViewOverItsFurnace)
{
    plant.Element_Spuren[2] = 12;
    plant.Ofen_Name[2] = QStringLiteral("Vakuumofen 3");
    plant.Ofen_Gross[2] = TRUE16;
    plant.SPS_Wort(2, word::ELEMENT_SCALE) = 60;
    for (int e = 0; e < 12; ++e)
        plant.SPS_Wort(2, word::ELEMENT_CURRENTS + e) = i16(28 + e * 3);
    plant.SPS_Wort(2, word::ELEMENT_CURRENTS + 11) = 75; // above the scale
    for (int s : {0, 1}) {
        setLanguage(s);
        w->showElementView(3);
        KM_SNTStrom *v = w->elementView();
        EXPECT_EQ(v->windowTitle(), QStringLiteral("Strom Heizelemente, Vakuumofen 3"));
        EXPECT_EQ(Strom.bars[11].Stromwert, QStringLiteral("75 A"));
        EXPECT_DOUBLE_EQ(Strom.bars[11].hoehe, Strom.skalaHoehe);
        saveSnapshot(*v->parentWidget(), s == 0 ? QStringLiteral("sntstrom_de.png") : QStringLiteral("sntstrom_en.png"));
    }
    QTest::mouseClick(w->elementView()->zurueckTaste(), Qt::LeftButton);
    EXPECT_FALSE(w->elementView()->parentWidget()->isVisible());
}
