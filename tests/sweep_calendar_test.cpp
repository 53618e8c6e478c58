#include <chrono>
#include <climits>
#include <cstdlib>
#include <initializer_list>
#include <string>

#include <gtest/gtest.h>

#include <time/date.h>

#include "expect_error.h"

// The whole calendar, against the standard library's and against a walk from day
// to day. Years here are astronomical: 0 is 1 B.C., the library's year -1.

namespace {

using u16 = unsigned short;
using std::chrono::days, std::chrono::sys_days;

constexpr const char* source = "time/src/date";
constexpr int first_day = 38, last_day = 13688960, epoch = 2440588;

/// All, but where a run takes long every so many, and what lies near an edge of the calendar.
bool is_swept(int number)
{
    if (number % SWEEP_STRIDE == 0)
        return true;
    for (const int edge : {SHRT_MIN, -4713, 0, first_day, 32766, 1721425, last_day})
        if (std::abs(number - edge) <= 10)
            return true;
    return false;
}

bool is_valid(int library_year)
{
    return -4713 <= library_year && library_year <= 32766 && library_year != 0;
}
bool is_leap(int year) { return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0); }

constexpr int lengths[] = {0, 31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
int length(int month, bool leap) { return lengths[month] + (month == 2 && leap); }

/// Knows nothing but how to go on to the next day, from the Wednesday before the range.
struct walker {
    int year = -4713, month = 12, day = 31, day_of_year = 364, weekday = 4;
    int weeks[8] = {}; // by the weekday that they begin on

    void step()
    {
        if (++day > length(month, is_leap(year)))
            day = 1, ++month;
        if (month > 12)
            *this = {year + 1, 1, 1, -1, weekday};
        ++day_of_year;
        weekday = weekday % 7 + 1;
        ++weeks[weekday];
    }
};

int number_of(const sys_days& day) { return static_cast<int>(day.time_since_epoch().count()) + epoch; }

/// The day number of the first of a month by blocks of 400, 100, 4 and 1 years, for any year but 0.
int block_day_number(int month, int library_year)
{
    const int count = library_year + 4799 + (library_year < 0);
    int number = count / 400 * 146097 + count % 400 / 100 * 36524 + count % 100 / 4 * 1461 + count % 4 * 365;
    for (int before = 1; before < month; ++before)
        number += length(before, is_valid(library_year) && is_leap(library_year + (library_year < 0)));
    return number - 31738;
}

/// The symbol of the error that an operation ends in.
template <typename Operation>
std::string refusal(Operation operation)
{
    try {
        operation();
    } catch (const ka_time_varnel_error& error) {
        return ka_time_varnel_error::symbol(error.code());
    }
    return "none";
}

TEST(calendar_sweep, every_day_there_and_back_with_its_weeks_and_neighbours)
{
    walker walked;
    for (int number = first_day; number <= last_day; ++number) {
        walked.step();
        if (!is_swept(number))
            continue;
        const std::chrono::year_month_day known(sys_days(days(number - epoch)));
        ASSERT_TRUE(known == std::chrono::year(walked.year) / walked.month / walked.day);

        u16 month = 0, day = 0;
        short year = 0;
        ka_date::calc_calendar_date(number, &month, &day, &year);
        ASSERT_TRUE(month == walked.month && day == walked.day && year == walked.year - (walked.year < 1))
            << number;
        const ka_date date(number);
        ASSERT_TRUE(date.month() == month && date.day() == day && date.year() == year &&
                    date.is_leap_year() == known.year().is_leap() && date.is_bc() == (year < 0) &&
                    date.is_ad() == (year > 0))
            << number;
        ASSERT_TRUE(ka_date::calc_julian_day(month, day, year) == number &&
                    ka_date(month, day, year) == date && date.julian_day() == number)
            << number;
        const auto weekday = std::chrono::weekday(sys_days(known)).c_encoding() + 1;
        ASSERT_TRUE(date.weekday() == weekday && walked.weekday == static_cast<int>(weekday) &&
                    date.day_of_year() == walked.day_of_year && date.week_of_year() == walked.weeks[1])
            << number;
        for (const int first : {2, number / 7 % 7 + 1})
            ASSERT_EQ(date.week_of_year(static_cast<u16>(first)), walked.weeks[first]) << number;

        ka_date moved = date;
        ASSERT_TRUE(moved++ == date && moved.julian_day() == number + 1 && --moved == date &&
                    moved-- == date && moved.julian_day() == number - 1 && ++moved == date)
            << number;
        for (int steps = 1; steps <= 7; ++steps) {
            const auto later = static_cast<u16>((walked.weekday - 1 + steps) % 7 + 1);
            if (number == last_day)
                expect_error("invalid_day", "13688961", source, [&] { (void)date.next(later); });
            else
                ASSERT_EQ(date.next(later).julian_day(), number + steps);
            // Day 37 can be reached by walking, but is refused as the day to walk from.
            const auto earlier = static_cast<u16>((walked.weekday + 6 - steps) % 7 + 1);
            if (number - steps < 37 || number == first_day)
                expect_error("invalid_day", "37", source, [&] { (void)date.previous(earlier); });
            else
                ASSERT_EQ(date.previous(earlier).julian_day(), number - steps);
        }
    }
}

// Days that exist are built in the sweep of all days; here are those that do not.
TEST(calendar_sweep, every_month_and_day_in_every_year_of_the_type)
{
    const auto is_refused = [](u16 month, int day, short year) {
        return refusal([&] { (void)ka_date(month, static_cast<u16>(day), year); }) == "invalid_date";
    };
    for (int number = SHRT_MIN; number <= SHRT_MAX; ++number) {
        if (!is_swept(number))
            continue;
        const auto year = static_cast<short>(number);
        const bool valid = is_valid(year), leap = valid && is_leap(year + (year < 0));
        ASSERT_TRUE(ka_date::is_year(year) == valid && ka_date::is_leap_year(year) == leap &&
                    (year == 0 || ka_date::days_in_year(year) == 365 + leap))
            << year;
        ASSERT_TRUE(valid || is_refused(static_cast<u16>(std::abs(number) % 12 + 1), 1, year)) << year;
        for (const u16 month :
             std::initializer_list<u16>{0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 65535}) {
            const bool exists = 1 <= month && month <= 12;
            const int last = exists ? length(month, leap) : 0;
            ASSERT_TRUE(!valid || (is_refused(month, 0, year) && is_refused(month, last + 1, year)))
                << month << '/' << year;
            const int first = exists && year != 0 ? block_day_number(month, year) : 0;
            ASSERT_TRUE(!exists || year == 0 || ka_date::days_in_month(month, year) == last)
                << month << '/' << year;
            for (int day = 0; day <= 65535; day += day < 40 ? 1 : 65535 - 40)
                ASSERT_TRUE(ka_date::is_day_in_month(month, static_cast<u16>(day), year) ==
                                (valid && 1 <= day && day <= last) &&
                            (!exists || year == 0 ||
                             ka_date::calc_julian_day(month, static_cast<u16>(day), year) == first + day - 1))
                    << month << '/' << day << '/' << year;
        }
    }
    for (int number = 0; number <= 65535; ++number)
        ASSERT_TRUE(ka_date::is_month(static_cast<u16>(number)) == (1 <= number && number <= 12) &&
                    ka_date::is_weekday(static_cast<u16>(number)) == (1 <= number && number <= 7));
    for (const int number : {INT_MIN, -1, 37, 38, last_day, last_day + 1, INT_MAX})
        EXPECT_EQ(ka_date::is_julian_day(number), first_day <= number && number <= last_day);
}

TEST(calendar_sweep, every_nth_weekday_of_every_month)
{
    for (int number = -4713; number <= 32766; ++number) {
        if (number == 0 || !is_swept(number))
            continue;
        const auto year = static_cast<short>(number);
        for (u16 month = 1; month <= 12; ++month) {
            const auto known = std::chrono::year(year + (year < 0)) / month;
            const int first = number_of(known / 1), last = number_of(known / std::chrono::last);
            // A throw takes its time: the ends of the range, and one month in many, are enough of them.
            const bool with_failures = (number + month) % 97 == 0 || number < -4711 || number > 32764;
            for (u16 weekday = 1; weekday <= 7; ++weekday) {
                const std::chrono::weekday on(weekday - 1u);
                const int from_start = number_of(known / on[1]),
                          from_end = number_of(known / on[std::chrono::last]);
                for (int which = -7; which <= 7; ++which) {
                    const auto nth = [&] {
                        return ka_date(static_cast<ka_which_one>(which), weekday, month, year);
                    };
                    const bool is_over_the_end = which <= 0 && last == last_day;
                    const int expected = is_over_the_end ? last + 1
                                         : which > 0     ? from_start + 7 * (which - 1)
                                                         : from_end + 7 * (which + 1);
                    if (first <= expected && expected <= last)
                        ASSERT_EQ(nth().julian_day(), expected);
                    else if (with_failures && first_day <= expected && expected <= last_day)
                        expect_error("invalid_week", "Invalid week for month!", source, nth);
                    else if (with_failures)
                        expect_error("invalid_day", std::to_string(expected), source, nth);
                }
            }
        }
    }
}

}
