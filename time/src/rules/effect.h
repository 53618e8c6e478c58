#pragma once

#include "../access.h"
#include "simple.h"
#include "user_defined.h"

namespace rules {

/// What a zone does to its clocks at one time.
struct effect {
    /// What the local clock is ahead of the standard clock.
    ka_time_period adjustment;
    bool is_dst = false;
};

inline effect effect_of(const ka_time_zone_rule* rule) noexcept
{
    return rule != nullptr ? effect{rule->adjustment(), true} : effect{};
}

/// The parts of a date that were worked out on the way, for those who need them
/// too; day number 0 stands for none.
struct known_date {
    int julian_day = 0;
    ka_gregorian::date_parts parts;
};

/// The rule in effect at a time on a date, or null, whatever the kind of the
/// zone; `known` is the date where its parts are needed for that.
[[gnu::always_inline]] inline const ka_time_zone_rule*
find_rule(const ka_time_zone& zone, const ka_time& time, const ka_date& date, known_date& known)
{
    if (ka_access::kind(zone) == ka_access::rule_kind::user_defined) [[unlikely]]
        return find_by_asking(zone, time, date);
    if (ka_access::rule_count(zone) == 0)
        return nullptr;
    known = {date.julian_day(), ka_gregorian::split(date.julian_day())};
    return find_simple(zone, time, date, known.parts.year, known.parts.month);
}

[[gnu::always_inline]] inline effect effect_at(const ka_time_zone& zone, const ka_time& time,
                                               const ka_date& date, known_date& known)
{
    return effect_of(find_rule(zone, time, date, known));
}

[[gnu::always_inline]] inline effect effect_at(const ka_time_zone& zone, const ka_time& time,
                                               const ka_date& date)
{
    known_date known;
    return effect_at(zone, time, date, known);
}

}
