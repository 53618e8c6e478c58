#include <ctime>
#include <functional>
#include <string>

#include <gtest/gtest.h>

#include <time/time_varnel.h>

#include "comparisons.h"
#include "expect_error.h"
#include "printers.h"

namespace {

using moment = ka_time_and_date;
using zone = ka_time_zone;
using change = std::function<void(moment&)>;

constexpr const char* source = "time/src/date";
constexpr ka_time_period one_us(0, 1), hour(3600), above_32_bits((1LL << 32) + 5, 1), epoch(210866803200);
const ka_time nine(9, 0, 0);
const ka_date eve(3, 9, 2024), spring(3, 10, 2024);

std::string utc(const moment& value)
{
    return value.utc_date().to_string("%Y-%m-%d ") + value.utc_time().to_string("%H:%M:%S.%q");
}
std::string local(const moment& value) { return value.to_string("%Y-%m-%d %H:%M:%S.%q %Z"); }

moment universal(const ka_date& date, const ka_time& time, const zone& of)
{
    moment value;
    value.time_zone(of);
    value.utc_time_and_date(time, date);
    return value;
}

class moments : public testing::Test {
protected:
    moments() { moment::default_time_zone(zone::pacific()); }
    ~moments() override { moment::default_time_zone(before_); }

private:
    const zone& before_ = moment::default_time_zone();
};

TEST_F(moments, setters_and_constructors)
{
    std::tm fields = {};
    fields.tm_year = 124, fields.tm_mon = 6, fields.tm_mday = 1, fields.tm_hour = 9;
    fields.tm_isdst = 0, fields.tm_wday = 77, fields.tm_yday = -5;
    const struct {
        const char *name, *universal;
        change set;
    } settings[] = {
        {"in summer", "2024-03-10 16:00:00.000000", [](moment& m) { m.time_and_date(nine, spring); }},
        // The offset is that of the time of day on the date handed in.
        {"beyond 24 h", "2024-03-10 14:00:00.000000", [](moment& m) { m.time_and_date(hour * 30, eve); }},
        {"before midnight", "2024-03-10 06:00:00.000000", [](moment& m) { m = moment(-hour, spring); }},
        {"record set", "2024-07-01 16:00:00.999999", [&](moment& m) { m.time_and_date(fields, 999999); }},
        {"from a record", "2024-07-01 16:00:00.000012", [&](moment& m) { m = moment(fields, 12); }},
        {"record assigned", "2024-07-01 16:00:00.000000", [&](moment& m) { m = fields; }},
        {"default", "1970-01-01 00:00:00.000000", [](moment& m) { m = moment(); }},
        {"seconds", "2100-01-01 00:00:00.000000", [](moment& m) { m.time_and_date(4102444800LL); }},
        {"before 1970", "1969-12-31 23:59:59.000000", [](moment& m) { m = moment(-1LL); }},
        {"period", "1970-01-01 00:00:01.500000", [](moment& m) { m = moment(ka_time_period(1, 500000)); }},
        {"period set", "1970-01-01 00:00:05.000000", [](moment& m) { m.time_and_date(above_32_bits); }},
        {"long period", "2106-02-07 06:28:21.000001", [](moment& m) { m = moment(above_32_bits); }},
        {"time", "2024-07-05 06:59:59.999999", [](moment& m) { m.time(ka_time::max_time()); }},
        {"own date", "2024-07-04 18:34:56.000789", [](moment& m) { m.date(m.date()); }},
        {"date in winter", "2024-01-31 19:34:56.000789", [](moment& m) { m.date(ka_date(1, 31, 2024)); }},
        {"instant", "1970-01-01 00:00:00.000001", [](moment& m) { m.utc_time_and_date(epoch + one_us); }},
        {"universal time as local", "2024-07-05 02:34:56.000789",
         [](moment& m) { m.time_and_date(m.utc_time(), m.utc_date()); }},
    };
    const moment start = universal({7, 4, 2024}, {19, 34, 56, 789}, zone::pacific());
    for (const auto& [name, expected, set] : settings) {
        SCOPED_TRACE(name);
        moment changed = start;
        set(changed);
        EXPECT_EQ(utc(changed), expected);
        EXPECT_EQ(&changed.time_zone(), &zone::pacific());
    }
    moment changed = moment(nine, spring, zone::central());
    EXPECT_EQ(local(changed), "2024-03-10 09:00:00.000000 CDT5");
    changed.time_and_date(nine, spring, zone::eastern());

    std::tm bad = fields;
    bad.tm_sec = 60;
    expect_error("invalid_time", "9:0:60:1", "time/src/time", [&] { changed.time_and_date(bad, 1); });
    bad.tm_mday = 32;
    expect_error("invalid_date", "Month( 7 ), day( 32 ), year( 2024 )", source, [&] { changed = bad; });
    EXPECT_EQ(local(changed), "2024-03-10 09:00:00.000000 EDT4");

    // A rule that fails leaves the time taken as universal.
    const ka_calendar_date leap_day({}, 2, 29), may({}, 5, 1);
    ka_simple_time_zone_rule rule(leap_day, may, 2023, 2023);
    zone failing(hour * 5);
    failing.insert(rule);
    expect_error("invalid_date", "Month( 2 ), day( 29 ), year( 2023 )", source,
                 [&] { changed.time_and_date(nine, ka_date(3, 1, 2023), failing); });
    EXPECT_EQ(utc(changed), "2023-03-01 09:00:00.000000");
    EXPECT_EQ(&changed.time_zone(), &failing);
}

TEST_F(moments, order_and_difference_go_by_the_instant)
{
    const moment early = universal({1, 15, 2024}, {12, 0, 0}, zone::utc()), later = early + one_us;
    moment same = early;
    same.time_zone(zone::pacific());
    EXPECT_EQ(local(same), "2024-01-15 04:00:00.000000 PST8");
    EXPECT_EQ(compared(early, same), compared(0, 0));
    EXPECT_EQ(compared(early, later), compared(0, 1));
    EXPECT_EQ(compared(later, same), compared(1, 0));
    EXPECT_EQ(early - same, ka_time_period());
    EXPECT_EQ(later - same, one_us);
    EXPECT_EQ(same - later, -one_us);
    EXPECT_EQ(&(same + one_us).time_zone(), &zone::pacific());

    struct entry {
        moment when;
        int number;
        auto operator<=>(const entry&) const = default;
    };
    EXPECT_TRUE((entry{same, 2} > entry{early, 1}));
    EXPECT_TRUE((entry{early, 2} < entry{later, 1}));

    const moment before;
    moment::default_time_zone(zone::central_european());
    EXPECT_EQ(&moment::default_time_zone(), &zone::central_european());
    EXPECT_EQ(local(before), "1969-12-31 16:00:00.000000 PST8");
    EXPECT_EQ(local(moment()), "1970-01-01 01:00:00.000000 CET-1");
    EXPECT_EQ(&moment::now().time_zone(), &zone::central_european());
}

TEST_F(moments, a_format_can_be_a_string)
{
    const moment value = universal({7, 4, 2024}, {19, 34, 56, 789}, zone::pacific());
    EXPECT_EQ(value.to_string(std::string("%H\0%M", 5)), std::string("12\0"
                                                                     "34",
                                                                     5));
    EXPECT_EQ(value.to_string(std::string()), "");
    const char* const none = nullptr;
    EXPECT_EQ(value.to_string(none), value.to_string(moment::default_format()));
}

TEST_F(moments, a_moment_out_of_range_fails_at_the_first_read)
{
    moment below = universal(ka_date::min_date(), 0, zone::utc());
    moment above = universal(ka_date::max_date(), ka_time::max_time(), zone::utc());
    EXPECT_EQ(local(below), "-4713-01-01 00:00:00.000000 UTC0");
    EXPECT_EQ(local(above), "32766-12-31 23:59:59.999999 UTC0");
    below -= one_us;
    above += one_us;
    for (moment* value : {&below, &above}) {
        const std::string day = value == &below ? "37" : "13688961";
        for (const change& read : std::initializer_list<change>{
                 [](moment& m) { m.utc_date(); }, [](moment& m) { m.std_date(); },
                 [](moment& m) { m.date(); }, [](moment& m) { m.time(); }, [](moment& m) { m.is_dst(); },
                 [](moment& m) { m.time(nine); }, [](moment& m) { m.to_string(""); },
                 [](moment& m) { static_cast<void>(static_cast<std::tm>(m)); }})
            expect_error("invalid_day", "Invalid julian day: " + day, source, [&] { read(*value); });
    }
    below.date(ka_date(1, 1, 2024));
    EXPECT_EQ(utc(below), "2024-01-01 23:59:59.999999");
    EXPECT_EQ(&moment::min_date(), &ka_date::min_date());
    EXPECT_EQ(&moment::max_date(), &ka_date::max_date());
    EXPECT_EQ(&moment::min_time(), &ka_time::min_time());
    EXPECT_EQ(&moment::max_time(), &ka_time::max_time());
}

}
