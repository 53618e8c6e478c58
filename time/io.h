#pragma once

#include <concepts>
#include <ostream>
#include <sstream>

#include <time/date.h>
#include <time/stopwatch.h>
#include <time/time_of_day.h>
#include <time/timedate.h>
#include <time/tperiod.h>
#include <time/wint.h>
#include <time/zone.h>
#include <time/zone_rule.h>

/// `<<` to a stream, for each class that has a `print`.
///
///     #include <time/io.h>
///
///     std::ostringstream out;
///     out << ka_date(7, 4, 2024) << " and " << ka_time_period(90);
///     out << std::setw(8) << std::setfill('.') << ka_wint(-5);
///     out.str();    // "07/04/24 and 90 seconds......-5"
///
/// Text: what `print` writes, so `to_string()`, in the default format. For
/// another format there is `to_string(format)`.
/// Stream: as a string goes in. Width, fill and adjustment hold for all of the
/// text, and the width is 0 after it. The stream's locale and its flags for
/// numbers change nothing: digits are never grouped.
/// Failure: what `to_string` throws is thrown before anything is written.
/// Streams of `char` only.

/// A class that prints its text in one piece, or one derived from it. What
/// merely converts to one of them, such as a number or a `tm`, is not meant.
template <typename Value>
concept ka_printable = std::derived_from<Value, ka_date> || std::derived_from<Value, ka_time> ||
    std::derived_from<Value, ka_time_and_date> || std::derived_from<Value, ka_time_period> ||
    std::derived_from<Value, ka_wint> || std::derived_from<Value, ka_time_zone> ||
    std::derived_from<Value, ka_time_zone_rule>;

/// Any number of them in a row: `out << date << ' ' << time`. A moment prints in
/// its zone, a zone its names.
template <ka_printable Value>
std::ostream& operator<<(std::ostream& stream, const Value& value)
{
    value.print(stream);
    return stream;
}

/// A stopwatch prints in pieces; here they are one text, as of any other class.
inline std::ostream& operator<<(std::ostream& stream, const ka_stopwatch& watch)
{
    std::ostringstream text;
    watch.print(text);
    return stream << text.str();
}
