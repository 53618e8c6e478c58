#include "general_path.h"

namespace clocks {

namespace {

ka_time time_under(const rules::effect& effect, const ka_time_period& instant, const ka_time_zone& zone)
{
    const ka_time standard(instant - zone.offset());
    return effect.is_moved ? standard + effect.adjustment : standard;
}

ka_date date_under(const rules::effect& effect, const ka_time_period& instant, const ka_time_zone& zone)
{
    const ka_time_period standard = instant - zone.offset();
    return ka_access::date_of(effect.is_moved ? standard + effect.adjustment : standard);
}

}

rules::effect effect_in_general(const ka_time_period& instant, const ka_time_zone& zone)
{
    const ka_time_period standard = instant - zone.offset();
    return rules::effect_at<rules::clock::standard>(zone, ka_time(standard), ka_access::date_of(standard));
}

ka_time time_in_general(const ka_time_period& instant, const ka_time_zone& zone)
{
    return time_under(effect_in_general(instant, zone), instant, zone);
}

ka_date date_in_general(const ka_time_period& instant, const ka_time_zone& zone)
{
    return date_under(effect_in_general(instant, zone), instant, zone);
}

reading reading_in_general(const ka_time_period& instant, const ka_time_zone& zone)
{
    const rules::effect effect = effect_in_general(instant, zone);
    const ka_date date = date_under(effect, instant, zone);
    const ka_time time = time_under(effect, instant, zone);
    return {time, date, ka_gregorian::split(date.julian_day()), effect.is_dst, effect.told};
}

}
