#include "setting.h"

namespace clocks {

bool set_by_rules(ka_time_period& instant, const ka_time& time, const ka_date& date, const ka_time_zone& zone)
{
    const rules::effect effect = rules::effect_at<rules::clock::local>(zone, time, date);
    const ka_time_period& offset = ka_access::offset(zone);
    const long long seconds = wrapping_difference(
        wrapping_sum(instant.whole_seconds(), offset.whole_seconds()), effect.adjustment.whole_seconds());
    // Whole seconds that leave the instant at or above zero carry nothing.
    if (offset.microseconds() == 0 && effect.adjustment.microseconds() == 0 && seconds >= 0 &&
        instant.microseconds() >= 0) [[likely]]
        instant = ka_access::period(seconds, instant.microseconds());
    else
        instant += effect.is_moved ? offset - effect.adjustment : offset;
    return effect.is_moved || effect.told != nullptr;
}

}
