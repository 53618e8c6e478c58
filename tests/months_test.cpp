#include <climits>
#include <cstddef>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include <gtest/gtest.h>

#include <time/months.h>

#include "expect_error.h"
#include "printers.h"

// All days and all their neighbours are swept elsewhere. Here are the edges, the
// refusals, and what a sweep has no second opinion on.

namespace {

constexpr const char* source = "time/inline/months";
const ka_date first_date(38);
const ka_date last_date(13688960);

}

TEST(months, a_day_that_the_month_lacks)
{
    const struct {
        ka_date from;
        int months;
        ka_date clamped;
        ka_date run_on;
        bool exists;
    } rows[] = {
        {{1, 31, 2024}, 1, {2, 29, 2024}, {3, 2, 2024}, false},
        {{1, 31, 2023}, 1, {2, 28, 2023}, {3, 3, 2023}, false},
        {{1, 31, 2024}, 2, {3, 31, 2024}, {3, 31, 2024}, true},
        {{3, 31, 2024}, -1, {2, 29, 2024}, {3, 2, 2024}, false},
        {{5, 31, 2024}, -6, {11, 30, 2023}, {12, 1, 2023}, false},
        {{12, 31, -1}, 2, {2, 28, 1}, {3, 3, 1}, false},
        {{2, 29, 2024}, -12 * 2024, {2, 29, -1}, {2, 29, -1}, true},
        {{8, 31, 2024}, 0, {8, 31, 2024}, {8, 31, 2024}, true},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.from.to_string("%Y-%m-%d and ") + std::to_string(row.months));
        const ka_months count(row.months);
        EXPECT_EQ(row.from + count, row.clamped);
        EXPECT_EQ(row.from - -count, row.clamped);
        EXPECT_EQ(ka_add(row.from, count, ka_month_end::run_on), row.run_on);
        const auto refuse = [&] { return ka_add(row.from, count, ka_month_end::refuse); };
        if (row.exists)
            EXPECT_EQ(refuse(), row.clamped);
        else
            EXPECT_THROW(refuse(), ka_time_varnel_error);
    }
}

TEST(months, past_an_end_of_the_range)
{
    ka_date date(7, 4, 2024);
    const auto expect_year = [&](const char* year, auto operation) {
        expect_error("invalid_year", year, source, operation);
        EXPECT_EQ(date, ka_date(7, 4, 2024));
    };
    expect_year("32767", [&] { date += ka_years(32767 - 2024); });
    expect_year("-4714", [&] { date -= ka_years(2024 + 4713); });
    expect_year("32767", [] { (void)(last_date + ka_months(1)); });
    expect_year("-4714", [] { (void)(first_date - ka_months(1)); });
    expect_year("2147485671", [&] { date += ka_years(INT_MAX); });
    expect_year("-2147481625", [&] { date += ka_years(INT_MIN); });
    expect_year("2147483648", [] { (void)ka_months(INT_MAX + 1ll); });
    expect_year("2147483648", [] { (void)-ka_quarters(INT_MIN); });
    EXPECT_EQ(first_date + ka_months(12 * 37478 + 11), ka_date(12, 1, 32766));
    EXPECT_EQ(last_date - ka_years(37478), ka_date(12, 31, -4713));
}

