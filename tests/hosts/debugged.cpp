// A host that is stopped in a debugger, with one array of each kind of value,
// and says how the library itself writes them.
#include <cstring>
#include <iostream>
#include <iterator>
#include <vector>

#include <time/time_varnel.h>
#include <time/world.h>

namespace {

const ka_time_zone* zones[] = {
    &ka_time_zone::utc(),
    &ka_time_zone::greenwich(),
    &ka_time_zone::central_european(),
    &ka_time_zone::israel(),
    &ka_time_zone::south_africa(),
    &ka_time_zone::newfoundland(),
    &ka_time_zone::portuguese(),
    &ka_time_zone::eastern(),
    &ka_time_zone::yukon(),
    &ka_posix_zone("EET-2EEST,M3.5.0/3,M10.5.0/4"),
    &ka_posix_zone("IST-1GMT0,M10.5.0,M3.5.0/1"),
};

std::vector<ka_date> dates;
std::vector<ka_time> times;
std::vector<ka_time_period> periods;
std::vector<ka_wint> numbers;
std::vector<ka_time_and_date> moments;
/// Memory that holds nothing any more.
alignas(ka_time_zone) unsigned char lost[sizeof(ka_time_zone)];

std::string day_text(const ka_date& date)
{
    return date.to_string(date.is_bc() ? "%s-%m-%d %P" : "%s-%m-%d");
}

void say(const std::string& text) { std::cout << text << '\n'; }

}

extern "C" [[gnu::noinline]] void all_is_there() { std::cout << std::flush; }

int main()
{
    // Across the world's end of the year, with a fixed day and a fraction of a
    // second, and a zone that is moved by half an hour.
    const ka_calendar_date spring(ka_time_period(0, 2, 0, 0, 0), 2, 29);
    const ka_calendar_date autumn(ka_time_period(0, 26, 0, 0, 0), 10, ka_fifth, 5);
    ka_simple_time_zone_rule summer(autumn, spring, 2020, 2024, ka_time_period(0, 0, 30, 0, 500000));
    ka_time_zone own(ka_time_period(0, -9, -30, 0, 0), "UTC", "a stem that is longer than a short string");
    own.insert(summer);

    for (int day = 38; day <= 13688960; day += 19999)
        dates.push_back(ka_date(day));
    dates.push_back(ka_date::max_date());
    for (unsigned short hour = 0; hour < 24; ++hour)
        times.push_back(ka_time(hour, 59, 7, 40u * hour));
    for (const long long seconds : {0ll, 1ll, -1ll, 90061ll, -9223372036854775807ll})
        periods.push_back(ka_time_period(seconds));
    periods.push_back(ka_time_period(0, 0, 0, 0, -250000));
    periods.push_back(ka_time_period(9223372036854775807, 500000) + ka_time_period(1, 999999));
    numbers = {0, -5, 0xffffffffffffffffull};
    for (const ka_time_zone* const zone : zones)
        for (int hour = 0; hour < 24 * 366 * 60; hour += 499) {
            moments.emplace_back(3600ll * hour);
            moments.back().time_zone(*zone);
        }
    for (int quarter = 0; quarter < 96 * 600; quarter += 9) {
        moments.emplace_back(ka_date(7, 1, 2023) - ka_date(1, 1, 1970) + ka_time_period(900ll * quarter));
        moments.back().time_zone(quarter % 2 != 0 ? ka_time_zone::pacific() : own);
    }

    for (const ka_time_zone* const zone : zones)
        say(zone->name() + (zone->dst_observed() ? ", " + zone->dst_name() : ""));
    for (const ka_date& date : dates)
        say(day_text(date));
    for (const ka_time& time : times)
        say(time.to_string("%H:%M:%S.%q"));
    for (const ka_time_period& period : periods)
        say(period.to_string());
    for (const ka_wint& number : numbers)
        say(number.to_string());
    for (const ka_time_and_date& moment : moments)
        try {
            say(day_text(moment.date()) + moment.to_string(" %H:%M:%S.%q %Z"));
        } catch (const ka_time_varnel_error&) {
            say("refused");
        }

    // A zone whose rule has lost its points.
    std::memset(lost, 0xdd, sizeof lost);
    const auto& no_point = reinterpret_cast<const ka_calendar_date&>(lost);
    ka_simple_time_zone_rule no_rule(no_point, no_point, 1, 0);
    ka_time_zone no_zone(ka_time_period(3600));
    no_zone.insert(no_rule);
    moments.emplace_back();
    moments.back().time_zone(no_zone);
    say("1970-01-01 00:00:00.000000 universal time (no zone)");
    say("no zone");
    all_is_there();
}
