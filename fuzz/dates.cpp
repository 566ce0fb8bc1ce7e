// The date parsers: every text form the station reads back from its files,
// the PLC's packed time stamp, and the arithmetic run on what they give.
//
// Input: four bytes, the two words of a PLC stamp (high byte first); a byte
// that picks the unit and a signed word the count of a date step; then the
// text (8-bit).

#include "core/dates.h"
#include "core/plant_state.h"
#include "core/tables.h"
#include "support/fuzz_support.h"

#include <cstdlib>

void kal::fuzz::fuzzOne(Input &in)
{
    pinWorld();
    const i16 a = static_cast<i16>(in.word());
    const i16 b = static_cast<i16>(in.word());
    static const char *const einheiten[] = {"s", "n", "h", "d", "m", "yyyy"};
    const QString einheit = QLatin1String(einheiten[in.byte() % 6]);
    const int64_t schritte = static_cast<i16>(in.word());
    const QString text = QString::fromLatin1(in.rest());

    const QString stempel = SPS_Datum(a, b);
    Datum_Voll(text);
    Datum_Sort(text);
    Datum_Gueltig(text);
    Datum_Gueltig(stempel);
    // Datum_Parse raises the integer's overflow (6) and the calendar's end
    // (5) on absurd years; the configuration reader, its one caller, catches them.
    QDateTime geparst;
    try {
        geparst = Datum_Parse(text);
    } catch (const RunError &e) {
        if (e.number != 5 && e.number != 6)
            std::abort();
    }
    const QDateTime gelesen[] = {dateValue(text), geparst, dateValue(stempel)};
    for (const QDateTime &d : gelesen) {
        if (!d.isValid())
            continue;
        // Whatever a parser accepted, the station writes back and reads again.
        const QString voll = systemDateText(d);
        if (dateValue(voll) != d && d.date().year() >= 1000 && d.date().year() <= 9999)
            std::abort();
        for (const char *form : {"TTMMJJJJHHMMSS", "TTMMJJJJ", "TTMMJJHHMM", "TTMMJJ"})
            Datum_Text(d, QLatin1String(form));
        // A step outside the years the station knows is its run-time error 5.
        try {
            const QDateTime spaeter = DateAdd(einheit, schritte, d);
            DateDiff(einheit, d, spaeter);
        } catch (const RunError &e) {
            if (e.number != 5 && e.number != 13)
                std::abort();
        }
    }
}
