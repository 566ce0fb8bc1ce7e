// kalmeron: the supervision station.
//
//   kalmeron [--data DIR] [--modbus-port N] [--demo] [--view] [--help] [BATCH.OVD]
//   kalmeron [--data DIR] --csv BATCH.OVD [--out FILE]
//   kalmeron [--data DIR] --pdf BATCH.OVD --out FILE.pdf

#include "app/demo.h"
#include "app/headless_export.h"
#include "app/single_start.h"
#include "core/plant_state.h"
#include "station/shutdown.h"
#include "station/single_station.h"
#include "views/KM_MDI.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QIcon>
#include <QSocketNotifier>
#include <QTimer>
#include <csignal>
#include <cstdio>
#include <sys/socket.h>
#include <unistd.h>

namespace {

int g_signalPipe[2] = {-1, -1};

void onSignal(int)
{
    const char c = 1;
    [[maybe_unused]] auto n = ::write(g_signalPipe[1], &c, 1);
}

/// SIGTERM and SIGINT end the station the way its menu does.
void endOnSignals(QObject *parent)
{
    if (::socketpair(AF_UNIX, SOCK_STREAM, 0, g_signalPipe) != 0)
        return;
    auto *notifier = new QSocketNotifier(g_signalPipe[0], QSocketNotifier::Read, parent);
    QObject::connect(notifier, &QSocketNotifier::activated, parent, [] { kal::Programm_Ende(); });
    std::signal(SIGTERM, onSignal);
    std::signal(SIGINT, onSignal);
}

} // namespace

int main(int argc, char *argv[])
{
    kal::chooseHeadlessPlatform(argc, argv);
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Kalmeron"));
    // The installed icon of the menu entry; none when run from the build folder.
    QApplication::setDesktopFileName(QStringLiteral("kalmeron"));
    QApplication::setWindowIcon(QIcon::fromTheme(QStringLiteral("kalmeron")));

    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Kalmeron furnace supervision station"));
    parser.addHelpOption();
    QCommandLineOption dataOpt(QStringLiteral("data"), QStringLiteral("Data folder (configuration, batch files, logs)."),
                               QStringLiteral("DIR"));
    QCommandLineOption portOpt(QStringLiteral("modbus-port"),
                               QStringLiteral("Remote port of Modbus/TCP furnaces (default 502)."), QStringLiteral("N"));
    QCommandLineOption demoOpt(QStringLiteral("demo"),
                               QStringLiteral("Run the built-in furnace simulator on loopback and supervise its demo plant."));
    QCommandLineOption viewOpt(QStringLiteral("view"),
                               QStringLiteral("Office viewer: batches, curves, CSV and printing; no PLC traffic."));
    parser.addOption(dataOpt);
    parser.addOption(portOpt);
    parser.addOption(demoOpt);
    parser.addOption(viewOpt);
    parser.addPositionalArgument(QStringLiteral("BATCH.OVD"), QStringLiteral("Batch file to show in the curve window."),
                                 QStringLiteral("[BATCH.OVD]"));
    kal::addHeadlessOptions(parser);
    parser.process(app);
    if (const int code = kal::runHeadlessExport(parser); code >= 0)
        return code;

    const QStringList args = parser.positionalArguments();
    if (args.size() > 1 || (parser.isSet(viewOpt) && parser.isSet(demoOpt))) {
        std::fprintf(stderr, "kalmeron: one batch file at most, and --view without --demo\n");
        return 2;
    }
    bool batchOk = true;
    const QString batch = kal::batchArgument(args.value(0), &batchOk);
    if (!batchOk)
        return kal::EXIT_BATCH_MISSING;
    kal::plant.viewer = parser.isSet(viewOpt);

    if (parser.isSet(portOpt)) {
        bool ok = false;
        const int port = parser.value(portOpt).toInt(&ok);
        if (!ok || port < 1 || port > 65535) {
            std::fprintf(stderr, "kalmeron: --modbus-port needs a port number 1..65535\n");
            return 2;
        }
        kal::plant.Modbus_Port = port;
    }
    if (parser.isSet(dataOpt))
        kal::plant.Daten_Ordner_Option = parser.value(dataOpt);

    if (parser.isSet(demoOpt))
        kal::Demo::presetFolder();
    if (const int code = kal::claimOrHandOver(batch); code >= 0)
        return code;

    std::unique_ptr<kal::Demo> demo;
    if (parser.isSet(demoOpt)) {
        demo = std::make_unique<kal::Demo>();
        QString fehler;
        if (!demo->start(parser.isSet(portOpt), &fehler)) {
            std::fprintf(stderr, "kalmeron: demo: %s\n", qPrintable(fehler));
            return 1;
        }
    }

    kal::KM_MDI window;
    endOnSignals(&window);
    window.resize(1280, 800);
    window.show();
    window.load();
    kal::setOpenRequestHandler([&window](const QString &datei) { window.bringToFront(datei); });
    // The batch of the command line comes up once the live page has settled.
    if (!batch.isEmpty())
        QTimer::singleShot(0, &window, [&window, batch] { window.showCurve(batch); });
    return app.exec();
}
