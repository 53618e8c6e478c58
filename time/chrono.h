#pragma once

#include <algorithm>
#include <chrono>
#include <compare>
#include <concepts>
#include <cstddef>
#include <iterator>
#include <ranges>

#include <time/date.h>
#include <time/export.h>
#include <time/time_of_day.h>
#include <time/timedate.h>
#include <time/tperiod.h>
#include <time/zone.h>

/// To `std::chrono` and back, and days to loop over.
///
///     #include <time/chrono.h>
///     using namespace std::chrono;
///
///     ka_to_date(2024y / July / 4).weekday();                             // 5, a Thursday
///     ka_to_year_month_day(ka_date(3, 15, -44)) == -43y / March / 15;        // true
///     ka_to_microseconds(ka_time_period(90)).count();                        // 90000000
///
///     auto now = floor<microseconds>(system_clock::now());
///     ka_time_and_date here = ka_to_time_and_date(now, ka_time_zone::eastern());
///     ka_to_sys_time(here) == now;                                           // true
///
///     int fridays = 0;
///     for (ka_date day : ka_days(ka_date(7, 1, 2024), ka_date(7, 31, 2024)))
///         fridays += day.weekday() == 6;
///     fridays;                                                            // 4
///
/// What each side refuses:
///
///     library             std::chrono                     what is refused on the way here, and there
///     ka_date             sys_days                        invalid_day, nothing
///     ka_date             year_month_day                  invalid_date, nothing
///     weekday, 1 to 7     weekday                         invalid_weekday, invalid_weekday
///     ka_time_period      microseconds                    nothing, invalid_time_period
///     ka_time             hh_mm_ss<microseconds>          invalid_time, nothing
///     ka_time_and_date    sys_time<microseconds>          nothing, invalid_time_period
///
/// Exact: nothing is rounded, and there and back gives the same value. Finer
/// values than microseconds, such as `system_clock::now()`, are floored first,
/// by the caller; coarser ones go in as they are.
/// Years: chrono has a year 0, the library has not. 1 B.C. is -1 here and 0
/// there, 44 B.C. is -44 here and -43 there.
/// Failure: `ka_time_varnel_error` with the code named above.
/// Constant expressions: all but what has a moment in it.

// Refused values: the library throws, so that a host can be built without exceptions.

[[noreturn]] KA_TIME_VARNEL_API void ka_refuse_chrono_weekday(ka_integers::given weekday);
[[noreturn]] KA_TIME_VARNEL_API void ka_refuse_chrono_period(const ka_time_period& period);
[[noreturn]] KA_TIME_VARNEL_API void ka_refuse_chrono_time(const ka_time_period& since_midnight);

// Dates.

/// A date that was stepped out of its range is taken as its day number says.
constexpr std::chrono::sys_days ka_to_sys_days(const ka_date& date) noexcept;

/// A day from 1 January -4713 to 31 December 32766, else `invalid_day`.
constexpr ka_date ka_to_date(std::chrono::sys_days day);

/// The year as chrono counts it: 1 B.C. is its year 0.
constexpr std::chrono::year_month_day ka_to_year_month_day(const ka_date& date) noexcept;

/// A day that the calendar has, else `invalid_date`: 30 February does not run
/// on into March.
constexpr ka_date ka_to_date(const std::chrono::year_month_day& date);
/// `2024y / February / last` is 29 February 2024. A year out of the range, or one
/// that is not `ok()`, throws `invalid_date`.
constexpr ka_date ka_to_date(const std::chrono::year_month_day_last& date);

// Weekdays, by number. That of a date is `std::chrono::weekday(ka_to_sys_days(date))`.

/// 1 (Sunday) to 7 (Saturday), else `invalid_weekday`.
constexpr std::chrono::weekday ka_to_chrono_weekday(ka_integer auto weekday);

/// 1 (Sunday) to 7 (Saturday). One that is not `ok()` throws `invalid_weekday`.
constexpr unsigned short ka_to_weekday(std::chrono::weekday weekday);

// Durations.

/// Every count has its period; hours, days and the like go in as they are.
constexpr ka_time_period ka_to_time_period(std::chrono::microseconds period) noexcept;

/// A period whose microseconds 64 bits hold, some 292,000 years either way; else
/// `invalid_time_period`. A time of day goes in too, as the period since midnight.
constexpr std::chrono::microseconds ka_to_microseconds(const ka_time_period& period);

// Times of day.

/// The same fields, never negative, with all six digits of the fraction.
constexpr std::chrono::hh_mm_ss<std::chrono::microseconds> ka_to_hh_mm_ss(const ka_time& time);