TEST(months, spans_and_ages)
{
    const struct {
        ka_date from;
        ka_date to;
        ka_span apart;
        int age_by_march;
    } rows[] = {
        {{2, 29, 2004}, {2, 27, 2025}, {20, 11, 29}, 20}, {{2, 29, 2004}, {2, 28, 2025}, {21, 0, 0}, 20},
        {{2, 29, 2004}, {3, 1, 2025}, {21, 0, 1}, 21},    {{2, 29, 2004}, {2, 28, 2028}, {23, 11, 30}, 23},
        {{2, 29, 2004}, {2, 29, 2028}, {24, 0, 0}, 24},   {{7, 4, 1990}, {7, 3, 2024}, {33, 11, 29}, 33},
        {{9, 23, -63}, {8, 19, 14}, {75, 10, 27}, 75},    {{12, 31, -1}, {1, 1, 1}, {0, 0, 1}, 0},
        {{3, 1, 2025}, {2, 29, 2004}, {-21, 0, -1}, -21}, {{3, 31, 2024}, {2, 29, 2024}, {0, -1, 0}, 0},
        {{1, 1, 2024}, {1, 1, 2024}, {0, 0, 0}, 0},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.from.to_string("%Y-%m-%d to ") + row.to.to_string("%Y-%m-%d"));
        const ka_span apart = ka_until(row.from, row.to);
        EXPECT_EQ(apart.years, row.apart.years);
        EXPECT_EQ(apart.months, row.apart.months);
        EXPECT_EQ(apart.days, row.apart.days);
        EXPECT_EQ(ka_years_between(row.from, row.to), row.apart.years);
        EXPECT_EQ(ka_years_between(row.from, row.to, ka_month_end::run_on), row.age_by_march);
    }
    EXPECT_EQ(ka_months_between(first_date, last_date), 12 * 37478 + 11);
    EXPECT_EQ(ka_months_between(last_date, first_date), -12 * 37478 - 11);
}

TEST(months, weeks_of_iso_that_are_none)
{
    EXPECT_EQ(ka_iso_week(-4713, 1, 4).date(), first_date);
    EXPECT_EQ(ka_iso_week(32766, 52, 6).date(), last_date);
    const auto week = [](long long year, long long number, long long weekday) {
        return [=] { (void)ka_iso_week(year, number, weekday); };
    };
    expect_error("invalid_year", "0", source, week(0, 1, 1));
    expect_error("invalid_year", "67560", source, week(67560, 1, 1));
    expect_error("invalid_week", "0", source, week(2024, 0, 1));
    expect_error("invalid_week", "53", source, week(2024, 53, 1));
    expect_error("invalid_week", "65537", source, week(2024, 65537, 1));
    expect_error("invalid_weekday", "8", source, week(2020, 53, 8));
    expect_error("invalid_weekday", "-65535", source, week(2020, 53, -65535));
    expect_error("invalid_day", "37", "time/src/date", week(-4713, 1, 3));
    expect_error("invalid_day", "13688961", "time/src/date", week(32766, 52, 7));
}

TEST(months, days_in_rows)
{
    const auto expect_days = [](const ka_days& days, const ka_date& first, const ka_date& last) {
        ASSERT_FALSE(days.empty());
        EXPECT_EQ(days[0], first);
        EXPECT_EQ(days[static_cast<std::ptrdiff_t>(days.size()) - 1], last);
    };
    expect_days(ka_days_of_month(2, 2024), {2, 1, 2024}, {2, 29, 2024});
    expect_days(ka_days_of_month(12, 32766), {12, 1, 32766}, last_date);
    expect_days(ka_days_of_quarter(4, -1), {10, 1, -1}, {12, 31, -1});
    expect_days(ka_days_of_year(-4713), first_date, {12, 31, -4713});
    expect_days(ka_days_of_week({7, 4, 2024}), {6, 30, 2024}, {7, 6, 2024});
    expect_days(ka_days_of_week({7, 4, 2024}, 5), {7, 4, 2024}, {7, 10, 2024});
    expect_error("invalid_date", "13", source, [] { ka_days_of_month(13, 2024); });
    expect_error("invalid_date", "65537", source, [] { ka_days_of_month(65537, 2024); });
    expect_error("invalid_date", "0", source, [] { ka_days_of_year(0); });
    expect_error("invalid_date", "5", source, [] { ka_days_of_quarter(5, 2024); });
    expect_error("invalid_weekday", "8", source, [] { ka_days_of_week(first_date, 8); });
    expect_error("invalid_day", "34", "time/src/date", [] { ka_first_of_week(first_date); });
}

