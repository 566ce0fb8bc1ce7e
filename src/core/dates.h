#pragma once
// Date forms of the station and the date arithmetic they rest on.
//
// A date value is a QDateTime with the Qt::UTC setting used as a plain wall-clock
// reading (no zone, no daylight-saving gaps): the PLCs stamp their records in
// local wall time, and the station compares and adds those readings as they
// stand. now() gives the present local wall time in that form.
//
// The station's own text of a date ("the text of the date") is always the
// 19-character form TT.MM.JJJJ HH:MM:SS, which Datum_Parse reads back.

#include <QDateTime>
#include <QString>
#include <cstdint>

namespace kal {

/// Present local wall-clock time as a plain reading (see above).
QDateTime now();
/// Tests may pin the clock; an invalid value goes back to the real clock.
void setNow(const QDateTime &fixed);

/// The station's text of a date: TT.MM.JJJJ HH:MM:SS.
QString systemDateText(const QDateTime &d);
/// Reads the text forms the station writes: TT.MM.JJJJ HH:MM:SS, TT.MM.JJ
/// HH:MM:SS, the same without seconds, and the date alone (a two-digit year is
/// 2000 + year; "/" or "-" may stand for "."). An unreadable text or an
/// impossible date gives an invalid QDateTime.
QDateTime dateValue(const QString &text);

/// Adds n intervals: "s", "n" (minute), "h", "d", "m" (month: the day is
/// clamped to the month's end), "yyyy". An unknown interval or a result
/// outside the years 100..9999 raises RunError 5; an invalid date RunError 13.
QDateTime DateAdd(const QString &unit, int64_t n, const QDateTime &d);
/// Whole units from a to b, counting unit boundaries crossed, not elapsed
/// time: 23:59 -> 00:01 is 1 day, 2 minutes. Units "s", "n", "h", "d", "m", "yyyy".
/// Raises RunError like DateAdd.
int64_t DateDiff(const QString &unit, const QDateTime &a, const QDateTime &b);

/// Text of a date in one of the named forms ("TTMMJJJJHHMM", "TTMMJJHHMM",
/// "TTMMJJ", ... with "SS" for seconds); separators always "." and ":".
QString Datum_Text(const QDateTime &d, const QString &form);
/// TT.MM.JJJJ HH:MM:SS of a date text; a year up to 100 counts as 2000 + year.
/// An unreadable text gives "".
QString Datum_Voll(const QString &text);
/// Reads TT.MM.JJJJ HH:MM:SS (19) or TT.MM.JJ HH:MM:SS (17) by column, built
/// from 01.01.2000 by adding fields in a fixed order; sets plant.Datum_OK.
/// A year the calendar can't hold raises RunError 5 (see DateAdd), a field
/// too large for an integer RunError 6; the configuration reader catches both.
QDateTime Datum_Parse(const QString &text);
/// "True" when the date passes the six tests (year 2006 .. present year), else
/// "False"; an invalid date or unreadable text is "False".
QString Datum_Gueltig(const QDateTime &d);
QString Datum_Gueltig(const QString &text);
/// Builds a date from six numbers without tests; day and month come back
/// reduced by 1 when they were above 1.
QDateTime Datum_Bau(int &day, int &month, int year, int hour, int minute, int second);
/// JJMMTT HH:MM:SS of a 17- or 19-character date text; sets plant.Datum_Sort_OK.
QString Datum_Sort(const QString &text);
/// Text of the PLC's packed two-word time stamp; sets plant.SPS_Datum_OK by
/// its rules (a year field of 6 or less leaves the flag unchanged).
QString SPS_Datum(int16_t wortA, int16_t wortB);

} // namespace kal
