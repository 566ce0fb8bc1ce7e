#include "link/write_journal.h"

#include "config/paths.h"
#include "core/word_map.h"

#include <QFile>
#include <QStringList>
#include <memory>

namespace kal {

namespace {

/// Command word values the panel keys also send.
constexpr int BEFEHL_START = 1;
constexpr int BEFEHL_STOP = 2;
constexpr int BEFEHL_QUITT = 4;

struct Journal {
    Table<QString, OFEN_MAX> anlass; ///< cause of the queued write per furnace
    std::unique_ptr<QFile> datei;    ///< open for appending while the path stays
    QStringList wartend;             ///< lines not yet written
};

Journal &journal()
{
    static Journal j;
    return j;
}

StateReset reset{[] { journal() = Journal{}; }};

/// Opens the journal for appending when it is not open on the current path.
bool openJournal(Journal &j)
{
    const QString name = journalFile();
    if (j.datei && j.datei->isOpen() && j.datei->fileName() == name)
        return true;
    j.datei = std::make_unique<QFile>(name);
    if (j.datei->open(QIODevice::WriteOnly | QIODevice::Append | QIODevice::Text))
        return true;
    j.datei.reset();
    return false;
}

/// Writes the waiting lines; they stay waiting when the file refuses them.
void flushLines(Journal &j)
{
    if (plant.Pfad[0].isEmpty() || !openJournal(j))
        return;
    QByteArray bytes;
    for (const QString &z : j.wartend)
        bytes += z.toUtf8() + '\n';
    if (j.datei->write(bytes) != bytes.size() || !j.datei->flush()) {
        j.datei.reset(); // opened again with the next line
        return;
    }
    j.wartend.clear();
}

} // namespace

QString journalFile()
{
    return dataFile(JOURNAL_DATEI);
}

void nameWriteCause(int ofen, const QString &anlass)
{
    journal().anlass[ofen] = anlass;
}

QString causeFromAddress(int ofen, int adresse, const QList<i16> &worte)
{
    if (worte.isEmpty())
        return QString();
    const int wert = worte.first();
    const bool einzeln = worte.size() == 1;
    if (adresse == word::COMMAND && einzeln) {
        switch (wert) {
        case BEFEHL_QUITT: return QStringLiteral("acknowledge");
        case BEFEHL_START: return QStringLiteral("program start");
        case BEFEHL_STOP: return QStringLiteral("program stop");
        default: return QStringLiteral("command %1").arg(wert);
        }
    }
    if (adresse == word::CLOCK_STEP && einzeln)
        return QStringLiteral("clock step %1").arg(wert);
    if (!Table<i16, OFEN_MAX>::valid(ofen))
        return QString();
    if (adresse == plant.Adr_Trigger[ofen] && einzeln && wert == 0)
        return QStringLiteral("log block taken");
    if (adresse == plant.Prog_Page[ofen] && einzeln)
        return QStringLiteral("page word %1").arg(wert);
    return QString();
}

QString journalLine(const QDateTime &zeit, int ofenNr, const QString &serie, int adresse,
                      const QList<i16> &worte, const QString &anlass)
{
    QStringList hex;
    for (i16 w : worte)
        hex << QStringLiteral("%1").arg(quint16(w), 4, 16, QLatin1Char('0')).toUpper();
    // A tab or line end inside a text would break the columns.
    auto sauber = [](QString t) {
        t.replace(QLatin1Char('\t'), QLatin1Char(' '));
        t.replace(QLatin1Char('\n'), QLatin1Char(' '));
        t.replace(QLatin1Char('\r'), QLatin1Char(' '));
        return t;
    };
    return QStringList{zeit.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss.zzz")),
                       QString::number(ofenNr),
                       sauber(serie.trimmed()),
                       QString::number(adresse),
                       QString::number(worte.size()),
                       hex.join(QLatin1Char(' ')),
                       sauber(anlass)}
        .join(QLatin1Char('\t'));
}

void writeJournal(int ofen, int adresse, const QList<i16> &worte, const QString &anlass, bool queue)
{
    Journal &j = journal();
    const bool ofenGueltig = Table<i16, OFEN_MAX>::valid(ofen);
    QString grund = anlass;
    if (grund.isEmpty() && queue && ofenGueltig) {
        grund = j.anlass[ofen];
        j.anlass[ofen].clear();
    }
    if (grund.isEmpty())
        grund = causeFromAddress(ofen, adresse, worte);
    const QString serie = ofenGueltig ? plant.Ofen_Serie[ofen] : QString();
    j.wartend.append(journalLine(QDateTime::currentDateTime(), ofen + 1, serie, adresse, worte, grund));
    while (j.wartend.size() > JOURNAL_WARTEND_MAX)
        j.wartend.removeFirst();
    flushLines(j);
}

} // namespace kal
