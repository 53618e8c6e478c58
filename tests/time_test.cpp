#include <climits>
#include <ctime>
#include <string>

#include <gtest/gtest.h>

#include <time/time_of_day.h>

#include "expect_error.h"
#include "printers.h"

namespace {

constexpr const char* source = "time/src/time";

static_assert(ka_time(23, 30, 0) + ka_time_period(0, 1, 0, 0, 0) == ka_time(0, 30, 0));

}

TEST(time_of_day, limits_and_comparisons_with_periods)
{
    EXPECT_EQ(ka_time::min_time(), ka_time());
    EXPECT_EQ(ka_time::max_time(), ka_time(23, 59, 59, 999999));
    // A period on the right is a time of day, a time on the right a period.
    const ka_time_period next_morning(25 * 3600);
    EXPECT_TRUE(ka_time(1, 0, 0) == next_morning);
    EXPECT_FALSE(ka_time(1, 0, 0) != next_morning);
    EXPECT_TRUE(next_morning != ka_time(1, 0, 0));
    EXPECT_TRUE(ka_time_period(3600) == ka_time(1, 0, 0));
}

TEST(time_of_day, refused_fields)
{
    ka_time time(1, 2, 3, 4);
    std::tm record = {};
    record.tm_hour = -1;
    expect_error("invalid_time", "65535:0:0:4294967295", source, [&] { time.time(record, UINT_MAX); });
    expect_error("invalid_time", "23:59:59:1000000", source, [&] { time.time(23, 59, 59, 1000000); });
    EXPECT_EQ(time, ka_time(1, 2, 3, 4));
}

TEST(time_of_day, now_is_the_local_clock_in_milliseconds)
{
    const auto clock = [](std::time_t seconds) { return ka_time(*std::localtime(&seconds)); };
    const ka_time before = clock(std::time(nullptr)), now = ka_time::now();
    EXPECT_EQ(now.microseconds() % 1000, 0u);
    EXPECT_LE(now - before, clock(std::time(nullptr)) - before + ka_time_period(2));
}

TEST(time_of_day, names_of_the_half_days)
{
    const std::string &am = ka_time::am_name(), &pm = ka_time::pm_name();
    EXPECT_EQ(am, "AM");
    EXPECT_EQ(pm, "PM");
    ka_time::am_name("morning");
    ka_time::pm_name("");
    EXPECT_EQ(am, "morning");
    EXPECT_EQ(pm, "");
    EXPECT_EQ(ka_time(8, 0, 0).to_string("%p"), "morning");
    EXPECT_EQ(ka_time(18, 0, 0).to_string("%p"), "");
    ka_time::am_name("AM");
    ka_time::pm_name("PM");
}
