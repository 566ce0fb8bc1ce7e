#include "config/message_files.h"

#include "core/conversions.h"
#include "core/dialogs.h"
#include "core/plant_state.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>

namespace kal {

namespace {

constexpr int SPUR_SATZ = 49;  ///< first record of the track names (32 form)
constexpr int SPUR_ZEILE = 33; ///< first list line of the track names

QByteArray textRecord(const QString &text)
{
    return Latin1Bytes(fixedWidth(text, MLD_SATZ));
}

bool checkFolder(const QString &ordner, QString &meldung)
{
    if (!ordner.isEmpty() && QFileInfo(ordner).isDir())
        return true;
    dialogs().message(QStringLiteral("Auswahl des Quellverzeichnisses!"));
    meldung = QStringLiteral("Ordner ") + ordner + QStringLiteral(" nicht gefunden!");
    return false;
}

} // namespace

int mldCount(int saetze)
{
    return saetze >= 49 && saetze < 52 ? 48 : 32;
}

QString mldLine(int nr, const QString &text)
{
    return QStringLiteral("%1:%2").arg(nr, 2, 10, QLatin1Char('0')).arg(text);
}

bool readMld(const QString &pfad, MldList &liste)
{
    QFile f(pfad);
    if (!f.open(QIODevice::ReadOnly))
        return false;
    const QByteArray b = f.readAll();
    const int saetze = int((b.size() + MLD_SATZ - 1) / MLD_SATZ);
    auto text = [&](int nr) {
        // A record past the end, or cut short, reads as blanks.
        return Text_Sauber(Latin1Text(b.mid(qsizetype(nr - 1) * MLD_SATZ, MLD_SATZ))).left(MLD_TEXT).trimmed();
    };
    liste.Kopf = b.left(MLD_SATZ).leftJustified(MLD_SATZ, ' ');
    liste.Anzahl = mldCount(saetze);
    liste.Zeilen.clear();
    for (int n = 1; n <= liste.Anzahl; ++n)
        liste.Zeilen << mldLine(n, text(n + 1));
    if (liste.Anzahl == 32)
        for (int k = 0; k < 4; ++k)
            liste.Zeilen << mldLine(SPUR_ZEILE + k, text(SPUR_SATZ + k));
    return true;
}

QByteArray mldBytes(const MldList &liste)
{
    auto text = [&](int zeile) { return liste.Zeilen.value(zeile - 1).mid(3).left(MLD_TEXT).trimmed(); };
    QByteArray b = liste.Kopf.isEmpty() ? textRecord(QString()) : liste.Kopf.left(MLD_SATZ).leftJustified(MLD_SATZ, ' ');
    for (int n = 1; n <= liste.Anzahl; ++n)
        b += textRecord(text(n));
    if (liste.Anzahl == 32) {
        for (int nr = 34; nr < SPUR_SATZ; ++nr)
            b += textRecord(QString());
        for (int k = 0; k < 4; ++k)
            b += textRecord(text(SPUR_ZEILE + k));
    }
    return b;
}

QString loadMld(const QString &ordner, const QString &name, MldList &liste)
{
    QString meldung;
    if (!checkFolder(ordner, meldung))
        return meldung;
    const QString pfad = QDir(ordner).filePath(name);
    if (!QFileInfo::exists(pfad) || !readMld(pfad, liste))
        return QStringLiteral("Quellfile:   ") + QDir::toNativeSeparators(pfad) + QStringLiteral(">>> Bitte anlegen!");
    return QString();
}

bool MLD_XXX_Sichern(const QString &ordner, const MldList &liste, QString &meldung)
{
    meldung.clear();
    if (!checkFolder(ordner, meldung))
        return false;
    QFile f(QDir(ordner).filePath(MLD_XXX_DATEI));
    const QByteArray b = mldBytes(liste);
    if (!f.open(QIODevice::WriteOnly | QIODevice::Truncate) || f.write(b) != b.size()) {
        meldung = QStringLiteral("ERROR: ") + QDir::toNativeSeparators(f.fileName());
        return false;
    }
    return true;
}

MldList mldFromStation(int ofen, int anzahl)
{
    MldList liste;
    liste.Anzahl = anzahl == 48 ? 48 : 32;
    for (int n = 1; n <= liste.Anzahl; ++n)
        liste.Zeilen << mldLine(n, plant.Meld_Text(ofen, n - 1).left(MLD_TEXT).trimmed());
    if (liste.Anzahl == 32)
        for (int k = 0; k < 4; ++k)
            liste.Zeilen << mldLine(SPUR_ZEILE + k, plant.Spur(ofen, k).trimmed());
    return liste;
}

bool DateiCopy(const QString &quelle, const QString &ziel)
{
    const QDir von(QDir(quelle).filePath(QStringLiteral("DATEN")));
    const QDir nach(QDir(ziel).filePath(QStringLiteral("DATEN")));
    bool ok = QDir().mkpath(nach.path());
    // The card tree: every folder of the card folder, made on the card.
    QDirIterator it(quelle, QDir::Dirs | QDir::NoDotAndDotDot, QDirIterator::Subdirectories);
    while (it.hasNext())
        ok = QDir().mkpath(QDir(ziel).filePath(QDir(quelle).relativeFilePath(it.next()))) && ok;

    auto kopieren = [&](const QString &name) {
        const QString z = nach.filePath(name);
        QFile::remove(z);
        return QFile::copy(von.filePath(name), z);
    };
    for (int n = 1; n <= 100; ++n) {
        const QString name = QStringLiteral("PROG%1.txt").arg(n);
        if (QFileInfo::exists(von.filePath(name)))
            ok = kopieren(name) && ok;
    }
    for (const char *name : {"Prog.txt", "PID.txt", "COD_M02.txt", "MLD_M02.txt", "COD_P01.txt", "MLD_P01.txt"})
        ok = kopieren(QString::fromLatin1(name)) && ok;
    if (!ok)
        dialogs().message(QStringLiteral("CF-Karte nicht vollständig kopiert!"));
    return ok;
}

} // namespace kal
