#pragma once

// How the library's values show in an expectation that fails: in full, whatever
// the default formats are, and also where a value is out of its range.

#include <concepts>
#include <ctime>
#include <ostream>
#include <sstream>
#include <string>

#include <time/time_varnel.h>

inline std::string shown(const ka_date& date)
{
    return date.to_string("%Y-%m-%d") + ", day " + std::to_string(date.julian_day());
}

inline std::string shown(const ka_time& time) { return time.to_string("%H:%M:%S.%q"); }

inline std::string shown(const ka_time_period& period) { return period.to_string(); }

inline std::string shown(const ka_wint& number) { return number.to_string(); }

/// In universal time, as a reading of the local time can be what is broken.
inline std::string shown(const ka_time_and_date& moment)
{
    const std::string zone = " UTC, in " + moment.time_zone().name();
    try {
        return shown(moment.utc_date()) + ", " + shown(moment.utc_time()) + zone;
    } catch (const ka_time_varnel_error&) {
        return moment.utc_time_and_date().to_string() + " after day 0" + zone;
    }
}

inline std::string shown(ka_which_one which) { return ka_which_one_name(which); }

inline std::string shown(const ka_calendar_date& point)
{
    std::ostringstream out;
    out << "month " << point.month() << ", day " << point.day() << ", " << shown(point.week()) << " weekday "
        << point.weekday() << ", after " << point.when().to_string();
    return out.str();
}

inline std::string shown(const ka_stopwatch& watch)
{
    std::ostringstream out;
    watch.print(out);
    return out.str();
}

inline std::string shown(const std::tm& record)
{
    std::ostringstream out;
    out << "year " << record.tm_year << ", month " << record.tm_mon << ", day " << record.tm_mday << ", "
        << record.tm_hour << ':' << record.tm_min << ':' << record.tm_sec << ", weekday " << record.tm_wday
        << ", day of year " << record.tm_yday << ", isdst " << record.tm_isdst;
    return out.str();
}

/// What has a text above, and is not merely converted to something that has.
template <typename Value>
concept shown_value = std::derived_from<Value, ka_date> || std::derived_from<Value, ka_time> ||
    std::derived_from<Value, ka_time_period> || std::derived_from<Value, ka_wint> ||
    std::derived_from<Value, ka_time_and_date> || std::derived_from<Value, ka_calendar_date> ||
    std::derived_from<Value, ka_stopwatch> || std::same_as<Value, ka_which_one> ||
    std::same_as<Value, std::tm>;

/// GoogleTest finds it by its name.
template <shown_value Value>
void PrintTo(const Value& value, std::ostream* out)
{
    *out << shown(value);
}
