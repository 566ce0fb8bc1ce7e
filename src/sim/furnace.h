#pragma once
// One simulated furnace: its PLC word image, served over the memory link (UDP)
// or Modbus/TCP on its own address, and the PLC behaviour behind the words:
// the program runner and thermal model, messages, the PLC clock, the log
// block queue and the page word handshake. The station's writes are answered
// as a PLC answers them:
//   word 30       command: 4 acknowledges the messages; 1 starts and 2 stops
//                 the program (the operator's keys on the panel); then 0
//   word 58       clock step (see PlcClock); then 0
//   trigger word  0 takes the offered log block
//   page word     the exchange window handshake (see PageHandshake)
//   word 188      bit 15 on the large layout: a new active program was
//                 written; the PLC takes it and clears the bit

#include "sim/frame_log.h"
#include "sim/link_faults.h"
#include "sim/log_queue.h"
#include "sim/messages.h"
#include "sim/page_handshake.h"
#include "sim/plant_description.h"
#include "sim/plc_clock.h"
#include "sim/program_runner.h"
#include "sim/thermal_model.h"
#include "sim/word_image.h"
#include "sim/word_space.h"

#include <QObject>
#include <memory>
#include <optional>

namespace kal::sim {

class MemoryLinkServer;
class ModbusServer;
class SimClock;

/// A write of the station as the furnace received it.
struct StationWrite {
    int64_t ms = 0;
    int address = 0;
    QVector<int16_t> words;
    QString via; ///< "udp", "modbus" or "panel"
};

class SimFurnace : public QObject, public WordSpace {
    Q_OBJECT
public:
    /// `panelOctet`: last octet of the panel server's address (word 215), 0 = none.
    SimFurnace(FurnaceDescription d, int panelOctet, SimClock &clock, FrameLog &log, QObject *parent = nullptr);
    ~SimFurnace() override;

    const FurnaceDescription &description() const { return d_; }
    int index() const { return d_.index; }

    /// Starts the furnace's server on its address; the port of the other
    /// protocol is ignored. Port 0 takes any free port.
    bool listen(int udpPort, int modbusPort, QString *error);
    quint16 udpPort() const;    ///< 0 when the furnace speaks Modbus
    quint16 modbusPort() const; ///< 0 when the furnace speaks the memory link

    bool read(int address, int n, QVector<int16_t> &out) const override;
    bool write(int address, const QVector<int16_t> &words, const QString &via) override;

    int16_t word(int address) const { return image_.get(address); }
    void setWord(int address, int16_t value) { image_.set(address, value); }
    WordImage &image() { return image_; }

    /// Every write of the station, in order of arrival.
    const QVector<StationWrite> &writes() const { return writes_; }
    void clearWrites() { writes_.clear(); }
    /// Value the station last wrote at an address, if it ever did.
    std::optional<int16_t> lastWritten(int address) const;

    void startProgram();
    void stopProgram();
    /// Writes a program as the active one (words 100..199, and 90..96 for
    /// long names).
    void loadProgram(const ProgramDescription &program);
    ProgramRunner &runner() { return runner_; }
    ThermalModel &model() { return model_; }
    /// Batch number of the current (or last) program run; 0 before the first.
    int32_t batch() const { return batch_; }

    void raiseMessage(int n);
    void clearMessage(int n, bool waitForAck = true);
    void acknowledgeMessages();
    MessageBank &messages() { return messages_; }

    LogQueue &log() { return log_; }
    void queueBlock(QVector<int16_t> block);
    /// Queues a sample of the live words in the form of the furnace's layout.
    void queueSample();
    /// A block of the operator text (20 characters) from the panel.
    void queueOperatorText(const QString &text);

    PlcClock &plcClock() { return plcClock_; }
    QDateTime plcNow() const;
    PageHandshake &pages() { return pages_; }
    LinkControl &link() { return link_; }

    /// Moves the furnace by `ms` of plant time (the plant clock has already
    /// been moved to the end of the step).
    void step(int64_t ms);

private:
    void buildImage(int panelOctet);
    void writePidWords();
    void stepOnce(double dt);
    void updateWords();
    void stationWrote(int address, int16_t value);
    int outputScale() const { return d_.protocol == Protocol::Modbus ? 100 : 1; }

    FurnaceDescription d_;
    SimClock &clock_;
    FrameLog &frames_;
    WordImage image_;
    ThermalModel model_;
    ProgramRunner runner_;
    MessageBank messages_;
    PlcClock plcClock_;
    LogQueue log_;
    PageHandshake pages_;
    LinkControl link_;
    std::unique_ptr<MemoryLinkServer> udp_;
    std::unique_ptr<ModbusServer> modbus_;
    QVector<StationWrite> writes_;
    int32_t batch_ = 0;
    int samples_ = 0;
    double sinceSample_ = 0.0; ///< s
    double pause_ = 0.0;       ///< s until an automatic start
    double runSeconds_ = 0.0;  ///< heating time for the hours counter
};

} // namespace kal::sim
