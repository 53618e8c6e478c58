#include "general_path.h"
#include "local_clock.h"

// The local clock by the rules of a zone. In the fast path the standard clock is
// regular, and the rule in effect moves it within its day.

namespace clocks {

namespace {

struct rule_clock {
    /// False where the general path has to tell time and date.
    bool is_regular = false;
    ka_time time;
    ka_date date;
    rules::effect effect;
    rules::known_date known;
};

/// Whether a time stays in its day when it moves, by whole seconds.
bool stays_in_day(const ka_time& time, const ka_time_period& adjustment) noexcept
{
    const auto second = static_cast<unsigned long long>(ka_access::second_of_day(time)) +
                        static_cast<unsigned long long>(adjustment.whole_seconds());
    return second < seconds_per_day && adjustment.microseconds() == 0;
}

ka_time moved_in_day(const ka_time& time, const ka_time_period& adjustment) noexcept
{
    return ka_access::time(ka_access::second_of_day(time) + adjustment.to_seconds(),
                           static_cast<int>(time.microseconds()));
}

[[gnu::always_inline]] inline rule_clock clock_by_rules(const ka_time_period& instant,
                                                        const ka_time_zone& zone)
{
    const standard_clock standard(instant, zone);
    if (!standard.is_regular || ka_access::kind(zone) == rules::zone_kind::table) [[unlikely]] {
        const rules::effect effect = effect_in_general(instant, zone);
        return {false, {}, {}, effect, {}};
    }
    const ka_time time = time_at(standard.seconds, instant.microseconds());
    const ka_date date = date_at(standard.seconds);
    rules::known_date known;
    const ka_time_zone_rule* const rule = rules::find_rule(zone, time, date, known);
    if (rule == nullptr)
        return {true, time, date, {}, known};
    if (!stays_in_day(time, rule->adjustment())) [[unlikely]]
        return {false, {}, {}, rules::effect_of(rule), known};
    return {true, moved_in_day(time, rule->adjustment()), date, rules::effect_of(rule), known};
}

}

ka_time time_by_rules(const ka_time_period& instant, const ka_time_zone& zone)
{
    const rule_clock local = clock_by_rules(instant, zone);
    return local.is_regular ? local.time : time_in_general(instant, zone, local.effect);
}

ka_date date_by_rules(const ka_time_period& instant, const ka_time_zone& zone)
{
    const rule_clock local = clock_by_rules(instant, zone);
    return local.is_regular ? local.date : date_in_general(instant, zone, local.effect);
}

bool is_dst_by_rules(const ka_time_period& instant, const ka_time_zone& zone)
{
    return clock_by_rules(instant, zone).effect.is_dst;
}

reading reading_by_rules(const ka_time_period& instant, const ka_time_zone& zone)
{
    const rule_clock local = clock_by_rules(instant, zone);
    const bool is_dst = local.effect.is_dst;
    if (!local.is_regular) [[unlikely]] {
        const ka_date date = date_in_general(instant, zone, local.effect);
        const ka_time time = time_in_general(instant, zone, local.effect);
        return {time, date, ka_gregorian::split(date.julian_day()), is_dst, local.effect.told};
    }
    const int day = local.date.julian_day();
    const ka_gregorian::date_parts parts =
        local.known.julian_day == day ? local.known.parts : ka_gregorian::split(day);
    return {local.time, local.date, parts, is_dst, nullptr};
}

}
