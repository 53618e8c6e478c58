#include <sys/time.h>

#include <climits>
#include <iomanip>
#include <random>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include <time/tperiod.h>

#include "expect_error.h"

namespace {

__extension__ typedef __int128 int128;

constexpr const char* source = "time/src/tperiod";
constexpr int million = 1000000;

struct fields {
    long long seconds;
    int microseconds;

    bool operator==(const fields&) const = default;
    int128 total() const { return int128{seconds} * million + microseconds; }
    ka_time_period period() const { return ka_time_period(seconds, microseconds); }
};

std::string shown(long long seconds, long long microseconds)
{
    return "Seconds: " + std::to_string(seconds) + " Microseconds: " + std::to_string(microseconds);
}

fields of(const ka_time_period& period)
{
    return {static_cast<timeval>(period).tv_sec, period.microseconds()};
}

/// The exact total where 64 bits of seconds hold it. Else the seconds wrap, and
/// one carry and one change of sign are all that is evened out.
fields expected(int128 seconds, int128 microseconds)
{
    const int128 total = seconds * million + microseconds;
    if (LLONG_MIN <= total / million && total / million <= LLONG_MAX)
        return {static_cast<long long>(total / million), static_cast<int>(total % million)};
    auto wrapped = static_cast<long long>(static_cast<unsigned long long>(seconds + microseconds / million));
    if (wrapped < 0 && microseconds > 0)
        ++wrapped, microseconds -= million;
    else if (wrapped > 0 && microseconds < 0)
        --wrapped, microseconds += million;
    return {wrapped, static_cast<int>(microseconds % million)};
}

std::vector<fields> samples()
{
    std::mt19937_64 random(1);
    std::vector<fields> all = {{LLONG_MIN, 0}, {LLONG_MIN, -999999}, {LLONG_MAX, 0}, {LLONG_MAX, 999999}};
    for (const long long seconds : {0ll, 1ll, 3599ll, 86400ll, 2147483648ll, 4294967296ll, LLONG_MAX / 2 + 1})
        for (const int microseconds : {0, 1, 500000, 999999})
            for (const int sign : {1, -1})
                all.push_back({sign * seconds, sign * microseconds});
    for (int i = 0; i < 60; ++i) {
        const int sign = i % 2 == 0 ? 1 : -1;
        const auto seconds = static_cast<long long>(random() >> (1 + random() % 62));
        all.push_back({sign * seconds, sign * static_cast<int>(random() % million)});
    }
    return all;
}

static_assert(ka_time_period(1, 600000) + ka_time_period(1, 600000) == ka_time_period(3, 200000));

}

TEST(time_period, setter_of_two_fields)
{
    for (const fields& row : {fields{5, 0}, {0, -1}, {0, 1}, {0, -999999}, {0, 999999}, {LLONG_MIN, -1}})
        EXPECT_EQ(of(row.period()), row);
    for (const fields& row : {fields{5, -1}, {-5, 1}, {0, 1000000}, {0, -1000000}, {LLONG_MAX, INT_MIN}}) {
        ka_time_period kept(1, 2);
        const auto set = [&] { kept.time_period(row.seconds, row.microseconds); };
        expect_error("invalid_time_period", shown(row.seconds, row.microseconds), source, set);
        EXPECT_EQ(kept, ka_time_period(1, 2));
    }
    for (const int value : {INT_MIN, -1000000, -999999, 0, 999999, 1000000, INT_MAX})
        EXPECT_EQ(ka_time_period::is_microsecond(value), -million < value && value < million);
}

TEST(time_period, setter_of_five_fields)
{
    struct five_fields {
        int d, h, m, s, u;
        fields stored = {};
    };
    const five_fields rows[] = {
        {1, 2, 3, 4, 5, {93784, 5}},
        {0, 25, 90, 0, 0, {95400, 0}},
        {0, 0, 0, 0, 2500000, {2, 500000}},
        {-1, 0, 0, 0, -2500000, {-86402, -500000}},
        {INT_MAX, 0, 0, INT_MAX, INT_MAX, {185542587100800 + 2147483647 + 2147, 483647}},
        {INT_MIN, 0, 0, INT_MIN, INT_MIN, {-185542587187200 - 2147483648 - 2147, -483648}},
        {0, 596523, 0, 0, 0, {2147482800, 0}},
        {0, 596524, 0, 0, 0, {-2147480896, 0}},
        {0, -596524, 0, 0, 0, {2147480896, 0}},
        {0, 0, 35791394, 0, 0, {2147483640, 0}},
        {0, 0, 35791395, 0, 0, {-2147483596, 0}},
        // The signs differ in the rest, which are refused.
        {0, INT_MAX, INT_MIN, 0, 0},
        {1, -1, 0, 0, 0},
        {0, 0, 0, 1, -1},
        {-1, 0, 2, 0, 0}};
    for (const five_fields& row : rows) {
        std::ostringstream text;
        text << "Days: " << row.d << " Hours: " << row.h << " Minutes: " << row.m << " Seconds: " << row.s
             << " Microseconds: " << row.u;
        ka_time_period period(1, 2);
        const auto set = [&] { period.time_period(row.d, row.h, row.m, row.s, row.u); };
        if (row.stored == fields{}) {
            expect_error("invalid_time_period", text.str(), source, set);
            EXPECT_EQ(period, ka_time_period(1, 2));
        } else {
            set();
            EXPECT_EQ(of(period), row.stored) << text.str();
        }
    }
}

