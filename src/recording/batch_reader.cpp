#include "recording/batch_reader.h"

#include "core/conversions.h"
#include "core/dates.h"

#include <QDate>
#include <algorithm>
#include <limits>

namespace kal {

namespace {

/// Files of this furnace keep their data from record 40 on and count as type 0.
const QString QRV_Pfad = QStringLiteral("0708001QRV");

bool isText(i16 art)
{
    return art >= Satz_Text && art <= Satz_Text_Ende;
}

/// Records of a group behind its first one, and the element current group:
/// they carry words, not a time, in bytes 2..7.
bool skipsDateTest(i16 art)
{
    return (art >= 155 && art <= 157) || (art >= 160 && art <= 163);
}

/// The date of six time bytes, built the way the station builds every date
/// from fields (days and months added to the first of January, so a day past
/// the month's end runs on). Hour, minute and second are in range here.
QDateTime dateOfTime(const RecordTime &z)
{
    int tag = z.Tag;
    int monat = z.Monat;
    return Datum_Bau(tag, monat, z.Jahr, z.Stunde, z.Minute, z.Sekunde);
}

QString charPair(u8 a, u8 b)
{
    const char c[2] = {static_cast<char>(a), static_cast<char>(b)};
    return Latin1Text(QByteArray(c, 2));
}

} // namespace

int64_t minutesValue(const RecordTime &z)
{
    QDate d(2000 + z.Jahr, z.Monat, z.Tag);
    if (!d.isValid())
        d = dateOfTime(RecordTime{z.Tag, z.Monat, z.Jahr, 0, 0, 0}).date();
    return d.toJulianDay() * 1440 + z.Stunde * 60 + z.Minute;
}

BatchLayout detectLayout(BatchFile &datei)
{
    BatchLayout L;
    L.satzZahl = datei.count();
    std::vector<BatchRecord> kopf;
    datei.readRun(1, SATZ_DATEN_START - 1, kopf); // records 1..39

    L.titel = wordText(kopf[0], -1, 6);

    const BatchRecord &v = kopf[4];
    if (v.Wert[6] == Satz_Version_Marke) {
        L.versionDa = true;
        L.version = timeText(v) + wordText(v, -1, 5);
    }

    // The identity records must come in the order 2, 3, 4; the first one
    // without its marker ends the test.
    for (int r = 0; r < 3; ++r) {
        const BatchRecord &s = kopf[1 + r];
        if (s.Tag != Marke_Kennung[r])
            break;
        const int p = 4 * r;
        L.kennungA[p] = s.Satz_Art;
        L.kennungB[p] = s.Wert[0];
        for (int i = 1; i < 4; ++i) {
            L.kennungA[p + i] = s.Wert[2 * i - 1];
            L.kennungB[p + i] = s.Wert[2 * i];
        }
        ++L.kennungSaetze;
    }
    L.kopf = L.kennungSaetze == 3;

    const bool qrv = datei.path().contains(QRV_Pfad);
    if (L.kopf) {
        L.dateiTyp = qrv ? 0 : -10;
        L.meldTexte.reserve(KOPF_MELDTEXTE);
        for (int i = 0; i < KOPF_MELDTEXTE; ++i) {
            const BatchRecord &m = kopf[7 + i];
            L.meldTexte.push_back(timeText(m) + wordText(m, -1, 6));
        }
    } else {
        forEachRecord(datei, 5, L.satzZahl, [&](int, const BatchRecord &s) {
            L.alt110 = s.Satz_Art == Satz_Alt;
            return !L.alt110;
        });
    }
    L.startSatz = (L.dateiTyp < 0 || qrv) ? SATZ_DATEN_START : 5;
    return L;
}

void addBatchDataText(QString &chargendaten, const BatchRecord &satz)
{
    if (chargendaten.size() < CHARGENDATEN_LAENGE)
        chargendaten = fixedWidth(chargendaten, CHARGENDATEN_LAENGE);
    const int pos = (satz.Satz_Art - Satz_Text) * 10;
    const QString t = timeText(satz) + wordText(satz, 0, 1);
    for (int i = 0; i < t.size() && pos + i < CHARGENDATEN_LAENGE; ++i)
        chargendaten[pos + i] = t[i];
}

BatchSpan scanTimeRange(BatchFile &datei, const BatchLayout &layout)
{
    BatchSpan S;
    scanTimeRange(datei, layout, layout.startSatz, S);
    return S;
}

void scanTimeRange(BatchFile &datei, const BatchLayout &layout, int von, BatchSpan &S)
{
    if (S.chargendaten.size() < CHARGENDATEN_LAENGE)
        S.chargendaten = fixedWidth(S.chargendaten, CHARGENDATEN_LAENGE);
    if (layout.satzZahl < 2)
        return;

    int64_t ersterWert = std::numeric_limits<int64_t>::max();
    int64_t letzterWert = std::numeric_limits<int64_t>::min();
    RecordTime ersterZ = S.ersterZeit, letzterZ = S.letzterZeit;
    if (S.zeitSaetze > 0) {
        ersterWert = minutesValue(ersterZ);
        letzterWert = minutesValue(letzterZ);
    }

    forEachRecord(datei, std::max(von, layout.startSatz), layout.satzZahl, [&](int, const BatchRecord &satz) {
        const i16 art = satz.Satz_Art;
        if (isText(art)) {
            addBatchDataText(S.chargendaten, satz);
            ++S.textSaetze;
            return true;
        }
        // A headed file takes its times only from the first records of the
        // groups and the program text (and the old single samples in a -10 file).
        const bool zaehlt = layout.dateiTyp >= 0 || art == Satz_Charge || art == Satz_Programm ||
                            art == Satz_Strom || (art == Satz_Alt && layout.dateiTyp == -10);
        if (!zaehlt)
            return true;
        RecordTime z = timeOf(satz);
        if (z.Stunde == 24)
            z.Stunde = 0;
        // The program text keeps characters in Minute and Sekunde.
        if (art != Satz_Programm && (z.Sekunde > 59 || z.Minute > 59))
            return true;
        if (z.Stunde > 24 || z.Tag == 0 || z.Tag > 31 || z.Monat == 0 || z.Monat > 12 || z.Jahr < 6 ||
            z.Jahr > 99)
            return true;
        if (art == Satz_Programm) {
            S.programmDa = true;
            S.programmText = charPair(satz.Minute, satz.Sekunde) + wordText(satz, 0, 6);
            return true;
        }
        ++S.zeitSaetze;
        const int64_t w = minutesValue(z);
        if (w < ersterWert) {
            ersterWert = w;
            ersterZ = z;
        }
        if (w > letzterWert) {
            letzterWert = w;
            letzterZ = z;
        }
        return true;
    });

    if (S.zeitSaetze > 0) {
        S.ersterZeit = ersterZ;
        S.letzterZeit = letzterZ;
        S.erster = dateOfTime(ersterZ);
        S.letzter = dateOfTime(letzterZ);
    }
}

int walkRecords(BatchFile &datei, const BatchLayout &layout, int satzLetzter,
                const std::function<bool(const AcceptedRecord &)> &fn)
{
    if (layout.satzZahl < 2)
        return satzLetzter;
    int letzter = satzLetzter;
    BatchRecord vorher;
    AcceptedRecord a;
    forEachRecord(datei, layout.startSatz, layout.satzZahl, [&](int nr, const BatchRecord &satz) {
        // A record equal in all fields to the one before is the same sample
        // stored twice (stored, then not acknowledged before a restart).
        const bool neu = !(satz == vorher);
        vorher = satz;
        if (!neu || isText(satz.Satz_Art))
            return true;
        if (!skipsDateTest(satz.Satz_Art)) {
            if (satz.Jahr < 5 || satz.Tag < 1 || satz.Tag > 31 || satz.Monat < 1 || satz.Monat > 12 ||
                satz.Stunde > 23 || satz.Minute > 59)
                return true;
            a.zeit = timeOf(satz);
            a.zeitDa = true;
        }
        if (nr <= satzLetzter)
            return true;
        letzter = nr;
        a.nr = nr;
        a.satz = satz;
        return fn(a);
    });
    return letzter;
}

BatchRead readBatch(const QString &pfad, int satzLetzter)
{
    BatchRead R;
    R.satzLetzter = satzLetzter;
    BatchFile datei;
    if (!datei.openRead(pfad))
        return R;
    R.gefunden = true;
    R.layout = detectLayout(datei);
    R.span = scanTimeRange(datei, R.layout);
    if (R.layout.satzZahl >= 2)
        R.saetze.reserve(std::max(0, R.layout.satzZahl - R.layout.startSatz + 1));
    R.satzLetzter = walkRecords(datei, R.layout, satzLetzter, [&](const AcceptedRecord &a) {
        R.saetze.push_back(a);
        return true;
    });
    return R;
}

} // namespace kal