/// A time from 00:00 to before 24:00, else `invalid_time`. For microseconds
/// round the clock there is `ka_time(ka_to_time_period(microseconds))`.
template <typename Duration>
requires std::convertible_to<Duration, std::chrono::microseconds>
constexpr ka_time ka_to_time(const std::chrono::hh_mm_ss<Duration>& time);

// Moments. Chrono's system time is an instant without a zone, so that of the
// moment plays no part.

/// An instant within 292,000 years of 1970, else `invalid_time_period`.
inline std::chrono::sys_time<std::chrono::microseconds> ka_to_sys_time(const ka_time_and_date& moment);

/// The moment in the default zone.
inline ka_time_and_date ka_to_time_and_date(std::chrono::sys_time<std::chrono::microseconds> time) noexcept;

/// The moment in a zone, which must outlive it.
inline ka_time_and_date ka_to_time_and_date(std::chrono::sys_time<std::chrono::microseconds> time,
                                            const ka_time_zone& zone) noexcept;

// Days in a row.

/// Walks from day to day. It makes each date when it is asked for one, so it
/// can stand one day past the last date that there is.
class ka_day_iterator {
public:
    using iterator_concept = std::random_access_iterator_tag;
    /// To older algorithms no more than this: what `*` gives is a value.
    using iterator_category = std::input_iterator_tag;
    using value_type = ka_date;
    using difference_type = std::ptrdiff_t;
    using reference = ka_date;
    using pointer = void;

    constexpr ka_day_iterator() noexcept = default;
    explicit constexpr ka_day_iterator(int julian_day) noexcept : julian_day_(julian_day) {}

    /// A day out of the range of `ka_date` throws `invalid_day`.
    constexpr ka_date operator*() const { return ka_date(julian_day_); }
    constexpr ka_date operator[](difference_type days) const { return *(*this + days); }

    // Steps, unchecked: only what asks for the date throws.

    constexpr ka_day_iterator& operator++() noexcept { return *this += 1; }
    constexpr ka_day_iterator& operator--() noexcept { return *this += -1; }
    constexpr ka_day_iterator operator++(int) noexcept
    {
        const ka_day_iterator before = *this;
        ++*this;
        return before;
    }
    constexpr ka_day_iterator operator--(int) noexcept
    {
        const ka_day_iterator before = *this;
        --*this;
        return before;
    }
    constexpr ka_day_iterator& operator+=(difference_type days) noexcept
    {
        julian_day_ = static_cast<int>(julian_day_ + days);
        return *this;
    }
    constexpr ka_day_iterator& operator-=(difference_type days) noexcept { return *this += -days; }

    friend constexpr ka_day_iterator operator+(ka_day_iterator at, difference_type days) noexcept
    {
        return at += days;
    }
    friend constexpr ka_day_iterator operator+(difference_type days, ka_day_iterator at) noexcept
    {
        return at += days;
    }
    friend constexpr ka_day_iterator operator-(ka_day_iterator at, difference_type days) noexcept
    {
        return at -= days;
    }
    friend constexpr difference_type operator-(ka_day_iterator a, ka_day_iterator b) noexcept
    {
        return difference_type{a.julian_day_} - b.julian_day_;
    }

    // Order: the earlier day first.

    constexpr bool operator==(const ka_day_iterator&) const noexcept = default;
    constexpr std::strong_ordering operator<=>(const ka_day_iterator&) const noexcept = default;

private:
    int julian_day_ = 0;
};

/// All days from `first` to `last`, both included; none where `last` is the
/// earlier. A view of two numbers, with random access and a size, which keeps
/// no reference to the dates.
class ka_days : public std::ranges::view_base {
public:
    constexpr ka_days() noexcept = default;
    constexpr ka_days(const ka_date& first, const ka_date& last) noexcept
        : begin_(first.julian_day()), end_(std::max(first.julian_day(), last.julian_day() + 1))
    {}

    // As of any range: `ka_days(a, b) | std::views::reverse` goes backwards.

    constexpr ka_day_iterator begin() const noexcept { return begin_; }
    constexpr ka_day_iterator end() const noexcept { return end_; }
    constexpr std::size_t size() const noexcept { return static_cast<std::size_t>(end_ - begin_); }
    constexpr bool empty() const noexcept { return begin_ == end_; }
    /// The day so many days after the first, also beyond the last; out of the range
    /// of `ka_date` it throws `invalid_day`.
    constexpr ka_date operator[](std::ptrdiff_t index) const { return begin_[index]; }

private:
    ka_day_iterator begin_;
    ka_day_iterator end_;
};

template <>
inline constexpr bool std::ranges::enable_borrowed_range<ka_days> = true;

#include <time/inline/chrono.h>
