// Printed pages without a printer: the zoom rule of a window's image, the
// text pages of the info text and of the value list with their heads.

#include "curves/print_layout.h"

#include <gtest/gtest.h>

using namespace kal;

namespace {

QString text(const Druck_Zeile &z, int spalte)
{
    for (const Druck_Text &t : z.teile)
        if (t.spalte == spalte)
            return t.text;
    return QStringLiteral("<none>");
}

QString zeilen(int n, int laenge = 30)
{
    QString s;
    for (int i = 1; i <= n; ++i)
        s += QStringLiteral("Zeile %1 ").arg(i, 3).leftJustified(laenge, QLatin1Char('.')) + QStringLiteral("\r\n");
    return s;
}

} // namespace

TEST(DruckZoom, FitsBothDirectionsBetweenTenAndHundred)
{
    struct Case {
        double pb, ph, fb, fh;
        int zoom;
    };
    const Case faelle[] = {
        {1000, 800, 2000, 1000, 50},  // the width decides
        {1000, 800, 1000, 3200, 25},  // the height decides
        {1000, 800, 300, 200, 100},   // a small window would need 333: 100
        {1000, 800, 20000, 9000, 10}, // a large one would need 5: 10
        {1000, 800, 1000, 800, 100},
        {1000, 800, 0, 0, 100},       // a window without size prints at 100
    };
    for (const Case &f : faelle)
        EXPECT_EQ(Druck_Zoom(f.pb, f.ph, f.fb, f.fh), f.zoom) << f.fb << " x " << f.fh;
}

TEST(InfoSeiten, NoPageBelowFortyOneCharactersAndAHeadOnEveryPage)
{
    InfoHead k{QStringLiteral("Temperaturverlauf  /x.OVD"), QStringLiteral("Ofen Test"),
                QStringLiteral("2401-100-TST, Charge 7"), QStringLiteral("Start"), QStringLiteral("Ende")};
    EXPECT_TRUE(infoPages(k, QString(40, QLatin1Char('x'))).empty());
    EXPECT_EQ(infoPages(k, QString(41, QLatin1Char('x'))).size(), 1u);

    // 130 lines at 60 a page: three pages, each with its head and number.
    const auto seiten = infoPages(k, zeilen(130), 60);
    ASSERT_EQ(seiten.size(), 3u);
    for (size_t s = 0; s < 3; ++s) {
        const PrintPage &p = seiten[s];
        EXPECT_TRUE(p[0].gross);
        EXPECT_EQ(QStringList({text(p[0], 1), text(p[1], 50), text(p[2], 8), text(p[2], 30), text(p[3], 30)}),
                  QStringList({k.titel, QStringLiteral("Seite %1").arg(s + 1), k.name, k.charge, k.ende}));
    }
    EXPECT_EQ(seiten[0].size(), 5u + 60u);
    EXPECT_EQ(seiten[2].size(), 5u + 10u);
    EXPECT_EQ(text(seiten[1][5], 10), QStringLiteral("Zeile  61 ").leftJustified(30, QLatin1Char('.')));
}

TEST(ListeSeiten, HeadHeaderRowsAndPageNumbers)
{
    const ListHead k{QStringLiteral("Kalmeron: 2401-100-TST, Charge 7"), QStringLiteral("D2401.OVD"),
                       QStringLiteral("Ofen Test"), QStringLiteral("01.06.2024")};
    const QStringList kopf{QStringLiteral("Datum     Zeit"), QStringLiteral("   [ °C ]")};
    QStringList rows;
    for (int i = 0; i < 81; ++i)
        rows << QStringLiteral("row %1").arg(i);
    const auto seiten = listPages(k, kopf, rows, 40);
    ASSERT_EQ(seiten.size(), 3u);
    for (size_t s = 0; s < 3; ++s) {
        const PrintPage &p = seiten[s];
        EXPECT_EQ(QStringList({text(p[0], 10), text(p[0], 80), text(p[0], 120), text(p[1], 10), text(p[1], 120),
                               text(p[3], 10), text(p[4], 10)}),
                  QStringList({k.titel, k.datei, QStringLiteral("Seite %1").arg(s + 1), k.name, "Print  01.06.2024",
                               kopf[0], kopf[1]}));
    }
    EXPECT_EQ(text(seiten[1][5], 10), QStringLiteral("row 40"));
    EXPECT_EQ(seiten[2].size(), 5u + 1u);
    // An empty list prints its head once.
    EXPECT_EQ(listPages(k, kopf, {}, 40).size(), 1u);
    EXPECT_EQ(printWidth(seiten), 120 + 17 - 1);
}
