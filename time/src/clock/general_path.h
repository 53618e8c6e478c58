#pragma once

#include "reading.h"

// The definition of the local clock, for any instant in any zone.

namespace clocks {

/// What the zone makes of the standard clock.
rules::effect effect_in_general(const ka_time_period& instant, const ka_time_zone& zone);
/// The local clock under that.
ka_time time_in_general(const ka_time_period& instant, const ka_time_zone& zone);
ka_date date_in_general(const ka_time_period& instant, const ka_time_zone& zone);
reading reading_in_general(const ka_time_period& instant, const ka_time_zone& zone);

}
