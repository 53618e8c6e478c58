#pragma once

#include <cstddef>
#include <functional>

#include <time/date.h>
#include <time/time_of_day.h>
#include <time/timedate.h>
#include <time/tperiod.h>
#include <time/wint.h>

/// `std::hash` for dates, times of day, moments, durations and wide integers:
/// what the unordered containers ask for.
///
///     #include <time/hash.h>
///
///     std::unordered_map<ka_date, std::string> holidays = {{ka_date(12, 25, 2024), "Christmas Day"}};
///     holidays.at(ka_date(ka_fourth, 4, 12, 2024));    // "Christmas Day", the fourth Wednesday
///
/// Equal values have equal hashes. For a moment the instant counts, as it does
/// for `==`: its zone plays no part.
/// Range: all values, also dates that were stepped out of theirs. Distinct
/// durations below 292,000 years, and moments as far from day number 0, have
/// distinct hashes where `size_t` has 64 bits.
/// No hash throws, or needs the library to be started. A hash is for the
/// program that runs: another version may have another one.

/// By the day number, as it stands: the days of a year fall into places side by
/// side.
template <>
struct std::hash<ka_date> {
    std::size_t operator()(const ka_date& date) const noexcept;
};

/// By all microseconds, which wrap at 64 bits; whole days are spread, so that they
/// don't meet in a few places of a table.
template <>
struct std::hash<ka_time_period> {
    std::size_t operator()(const ka_time_period& period) const noexcept;
};

/// As the period since midnight.
template <>
struct std::hash<ka_time> {
    std::size_t operator()(const ka_time& time) const noexcept;
};

/// As the period from day number 0, in universal time.
template <>
struct std::hash<ka_time_and_date> {
    std::size_t operator()(const ka_time_and_date& moment) const noexcept;
};

/// By magnitude and sign.
template <>
struct std::hash<ka_wint> {
    std::size_t operator()(const ka_wint& value) const noexcept;
};

#include <time/inline/hash.h>
