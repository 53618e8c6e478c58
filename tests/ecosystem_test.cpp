#include <climits>
#include <iomanip>
#include <limits>
#include <sstream>
#include <unordered_set>

#include <gtest/gtest.h>

#include <time/chrono.h>
#include <time/format.h>
#include <time/hash.h>
#include <time/io.h>

#include "expect_error.h"
#include "printers.h"

using namespace std::chrono;

namespace {

constexpr const char* source = "time/src/chrono";
const ka_date first_date(38);
const ka_date last_date(13688960);

struct grouped_digits : std::numpunct<char> {
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\1"; }
};

/// The value, in a stream with the manipulators, goes in as its text would; and
/// the stream is as it is after the text.
template <typename Value>
void expect_inserted(const Value& value, const std::string& text)
{
    for (const auto adjust : {std::ios::left, std::ios::right, std::ios::internal}) {
        std::ostringstream mine;
        std::ostringstream plain;
        for (std::ostringstream* stream : {&mine, &plain}) {
            stream->imbue(std::locale(std::locale::classic(), new grouped_digits));
            *stream << std::setfill('*') << std::setw(40) << std::showpos << std::hex;
            stream->setf(adjust, std::ios::adjustfield);
        }
        mine << value << '|' << value;
        plain << text << '|' << text;
        EXPECT_EQ(mine.str(), plain.str());
    }
}

template <typename Value>
std::size_t hash_of(const Value& value)
{
    return std::hash<Value>()(value);
}

}

static_assert(std::ranges::view<ka_days> && std::ranges::random_access_range<const ka_days> &&
              std::ranges::sized_range<ka_days> && std::ranges::borrowed_range<ka_days>);
static_assert(ka_to_date(2024y / February / last) == ka_date(2, 29, 2024));
static_assert(ka_to_microseconds(ka_time_period(0, 1, 30, 0, 7)).count() == 5400000007);

TEST(insertion, is_that_of_the_text)
{
    const ka_date date(7, 4, 2024);
    const ka_time time(18, 28, 38, 123);
    expect_inserted(date, date.to_string());
    expect_inserted(time, "18:28:38:000123");
    expect_inserted(ka_time_and_date(time, date), date.to_string() + " 18:28:38:000123");
    expect_inserted(ka_time_period(-1234567, -5), "-1234567.000005 seconds");
    expect_inserted(ka_wint(1234567), "1234567");
    expect_inserted(ka_wint(-1234567), "-1234567");
    expect_inserted(ka_time_zone::pacific(), "ka_time_zone( PST8, PDT7 )");
    const ka_calendar_date point(ka_time_period(), 1, 1);
    expect_inserted(ka_simple_time_zone_rule(point, point, 1, 0), "ka_time_zone_rule()");
    expect_inserted(ka_stopwatch(), "0 seconds, stopped");
}

TEST(chrono_header, dates_of_all_the_range)
{
    // The first step is such that the last one meets the end.
    for (int day = first_date.julian_day(); day <= last_date.julian_day(); day += day == 38 ? 88 : 97) {
        const ka_date date(day);
        const sys_days expected{days(day - 2440588)};
        const year_month_day fields(expected);
        ASSERT_EQ(ka_to_sys_days(date), expected);
        ASSERT_EQ(ka_to_year_month_day(date), fields);
        ASSERT_EQ(ka_to_date(expected), date);
        ASSERT_EQ(ka_to_date(fields), date);
        ASSERT_EQ(ka_to_chrono_weekday(date.weekday()), weekday(expected));
        ASSERT_EQ(ka_to_weekday(weekday(expected)), date.weekday());
    }
    EXPECT_EQ(ka_to_date(year(-4712) / 1 / 1), first_date);
    EXPECT_EQ(ka_to_date(year(0) / December / 31) + ka_time_period(1, 0, 0, 0), ka_date(1, 1, 1));
}

