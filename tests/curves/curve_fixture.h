#pragma once
// Batch files for the curve tests, written with the recorder's own record
// builders into a temporary folder: a headed furnace with five channels
//   0 set value °C (direct), 1 zone °C with set curve and controller
//   (set 600, actual 610, output 620), 2 output % (actual 611), 3 state
//   (status channel), 4 pressure bar with one decimal (actual 613)
// and plain files of single samples.

#include "config/languages.h"
#include "core/plant_state.h"
#include "curves/curve_store.h"
#include "recording/batch_file.h"
#include "recording/batch_record.h"
#include "support/fresh.h"

#include <QDateTime>
#include <QTemporaryDir>
#include <array>
#include <gtest/gtest.h>
#include <vector>

#include <ostream>

/// Readable QString values in the failure messages.
inline void PrintTo(const QString &s, std::ostream *os)
{
    *os << '"' << s.toStdString() << '"';
}

namespace kal::test {

inline std::array<i16, 12> identityA()
{
    return {i16(0x8000 | 0x0100 | 10), i16(0xC000 | 0x0100 | 11), i16(0x0700 | 12), i16(13),
            i16(0x2000 | 0x0900 | 4), 0, 0, 0, 0, 0, 0, 0};
}
inline std::array<i16, 12> identityB()
{
    return {43, i16(0x1000 | 600), i16(0x1000 | 601), i16(0x1000 | 602), i16(0x1000 | 603), 0, 0, 0, 0, 0, 0, 0};
}

/// What one sample group of the test furnace carries.
struct SampleGroup {
    i16 soll = 0, ist = 0, out = 0; ///< channel 0 set and actual (°C), output % of channel 1
    i16 zone = 0;                   ///< actual of channel 1
    i16 druck = 0;                  ///< channel 4, tenths of a bar
    i16 meld = 0;                   ///< first message word
    int seg = 0, art = 0;           ///< segment number and kind
    i16 ziel = 0, rest = 0;         ///< segment target and remaining value
};

inline i16 setPair(int lo, int hi)
{
    return i16(uint16_t((lo & 0xFF) | ((hi & 0xFF) << 8)));
}

inline LogBlock groupBlock(const SampleGroup &p)
{
    LogBlock w{};
    w[0] = 154;
    w[3] = p.soll;
    w[4] = p.ist;
    w[5] = p.out;
    w[8] = p.meld;
    w[10] = p.soll;          // set value of channel 1 (word 600)
    w[20] = p.zone;          // actual of channel 1 (word 610)
    w[21] = p.out;           // channel 2 (word 611)
    w[23] = p.druck;         // channel 4 (word 613)
    w[30] = p.rest;
    w[31] = setPair(0, p.out);  // output of channel 1: the high byte (word 620)
    w[36] = setPair(p.art, p.seg);
    w[37] = p.ziel;
    return w;
}

inline RecordTime recordTime(const QDateTime &d)
{
    return timeOfDate(d);
}

class CurveTest : public FreshProcess {
protected:
    QTemporaryDir dir;
    QDateTime t0 = QDateTime(QDate(2024, 3, 5), QTime(8, 0, 0), Qt::UTC);

    void SetUp() override
    {
        FreshProcess::SetUp();
        buildLanguageTable();
        Sprachumschalt();
        ASSERT_TRUE(dir.isValid());
    }

    /// A batch file name of the test furnace's serial "2401-100-TST".
    QString batchPath(int nummer = 7) const
    {
        return dir.filePath(QStringLiteral("D2401100TST") + QString::number(nummer).rightJustified(6, QLatin1Char('0')) +
                            QStringLiteral("050324.OVD"));
    }

    /// The head of the test furnace: name, identity, 32 message texts.
    static void writeFurnaceHead(BatchFile &f, const QDateTime &t)
    {
        std::vector<QString> texte;
        for (int i = 0; i < 32; ++i)
            texte.push_back(QStringLiteral("Text %1").arg(i + 1));
        for (const auto &[nr, s] : headerRecords(QStringLiteral("Ofen Test"), recordTime(t), identityA(), identityB(), texte, true))
            f.write(nr, s);
    }

    /// A headed file with one group per probe, 60 s apart from t0.
    QString headedFile(const std::vector<SampleGroup> &proben, const QString &pfad = QString())
    {
        const QString p = pfad.isEmpty() ? batchPath() : pfad;
        BatchFile f;
        f.open(p);
        writeFurnaceHead(f, t0);
        int nr = SATZ_DATEN_START;
        for (size_t i = 0; i < proben.size(); ++i) {
            const auto g = groupRecords(groupBlock(proben[i]), recordTime(t0.addSecs(60 * qint64(i))));
            f.write(nr, g.data(), 4);
            nr += 4;
        }
        return p;
    }

    /// Appends records at the end of a file.
    static void appendRecords(const QString &p, const std::vector<BatchRecord> &saetze)
    {
        BatchFile f;
        f.open(p);
        f.write(std::max(f.count() + 1, SATZ_DATEN_START), saetze.data(), int(saetze.size()));
    }

    /// A single sample of kind `art`.
    static BatchRecord singleSample(const QDateTime &t, std::array<i16, 7> w, i16 art = 1)
    {
        BatchRecord s;
        s.Satz_Art = art;
        setRecordTime(s, timeOfDate(t));
        s.Wert = w;
        return s;
    }

    /// A plain batch of two single samples of the older kind 110, a minute
    /// apart: message 21 (word 1, bit 4) comes with the first and goes with the second.
    QString plainFile()
    {
        const QString p = batchPath(10);
        appendRecords(p, {singleSample(t0, {250, 248, 35, 120, 2300, 1, 0x0010}, 110),
                          singleSample(t0.addSecs(60), {251, 249, 0, 0, 50, 2, 0}, 110)});
        return p;
    }

    void laden(const QString &p)
    {
        plant.Kurve_Datei = p;
        Charge_geladen();
    }
};

} // namespace kal::test
