#include "exchange_writing.h"

#include "../clock/local_clock.h"
#include "../clock/zone_clock.h"

namespace exchange {

namespace {

/// How far a zone's local clock is ahead.
ka_time_period lead_of(const ka_time_period& instant, const ka_time_zone& zone)
{
    if (clocks::goes_by_table(zone))
        if (const auto local = clocks::indexed_clock(instant, zone); local.is_told) [[likely]]
            return ka_time_period(local.told->adjustment) - zone.offset();
    return zone_clock::adjustment_at(zone, instant - zone.offset()) - zone.offset();
}

}

shown_moment::shown_moment(const ka_time_and_date& moment) : shown_moment(moment, 0)
{
    constexpr ka_time_period day(86400);
    if (&moment.time_zone() == &ka_time_zone::utc()) {
        is_universal = true;
        return;
    }
    const ka_time_period lead = lead_of(ka_access::instant(moment), moment.time_zone());
    is_universal = lead >= day || -lead >= day;
    // No text has room for what is no whole minute.
    if (!is_universal)
        *this = shown_moment(moment, lead.to_minutes() * 60);
}

shown_moment::shown_moment(const ka_time_and_date& moment, int seconds_ahead) : ahead(seconds_ahead)
{
    const ka_time_period& instant = ka_access::instant(moment);
    // What is below zero, or wraps, is out of the range and refused.
    const auto seconds = static_cast<unsigned long long>(instant.whole_seconds()) +
                         static_cast<unsigned long long>(seconds_ahead);
    const unsigned long long day = seconds / 86400;
    if (instant.microseconds() < 0)
        (void)ka_access::date_of(instant);
    julian_day = ka_date(day).julian_day();
    second_of_day = static_cast<unsigned int>(seconds % 86400);
    microsecond = static_cast<unsigned int>(instant.microseconds());
    date = ka_gregorian::split(julian_day);
}

}
