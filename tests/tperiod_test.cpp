#include <sys/time.h>

#include <algorithm>
#include <climits>
#include <iomanip>
#include <random>
#include <sstream>
#include <string>

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
    ka_time_period period() const { return ka_time_period(seconds, microseconds); }
};

fields of(const ka_time_period& p) { return {static_cast<timeval>(p).tv_sec, p.microseconds()}; }

static_assert(ka_time_period(1, 600000) + ka_time_period(1, 600000) == ka_time_period(3, 200000));

}

TEST(time_period, setters_of_two_fields_and_of_records)
{
    ka_time_period period;
    for (const long long s : {LLONG_MIN, -5ll, 0ll, 5ll, LLONG_MAX})
        for (const long long u : {-1ll << 32, -1000000ll, -999999ll, -1ll, 0ll, 1ll, 999999ll, 1000000ll}) {
            const timeval record = {s, u};
            period = ka_time_period(1, 2);
            if (-million < u && u < million && int128{s} * u >= 0) {
                const timeval back = period = record;
                EXPECT_TRUE(back.tv_sec == s && back.tv_usec == u && ka_time_period(record) == period)
                    << s << ", " << u;
                EXPECT_EQ(period, ka_time_period(s, static_cast<int>(u)));
            } else {
                const auto shown = "Seconds: " + std::to_string(s) + " Microseconds: " + std::to_string(u);
                expect_error("invalid_time_period", shown, source, [&] { period = record; });
                EXPECT_EQ(period, ka_time_period(1, 2));
            }
        }
    expect_error("invalid_time_period", "Seconds: 5 Microseconds: -2147483648", source,
                 [&] { period.time_period(5, INT_MIN); });
    EXPECT_EQ(of(period = -5000000000l), (fields{-5000000000, 0}));
}

TEST(time_period, setter_of_five_fields)
{
    std::mt19937_64 random(1);
    constexpr int edges[] = {-1, -1, 0, 0, 0, 25, 999999, 596524, 35791395, INT_MAX};
    for (int i = 0; i < 5000; ++i) {
        const auto any = [&] { return edges[random() % 10] ^ (i % 2 == 0 ? 0 : -1); };
        const int d = any(), h = any(), m = any(), s = any(), u = any();
        std::ostringstream text;
        text << "Days: " << d << " Hours: " << h << " Minutes: " << m << " Seconds: " << s
             << " Microseconds: " << u;
        ka_time_period period(1, 2);
        const auto set = [&] { period.time_period(d, h, m, s, u); };
        if (std::min({d, h, m, s, u}) < 0 && std::max({d, h, m, s, u}) > 0) {
            expect_error("invalid_time_period", text.str(), source, set);
            EXPECT_EQ(period, ka_time_period(1, 2));
        } else {
            set();
            const long long wrapping = static_cast<int>(h * 3600ll) + 0ll + static_cast<int>(m * 60ll);
            const fields stored = {d * 86400ll + wrapping + s + u / million, u % million};
            EXPECT_EQ(of(period), stored) << text.str();
        }
    }
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
    std::ostringstream texts;
    for (const fields& value :
         {fields{0, 0}, {1, 0}, {-1, 0}, {90, 0}, {1, 1}, {0, -500000}, {LLONG_MIN, -999999}})
        texts << value.period().to_string() << '\n';
    texts << std::setfill('*') << std::setw(12);
    ka_time_period(90, 0).print(texts);
    ka_time_period(90, 0).print(texts);
    EXPECT_EQ(texts.str(), "0 seconds\n1 second\n-1 second\n90 seconds\n1.000001 seconds\n-0.500000 seconds\n"
                           "-9223372036854775808.999999 seconds\n**90 seconds90 seconds");
}
