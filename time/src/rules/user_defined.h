#pragma once

#include <time/zone.h>

namespace rules {

/// The rule in effect in a zone of any rules, or null: the definition, which
/// asks each by its virtual operation. A user-defined rule is asked about a
/// reading once and no more.
const ka_time_zone_rule* find_by_asking(const ka_time_zone& zone, const ka_time& time, const ka_date& date);

}
