#include <chrono>
#include <climits>
#include <ctime>
#include <iomanip>
#include <sstream>
#include <string>
#include <utility>

#include <gtest/gtest.h>

#include <time/date.h>

#include "expect_error.h"

namespace {

using u16 = unsigned short;

constexpr const char* source = "time/src/date";
constexpr int first_day = 38;
constexpr int last_day = 13688960;
constexpr int epoch = 2440588;

int length(int month, bool leap_year)
{
    constexpr int lengths[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    return lengths[month - 1] + (month == 2 && leap_year);
}

bool is_leap(int astronomical)
{
    return astronomical % 4 == 0 && (astronomical % 100 != 0 || astronomical % 400 == 0);
}

/// Knows nothing but how to go on to the next day, from 1 January -4713, a Thursday.
struct walker {
    int year = -4712; // astronomical: there is a year 0
    int month = 1;
    int day = 1;
    int day_of_year = 0;
    int weekday = 5;
    int weeks_from_sunday = 0;
    int weeks_from_monday = 0;

    void step()
    {
        ++day_of_year;
        if (++day > length(month, is_leap(year))) {
            day = 1;
            if (++month > 12) {
                month = 1;
                ++year;
                day_of_year = weeks_from_sunday = weeks_from_monday = 0;
            }
        }
        weekday = weekday % 7 + 1;
        weeks_from_sunday += weekday == 1;
        weeks_from_monday += weekday == 2;
    }
};

/// The day number by blocks of 400, 100, 4 and 1 years, for any year but 0.
int block_day_number(int month, int day, int year)
{
    const int count = year + 4799 + (year < 0);
    int number = day - 31739;
    number += count / 400 * 146097 + count % 400 / 100 * 36524 + count % 100 / 4 * 1461 + count % 4 * 365;
    const bool leap_year = -4713 <= year && year <= 32766 && is_leap(year + (year < 0));
    for (int before = 1; before < month; ++before)
        number += length(before, leap_year);
    return number;
}

/// Opens what is protected.
struct probe : ka_date {
    explicit probe(const std::tm& fields) : ka_date(fields) {}
    using ka_date::date;
};

std::string shown_date(int month, int day, int year)
{
    std::ostringstream text;
    text << "Month( " << month << " ), day( " << day << " ), year( " << year << " )";
    return text.str();
}

static_assert(ka_date(2, 29, 2024).weekday() == 5 && ka_date(ka_last, 1, 10, 2024) == ka_date(10, 27, 2024));
static_assert(ka_date(2, 29, 2024) + ka_time_period(366, 0, 0, 0) == ka_date(3, 1, 2025));

}

TEST(date, every_day_of_the_range)
{
    int wrong = 0;
    walker expected;
    for (int number = first_day; number <= last_day; ++number, expected.step()) {
        u16 month = 0, day = 0;
        short year = 0;
        ka_date::calc_calendar_date(number, &month, &day, &year);
        const std::chrono::year_month_day civil(std::chrono::sys_days(std::chrono::days(number - epoch)));
        const ka_date date(number);
        wrong += month != expected.month || day != expected.day ||
                 year != expected.year - (expected.year < 1) || civil.month() != std::chrono::month(month) ||
                 civil.day() != std::chrono::day(day) || civil.year() != std::chrono::year(expected.year) ||
                 date.weekday() != expected.weekday || ka_date::calc_julian_day(month, day, year) != number ||
                 date.day_of_year() != expected.day_of_year ||
                 date.week_of_year() != expected.weeks_from_sunday ||
                 date.week_of_year(2) != expected.weeks_from_monday || date.is_bc() != (year < 0) ||
                 date.is_ad() == date.is_bc();
    }
    EXPECT_EQ(wrong, 0);
    EXPECT_EQ(expected.year, 32767);
}

TEST(date, every_year_and_month_of_the_type)
{
    int wrong = 0;
    for (int year = SHRT_MIN; year <= SHRT_MAX; ++year) {
        const auto y = static_cast<short>(year);
        const bool valid = -4713 <= year && year <= 32766 && year != 0;
        const bool leap_year = valid && is_leap(year + (year < 0));
        wrong += ka_date::is_year(y) != valid || ka_date::is_leap_year(y) != leap_year;
        wrong += year != 0 && ka_date::days_in_year(y) != 365 + leap_year;
        for (u16 month = 1; year != 0 && month <= 12; ++month) {
            const int days = length(month, leap_year);
            wrong += ka_date::days_in_month(month, y) != days;
            for (const u16 day : {u16{0}, u16{1}, u16{28}, u16{29}, u16{30}, u16{31}, u16{32}, u16{65535}})
                wrong += ka_date::calc_julian_day(month, day, y) != block_day_number(month, day, year) ||
                         ka_date::is_day_in_month(month, day, y) != (valid && 1 <= day && day <= days);
        }
    }
    EXPECT_EQ(wrong, 0);
    for (const int number : {INT_MIN, 37, 38, 13688960, 13688961, INT_MAX})
        EXPECT_EQ(ka_date::is_julian_day(number), first_day <= number && number <= last_day);
    for (u16 value = 0; value < 20; ++value) {
        EXPECT_EQ(ka_date::is_month(value), 1 <= value && value <= 12);
        EXPECT_EQ(ka_date::is_weekday(value), 1 <= value && value <= 7);
    }
    for (const u16 month : {u16{0}, u16{13}, u16{1}}) {
        const char* const symbol = month == 1 ? "invalid_year" : "invalid_month";
        const std::string shown = month == 1 ? "Year zero never existed!" : std::to_string(month);
        expect_error(symbol, shown, source, [&] { ka_date::days_in_month(month, 0); });
        expect_error(symbol, shown, source, [&] { ka_date::calc_julian_day(month, 1, 0); });
        EXPECT_FALSE(ka_date::is_day_in_month(month, 1, 0));
    }
    expect_error("invalid_year", "Year zero never existed!", source, [] { ka_date::days_in_year(0); });
    short year = 0;
    ka_date::calc_calendar_date(1721425, nullptr, nullptr, &year);
    EXPECT_EQ(year, -1);
}

TEST(date, refuses_what_the_calendar_lacks_and_keeps_the_date)
{
    std::tm record = {};
    record.tm_mon = 1;
    record.tm_mday = 29;
    record.tm_year = 100;
    probe date(record);
    record.tm_year = 101;
    expect_error("invalid_date", shown_date(2, 29, 2001), source, [&] { date.date(record); });
    const struct {
        u16 month, day;
        short year;
    } rows[] = {{13, 1, 2000}, {0, 1, 2000}, {2, 29, 1900}, {4, 31, -5},
                {1, 0, 2000},  {1, 1, 0},    {1, 1, -4714}, {1, 1, 32767}};
    for (const auto& row : rows)
        expect_error("invalid_date", shown_date(row.month, row.day, row.year), source,
                     [&] { date.date(row.month, row.day, row.year); });
    for (const long long number : {LLONG_MIN, 37ll, 13688961ll, 4294967296ll + 38})
        expect_error("invalid_day", std::to_string(number), source, [&] { (void)ka_date(number); });
    expect_error("invalid_day", "37", source, [] { (void)ka_date(37); });
    expect_error("invalid_day", "18446744073709551615", source, [] { (void)ka_date(ULLONG_MAX); });
    EXPECT_EQ(date, ka_date(2, 29, 2000));
    EXPECT_EQ(ka_date(2440588ul), ka_date());
}

TEST(date, nth_weekday_of_every_year)
{
    int wrong = 0;
    for (short year = -4713; year < 32767; ++year) {
        // A throw takes its time: the ends of the range, and a century apart, are enough of them.
        const bool with_failures = year % 97 == 0 || year == -4713 || year == 32766;
        for (const u16 month : {u16{1}, u16{2}, u16{4}, u16{12}}) {
            const int first = block_day_number(month, 1, year);
            const int last = first + length(month, is_leap(year + (year < 0))) - 1;
            for (int i = 0; year != 0 && i < 7 * 15; ++i) {
                const auto weekday = static_cast<u16>(i % 7 + 1);
                const int which = i / 7 - 7;
                const auto occurrence = static_cast<ka_which_one>(which);
                const auto nth = [&] { return ka_date(occurrence, weekday, month, year); };
                // From the end of a month the way leads over the first of the next one.
                int number = which > 0 ? first : last;
                while ((number + 1) % 7 + 1 != weekday)
                    number += which > 0 ? 1 : -1;
                number += 7 * (which > 0 ? which - 1 : which + 1);
                if (which <= 0 && last == last_day)
                    number = last + 1;
                if (first <= number && number <= last)
                    wrong += nth().julian_day() != number;
                else if (with_failures && first_day <= number && number <= last_day)
                    expect_error("invalid_week", "Invalid week for month!", source, nth);
                else if (with_failures)
                    expect_error("invalid_day", std::to_string(number), source, nth);
            }
        }
    }
    EXPECT_EQ(wrong, 0);
    // 52 weeks on lies a month of the same number.
    EXPECT_EQ(ka_date(static_cast<ka_which_one>(53), 1, 3, 2023), ka_date(3, 3, 2024));

    ka_date date;
    expect_error("invalid_month", "Invalid month: 13", source, [&] { date.date(ka_first, 8, 13, 0); });
    expect_error("invalid_year", "-4714", source, [&] { date.date(ka_first, 8, 1, -4714); });
    expect_error("invalid_weekday", "8", source, [&] { date.date(ka_last, 8, 12, 32766); });
    expect_error("invalid_week", "Invalid week for month!", source, [&] { date.date(ka_fifth, 2, 2, 2024); });
    EXPECT_EQ(date, ka_date());
    const char* const names[] = {"out of range", "ka_next_to_last", "ka_last",   "ka_none",  "ka_first",
                                 "ka_second",    "ka_third",        "ka_fourth", "ka_fifth", "out of range"};
    for (int which = -3; which <= 6; ++which)
        EXPECT_STREQ(ka_which_one_name(static_cast<ka_which_one>(which)), names[which + 3]);
}

TEST(date, next_and_previous_weekday)
{
    for (const int number : {38, 39, 40, 43, 44, 45, epoch, 13688953, 13688954, 13688959, 13688960}) {
        const ka_date date(number);
        for (int days = 1; days <= 7; ++days) {
            SCOPED_TRACE(std::to_string(number) + " and " + std::to_string(days));
            const auto on = static_cast<u16>((number + days + 1) % 7 + 1);
            if (number == last_day)
                expect_error("invalid_day", "13688961", source, [&] { (void)date.next(on); });
            else
                EXPECT_EQ(date.next(on).julian_day(), number + days);
            // Day 37 can be reached by walking, but is refused as the day to walk from.
            const auto back = static_cast<u16>((number - days + 1) % 7 + 1);
            if (number - days < 37 || number == first_day)
                expect_error("invalid_day", "37", source, [&] { (void)date.previous(back); });
            else
                EXPECT_EQ(date.previous(back).julian_day(), number - days);
        }
    }
    expect_error("invalid_weekday", "0", source, [] { (void)ka_date().next(0); });
    expect_error("invalid_weekday", "8", source, [] { (void)ka_date().previous(8); });
    expect_error("invalid_weekday", "8", source, [] { (void)ka_date().week_of_year(8); });
}

TEST(date, steps_leave_the_range_and_nothing_starts_out_there)
{
    ka_date date = ka_date::max_date();
    EXPECT_EQ((date++).julian_day(), last_day);
    EXPECT_EQ(date.to_string("%Y %m %d"), "32767 01 01");
    expect_error("invalid_day", "13688961", source, [&] { date++; });
    expect_error("invalid_day", "13688961", source, [&] { date--; });
    expect_error("invalid_date", shown_date(1, 1, 32767), source, [&] { (void)date.day_of_year(); });
    EXPECT_EQ((++ ++--date).julian_day(), 13688962);

    date = ka_date::min_date();
    EXPECT_EQ((date--).julian_day(), first_day);
    EXPECT_TRUE(date.year() == -4714 && date.month() == 12 && date.day() == 31);
    expect_error("invalid_day", "37", source, [&] { date++; });
    EXPECT_EQ(++date, ka_date(1, 1, -4713));
}

TEST(date, moves_by_whole_days_and_reads_today)
{
    const ka_date start(1, 1, 1);
    const std::pair<ka_time_period, int> rows[] = {
        {{0, 23, 59, 59, 999999}, 0}, {{0, -23, -59, 0}, 0}, {{0, 24, 0, 0}, 1}, {{0, -25, 0, 0}, -1}};
    for (const auto& [period, days] : rows) {
        ka_date moved = start;
        EXPECT_EQ((moved += period).julian_day(), 1721426 + days);
        EXPECT_EQ(moved - start, ka_time_period(days, 0, 0, 0));
        EXPECT_TRUE(same_order(moved, start, days, 0));
        EXPECT_EQ(moved -= period, start);
    }
    ka_date end = ka_date::max_date();
    const ka_time_period day(1, 0, 0, 0);
    expect_error("invalid_day", "13688961", source, [&] { end += day; });
    expect_error("invalid_day", "37", source, [&] { end -= end - ka_date::min_date() + day; });
    EXPECT_EQ(end, ka_date(12, 31, 32766));

    const auto clock = [] {
        const std::time_t seconds = std::time(nullptr);
        std::tm local = {};
        return probe(*localtime_r(&seconds, &local));
    };
    const ka_date before = clock();
    const ka_date today = ka_date::today();
    EXPECT_TRUE(before <= today && today <= clock());
}

TEST(date, names_and_indexes)
{
    const auto check = [](const std::string& name, u16 number, auto full, auto abbreviation, auto index) {
        const std::string abbreviated = name.substr(0, 3);
        EXPECT_EQ(full(number), name);
        EXPECT_EQ(abbreviation(number), abbreviated);
        std::string swapped = name;
        for (char& letter : swapped)
            letter = static_cast<char>(letter ^ 0x20);
        for (const std::string& known : {name, swapped, abbreviated, swapped.substr(0, 3)})
            EXPECT_EQ(index(known), number) << known;
        for (const std::string& unknown : {std::string(), " " + name, name + "s", abbreviated + "."})
            EXPECT_EQ(index(unknown), 0) << unknown;
    };
    u16 number = 0;
    for (const char* name : {"January", "February", "March", "April", "May", "June", "July", "August",
                             "September", "October", "November", "December"})
        check(name, ++number, ka_date::month_name, ka_date::month_abbreviation, ka_date::month_index);
    number = 0;
    for (const char* name : {"Sunday", "Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday"})
        check(name, ++number, ka_date::weekday_name, ka_date::weekday_abbreviation, ka_date::weekday_index);
    expect_error("invalid_month", "0", source, [] { ka_date::month_name(0); });
    expect_error("invalid_month", "13", source, [] { ka_date::month_abbreviation(13); });
    expect_error("invalid_weekday", "0", source, [] { ka_date::weekday_abbreviation(0); });
    expect_error("invalid_weekday", "8", source, [] { ka_date::weekday_name(8); });
}

TEST(date, text_and_era_names)
{
    const ka_date date(2, 29, 2024);
    const std::string format = ka_date::default_format();
    EXPECT_EQ(date.to_string(), "02/29/24");
    EXPECT_EQ(date.to_string("") + date.to_string("%H:%M"), "00:00");
    ka_date::default_format("%d.%m.");
    std::ostringstream stream;
    stream << std::setfill('*') << std::setw(8);
    date.print(stream);
    EXPECT_EQ(stream.str(), "**29.02.");
    ka_date::default_format(format);

    const std::string& ad = ka_date::ad_name();
    const std::string& bc = ka_date::bc_name();
    EXPECT_EQ(ad + bc, "A.D.B.C.");
    ka_date::ad_name("AD");
    ka_date::bc_name("BC");
    EXPECT_EQ(ad + bc, "ADBC");
    EXPECT_EQ(date.to_string("%P") + ka_date(1, 1, -5).to_string("%P"), "ADBC");
    ka_date::ad_name("A.D.");
    ka_date::bc_name("B.C.");
}
