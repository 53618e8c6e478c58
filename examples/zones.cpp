// Explains a zone: zones ZONE [YEAR | DATE [TIME]]. The zone is one of the
// world's, a TZ string or a built-in one; without one, the names of the world's.
//
//     $ zones America/New_York 2024-03-10 02:30
//     America/New_York: EST5, EDT4
//
//     2024-03-10 02:30:00 is skipped: the clocks go from UTC-05:00 to UTC-04:00.
//       earlier  2024-03-10 01:30:00 EST5   2024-03-10 06:30:00 UTC
//       later    2024-03-10 03:30:00 EDT4   2024-03-10 07:30:00 UTC

#include <cstdio>
#include <iostream>
#include <optional>
#include <string>

#include <time/local.h>
#include <time/time_varnel.h>
#include <time/world.h>

#include "zones.h"

namespace {

/// "UTC+05:30": an offset as people write it, positive in the east.
std::string ahead_of_utc(const ka_time_period& offset)
{
    const bool is_west = offset > ka_time_period();
    const ka_time size(is_west ? offset : -offset);
    return "UTC" + size.to_string(is_west ? "-%H:%M" : "+%H:%M") +
           (size.seconds() != 0 ? size.to_string(":%S") : std::string());
}

std::string local(const ka_time_and_date& moment) { return moment.to_string("%Y-%m-%d %H:%M:%S %Z"); }

std::string universal(const ka_time_and_date& moment)
{
    return moment.utc_date().to_string("%Y-%m-%d ") + moment.utc_time().to_string("%H:%M:%S") + " UTC";
}

const ka_time_zone& zone_of(const std::string& name)
{
    if (const named_zone* const built_in = find_zone(name.c_str()))
        return built_in->zone();
    // A TZ string has an offset, and so a digit; names of zones have few.
    try {
        return ka_zone(name);
    } catch (const ka_time_varnel_error&) {
        if (name.find_first_of("0123456789") == std::string::npos)
            throw;
        return ka_posix_zone(name);
    }
}

void list_names()
{
    for (const std::string& name : ka_zone_names())
        std::cout << name << '\n';
}

void introduce(const std::string& name, const ka_time_zone& zone)
{
    std::cout << name << ": " << zone.name();
    if (zone.dst_observed())
        std::cout << ", " << zone.dst_name();
    std::cout << "\n\n";
}

void tell_change(const ka_zone_change& change)
{
    const ka_time_and_date before = change.moment - ka_time_period(1);
    std::cout << "  " << local(before) << "   " << ahead_of_utc(change.before) << '\n'
              << "  " << local(change.moment) << "   " << ahead_of_utc(change.after) << "   "
              << universal(change.moment) << '\n';
}

/// The present, and the changes before and after it.
void tell_present(const ka_time_zone& zone)
{
    const ka_time_and_date now = ka_present(zone);
    std::cout << "now\n  " << local(now) << "   " << ahead_of_utc(ka_offset(now)) << "   " << universal(now)
              << '\n';
    if (const auto change = ka_previous_change(zone, now)) {
        std::cout << "last change\n";
        tell_change(*change);
    }
    if (const auto change = ka_next_change(zone, now)) {
        std::cout << "next change\n";
        tell_change(*change);
    } else {
        std::cout << "no change to come\n";
    }
}

void tell_year(const ka_time_zone& zone, short year)
{
    const ka_time_and_date end = ka_start_of_day(zone, ka_date(12, 31, year));
    auto change = ka_next_change(zone, ka_start_of_day(zone, ka_date(1, 1, year)) - ka_time_period(1));
    if (!change || change->moment > end)
        std::cout << "no change in " << year << '\n';
    for (; change && change->moment <= end; change = ka_next_change(zone, change->moment)) {
        std::cout << change->moment.to_string("%A, %d %B %f") << '\n';
        tell_change(*change);
    }
}

void tell_local_time(const ka_time_zone& zone, const ka_time& time, const ka_date& date)
{
    const ka_local_moments found = ka_local_times(zone, time, date);
    std::cout << date.to_string("%Y-%m-%d ") << time.to_string("%H:%M:%S");
    if (found.kind == ka_local_kind::once) {
        std::cout << " comes once.\n  " << local(found.earlier) << "   " << universal(found.earlier) << '\n';
        return;
    }
    // By the offset after the change and before it, or the other way round.
    const bool is_skipped = found.kind == ka_local_kind::skipped;
    const ka_time_period earlier = ka_offset(found.earlier), later = ka_offset(found.later);
    std::cout << (is_skipped ? " is skipped" : " comes twice") << ": the clocks go from "
              << ahead_of_utc(earlier) << " to " << ahead_of_utc(later) << ".\n"
              << "  earlier  " << local(found.earlier) << "   " << universal(found.earlier) << '\n'
              << "  later    " << local(found.later) << "   " << universal(found.later) << '\n';
}

void explain(const std::string& name, const std::string& date, const std::string& time)
{
    const ka_time_zone& zone = zone_of(name);
    introduce(name, zone);
    int year = 0, month = 0, day = 0, hour = 0, minute = 0, second = 0;
    if (date.empty())
        return tell_present(zone);
    if (std::sscanf(date.c_str(), "%d-%d-%d", &year, &month, &day) != 3)
        return tell_year(zone, static_cast<short>(std::atoi(date.c_str())));
    std::sscanf(time.c_str(), "%d:%d:%d", &hour, &minute, &second);
    tell_local_time(zone, ka_time(hour, minute, second), ka_date(month, day, year));
}

}

int main(int argc, char** argv)
{
    if (argc > 4) {
        std::cerr << "usage: zones [ZONE [YEAR | DATE [TIME]]]\n";
        return 2;
    }
    try {
        if (argc == 1)
            list_names();
        else
            explain(argv[1], argc > 2 ? argv[2] : "", argc > 3 ? argv[3] : "");
    } catch (const ka_time_varnel_error& error) {
        std::cerr << "zones: " << error.what() << '\n';
        return 1;
    }
    return 0;
}
