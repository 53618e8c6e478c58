#pragma once

#include "../rules/effect.h"

namespace clocks {

/// The local clock, read once for all who want more than one part of it.
struct reading {
    ka_time time;
    ka_date date;
    ka_gregorian::date_parts day;
    bool is_dst;
    /// What the zone's table tells, where it goes by one.
    const rules::kind* told;
};

/// A reading as the record of the C runtime.
[[gnu::always_inline]] inline std::tm fields_of(const reading& local)
{
    std::tm fields = {};
    const auto second_of_day = static_cast<unsigned int>(ka_access::second_of_day(local.time));
    const unsigned int minute_of_day = second_of_day / 60;
    const int julian_day = local.date.julian_day();
    fields.tm_sec = static_cast<int>(second_of_day % 60);
    fields.tm_min = static_cast<int>(minute_of_day % 60);
    fields.tm_hour = static_cast<int>(minute_of_day / 60);
    fields.tm_mday = static_cast<int>(local.day.day);
    fields.tm_mon = static_cast<int>(local.day.month) - 1;
    fields.tm_year = local.day.year - 1900;
    fields.tm_wday = static_cast<int>(ka_gregorian::modulo_7(static_cast<unsigned int>(julian_day) + 1));
    fields.tm_yday = julian_day - ka_gregorian::day_number(1, 1, local.day.astronomical_year);
    fields.tm_isdst = local.is_dst;
    return fields;
}

}
