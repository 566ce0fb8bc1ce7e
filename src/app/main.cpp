// kalmeron: the supervision station.
//
//   kalmeron [--data DIR] [--modbus-port N] [--demo] [--help]

#include "app/demo.h"
#include "core/plant_state.h"
#include "station/shutdown.h"
#include "views/KM_MDI.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QSocketNotifier>
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
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Kalmeron"));

    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Kalmeron furnace supervision station"));
    parser.addHelpOption();
    QCommandLineOption dataOpt(QStringLiteral("data"), QStringLiteral("Data folder (configuration, batch files, logs)."),
                               QStringLiteral("DIR"));
    QCommandLineOption portOpt(QStringLiteral("modbus-port"),
                               QStringLiteral("Remote port of Modbus/TCP furnaces (default 502)."), QStringLiteral("N"));
    QCommandLineOption demoOpt(QStringLiteral("demo"),
                               QStringLiteral("Run the built-in furnace simulator on loopback and supervise its demo plant."));
    parser.addOption(dataOpt);
    parser.addOption(portOpt);
    parser.addOption(demoOpt);
    parser.process(app);

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

    std::unique_ptr<kal::Demo> demo;
    if (parser.isSet(demoOpt)) {
        demo = std::make_unique<kal::Demo>();
        QString fehler;
        if (!demo->starten(parser.isSet(portOpt), &fehler)) {
            std::fprintf(stderr, "kalmeron: demo: %s\n", qPrintable(fehler));
            return 1;
        }
    }

    kal::KM_MDI window;
    endOnSignals(&window);
    window.resize(1280, 800);
    window.show();
    window.Laden();
    return app.exec();
}
