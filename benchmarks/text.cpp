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

void with_microseconds()
{
    const auto& in = moments();
    for_each_input([&](std::size_t i) { return in[i].to_string("%Y-%m-%d %H:%M:%S.%q"); });
}

void with_names()
{
    const auto& in = moments();
    for_each_input([&](std::size_t i) { return in[i].to_string("%A, %d %B %Y, %H:%M:%S (%a, %b)"); });
}

void date()
{
    static const auto in = made_column([](std::size_t i) { return moments()[i].date(); });
    static const std::string format = "%m/%d/%Y";
    for_each_input([&](std::size_t i) { return in[i].to_string(format); });
}

void time()
{
    static const auto in = made_column([](std::size_t i) { return moments()[i].time(); });
    for_each_input([&](std::size_t i) { return in[i].to_string(); });
}

}

std::vector<operation> text_operations()
{
    return {
        {"moment to date, time, microseconds", with_microseconds, 0.22, 650},
        {"moment to a long text with names", with_names, 0.33, 800},
        {"ka_date::to_string, %m/%d/%Y", date, 0.3, 300},
        {"ka_time::to_string", time, 0.3, 300},
    };
}
