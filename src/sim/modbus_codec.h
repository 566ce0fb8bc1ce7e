#pragma once
// Modbus/TCP, server side, as a PLC answers it: function 3 (read holding
// registers) and function 16 (write multiple registers) on unit 1, with the
// standard exception answers (1 illegal function, 2 illegal data address,
// 3 illegal data value).

#include "sim/word_space.h"

#include <QByteArray>
#include <QString>
#include <QVector>
#include <cstdint>

namespace kal::sim {

constexpr uint8_t kModbusUnit = 1;

enum class StreamTake { NeedMore, Frame, Garbage };

/// Takes one frame (MBAP header and PDU) off the front of the bytes a TCP
/// connection has delivered. Garbage: the length field cannot belong to a
/// Modbus frame (the stream can't be resynchronised; the connection is closed).
StreamTake takeModbusFrame(QByteArray &stream, QByteArray &frame);

struct ModbusRequest {
    uint16_t transaction = 0;
    uint8_t unit = 0;
    uint8_t function = 0;
    int address = 0;
    int count = 0;
    QVector<int16_t> words; ///< data of a write
    uint8_t exception = 0;  ///< nonzero: the request is answered with this exception
    QString ignore;         ///< nonempty: not for this device; no answer at all
};

ModbusRequest parseModbusRequest(const QByteArray &frame);

/// Executes a request on the word space and gives the answer. `verdict` tells
/// what was done (or why it was refused); `wellFormed` is false for requests
/// answered with an exception or ignored.
QByteArray modbusAnswer(ModbusRequest req, WordSpace &space, const QString &via, QString &verdict,
                        bool &wellFormed);

/// Exception answer: the request's header, function | 0x80, the code.
QByteArray modbusException(const ModbusRequest &req, uint8_t code);

} // namespace kal::sim