TEST(months, business_days)
{
    // 1 and 2 July 2024 are a Monday and a Tuesday.
    const std::vector<ka_date> holidays = {{7, 4, 2024}, {7, 5, 2024}, {7, 8, 2024}};
    const struct {
        int day;
        int n;
        int plain;
        int with_holidays;
    } rows[] = {{3, 1, 4, 9}, {3, 0, 3, 3},  {4, 0, 4, 9},     {6, 0, 8, 9},
                {7, 1, 8, 9}, {9, -1, 8, 3}, {14, -1, 12, 12}, {1, 10, 15, 18}};
    for (const auto& row : rows) {
        SCOPED_TRACE("July " + std::to_string(row.day) + ", " + std::to_string(row.n));
        const ka_date date(7, static_cast<unsigned short>(row.day), 2024);
        const auto is_holiday = [&](const ka_date& day) {
            return day == holidays[0] || day == holidays[1] || day == holidays[2];
        };
        EXPECT_EQ(ka_business_day(date, row.n).day(), row.plain);
        EXPECT_EQ(ka_business_day(date, row.n, holidays).day(), row.with_holidays);
        EXPECT_EQ(ka_business_day(date, row.n, is_holiday).day(), row.with_holidays);
    }
    expect_error("invalid_day", "13688961", "time/src/date", [] { ka_business_day(last_date, 1); });
    expect_error("invalid_day", "37", "time/src/date",
                 [] { ka_business_day(ka_date(1, 1, -4711), -3, [](const ka_date&) { return true; }); });
}

TEST(months, periods_as_people_read_them)
{
    const struct {
        ka_time_period period;
        int count;
        const char* text;
    } rows[] = {
        {ka_time_period(0, 2, 5, 0), 2, "2 h 05 min"},
        {ka_time_period(0, 2, 5, 59), 2, "2 h 05 min"},
        {ka_time_period(3, 0, 0, 0), 2, "3 days"},
        {ka_time_period(1, 0, 0, 9), 2, "1 day"},
        {ka_time_period(1, 0, 0, 9), 4, "1 day 0 h 00 min 09 s"},
        {ka_time_period(1, 0, 0, 9), 0, "1 day"},
        {ka_time_period(0, 0, 1, 1, 1), 9, "1 min 01 s 000 ms 001 us"},
        {ka_time_period(0, 20000), 3, "20 ms"},
        {ka_time_period(0, -1), 2, "-1 us"},
        {ka_time_period(0, -2, -5, 0), 2, "-2 h 05 min"},
        {ka_time_period(), 2, "0 s"},
        {ka_time_period(LLONG_MAX, 999999), 1, "106751991167300 days"},
        {ka_time_period(LLONG_MIN, -999999), 9, "-106751991167300 days 15 h 30 min 08 s 999 ms 999 us"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(ka_period_text(row.period, row.count), row.text);
    ka_period_units german;
    german.day = "Tag", german.days = "Tage", german.hour = "Stunde", german.hours = "Stunden";
    EXPECT_EQ(ka_period_text(ka_time_period(1, 2, 0, 0), 2, german), "1 Tag 2 Stunden");
    const std::string long_word(1000, 'x');
    german.hours = long_word.c_str();
    EXPECT_EQ(ka_period_text(ka_time_period(0, 2, 0, 0), 1, german), "2 " + long_word);
}

// The compiler has all of it.
static_assert(ka_date(1, 31, 2024) + ka_months(1) == ka_date(2, 29, 2024));
static_assert(ka_business_day(ka_last_of_month(ka_date(8, 1, 2024)), 0) == ka_date(9, 2, 2024));
static_assert([] {
    char text[10] = {};
    const bool has_room = ka_write_period_text(text, text + 10, ka_time_period(0, 2, 5, 0)).ec == std::errc();
    return has_room && std::string_view(text, 10) == "2 h 05 min";
}());
static_assert([] {
    char text[9] = {};
    return ka_write_period_text(text, text + 9, ka_time_period(0, 2, 5, 0)).ec == std::errc::value_too_large;
}());
