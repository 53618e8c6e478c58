#include "../platform/platform.h"
#include "../release.h"
#include "statics.h"

namespace {

/// The zone that the choice made, where it made one. It is kept apart from the
/// default zone, which a caller can replace by his own.
ka_time_zone* made_zone = nullptr;

}

void ka_access::statics::choose_default_zone()
{
    platform::read_time_zone();
    const platform::machine_zone machine = platform::read_machine_zone();
    for (const platform::zone_reading& reading : machine) {
        const ka_time_zone* const built_in =
            ka_time_zone::find(ka_time_period(reading.seconds_west), reading.is_dst);
        if (built_in == nullptr)
            continue;
        default_tzone_ = built_in;
        const ka_time_and_date now = now_if_available();
        const bool is_dst = built_in->rule(now.std_time(), now.date()) != nullptr;
        if (is_dst == reading.is_dst)
            return;
    }
    made_zone = new ka_time_zone(ka_time_period(machine.own_seconds_west), "UTC", "");
    default_tzone_ = made_zone;
}

void ka_access::statics::release_made_zone() noexcept { release(made_zone); }
