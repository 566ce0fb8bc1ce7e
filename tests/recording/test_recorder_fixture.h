#pragma once
// Helpers of the recording tests, on real files in a temporary folder, and a
// plant of two furnaces for the recorder tests: furnace 1 headed on Modbus
// (trigger at 400, 40 words), furnace 2 plain (trigger at 90). Blocks are
// offered as the word decoder hands them over: the words in the image,
// Datum_Log from the stamp, Log_Neu.

#include "core/dates.h"
#include "core/hooks.h"
#include "core/plant_state.h"
#include "support/files.h"
#include "support/fresh.h"
#include "support/hex.h"
#include "recording/batch_file.h"
#include "recording/recorder.h"
#include "recording/recorder_block.h"

#include <QDir>
#include <QFile>
#include <QStringList>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <vector>

namespace kal::test {

/// Two characters a word from w[from] on, first character in the low byte.
template <typename Words>
void text(Words &w, int from, const char *t)
{
    for (int i = 0; t[i] && t[i + 1]; i += 2)
        w[from++] = static_cast<i16>(static_cast<uint8_t>(t[i]) | (static_cast<uint8_t>(t[i + 1]) << 8));
}

/// A temporary folder, and the bytes of the files in it.
class FileTest : public FreshProcess {
protected:
    QTemporaryDir dir;

    QString pathOf(const QString &name) const { return dir.filePath(name); }
    static QByteArray fileContents(const QString &p) { return readFile(p); }
    static void rawFile(const QString &p, const QByteArray &bytes) { writeFile(p, bytes); }
    /// Record nr (from 1) of a file's bytes.
    static QByteArray recordAt(const QByteArray &b, int nr) { return b.mid((nr - 1) * 22, 22); }
};

/// The PLC's packed time stamp (word A, word B).
struct PlcStamp {
    i16 a, b;
};
inline PlcStamp stamp(int tag, int monat, int jahr, int stunde, int minute, int sekunde)
{
    return {static_cast<i16>((tag << 11) | (monat << 7) | (jahr - 2000)),
            static_cast<i16>((stunde << 11) | (minute << 5) | (sekunde / 2))};
}
/// 12.03.2024 08:mm:ss, the day of most tests.
inline PlcStamp stampAt(int minute, int sekunde = 0) { return stamp(12, 3, 2024, 8, minute, sekunde); }

/// A 40-word block of kind `art` whose words differ in both bytes:
/// w[n] = n * 256 + 0xA0 + n from w8 on, and w3..w7 as given below.
inline std::vector<i16> block(i16 art, i32 charge, PlcStamp s)
{
    std::vector<i16> w(40);
    w[0] = art;
    w[1] = s.a;
    w[2] = s.b;
    w[3] = 0x1234;
    w[4] = -2;
    w[5] = 0x0342;
    w[6] = static_cast<i16>(charge & 0xFFFF);
    w[7] = static_cast<i16>(charge >> 16);
    for (int n = 8; n < 40; ++n)
        w[n] = static_cast<i16>(n * 256 + 0xA0 + n);
    return w;
}

class RecorderTest : public FileTest {
protected:
    QStringList &logList = scr.logList;
    std::vector<int> online;

    static constexpr int KOPF = 0;    ///< furnace index of the headed furnace
    static constexpr int EINFACH = 1; ///< furnace index of the plain furnace

    void SetUp() override
    {
        ASSERT_TRUE(dir.isValid());
        FreshProcess::SetUp();
        hooks.Charge_Online = [this](int f) { online.push_back(f); };
        plant.Pfad[0] = dir.path();
        plant.Charge_Ordner[0] = testFolder("2024");
        plant.Charge_Ordner[1] = testFolder("Spiegel");

        plant.Ofen_Typ[KOPF + 1] = static_cast<i16>(0x8000 | 500);
        plant.Adr_Trigger[KOPF] = 400;
        plant.Ofen_Name[KOPF] = QStringLiteral("Ofen Eins");
        plant.Ofen_Serie[KOPF] = QStringLiteral("2401-017-ABC");
        for (int p = 0; p < KENNUNG_PAARE; ++p) {
            plant.Ofen_Kennung_A(KOPF + 1, p) = static_cast<i16>(0x0100 + p);
            plant.Ofen_Kennung_B(KOPF + 1, p) = static_cast<i16>(0x0200 + p);
        }
        plant.Meld_Text(KOPF, 0) = QStringLiteral("Tuer offen");

        plant.Ofen_Typ[EINFACH + 1] = 3;
        plant.Adr_Trigger[EINFACH] = 90;
        plant.Ofen_Serie[EINFACH] = QStringLiteral("2312-004-XY");
    }

    QString testFolder(const char *name) const
    {
        const QString p = pathOf(QString::fromLatin1(name));
        QDir().mkpath(p);
        return p;
    }

    /// The block as the decoder hands it to the recorder.
    void anbieten(int f, std::vector<i16> w)
    {
        w.resize(40);
        for (int n = 0; n < 40; ++n)
            plant.SPS_Wort(f, plant.Adr_Trigger[f] + n) = w[n];
        plant.Datum_Log[f] = SPS_Datum(w[1], w[2]);
        plant.Log_Neu[f] = plant.SPS_Datum_OK;
        Charge_Schreiben(f + 1);
        plant.Log_Neu[f] = 0;
    }
    void offerGroup(i32 charge, PlcStamp s) { anbieten(KOPF, block(154, charge, s)); }

    QString batchPath(const QString &name) const { return QDir(plant.Charge_Ordner[0]).filePath(name); }
    QStringList batchFiles() const { return QDir(plant.Charge_Ordner[0]).entryList(QDir::Files, QDir::Name); }
};

} // namespace kal::test
