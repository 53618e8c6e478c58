#include "setting.h"

namespace clocks {

namespace {

[[gnu::noinline]] void move_back(ka_time_period& instant, const ka_time_zone& zone,
                                 const rules::effect& effect)
{
    const ka_time_period& offset = ka_access::offset(zone);
    instant += effect.is_moved ? offset - effect.adjustment : offset;
}

/// The definition, for any instant and any rules.
[[gnu::noinline]] bool set_in_general(ka_time_period& instant, const ka_time& time, const ka_date& date,
                                      const ka_time_zone& zone)
{
    instant = universal_instant(time, date);
    const ka_time_zone_rule* const rule = rules::find_rule(zone, time, date);
    move_back(instant, zone, rules::effect_of(rule));
    return rule != nullptr;
}

}

bool set_by_rules(ka_time_period& instant, const ka_time& time, const ka_date& date, const ka_time_zone& zone)
{
    const ka_time_period& offset = ka_access::offset(zone);
    const long long local = date.julian_day() * seconds_per_day + ka_access::second_of_day(time);
    if (local < 0 || offset.microseconds() != 0) [[unlikely]]
        return set_in_general(instant, time, date, zone);
    instant = ka_access::period(local, static_cast<int>(time.microseconds()));
    long long seconds = wrapping_sum(local, offset.whole_seconds());
    const ka_time_zone_rule* const rule = rules::find_rule(zone, time, date);
    if (rule != nullptr)
        seconds = wrapping_difference(seconds, rule->adjustment().whole_seconds());
    // Whole seconds that leave the instant at or above zero carry nothing.
    if (seconds < 0 || (rule != nullptr && rule->adjustment().microseconds() != 0)) [[unlikely]]
        move_back(instant, zone, rules::effect_of(rule));
    else
        instant = ka_access::period(seconds, static_cast<int>(time.microseconds()));
    return rule != nullptr;
}

bool set_by_table(ka_time_period& instant, const ka_time& time, const ka_date& date, const ka_time_zone& zone)
{
    instant = universal_instant(time, date);
    move_back(instant, zone, rules::effect_at<rules::clock::local>(zone, time, date));
    return true;
}

}
