#include <time/exchange.h>

#include "inputs.h"

namespace {

const column<ka_time_and_date>& moments()
{
    static const auto made = made_column([](std::size_t i) {
        ka_time_and_date moment(ka_time_period(inputs().early[i], inputs().microseconds[i]));
        moment.time_zone(ka_time_zone::utc());
        return moment;
    });
    return made;
}

std::string seconds_shown(const ka_time_and_date& moment)
{
    return ka_unix_seconds(moment, ka_fraction::none);
}

std::string shown(const ka_time_and_date& moment)
{
    return ka_unix_seconds(moment, ka_fraction::microseconds);
}

auto read_19()
{
    const auto& in = stamps();
    return [&in](std::size_t i) { return ka_read_rfc3339(in[i], ka_time_zone::utc()).value(); };
}

auto read_full()
{
    const auto& in = full_stamps();
    return [&in](std::size_t i) { return ka_read_rfc3339(in[i]).value().moment; };
}

auto write_seconds()
{
    const auto& in = moments();
    return [&in](std::size_t i) {
        stamp_text text;
        ka_write_rfc3339(text.begin(), text.end(), in[i], ka_fraction::none);
        return text;
    };
}

std::string text_shown(const stamp_text& text) { return std::string(text.data(), 20); }

}

std::vector<operation> exchange_operations()
{
    return {
        row<read_19, seconds_shown>("19 characters to a moment", {{0.25}}),
        row<read_full, shown>("RFC 3339 with offset and fraction to a moment", {{0.35}}),
        row<write_seconds, text_shown>("moment to RFC 3339 in a buffer", {{0.15}}),
    };
}
