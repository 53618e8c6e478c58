#include "general_path.h"
#include "local_clock.h"

// The local clock by the rules of a zone. In the fast path the standard clock is
// regular, and the rule in effect moves it within its day.

namespace clocks {

namespace {

/// The standard clock, and the rule that is in effect then, or null.
struct clock_by_rules {
    [[gnu::always_inline]] clock_by_rules(const ka_time_period& instant, const ka_time_zone& zone)
    {
        const standard_clock standard(instant, zone);
        if (!standard.is_regular || ka_access::kind(zone) == rules::zone_kind::table) [[unlikely]]
            return;
        const ka_time std_time = time_at(standard.seconds, instant.microseconds());
        const ka_date std_date = date_at(standard.seconds);
        rules::known_date asked;
        rule = rules::find_rule(zone, std_time, std_date, asked);
        is_regular = true;
        time = std_time;
        date = std_date;
        known = asked;
    }

    /// Whether the local clock shows the same date.
    bool stays_in_day() const noexcept
    {
        if (rule == nullptr)
            return true;
        const auto second = static_cast<unsigned long long>(ka_access::second_of_day(time)) +
                            static_cast<unsigned long long>(rule->adjustment().whole_seconds());
        return second < seconds_per_day && rule->adjustment().microseconds() == 0;
    }

    ka_time time_in_day() const noexcept
    {
        if (rule == nullptr)
            return time;
        return ka_access::time(ka_access::second_of_day(time) + rule->adjustment().to_seconds(),
                               static_cast<int>(time.microseconds()));
    }

    /// False where the general path has to find all that follows.
    bool is_regular = false;
    ka_time time;
    ka_date date;
    const ka_time_zone_rule* rule = nullptr;
    rules::known_date known;
};

reading reading_in_general(const ka_time_period& instant, const ka_time_zone& zone,
                           const rules::effect& effect)
{
    const ka_date date = date_in_general(instant, zone, effect);
    const ka_time time = time_in_general(instant, zone, effect);
    return {time, date, ka_gregorian::split(date.julian_day()), effect.is_dst, effect.told};
}

}

ka_time time_by_rules(const ka_time_period& instant, const ka_time_zone& zone)
{
    const clock_by_rules standard(instant, zone);
    if (!standard.is_regular) [[unlikely]]
        return time_in_general(instant, zone, effect_in_general(instant, zone));
    if (standard.stays_in_day()) [[likely]]
        return standard.time_in_day();
    return time_in_general(instant, zone, rules::effect_of(standard.rule));
}

ka_date date_by_rules(const ka_time_period& instant, const ka_time_zone& zone)
{
    const clock_by_rules standard(instant, zone);
    if (!standard.is_regular) [[unlikely]]
        return date_in_general(instant, zone, effect_in_general(instant, zone));
    if (standard.stays_in_day()) [[likely]]
        return standard.date;
    return date_in_general(instant, zone, rules::effect_of(standard.rule));
}

bool is_dst_by_rules(const ka_time_period& instant, const ka_time_zone& zone)
{
    const clock_by_rules standard(instant, zone);
    return standard.is_regular ? standard.rule != nullptr : effect_in_general(instant, zone).is_dst;
}

reading reading_by_rules(const ka_time_period& instant, const ka_time_zone& zone)
{
    const clock_by_rules standard(instant, zone);
    if (!standard.is_regular) [[unlikely]]
        return reading_in_general(instant, zone, effect_in_general(instant, zone));
    if (!standard.stays_in_day()) [[unlikely]]
        return reading_in_general(instant, zone, rules::effect_of(standard.rule));
    const bool is_dst = standard.rule != nullptr;
    if (standard.known.julian_day != 0) [[likely]]
        return {standard.time_in_day(), standard.date, standard.known.parts, is_dst, nullptr};
    return {standard.time_in_day(), standard.date, ka_gregorian::split(standard.date.julian_day()), is_dst,
            nullptr};
}

}
