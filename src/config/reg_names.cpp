#include "config/reg_names.h"

#include "config/paths.h"
#include "core/conversions.h"
#include "core/plant_state.h"

#include <QFile>

#include <algorithm>

namespace kal {

namespace {

const QString ZEILENENDE = QStringLiteral("\r\n");

/// Value of `key` between `von` and `bis`, up to the end of its line; empty
/// when the key is not there.
QString valueOf(const QString &text, const QString &key, qsizetype von, qsizetype bis)
{
    const qsizetype p = text.indexOf(key, von);
    if (p < 0 || p >= bis)
        return QString();
    const qsizetype start = p + key.size();
    qsizetype ende = text.indexOf(ZEILENENDE, start);
    if (ende < 0)
        ende = text.size();
    return Text_Sauber(text.mid(start, ende - start));
}

/// All lines of the file, each followed by CR LF; empty without the file.
QString fileLines(const QString &path, bool &da)
{
    QFile f(path);
    da = f.open(QIODevice::ReadOnly);
    if (!da)
        return QString();
    QString text;
    const QString inhalt = Latin1Text(f.readAll());
    QString zeile;
    for (qsizetype i = 0; i < inhalt.size(); ++i) {
        const QChar c = inhalt[i];
        if (c == QLatin1Char('\r') || c == QLatin1Char('\n')) {
            // CR LF, a lone CR and a lone LF each end one line
            if (c == QLatin1Char('\r') && i + 1 < inhalt.size() && inhalt[i + 1] == QLatin1Char('\n'))
                ++i;
            text += zeile + ZEILENENDE;
            zeile.clear();
        } else {
            zeile += c;
        }
    }
    if (!zeile.isEmpty())
        text += zeile + ZEILENENDE;
    return text;
}

} // namespace

void Reg_Namen_Lesen()
{
    Reg_Namen_Lesen(dataFile(REG_NAMEN_DATEI));
}

void Reg_Namen_Lesen(const QString &path)
{
    for (int f = 0; f < OFEN_MAX; ++f)
        plant.Reg_Einheit(f, 0) = QStringLiteral("°C");

    bool da = false;
    const QString text = fileLines(path, da);
    if (!da)
        return;

    const QString serie_Key = QStringLiteral("SERIE=");
    qsizetype pos = text.indexOf(serie_Key);
    while (pos >= 0) {
        const qsizetype naechste = text.indexOf(serie_Key, pos + serie_Key.size());
        const qsizetype ende = naechste < 0 ? text.size() : naechste;
        const QString serie = valueOf(text, serie_Key, pos, ende);

        int ofen = -1;
        if (!serie.isEmpty())
            for (int f = 0; f < OFEN_MAX && ofen < 0; ++f)
                if (plant.Ofen_Serie[f] == serie)
                    ofen = f;

        if (ofen >= 0) {
            for (int k = 1; k <= 6; ++k) {
                const QString name = valueOf(text, QStringLiteral("REG_Name_%1=").arg(k), pos, ende);
                if (!name.isEmpty()) {
                    plant.Reg_Name(ofen, k - 1) = name;
                    plant.Reg_Anzahl[ofen] = std::max<i16>(plant.Reg_Anzahl[ofen], i16(k));
                }
                const QString einheit = valueOf(text, QStringLiteral("REG_Einh_%1=").arg(k), pos, ende);
                if (!einheit.isEmpty()) {
                    plant.Reg_Einheit(ofen, k - 1) = einheit;
                    plant.Reg_Anzahl[ofen] = std::max<i16>(plant.Reg_Anzahl[ofen], i16(k));
                }
            }
        }
        pos = naechste;
    }
}

} // namespace kal
