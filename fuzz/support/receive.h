#pragma once
// The receive path under a running station: the furnaces of one channel kind
// configured in a data folder, the station started on it with sockets that
// hand over whatever bytes they are given, the main cycle ticking, and each
// answer going into DataArrival of the channel that sent the last request
// (then Block_Decode, and behind it the recorder and the message log, store
// whatever got there).
//
// An input is a row of answers; each one:
//   control  bit 7: no tick before it; bit 6: a tick only, no answer;
//            bits 0..3 (mod 9): the channel of an answer that no request
//            waited for (a late or stray datagram or segment)
//   length   two bytes, high byte first (cut to what is left)
//   bytes    the answer
// The seed maker writes real conversations with the simulated furnaces in
// this form.

#include <QByteArray>
#include <cstddef>
#include <cstdint>
#include <functional>

namespace kal::sim {
struct PlantDescription;
}

namespace kal::fuzz {

/// Which furnaces of the demo plant the station supervises.
enum class Kanal_Art {
    Panel,  ///< memory link furnaces, each on its own UDP channel
    Modbus, ///< Modbus/TCP furnaces
    Server, ///< a Modbus furnace whose exchange words come through channel 8
};

/// The part of the demo plant of that kind.
sim::PlantDescription plantOf(Kanal_Art art);

/// Once per process: the configuration file of the plant, kept as bytes.
void receiveSetUp(Kanal_Art art);

/// A fresh station on the configuration: data folder emptied, configuration
/// written, start-up run with the handing-over sockets, the cycle's clock
/// moved by hand.
void stationStart();

/// One tick of the main cycle (the station's clock moves 100 ms). Returns the
/// channel the station sent a frame on, or -1; `frame` gets that frame.
int tick(QByteArray *frame = nullptr);

/// The answer arrives on channel `kanal` (0..8). Returns the channel the
/// station sent a frame on while it took the answer (a command it sends at
/// once, such as a page word request), or -1; `frame` gets that frame.
int deliver(int kanal, const QByteArray &bytes, QByteArray *frame = nullptr);

class Input;

/// Runs one fuzz input of answers (see above) on a fresh station.
void runAnswers(Input &in);

/// Writes one answer of the input form: `tickFirst` false sets bit 7, an
/// empty `bytes` with `answer` false writes a tick alone.
QByteArray answerRecord(bool tickFirst, bool answer, int kanal, const QByteArray &bytes);

} // namespace kal::fuzz
