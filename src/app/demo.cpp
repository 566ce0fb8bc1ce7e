#include "app/demo.h"

#include "config/config_file.h"
#include "config/paths.h"
#include "core/conversions.h"
#include "core/plant_state.h"
#include "link/socket.h"
#include "programs/program_file.h"
#include "sim/plant.h"

#include <QDir>
#include <QFile>
#include <QHostAddress>
#include <unistd.h>

namespace kal {

namespace {

/// The label file of a furnace number as a site prepares it: the captions of
/// the four outputs (60 characters each, Latin-1, blank-padded), a fifth text
/// empty, every hide flag 0.
void writeLabelFile(int ofenNr, const QStringList &texte)
{
    QByteArray b;
    for (int i = 0; i < 5; ++i)
        b += Latin1Bytes(fixedWidth(texte.value(i), 60));
    b += QByteArray(LABEL_SATZ - b.size(), '\0');
    QFile f(labelFileName(ofenNr));
    if (f.open(QIODevice::WriteOnly))
        f.write(b);
}

} // namespace

void writeDemoConfiguration(const sim::PlantDescription &d)
{
    for (const sim::FurnaceDescription &s : d.furnaces) {
        const int f = s.index;
        if (f < 0 || f >= OFEN_MAX)
            continue;
        const quint32 ip = QHostAddress(s.address).toIPv4Address();
        for (int o = 0; o < 4; ++o)
            plant.Ofen_IP(f, o) = static_cast<u8>((ip >> (8 * (3 - o))) & 0xFF);
        plant.Ofen_Typ[f + 1] = s.typeWord();
        plant.Ofen_UDP[f] = flag(s.protocol == sim::Protocol::MemoryLink);
        plant.Ofen_Aktiv[f] = TRUE16;
        plant.Ofen_Charge[f] = TRUE16;
        plant.Ofen_Name[f] = fixedWidth(s.name, 16).trimmed();
        plant.Ofen_Bezeichnung[f] = plant.Ofen_Name[f];
        plant.Ofen_Serie[f] = s.serial;
        plant.Ofen_Version[f] = s.version;
        plant.Ofen_Wert216[f] = s.values216[0];
        plant.Ofen_Wert217[f] = s.values216[1];
        plant.Ofen_Wert218[f] = s.values216[2];
        // The identity block as the PLC holds it: pairs 0..11 of the block.
        const QVector<int16_t> id = s.identityWords();
        for (int p = 0; p < KENNUNG_PAARE && 2 * p + 1 < id.size(); ++p) {
            plant.Ofen_Kennung_A(f + 1, p) = id[2 * p];
            plant.Ofen_Kennung_B(f + 1, p) = id[2 * p + 1];
        }
        plant.TempLog_Takt[f] = 60;
        for (int k = 0; k < 16; ++k)
            plant.Kanal_Farbe(f + 1, k) = k + 8; // the standard colours
        plant.Ofen_Nr_Prog[f] = static_cast<i16>(f + 1);
    }
    for (int k = 1; k <= 3; ++k)
        QDir().mkpath(defaultFolder(k));
    for (int k = 1; k <= 3; ++k)
        plant.Pfad[k] = defaultFolder(k);
    Config_Schreiben(false);
    writeLabelFile(4, {QStringLiteral("Kühlung"), QStringLiteral("Tür auf"), QStringLiteral("Umwälzer"),
                              QStringLiteral("Argon / Stickstoff")});
}

Demo::Demo() = default;
Demo::~Demo() = default;

void Demo::presetFolder()
{
    if (kal::plant.Daten_Ordner_Option.isEmpty())
        kal::plant.Daten_Ordner_Option = QDir::home().filePath(QStringLiteral("Kalmeron-Demo"));
}

bool Demo::start(bool modbusPortGiven, QString *error)
{
    sim::PlantDescription d = sim::demoPlant();
    if (!modbusPortGiven && ::geteuid() != 0)
        kal::plant.Modbus_Port = 1502; // nobody but root may listen on 502
    d.modbusPort = kal::plant.Modbus_Port;

    presetFolder();
    // A clean plant for writing the configuration, and again for the start-up
    // that reads it; the command line's folder and port stay.
    const QString ordner = kal::plant.Daten_Ordner_Option;
    const int port = kal::plant.Modbus_Port;
    const auto frisch = [&] {
        resetPlant();
        kal::plant.Daten_Ordner_Option = ordner;
        kal::plant.Modbus_Port = port;
    };
    frisch();
    Pfade_Setzen();
    // The configuration is written from a clean plant and the plant cleared
    // again, so that the start-up reads it like any other.
    if (!QFile::exists(dataFile(CONFIG_DATEI)))
        writeDemoConfiguration(d);
    frisch();

    m_sim = std::make_unique<sim::SimPlant>(d);
    if (!m_sim->start(error))
        return false;
    for (const QString &line : m_sim->summary())
        std::fprintf(stdout, "demo: %s\n", qPrintable(line));
    std::fflush(stdout);

    // The simulated plant runs in real time beside the station.
    m_sim->runInRealTime();
    return true;
}

} // namespace kal
