#include <climits>
#include <compare>
#include <functional>

#include <gtest/gtest.h>

#include <time/chrono.h>
#include <time/time_varnel.h>

#include "expect_error.h"

// Numbers of any integer type, each looked at before it is narrowed; and what
// does not compile beside the classes.

namespace {

constexpr long long wide = 1ll << 32;
enum summer { june = 6 };

static_assert(ka_date(june, 4l, 2024u) == ka_date{char{6}, 4ull, short{2024}});
static_assert(ka_time(18u, 0l, 0) == ka_time{18, 0ull, short{0}, 0l});
static_assert(ka_calendar_date(ka_time_period(0, 0l), 3l, ka_last, 1u).date(2024l) == ka_date(3, 31, 2024));
// What takes 16 bits is constant as well.
constexpr unsigned short one = 1;
static_assert(ka_date(ka_first, one, one, 2024).next(one).previous(one).week_of_year() == 1);
static_assert(ka_calendar_date(ka_time_period(), one, one).date(short{2024}).week_of_year(one) == 0);
static_assert(!ka_date::is_month(65537) && !ka_date::is_weekday(65537u) && !ka_date::is_year(67560) &&
              !ka_date::is_leap_year(67560l) && !ka_date::is_day_in_month(65538, 29, 2024) &&
              !ka_date::is_julian_day(wide + 38) && !ka_time::is_hour(65536) &&
              !ka_time::is_microsecond(wide));

template <typename Left, typename Right>
concept equal = requires(const Left& left, const Right& right)
{
    left == right;
};
template <typename Left, typename Right>
concept product = requires(const Left& left, const Right& right)
{
    left* right;
};
template <typename Left, typename Right>
concept quotient = requires(const Left& left, const Right& right)
{
    left / right;
};
static_assert(!equal<ka_time_period, int> && !equal<int, ka_time_period>);
static_assert(!equal<ka_stopwatch, int> && !equal<ka_stopwatch, ka_time> &&
              equal<ka_stopwatch, ka_time_period>);
static_assert(equal<ka_time, ka_time_period> && equal<ka_time_period, ka_time> && equal<ka_time, int>);
static_assert(!product<int, ka_stopwatch> && !product<int, ka_time> && product<int, ka_time_period>);
static_assert(!product<ka_time_period, double> && !product<double, ka_time_period>);
static_assert(!quotient<ka_time_period, double> && quotient<ka_time_period, long long>);

#ifdef __SIZEOF_INT128__
__extension__ typedef __int128 too_wide;
template <typename... Values>
constexpr bool refuse_too_wide = ((!std::is_constructible_v<Values, too_wide> &&
                                   !std::is_assignable_v<Values&, too_wide>)&&...);
static_assert(refuse_too_wide<ka_date, ka_time, ka_wint, ka_time_and_date>);
static_assert(!std::is_constructible_v<ka_time_period, too_wide> &&
              !std::is_constructible_v<ka_date, int, int, too_wide> &&
              !std::is_constructible_v<ka_time, too_wide, int, int> && !product<ka_time_period, too_wide>);
#endif

/// A class of a host that leaves its order to the compiler.
struct entry {
    ka_date date;
    ka_time time;
    ka_time_period length;
    ka_wint number;

    std::strong_ordering operator<=>(const entry&) const = default;
};
constexpr entry early = {ka_date(38), ka_time(5), ka_time_period(-1, -2), ka_wint(-7)};
static_assert(entry(early) == early && early < entry{ka_date(38), ka_time(5), ka_time_period(-1, -1), -9} &&
              early > entry{ka_date(38), ka_time(5), ka_time_period(-1, -2), -8} &&
              early < entry{ka_date(39), ka_time(), ka_time_period(-9), -9});

}

