#include "core/dates.h"

#include "core/conversions.h"
#include "core/plant_state.h"
#include "core/tables.h"

#include <cmath>
#include <cstdlib>
#include <limits>

namespace kal {

namespace {

/// Run-time error of a date routine given an interval it does not know, or
/// whose result leaves the calendar the station keeps (years 100..9999).
constexpr int ERR_DATE_ARGUMENT = 5;
/// Run-time error of date arithmetic on a value that is no date (for example
/// the result of reading an unreadable date text).
constexpr int ERR_DATE_TYPE = 13;

/// More seconds than the whole calendar holds: larger counts cannot give a
/// date, and stopping here keeps the multiplication below in range.
constexpr int64_t MAX_UNITS = 400'000'000'000LL;

enum class Unit { Sekunde, Minute, Stunde, Tag, Monat, Jahr };

QDateTime pinnedNow; // invalid: the real clock
StateReset reset{[] { pinnedNow = QDateTime(); }};

QDateTime wall(const QDate &d, const QTime &t)
{
    return QDateTime(d, t, Qt::UTC);
}

/// The same reading as a plain wall-clock value, whatever time zone setting it came in with.
QDateTime asWall(const QDateTime &d)
{
    return wall(d.date(), d.time());
}

/// 01.01.2000 00:00:00, the date every built date starts from.
QDateTime sentinel()
{
    return wall(QDate(2000, 1, 1), QTime(0, 0, 0));
}

Unit unitOf(const QString &unit)
{
    const QString u = unit.toLower();
    if (u == QLatin1String("s"))
        return Unit::Sekunde;
    if (u == QLatin1String("n"))
        return Unit::Minute;
    if (u == QLatin1String("h"))
        return Unit::Stunde;
    if (u == QLatin1String("d"))
        return Unit::Tag;
    if (u == QLatin1String("m"))
        return Unit::Monat;
    if (u == QLatin1String("yyyy"))
        return Unit::Jahr;
    throw RunError(ERR_DATE_ARGUMENT, "invalid date interval: " + unit.toStdString());
}

void requireDate(const QDateTime &d)
{
    if (!d.isValid())
        throw RunError(ERR_DATE_TYPE, "type mismatch: no date");
}

QDateTime add(Unit e, int64_t n, const QDateTime &from)
{
    requireDate(from);
    if (std::llabs(n) > MAX_UNITS)
        throw RunError(ERR_DATE_ARGUMENT, "date out of range");
    const QDateTime d = asWall(from);
    QDateTime r;
    switch (e) {
    case Unit::Sekunde: r = d.addSecs(n); break;
    case Unit::Minute: r = d.addSecs(n * 60); break;
    case Unit::Stunde: r = d.addSecs(n * 3600); break;
    case Unit::Tag: r = d.addDays(n); break;
    // Months and years keep the day where the target month has it, else
    // they give the month's last day (31 Jan + 1 month = end of February).
    case Unit::Monat:
        if (std::llabs(n) > 12 * 10000)
            throw RunError(ERR_DATE_ARGUMENT, "date out of range");
        r = wall(d.date().addMonths(int(n)), d.time());
        break;
    case Unit::Jahr:
        if (std::llabs(n) > 10000)
            throw RunError(ERR_DATE_ARGUMENT, "date out of range");
        r = wall(d.date().addYears(int(n)), d.time());
        break;
    }
    if (!r.isValid() || r.date().year() < 100 || r.date().year() > 9999)
        throw RunError(ERR_DATE_ARGUMENT, "date out of range");
    return r;
}

/// Builds a date from 01.01.2000 in the station's fixed order: hours,
/// minutes, seconds, then day-1 days and month-1 months (each only when the
/// field is above 1), last the years. A day beyond the month's end thus runs
/// into the next month before the months are added, and the month addition
/// then clamps: day 31 of month 2 gives 31 Jan + 1 month = 29 Feb 2000.
QDateTime buildDate(int day, int month, int year, int hour, int minute, int second)
{
    QDateTime d = sentinel();
    d = add(Unit::Stunde, hour, d);
    d = add(Unit::Minute, minute, d);
    d = add(Unit::Sekunde, second, d);
    if (day > 1)
        d = add(Unit::Tag, day - 1, d);
    if (month > 1)
        d = add(Unit::Monat, month - 1, d);
    return add(Unit::Jahr, year, d);
}

/// Two-digit field: the value plus 100, right two digits.
QString twoDigitField(int v)
{
    return QString::number(v + 100).right(2);
}

/// Year plus 10000 (or another offset), right `digits` digits.
QString yearText(int year, int digits, int offset = 10000)
{
    return QString::number(year + offset).right(digits);
}

/// Whole number of the field at 1-based column `col`, read like the
/// platform's Val and stored into an integer (which rounds). A field that
/// reads as a number too large for an integer ("9D99" in a four-digit year)
/// is the integer's overflow, RunError 6.
int fieldValue(const QString &text, int col, int len)
{
    const double v = std::nearbyint(leadingNumber(text.mid(col - 1, len)));
    if (!(v >= std::numeric_limits<int>::min() && v <= std::numeric_limits<int>::max()))
        throw RunError(ERR_OVERFLOW, "date field out of range");
    return int(v);
}

/// Seconds of a wall reading on one continuous scale (Julian day based, so
/// always positive and free of zones).
int64_t wallSeconds(const QDateTime &d)
{
    return int64_t(d.date().toJulianDay()) * 86400 + d.time().msecsSinceStartOfDay() / 1000;
}

/// Reads a text along a template: T day, M month, J year, h hour, m minute,
/// s second (one digit each); "." takes any of "./-", other characters must
/// stand as they are. Returns false when the text does not fit.
bool readByTemplate(const QString &text, const char *muster, int &day, int &month, int &year,
                int &hour, int &minute, int &second)
{
    const int n = int(std::strlen(muster));
    if (text.size() != n)
        return false;
    day = month = year = hour = minute = second = 0;
    for (int i = 0; i < n; ++i) {
        const char m = muster[i];
        const QChar c = text[i];
        int *ziel = nullptr;
        switch (m) {
        case 'T': ziel = &day; break;
        case 'M': ziel = &month; break;
        case 'J': ziel = &year; break;
        case 'h': ziel = &hour; break;
        case 'm': ziel = &minute; break;
        case 's': ziel = &second; break;
        default: break;
        }
        if (ziel) {
            if (c < QLatin1Char('0') || c > QLatin1Char('9'))
                return false;
            *ziel = *ziel * 10 + (c.unicode() - '0');
        } else if (m == '.') {
            if (c != QLatin1Char('.') && c != QLatin1Char('/') && c != QLatin1Char('-'))
                return false;
        } else if (c != QLatin1Char(m)) {
            return false;
        }
    }
    return true;
}

} // namespace

QDateTime now()
{
    if (pinnedNow.isValid())
        return pinnedNow;
    const QDateTime local = QDateTime::currentDateTime();
    const QTime t = local.time();
    // Whole seconds: the station's dates carry no fractions.
    return wall(local.date(), QTime(t.hour(), t.minute(), t.second()));
}

void setNow(const QDateTime &fixed)
{
    pinnedNow = fixed.isValid() ? asWall(fixed) : QDateTime();
}

QString systemDateText(const QDateTime &d)
{
    return Datum_Text(d, QStringLiteral("TTMMJJJJHHMMSS"));
}

QDateTime dateValue(const QString &text)
{
    // The text forms the station writes itself, longest first; a two-digit
    // year is 2000 + year. Anything else, or an impossible date, is no date.
    static const char *const formen[] = {
        "TT.MM.JJJJ hh:mm:ss", "TT.MM.JJ hh:mm:ss", "TT.MM.JJJJ hh:mm",
        "TT.MM.JJ hh:mm",      "TT.MM.JJJJ",        "TT.MM.JJ",
    };
    const QString t = text.trimmed();
    for (const char *form : formen) {
        int day, month, year, hour, minute, second;
        if (!readByTemplate(t, form, day, month, year, hour, minute, second))
            continue;
        if (std::strstr(form, "JJJJ") == nullptr)
            year += 2000;
        const QDate date(year, month, day);
        const QTime time(hour, minute, second);
        if (!date.isValid() || !time.isValid())
            return QDateTime();
        return wall(date, time);
    }
    return QDateTime();
}

QDateTime DateAdd(const QString &unit, int64_t n, const QDateTime &d)
{
    return add(unitOf(unit), n, d);
}

int64_t DateDiff(const QString &unit, const QDateTime &a, const QDateTime &b)
{
    const Unit e = unitOf(unit);
    requireDate(a);
    requireDate(b);
    const QDateTime x = asWall(a);
    const QDateTime y = asWall(b);
    // Each unit counts the boundaries of that unit between the two readings:
    // both are cut down to the unit first, then subtracted.
    switch (e) {
    case Unit::Sekunde: return wallSeconds(y) - wallSeconds(x);
    case Unit::Minute: return wallSeconds(y) / 60 - wallSeconds(x) / 60;
    case Unit::Stunde: return wallSeconds(y) / 3600 - wallSeconds(x) / 3600;
    case Unit::Tag: return y.date().toJulianDay() - x.date().toJulianDay();
    case Unit::Monat:
        return int64_t(y.date().year() - x.date().year()) * 12 + (y.date().month() - x.date().month());
    case Unit::Jahr: return y.date().year() - x.date().year();
    }
    return 0;
}

QString Datum_Text(const QDateTime &d, const QString &form)
{
    if (!d.isValid())
        return QString();
    const QDate date = d.date();
    const QTime time = d.time();
    QString datum;
    if (form.contains(QLatin1String("TTMMJJJJ")))
        datum = twoDigitField(date.day()) + QLatin1Char('.') + twoDigitField(date.month()) + QLatin1Char('.') +
                yearText(date.year(), 4);
    else if (form.contains(QLatin1String("TTMMJJ")))
        datum = twoDigitField(date.day()) + QLatin1Char('.') + twoDigitField(date.month()) + QLatin1Char('.') +
                yearText(date.year(), 2);
    QString text = datum;
    if (form.contains(QLatin1String("HHMM"))) {
        if (!text.isEmpty())
            text += QLatin1Char(' ');
        text += twoDigitField(time.hour()) + QLatin1Char(':') + twoDigitField(time.minute());
    }
    if (form.endsWith(QLatin1String("SS")))
        text += QLatin1Char(':') + twoDigitField(time.second());
    return text;
}

QString Datum_Voll(const QString &text)
{
    // An unreadable text gives "": stored in a fixed field it reads back as
    // no date, which is what it was.
    const QDateTime d = dateValue(text);
    if (!d.isValid())
        return QString();
    const int year = d.date().year();
    const QString j = year <= 100 ? yearText(year, 4, 12000) : yearText(year, 4);
    return twoDigitField(d.date().day()) + QLatin1Char('.') + twoDigitField(d.date().month()) + QLatin1Char('.') + j +
           QLatin1Char(' ') + twoDigitField(d.time().hour()) + QLatin1Char(':') + twoDigitField(d.time().minute()) +
           QLatin1Char(':') + twoDigitField(d.time().second());
}

namespace {

/// The six fields of a date text read by column.
struct DateFields {
    int day = 0, month = 0, year = 0, hour = 0, minute = 0, second = 0;
};

/// Reads TT.MM.JJJJ HH:MM:SS (19 characters; its year at column `jahrSpalte`
/// with `jahrBreite` digits) or TT.MM.JJ HH:MM:SS (17 characters). Another
/// length leaves every field 0 and gives false.
bool readFields(const QString &t, int jahrSpalte, int jahrBreite, DateFields &f)
{
    int zeit; // column of the hour
    if (t.size() == 19) {
        f.year = fieldValue(t, jahrSpalte, jahrBreite);
        zeit = 12;
    } else if (t.size() == 17) {
        f.year = fieldValue(t, 7, 2);
        zeit = 10;
    } else {
        return false;
    }
    f.day = fieldValue(t, 1, 2);
    f.month = fieldValue(t, 4, 2);
    f.hour = fieldValue(t, zeit, 2);
    f.minute = fieldValue(t, zeit + 3, 2);
    f.second = fieldValue(t, zeit + 6, 2);
    return true;
}

} // namespace

QDateTime Datum_Parse(const QString &text)
{
    const QString t = Text_Sauber(text);
    DateFields f;
    readFields(t, 7, 4, f);
    int day = f.day, month = f.month, year = f.year;
    const int hour = f.hour, minute = f.minute, second = f.second;
    if (year >= 100)
        year -= 2000;
    // Six tests. The hour may be 24 (it then runs into the next day), and a
    // day beyond the month's end is not refused: the date is built anyway.
    const bool ok = day >= 1 && day <= 31 && month >= 1 && month <= 12 && year >= 1 &&
                    now().date().year() - 2000 >= year && hour < 25 && minute < 60 && second < 60;
    plant.Datum_OK = ok ? -1 : 0;
    return Datum_Bau(day, month, year, hour, minute, second);
}

QString Datum_Gueltig(const QDateTime &d)
{
    if (!d.isValid())
        return QStringLiteral("False");
    const QDate date = d.date();
    const QTime time = d.time();
    const bool ok = date.day() >= 1 && date.day() <= 31 && date.month() >= 1 && date.month() <= 12 &&
                    date.year() >= 2006 && date.year() <= now().date().year() && time.hour() < 25 &&
                    time.minute() < 60 && time.second() < 60;
    return ok ? QStringLiteral("True") : QStringLiteral("False");
}

QString Datum_Gueltig(const QString &text)
{
    return Datum_Gueltig(dateValue(text));
}

QDateTime Datum_Bau(int &day, int &month, int year, int hour, int minute, int second)
{
    if (year >= 100)
        year -= 2000;
    const QDateTime d = buildDate(day, month, year, hour, minute, second);
    if (day > 1)
        --day;
    if (month > 1)
        --month;
    return d;
}

QString Datum_Sort(const QString &text)
{
    // The four-digit year of the long form is read by its last two digits.
    DateFields f;
    if (!readFields(text, 9, 2, f)) {
        plant.Datum_Sort_OK = 0;
        return QString();
    }
    const int day = f.day, month = f.month, year = f.year, hour = f.hour, minute = f.minute,
              second = f.second;
    const bool ok = year >= 6 && month >= 1 && month <= 12 && day >= 1 && day <= 31 && hour <= 23 &&
                    minute <= 59 && second <= 59;
    plant.Datum_Sort_OK = ok ? -1 : 0;
    return twoDigitField(year) + twoDigitField(month) + twoDigitField(day) + QLatin1Char(' ') + twoDigitField(hour) + QLatin1Char(':') +
           twoDigitField(minute) + QLatin1Char(':') + twoDigitField(second);
}

QString SPS_Datum(int16_t wortA, int16_t wortB)
{
    const uint16_t a = static_cast<uint16_t>(wortA);
    const uint16_t b = static_cast<uint16_t>(wortB);
    const int day = (a >> 11) & 0x1F;
    const int month = (a >> 7) & 0x0F;
    const int year = a & 0x7F;
    const int hour = (b >> 11) & 0x1F;
    const int minute = (b >> 5) & 0x3F;
    const int second = (b & 0x1F) * 2;
    // A year field above 6 sets the flag, a bad field clears it; a year of 6
    // or less with good fields leaves it as the previous stamp left it, and
    // the block decoder relies on that.
    if (year > 6)
        plant.SPS_Datum_OK = -1;
    if (month < 1 || month > 12 || day < 1 || day > 31 || hour > 23 || minute > 59 || second > 59)
        plant.SPS_Datum_OK = 0;
    return systemDateText(buildDate(day, month, year, hour, minute, second));
}

} // namespace kal
