#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <ctime>
#include <random>
#include <string>

#include "operations.h"

// The inputs, the same for the library and for its peers: plain numbers, from
// which each makes its own values before anything is measured. Their seed is
// fixed where instructions are counted; each round of times has one of its own.

template <typename Value>
using column = std::array<Value, input_count>;

constexpr long long epoch_day = 2440588;

/// The zone of all rows, what is asked for by its name, and for how many inputs one zone is loaded.
inline constexpr const char* pacific_name = "America/Los_Angeles";
inline constexpr const char* world_names[] = {
    "America/New_York", "Europe/Berlin", "Asia/Tokyo",        "Europe/Kyiv",
    "Australia/Sydney", "Asia/Kolkata",  "America/Sao_Paulo", "UTC"};
inline constexpr const char* zone_folder = "/usr/share/zoneinfo";
inline constexpr const char* loaded_name = "America/New_York";
inline constexpr std::size_t loads_each = 256;

struct plain_inputs {
    /// Days since 1 January 1970: 1900 to 2100.
    column<int> days;
    /// Seconds since then: 1970 to 2037, 2040 to 2100, and through 4 July 2024.
    column<long long> early;
    column<long long> late;
    column<long long> one_day;
    column<int> microseconds;
    /// Microseconds since then, 1970 to 2037, and each half of them in order.
    column<long long> instants;
    column<long long> instants_in_order;
    /// Two durations, in seconds and microseconds of one sign.
    column<long long> seconds[2];
    column<int> fractions[2];
    /// 2 to 100.
    column<int> divisors;
    /// Twelve digits, and six.
    column<long long> long_numbers;
    column<long long> short_numbers;
    /// 1 to 19 digits, each number of bits as often as any other, with either sign.
    column<long long> any_numbers;
};

inline const plain_inputs& inputs()
{
    static const plain_inputs all = [] {
        const char* seed = std::getenv("VARNEL_SEED");
        std::mt19937_64 random(seed ? std::strtoull(seed, nullptr, 10) : 20240704);
        const auto between = [&](long long low, long long high) {
            return low + static_cast<long long>(random() % static_cast<std::uint64_t>(high - low + 1));
        };
        plain_inputs made = {};
        for (std::size_t i = 0; i < input_count; ++i) {
            made.days[i] = static_cast<int>(between(-25567, 47846));
            made.early[i] = between(86400, 2145916799);
            made.late[i] = between(2208988800, 4133980799);
            made.one_day[i] = 1720051200 + static_cast<long long>(i % batch_size) * 21;
            made.microseconds[i] = static_cast<int>(between(0, 999999));
            for (int j = 0; j < 2; ++j) {
                made.seconds[j][i] = between(-1000000000, 1000000000);
                made.fractions[j][i] =
                    static_cast<int>(made.seconds[j][i] < 0 ? -between(0, 999999) : between(0, 999999));
            }
            made.divisors[i] = static_cast<int>(between(2, 100));
            made.long_numbers[i] = between(100000000000, 999999999999);
            made.short_numbers[i] = between(100000, 999999);
        }
        for (std::size_t i = 0; i < input_count; ++i)
            made.instants[i] = made.early[i] * 1000000 + made.microseconds[i];
        made.instants_in_order = made.instants;
        const auto half = made.instants_in_order.begin() + batch_size;
        std::sort(made.instants_in_order.begin(), half);
        std::sort(half, made.instants_in_order.end());
        for (long long& number : made.any_numbers) {
            number = static_cast<long long>(random() >> (1 + random() % 63));
            if (random() % 2 != 0)
                number = -number;
        }
        return made;
    }();
    return all;
}

/// A column made of the inputs, index by index.
template <typename Function>
auto made_column(Function function)
{
    column<decltype(function(std::size_t{}))> made;
    for (std::size_t i = 0; i < input_count; ++i)
        made[i] = function(i);
    return made;
}

/// A record as text.
inline std::string fields_text(const std::tm& fields)
{
    return reading_text(fields.tm_year + 1900, fields.tm_mon + 1, fields.tm_mday, fields.tm_hour,
                        fields.tm_min, fields.tm_sec, fields.tm_isdst > 0);
}

/// 2024-07-04T18:28:38, a NUL, and room for what a writer needs.
using stamp_text = std::array<char, 64>;

/// The early seconds as such a text, which ends as `end` says.
inline column<std::string> made_stamps(const char* end)
{
    return made_column([end](std::size_t i) {
        const std::time_t seconds = inputs().early[i];
        std::tm fields;
        gmtime_r(&seconds, &fields);
        char text[40];
        std::strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%S", &fields);
        return std::string(text) + end;
    });
}

inline const column<std::string>& stamps()
{
    static const auto made = made_stamps("");
    return made;
}

/// With a fraction and an offset.
inline const column<std::string>& full_stamps()
{
    static const auto made = made_stamps(".123456+02:00");
    return made;
}