TEST(integers, that_a_field_cannot_hold_are_refused_as_given)
{
    ka_date date;
    ka_time time;
    ka_time_period period;
    ka_calendar_date point(period, 1, 1);
    ka_time_and_date moment;
    std::tm new_year = {};
    new_year.tm_mday = 1;
    std::tm no_day = {};
    const struct {
        const char *symbol, *shown, *source;
        std::function<void()> operation;
    } rows[] = {
        {"invalid_date", "Month( 7 ), day( 65540 ), year( 67560 )", "date",
         [&] { date = ka_date(7, 65540, 67560); }},
        {"invalid_date", "Month( 4294967303 ), day( 4 ), year( -9223372036854775808 )", "date",
         [&] { date.date(wide + 7, 4, LLONG_MIN); }},
        {"invalid_day", "18446744073709551615", "date", [&] { date = ULLONG_MAX; }},
        {"invalid_month", "Invalid month: 65539", "date", [&] { date.date(ka_last, 1, 65539, 2024); }},
        {"invalid_year", "67560", "date", [&] { date.date(ka_last, 1, 3, 67560); }},
        {"invalid_weekday", "65537", "date", [&] { date = ka_date(ka_last, 65537, 3, 2024); }},
        {"invalid_weekday", "-65535", "date", [&] { (void)date.next(-65535); }},
        {"invalid_weekday", "4294967297", "date", [&] { (void)date.previous(wide + 1); }},
        {"invalid_weekday", "65537", "date", [&] { (void)date.week_of_year(65537); }},
        {"invalid_year", "67560", "date", [&] { (void)ka_date::days_in_year(67560); }},
        {"invalid_month", "65538", "date", [&] { (void)ka_date::days_in_month(65538, 2024); }},
        {"invalid_year", "67560", "date", [&] { (void)ka_date::calc_julian_day(7, -1, 67560); }},
        {"invalid_day", "-1", "date", [&] { (void)ka_date::calc_julian_day(7, -1, 2024); }},
        {"invalid_month", "65537", "date", [&] { (void)ka_date::month_name(65537); }},
        {"invalid_weekday", "65537", "date", [&] { (void)ka_date::weekday_name(65537); }},
        {"invalid_time", "65536:0:0:0", "time", [&] { time = ka_time(65536, 0, 0); }},
        {"invalid_time", "0:0:0:4294967296", "time", [&] { time = ka_time(std::tm{}, wide); }},
        {"invalid_time", "0:0:0:4294967297", "time", [&] { moment = ka_time_and_date(new_year, wide + 1); }},
        {"invalid_time", "0:0:0:-1", "time", [&] { moment.time_and_date(new_year, -1); }},
        {"invalid_date", "Month( 1 ), day( 0 ), year( 1900 )", "date",
         [&] { moment.time_and_date(no_day, wide); }},
        {"invalid_time_period", "Seconds: 0 Microseconds: 4294967297", "tperiod",
         [&] { period = ka_time_period(0, wide + 1); }},
        {"invalid_time_period", "Seconds: 9223372036854775808 Microseconds: 0", "tperiod",
         [&] { period = ka_time_period(1ull << 63); }},
        {"invalid_time_period", "Days: 0 Hours: 0 Minutes: 0 Seconds: 4294967296 Microseconds: 0", "tperiod",
         [&] { period.time_period(0, 0, 0, wide); }},
        {"invalid_month", "65537", "calendar", [&] { point.month(65537); }},
        {"invalid_day", "65537", "calendar", [&] { point.day(65537); }},
        {"invalid_weekday", "65537", "calendar", [&] { point.weekday(ka_first, 65537); }},
        {"invalid_day", "65537", "calendar", [&] { point = ka_calendar_date(period, 1, 65537); }},
        {"invalid_month", "-1", "calendar", [&] { point = ka_calendar_date(period, -1, ka_first, 1); }},
        {"invalid_year", "67560", "calendar", [&] { (void)point.date(67560); }},
        {"invalid_weekday", "257", "chrono", [&] { (void)ka_to_chrono_weekday(257); }},
    };
    for (const auto& row : rows)
        expect_error(row.symbol, row.shown, std::string("time/src/") + row.source, row.operation);
    EXPECT_EQ(date, ka_date());
    EXPECT_EQ(time, ka_time());
    EXPECT_EQ(period, ka_time_period());
    EXPECT_EQ(point.date(2024), ka_date(1, 1, 2024));
    EXPECT_EQ(moment, ka_time_and_date(0));
}

TEST(integers, factors_and_divisors_beyond_32_bits)
{
    const ka_time_period period(6, 500001);
    EXPECT_EQ(period * 3000000001ll, ka_time_period(19500003006, 500001));
    EXPECT_EQ(-3000000001ll * period, ka_time_period(-19500003006, -500001));
    EXPECT_EQ(ka_time_period(19500003006, 500001) / 3000000001ll, ka_time_period(6, 500000));
    EXPECT_EQ(ka_time_period(LLONG_MIN, -5) / (1ull << 63), ka_time_period(-1));
    EXPECT_EQ(ka_time_period(LLONG_MIN, -5) / ULLONG_MAX, ka_time_period(0, -500000));
    EXPECT_EQ(ka_time_period(LLONG_MAX, 5) % -(1ll << 62), ka_time_period((1ll << 62) - 1, 5));
    ka_time_period changed(7, 7);
    EXPECT_EQ((changed *= 2l) /= 7l, ka_time_period(2, 2));
    EXPECT_EQ(changed %= 2u, ka_time_period(0, 0));
}

TEST(integers, a_period_that_has_wrapped_throws_where_the_fields_would_differ_in_sign)
{
    const ka_time_period wrapped = ka_time_period((1ll << 60) + 7, 600000) * 11;
    ASSERT_EQ(wrapped.whole_seconds(), -5764607523034234796);
    ASSERT_EQ(wrapped.microseconds(), 600000);
    const char* const symbol = "invalid_time_period";
    const char* const source = "time/src/tperiod";
    expect_error(symbol, "Seconds: -2882303761517117398 Microseconds: 300000", source,
                 [&] { (void)(wrapped / 2); });
    expect_error(symbol, "Seconds: 5764607523034234796 Microseconds: -600000", source,
                 [&] { (void)(wrapped / -1); });
    expect_error(symbol, "Seconds: -5 Microseconds: 2", source, [&] { (void)(wrapped % 7); });
    EXPECT_EQ(wrapped / 1000000007, ka_time_period(-5764607482, -681982));
}
