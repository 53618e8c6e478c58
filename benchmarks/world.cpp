#include <time/world.h>

#include "inputs.h"

// Zones of the world: read, set, loaded and found by name.

namespace {

const ka_time_zone& pacific()
{
    static const ka_time_zone& zone = ka_zone(pacific_name);
    return zone;
}

column<ka_time_and_date> moments(const column<long long>& seconds)
{
    return made_column([&](std::size_t i) {
        ka_time_and_date moment(seconds[i]);
        moment.time_zone(pacific());
        return moment;
    });
}

auto reading(const column<ka_time_and_date>& in)
{
    return [&in](std::size_t i) { return static_cast<std::tm>(in[i]); };
}

auto read_early()
{
    static const auto in = moments(inputs().early);
    return reading(in);
}

auto read_late()
{
    static const auto in = moments(inputs().late);
    return reading(in);
}

struct local_time {
    ka_time time;
    ka_date date;
};

auto set_early()
{
    static const auto in = made_column([](std::size_t i) {
        ka_time_and_date moment(inputs().early[i]);
        moment.time_zone(pacific());
        return local_time{moment.time(), moment.date()};
    });
    ka_time_and_date moment;
    moment.time_zone(pacific());
    return [moment](std::size_t i) mutable {
        moment.time_and_date(in[i].time, in[i].date);
        return moment;
    };
}

std::string second_shown(const ka_time_and_date& moment)
{
    return std::to_string((moment - ka_time_and_date(0)).whole_seconds());
}

auto found()
{
    return [](std::size_t i) { return &ka_zone(world_names[i % std::size(world_names)]); };
}

/// A load for every 256th input, so that it does not take longer than all other rows.
auto loaded()
{
    return [](std::size_t i) {
        if (i % loads_each != 0)
            return 0;
        const ka_zone_store store(zone_folder);
        return store.zone(loaded_name).offset().to_seconds();
    };
}

}

std::vector<operation> world_operations()
{
    using enum difference;
    return {
        row<read_early, fields_text>("operator tm in a world zone, 1970 to 2037",
                                     {{0.25, "cctz"}, {0.30, "Hinnant's date"}}, 155),
        row<read_late, fields_text>("operator tm in a world zone, 2040 to 2100", {{0.22, "cctz"}}, 155),
        row<set_early, second_shown>("local to universal in a world zone", {{0.35, "cctz"}}, 80, zones),
        row_alone<found>("a loaded zone found by its name", {{1.0}}, 230),
        row_alone<loaded>("1/256 of loading a zone", {{0.2}}, 1800),
    };
}
