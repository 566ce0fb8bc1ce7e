#pragma once
// The log blocks a furnace offers at its trigger word, word by word (w0 is the
// kind, w1/w2 the packed time stamp of the PLC clock):
//   plain furnaces (10 words):  200 + batch number announces a batch;
//                               1..199 (and 100, 110) is one sample:
//                               w3 actual, w4 set value (0.1 °C), w5 output %,
//                               w6 current (0.1 A), w7 voltage (0.1 V),
//                               w8 state bits, w9 first message word;
//   headed furnaces (40 words): 154 sample group: w3 set value, w4 actual value
//                               (0.1 °C), w5 output %, w6/w7 batch number (low
//                               word first), w8/w9 message words, w10..w29 zone
//                               values, w30 remaining time, w31..w35 zone
//                               outputs as bytes, w36 segment kind (low byte)
//                               and number (high byte), w37 segment target;
//                               160 element currents (w3..w5, w8..w20,
//                               around the batch number in w6/w7); 159 program name in
//                               w31..w38; 131 compact sample of 16 words (the
//                               form of the furnaces with a 16-word trigger);
//   either:                     9001 operator text of 20 characters in w10..w19.

#include <QDateTime>
#include <QString>
#include <QVector>
#include <array>
#include <cstdint>

namespace kal::sim {

/// What a sample holds, taken from the furnace's live words.
struct SampleValues {
    QDateTime stamp;       ///< PLC clock
    int16_t setpoint = 0;  ///< 0.1 °C
    int16_t actual = 0;    ///< 0.1 °C
    int16_t output = 0;    ///< %
    int16_t state = 0;     ///< bits 0/1 of word 37
    std::array<int16_t, 3> messages{}; ///< words 87..89
    int16_t segment = 0;   ///< 1-based, 0 = no program
    int16_t kind = 0;      ///< segment kind
    int16_t target = 0;    ///< segment target, °C
    int16_t remaining = 0; ///< 1/100 h
    int32_t batch = 0;
};

QVector<int16_t> announcementBlock(int32_t batch, const QDateTime &stamp);
QVector<int16_t> plainSampleBlock(const SampleValues &v, int16_t kind = 1);
QVector<int16_t> groupBlock(const SampleValues &v);
QVector<int16_t> compactBlock(const SampleValues &v);
QVector<int16_t> programTextBlock(const QString &name, const QDateTime &stamp, int32_t batch);
/// Up to 16 element currents (0.1 A) in w3..w5 and w8..w20, around the batch
/// number in w6/w7; w5 carries only a byte (0..255).
QVector<int16_t> elementBlock(const QVector<int16_t> &currents, const QDateTime &stamp, int32_t batch);
QVector<int16_t> operatorTextBlock(const QString &text, const QDateTime &stamp);

} // namespace kal::sim
