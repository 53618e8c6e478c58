#include <time/time_varnel.h>

#include "inputs.h"

namespace {

const column<ka_time_and_date>& moments()
{
    static const auto made = made_column([](std::size_t i) {
        ka_time_and_date moment(ka_time_period(inputs().early[i], inputs().microseconds[i]));
        moment.time_zone(ka_time_zone::pacific());
        return moment;
    });
    return made;
}

auto with_microseconds()
{
    const auto& in = moments();
    return [&in](std::size_t i) { return in[i].to_string("%Y-%m-%d %H:%M:%S.%q"); };
}

auto with_names()
{
    const auto& in = moments();
    return [&in](std::size_t i) { return in[i].to_string("%A, %d %B %Y %I:%M:%S %p"); };
}

auto date_text()
{
    static const auto in = made_column([](std::size_t i) { return moments()[i].date(); });
    return [](std::size_t i) { return in[i].to_string("%m/%d/%Y"); };
}

/// Of whole seconds, the most that the peers can print.
auto clock_text()
{
    static const auto in = made_column([](std::size_t i) {
        const ka_time time = moments()[i].time();
        return ka_time(time.hours(), time.minutes(), time.seconds());
    });
    return [](std::size_t i) { return in[i].to_string(); };
}

}

std::vector<operation> text_operations()
{
    return {
        {"moment to date, time, microseconds", run_all<with_microseconds>, 0.22, 650,
         result_of<with_microseconds>},
        {"moment to a long text with names", run_all<with_names>, 0.33, 800, result_of<with_names>},
        {"ka_date::to_string, %m/%d/%Y", run_all<date_text>, 0.3, 300, result_of<date_text>},
        {"ka_time::to_string", run_all<clock_text>, 0.3, 300, result_of<clock_text>},
    };
}
