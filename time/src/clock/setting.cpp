#include "setting.h"

namespace clocks {

namespace {

[[gnu::always_inline]] inline void move_back(ka_time_period& instant, const ka_time_period& offset,
                                             bool is_moved, const ka_time_period& adjustment)
{
    const long long seconds = wrapping_difference(
        wrapping_sum(instant.whole_seconds(), offset.whole_seconds()), adjustment.whole_seconds());
    // Whole seconds that leave the instant at or above zero carry nothing.
    if (offset.microseconds() == 0 && adjustment.microseconds() == 0 && seconds >= 0 &&
        instant.microseconds() >= 0) [[likely]]
        instant = ka_access::period(seconds, instant.microseconds());
    else
        instant += is_moved ? offset - adjustment : offset;
}

}

bool set_by_rules(ka_time_period& instant, const ka_time& time, const ka_date& date, const ka_time_zone& zone)
{
    const ka_time_period& offset = ka_access::offset(zone);
    if (ka_access::kind(zone) == rules::zone_kind::table) [[unlikely]] {
        const rules::effect effect = rules::effect_at<rules::clock::local>(zone, time, date);
        move_back(instant, offset, effect.is_moved, effect.adjustment);
        return true;
    }
    constexpr ka_time_period none;
    rules::known_date known;
    const ka_time_zone_rule* const rule = rules::find_rule(zone, time, date, known);
    move_back(instant, offset, rule != nullptr, rule != nullptr ? rule->adjustment() : none);
    return rule != nullptr;
}

}
