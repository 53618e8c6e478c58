#include <chrono>
#include <climits>
#include <cstdlib>
#include <initializer_list>
#include <ostream>
#include <string>

#include <gtest/gtest.h>

#include <time/date.h>

#include "expect_error.h"
#include "plain_calendar.h"
#include "printers.h"

// The whole calendar, against the standard library's and against a walk from day
// to day. Both count years through 0, which is the library's year -1.

namespace {

using u16 = unsigned short;
using std::chrono::last, std::chrono::sys_days;

constexpr const char* source = "time/src/date";
constexpr int first_day = 38, last_day = 13688960, epoch = 2440588;

/// All are, but where a run takes long every so many, and the last ones.
bool is_swept(int index, int count) { return index % SWEEP_STRIDE == 0 || index > count - 8; }

/// Knows nothing but how to go on to the next day, from the Wednesday before the range.
struct walker {
    int year = -4713, month = 12, day = 31, day_of_year = 364, weekday = 4;
    int weeks[8] = {}; // by the weekday that they begin on

    void step()
    {
        if (++day > month_length(month, is_leap(year)))
            day = 1, ++month;
        if (month > 12)
            *this = {year + 1, 1, 1, -1, weekday};
        ++day_of_year;
        weekday = weekday % 7 + 1;
        ++weeks[weekday];
    }
};

/// What a date tells of itself.
struct facts {
    int year, month, day, weekday, day_of_year, weeks_from_sunday, weeks_from_monday, weeks_from_first;
    bool is_leap, is_bc, is_ad;

    bool operator==(const facts&) const = default;

    friend std::ostream& operator<<(std::ostream& out, const facts& of)
    {
        return out << of.year << '/' << of.month << '/' << of.day << ", weekday " << of.weekday
                   << ", day of year " << of.day_of_year << ", weeks from Sunday " << of.weeks_from_sunday
                   << ", from Monday " << of.weeks_from_monday << ", from another day " << of.weeks_from_first
                   << (of.is_leap ? ", leap" : "") << (of.is_bc ? ", B.C." : "")
                   << (of.is_ad ? ", A.D." : "");
    }
};

/// The weekday that a day's weeks are counted from, besides Sunday and Monday.
int first_of_week(int number) { return number / 7 % 7 + 1; }

facts facts_of(const ka_date& date)
{
    const auto first = static_cast<u16>(first_of_week(date.julian_day()));
    return {date.year(),         date.month(),        date.day(),           date.weekday(),
            date.day_of_year(),  date.week_of_year(), date.week_of_year(2), date.week_of_year(first),
            date.is_leap_year(), date.is_bc(),        date.is_ad()};
}

facts facts_of(const walker& on, int number)
{
    return {on.year - (on.year < 1), on.month,    on.day,      on.weekday,
            on.day_of_year,          on.weeks[1], on.weeks[2], on.weeks[first_of_week(number)],
            is_leap(on.year),        on.year < 1, on.year >= 1};
}

int number_of(const sys_days& day) { return static_cast<int>(day.time_since_epoch().count()) + epoch; }

/// The first of a month by blocks of 400, 100, 4 and 1 years, for any year but 0.
int block_day_number(int month, int year)
{
    const int count = year + 4799 + (year < 0);
    int number = count / 400 * 146097 + count % 400 / 100 * 36524 + count % 100 / 4 * 1461 + count % 4 * 365;
    for (int before = 1; before < month; ++before)
        number += month_length(before, is_year(year) && is_leap(year + (year < 0)));
    return number - 31738;
}

bool is_refused(u16 month, int day, short year)
{
    try {
        (void)ka_date(month, static_cast<u16>(day), year);
        return false;
    } catch (const ka_time_varnel_error& error) {
        return error.code() == ka_invalid_date;
    }
}

}

