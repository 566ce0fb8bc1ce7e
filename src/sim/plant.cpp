#include "sim/plant.h"

#include "core/dates.h"

namespace kal::sim {

SimPlant::SimPlant(PlantDescription d, QDateTime start, QObject *parent)
    : QObject(parent), d_(std::move(d)), clock_(start.isValid() ? start : now())
{
    const int octet = d_.panelOctet();
    for (const auto &f : d_.furnaces)
        furnaces_.push_back(std::make_unique<SimFurnace>(f, octet, clock_, frames_));
    if (!d_.panelAddress.isEmpty()) {
        panel_ = std::make_unique<PanelServer>(d_.panelAddress, clock_, frames_);
        for (const auto &f : furnaces_)
            if (f->description().panelCode != 0)
                panel_->addWindow(f->description().panelOffset(), f.get());
    }
    for (const auto &e : d_.events)
        eventDue_.push_back(e.atMs);
    // In real time a late tick is made up in one step: the plant never falls behind.
    connect(&realTime_, &QTimer::timeout, this, [this] {
        const int64_t now = wall_.elapsed();
        advance(now - wallDone_);
        wallDone_ = now;
    });
}

SimPlant::~SimPlant() = default;

bool SimPlant::start(QString *error)
{
    const QString bad = checkPlantDescription(d_);
    if (!bad.isEmpty()) {
        if (error)
            *error = bad;
        return false;
    }
    for (const auto &f : furnaces_)
        if (!f->listen(d_.udpPort, d_.modbusPort, error))
            return false;
    return !panel_ || panel_->listen(d_.udpPort, error);
}

SimFurnace *SimPlant::furnace(int index) const
{
    for (const auto &f : furnaces_)
        if (f->index() == index)
            return f.get();
    return nullptr;
}

int64_t SimPlant::nextEventMs() const
{
    int64_t next = -1;
    for (int64_t due : eventDue_)
        if (due >= 0 && (next < 0 || due < next))
            next = due;
    return next;
}

void SimPlant::advance(int64_t ms)
{
    const int64_t end = clock_.ms() + std::max<int64_t>(ms, 0);
    for (;;) {
        for (size_t i = 0; i < eventDue_.size(); ++i) {
            if (eventDue_[i] >= 0 && eventDue_[i] <= clock_.ms()) {
                runEvent(d_.events[int(i)]);
                eventDue_[i] = d_.eventPeriodMs > 0 ? eventDue_[i] + d_.eventPeriodMs : -1;
            }
        }
        if (clock_.ms() >= end) {
            clock_.moveTo(end); // answers due now
            return;
        }
        int64_t next = std::min(end, clock_.ms() + 1000);
        if (const int64_t e = nextEventMs(); e > clock_.ms())
            next = std::min(next, e);
        if (const int64_t a = clock_.nextDue(); a > clock_.ms())
            next = std::min(next, a);
        const int64_t step = next - clock_.ms();
        clock_.moveTo(next);
        for (const auto &f : furnaces_)
            f->step(step);
    }
}

void SimPlant::runInRealTime(int tickMs)
{
    wall_.start();
    wallDone_ = 0;
    realTime_.start(tickMs);
}

void SimPlant::runEvent(const ScenarioEvent &e)
{
    if (e.furnace < 0) {
        if (panel_ && e.action == ScenarioEvent::DropLink)
            panel_->link().dropLink();
        else if (panel_ && e.action == ScenarioEvent::Resume)
            panel_->link().resume();
        return;
    }
    SimFurnace *f = furnace(e.furnace);
    if (!f)
        return;
    switch (e.action) {
    case ScenarioEvent::Raise: f->raiseMessage(e.message); break;
    case ScenarioEvent::Clear: f->clearMessage(e.message); break;
    case ScenarioEvent::Acknowledge: f->acknowledgeMessages(); break;
    case ScenarioEvent::Start: f->startProgram(); break;
    case ScenarioEvent::Stop: f->stopProgram(); break;
    case ScenarioEvent::DropLink: f->link().dropLink(); break;
    case ScenarioEvent::Resume: f->link().resume(); break;
    }
}

QStringList SimPlant::summary() const
{
    QStringList lines;
    for (const auto &f : furnaces_) {
        const FurnaceDescription &d = f->description();
        const QString link = d.protocol == Protocol::MemoryLink ? QStringLiteral("memory link udp:%1").arg(f->udpPort())
                                                                : QStringLiteral("modbus tcp:%1").arg(f->modbusPort());
        QString layout = d.headed ? QStringLiteral("headed, identity at %1%2").arg(d.base).arg(d.large ? ", large" : "")
                                  : QStringLiteral("plain");
        QString line = QStringLiteral("furnace %1  %2  %3  type 0x%4 (%5)  \"%6\" %7  log at %8/%9  page word %10")
                           .arg(d.index + 1)
                           .arg(d.address, link)
                           .arg(uint16_t(d.typeWord()), 4, 16, QLatin1Char('0'))
                           .arg(layout, d.name, d.serial)
                           .arg(d.triggerAddress())
                           .arg(d.triggerLength())
                           .arg(d.pageWord());
        if (d.panelCode != 0)
            line += QStringLiteral("  behind the panel server at %1").arg(d.panelOffset());
        lines.append(line);
    }
    if (panel_)
        lines.append(QStringLiteral("panel server  %1  memory link udp:%2").arg(panel_->address()).arg(panel_->port()));
    return lines;
}

} // namespace kal::sim
