// kalmeron-sim: runs a simulated furnace plant in real time, from a JSON plant
// description or, without one, the demo plant, and prints what it serves.

#include "sim/plant.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QFile>

#include <cstdio>

using namespace kal::sim;

namespace {

void say(const QString &line)
{
    std::fprintf(stdout, "%s\n", line.toLocal8Bit().constData());
    std::fflush(stdout);
}

int fail(const QString &why)
{
    std::fprintf(stderr, "kalmeron-sim: %s\n", why.toLocal8Bit().constData());
    return 1;
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("kalmeron-sim"));

    QCommandLineParser cmd;
    cmd.setApplicationDescription(QStringLiteral("Simulated furnace plant for the Kalmeron station."));
    cmd.addHelpOption();
    cmd.addPositionalArgument(QStringLiteral("plant.json"),
                              QStringLiteral("Plant description (JSON); without one the demo plant runs."));
    const QCommandLineOption modbusPort(QStringLiteral("modbus-port"),
                                        QStringLiteral("Port of the Modbus servers (default 502)."),
                                        QStringLiteral("N"));
    const QCommandLineOption frames(QStringLiteral("frames"), QStringLiteral("Print every frame received."));
    cmd.addOption(modbusPort);
    cmd.addOption(frames);
    cmd.process(app);

    PlantDescription plant = demoPlant();
    const QStringList files = cmd.positionalArguments();
    if (files.size() > 1)
        return fail(QStringLiteral("one plant description at most"));
    if (!files.isEmpty()) {
        QFile f(files.first());
        if (!f.open(QIODevice::ReadOnly))
            return fail(QStringLiteral("%1: %2").arg(files.first(), f.errorString()));
        QString error;
        const auto read = parsePlantDescription(f.readAll(), &error);
        if (!read)
            return fail(QStringLiteral("%1: %2").arg(files.first(), error));
        plant = *read;
    }
    if (cmd.isSet(modbusPort)) {
        bool ok = false;
        const int port = cmd.value(modbusPort).toInt(&ok);
        if (!ok || port < 1 || port > 65535)
            return fail(QStringLiteral("--modbus-port takes a port 1..65535"));
        plant.modbusPort = port;
    }

    SimPlant sim(plant);
    if (cmd.isSet(frames)) {
        sim.frames().listener = [](const FrameRecord &r) {
            say(QStringLiteral("%1  %2 %3 from %4: %5  [%6]")
                    .arg(QString::number(r.ms / 1000.0, 'f', 1), serverName(r.server))
                    .arg(r.furnace >= 0 ? QString::number(r.furnace + 1) : QStringLiteral("-"), r.peer,
                         r.verdict, hexBytes(r.bytes)));
        };
    }
    QString error;
    if (!sim.start(&error))
        return fail(error);
    for (const QString &line : sim.summary())
        say(line);

    sim.runInRealTime();
    return app.exec();
}