TEST(calendar_sweep, every_day_there_and_back_with_its_weeks_and_neighbours)
{
    walker on;
    for (int number = first_day; number <= last_day; ++number) {
        on.step();
        if (!is_swept(number - first_day, last_day - first_day))
            continue;
        const sys_days known(std::chrono::days(number - epoch));
        const auto weekday = static_cast<int>(std::chrono::weekday(known).c_encoding()) + 1;
        ASSERT_EQ(number_of(std::chrono::year(on.year) / on.month / on.day), number);
        ASSERT_EQ(on.weekday, weekday) << number;

        const ka_date date(number);
        ASSERT_EQ(facts_of(date), facts_of(on, number)) << number;
        u16 month = 0, day = 0;
        short year = 0;
        ka_date::calc_calendar_date(number, &month, &day, &year);
        ASSERT_EQ(month, on.month) << number;
        ASSERT_EQ(day, on.day) << number;
        ASSERT_EQ(year, date.year()) << number;
        ASSERT_EQ(ka_date::calc_julian_day(month, day, year), number);
        ASSERT_EQ(ka_date(month, day, year).julian_day(), number);

        ka_date walked = date;
        ASSERT_EQ(walked++, date);
        ASSERT_EQ(walked.julian_day(), number + 1);
        ASSERT_EQ(--walked, date);
        ASSERT_EQ(walked--, date);
        ASSERT_EQ(walked.julian_day(), number - 1);
        ASSERT_EQ(++walked, date);
        for (int steps = 1; steps <= 7; ++steps) {
            const auto later = static_cast<u16>((weekday - 1 + steps) % 7 + 1);
            if (number == last_day)
                expect_error("invalid_day", "13688961", source, [&] { (void)date.next(later); });
            else
                ASSERT_EQ(date.next(later).julian_day(), number + steps);
            // Day 37 can be reached by walking, but is refused as the day to walk from.
            const auto earlier = static_cast<u16>((weekday + 6 - steps) % 7 + 1);
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
    for (int number = SHRT_MIN; number <= SHRT_MAX; ++number) {
        if (!is_swept(number + 4713, SHRT_MAX + 4713))
            continue;
        const auto year = static_cast<short>(number);
        const bool valid = is_year(year), leap = valid && is_leap(year + (year < 0));
        ASSERT_EQ(ka_date::is_year(year), valid) << year;
        ASSERT_EQ(ka_date::is_leap_year(year), leap) << year;
        if (year != 0) {
            ASSERT_EQ(ka_date::days_in_year(year), 365 + leap) << year;
        }
        if (!valid) {
            ASSERT_TRUE(is_refused(static_cast<u16>(std::abs(number) % 12 + 1), 1, year)) << year;
        }
        for (const u16 month :
             std::initializer_list<u16>{0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 65535}) {
            const bool is_month = 1 <= month && month <= 12, has_number = is_month && year != 0;
            const int days = is_month ? month_length(month, leap) : 0;
            const int before = has_number ? block_day_number(month, year) - 1 : 0;
            ASSERT_EQ(ka_date::is_month(month), is_month) << month;
            if (has_number) {
                ASSERT_EQ(ka_date::days_in_month(month, year), days) << month << '/' << year;
            }
            if (valid) {
                ASSERT_TRUE(is_refused(month, 0, year)) << month << '/' << year;
                ASSERT_TRUE(is_refused(month, days + 1, year)) << month << '/' << year;
            }
            for (int day = 0; day <= 65535; day += day == 32 ? 65535 - 32 : 1) {
                const auto short_day = static_cast<u16>(day);
                ASSERT_EQ(ka_date::is_day_in_month(month, short_day, year), valid && 1 <= day && day <= days)
                    << month << '/' << day << '/' << year;
                if (has_number) {
                    ASSERT_EQ(ka_date::calc_julian_day(month, short_day, year), before + day)
                        << month << '/' << day << '/' << year;
                }
            }
        }
    }
}

TEST(calendar_sweep, every_nth_weekday_of_every_month)
{
    for (int i = 0; i < (4713 + 32767) * 12 * 7; ++i) {
        const auto weekday = static_cast<u16>(i % 7 + 1), month = static_cast<u16>(i / 7 % 12 + 1);
        const auto year = static_cast<short>(i / 84 - 4713);
        if (year == 0 || !is_swept(year + 4713, 32766 + 4713))
            continue;
        const auto known = std::chrono::year(year + (year < 0)) / month;
        const std::chrono::weekday on(weekday - 1u);
        const int first_of_month = number_of(known / 1), last_of_month = number_of(known / last);
        const int first = number_of(known / on[1]), final = number_of(known / on[last]);
        // A throw takes its time: the ends of the range, and one month in many, are enough of them.
        const bool with_failures = (year + month) % 97 == 0 || year < -4711 || year > 32764;
        for (int which = -7; which <= 7; ++which) {
            const auto nth = [&] { return ka_date(static_cast<ka_which_one>(which), weekday, month, year); };
            int expected = which > 0 ? first + 7 * (which - 1) : final + 7 * (which + 1);
            // From the end of a month the way leads over the first of the next one.
            if (which <= 0 && last_of_month == last_day)
                expected = last_day + 1;
            if (first_of_month <= expected && expected <= last_of_month)
                ASSERT_EQ(nth().julian_day(), expected);
            else if (with_failures && first_day <= expected && expected <= last_day)
                expect_error("invalid_week", "Invalid week for month!", source, nth);
            else if (with_failures)
                expect_error("invalid_day", std::to_string(expected), source, nth);
        }
    }
}
