#include <time/local.h>

#include <algorithm>

#include "../throw.h"
#include "zone_clock.h"

using namespace zone_clock;

namespace {

/// The standard times that read as a local time, and how far adjustments reach.
struct readings {
    bool is_any = false;
    ka_time_period first;
    ka_time_period last;
    ka_time_period least;
    ka_time_period greatest;
};

/// A local time is that of a standard time less one of the zone's adjustments:
/// each of them is tried.
readings readings_of(const ka_time_zone& zone, const ka_time_period& local)
{
    readings found;
    const auto try_adjustment = [&](const ka_time_period& adjustment) {
        found.least = std::min(found.least, adjustment);
        found.greatest = std::max(found.greatest, adjustment);
        const ka_time_period standard = local - adjustment;
        if (!is_in_range(standard) || adjustment_at(zone, standard) != adjustment)
            return;
        found.first = found.is_any ? std::min(found.first, standard) : standard;
        found.last = found.is_any ? std::max(found.last, standard) : standard;
        found.is_any = true;
    };
    ka_time_period tried;
    try_adjustment(tried);
    for_each_adjustment(zone, [&](const ka_time_period& adjustment) {
        // Most rules of a zone have the same one.
        if (adjustment != tried)
            try_adjustment(tried = adjustment);
    });
    return found;
}

/// The change that skips a local time. By the greatest adjustment the clock has
/// not come to that time, and by the least it has passed it.
change gap_around(const ka_time_zone& zone, const ka_time_period& local, const readings& reach)
{
    const ka_time_period low = local - reach.greatest;
    const ka_time_period high = local - reach.least;
    // Outside the range there is no reading, and this is refused.
    (void)ka_access::date_of(low);
    (void)ka_access::date_of(high);
    return change_at(zone, bisected(low, high, [&](const ka_time_period& standard) {
                         return standard + adjustment_at(zone, standard) > local;
                     }));
}

ka_time_period local_time_of(const ka_time& time, const ka_date& date)
{
    // A date that was stepped out of the range is refused here.
    return midnight_of(ka_date(date.julian_day())) + time;
}

[[noreturn]] void refuse(const char* what, const ka_time_zone& zone, const ka_time& time, const ka_date& date)
{
    throw_error(ka_invalid_time, {KA_SOURCE, __LINE__}, time.to_string("%H:%M:%S.%q"), " on ",
                date.to_string("%Y-%m-%d"), what, zone.name());
}

}

ka_local_moments ka_local_times(const ka_time_zone& zone, const ka_time& time, const ka_date& date)
{
    const ka_time_period local = local_time_of(time, date);
    const readings found = readings_of(zone, local);
    if (found.is_any)
        return {found.first == found.last ? ka_local_kind::once : ka_local_kind::repeated,
                moment_of(zone, found.first), moment_of(zone, found.last)};
    const change gap = gap_around(zone, local, found);
    return {ka_local_kind::skipped, moment_of(zone, local - gap.after), moment_of(zone, local - gap.before)};
}

ka_time_and_date ka_local_time(const ka_time_zone& zone, const ka_time& time, const ka_date& date,
                               ka_local_choice choice)
{
    const ka_local_moments found = ka_local_times(zone, time, date);
    const bool is_skipped = found.kind == ka_local_kind::skipped;
    switch (choice) {
        case ka_local_choice::earlier:
            return found.earlier;
        case ka_local_choice::later:
            return found.later;
        case ka_local_choice::refuse:
            if (found.kind != ka_local_kind::once)
                refuse(is_skipped ? " is skipped in " : " comes twice in ", zone, time, date);
            return found.earlier;
        default:
            return is_skipped ? found.later : found.earlier;
    }
}

ka_time_and_date ka_start_of_day(const ka_time_zone& zone, const ka_date& date)
{
    const ka_time_period local = local_time_of(ka_time(), date);
    const readings found = readings_of(zone, local);
    return moment_of(zone, found.is_any ? found.first : gap_around(zone, local, found).at);
}
