#include <fmt/chrono.h>

#include "inputs.h"

namespace {

std::tm local(long long seconds) { return fmt::localtime(static_cast<std::time_t>(seconds)); }

auto with_microseconds()
{
    const auto& in = inputs();
    return [&in](std::size_t i) {
        return fmt::format("{:%Y-%m-%d %H:%M:%S}.{:06}", local(in.early[i]), in.microseconds[i]);
    };
}

auto with_names()
{
    const auto& in = inputs().early;
    return [&in](std::size_t i) { return fmt::format("{:%A, %d %B %Y %I:%M:%S %p}", local(in[i])); };
}

auto date_text()
{
    static const auto in = made_column([](std::size_t i) { return local(inputs().early[i]); });
    return [](std::size_t i) { return fmt::format("{:%m/%d/%Y}", in[i]); };
}

auto clock_text()
{
    static const auto in = made_column([](std::size_t i) { return local(inputs().early[i]); });
    return [](std::size_t i) { return fmt::format("{:%H:%M:%S}:{:06}", in[i], 0); };
}

auto number_text()
{
    const auto& in = inputs().long_numbers;
    return [&in](std::size_t i) { return fmt::to_string(in[i]); };
}

auto any_number_text()
{
    const auto& in = inputs().any_numbers;
    return [&in](std::size_t i) { return fmt::to_string(in[i]); };
}

const peers rows = {
    beside<with_microseconds>("moment to date, time, microseconds", "{fmt}"),
    beside<with_names>("moment to a long text with names", "{fmt}"),
    beside<with_microseconds>("the first by a pattern, into a buffer", "{fmt}"),
    beside<with_names>("the second by a pattern, into a buffer", "{fmt}"),
    beside<date_text>("ka_date::to_string, %m/%d/%Y", "{fmt}"),
    beside<clock_text>("ka_time::to_string", "{fmt}"),
    beside<number_text>("ka_wint to 12 digits", "{fmt}"),
    beside<any_number_text>("ka_wint to 1 to 19 digits", "{fmt}"),
};

}
