#include "sim/program_words.h"

#include "sim/word_image.h"

namespace kal::sim {

QVector<int16_t> programWords(const ProgramDescription &program, bool longNames)
{
    constexpr int P = 10; // index of word P in the result
    QVector<int16_t> w(110, 0);
    int vorher = 0; // a hold keeps the target of the segment before it, as the station writes it
    for (int k = 0; k < 20 && k < program.segments.size(); ++k) {
        const SegmentDescription &s = program.segments[k];
        if (s.befehl < 1 || s.befehl > 5)
            continue;
        const int soll = s.befehl == 2 ? vorher : s.sollwert;
        if (s.befehl != 5)
            vorher = soll;
        w[P + k] = int16_t(s.befehl);
        w[P + 20 + k] = int16_t(soll);
        w[P + 40 + k] = (s.befehl == 3 || s.befehl == 4) ? int16_t(0) : int16_t(s.wert);
        w[P + 60 + k] = int16_t(s.befehl == 5 ? s.grenze : (s.grenze & 0xFF));
    }
    const QVector<int16_t> first = textWords(program.name.left(16), 8);
    std::copy(first.begin(), first.end(), w.begin() + P + 80);
    if (longNames) {
        const QVector<int16_t> rest = textWords(program.name.mid(16, 14), 7);
        std::copy(rest.begin(), rest.end(), w.begin());
    }
    return w;
}

} // namespace kal::sim
