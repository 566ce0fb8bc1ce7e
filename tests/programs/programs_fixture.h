#pragma once
// A fresh plant with a temporary data folder, the language table, a pinned
// clock and helpers to set up a furnace and a program in the working copy.

#include "config/languages.h"
#include "config/paths.h"
#include "core/dates.h"
#include "programs/program_model.h"
#include "support/files.h"
#include "support/fresh.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace kal::test {

class ProgramsTest : public FreshProcess {
protected:
    QTemporaryDir dir;
    const QDateTime jetzt = QDateTime(QDate(2026, 11, 23), QTime(9, 15, 42), Qt::UTC);

    void SetUp() override
    {
        FreshProcess::SetUp();
        ASSERT_TRUE(dir.isValid());
        plant.Pfad[0] = dir.path();
        plant.Prog_Ordner = dir.filePath(QStringLiteral("Programme"));
        QDir().mkpath(plant.Prog_Ordner);
        buildLanguageTable();
        Sprachumschalt();
        setNow(jetzt);
    }

    /// Furnace number n with a type word, an option word (its two bytes as the
    /// version text) and a kind; the working copy is set to it.
    void Ofen(int n, i16 typ, int option = 0, const QString &art = QString())
    {
        plant.Ofen_Typ[n] = typ;
        setFurnaceLayout(n - 1, typ);
        plant.Ofen_Version[n - 1] = QString(QChar(option & 0xFF)) + QChar((option >> 8) & 0xFF);
        plant.Ofen_Name[n - 1] = QStringLiteral("Ofen %1").arg(n);
        plant.Datei_Art[n] = art.isEmpty() ? (typ < 0 ? QStringLiteral("ADD %1").arg(n) : QStringLiteral("DEN0%1").arg(n)) : art;
        setProgramFurnace(n);
    }

    /// Segment k of the working copy.
    ProgramSegment &S(int k) { return prog.Prog.Segment[size_t(k)]; }
    void Seg(int k, int befehl, int soll, int halte = 0, int grad = 0, int maxOut = 100, int ausgang = 0,
             int zuluft = 0, int analog = 0)
    {
        ProgramSegment &s = S(k);
        s.Befehl = u8(befehl);
        s.Sollwert = i16(soll);
        s.Haltezeit = i16(halte);
        s.Gradient = i16(grad);
        s.MaxOut = u8(maxOut);
        s.Ausgang = u8(ausgang);
        s.Zuluft = i16(zuluft);
        s.Analog = i16(analog);
    }

    /// Record r (from 1) of a program file's bytes.
    static QByteArray Satz(const QByteArray &b, int r) { return b.mid((r - 1) * 19, 19); }
};

} // namespace kal::test
