#include <chrono>
#include <climits>
#include <ctime>
#include <iomanip>
#include <random>
#include <sstream>
#include <string>

#include <gtest/gtest.h>

#include <time/time_of_day.h>

#include "expect_error.h"

namespace {

constexpr long long million = 1000000;
constexpr long long day = 86400 * million;

long long total(const ka_time_period& period)
{
    return period.to_seconds() * million + period.microseconds();
}

/// Microseconds since midnight, by the fields as they are read.
long long total(const ka_time& time)
{
    return ((time.hours() * 60 + time.minutes()) * 60 + time.seconds()) * million + time.microseconds();
}

long long modulo_day(long long microseconds) { return (microseconds % day + day) % day; }

static_assert(ka_time(23, 30, 0) + ka_time_period(0, 1, 0, 0, 0) == ka_time(0, 30, 0));
static_assert(ka_time(-1) == ka_time(23, 59, 59) && ka_time(5000000000L) == ka_time(8, 53, 20));

}

TEST(time_of_day, counts_of_seconds_wrap)
{
    int wrong = 0;
    for (int seconds = -200000; seconds <= 200000; ++seconds) {
        const ka_time time(seconds);
        const long long expected = modulo_day(seconds * million);
        wrong +=
            total(time) != expected || time.is_pm() != (expected >= day / 2) || time.is_am() == time.is_pm();
    }
    EXPECT_EQ(wrong, 0);
    for (const long long seconds : {LLONG_MIN, INT_MIN - 1ll, 4294967296ll, LLONG_MAX}) {
        EXPECT_EQ(total(ka_time(seconds)), modulo_day(seconds % 86400 * million)) << seconds;
        EXPECT_EQ(ka_time(seconds), ka_time(ka_time_period(seconds, 0)));
    }
    EXPECT_EQ(ka_time(ULLONG_MAX), ka_time(ULLONG_MAX % 86400));
    EXPECT_EQ(ka_time(UINT_MAX), ka_time(4294967295));
    EXPECT_EQ(ka_time(), ka_time(0, 0, 0));
    EXPECT_TRUE(ka_time(11, 59, 59, 999999).is_am());
}

TEST(time_of_day, arithmetic_goes_round_the_clock)
{
    std::mt19937_64 random(1);
    const auto any_period = [&random] {
        const int sign = random() % 2 == 0 ? 1 : -1;
        return ka_time_period(sign * static_cast<long long>(random() % INT_MAX),
                              sign * static_cast<int>(random() % million));
    };
    for (int i = 0; i < 20000; ++i) {
        const ka_time_period p = any_period();
        const ka_time_period q = i % 10 == 0 ? p : any_period();
        const ka_time a = p;
        const ka_time b = q;
        ka_time moved = a;
        ASSERT_TRUE(total(a) == modulo_day(total(p)) && total(ka_time_period(a)) == total(a) &&
                    total(moved += q) == modulo_day(total(p) + total(q)) && (moved -= q) == a &&
                    total(a - q) == modulo_day(total(p) - total(q)) &&
                    total(a - b) == modulo_day(total(p) - total(q)) && same_order(a, b, total(a), total(b)))
            << p.to_string() << ", " << q.to_string();
    }
    EXPECT_EQ(ka_time(ka_time_period(-86400, -5)), ka_time(23, 59, 59, 999995));
    EXPECT_EQ(ka_time(ka_time_period(-86400, 0)), ka_time::min_time());
    EXPECT_EQ(total(ka_time::min_time()), 0);
    EXPECT_EQ(total(ka_time::max_time()), day - 1);
}

TEST(time_of_day, setters_check_fields_and_keep_the_time)
{
    struct row {
        unsigned short hours, minutes, seconds;
        unsigned int microseconds;
        const char* refused = nullptr;
    };
    const row rows[] = {{23, 59, 59, 999999},
                        {0, 0, 0, 0},
                        {24, 0, 0, 0, "24:0:0:0"},
                        {0, 60, 0, 0, "0:60:0:0"},
                        {0, 0, 60, 0, "0:0:60:0"},
                        {1, 2, 3, 1000000, "1:2:3:1000000"},
                        {65535, 65535, 65535, UINT_MAX, "65535:65535:65535:4294967295"}};
    for (const row& r : rows) {
        std::tm record = {};
        record.tm_hour = r.hours - 65536; // the low 16 bits count
        record.tm_min = r.minutes;
        record.tm_sec = r.seconds + 65536;
        ka_time time(1, 2, 3, 4);
        const auto by_fields = [&] { time.time(r.hours, r.minutes, r.seconds, r.microseconds); };
        const auto by_record = [&] { time.time(record, r.microseconds); };
        if (r.refused != nullptr) {
            expect_error("invalid_time", r.refused, "time/src/time", by_fields);
            expect_error("invalid_time", r.refused, "time/src/time", by_record);
            EXPECT_EQ(time, ka_time(1, 2, 3, 4));
        } else {
            by_fields();
            EXPECT_EQ(total(time), ((r.hours * 60 + r.minutes) * 60 + r.seconds) * million + r.microseconds);
            EXPECT_EQ(time, ka_time(record, r.microseconds));
        }
        const bool fits = ka_time::is_hour(r.hours) && ka_time::is_minute(r.minutes) &&
                          ka_time::is_second(r.seconds) && ka_time::is_microsecond(r.microseconds);
        EXPECT_EQ(fits, r.refused == nullptr);
    }
}

TEST(time_of_day, now_is_the_local_clock_in_milliseconds)
{
    const auto clock = [] {
        const auto now = std::chrono::system_clock::now().time_since_epoch();
        const std::time_t seconds = std::chrono::floor<std::chrono::seconds>(now).count();
        std::tm local = {};
        localtime_r(&seconds, &local);
        return ka_time(local, static_cast<unsigned int>(now / std::chrono::milliseconds(1) % 1000 * 1000));
    };
    const ka_time before = clock();
    const ka_time now = ka_time::now();
    EXPECT_EQ(now.microseconds() % 1000, 0u);
    EXPECT_LE(now - before, clock() - before);
}

TEST(time_of_day, text_and_names)
{
    const ka_time time(18, 28, 38, 123);
    EXPECT_EQ(time.to_string(), "18:28:38:000123");
    EXPECT_EQ(time.to_string("") + time.to_string("%Y"), "0");
    const std::string format = ka_time::default_format();
    ka_time::default_format("%H h");
    std::ostringstream stream;
    stream << std::setfill('*') << std::setw(6);
    time.print(stream);
    EXPECT_EQ(stream.str(), "**18 h");
    ka_time::default_format("%B");
    expect_error("invalid_month", "0", "time/src/date", [&] { (void)time.to_string(); });
    ka_time::default_format(format);

    const std::string& am = ka_time::am_name();
    const std::string& pm = ka_time::pm_name();
    EXPECT_EQ(am + pm, "AMPM");
    ka_time::am_name("morning");
    ka_time::pm_name("");
    EXPECT_EQ(am + pm, "morning");
    EXPECT_EQ(ka_time(8, 0, 0).to_string("%p") + time.to_string("%p"), "morning");
    ka_time::am_name("AM");
    ka_time::pm_name("PM");
}
