#include <climits>
#include <ctime>
#include <iomanip>
#include <sstream>
#include <string>

#include <gtest/gtest.h>

#include <time/time_of_day.h>

#include "expect_error.h"

namespace {

constexpr const char* source = "time/src/time";
constexpr long long million = 1000000, day = 86400 * million;

/// Microseconds since midnight, by the fields as they are read.
long long total(const ka_time& time)
{
    return ((time.hours() * 60 + time.minutes()) * 60 + time.seconds()) * million + time.microseconds();
}

long long modulo_day(long long microseconds) { return (microseconds % day + day) % day; }

static_assert(ka_time(23, 30, 0) + ka_time_period(0, 1, 0, 0, 0) == ka_time(0, 30, 0));

}

TEST(time_of_day, counts_of_seconds_wrap)
{
    for (int seconds = -200000; seconds <= 200000; ++seconds) {
        const ka_time time(seconds);
        const long long expected = modulo_day(seconds * million);
        ASSERT_TRUE(total(time) == expected && time.is_pm() == (expected >= day / 2) &&
                    time.is_am() != time.is_pm());
    }
    for (const long long seconds : {LLONG_MIN, INT_MIN - 1ll, 4294967296ll, LLONG_MAX}) {
        EXPECT_EQ(total(ka_time(seconds)), modulo_day(seconds % 86400 * million)) << seconds;
        EXPECT_EQ(ka_time(seconds), ka_time(ka_time_period(seconds, 0)));
    }
    EXPECT_EQ(ka_time(ULLONG_MAX), ka_time(ULLONG_MAX % 86400));
    EXPECT_EQ(ka_time(UINT_MAX), ka_time(4294967295));
    EXPECT_TRUE(total(ka_time::min_time()) == 0 && total(ka_time::max_time()) == day - 1);
}

TEST(time_of_day, compares_with_periods)
{
    // A period on the right is a time of day, a time on the right a period.
    const ka_time_period next_morning(25 * 3600);
    EXPECT_TRUE(ka_time(1, 0, 0) == next_morning && !(ka_time(1, 0, 0) != next_morning));
    EXPECT_TRUE(next_morning != ka_time(1, 0, 0) && ka_time_period(3600) == ka_time(1, 0, 0));
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

TEST(time_of_day, text_and_names)
{
    const ka_time time(18, 28, 38, 123);
    EXPECT_EQ(time.to_string() + time.to_string("") + time.to_string("%Y"), "18:28:38:0001230");
    const std::string format = ka_time::default_format();
    ka_time::default_format("%H h");
    std::ostringstream stream;
    stream << std::setfill('*') << std::setw(6);
    time.print(stream);
    EXPECT_EQ(stream.str(), "**18 h");
    ka_time::default_format("%B");
    expect_error("invalid_month", "0", "time/src/date", [&] { (void)time.to_string(); });
    ka_time::default_format(format);

    const std::string &am = ka_time::am_name(), &pm = ka_time::pm_name(), at_start = am + pm;
    ka_time::am_name("morning");
    ka_time::pm_name("");
    EXPECT_EQ(at_start + am + pm + ka_time(8, 0, 0).to_string("%p") + time.to_string("%p"),
              "AMPMmorningmorning");
    ka_time::am_name("AM");
    ka_time::pm_name("PM");
}
