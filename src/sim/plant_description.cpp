#include "sim/plant_description.h"

#include "sim/program_words.h"

#include <QHostAddress>
#include <QSet>

namespace kal::sim {

int16_t FurnaceDescription::typeWord() const
{
    if (!headed)
        return static_cast<int16_t>(plainType);
    return static_cast<int16_t>(0x8000 | (large ? 0x1000 : 0) | (base & 0x0FFF));
}

int FurnaceDescription::triggerAddress() const
{
    if (!headed)
        return 90;
    return protocol == Protocol::MemoryLink ? 220 : 400;
}

int FurnaceDescription::triggerLength() const
{
    if (!headed)
        return 10;
    return protocol == Protocol::MemoryLink ? 16 : 40;
}

int FurnaceDescription::pageWord() const
{
    return large ? 1088 : 388;
}

int FurnaceDescription::transferBase() const
{
    return longProgramNames() ? 1000 : 300;
}

QVector<int16_t> FurnaceDescription::identityWords() const
{
    QVector<int16_t> id = identity;
    if (id.isEmpty())
        for (int i = 0; i < 24; ++i)
            id.append(static_cast<int16_t>(((index + 1) << 8) | (i + 1)));
    id.resize(24, 0);
    // The active program's words (90 or 100 .. 199) win where they share
    // addresses with the block.
    const QVector<int16_t> prog = programWords(program, longProgramNames());
    const int first = longProgramNames() ? 90 : 100;
    for (int i = 0; i < 24; ++i) {
        const int a = base + i;
        if (a >= first && a < 200)
            id[i] = prog[a - 90];
    }
    return id;
}

int16_t FurnaceDescription::serverWord(int panelOctet) const
{
    return static_cast<int16_t>(((panelCode & 0xFF) << 8) | (panelOctet & 0xFF));
}

int FurnaceDescription::panelOffset() const
{
    if (panelCode == 0x48)
        return 3000;
    if (panelCode == 0x49)
        return 3000 + 1000 * index;
    if (panelCode >= 0x50 && panelCode <= 0x56)
        return 3000 + 1000 * (panelCode - 0x50);
    return 0;
}

const FurnaceDescription *PlantDescription::furnace(int index) const
{
    for (const auto &f : furnaces)
        if (f.index == index)
            return &f;
    return nullptr;
}

int PlantDescription::panelOctet() const
{
    const QHostAddress a(panelAddress);
    if (panelAddress.isEmpty() || a.protocol() != QAbstractSocket::IPv4Protocol)
        return 0;
    return int(a.toIPv4Address() & 0xFF);
}

QString checkPlantDescription(const PlantDescription &plant)
{
    QSet<int> indexes;
    QSet<QString> addresses;
    QSet<int> windows;
    if (!plant.panelAddress.isEmpty()) {
        if (plant.panelOctet() == 0)
            return QStringLiteral("panel server: \"%1\" is no IPv4 address").arg(plant.panelAddress);
        addresses.insert(plant.panelAddress);
    }
    for (const auto &f : plant.furnaces) {
        const QString who = QStringLiteral("furnace %1").arg(f.index + 1);
        if (f.index < 0 || f.index > 7)
            return QStringLiteral("furnace number %1 is not 1..8").arg(f.index + 1);
        if (indexes.contains(f.index))
            return who + QStringLiteral(" is described twice");
        indexes.insert(f.index);
        if (QHostAddress(f.address).protocol() != QAbstractSocket::IPv4Protocol)
            return who + QStringLiteral(": \"%1\" is no IPv4 address").arg(f.address);
        if (addresses.contains(f.address))
            return who + QStringLiteral(": address %1 is taken").arg(f.address);
        addresses.insert(f.address);
        if (f.headed && (f.base < 1 || f.base + 24 > 1141))
            return who + QStringLiteral(": identity block at %1 does not fit the image").arg(f.base);
        if (!f.headed && (f.plainType < 0 || f.plainType > 6))
            return who + QStringLiteral(": a plain type is 0..6");
        if (f.large && !f.headed)
            return who + QStringLiteral(": the large layout has a layout block (headed)");
        if (f.sampleSeconds < 1)
            return who + QStringLiteral(": the sample interval is at least 1 s");
        if (f.places.size() > 6)
            return who + QStringLiteral(": at most 6 memory places");
        if (f.panelCode != 0) {
            if (plant.panelAddress.isEmpty())
                return who + QStringLiteral(" is behind the panel server, but there is none");
            if (f.panelOffset() == 0)
                return who + QStringLiteral(": server code 0x%1 is not 0x48..0x56").arg(f.panelCode, 0, 16);
            if (f.panelOffset() > 8000)
                return who + QStringLiteral(": the window at %1 lies beyond the server's 9001 words")
                                 .arg(f.panelOffset());
            if (windows.contains(f.panelOffset()))
                return who + QStringLiteral(": window %1 is taken").arg(f.panelOffset());
            windows.insert(f.panelOffset());
        }
    }
    return {};
}

QStringList defaultMessageTexts()
{
    QStringList t = {
        QStringLiteral("Tür geöffnet"),        QStringLiteral("Übertemperatur"),
        QStringLiteral("Thermoelementbruch"),  QStringLiteral("Kühlwasser fehlt"),
        QStringLiteral("Netzausfall"),         QStringLiteral("Schütz Heizung"),
        QStringLiteral("Sicherung Steuerung"), QStringLiteral("Schutzgas Druck"),
    };
    for (int n = int(t.size()) + 1; n <= 48; ++n)
        t.append(QStringLiteral("Meldung %1").arg(n, 2, 10, QLatin1Char('0')));
    return t;
}

} // namespace kal::sim
