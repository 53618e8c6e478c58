#include <time/time_varnel.h>

#include "platform/platform.h"
#include "world/zone_library.h"

namespace {

/// Starts less stops.
int start_count = 0;

}

void ka_init_time_varnel()
{
    if (start_count++ != 0)
        return;
    {
        const platform::user_locale locale;
        platform::read_time_zone();
        ka_time_zone::create_zones();
        ka_time_and_date::initialize_statics();
    }
    platform::read_time_zone();
}

void ka_exit_time_varnel()
{
    if (--start_count != 0)
        return;
    world::close_common_library();
    ka_time_and_date::delete_names();
    ka_time_zone::delete_zones();
}
