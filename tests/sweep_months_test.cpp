#include <algorithm>
#include <chrono>
#include <vector>

#include <gtest/gtest.h>

#include <time/io.h>
#include <time/months.h>

#include "plain_calendar.h"

// Months and weeks of all dates, against a list of months that was walked.

namespace {

constexpr int first_day = 38, last_day = 13688960, epoch = 2440588;

struct walked_month {
    int first;
    int length;
};

/// All months of the range in order, from January -4713.
const std::vector<walked_month>& months()
{
    static const std::vector<walked_month> all = [] {
        std::vector<walked_month> made;
        int day = first_day;
        for (int year = -4712; year <= 32766; ++year)
            for (int month = 1; month <= 12; ++month) {
                made.push_back({day, month_length(month, is_leap(year))});
                day += made.back().length;
            }
        return made;
    }();
    return all;
}

}

TEST(months_sweep, every_day_by_two_years_of_months_either_way)
{
    const int count = static_cast<int>(months().size());
    for (int index = 0; index < count; ++index) {
        if (index % SWEEP_STRIDE != 0 && index < count - 30)
            continue;
        const walked_month& here = months()[static_cast<std::size_t>(index)];
        for (int day = 0; day < here.length; ++day) {
            const ka_date date(here.first + day);
            for (int n = std::max(-25, -index); n <= std::min(25, count - 1 - index); ++n) {
                const walked_month& there = months()[static_cast<std::size_t>(index + n)];
                ASSERT_EQ((date + ka_months(n)).julian_day(), there.first + std::min(day, there.length - 1))
                    << date << " and " << n;
            }
            ASSERT_EQ(
                ka_add(date, ka_months(std::min(1, count - 1 - index)), ka_month_end::run_on).julian_day(),
                months()[static_cast<std::size_t>(std::min(index + 1, count - 1))].first + day);
        }
    }
}

TEST(months_sweep, every_day_in_its_week_month_quarter_and_year)
{
    using namespace std::chrono;
    for (int number = first_day; number <= last_day; ++number) {
        if (number % SWEEP_STRIDE != 0 && number < last_day - 400)
            continue;
        const ka_date date(number);
        const sys_days day(days(number - epoch));
        // The year that the Thursday is in, and the days to its first Thursday.
        const sys_days thursday = day - (weekday(day) - Monday) + days(3);
        const year_month_day of(thursday);
        const sys_days first_thursday(of.year() / January / Thursday[1]);
        const ka_iso_week week(date);
        ASSERT_EQ(week.week(), (thursday - first_thursday).count() / 7 + 1) << date;
        ASSERT_EQ(week.year(), int(of.year()) - (int(of.year()) < 1)) << date;
        ASSERT_EQ(week.weekday(), weekday(day).iso_encoding()) << date;
        ASSERT_EQ(week.date(), date);
        const sys_days last_thursday(of.year() / December / Thursday[last]);
        ASSERT_EQ(ka_iso_week::weeks_of_year(week.year()), (last_thursday - first_thursday).count() / 7 + 1);

        const year_month_day parts(day);
        const unsigned int quarter = (unsigned(parts.month()) - 1) / 3;
        const auto number_of = [](const sys_days& found) {
            return static_cast<int>(found.time_since_epoch().count()) + epoch;
        };
        ASSERT_EQ(ka_quarter(date), static_cast<int>(quarter) + 1);
        const int quarter_start = number_of(parts.year() / month(quarter * 3 + 1) / 1);
        ASSERT_EQ(ka_day_of_quarter(date), number - quarter_start) << date;
        ASSERT_EQ(ka_last_of_quarter(date).julian_day(),
                  number_of(parts.year() / month(quarter * 3 + 3) / std::chrono::last))
            << date;
        ASSERT_EQ(ka_first_of_month(date).julian_day(), number_of(parts.year() / parts.month() / 1)) << date;
        ASSERT_EQ(ka_last_of_month(date).julian_day(),
                  number_of(parts.year() / parts.month() / std::chrono::last))
            << date;
        ASSERT_EQ(ka_is_weekend(date), weekday(day) == Saturday || weekday(day) == Sunday) << date;
        if (number > first_day + 7 && number < last_day - 7) {
            const auto first = static_cast<unsigned short>(number / 7 % 7 + 1);
            const ka_days around = ka_days_of_week(date, first);
            ASSERT_EQ(around.size(), 7u) << date;
            ASSERT_EQ(around[0].weekday(), first) << date;
            ASSERT_TRUE(around[0] <= date) << date;
            ASSERT_TRUE(date <= around[6]) << date;
        }
    }
}
