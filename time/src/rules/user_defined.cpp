#include "user_defined.h"

#include "../access.h"

namespace rules {

const ka_time_zone_rule* find_by_asking(const ka_time_zone& zone, const ka_time& time, const ka_date& date)
{
    const ka_time_zone_rule* const* const first = ka_access::rules(zone);
    const ka_time_zone_rule* const* const end = first + ka_access::rule_count(zone);
    for (const ka_time_zone_rule* const* slot = first; slot != end; ++slot)
        if ((*slot)->is_in_effect(time, date))
            return *slot;
    return nullptr;
}

}
