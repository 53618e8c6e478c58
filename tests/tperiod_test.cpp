#include <sys/time.h>

#include <climits>
#include <initializer_list>
#include <string>

#include <gtest/gtest.h>

#include <time/tperiod.h>

#include "expect_error.h"

namespace {

constexpr const char* source = "time/src/tperiod";

static_assert(ka_time_period(1, 600000) + ka_time_period(1, 600000) == ka_time_period(3, 200000));

}

TEST(time_period, refused_fields)
{
    ka_time_period period(1, 2);
    const auto refused = [&](const char* shown, auto set) {
        expect_error("invalid_time_period", shown, source, set);
        EXPECT_EQ(period, ka_time_period(1, 2));
    };
    refused("Seconds: 5 Microseconds: -2147483648", [&] { period.time_period(5, INT_MIN); });
    refused("Seconds: -5 Microseconds: 1", [&] { period = ka_time_period(-5, 1); });
    refused("Seconds: 0 Microseconds: -4294967296", [&] { period = timeval{0, -1ll << 32}; });
    refused("Seconds: 0 Microseconds: 1000000", [&] { period = ka_time_period(timeval{0, 1000000}); });
    refused("Days: 0 Hours: 2147483647 Minutes: 0 Seconds: -1 Microseconds: 1000000",
            [&] { period.time_period(0, INT_MAX, 0, -1, 1000000); });
    EXPECT_EQ(period = -5000000000l, ka_time_period(-5000000000, 0));
}

TEST(time_period, quotients_at_the_edges)
{
    EXPECT_EQ(ka_time_period(1, 2) / 3, ka_time_period(0, 333333));
    ka_time_period lowest(LLONG_MIN, 0);
    EXPECT_TRUE(ka_time_period(5, 6) / -1 == ka_time_period(-5, -6) && lowest / -1 == lowest &&
                -lowest == lowest);
    EXPECT_TRUE(lowest % -1 == ka_time_period::zero_period && lowest - lowest == ka_time_period());
    expect_error("divide_by_zero", "", source, [&] { lowest /= 0; });
    expect_error("divide_by_zero", "", source, [&] { lowest %= 0; });
    expect_error("invalid_time_period", "Seconds: -9223372036854775808 Microseconds: 5", source,
                 [] { (void)-ka_time_period(LLONG_MIN, -5); });
}

TEST(time_period, text)
{
    std::string texts;
    for (const ka_time_period& value : std::initializer_list<ka_time_period>{
             {0, 0}, {1, 0}, {-1, 0}, {90, 0}, {1, 1}, {0, -500000}, {LLONG_MIN, -999999}})
        texts += value.to_string() + "\n";
    EXPECT_EQ(texts, "0 seconds\n1 second\n-1 second\n90 seconds\n1.000001 seconds\n-0.500000 seconds\n"
                     "-9223372036854775808.999999 seconds\n");
}
