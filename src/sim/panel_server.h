#pragma once
// The panel server: one memory link server on its own address that holds the
// words of several furnaces, each in a window of 1000 words at its offset
// (3000 + 1000 * k; word 215 of the furnace tells the station which). A
// request must lie inside one window; words 0..999 of the furnace are reached
// there. Writes go to the furnace as if they had come on its own link.

#include "sim/link_faults.h"
#include "sim/word_space.h"

#include <QHostAddress>
#include <QObject>
#include <memory>

namespace kal::sim {

class FrameLog;
class MemoryLinkServer;
class SimClock;
class SimFurnace;

class PanelServer : public QObject, public WordSpace {
    Q_OBJECT
public:
    static constexpr int kWindow = 1000;

    PanelServer(QString address, SimClock &clock, FrameLog &log, QObject *parent = nullptr);
    ~PanelServer() override;

    /// Serves the furnace's words 0..999 at offset .. offset + 999.
    void addWindow(int offset, WordSpace *furnace);
    bool listen(int port, QString *error);
    quint16 port() const;
    QString address() const { return address_; }
    LinkControl &link() { return link_; }

    bool read(int address, int n, QVector<int16_t> &out) const override;
    bool write(int address, const QVector<int16_t> &words, const QString &via) override;

private:
    /// The furnace whose window holds address .. address + n - 1, and the
    /// furnace's own address of the first word.
    WordSpace *window(int address, int n, int &local) const;

    QString address_;
    SimClock &clock_;
    FrameLog &log_;
    LinkControl link_;
    QVector<QPair<int, WordSpace *>> windows_;
    std::unique_ptr<MemoryLinkServer> server_;
};

} // namespace kal::sim
