#include "general_path.h"
#include "local_clock.h"
#include "setting.h"

// The local clock by the rules of a zone. In the fast path the standard clock is
// regular, and the rule in effect moves it within its day.

namespace clocks {

namespace {

/// Whether the local clock shows the date of the standard clock.
[[gnu::always_inline]] inline bool stays_in_day(const ka_time& standard,
                                                const ka_time_zone_rule* rule) noexcept
{
    if (rule == nullptr)
        return true;
    const auto second = static_cast<unsigned long long>(ka_access::second_of_day(standard)) +
                        static_cast<unsigned long long>(rule->adjustment().whole_seconds());
    return second < seconds_per_day && rule->adjustment().microseconds() == 0;
}

[[gnu::always_inline]] inline ka_time moved_in_day(const ka_time& standard,
                                                   const ka_time_zone_rule* rule) noexcept
{
    if (rule == nullptr)
        return standard;
    return ka_access::time(ka_access::second_of_day(standard) + rule->adjustment().to_seconds(),
                           static_cast<int>(standard.microseconds()));
}

// Where a rule moves the clock into another day.

[[gnu::noinline]] ka_time time_in_other_day(ka_time standard, const ka_time_zone_rule& rule)
{
    return standard + rule.adjustment();
}

[[gnu::noinline]] ka_date date_in_other_day(ka_time standard, ka_date date, const ka_time_zone_rule& rule)
{
    return ka_access::date_of(universal_instant(standard, date) + rule.adjustment());
}

[[gnu::noinline]] reading reading_in_other_day(ka_time standard, ka_date standard_date,
                                               const ka_time_zone_rule& rule)
{
    const ka_date date = date_in_other_day(standard, standard_date, rule);
    return {time_in_other_day(standard, rule), date, ka_gregorian::split(date.julian_day()), true, nullptr};
}

[[gnu::always_inline]] inline reading full_reading(const ka_time_period& instant, const ka_time_zone& zone)
{
    const standard_clock standard(instant, zone);
    if (!standard.is_regular) [[unlikely]]
        return reading_in_general(instant, zone);
    const ka_time time = time_at(standard.seconds, instant.microseconds());
    const ka_date date = date_at(standard.seconds);
    const ka_gregorian::date_parts day = ka_gregorian::split(date.julian_day());
    const ka_time_zone_rule* const rule = rules::find_rule(zone, time, date, day);
    if (!stays_in_day(time, rule)) [[unlikely]]
        return reading_in_other_day(time, date, *rule);
    return {moved_in_day(time, rule), date, day, rule != nullptr, nullptr};
}

}

ka_time time_by_rules(const ka_time_period& instant, const ka_time_zone& zone)
{
    const standard_clock standard(instant, zone);
    if (!standard.is_regular) [[unlikely]]
        return time_in_general(instant, zone);
    const ka_time time = time_at(standard.seconds, instant.microseconds());
    if (!rules::has_rules(zone))
        return time;
    const ka_time_zone_rule* const rule = rules::find_rule(zone, time, date_at(standard.seconds));
    if (stays_in_day(time, rule)) [[likely]]
        return moved_in_day(time, rule);
    return time_in_other_day(time, *rule);
}

ka_date date_by_rules(const ka_time_period& instant, const ka_time_zone& zone)
{
    const standard_clock standard(instant, zone);
    if (!standard.is_regular) [[unlikely]]
        return date_in_general(instant, zone);
    const ka_date date = date_at(standard.seconds);
    if (!rules::has_rules(zone))
        return date;
    const ka_time time = time_at(standard.seconds, instant.microseconds());
    const ka_time_zone_rule* const rule = rules::find_rule(zone, time, date);
    if (stays_in_day(time, rule)) [[likely]]
        return date;
    return date_in_other_day(time, date, *rule);
}

bool is_dst_by_rules(const ka_time_period& instant, const ka_time_zone& zone)
{
    const standard_clock standard(instant, zone);
    if (!standard.is_regular) [[unlikely]]
        return effect_in_general(instant, zone).is_dst;
    const ka_time time = time_at(standard.seconds, instant.microseconds());
    return rules::find_rule(zone, time, date_at(standard.seconds)) != nullptr;
}

reading reading_by_rules(const ka_time_period& instant, const ka_time_zone& zone)
{
    return full_reading(instant, zone);
}

std::tm fields_by_rules(const ka_time_period& instant, const ka_time_zone& zone)
{
    return fields_of(full_reading(instant, zone));
}

}
