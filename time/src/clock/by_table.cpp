#include "general_path.h"
#include "local_clock.h"

// The local clock by the table of a zone, where the index has to be helped out:
// by a search, by a fold, or by the general path.

namespace clocks {

namespace {

clock_by_table searched_clock(const ka_time_period& instant, const ka_time_zone& zone) noexcept
{
    const standard_clock standard(instant, zone);
    if (!standard.is_regular)
        return {};
    const rules::kind& told = rules::kind_at<rules::clock::standard>(zone, standard.seconds);
    return {true, &told, standard.seconds + told.adjustment};
}

}

ka_time time_by_table(const ka_time_period& instant, const ka_time_zone& zone)
{
    const clock_by_table local = searched_clock(instant, zone);
    return local.is_told ? time_of(local, instant) : time_in_general(instant, zone);
}

ka_date date_by_table(const ka_time_period& instant, const ka_time_zone& zone)
{
    const clock_by_table local = searched_clock(instant, zone);
    return local.is_told ? date_at(local.seconds) : date_in_general(instant, zone);
}

bool is_dst_by_table(const ka_time_period& instant, const ka_time_zone& zone)
{
    const clock_by_table local = searched_clock(instant, zone);
    return local.is_told ? local.told->is_dst : effect_in_general(instant, zone).is_dst;
}

reading reading_by_table(const ka_time_period& instant, const ka_time_zone& zone)
{
    const clock_by_table local = searched_clock(instant, zone);
    return local.is_told ? reading_of(local, instant) : reading_in_general(instant, zone);
}

std::tm fields_by_table(const ka_time_period& instant, const ka_time_zone& zone)
{
    return fields_of(reading_by_table(instant, zone));
}

}
