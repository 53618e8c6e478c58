#include <climits>
#include <ctime>
#include <sstream>
#include <string>

#include <gtest/gtest.h>

#include <time/date.h>

#include "comparisons.h"
#include "expect_error.h"
#include "opened.h"
#include "printers.h"

namespace {

using u16 = unsigned short;

constexpr const char* source = "time/src/date";
constexpr int first_day = 38, last_day = 13688960;

static_assert(ka_date(ka_last, 1, 10, 2024) + ka_time_period(366, 0, 0, 0) == ka_date(10, 28, 2025));

}

TEST(date, refuses_what_the_calendar_lacks_and_keeps_the_date)
{
    std::tm record = {};
    record.tm_mon = 1, record.tm_mday = 29, record.tm_year = 100;
    opened_date date(record);
    const auto refused = [&](u16 month, u16 day, short year) {
        std::ostringstream shown;
        shown << "Month( " << month << " ), day( " << day << " ), year( " << year << " )";
        expect_error("invalid_date", shown.str(), source, [&] { date.date(month, day, year); });
        record.tm_mon = month - 1, record.tm_mday = day, record.tm_year = year - 1900;
        expect_error("invalid_date", shown.str(), source, [&] { date.date(record); });
    };
    refused(0, 1, 2000);
    refused(13, 1, 2000);
    refused(1, 0, 2000);
    refused(2, 29, 1900);
    refused(1, 1, 0);
    for (const long long number : {LLONG_MIN, 37ll, 13688961ll, 4294967296ll + 38})
        expect_error("invalid_day", std::to_string(number), source, [&] { (void)ka_date(number); });
    expect_error("invalid_day", "18446744073709551615", source, [] { (void)ka_date(ULLONG_MAX); });
    EXPECT_EQ(date, ka_date(2, 29, 2000));
    EXPECT_EQ(ka_date(2440588ul), ka_date());
}

TEST(date, refused_arguments_in_the_order_of_their_tests)
{
    expect_error("invalid_month", "0", source, [] { ka_date::days_in_month(0, 0); });
    expect_error("invalid_month", "13", source, [] { ka_date::calc_julian_day(13, 1, 0); });
    const char* const no_year = "Year zero never existed!";
    expect_error("invalid_year", no_year, source, [] { ka_date::days_in_month(1, 0); });
    expect_error("invalid_year", no_year, source, [] { ka_date::calc_julian_day(1, 1, 0); });
    expect_error("invalid_year", no_year, source, [] { ka_date::days_in_year(0); });
    ka_date::calc_calendar_date(first_day, nullptr, nullptr, nullptr);

    ka_date date;
    expect_error("invalid_month", "Invalid month: 13", source, [&] { date.date(ka_first, 8, 13, 0); });
    expect_error("invalid_year", "-4714", source, [&] { date.date(ka_first, 8, 1, -4714); });
    expect_error("invalid_weekday", "8", source, [&] { date.date(ka_last, 8, 12, 32766); });
    expect_error("invalid_week", "Invalid week for month!", source, [&] { date.date(ka_fifth, 2, 2, 2024); });
    EXPECT_EQ(date, ka_date());
    expect_error("invalid_weekday", "0", source, [&] { (void)date.next(0); });
    expect_error("invalid_weekday", "8", source, [&] { (void)date.previous(8); });
    expect_error("invalid_weekday", "8", source, [&] { (void)date.week_of_year(8); });

    // 52 weeks on lies a month of the same number.
    EXPECT_EQ(ka_date(static_cast<ka_which_one>(53), 1, 3, 2023), ka_date(3, 3, 2024));
    const char* const names[] = {"out of range", "ka_next_to_last", "ka_last",   "ka_none",  "ka_first",
                                 "ka_second",    "ka_third",        "ka_fourth", "ka_fifth", "out of range"};
    for (int which = -3; which <= 6; ++which)
        EXPECT_STREQ(ka_which_one_name(static_cast<ka_which_one>(which)), names[which + 3]);
}

TEST(date, moves_by_whole_days_and_leaves_the_range_by_single_steps_only)
{
    ka_date date = ka_date::max_date();
    EXPECT_EQ((date++).julian_day(), last_day);
    expect_error("invalid_day", "13688961", source, [&] { date++; });
    expect_error("invalid_date", "Month( 1 ), day( 1 ), year( 32767 )", source,
                 [&] { (void)date.day_of_year(); });
    EXPECT_EQ((++ ++--date).julian_day(), 13688962);

    date = ka_date::min_date();
    EXPECT_EQ((date--).julian_day(), first_day);
    EXPECT_EQ(date.year(), -4714);
    EXPECT_EQ(date.month(), 12);
    EXPECT_EQ(date.day(), 31);
    expect_error("invalid_day", "37", source, [&] { date--; });
    EXPECT_EQ(++date, ka_date(1, 1, -4713));

    for (const int seconds : {0, 86399, -86399, 86400, -90000}) {
        SCOPED_TRACE(seconds);
        const ka_date start(1, 1, 1);
        const int days = seconds / 86400;
        ka_date later = start;
        EXPECT_EQ((later += ka_time_period(seconds)).julian_day(), 1721426 + days);
        EXPECT_EQ(later - start, ka_time_period(days, 0, 0, 0));
        EXPECT_EQ(compared(later, start), compared(days, 0));
        EXPECT_EQ(later -= ka_time_period(seconds), start);
    }
    ka_date end = ka_date::max_date();
    expect_error("invalid_day", "13688961", source, [&] { end += ka_time_period(86400); });
    expect_error("invalid_day", "37", source,
                 [&] { end -= end - ka_date::min_date() + ka_time_period(86400); });
    EXPECT_EQ(end, ka_date(12, 31, 32766));

    const auto clock = [](std::time_t seconds) { return opened_date(*std::localtime(&seconds)); };
    const ka_date before = clock(std::time(nullptr)), today = ka_date::today();
    EXPECT_LE(before, today);
    EXPECT_LE(today, clock(std::time(nullptr)));
}

TEST(date, names_and_their_numbers)
{
    using name_of = const std::string& (*)(u16);
    const auto check = [](const std::string& name, u16 number, name_of full, name_of abbreviation,
                          auto index) {
        SCOPED_TRACE(name);
        std::string swapped = name;
        for (char& letter : swapped)
            letter = static_cast<char>(letter ^ 0x20);
        EXPECT_EQ(full(number), name);
        EXPECT_EQ(abbreviation(number), name.substr(0, 3));
        for (const std::string& known : {name, swapped, swapped.substr(0, 3)})
            EXPECT_EQ(index(known), number) << known;
        for (const std::string& unknown : {std::string(), " " + name, name + "."})
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

TEST(date, names_of_the_eras)
{
    const std::string &ad = ka_date::ad_name(), &bc = ka_date::bc_name();
    EXPECT_EQ(ad, "A.D.");
    EXPECT_EQ(bc, "B.C.");
    ka_date::ad_name("AD");
    ka_date::bc_name("BC");
    EXPECT_EQ(ad, "AD");
    EXPECT_EQ(bc, "BC");
    EXPECT_EQ(ka_date(1, 1, 5).to_string("%P"), "AD");
    EXPECT_EQ(ka_date(1, 1, -5).to_string("%P"), "BC");
    ka_date::ad_name("A.D.");
    ka_date::bc_name("B.C.");
}
