#include "general_path.h"

namespace clocks {

rules::effect effect_in_general(const ka_time_period& instant, const ka_time_zone& zone)
{
    const ka_time_period standard = instant - zone.offset();
    return rules::effect_at<rules::clock::standard>(zone, ka_time(standard), ka_access::date_of(standard));
}

ka_time time_in_general(const ka_time_period& instant, const ka_time_zone& zone, const rules::effect& effect)
{
    const ka_time standard(instant - zone.offset());
    return effect.is_moved ? standard + effect.adjustment : standard;
}

ka_date date_in_general(const ka_time_period& instant, const ka_time_zone& zone, const rules::effect& effect)
{
    const ka_time_period standard = instant - zone.offset();
    return ka_access::date_of(effect.is_moved ? standard + effect.adjustment : standard);
}

}
