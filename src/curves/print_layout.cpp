#include "curves/print_layout.h"

#include "config/text_ids.h"
#include "core/dates.h"
#include "curves/curve_store.h"

#include <QFileInfo>
#include <algorithm>

namespace kal {

namespace {

Druck_Zeile zeile(std::initializer_list<Druck_Text> teile, bool gross = false)
{
    return Druck_Zeile{std::vector<Druck_Text>(teile), gross};
}

QString seite(int n)
{
    return QStringLiteral("Seite ") + QString::number(n);
}

} // namespace

int Druck_Zoom(double druckBreite, double druckHoehe, double fensterBreite, double fensterHoehe)
{
    if (fensterBreite <= 0 || fensterHoehe <= 0)
        return ZOOM_MAX;
    const double a = druckBreite / (fensterBreite / 100.0);
    const double b = druckHoehe / (fensterHoehe / 100.0);
    return std::clamp(int(std::min(a, b)), ZOOM_MIN, ZOOM_MAX);
}

std::vector<PrintPage> infoPages(const InfoHead &kopf, const QString &info, int zeilen)
{
    std::vector<PrintPage> seiten;
    if (info.size() < INFO_MIN_ZEICHEN)
        return seiten;
    QStringList text = info.split(QStringLiteral("\r\n"));
    if (!text.isEmpty() && text.last().isEmpty())
        text.removeLast(); // the text ends with a line break
    zeilen = std::max(1, zeilen);
    auto newPage = [&] {
        PrintPage s;
        // The title in its large size may run past column 50: the page
        // number stands on the line below it.
        s.push_back(zeile({{1, kopf.titel}}, true));
        s.push_back(zeile({{50, seite(int(seiten.size()) + 1)}}));
        s.push_back(zeile({{8, kopf.name}, {30, kopf.charge}}));
        s.push_back(zeile({{8, kopf.start}, {30, kopf.ende}}));
        s.push_back(Druck_Zeile{});
        seiten.push_back(s);
    };
    int n = 0;
    for (const QString &t : text) {
        if (n % zeilen == 0)
            newPage();
        seiten.back().push_back(zeile({{10, t}}));
        ++n;
    }
    return seiten;
}

std::vector<PrintPage> listPages(const ListHead &kopf, const QStringList &kopfZeilen, const QStringList &zeilen,
                                      int proSeite)
{
    std::vector<PrintPage> seiten;
    proSeite = std::max(1, proSeite);
    auto newPage = [&] {
        PrintPage s;
        s.push_back(zeile({{10, kopf.titel}, {80, kopf.datei}, {120, seite(int(seiten.size()) + 1)}}));
        s.push_back(zeile({{10, kopf.name}, {120, QStringLiteral("Print  ") + kopf.datum}}));
        s.push_back(Druck_Zeile{});
        for (const QString &k : kopfZeilen)
            s.push_back(zeile({{10, k}}));
        seiten.push_back(s);
    };
    newPage();
    int n = 0;
    for (const QString &z : zeilen) {
        if (n > 0 && n % proSeite == 0)
            newPage();
        seiten.back().push_back(zeile({{10, z}}));
        ++n;
    }
    return seiten;
}

InfoHead curveInfoHead()
{
    InfoHead k;
    k.titel = Kurve.Titel;
    k.name = Kurve.Label_Name.trimmed();
    k.charge = Kurve.Label_Charge;
    k.start = Text_Id(text::START).trimmed() + QLatin1Char(' ') + Kurve.Label_Erster;
    k.ende = Text_Id(text::END).trimmed() + QLatin1Char(' ') + Kurve.Label_Letzter + QStringLiteral("   ") +
             Text_Id(text::DURATION).trimmed() + QLatin1Char(' ') + Kurve.Label_Dauer;
    return k;
}

ListHead curveListHead()
{
    ListHead k;
    k.titel = QStringLiteral("Kalmeron: ") + Kurve.Label_Charge;
    k.datei = QFileInfo(plant.Kurve_Datei).fileName();
    k.name = Kurve.Label_Name.trimmed();
    k.datum = Datum_Text(now(), QStringLiteral("TTMMJJJJ"));
    return k;
}

int printWidth(const std::vector<PrintPage> &seiten)
{
    int breite = 1;
    for (const PrintPage &s : seiten)
        for (const Druck_Zeile &z : s)
            for (const Druck_Text &t : z.teile)
                if (!z.gross)
                    breite = std::max<int>(breite, t.spalte + int(t.text.size()) - 1);
    return breite;
}

} // namespace kal
