#include <date/tz.h>

#include <chrono>

#include "inputs.h"

// The library that the calendar of std::chrono comes from, with its zones. By
// the machine's tz data it knows no change after 2037.

namespace {

using std::chrono::microseconds;
using std::chrono::seconds;

const date::time_zone& pacific()
{
    static const date::time_zone& zone = *date::locate_zone(pacific_name);
    return zone;
}

struct reading {
    date::year_month_day day;
    date::hh_mm_ss<microseconds> time;
    bool is_dst;
};

template <typename Duration>
reading local(date::sys_time<Duration> moment, const date::sys_info& info)
{
    const auto at = moment.time_since_epoch() + info.offset;
    const auto days = date::floor<date::days>(at);
    return {date::year_month_day(date::local_days(days)), date::hh_mm_ss<microseconds>(at - days),
            info.save != info.save.zero()};
}

std::string shown(const reading& at)
{
    const auto number = [](seconds::rep count) { return static_cast<int>(count); };
    return reading_text(static_cast<int>(at.day.year()), number(static_cast<unsigned int>(at.day.month())),
                        number(static_cast<unsigned int>(at.day.day())), number(at.time.hours().count()),
                        number(at.time.minutes().count()), number(at.time.seconds().count()), at.is_dst);
}

auto reading_of(const column<long long>& in)
{
    return [&in, &zone = pacific()](std::size_t i) {
        const date::sys_seconds moment{seconds(in[i])};
        return local(moment, zone.get_info(moment));
    };
}

auto read_early() { return reading_of(inputs().early); }
auto read_one_day() { return reading_of(inputs().one_day); }

auto setting(const column<date::local_seconds>& in)
{
    return [&in, &zone = pacific()](std::size_t i) { return zone.to_sys(in[i], date::choose::latest); };
}

column<date::local_seconds> local_times(const column<long long>& in)
{
    return made_column([&](std::size_t i) { return pacific().to_local(date::sys_seconds(seconds(in[i]))); });
}

auto set_early()
{
    static const auto in = local_times(inputs().early);
    return setting(in);
}

std::string second_shown(const date::sys_seconds& moment)
{
    return std::to_string(moment.time_since_epoch().count());
}

auto present()
{
    return [&zone = pacific()](std::size_t) {
        const auto now = date::floor<microseconds>(std::chrono::system_clock::now());
        return local(now, zone.get_info(now));
    };
}

/// What holds at the last moment asked for, and until when.
class kept_info {
public:
    const date::sys_info& at(date::sys_time<microseconds> moment)
    {
        if (moment < info_.begin || info_.end <= moment)
            info_ = pacific().get_info(moment);
        return info_;
    }

private:
    date::sys_info info_ = {};
};

date::sys_time<microseconds> moment_of(long long instant)
{
    return date::sys_time<microseconds>(microseconds(instant));
}

template <column<long long> plain_inputs::*Instants>
auto fields()
{
    return [&in = inputs().*Instants](std::size_t i) {
        const auto moment = moment_of(in[i]);
        return local(moment, pacific().get_info(moment));
    };
}

template <column<long long> plain_inputs::*Instants>
auto kept_fields()
{
    return [&in = inputs().*Instants, kept = kept_info()](std::size_t i) mutable {
        const auto moment = moment_of(in[i]);
        return local(moment, kept.at(moment));
    };
}

template <column<long long> plain_inputs::*Instants>
auto kept_offsets()
{
    return [&in = inputs().*Instants, kept = kept_info()](std::size_t i) mutable {
        return kept.at(moment_of(in[i])).offset.count();
    };
}

constexpr auto random = &plain_inputs::instants;
constexpr auto in_order = &plain_inputs::instants_in_order;
constexpr const char* name = "Hinnant's date";
constexpr const char* kept = "Hinnant's date, kept";

const peers rows = {
    beside<read_early, shown>("operator tm, 1970 to 2037", name),
    beside<read_early, shown>("time(), date(), is_dst(), 1970 to 2037", name),
    beside<read_one_day, shown>("operator tm, one day in ascending order", name),
    beside<set_early, second_shown>("local to universal, 1970 to 2037", name),
    beside<read_early, shown>("operator tm in a world zone, 1970 to 2037", name),
    beside<set_early, second_shown>("local to universal in a world zone", name),
    beside_alone<present>("ka_time_and_date::now()", name),
    beside<fields<random>, shown>("a column of fields", name),
    beside<kept_fields<random>, shown>("a column of fields", kept),
    beside<kept_offsets<random>>("a column of offsets", kept),
    beside<kept_fields<in_order>, shown>("a column of fields, in order", kept),
    beside<kept_offsets<in_order>>("a column of offsets, in order", kept),
    beside<set_early, second_shown>("a column of local times", name),
};

}
