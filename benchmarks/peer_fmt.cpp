#include <fmt/chrono.h>

#include "inputs.h"

namespace {

std::tm local(long long seconds) { return fmt::localtime(static_cast<std::time_t>(seconds)); }

void with_microseconds()
{
    const auto& in = inputs();
    for_each_input([&](std::size_t i) {
        return fmt::format("{:%Y-%m-%d %H:%M:%S}.{:06}", local(in.early[i]), in.microseconds[i]);
    });
}

void with_names()
{
    const auto& in = inputs().early;
    for_each_input(
        [&](std::size_t i) { return fmt::format("{:%A, %d %B %Y, %H:%M:%S (%a, %b)}", local(in[i])); });
}

void date()
{
    static const auto in = made_column([](std::size_t i) { return local(inputs().early[i]); });
    for_each_input([&](std::size_t i) { return fmt::format("{:%m/%d/%Y}", in[i]); });
}

void time()
{
    static const auto in = made_column([](std::size_t i) { return local(inputs().early[i]); });
    for_each_input([&](std::size_t i) { return fmt::format("{:%H:%M:%S}:{:06}", in[i], 0); });
}

void number_text()
{
    const auto& in = inputs().long_numbers;
    for_each_input([&](std::size_t i) { return fmt::to_string(in[i]); });
}

const peers rows = {
    {"moment to date, time, microseconds", "{fmt}", with_microseconds},
    {"moment to a long text with names", "{fmt}", with_names},
    {"ka_date::to_string, %m/%d/%Y", "{fmt}", date},
    {"ka_time::to_string", "{fmt}", time},
    {"ka_wint to 12 digits", "{fmt}", number_text},
};

}
