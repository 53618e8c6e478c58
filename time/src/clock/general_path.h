#pragma once

#include "../rules/effect.h"

// The definition of the local clock, for any instant in any zone.

namespace clocks {

/// What the rules make of the standard clock.
rules::effect effect_in_general(const ka_time_period& instant, const ka_time_zone& zone);
/// The halves of the local clock.
ka_time time_in_general(const ka_time_period& instant, const ka_time_zone& zone, const rules::effect& effect);
ka_date date_in_general(const ka_time_period& instant, const ka_time_zone& zone, const rules::effect& effect);

}
