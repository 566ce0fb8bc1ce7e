#include "sim/modbus_codec.h"

#include "sim/wire_bytes.h"

namespace kal::sim {

namespace {

/// MBAP header for a PDU of `pduLength` bytes.
QByteArray header(const ModbusRequest &req, int pduLength)
{
    QByteArray h;
    appendBe16(h, req.transaction);
    appendBe16(h, 0);
    appendBe16(h, 1 + pduLength);
    h.append(char(req.unit));
    return h;
}

} // namespace

StreamTake takeModbusFrame(QByteArray &stream, QByteArray &frame)
{
    if (stream.size() < 6)
        return StreamTake::NeedMore;
    const int length = be16(stream, 4);
    // Unit id plus at least a function code; an ADU is at most 260 bytes.
    if (length < 2 || length > 254)
        return StreamTake::Garbage;
    if (stream.size() < 6 + length)
        return StreamTake::NeedMore;
    frame = stream.left(6 + length);
    stream.remove(0, 6 + length);
    return StreamTake::Frame;
}

ModbusRequest parseModbusRequest(const QByteArray &f)
{
    ModbusRequest r;
    r.transaction = uint16_t(be16(f, 0));
    r.unit = uint8_t(f[6]);
    r.function = uint8_t(f[7]);
    if (be16(f, 2) != 0) {
        r.ignore = QStringLiteral("protocol id %1 is not Modbus").arg(be16(f, 2));
        return r;
    }
    if (r.unit != kModbusUnit) {
        r.ignore = QStringLiteral("unit %1, this PLC is unit 1").arg(r.unit);
        return r;
    }
    const int pdu = f.size() - 7;
    if (r.function == 3) {
        if (pdu != 5) {
            r.exception = 3;
            return r;
        }
        r.address = be16(f, 8);
        r.count = be16(f, 10);
        if (r.count < 1 || r.count > 125)
            r.exception = 3;
    } else if (r.function == 16) {
        if (pdu < 6) {
            r.exception = 3;
            return r;
        }
        r.address = be16(f, 8);
        r.count = be16(f, 10);
        const int byteCount = uint8_t(f[12]);
        if (r.count < 1 || r.count > 123 || byteCount != 2 * r.count || pdu != 6 + byteCount) {
            r.exception = 3;
            return r;
        }
        for (int i = 0; i < r.count; ++i)
            r.words.append(static_cast<int16_t>(be16(f, 13 + 2 * i)));
    } else {
        r.exception = 1;
    }
    return r;
}

QByteArray modbusException(const ModbusRequest &req, uint8_t code)
{
    QByteArray a = header(req, 2);
    a.append(char(req.function | 0x80));
    a.append(char(code));
    return a;
}

QByteArray modbusAnswer(ModbusRequest req, WordSpace &space, const QString &via, QString &verdict,
                        bool &wellFormed)
{
    wellFormed = false;
    if (!req.ignore.isEmpty()) {
        verdict = req.ignore;
        return {};
    }
    if (req.exception == 0) {
        if (req.function == 3) {
            QVector<int16_t> words;
            if (space.read(req.address, req.count, words)) {
                verdict = QStringLiteral("read %1 @ %2").arg(req.count).arg(req.address);
                wellFormed = true;
                QByteArray a = header(req, 2 + 2 * req.count);
                a.append(char(3));
                a.append(char(2 * req.count));
                for (int16_t w : words)
                    appendBe16(a, uint16_t(w));
                return a;
            }
        } else if (space.write(req.address, req.words, via)) {
            verdict = QStringLiteral("write %1 @ %2").arg(req.count).arg(req.address);
            wellFormed = true;
            QByteArray a = header(req, 5);
            a.append(char(16));
            appendBe16(a, req.address);
            appendBe16(a, req.count);
            return a;
        }
        req.exception = 2;
    }
    static const char *const names[] = {"", "illegal function", "illegal data address", "illegal data value"};
    verdict = QStringLiteral("exception %1 (%2), function %3, %4 words @ %5")
                  .arg(req.exception)
                  .arg(QLatin1String(req.exception <= 3 ? names[req.exception] : "?"))
                  .arg(req.function)
                  .arg(req.count)
                  .arg(req.address);
    return modbusException(req, req.exception);
}

} // namespace kal::sim
