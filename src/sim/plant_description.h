#pragma once
// What a simulated plant is made of: its furnaces (address, protocol, word
// layout, identity, program, messages), the panel server, and the scenario of
// timed events. A plant comes from a JSON description or from the built-in
// demo plant.

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QVector>
#include <array>
#include <cstdint>
#include <optional>

namespace kal::sim {

enum class Protocol { MemoryLink, Modbus };

struct SegmentDescription {
    int befehl = 0;   ///< 1 ramp, 2 hold, 3 manual, 4 jump, 5 cycle, 0 end
    int sollwert = 0; ///< target, whole °C
    int wert = 0;     ///< rate 0.1 K/h, hold time 0.1 h, or repeat count
    int grenze = 100; ///< output limit %, or the target segment of a cycle
};

struct ProgramDescription {
    QString name;
    QVector<SegmentDescription> segments; ///< up to 20
};

struct FurnaceDescription {
    int index = 0;          ///< the station's furnace index 0..7
    QString address;        ///< address the furnace listens on
    Protocol protocol = Protocol::MemoryLink;
    bool headed = false;    ///< type word below 0: layout block with the identity at `base`
    int base = 0;           ///< identity block address (`Ofen_Basis`), headed only
    bool large = false;     ///< large layout (type bit 12)
    int plainType = 3;      ///< type word of a plain furnace, 0..6
    QString name;           ///< 16 characters, words 200..207
    QString serial;         ///< "JJMM-NNN-TTT", words 208..213
    QString version = QStringLiteral("01"); ///< 2 characters, word 214
    QVector<int16_t> identity; ///< 24 words at `base` (headed); empty = derived from the index
    std::array<int16_t, 3> values216{}; ///< words 216..218
    int16_t trackCode = 0;    ///< word 278: element count * 100 + element tracks
    int16_t elementValue = 0; ///< word 279
    int maxTemp = 1200;       ///< °C; above it the over-temperature message comes
    int overTempMessage = 2;  ///< message number of over-temperature, 0 = none
    int panelCode = 0;        ///< high byte of word 215 when behind the panel server (0x48..0x56), 0 = not
    int clockOffsetSeconds = 0; ///< the PLC clock runs this much ahead of the plant
    int sampleSeconds = 10;   ///< log block interval while a program runs
    int elementEvery = 6;     ///< element current group (160) after this many samples
    int32_t firstBatch = 1;   ///< batch number of the first program run
    uint32_t hours = 0;       ///< operating hours counter at start
    ProgramDescription program;            ///< the active program at start
    QVector<ProgramDescription> places;     ///< memory places 1..6
    bool autoStart = false;   ///< start the program at once, and again after each pause
    int pauseSeconds = 300;   ///< rest between two runs with autoStart
    QStringList messageTexts; ///< texts of messages 1..48 (22 characters)
    QStringList trackNames;   ///< four track names of 8 characters
    QStringList pageNames;    ///< two names of 16 characters on the track page
    QVector<int16_t> codes;   ///< 22 code words (pairs A, B) of the track page
    /// PID values of every controller at start: proportional band (1/100),
    /// integral and derivative time (1/10), sample time (1/100). A written
    /// value stays until the station writes another.
    std::array<int16_t, 4> pid{250, 1200, 300, 100};
    bool messageConfig = true; ///< words 690..699 hold a configuration
    QVector<int> stopMessages, n2Messages, smsMessages;

    /// Word 29: plain type, or bit 15 | bit 12 when large | base.
    int16_t typeWord() const;
    int triggerAddress() const; ///< 90 plain, 220 headed UDP, 400 headed TCP
    int triggerLength() const;  ///< 10, 16, 40
    int pageWord() const;       ///< 388, or 1088 on the large layout
    int transferBase() const;   ///< P of the program transfer area: 300, or 1000 with long names
    /// Program names of 30 characters (the large layout), else 16.
    bool longProgramNames() const { return large; }
    /// The 24 words of the identity block as the PLC holds them after start:
    /// the given words, or words derived from the index, with the words of the
    /// active program laid over them where the two share addresses (on a PLC
    /// whose block lies at 100 the block is part of the program table).
    QVector<int16_t> identityWords() const;
    /// Word 215 for a panel server at last octet `panelOctet`.
    int16_t serverWord(int panelOctet) const;
    /// Offset of this furnace's window in the panel server's memory, 0 when not behind it.
    int panelOffset() const;
};

struct ScenarioEvent {
    enum Action { Raise, Clear, Acknowledge, Start, Stop, DropLink, Resume };
    int64_t atMs = 0;
    int furnace = 0; ///< furnace index, -1 = the panel server (links only)
    Action action = Raise;
    int message = 0;
};

struct PlantDescription {
    QVector<FurnaceDescription> furnaces;
    QString panelAddress;  ///< empty: no panel server
    int udpPort = 1024;    ///< port of every memory link server (0 = any free port)
    int modbusPort = 502;  ///< port of every Modbus server (0 = any free port)
    QVector<ScenarioEvent> events;
    int64_t eventPeriodMs = 0; ///< the events repeat with this period, 0 = once

    const FurnaceDescription *furnace(int index) const;
    /// Last octet of the panel server's address, 0 when there is none.
    int panelOctet() const;
};

/// Reads a plant from JSON; nullopt with the reason in `error`.
std::optional<PlantDescription> parsePlantDescription(const QByteArray &json, QString *error);

/// Checks a plant for what would make it unusable (index twice, an address
/// twice, a window twice, a bad layout); empty when it is fine.
QString checkPlantDescription(const PlantDescription &plant);

/// The demo plant: a plain UDP furnace, a headed UDP furnace, two headed
/// Modbus furnaces (identity at 100 and at 500) and a Modbus furnace whose
/// exchange words are reached through the panel server, on 127.0.0.11 .. 15
/// and the panel server on 127.0.0.20. Programs restart by themselves.
PlantDescription demoPlant();

/// Default texts of messages 1..48 (over-temperature is message 2, the door message 1).
QStringList defaultMessageTexts();

} // namespace kal::sim
