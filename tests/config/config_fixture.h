#pragma once
// A clean plant with its data folder in a temporary folder, the German texts,
// scripted dialogs, no hooks and a pinned clock (17 May 2024).

#include "config/languages.h"
#include "config/paths.h"
#include "core/dates.h"
#include "core/plant_state.h"
#include "support/files.h"
#include "support/fresh.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace kal::test {

class ConfigFixture : public FreshProcess {
protected:
    QTemporaryDir tmp;

    void SetUp() override
    {
        FreshProcess::SetUp();
        buildLanguageTable();
        setNow(QDateTime(QDate(2024, 5, 17), QTime(10, 30, 0), Qt::UTC));
        plant.Daten_Ordner_Option = tmp.filePath(QStringLiteral("data"));
        Pfade_Setzen();
    }
    void TearDown() override
    {
        FreshProcess::TearDown();
        QDir::setCurrent(QDir::tempPath());
    }

    QString configPath() const { return dataFile(QStringLiteral("Kalmeron.DAT")); }
    QByteArray configBytes() const { return readFile(configPath()); }
    void writeConfig(const QByteArray &bytes) const { writeFile(configPath(), bytes); }
    /// The log book, USB and CSV folders at their defaults: reading asks nothing.
    void makeDefaultFolders() const
    {
        for (const char *d : {"LogBuch", "USB", "CSV"})
            QDir().mkpath(dataFile(QString::fromLatin1(d)));
    }
    QStringList shown(const QString &kind) const
    {
        QStringList out;
        for (const auto &s : dlg.shown)
            if (s.kind == kind)
                out << s.text;
        return out;
    }
};

/// Byte offset of a field of the configuration file: record nr (from 1), offset in the record.
inline int at(int nr, int offset)
{
    return (nr - 1) * 34 + offset;
}

} // namespace kal::test
