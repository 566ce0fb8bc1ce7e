#include "sim/panel_server.h"

#include "sim/udp_server.h"

namespace kal::sim {

PanelServer::PanelServer(QString address, SimClock &clock, FrameLog &log, QObject *parent)
    : QObject(parent), address_(std::move(address)), clock_(clock), log_(log)
{
}

PanelServer::~PanelServer() = default;

void PanelServer::addWindow(int offset, WordSpace *furnace)
{
    windows_.append({offset, furnace});
}

bool PanelServer::listen(int port, QString *error)
{
    const QHostAddress address(address_);
    if (address.isNull()) {
        if (error)
            *error = QStringLiteral("panel server: \"%1\" is no address").arg(address_);
        return false;
    }
    server_ = std::make_unique<MemoryLinkServer>(Server::Panel, -1, *this, link_, clock_, log_);
    return server_->listen(address, quint16(port), error);
}

quint16 PanelServer::port() const
{
    return server_ ? server_->port() : 0;
}

WordSpace *PanelServer::window(int address, int n, int &local) const
{
    for (const auto &w : windows_) {
        if (address >= w.first && address + n <= w.first + kWindow) {
            local = address - w.first;
            return w.second;
        }
    }
    return nullptr;
}

bool PanelServer::read(int address, int n, QVector<int16_t> &out) const
{
    int local = 0;
    WordSpace *f = window(address, n, local);
    return f && f->read(local, n, out);
}

bool PanelServer::write(int address, const QVector<int16_t> &words, const QString &via)
{
    int local = 0;
    WordSpace *f = window(address, int(words.size()), local);
    return f && f->write(local, words, via);
}

} // namespace kal::sim
