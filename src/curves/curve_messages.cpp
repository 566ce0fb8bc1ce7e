// The readable texts of a batch: one line per programme segment, and one line
// per message that came or went.

#include "config/text_ids.h"
#include "core/conversions.h"
#include "curves/curve_store.h"

namespace kal {

namespace {

const QString CRLF = QStringLiteral("\r\n");

/// Writes `text` into `zeile` from the 1-based position `pos` on.
void writeAt(QString &zeile, int pos, const QString &text)
{
    for (int i = 0; i < text.size() && pos - 1 + i < zeile.size(); ++i)
        zeile[pos - 1 + i] = text[i];
}

QString rightChars(const QString &t, int n)
{
    return t.rightJustified(n, QLatin1Char(' ')).right(n);
}

} // namespace

SegmentFields readSegmentCode(const QString &code)
{
    const QString c = fixedWidth(code.right(28), 28);
    auto feld = [&](int pos, int n) { return i16(leadingNumber(c.mid(pos, n))); };
    SegmentFields f;
    f.nr = feld(0, 2);
    f.art = feld(2, 1);
    f.ziel = feld(3, 5);
    f.rest = feld(8, 5);
    f.wert3 = feld(13, 3);
    f.wert2 = feld(16, 3);
    f.wort35 = feld(19, 4);
    f.wert4 = feld(23, 5);
    return f;
}

QString gasUnit(bool &zehntel)
{
    // Litres a minute for the furnaces that measure them, with one decimal;
    // cubic metres an hour otherwise; percent without a gas channel.
    const QString einheit4 = plant.Kanal_Einheit(0, 4);
    zehntel = Kurve.Charge_Serie.contains(QLatin1String("ARH")) || einheit4 == QLatin1String("L/Min");
    if (zehntel)
        return QStringLiteral(" L/M");
    if (einheit4.trimmed().isEmpty())
        return QStringLiteral("%   ");
    return QStringLiteral("m³/h");
}

namespace {

void readSegments()
{
    const EntryList &l = Kurve.listen.Meldliste[3];
    bool liter = false;
    const QString gas = gasUnit(liter);

    int letzter = 0;
    bool gesehen = false;
    for (int k = 0; k < l.size(); ++k) {
        const int s = l.wert[size_t(k)];
        if (s == letzter)
            continue;
        if (s >= 1 && s <= KURVE_SEGMENTE) {
            const SegmentFields f = readSegmentCode(Segment_Code(l.seg[size_t(k)]));
            const QString text = QStringLiteral("S") + QString::asprintf("%02d", s) + QStringLiteral(" B") +
                                 Segment_Zeile(f, gas, liter);
            Kurve.Segment_Text[size_t(s)] = text;
            Kurve.Info_Text += text + CRLF;
            for (int u = letzter + 1; u < s; ++u)
                if (u >= 1 && Kurve.Segment_Text[size_t(u)].isEmpty())
                    Kurve.Segment_Text[size_t(u)] = QStringLiteral("S") + QString::asprintf("%02d", u);
            gesehen = true;
        } else if (s > KURVE_SEGMENTE || gesehen) {
            Kurve.Meld_Label = true;
            break;
        }
        letzter = s;
    }
}

void readMessageEntries()
{
    const auto &M = Kurve.listen.Meldliste;
    const int n = std::min({M[0].size(), M[1].size(), M[2].size()});
    std::array<uint16_t, 3> vorher{};
    const QString kommt = Text_Id(text::COMES).trimmed();
    const QString geht = Text_Id(text::GOES).trimmed();
    for (int k = 0; k < n; ++k) {
        for (int w = 0; w < 3; ++w) {
            const uint16_t jetzt = uint16_t(M[size_t(w)].wert[size_t(k)]);
            const uint16_t anders = jetzt ^ vorher[size_t(w)];
            vorher[size_t(w)] = jetzt;
            if (anders == 0)
                continue;
            const QString zeit = entryText(Kurve.listen, EntryListKind::Meld, w, k).left(17);
            for (int bit = 0; bit < 16; ++bit) {
                if (!(anders & (1u << bit)))
                    continue;
                const int nr = w * 16 + bit + 1;
                Kurve.Info_Text += zeit + QStringLiteral("  ") + ((jetzt & (1u << bit)) ? kommt : geht) +
                                   QLatin1Char(' ') + QString::asprintf("%02d", nr) + QLatin1Char(' ') +
                                   Kurve.Meld_Text[size_t(nr - 1)].trimmed() + CRLF;
            }
        }
    }
}

} // namespace

QString Segment_Zeile(const SegmentFields &s, const QString &gasEinheit, bool gasZehntel)
{
    const int art = (s.art >= 1 && s.art <= 6) ? s.art : 0;
    QString z(54, QLatin1Char(' '));
    writeAt(z, 1, QString::number(art) + QLatin1Char(' ') + fixedWidth(plant.Befehl_Name[art], 9));
    if (art >= 1 && art <= 4)
        writeAt(z, 13, rightChars(formatNumber(s.ziel / 10.0, QStringLiteral("####0")), 5) + QStringLiteral("°C"));
    else if (art == 5)
        writeAt(z, 13, rightChars(formatNumber(s.ziel, QStringLiteral("#0")), 2) + QStringLiteral(" S "));
    switch (art) {
    case 1:
        writeAt(z, 21, rightChars(formatNumber(s.rest / 10.0, QStringLiteral("###0.0")), 5) + QStringLiteral("K/h"));
        break;
    case 2:
        writeAt(z, 21, rightChars(formatNumber(s.rest / 10.0, QStringLiteral("##0.0")), 5) + QStringLiteral("h"));
        break;
    case 3:
        writeAt(z, 24, rightChars(formatNumber(s.wert2, QStringLiteral("##0")), 3) + QStringLiteral("%"));
        break;
    case 4: writeAt(z, 24, QStringLiteral("100%")); break;
    case 5:
        writeAt(z, 24, rightChars(formatNumber(s.rest, QStringLiteral("##0")), 3) + QStringLiteral("x"));
        break;
    default: break;
    }
    if (art >= 1 && art <= 5) {
        const QString gas = gasZehntel ? formatNumber(s.wert3 / 10.0, QStringLiteral("0.0"))
                                       : formatNumber(s.wert3, QStringLiteral("##0"));
        writeAt(z, 32, rightChars(gas, 3) + fixedWidth(gasEinheit, 4));
        writeAt(z, 40, rightChars(formatNumber(s.wort35, QStringLiteral("###0")), 4));
    }
    if (art == 1 && s.wert4 > 0)
        writeAt(z, 45, formatNumber(s.wert4, QStringLiteral("####0")) + QStringLiteral("kWh"));
    return z;
}

void Eintrag_Meldung()
{
    // The texts are made anew from the whole lists, so a refresh of a running
    // batch shows every line once.
    Kurve.Info_Text.clear();
    Kurve.Meld_Label = false;
    for (auto &t : Kurve.Segment_Text)
        t.clear();
    readSegments();
    readMessageEntries();
}

} // namespace kal
