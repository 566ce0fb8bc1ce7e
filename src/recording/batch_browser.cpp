#include "recording/batch_browser.h"

#include "config/paths.h"
#include "config/text_ids.h"
#include "core/conversions.h"
#include "core/dates.h"
#include "core/dialogs.h"
#include "core/plant_state.h"
#include "recording/batch_file.h"
#include "recording/batch_reader.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStorageInfo>
#include <QTextStream>
#include <algorithm>
#include <cmath>
#include <exception>

namespace kal {

namespace {

constexpr int NAME_LAENGE = 27;
constexpr int GROESSE_SPALTE = 10;  ///< the size column at the end of a line
constexpr int USER_ORDNER_MAX = 40; ///< longest folder the user log keeps

/// Characters from..to (1-based, inclusive) of a text.
QString charsOf(const QString &t, int von, int bis)
{
    return t.mid(von - 1, bis - von + 1);
}

QDateTime newYear(int jahr)
{
    return QDateTime(QDate(jahr, 1, 1), QTime(0, 0), Qt::UTC);
}

/// The earliest date when a folder tells no year: 01.01.2000.
QDateTime noYearDate()
{
    int tag = 1, monat = 1;
    return Datum_Bau(tag, monat, 0, 0, 0, 0);
}

QString dateText(const QDateTime &d)
{
    return Datum_Text(d, QStringLiteral("TTMMJJJJ"));
}

/// The year a folder is named by (its last four characters), 0 none.
int folderYear(const QString &ordner)
{
    return int(leadingNumber(ordner.right(4)));
}

QDateTime earliestDate()
{
    return dateValue(plant.Datum_Von);
}

bool fileThere(const QString &pfad)
{
    return !pfad.isEmpty() && QFileInfo(pfad).isFile();
}

} // namespace

FileNameParts parseBatchName(const QString &name)
{
    FileNameParts n;
    if (name.size() != NAME_LAENGE || !name.endsWith(QLatin1String(".OVD")))
        return n;
    int nrVon, nrBis, serie;
    if (name.startsWith(QLatin1String("DS")) || name.startsWith(QLatin1String("US"))) {
        n.import = true;
        nrVon = 13, nrBis = 17, serie = 3;
    } else if (name.startsWith(QLatin1Char('D'))) {
        nrVon = 12, nrBis = 17, serie = 2;
    } else {
        return n;
    }
    n.ok = true;
    n.nummerText = charsOf(name, nrVon, nrBis);
    n.nummer = int32_t(leadingNumber(n.nummerText));
    n.serie = charsOf(name, serie, serie + 3) + QLatin1Char('-') + charsOf(name, serie + 4, serie + 6) +
              QLatin1Char('-') + charsOf(name, serie + 7, serie + 9);
    n.datum = charsOf(name, 22, 23) + QLatin1Char('/') + charsOf(name, 20, 21) + QLatin1Char('/') +
              charsOf(name, 18, 19);
    n.tag = int(leadingNumber(charsOf(name, 18, 19)));
    n.monat = int(leadingNumber(charsOf(name, 20, 21)));
    n.jahr = int(leadingNumber(charsOf(name, 22, 23))) + 2000;
    return n;
}

int matchingFurnace(const QString &serie)
{
    for (int i = 0; i < OFEN_MAX; ++i) {
        const QString &o = plant.Ofen_Serie[i];
        bool gleich;
        if (serie.size() == 12 && o.size() == 12)
            gleich = serie.mid(0, 4) == o.mid(0, 4) && serie.mid(5, 3) == o.mid(5, 3) && serie.mid(9, 3) == o.mid(9, 3);
        else
            gleich = serie == o;
        if (gleich)
            return i + 1;
    }
    return 0;
}

std::vector<BrowserFile> folderFiles(const QString &ordner)
{
    std::vector<BrowserFile> v;
    const QFileInfoList liste = QDir(ordner).entryInfoList(QDir::Files, QDir::Name);
    for (const QFileInfo &f : liste) {
        BrowserFile d;
        d.name = f.fileName();
        QFile datei(f.filePath());
        if (datei.open(QIODevice::ReadOnly))
            d.kB = int(std::lround(double(datei.size()) / 1024.0));
        v.push_back(d);
    }
    return v;
}

std::vector<BrowserLine> Liste_Aufbauen(const std::vector<BrowserFile> &dateien)
{
    if (plant.Datum_Von.isEmpty()) {
        const int jahr = folderYear(plant.Browser_Ordner);
        plant.Datum_Von = dateText(jahr >= 2005 ? newYear(jahr) : noYearDate());
        plant.Datum_Bis = plant.Datum_Von;
    }
    const QDateTime von = earliestDate();

    struct Entry {
        QString text;
        int kB;
    };
    std::vector<Entry> sortiert;
    for (const BrowserFile &d : dateien) {
        const FileNameParts n = parseBatchName(d.name);
        if (!n.ok)
            continue;
        const int treffer = matchingFurnace(n.serie);
        bool genommen = false;
        for (int k = 0; k <= 9 && !genommen; ++k) {
            const int bit = 1 << k;
            if (plant.Ofen_Filter != 0 && (!(plant.Ofen_Filter & bit) || treffer != k + 1))
                continue;
            if (n.tag < 1 || n.monat < 1 || n.jahr < 2006)
                continue;
            int tag = n.tag, monat = n.monat;
            const QDateTime datum = Datum_Bau(tag, monat, n.jahr, 0, 0, 0);
            genommen = !von.isValid() || DateDiff(QStringLiteral("d"), von, datum) >= 0;
        }
        if (!genommen)
            continue;
        const QString N = QString::number(n.nummer).rightJustified(6, QLatin1Char('0'));
        const QString Z = QString::number(treffer).right(1);
        const QString M = treffer > 0 ? fixedWidth(plant.Ofen_Bezeichnung[treffer - 1], 16) : QString(16, QLatin1Char(' '));
        QString text;
        if (plant.Sort_Art == 0)
            text = n.datum + QLatin1Char(' ') + Z + QLatin1Char(':') + M + QStringLiteral(" Charge ") + N +
                   QLatin1Char(' ') + d.name;
        else
            text = Text_Id(text::BATCH) + QLatin1Char(' ') + N + QLatin1Char(' ') + Z + QLatin1Char(':') + M +
                   QLatin1Char(' ') + n.datum + QLatin1Char(' ') + d.name;
        sortiert.push_back({text, d.kB});
    }
    // The sorted list compares without regard to case; it is read from its
    // end, so the newest or highest comes first.
    std::stable_sort(sortiert.begin(), sortiert.end(), [](const Entry &a, const Entry &b) {
        return QString::compare(a.text, b.text, Qt::CaseInsensitive) < 0;
    });
    std::vector<BrowserLine> zeilen;
    zeilen.reserve(sortiert.size());
    for (auto it = sortiert.rbegin(); it != sortiert.rend(); ++it) {
        const QString groesse = (QString(7, QLatin1Char(' ')) + QString::number(it->kB) + QStringLiteral("kB"))
                                    .right(GROESSE_SPALTE);
        zeilen.push_back({it->text + groesse, it->kB});
    }
    return zeilen;
}

QString OfenCheck_Text(int i)
{
    if (plant.Ofen_Server[i] == 0)
        return QString();
    return QString::number(i + 1).right(1) + QLatin1Char(':') + plant.Ofen_Bezeichnung[i];
}

QString Datum_IN_Text()
{
    return Datum_Text(earliestDate(), QStringLiteral("TTMMJJ"));
}

bool Datum_IN_LostFocus(const QString &text)
{
    QDateTime d = dateValue(text.trimmed());
    if (!d.isValid())
        return false;
    d.setTime(QTime(12, 0));
    const QDateTime heute = now();
    if (d > heute)
        d = heute;
    if (d.date().year() < 2005)
        d = noYearDate();
    plant.Datum_Von = dateText(d);
    plant.Datum_Bis = plant.Datum_Von;
    return true;
}

void changeFolder(const QString &pfad)
{
    plant.Browser_Ordner = pfad;
    const int jahr = folderYear(pfad);
    if (jahr >= 2005)
        plant.Datum_Von = dateText(newYear(jahr));
    else
        plant.Datum_Von = dateText(noYearDate());
    plant.Datum_Bis = plant.Datum_Von;
}

bool chooseLine(const QString &zeile)
{
    const QString name = zeile.left(std::max<qsizetype>(0, zeile.size() - GROESSE_SPALTE)).right(NAME_LAENGE);
    if (!name.startsWith(QLatin1Char('D')) && !name.startsWith(QLatin1Char('U')))
        return false;
    const FileNameParts n = parseBatchName(name);
    plant.Kurve_Datei = joinPath(plant.Browser_Ordner, name);
    const QString stamm = QFileInfo(name).completeBaseName();
    plant.CSV_Datei = joinPath(plant.Pfad[3], stamm + QStringLiteral(".CSV"));
    plant.CSV_Info_Datei = joinPath(plant.Pfad[3], QStringLiteral("I") + stamm.mid(1) + QStringLiteral(".CSV"));
    plant.Wahl_Charge = n.nummer;
    plant.Wahl_Serie = n.serie;
    return true;
}

QString INFO_anzeigen()
{
    QString info(CHARGENDATEN_LAENGE, QLatin1Char(' '));
    try {
        BatchFile datei;
        if (fileThere(plant.Kurve_Datei) && datei.openRead(plant.Kurve_Datei) && datei.count() >= 5)
            forEachRecord(datei, 1, datei.count(), [&](int, const BatchRecord &s) {
                if (s.Satz_Art >= Satz_Text && s.Satz_Art <= Satz_Text_Ende)
                    addBatchDataText(info, s);
                return true;
            });
    } catch (const std::exception &) {
        // A file that can't be read shows an empty box.
    }
    plant.Info_Text = info;
    return info.mid(0, 40) + QLatin1Char('\n') + info.mid(40, 40) + QLatin1Char('\n') + info.mid(80, 40) +
           QLatin1Char('\n') + info.mid(120, 40);
}

void readUserFile()
{
    plant.User_Datei = dataFile(USERLOG_DATEI);
    plant.User_Ordner.clear();
    QFile f(plant.User_Datei);
    if (!f.open(QIODevice::ReadOnly | QIODevice::Text))
        return;
    QTextStream in(&f);
    in.setEncoding(QStringConverter::Latin1);
    plant.User_Ordner = in.readLine().left(USER_ORDNER_MAX);
    plant.User_Laufwerk = in.readLine();
    if (!folderExists(plant.User_Ordner))
        plant.User_Ordner.clear();
}

UserButton User_Taste_Setzen()
{
    UserButton k;
    const QString &b = plant.Browser_Ordner;
    const QString &standard = plant.Charge_Ordner[0];
    auto laden = [&] {
        k.zustand = USER_STANDARD;
        k.text = QStringLiteral("Load Default ") + standard;
        k.an = true;
    };
    if (b != standard && b != plant.User_Ordner) {
        if (b.size() >= 6) {
            k.zustand = USER_SICHERN;
            k.text = QStringLiteral("Save ") + b;
            k.an = true;
        }
    } else if (b != standard) {
        laden();
    } else if (!plant.User_Ordner.isEmpty() && folderExists(plant.User_Ordner)) {
        if (plant.Ist_User_Ordner != 0) {
            laden();
        } else {
            k.zustand = USER_OEFFNEN;
            k.text = QStringLiteral("Open ") + plant.User_Ordner;
            k.an = true;
        }
    }
    plant.User_Taste = u8(k.zustand);
    return k;
}

void USER_LogButton_Click(int zustand)
{
    try {
        switch (zustand) {
        case USER_OEFFNEN: {
            QFile f(plant.User_Datei);
            if (!f.open(QIODevice::ReadOnly | QIODevice::Text))
                return;
            QTextStream in(&f);
            in.setEncoding(QStringConverter::Latin1);
            plant.Browser_Ordner = in.readLine();
            plant.Browser_Laufwerk = in.readLine();
            break;
        }
        case USER_STANDARD:
            plant.Browser_Ordner = plant.Charge_Ordner[0];
            plant.Browser_Laufwerk = driveOf(plant.Browser_Ordner);
            break;
        case USER_SICHERN: {
            QFile f(plant.User_Datei);
            if (!f.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Text))
                return;
            QTextStream out(&f);
            out.setEncoding(QStringConverter::Latin1);
            out << plant.Browser_Ordner << "\r\n" << plant.Browser_Laufwerk << "\r\n";
            plant.User_Ordner = plant.Browser_Ordner;
            break;
        }
        default: break;
        }
    } catch (const std::exception &) {
        // The button's errors are ignored: the folder stays as it was.
    }
}

bool loadBrowser()
{
    try {
        readUserFile();
    } catch (const std::exception &) {
        plant.User_Ordner.clear();
    }
    if (!folderExists(plant.Browser_Ordner))
        plant.Browser_Ordner = plant.Charge_Ordner[0];
    if (plant.Browser_Laufwerk.isEmpty())
        plant.Browser_Laufwerk = driveOf(plant.Browser_Ordner);
    if (!folderExists(plant.Browser_Ordner)) {
        dialogs().message(QStringLiteral("Ordner ") + plant.Browser_Ordner + QStringLiteral(" nicht gefunden!\n") +
                          QStringLiteral("Auswahl des Quellverzeichnisses!"));
        return false;
    }
    plant.Ist_User_Ordner = flag(plant.Browser_Ordner == plant.User_Ordner);
    return true;
}

QString driveOf(const QString &ordner)
{
    const QStorageInfo s(ordner);
    return s.isValid() ? s.rootPath() : QDir::rootPath();
}

} // namespace kal
