#pragma once
// Whole files of a test's temporary folder, written and read as bytes.

#include <QByteArray>
#include <QFile>
#include <QString>
#include <gtest/gtest.h>

namespace kal::test {

inline void writeFile(const QString &path, const QByteArray &bytes)
{
    QFile f(path);
    ASSERT_TRUE(f.open(QIODevice::WriteOnly | QIODevice::Truncate)) << path.toStdString();
    f.write(bytes);
}

/// The bytes of a file; empty when it cannot be read.
inline QByteArray readFile(const QString &path)
{
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

} // namespace kal::test
