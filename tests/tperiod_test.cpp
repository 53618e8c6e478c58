#include <sys/time.h>

#include <climits>
#include <limits>
#include <string>

#include <gtest/gtest.h>

#include <time/tperiod.h>

#include "expect_error.h"
#include "printers.h"

namespace {

constexpr const char* source = "time/src/tperiod";

using record_seconds = decltype(timeval::tv_sec);
using record_microseconds = decltype(timeval::tv_usec);

static_assert(ka_time_period(1, 600000) + ka_time_period(1, 600000) == ka_time_period(3, 200000));

}

TEST(time_period, refused_fields)
{
    ka_time_period period(1, 2);
    const auto refused = [&](const std::string& shown, auto set) {
        expect_error("invalid_time_period", shown, source, set);
        EXPECT_EQ(period, ka_time_period(1, 2));
    };
    refused("Seconds: 5 Microseconds: -2147483648", [&] { period.time_period(5, INT_MIN); });
    refused("Seconds: -5 Microseconds: 1", [&] { period = ka_time_period(-5, 1); });
    const auto fewest = std::numeric_limits<record_microseconds>::min();
    refused("Seconds: 0 Microseconds: " + std::to_string(fewest), [&] { period = timeval{0, fewest}; });
    refused("Seconds: 0 Microseconds: 1000000", [&] { period = ka_time_period(timeval{0, 1000000}); });
    refused("Days: 0 Hours: 2147483647 Minutes: 0 Seconds: -1 Microseconds: 1000000",
            [&] { period.time_period(0, INT_MAX, 0, -1, 1000000); });
    EXPECT_EQ(period = -5000000000, ka_time_period(-5000000000, 0));
    EXPECT_EQ(period = -2000000000l, ka_time_period(-2000000000, 0));
}

TEST(time_period, to_the_record_of_the_system)
{
    const timeval record = ka_time_period(-5000000000, -999999);
    EXPECT_EQ(record.tv_sec, static_cast<record_seconds>(-5000000000)); // the low bits, where it has 32
    EXPECT_EQ(record.tv_usec, -999999);
}

TEST(time_period, quotients_and_remainders)
{
    EXPECT_EQ(ka_time_period(1, 2) / 3, ka_time_period(0, 333333));
    EXPECT_EQ(ka_time_period(5, 6) / -1, ka_time_period(-5, -6));
    ka_time_period changed(-17, -11);
    EXPECT_EQ(&(changed /= 2), &changed);
    EXPECT_EQ(changed, ka_time_period(-8, -500005));
    EXPECT_EQ(&(changed %= 3), &changed);
    EXPECT_EQ(changed, ka_time_period(-2, -1));

    ka_time_period lowest(LLONG_MIN, 0);
    EXPECT_EQ(lowest / -1, lowest);
    EXPECT_EQ(lowest % -1, ka_time_period::zero_period);
    EXPECT_EQ(-lowest, lowest);
    EXPECT_EQ(lowest - lowest, ka_time_period());
    expect_error("divide_by_zero", "", source, [&] { lowest /= 0; });
    expect_error("divide_by_zero", "", source, [&] { lowest %= 0; });
    expect_error("invalid_time_period", "Seconds: -9223372036854775808 Microseconds: 5", source,
                 [] { (void)-ka_time_period(LLONG_MIN, -5); });
}

TEST(time_period, text)
{
    const struct {
        ka_time_period period;
        const char* text;
    } texts[] = {
        {{0, 0}, "0 seconds"},
        {{1, 0}, "1 second"},
        {{-1, 0}, "-1 second"},
        {{90, 0}, "90 seconds"},
        {{1, 1}, "1.000001 seconds"},
        {{0, -500000}, "-0.500000 seconds"},
        {{LLONG_MIN, -999999}, "-9223372036854775808.999999 seconds"},
    };
    for (const auto& [period, text] : texts)
        EXPECT_EQ(period.to_string(), text);
}
