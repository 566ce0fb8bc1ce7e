// Reading the site text file and writing the table file of the language table.

#include "config/language_files.h"

#include "config/languages.h"
#include "config/paths.h"
#include "core/conversions.h"

#include <QFile>

namespace kal {

namespace {

// File prefixes by column; columns 3 and 4 are crossed against their text.
const char *const PREFIX[SPRACHEN] = {"DE", "EN", "FR", "SP", "IT", "NL"};

constexpr int TEXT_BREITE = 40;     ///< text field of the table file
constexpr int MELD_NNN_ERSTE = 101; ///< NNN of message 1
constexpr int MELD_NNN_LETZTE = 132; ///< NNN of message 32
// Channel-name rows: the channel tables use these words as fixed-width
// names, so a site text for them is padded to the row's width again.
constexpr int KANAL_NAME_ERSTE = 161;
constexpr int KANAL_NAME_LETZTE = 171;

int prefixColumn(const QString &line)
{
    for (int col = 0; col < SPRACHEN; ++col)
        if (line.startsWith(QLatin1String(PREFIX[col])))
            return col;
    return -1;
}

bool isAsciiDigit(QChar c)
{
    return c.unicode() >= '0' && c.unicode() <= '9';
}

/// The text of a site line for a row: cut to the row's width; the blanks at
/// its end are the padding of a table-file line, not part of the word.
QString siteText(const QString &raw, int row)
{
    const int width = plant.Sprachbreite[row];
    QString text = raw.left(width);
    while (text.endsWith(QLatin1Char(' ')))
        text.chop(1);
    if (!text.isEmpty() && row >= KANAL_NAME_ERSTE && row <= KANAL_NAME_LETZTE)
        text = fixedWidth(text, width);
    return text;
}

} // namespace

bool applySiteLine(const QString &line)
{
    if (line.size() < 9)
        return false;
    const int col = prefixColumn(line);
    if (col < 0 || line[2] != QLatin1Char('_'))
        return false;
    int nnn = 0;
    for (int i = 3; i < 6; ++i) {
        if (!isAsciiDigit(line[i]))
            return false;
        nnn = nnn * 10 + (line[i].unicode() - '0');
    }
    if (line[6] != QLatin1Char(';'))
        return false;
    const QChar digit = line[7];
    if (digit.unicode() < '0' || digit.unicode() > '8')
        return false;
    if (line[8] != QLatin1Char(';'))
        return false;
    const int row = nnn - 1;
    if (row < 0 || row >= SPRACH_IDS)
        return false;

    const QString text = siteText(line.mid(9), row);
    if (nnn >= MELD_NNN_ERSTE && nnn <= MELD_NNN_LETZTE) {
        const int m = nnn - MELD_NNN_ERSTE;
        const int ofenNr = digit.unicode() - '0';
        for (int ofen = 0; ofen < OFEN_MAX; ++ofen)
            if (ofenNr == 0 || ofenNr == ofen + 1)
                plant.Meldtext[m](col, ofen) = text;
    } else {
        plant.Sprachtext(col, row) = text;
    }
    return true;
}

int readSiteTexts(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    const QString all = Latin1Text(file.readAll());
    // A line ends at CR, LF or CR LF, as a text file of any origin may have them.
    int taken = 0;
    int start = 0;
    const int n = all.size();
    for (int i = 0; i <= n; ++i) {
        if (i < n && all[i] != QLatin1Char('\r') && all[i] != QLatin1Char('\n'))
            continue;
        if (applySiteLine(all.mid(start, i - start)))
            ++taken;
        if (i + 1 < n && all[i] == QLatin1Char('\r') && all[i + 1] == QLatin1Char('\n'))
            ++i;
        start = i + 1;
    }
    return taken;
}

void loadSiteTexts()
{
    readSiteTexts(dataFile(MELD_TABELLE_DATEI));
    for (int ofen = 0; ofen < OFEN_MAX; ++ofen) {
        if (plant.Ofen_Typ[ofen + 1] < 0)
            continue;
        plant.Meld_Anzahl[ofen] = 32;
        for (int k = 0; k < 4; ++k)
            plant.Spur(ofen, k) = QStringLiteral("Spur %1").arg(k + 1);
        plant.Spur_Titel(ofen, 0).clear();
        plant.Spur_Titel(ofen, 1).clear();
    }
}

QByteArray languageTableRecord(int row)
{
    const QString nnn = QStringLiteral("%1").arg(row + 1, 3, 10, QLatin1Char('0'));
    const QString ww = QString::number(plant.Sprachbreite[row] + 100).right(2);
    QString record;
    for (int col = 0; col < SPRACHEN; ++col) {
        record += QLatin1String(PREFIX[col]) + QLatin1Char('_') + nnn + QLatin1Char(';') + ww +
                  QLatin1Char(';') + fixedWidth(plant.Sprachtext(col, row), TEXT_BREITE) +
                  QLatin1String("\r\n");
    }
    return Latin1Bytes(record);
}

bool writeLanguageTable(const QString &path)
{
    QByteArray all;
    all.reserve(SPRACH_IDS * SPRACH_SATZ);
    for (int row = 0; row < SPRACH_IDS; ++row)
        all += languageTableRecord(row);
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        return false;
    return file.write(all) == all.size();
}

} // namespace kal
