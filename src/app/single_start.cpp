#include "app/single_start.h"

#include "station/single_station.h"

#include <QFileInfo>
#include <QGuiApplication>
#include <QMessageBox>
#include <cstdio>

namespace kal {

QString batchArgument(const QString &arg, bool *ok)
{
    *ok = true;
    if (arg.isEmpty())
        return QString();
    const QFileInfo fi(arg);
    if (!fi.isFile() || !fi.isReadable()) {
        std::fprintf(stderr, "kalmeron: %s: no batch file that can be read\n", qPrintable(arg));
        *ok = false;
        return QString();
    }
    return fi.absoluteFilePath();
}

int claimOrHandOver(const QString &batch)
{
    QString why;
    switch (claimDataFolder(batch, &why)) {
    case FolderClaim::Own:
        return -1;
    case FolderClaim::HandedOver:
        return 0;
    case FolderClaim::Refused:
        break;
    }
    std::fprintf(stderr, "kalmeron: %s\n", qPrintable(QString(why).replace(QLatin1Char('\n'), QLatin1Char(' '))));
    // Started from the desktop menu nobody reads stderr; a headless run has
    // nobody to click the box away.
    const QString platform = QGuiApplication::platformName();
    if (platform != QLatin1String("offscreen") && platform != QLatin1String("minimal"))
        QMessageBox::critical(nullptr, QStringLiteral("Kalmeron"), why);
    return EXIT_FOLDER_LOCKED;
}

} // namespace kal
