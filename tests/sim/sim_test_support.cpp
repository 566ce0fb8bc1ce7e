#include "sim_test_support.h"

#include <QCoreApplication>
#include <QElapsedTimer>

namespace simtest {

namespace {

QCoreApplication &app()
{
    static int argc = 1;
    static char name[] = "sim_tests";
    static char *argv[] = {name, nullptr};
    static QCoreApplication instance(argc, argv);
    return instance;
}

} // namespace

QDateTime testStart()
{
    return QDateTime(QDate(2024, 3, 1), QTime(7, 5, 0), Qt::UTC);
}

bool pumpUntil(const std::function<bool()> &done, int limitMs)
{
    app();
    QElapsedTimer guard;
    guard.start();
    while (!done()) {
        if (guard.elapsed() > limitMs)
            return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
    }
    return true;
}

void pumpPending()
{
    app();
    for (int i = 0; i < 20; ++i)
        QCoreApplication::processEvents(QEventLoop::AllEvents);
}

QByteArray hex(const char *text)
{
    return QByteArray::fromHex(QByteArray(text).replace(' ', ""));
}

FurnaceDescription furnaceDesc(int number, Protocol p, bool headed, int base)
{
    FurnaceDescription f;
    f.index = number - 1;
    f.address = QStringLiteral("127.0.0.%1").arg(10 + number);
    f.protocol = p;
    f.headed = headed;
    f.base = base;
    f.name = QStringLiteral("Testofen %1").arg(number);
    f.serial = QStringLiteral("2401-00%1-TST").arg(number);
    f.sampleSeconds = 1;
    return f;
}

std::unique_ptr<SimPlant> startPlant(PlantDescription d)
{
    app();
    d.udpPort = 0;
    d.modbusPort = 0;
    auto plant = std::make_unique<SimPlant>(d, testStart());
    QString error;
    if (!plant->start(&error))
        qFatal("plant does not start: %s", qPrintable(error));
    return plant;
}

UdpClient::UdpClient()
{
    app();
    socket.bind(QHostAddress::LocalHost, 0);
}

void UdpClient::send(const QByteArray &frame, const QString &host, quint16 port)
{
    socket.writeDatagram(frame, QHostAddress(host), port);
}

QByteArray UdpClient::receive()
{
    if (!pumpUntil([this] { return socket.hasPendingDatagrams(); }))
        return {};
    QByteArray d(int(socket.pendingDatagramSize()), '\0');
    socket.readDatagram(d.data(), d.size());
    return d;
}

QByteArray UdpClient::ask(const QByteArray &frame, const QString &host, quint16 port)
{
    send(frame, host, port);
    return receive();
}

bool TcpClient::connectTo(const QString &host, quint16 port)
{
    app();
    socket.connectToHost(host, port);
    return pumpUntil([this] {
               return socket.state() == QAbstractSocket::ConnectedState ||
                      socket.state() == QAbstractSocket::UnconnectedState;
           }) &&
           socket.state() == QAbstractSocket::ConnectedState;
}

QByteArray TcpClient::receive(int n)
{
    pumpUntil([&] {
        got.append(socket.readAll());
        return got.size() >= n || socket.state() != QAbstractSocket::ConnectedState;
    });
    got.append(socket.readAll());
    const QByteArray out = got.left(n);
    got.remove(0, out.size());
    return out;
}

QByteArray TcpClient::ask(const QByteArray &frame, int answerLength)
{
    socket.write(frame);
    return receive(answerLength);
}

QByteArray readFrame(int address, int count)
{
    QByteArray f = hex("42 00 00 00 00 00 00 06 1B 52");
    f.append(char(address >> 8)).append(char(address & 0xFF));
    f.append(char(count >> 8)).append(char(count & 0xFF));
    return f;
}

QByteArray writeFrame(int address, const QVector<int16_t> &words)
{
    const int n = int(words.size());
    QByteArray f = hex("42 00 00 00 00 00");
    f.append(char((2 * n + 6) >> 8)).append(char((2 * n + 6) & 0xFF));
    f.append(char(0x1B)).append('W');
    f.append(char(address >> 8)).append(char(address & 0xFF));
    f.append(char(n >> 8)).append(char(n & 0xFF));
    for (int16_t w : words)
        f.append(char(uint16_t(w) >> 8)).append(char(w & 0xFF));
    return f;
}

QVector<int16_t> answerWords(const QByteArray &a)
{
    QVector<int16_t> w;
    for (int i = 10; i + 1 < a.size(); i += 2)
        w.append(static_cast<int16_t>((uint8_t(a[i]) << 8) | uint8_t(a[i + 1])));
    return w;
}

} // namespace simtest