TEST(chrono_header, refuses_what_the_other_side_lacks)
{
    expect_error("invalid_day", "37", "time/src/date",
                 [] { ka_to_date(ka_to_sys_days(first_date) - days(1)); });
    EXPECT_THROW(ka_to_date(sys_days(days(std::numeric_limits<days::rep>::max()))), ka_time_varnel_error);
    expect_error("invalid_date", "Month( 2 ), day( 30 ), year( 2024 )", "time/src/date",
                 [] { ka_to_date(2024y / 2 / 30); });
    expect_error("invalid_date", "Month( 12 ), day( 31 ), year( -4714 )", "time/src/date",
                 [] { ka_to_date(year(-4713) / 12 / 31); });
    for (const int beyond : {32767, -32767})
        EXPECT_THROW(ka_to_date(year(beyond) / 1 / 1), ka_time_varnel_error);
    expect_error("invalid_weekday", "0", source, [] { ka_to_chrono_weekday(0); });
    expect_error("invalid_weekday", "8", source, [] { ka_to_weekday(weekday(8)); });
    expect_error("invalid_time", "86400 seconds", source, [] { ka_to_time(hh_mm_ss(24h)); });
    expect_error("invalid_time", "18446744073710 seconds", source,
                 [] { ka_to_time(hh_mm_ss(18446744073710s)); });
    expect_error("invalid_time", "-0.000001 seconds", source, [] { ka_to_time(hh_mm_ss(-1us)); });
    for (const int sign : {1, -1})
        expect_error("invalid_time_period",
                     (sign < 0 ? "-" : "") + std::string("9223372036854.775809 seconds"), source,
                     [&] { ka_to_microseconds(sign * ka_time_period(9223372036854, 775809)); });
    expect_error("invalid_time_period", "9223372036854775807 seconds", source,
                 [] { ka_to_microseconds(ka_time_period(LLONG_MAX)); });
}

TEST(chrono_header, durations_times_and_moments)
{
    for (const long long count : {0ll, 1ll, -1ll, 86399999999ll, -86400000001ll, LLONG_MAX, LLONG_MIN}) {
        const microseconds duration(count);
        ASSERT_EQ(ka_to_microseconds(ka_to_time_period(duration)), duration);
        const ka_time_and_date moment = ka_to_time_and_date(sys_time<microseconds>(duration));
        EXPECT_EQ(moment, ka_time_and_date() + ka_to_time_period(duration));
        EXPECT_EQ(ka_to_sys_time(moment).time_since_epoch(), duration);
    }
    EXPECT_EQ(ka_to_time_period(-1500ms), ka_time_period(-1, -500000));
    const auto time = ka_to_hh_mm_ss(ka_time(23, 59, 58, 7));
    EXPECT_EQ(time.hours(), 23h);
    EXPECT_EQ(time.minutes(), 59min);
    EXPECT_EQ(time.seconds(), 58s);
    EXPECT_EQ(ka_to_time(time), ka_time(23, 59, 58, 7));
    EXPECT_EQ(ka_to_time(hh_mm_ss(0s)), ka_time(0, 0, 0));
    const auto july_4 = ka_to_time_and_date(sys_days(2024y / 7 / 4) + 16h, ka_time_zone::eastern());
    EXPECT_EQ(july_4.time(), ka_time(12, 0, 0));
}

TEST(days, are_both_ends_and_all_between)
{
    const ka_days end_of_range(ka_date(12, 30, 32766), last_date);
    EXPECT_EQ(std::vector(end_of_range.begin(), end_of_range.end()),
              (std::vector{ka_date(13688959), last_date}));
    const ka_days year(ka_date(1, 1, 2024), ka_date(12, 31, 2024));
    EXPECT_EQ(year.size(), 366u);
    EXPECT_EQ(*std::ranges::lower_bound(year, ka_date(2, 29, 2024)), ka_date(2, 29, 2024));
    EXPECT_EQ(std::ranges::count(year, 1, &ka_date::weekday), 52);
    EXPECT_EQ(year.begin()[60], *(year.end() - 306));
    ka_day_iterator at = year.begin();
    EXPECT_EQ(*at++, year[0]);
    EXPECT_EQ(*at--, year[1]);
    EXPECT_EQ(*(2 + at), year[2]);
    EXPECT_EQ(at, year.begin());
    ka_day_iterator past = year.end();
    EXPECT_EQ(*--past, ka_date(12, 31, 2024));
    EXPECT_EQ(past - at, 365);
    EXPECT_GT(past, at);
    EXPECT_EQ(ka_to_date(2024y / February / std::chrono::last), ka_date(2, 29, 2024));
    EXPECT_TRUE(ka_days(last_date, first_date).empty());
}