TEST(time_period, sums_and_order_of_all_pairs)
{
    for (const fields& a : samples()) {
        for (const fields& b : samples()) {
            const ka_time_period x = a.period();
            const ka_time_period y = b.period();
            const int128 seconds = a.seconds;
            ASSERT_TRUE(of(x + y) == expected(seconds + b.seconds, a.microseconds + b.microseconds) &&
                        (b.seconds == LLONG_MIN ||
                         of(x - y) == expected(seconds - b.seconds, a.microseconds - b.microseconds)) &&
                        same_order(x, y, a.total(), b.total()))
                << x.to_string() << ", " << y.to_string();
        }
    }
}

TEST(time_period, products_quotients_and_counts)
{
    for (const fields& a : samples()) {
        const ka_time_period period = a.period();
        SCOPED_TRACE(period.to_string());
        EXPECT_EQ(period.to_days(), static_cast<int>(a.seconds / 86400));
        EXPECT_EQ(period.to_hours(), static_cast<int>(a.seconds / 3600));
        EXPECT_EQ(period.to_minutes(), static_cast<int>(a.seconds / 60));
        EXPECT_EQ(period.to_seconds(), static_cast<int>(a.seconds));
        for (const int k : {0, 1, -1, 2, -2, 3, 7, -10, 2147, 86400, INT_MAX, INT_MIN}) {
            SCOPED_TRACE(k);
            ka_time_period product = period;
            EXPECT_EQ(of(product *= k), expected(int128{a.seconds} * k, int128{a.microseconds} * k));
            EXPECT_EQ(k * period, product);
            ka_time_period quotient = period;
            ka_time_period rest = period;
            if (k == 0) {
                expect_error("divide_by_zero", "", source, [&] { quotient /= 0; });
                expect_error("divide_by_zero", "", source, [&] { rest %= 0; });
                EXPECT_TRUE(quotient == period && rest == period);
                continue;
            }
            EXPECT_EQ(of(rest %= k), (fields{k == -1 ? 0 : a.seconds % k, a.microseconds % k}));
            if (k == -1 && a.seconds == LLONG_MIN)
                continue;
            // The fields are truncated apart, which loses one microsecond at most.
            const fields found = of(quotient /= k);
            const int128 lost = a.total() / k - found.total();
            EXPECT_TRUE(lost == 0 || lost == (a.total() / k < 0 ? -1 : 1));
            EXPECT_EQ(found.period(), quotient);
        }
    }
    EXPECT_EQ(ka_time_period(1, 2) / 3, ka_time_period(0, 333333));
    EXPECT_EQ(ka_time_period(7, 500000) % 2, ka_time_period(1, 0));

    const ka_time_period lowest(LLONG_MIN, 0);
    EXPECT_TRUE(-lowest == lowest && lowest / -1 == lowest);
    EXPECT_EQ(lowest - lowest, ka_time_period::zero_period);
    expect_error("invalid_time_period", "Seconds: -9223372036854775808 Microseconds: 5", source,
                 [] { (void)-ka_time_period(LLONG_MIN, -5); });
}

TEST(time_period, converts_and_assigns)
{
    ka_time_period period;
    for (const fields& a : samples()) {
        const timeval record = {static_cast<decltype(timeval::tv_sec)>(a.seconds), a.microseconds};
        EXPECT_EQ(of(period = record), a);
        EXPECT_EQ(static_cast<timeval>(ka_time_period(record)).tv_usec, a.microseconds);
    }
    period = ka_time_period(1, 2);
    for (const timeval& record : {timeval{5, -1}, {0, 1000000}, {0, 4294967296}})
        expect_error("invalid_time_period", shown(record.tv_sec, record.tv_usec), source,
                     [&] { period = record; });
    EXPECT_EQ(period, ka_time_period(1, 2));
    EXPECT_EQ(of(period = 5000000000ll), (fields{5000000000, 0}));
    EXPECT_EQ(of(period = -5000000000l), (fields{-5000000000, 0}));
    EXPECT_EQ(of(period = 7u), (fields{7, 0}));
}

TEST(time_period, text)
{
    const std::pair<fields, const char*> rows[] = {
        {{0, 0}, "0 seconds"},
        {{1, 0}, "1 second"},
        {{-1, 0}, "-1 second"},
        {{90, 0}, "90 seconds"},
        {{1, 1}, "1.000001 seconds"},
        {{-1, -500000}, "-1.500000 seconds"},
        {{0, -500000}, "-0.500000 seconds"},
        {{0, 1}, "0.000001 seconds"},
        {{LLONG_MIN, -999999}, "-9223372036854775808.999999 seconds"}};
    for (const auto& [value, text] : rows)
        EXPECT_EQ(value.period().to_string(), text);
    std::ostringstream stream;
    stream << std::setfill('*') << std::setw(12);
    ka_time_period(90, 0).print(stream);
    ka_time_period(90, 0).print(stream);
    EXPECT_EQ(stream.str(), "**90 seconds90 seconds");
}
