#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include <time/local.h>
#include <time/read.h>
#include <time/time_varnel.h>
#include <time/world.h>

#include "expect_error.h"

namespace {

using namespace std::string_literals;

const ka_time_zone& eastern = ka_time_zone::eastern();

/// What a reading gives: the value as the last format prints it, or the message.
template <typename Value>
std::string shown(const ka_read_result<Value>& read, const char* format)
{
    return read.has_value() ? read->to_string(format) : read.failure().message();
}

struct reading {
    std::string text, format, shown;
};

TEST(read, dates)
{
    const reading rows[] = {
        {"4 July 2024", "%d %B %Y", "2024-07-04"},
        {"04jul2024", "%d%b%Y", "2024-07-04"},
        {"THURSDAY 4. december -44", "%e. %B %Y",
         "invalid_day: THURSDAY at 0, %e, in THURSDAY 4. december -44"},
        {"4.12.-44", "%d.%m.%Y", "-44-12-04"},
        {"20240704", "%Y%m%d", "2024-07-04"},
        {"2024186", "%Y%j", "2024-07-04"},
        {"Thu 26 2024", "%a %U %Y", "2024-07-04"},
        {"2024 27 4", "%Y %W %w", "2024-07-04"},
        {"2024 00 Mon", "%Y %W %a", "invalid_week: 00 at 5, %W, in 2024 00 Mon"},
        {"2024 00 Mon", "%Y %U %a", "2024-01-01"},
        {"07/04/68 07/04/69", "%m/%d/%y %D", "invalid_year: 69 at 15, %y, in 07/04/68 07/04/69"},
        {"07/04/68", "%D", "2068-07-04"},
        {"07/04/69", "%D", "1969-07-04"},
        {"19 24 3 5", "%C %y %m %d", "1924-03-05"},
        {"-1 -45 3 5", "%C %y %m %d", "-145-03-05"},
        {"44 b.c. 1.2.", "%s %P %d.%m.", "-44-02-01"},
        {"44 B.C. 1.2.", "%f %d.%m.", "-44-02-01"},
        {"2024 1.2.", "%f %d.%m.", "2024-02-01"},
        {"2024 A.D. 1.2.", "%f %P %d.%m.", "2024-02-01"},
        {"44 1.2.", "%f %d.%m.", "invalid_year: 44 at 0, %f, in 44 1.2."},
        {"32766-12-31", "%Y-%m-%d", "32766-12-31"},
        {"2024-07-04 23:59:60", "%Y-%m-%d %T", "2024-07-04"},
        {"July\t\n  4\f2024", "%B %d %Y", "2024-07-04"},
        {"|    4|07   |002024|", "|%5d|%-5m|%06Y|", "2024-07-04"},
        {"a\0 4 7 2024"s, "a\0 %d %m %Y"s, "2024-07-04"},
    };
    for (const reading& row : rows)
        EXPECT_EQ(shown(ka_read_date(row.text, row.format), "%Y-%m-%d"), row.shown)
            << row.text << " by " << row.format;
}

TEST(read, times)
{
    const reading rows[] = {
        {"18:28:38.000123", "%H:%M:%S.%q", "18:28:38.000123"},
        {"18:28:38.5", "%T.%q", "18:28:38.500000"},
        {"182838000123", "%H%M%S%q", "18:28:38.000123"},
        {"6pm", "%I%p", "18:00:00.000000"},
        {"12 AM", "%l %p", "00:00:00.000000"},
        {"18 6 PM", "%H %I %p", "18:00:00.000000"},
        {"18 7 PM", "%H %I %p", "invalid_time: 7 at 3, %I, in 18 7 PM"},
        {"18 06 AM", "%H %I %p", "invalid_time: AM at 6, %p, in 18 06 AM"},
        {"23:59:60.25", "%T.%q", "23:59:59.250000"},
        {"24:00", "%H:%M", "invalid_time: 24 at 0, %H, in 24:00"},
        {"18:60", "%H:%M", "invalid_time: 60 at 3, %M, in 18:60"},
        {"13 PM", "%I %p", "invalid_time: 13 at 0, %I, in 13 PM"},
        {"18.28", "%H:%M", "failure: . at 2, \":\", in 18.28"},
        {"18:28 ", "%H:%M", "failure:   at 5, end of text, in 18:28 "},
        {"18:", "%H:%M", "invalid_time: end of text at 3, %M, in 18:"},
        {"6 noon", "%I %p", "invalid_time: noon at 2, %p, in 6 noon"},
    };
    for (const reading& row : rows)
        EXPECT_EQ(shown(ka_read_time(row.text, row.format), "%H:%M:%S.%q"), row.shown)
            << row.text << " by " << row.format;
    EXPECT_TRUE(ka_read_time("23:59:60", "%T").is_leap_second());
    EXPECT_FALSE(ka_read_time("23:59:59", "%T").is_leap_second());
}

TEST(read, refusals_tell_what_stood_where)
{
    const reading rows[] = {
        {"2024-02-30", "%Y-%m-%d", "invalid_day: 30 at 8, %d, in 2024-02-30"},
        {"2023-02-29", "%Y-%m-%d", "invalid_day: 29 at 8, %d, in 2023-02-29"},
        {"2023 366", "%Y %j", "invalid_day: 366 at 5, %j, in 2023 366"},
        {"2024-13-30", "%Y-%m-%d", "invalid_month: 13 at 5, %m, in 2024-13-30"},
        {"2024-1x-30", "%Y-%m-%d", "failure: x at 6, \"-\", in 2024-1x-30"},
        {"2024-x-30", "%Y-%m-%d", "invalid_month: x at 5, %m, in 2024-x-30"},
        {"0-01-30", "%Y-%m-%d", "invalid_year: 0 at 0, %Y, in 0-01-30"},
        {"-4714-01-30", "%Y-%m-%d", "invalid_year: -4714 at 0, %Y, in -4714-01-30"},
        {"123456-01-30", "%Y-%m-%d", "failure: 6 at 5, \"-\", in 123456-01-30"},
        {"4 Jly 2024", "%d %b %Y", "invalid_month: Jly at 2, %b, in 4 Jly 2024"},
        {"Wed 4 7 2024", "%a %d %m %Y", "invalid_weekday: Wed at 0, %a, in Wed 4 7 2024"},
        {"4 7 2024 187", "%d %m %Y %j", "invalid_day: 187 at 9, %j, in 4 7 2024 187"},
        {"4 7 2024 5", "%d %m %Y %e", "invalid_day: 5 at 9, %e, in 4 7 2024 5"},
        {"4 7 2024 5", "%d %m %Y %d", "invalid_day: 5 at 9, %d, in 4 7 2024 5"},
        {"4 7 2024 25", "%d %m %Y %U", "invalid_week: 25 at 9, %U, in 4 7 2024 25"},
        {"", "%d %m %Y", "invalid_day: end of text at 0, %d, in "},
        {"4 7 2024", "%d %m", "failure: end of text at 5, a year, in %d %m"},
        {"4 7 2024", "%d %Y", "failure: end of text at 5, a month, in %d %Y"},
        {"4 7 2024", "%B %Y", "failure: end of text at 5, a day, in %B %Y"},
        {"4 7 2024", "%d %m %s", "failure: end of text at 8, a year, in %d %m %s"},
        {"4 7 2024", "%d %Q %Y", "failure: %Q at 3, a code to read by, in %d %Q %Y"},
        {"4 7 20242024", "%d %m %Y%s", "failure: %s at 8, a code to read by, in %d %m %Y%s"},
        {"4 7 2024", "%d %", "failure: % at 3, a code to read by, in %d %"},
        {"4 7 2024", "%Y %012D", "failure: %0 at 3, a code to read by, in %Y %012D"},
    };
    for (const reading& row : rows)
        EXPECT_EQ(shown(ka_read_date(row.text, row.format), "%Y-%m-%d"), row.shown)
            << row.text << " by " << row.format;
    const reading moments[] = {
        {"2024-07-04", "%Y-%m-%d", "failure: end of text at 8, an hour, in %Y-%m-%d"},
        {"18:28", "%H:%M", "failure: end of text at 5, a year, in %H:%M"},
        {"2024-07-04 6", "%Y-%m-%d %I", "failure: end of text at 11, the half of the day, in %Y-%m-%d %I"},
        {"2024-07-04 6", "%Y-%m-%d %H %S", "failure: end of text at 14, a minute, in %Y-%m-%d %H %S"},
        {"2024-07-04 6 PST8", "%Y-%m-%d %H %Z", "failure: PST8 at 13, %Z, in 2024-07-04 6 PST8"},
    };
    for (const reading& row : moments)
        EXPECT_EQ(shown(ka_read_time_and_date(row.text, row.format, eastern), "%c"), row.shown) << row.format;
    expect_error("invalid_day", "30 at 8, %d, in 2024-02-30", "time/src/read_result",
                 [] { ka_read_date("2024-02-30", "%Y-%m-%d").value(); });
}

/// In `eastern` 02:30 on 10 March 2024 is skipped, and 02:30 on 3 November 2024 comes twice.
TEST(read, local_times_that_the_clocks_skip_or_repeat)
{
    using choice = ka_local_choice;
    const struct {
        const char* text;
        choice which;
        const char* shown;
    } rows[] = {
        {"3 10 2024 02:30", choice::compatible, "07:30 EDT4"},
        {"3 10 2024 02:30", choice::earlier, "06:30 EST5"},
        {"3 10 2024 02:30", choice::later, "07:30 EDT4"},
        {"3 10 2024 02:30", choice::refuse, "invalid_time: 02 at 10, %H, in 3 10 2024 02:30"},
        {"11 3 2024 02:30", choice::compatible, "06:30 EDT4"},
        {"11 3 2024 02:30", choice::earlier, "06:30 EDT4"},
        {"11 3 2024 02:30", choice::later, "07:30 EST5"},
        {"11 3 2024 02:30", choice::refuse, "invalid_time: 02 at 10, %H, in 11 3 2024 02:30"},
        {"11 3 2024 01:30", choice::refuse, "05:30 EDT4"},
    };
    const auto read_as = [](const std::string& text, const std::string& format, choice which) {
        const auto read = ka_read_time_and_date(text, format, eastern, which);
        return read ? read->utc_time().to_string("%H:%M ") + read->to_string("%Z") : read.failure().message();
    };
    for (const auto& row : rows)
        EXPECT_EQ(read_as(row.text, "%m %d %Y %H:%M", row.which), row.shown) << row.text;

    const std::string twice = "11 3 2024 02:30 ", skipped = "3 10 2024 02:30 ", once = "7 4 2024 12:00 ";
    const std::string format = "%m %d %Y %H:%M %Z";
    for (const choice any : {choice::compatible, choice::later, choice::refuse}) {
        EXPECT_EQ(read_as(twice + "EDT4", format, any), "06:30 EDT4");
        EXPECT_EQ(read_as(twice + "EST5", format, any), "07:30 EST5");
        EXPECT_EQ(read_as(once + "EDT4", format, any), "16:00 EDT4");
        EXPECT_EQ(read_as(once + "EST5", format, any), "failure: EST5 at 15, %Z, in 7 4 2024 12:00 EST5");
    }
    EXPECT_EQ(read_as(skipped + "EDT4", format, choice::compatible), "07:30 EDT4");
}

/// Zones of the world have had other names than their last two, and clocks that were moved without daylight
/// time.
TEST(read, names_that_a_zone_has_had)
{
    const struct {
        const char* zone;
        const char* text;
        const char* shown;
    } rows[] = {
        {"America/New_York", "1943-07-04 12:00 EWT4", "16:00 EWT4"},
        {"America/New_York", "1943-07-04 12:00 EDT4", "failure: EDT4 at 17, %Z, in 1943-07-04 12:00 EDT4"},
        {"Europe/Dublin", "1916-07-04 12:00 ist0", "11:25 IST0"},
        {"Europe/Dublin", "2024-10-27 01:30 IST-1", "00:30 IST-1"},
        {"Europe/Dublin", "2024-10-27 01:30 GMT0", "01:30 GMT0"},
        {"Europe/Dublin", "2024-01-01 12:00 IST-1", "failure: IST-1 at 17, %Z, in 2024-01-01 12:00 IST-1"},
        {"Africa/Sao_Tome", "2019-01-01 01:30 WAT-1", "00:30 WAT-1"},
        {"Africa/Sao_Tome", "2019-01-01 01:30 GMT0", "01:30 GMT0"},
    };
    for (const auto& row : rows) {
        const auto read = ka_read_time_and_date(row.text, "%Y-%m-%d %H:%M %Z", ka_zone(row.zone));
        EXPECT_EQ(read ? read->utc_time().to_string("%H:%M ") + read->to_string("%Z")
                       : read.failure().message(),
                  row.shown);
    }
}

TEST(read, moments_around_all_changes_by_their_names)
{
    const ka_pattern pattern("%Y-%m-%d %H:%M:%S %Z");
    for (const char* const name : {"America/New_York", "America/Argentina/Buenos_Aires", "Europe/Dublin",
                                   "Africa/Casablanca", "Africa/Sao_Tome", "Antarctica/Troll"}) {
        const ka_time_zone& zone = ka_zone(name);
        auto change = ka_next_change(zone, ka_time_and_date(-2500000000)); // 1890
        for (int count = 0; change && count < 200; ++count) {
            for (const int seconds : {-1800, -1, 0, 1800}) {
                const ka_time_and_date moment = change->moment + ka_time_period(seconds);
                const auto read = ka_read_time_and_date(pattern.to_string(moment), pattern, zone);
                ASSERT_TRUE(read.has_value()) << read.failure().message();
                EXPECT_EQ(*read, moment) << pattern.to_string(moment);
            }
            change = ka_next_change(zone, change->moment);
        }
    }
}

TEST(read, tells_how_far_it_went)
{
    const auto read = ka_read_date("2024-07-04T18:28", "%Y-%m-%d", ka_extent::start);
    EXPECT_EQ(read.value(), ka_date(7, 4, 2024));
    EXPECT_EQ(read.end(), 10u);
    EXPECT_EQ(ka_read_date("2024-07-04", "%Y-%m-%d").end(), 10u);
}

TEST(read, in_a_language_and_in_english)
{
    const ka_language french("fr_FR.UTF-8"), japanese("ja_JP.UTF-8");
    const struct {
        const ka_language& language;
        std::string text, format, shown;
    } rows[] = {
        {french, "jeudi 4 JUILLET 2024", "%A %d %B %Y", "2024-07-04"},
        {french, "Thu 4 july 2024", "%A %d %B %Y", "2024-07-04"},
        {french, "jeu. 4 juil. 2024", "%a %d %b %Y", "2024-07-04"},
        {french, "4 juillette 2024", "%d %b %Y", "failure: t at 9, \" \", in 4 juillette 2024"},
        {japanese, ka_pattern("%x", japanese).to_string(ka_date(7, 4, 2024)), "%x", "2024-07-04"},
        {japanese, "4 7月 2024", "%d %b %Y", "2024-07-04"},
        {japanese, "4 12月 2024", "%d %b %Y", "2024-12-04"},
        {ka_language::english(), "mai 4 2024", "%b %d %Y", "invalid_month: mai at 0, %b, in mai 4 2024"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(shown(ka_read_date(row.text, ka_pattern(row.format, row.language)), "%Y-%m-%d"), row.shown)
            << row.text;
}

}