TEST(hash, follows_equality)
{
    const ka_time noon(12, 0, 0);
    ka_time_and_date moment(noon, ka_date(7, 4, 2024), ka_time_zone::utc());
    std::unordered_set<ka_time_and_date> moments = {moment};
    moment.time_zone(ka_time_zone::pacific());
    EXPECT_TRUE(moments.contains(moment));
    EXPECT_NE(hash_of(moment), hash_of(moment + ka_time_period(0, 1)));
    EXPECT_EQ(hash_of(noon), hash_of(ka_time(11, 59, 59) + ka_time_period(1)));
    EXPECT_NE(hash_of(ka_wint(5)), hash_of(ka_wint(-5)));

    // Seconds on both sides of a day's border, where days and seconds are read apart.
    std::unordered_set<std::size_t> at_borders;
    for (const int second : {-86401, -86400, -86399, -1, 0, 1, 86399, 86400, 86401})
        at_borders.insert(hash_of(ka_time_period(second)));
    EXPECT_EQ(at_borders.size(), 9u);
    std::unordered_set<std::size_t> hashes;
    std::unordered_set<std::size_t> low_bits;
    for (int n = -5000; n < 5000; ++n) {
        const std::size_t of_days = hash_of(ka_time_period(n * 1000, 0, 0, 0));
        hashes.insert({of_days, hash_of(ka_time_period(n)), hash_of(ka_time_period(0, n))});
        low_bits.insert(of_days % 16384);
    }
    EXPECT_EQ(hashes.size(), 29998u);
    EXPECT_GT(low_bits.size(), 5000u);
    EXPECT_EQ((std::unordered_set<ka_date>{first_date, last_date, first_date}.size()), 2u);
}

TEST(formatters, speak_the_language_of_the_library)
{
    const ka_date date(7, 4, 2024);
    const ka_time_and_date moment(ka_time(18, 0, 0), date, ka_time_zone::eastern());
    EXPECT_EQ(fmt::format("{:%A, %d %B %f}, {}, {:}", date, date, date),
              "Thursday, 04 July 2024, " + date.to_string() + ", " + date.to_string());
    EXPECT_EQ(fmt::format("{0:%-6H|%06H|%%} {0:on %Z} {0}", moment),
              "18    |000018|% on EDT4 " + moment.to_string());
    EXPECT_EQ(fmt::format("{:%5k%Y}", ka_time()), "    00");
    const std::string with_nul("{:%Y\0%m}", 8);
    EXPECT_EQ(fmt::format(fmt::runtime(with_nul), moment), std::string("2024\00007", 7));
    EXPECT_EQ(fmt::format("{:.>12}|{:{}}|{}", ka_time_period(90), ka_wint(-7), 4, ka_wint(8)),
              "..90 seconds|-7  |8");
    for (const char* wrong : {"{:%Q}", "{:%", "{:%Y %}", "{:%-05}", "{:{%Y}", "{:%Y"})
        EXPECT_THROW((void)fmt::format(fmt::runtime(wrong), date), fmt::format_error) << wrong;
    for (const char code : std::string_view("aAbBcCdDefHIjklmMnpPqrsStTUwWxXyYZ%")) {
        const std::string pattern = std::string("{:%") + code + "}";
        EXPECT_EQ(fmt::format(fmt::runtime(pattern), date), date.to_string(std::string("%") + code));
    }
    for (const char code : std::string_view("aAbBjUwW"))
        EXPECT_THROW((void)fmt::format(fmt::runtime(std::string("{:%") + code + "}"), ka_time()),
                     fmt::format_error);
}
