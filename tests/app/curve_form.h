#pragma once
// The curve window's forms over the main window, with batches in a year
// folder: a heat treatment of eight hours with its info text, a plain batch
// of single samples and a batch with the currents of 12 heating elements.

#include "curves/curve_fixture.h"
#include "demo_station.h"

#include <QDir>

namespace kal::test {

class CurveForm : public CurveTest {
protected:
    std::unique_ptr<KM_MDI> w;
    QString jahr;

    void SetUp() override
    {
        CurveTest::SetUp();
        plant.Pfad[0] = dir.path();
        plant.Pfad[3] = dir.filePath(QStringLiteral("CSV"));
        jahr = dir.filePath(QStringLiteral("2024"));
        QDir().mkpath(jahr);
        plant.Charge_Ordner[0] = jahr;
        plant.Ofen_Serie[0] = QStringLiteral("2401-100-TST");
        plant.Ofen_Bezeichnung[0] = QStringLiteral("Haertofen 1");
        plant.Ofen_Server[0] = TRUE16;
        plant.Ofen_Serie[2] = QStringLiteral("2402-300-TST");
        plant.Ofen_Bezeichnung[2] = QStringLiteral("Anlassofen 3");
        plant.Ofen_Server[2] = TRUE16;
        plant.Kurve_Option = TRUE16;
        plant.Datum_Von = QStringLiteral("01.01.2024");
        w = testFenster(dlg);
    }
    void TearDown() override
    {
        w.reset();
        CurveTest::TearDown();
    }

    /// A heat treatment of eight hours: ramp to 850 °C, hold, cool; zone and
    /// pressure follow, a door message comes and goes.
    QString heatTreatment(const QString &name)
    {
        std::vector<SampleGroup> p;
        for (int m = 0; m < 480; ++m) {
            SampleGroup x;
            const int soll = m < 150 ? 200 + m * 4 : (m < 330 ? 850 : std::max(200, 850 - (m - 330) * 4));
            x.soll = i16(soll);
            x.ist = i16(soll - 12 + (m % 7));
            x.zone = i16(x.ist - 25);
            x.out = i16(m < 150 ? 85 : (m < 330 ? 40 : 5));
            x.druck = i16(12 + (m / 40) % 4);
            x.seg = m < 150 ? 1 : (m < 330 ? 2 : 3);
            x.art = m < 150 ? 1 : (m < 330 ? 2 : 1);
            x.ziel = x.seg == 1 ? 8500 : (x.seg == 2 ? 8500 : 2000);
            x.rest = x.seg == 1 ? 2600 : 30;
            x.meld = (m > 200 && m < 220) ? 0x0010 : 0;
            p.push_back(x);
        }
        const QString f = headedFile(p, QDir(jahr).filePath(name));
        const auto text = batchDataRecords(QStringLiteral("Auftrag 4711 Zahnraeder 16MnCr5    Kunde Muster GmbH"));
        appendRecords(f, {text.begin(), text.end()});
        return f;
    }

    /// A batch whose samples carry the currents of 12 heating elements.
    QString stromCharge()
    {
        BatchFile f;
        const QString p = batchPath(21);
        f.open(p);
        writeFurnaceHead(f, t0);
        int nr = SATZ_DATEN_START;
        for (int m = 0; m < 240; ++m) {
            SampleGroup x{i16(300 + m * 2), i16(295 + m * 2), 60, i16(290 + m * 2), 10, 0, 1, 1, 8000, 100};
            const auto g = groupRecords(groupBlock(x), recordTime(t0.addSecs(60 * m)));
            f.write(nr, g.data(), 4);
            nr += 4;
            LogBlock s{};
            s[0] = 160;
            static constexpr int platz[] = {3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14};
            for (int e = 0; e < 12; ++e)
                s[size_t(platz[e])] = i16(std::max(0, 20 + e * 3 + (m < 120 ? m / 4 : 30 - (m - 120) / 6)));
            const auto h = groupRecords(s, recordTime(t0.addSecs(60 * m)));
            f.write(nr, h.data(), 4);
            nr += 4;
        }
        return p;
    }
    QString plainBatch(const QString &name)
    {
        const QString f = QDir(jahr).filePath(name);
        std::vector<BatchRecord> s;
        for (int m = 0; m < 300; ++m) {
            const i16 soll = i16(m < 100 ? 100 + m * 5 : 600);
            s.push_back(singleSample(t0.addSecs(60 * m), {soll, i16(soll - 8), i16(m < 100 ? 70 : 30), 0, 0, i16(m < 290 ? 1 : 0), 0}, 110));
        }
        appendRecords(f, s);
        return f;
    }
};

} // namespace kal::test
