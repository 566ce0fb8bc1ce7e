#include "sim/furnace.h"

#include "sim/log_blocks.h"
#include "sim/modbus_server.h"
#include "sim/program_words.h"
#include "sim/sim_clock.h"
#include "sim/udp_server.h"

#include <QHostAddress>
#include <algorithm>

namespace kal::sim {

namespace {

constexpr int kCommandWord = 30;
constexpr int kClockStepWord = 58;
constexpr int kNewProgramWord = 188; ///< bit 15 on the large layout

} // namespace

SimFurnace::SimFurnace(FurnaceDescription d, int panelOctet, SimClock &clock, FrameLog &log, QObject *parent)
    : QObject(parent), d_(std::move(d)), clock_(clock), frames_(log), pages_(d_)
{
    model_.sizeFor(d_.maxTemp);
    plcClock_.setOffsetSeconds(d_.clockOffsetSeconds);
    log_.setTrigger(d_.triggerAddress(), d_.triggerLength());
    buildImage(panelOctet);
}

SimFurnace::~SimFurnace() = default;

void SimFurnace::buildImage(int panelOctet)
{
    image_.set(29, d_.typeWord());
    if (d_.headed)
        image_.set(d_.base, d_.identityWords());
    image_.putText(200, 8, d_.name);
    image_.putText(208, 6, d_.serial);
    image_.putText(214, 1, d_.version);
    image_.set(215, d_.panelCode ? d_.serverWord(panelOctet) : int16_t(0));
    for (int i = 0; i < 3; ++i)
        image_.set(216 + i, d_.values216[size_t(i)]);
    image_.set(278, d_.trackCode);
    image_.set(279, d_.elementValue);
    loadProgram(d_.program);
    writePidWords();
    if (d_.messageConfig)
        MessageBank::configure(image_, d_.stopMessages, d_.n2Messages, d_.smsMessages);
    updateWords();
}

void SimFurnace::writePidWords()
{
    if (!d_.headed) {
        const int words[4] = {47, 48, 49, 52};
        for (int j = 0; j < 4; ++j)
            image_.set(words[j], d_.pid[size_t(j)]);
        return;
    }
    // A headed furnace keeps the parameters of each controlled channel behind
    // its actual value and output (side by side, or ten apart with B bit 12);
    // on the memory link those of the first channel with a set curve lie in a
    // block of their own at 630, 640, 650, 660.
    const QVector<int16_t> id = d_.identityWords();
    bool firstCurve = true;
    for (int k = 0; k < 12; ++k) {
        const auto a = uint16_t(id[2 * k]);
        const auto b = uint16_t(id[2 * k + 1]);
        const int step = (b & 0x1000) ? 10 : 1;
        int first = (b & 0x3FF) + 3 * step;
        const bool curve = (a & 0x8000) != 0;
        int spacing = step;
        if (curve && firstCurve && d_.protocol == Protocol::MemoryLink) {
            first = 630;
            spacing = 10;
        }
        if (curve)
            firstCurve = false;
        if (!(a & 0x4000))
            continue;
        for (int j = 0; j < 4; ++j)
            if (WordImage::contains(first + j * spacing, 1))
                image_.set(first + j * spacing, d_.pid[size_t(j)]);
    }
}

bool SimFurnace::listen(int udpPort, int modbusPort, QString *error)
{
    const QHostAddress address(d_.address);
    if (address.isNull()) {
        if (error)
            *error = QStringLiteral("furnace %1: \"%2\" is no address").arg(d_.index + 1).arg(d_.address);
        return false;
    }
    if (d_.protocol == Protocol::MemoryLink) {
        udp_ = std::make_unique<MemoryLinkServer>(Server::MemoryLink, d_.index, *this, link_, clock_, frames_);
        return udp_->listen(address, quint16(udpPort), error);
    }
    modbus_ = std::make_unique<ModbusServer>(d_.index, *this, link_, clock_, frames_);
    return modbus_->listen(address, quint16(modbusPort), error);
}

quint16 SimFurnace::udpPort() const
{
    return udp_ ? udp_->port() : 0;
}

quint16 SimFurnace::modbusPort() const
{
    return modbus_ ? modbus_->port() : 0;
}

bool SimFurnace::read(int address, int n, QVector<int16_t> &out) const
{
    if (!WordImage::contains(address, n))
        return false;
    out = image_.get(address, n);
    return true;
}

bool SimFurnace::write(int address, const QVector<int16_t> &words, const QString &via)
{
    if (!WordImage::contains(address, int(words.size())))
        return false;
    image_.set(address, words);
    writes_.append({clock_.ms(), address, words, via});
    for (int i = 0; i < words.size(); ++i)
        stationWrote(address + i, words[i]);
    messages_.writeWords(image_);
    log_.offerNext(image_);
    return true;
}

void SimFurnace::stationWrote(int address, int16_t value)
{
    if (address == kCommandWord) {
        if (value == 4)
            acknowledgeMessages();
        else if (value == 1)
            startProgram();
        else if (value == 2)
            stopProgram();
        if (value == 1 || value == 2 || value == 4)
            image_.set(kCommandWord, 0);
    } else if (address == kClockStepWord && value != 0) {
        plcClock_.step(value, clock_.now());
        image_.set(kClockStepWord, 0);
        plcClock_.writeWords(image_, clock_.now());
    } else if (address == kNewProgramWord && d_.large && (value & 0x8000)) {
        image_.set(kNewProgramWord, static_cast<int16_t>(value & 0x7FFF));
    }
    log_.stationWrote(address, value);
    if (address == pages_.pageWord())
        pages_.stationWrote(image_, value);
}

std::optional<int16_t> SimFurnace::lastWritten(int address) const
{
    for (auto it = writes_.rbegin(); it != writes_.rend(); ++it)
        if (address >= it->address && address < it->address + it->words.size())
            return it->words[address - it->address];
    return std::nullopt;
}

void SimFurnace::loadProgram(const ProgramDescription &program)
{
    const QVector<int16_t> words = programWords(program, d_.longProgramNames());
    // With short names the ten words before the table belong to others (the
    // plain log block lies at 90).
    if (d_.longProgramNames())
        image_.set(90, words);
    else
        image_.set(100, words.mid(10));
}

QDateTime SimFurnace::plcNow() const
{
    return plcClock_.now(clock_.now());
}

void SimFurnace::startProgram()
{
    batch_ = batch_ == 0 ? d_.firstBatch : batch_ + 1;
    runner_.start(model_.temperature);
    updateWords();
    if (!d_.headed) {
        queueBlock(announcementBlock(batch_, plcNow()));
    } else if (d_.triggerLength() >= 40) {
        QString name = image_.text(180, 8);
        if (d_.longProgramNames())
            name += image_.text(90, 7);
        queueBlock(programTextBlock(name, plcNow(), batch_));
    }
    // The first sample follows the first step, when the segment is known.
    sinceSample_ = d_.sampleSeconds;
}

void SimFurnace::stopProgram()
{
    if (!runner_.active())
        return;
    runner_.stop();
    pause_ = d_.pauseSeconds;
    updateWords();
    queueSample();
}

void SimFurnace::raiseMessage(int n)
{
    messages_.raise(n);
    messages_.writeWords(image_);
}

void SimFurnace::clearMessage(int n, bool waitForAck)
{
    messages_.clear(n, waitForAck);
    messages_.writeWords(image_);
}

void SimFurnace::acknowledgeMessages()
{
    messages_.acknowledge();
    messages_.writeWords(image_);
}

void SimFurnace::queueBlock(QVector<int16_t> block)
{
    log_.push(std::move(block));
    log_.offerNext(image_);
}

void SimFurnace::queueOperatorText(const QString &text)
{
    queueBlock(operatorTextBlock(text, plcNow()));
}

void SimFurnace::queueSample()
{
    SampleValues v;
    v.stamp = plcNow();
    v.setpoint = image_.get(43);
    v.actual = image_.get(44);
    v.output = static_cast<int16_t>(image_.get(45) / outputScale());
    v.state = static_cast<int16_t>(image_.get(37) & 3);
    for (int w = 0; w < 3; ++w)
        v.messages[size_t(w)] = image_.get(87 + w);
    v.segment = image_.get(41);
    v.kind = image_.get(42);
    v.target = v.segment >= 1 && v.segment <= 20 ? image_.get(119 + v.segment) : int16_t(0);
    v.remaining = image_.get(57);
    v.batch = batch_;

    ++samples_;
    if (!d_.headed) {
        queueBlock(plainSampleBlock(v));
    } else if (d_.triggerLength() >= 40) {
        queueBlock(groupBlock(v));
        const int elements = std::min(16, d_.trackCode / 100);
        if (elements > 0 && samples_ % d_.elementEvery == 0) {
            QVector<int16_t> currents;
            for (int i = 0; i < elements; ++i)
                currents.append(static_cast<int16_t>(std::min(255, v.output * 2 + 3 * i)));
            queueBlock(elementBlock(currents, v.stamp, batch_));
        }
    } else {
        queueBlock(compactBlock(v));
    }
}

void SimFurnace::updateWords()
{
    runner_.writeWords(image_, model_, outputScale());
    messages_.writeWords(image_);
    plcClock_.writeWords(image_, clock_.now());
    const auto hours = longWords(int32_t(d_.hours + uint32_t(runSeconds_ / 3600.0)));
    const int at = d_.protocol == Protocol::Modbus ? 7 : 67;
    image_.set(at, hours[0]);
    image_.set(at + 1, hours[1]);
    // Live element currents in whole amperes (words 460..477) and the top of
    // their scale (478): each element draws a little more than the one
    // before it, in proportion to the output.
    const int elements = std::min(18, d_.trackCode % 100);
    if (elements > 0) {
        const int output = image_.get(45) / outputScale();
        for (int i = 0; i < elements; ++i)
            image_.set(460 + i, static_cast<int16_t>(output * (40 + 2 * i) / 100));
        image_.set(478, 100);
    }
}

void SimFurnace::step(int64_t ms)
{
    double left = ms / 1000.0;
    while (left > 1e-9) {
        const double dt = std::min(left, 1.0);
        stepOnce(dt);
        left -= dt;
    }
}

void SimFurnace::stepOnce(double dt)
{
    runner_.setHeld(messages_.stopActive(image_));
    const bool ended = runner_.step(dt, image_, model_);
    if (runner_.active())
        runSeconds_ += dt;

    if (const int n = d_.overTempMessage) {
        if (model_.temperature > d_.maxTemp + 10 && !messages_.cause(n))
            messages_.raise(n);
        else if (model_.temperature < d_.maxTemp && messages_.cause(n))
            messages_.clear(n);
    }
    updateWords();

    if (ended) {
        pause_ = d_.pauseSeconds;
        queueSample(); // the last sample shows the end
    } else if (runner_.active()) {
        sinceSample_ += dt;
        if (sinceSample_ + 1e-9 >= d_.sampleSeconds) {
            sinceSample_ = 0.0;
            queueSample();
        }
    } else if (d_.autoStart) {
        pause_ -= dt;
        if (pause_ <= 0.0)
            startProgram();
    }
    log_.offerNext(image_);
}

} // namespace kal::sim
