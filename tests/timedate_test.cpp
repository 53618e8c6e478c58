#include <climits>
#include <cstdio>
#include <ctime>
#include <functional>
#include <iterator>
#include <string>

#include <gtest/gtest.h>

#include <time/time_varnel.h>

#include "expect_error.h"

namespace {

constexpr const char* date_source = "time/src/date";
constexpr ka_time_period one_us(0, 1);
constexpr ka_time_period hour(3600);

struct clock_reading {
    ka_time time;
    ka_date date;
};

/// Of "2024-03-10 01:59:59.999999".
clock_reading parsed(const std::string& text)
{
    short year = 0;
    unsigned short month = 0, day = 0, hours = 0, minutes = 0, seconds = 0;
    unsigned int us = 0;
    EXPECT_EQ(std::sscanf(text.c_str(), "%hd-%hu-%hu %hu:%hu:%hu.%u", &year, &month, &day, &hours, &minutes,
                          &seconds, &us),
              7);
    return {ka_time(hours, minutes, seconds, us), ka_date(month, day, year)};
}

std::string shown(const ka_time& time, const ka_date& date)
{
    return date.to_string("%Y-%m-%d ") + time.to_string("%H:%M:%S.%q");
}
std::string utc(const ka_time_and_date& moment) { return shown(moment.utc_time(), moment.utc_date()); }

/// The local reading and the zone's name, on which all ways to read agree.
std::string local(const ka_time_and_date& moment)
{
    const ka_time time = moment.time();
    const ka_date date = moment.date();
    const std::tm fields = moment;
    const ka_time_period standard = moment.utc_time_and_date() - moment.time_zone().offset();
    EXPECT_TRUE(moment.std_time() == ka_time(standard) &&
                moment.std_date().julian_day() == standard.to_days());
    EXPECT_EQ(moment.is_dst(), moment.time_zone().is_dst(moment.std_time(), moment.std_date()));
    EXPECT_EQ(fields.tm_sec, time.seconds());
    EXPECT_EQ(fields.tm_min, time.minutes());
    EXPECT_EQ(fields.tm_hour, time.hours());
    EXPECT_EQ(fields.tm_mday, date.day());
    EXPECT_EQ(fields.tm_mon, date.month() - 1);
    EXPECT_EQ(fields.tm_year, date.year() - 1900);
    EXPECT_EQ(fields.tm_wday, date.weekday() - 1);
    EXPECT_EQ(fields.tm_yday, date.day_of_year());
    EXPECT_EQ(fields.tm_isdst, moment.is_dst());
    const std::string text = shown(time, date);
    EXPECT_EQ(moment.to_string("%Y-%m-%d %H:%M:%S.%q"), text);
    return text + " " + moment.to_string("%Z");
}

ka_time_and_date moment_at(const std::string& universal, const ka_time_zone& zone)
{
    ka_time_and_date moment;
    moment.time_zone(zone);
    const auto [time, date] = parsed(universal);
    moment.utc_time_and_date(time, date);
    return moment;
}

class moments : public testing::Test {
protected:
    moments() { ka_time_and_date::default_time_zone(ka_time_zone::pacific()); }
    ~moments() override { ka_time_and_date::default_time_zone(before_); }

private:
    const ka_time_zone& before_ = ka_time_and_date::default_time_zone();
};

TEST_F(moments, both_sides_of_every_change_read_and_set)
{
    const struct {
        const ka_time_zone& (*zone)();
        const char *universal, *reading;
    } readings[] = {
        {ka_time_zone::pacific, "2024-03-10 09:59:59.999999", "2024-03-10 01:59:59.999999 PST8"},
        {ka_time_zone::pacific, "2024-03-10 10:00:00.000000", "2024-03-10 03:00:00.000000 PDT7"},
        {ka_time_zone::pacific, "2024-11-03 09:59:59.999999", "2024-11-03 02:59:59.999999 PDT7"},
        {ka_time_zone::pacific, "2024-11-03 10:00:00.000000", "2024-11-03 02:00:00.000000 PST8"},
        {ka_time_zone::pacific, "2024-07-05 07:30:00.000000", "2024-07-05 00:30:00.000000 PDT7"},
        {ka_time_zone::pacific, "-1-01-01 00:00:00.000000", "-2-12-31 16:00:00.000000 PST8"},
        {ka_time_zone::newfoundland, "2024-03-10 05:29:59.999999", "2024-03-10 01:59:59.999999 NST3"},
        {ka_time_zone::newfoundland, "2024-03-10 05:30:00.000000", "2024-03-10 03:00:00.000000 NDT2"},
        {ka_time_zone::south_africa, "2024-03-02 22:59:59.999999", "2024-03-03 01:59:59.999999 SADT-3"},
        {ka_time_zone::south_africa, "2024-03-02 23:00:00.000000", "2024-03-03 01:00:00.000000 SAST-2"},
        {ka_time_zone::south_africa, "2023-12-31 21:00:00.000000", "2024-01-01 00:00:00.000000 SADT-3"},
        {ka_time_zone::israel, "2001-09-23 21:59:59.999999", "2001-09-24 00:59:59.999999 IDT-3"},
        {ka_time_zone::israel, "2001-09-23 22:00:00.000000", "2001-09-24 00:00:00.000000 IST-2"},
    };
    for (const auto& row : readings)
        EXPECT_EQ(local(moment_at(row.universal, row.zone())), row.reading);

    const struct {
        const char *local, *universal, *reads_back;
    } settings[] = {
        {"2024-03-10 01:59:59.999999", "2024-03-10 09:59:59.999999", "2024-03-10 01:59:59.999999 PST8"},
        {"2024-03-10 02:00:00.000000", "2024-03-10 09:00:00.000000", "2024-03-10 01:00:00.000000 PST8"},
        {"2024-03-10 02:30:00.000000", "2024-03-10 09:30:00.000000", "2024-03-10 01:30:00.000000 PST8"},
        {"2024-03-10 02:59:59.999999", "2024-03-10 09:59:59.999999", "2024-03-10 01:59:59.999999 PST8"},
        {"2024-03-10 03:00:00.000000", "2024-03-10 10:00:00.000000", "2024-03-10 03:00:00.000000 PDT7"},
        {"2024-11-03 01:59:59.999999", "2024-11-03 08:59:59.999999", "2024-11-03 01:59:59.999999 PDT7"},
        {"2024-11-03 02:00:00.000000", "2024-11-03 10:00:00.000000", "2024-11-03 02:00:00.000000 PST8"},
        {"2024-11-03 02:59:59.999999", "2024-11-03 10:59:59.999999", "2024-11-03 02:59:59.999999 PST8"},
        {"2024-11-03 03:00:00.000000", "2024-11-03 11:00:00.000000", "2024-11-03 03:00:00.000000 PST8"},
    };
    for (const auto& row : settings) {
        const auto [time, date] = parsed(row.local);
        const ka_time_and_date moment(time, date);
        EXPECT_EQ(utc(moment), row.universal);
        EXPECT_EQ(local(moment), row.reads_back);
    }
}

TEST_F(moments, a_reading_set_again_is_the_same_moment_or_the_later_of_two)
{
    int later = 0;
    for (const auto zone : {ka_time_zone::utc, ka_time_zone::greenwich, ka_time_zone::south_africa,
                            ka_time_zone::newfoundland, ka_time_zone::aleutian, ka_time_zone::israel})
        for (ka_time_and_date moment = moment_at("2005-12-31 00:10:00.000007", zone());
             moment.utc_date().year() < 2008; moment += ka_time_period(0, 0, 30, 0)) {
            const ka_time_period ahead = moment.is_dst() ? hour : ka_time_period();
            ASSERT_EQ(moment.time(), moment.std_time() + ahead);
            const ka_time_and_date again(moment.time(), moment.date(), zone());
            if (again == moment)
                continue;
            ++later;
            ASSERT_TRUE(again - moment == hour && moment.is_dst() && !again.is_dst()) << utc(moment);
        }
    EXPECT_EQ(later, 5 * 2 * 2);
}

TEST_F(moments, setters_and_constructors)
{
    const ka_time nine(9, 0, 0);
    const ka_date spring(3, 10, 2024);
    std::tm fields = {};
    fields.tm_year = 124, fields.tm_mon = 6, fields.tm_mday = 1, fields.tm_hour = 9;
    fields.tm_isdst = 0, fields.tm_wday = 77, fields.tm_yday = -5;
    using moment = ka_time_and_date;
    const struct {
        const char* universal;
        std::function<void(moment&)> set;
    } rows[] = {
        {"2024-03-10 16:00:00.000000", [&](moment& m) { m.time_and_date(nine, spring); }},
        {"2024-03-10 16:00:00.000000", [&](moment& m) { m = moment(nine, spring); }},
        // The offset is that of the time of day on the date handed in.
        {"2024-03-10 14:00:00.000000", [&](moment& m) { m.time_and_date(hour * 30, ka_date(3, 9, 2024)); }},
        {"2024-03-10 14:00:00.000000", [&](moment& m) { m = moment(hour * 30, ka_date(3, 9, 2024)); }},
        {"2024-03-10 06:00:00.000000", [&](moment& m) { m.time_and_date(-hour, spring); }},
        {"2024-07-01 16:00:00.000000", [&](moment& m) { m.time_and_date(fields); }},
        {"2024-07-01 16:00:00.999999", [&](moment& m) { m.time_and_date(fields, 999999); }},
        {"2024-07-01 16:00:00.000012", [&](moment& m) { m = moment(fields, 12); }},
        {"2024-07-01 16:00:00.000000", [&](moment& m) { m = fields; }},
        {"1970-01-01 00:00:00.000000", [](moment& m) { m = moment(); }},
        {"2100-01-01 00:00:00.000000", [](moment& m) { m.time_and_date(4102444800LL); }},
        {"1969-12-31 23:59:59.000000", [](moment& m) { m = moment(-1LL); }},
        {"1970-01-01 00:00:01.000000", [](moment& m) { m.time_and_date(ka_time_period(1, 500000)); }},
        {"1970-01-01 00:00:01.500000", [](moment& m) { m = moment(ka_time_period(1, 500000)); }},
        {"1970-01-01 00:00:05.000000", [](moment& m) { m.time_and_date(ka_time_period((1LL << 32) + 5)); }},
        {"2106-02-07 06:28:21.000000", [](moment& m) { m = moment(ka_time_period((1LL << 32) + 5)); }},
        {"2024-07-05 06:59:59.999999", [](moment& m) { m.time(ka_time::max_time()); }},
        {"2024-07-04 18:34:56.000789", [](moment& m) { m.date(m.date()); }},
        {"2024-01-31 19:34:56.000789", [](moment& m) { m.date(ka_date(1, 31, 2024)); }},
        {"2024-03-10 09:00:00.000000", [&](moment& m) { m.utc_time_and_date(nine, spring); }},
        {"1970-01-01 00:00:00.000001",
         [](moment& m) { m.utc_time_and_date(ka_time_period(210866803200, 1)); }},
        {"2024-07-04 19:34:56.000789", [](moment& m) { m.utc_time_and_date(m.utc_time_and_date()); }},
        {"2024-07-05 02:34:56.000789", [](moment& m) { m.time_and_date(m.utc_time(), m.utc_date()); }},
        {"2024-07-05 19:34:56.000788", [](moment& m) { m = m + hour * 24 - one_us; }},
    };
    const ka_time_and_date start = moment_at("2024-07-04 19:34:56.000789", ka_time_zone::pacific());
    for (std::size_t i = 0; i < std::size(rows); ++i) {
        moment changed = start;
        rows[i].set(changed);
        EXPECT_EQ(utc(changed), rows[i].universal) << i;
        EXPECT_EQ(&changed.time_zone(), &ka_time_zone::pacific()) << i;
    }
    moment changed = start;
    changed.time_and_date(nine, spring, ka_time_zone::eastern());
    EXPECT_EQ(local(changed), "2024-03-10 09:00:00.000000 EDT4");
    EXPECT_EQ(&ka_time_and_date(nine, spring, ka_time_zone::eastern()).time_zone(), &ka_time_zone::eastern());

    for (const auto& [member, value, symbol] :
         {std::tuple(&std::tm::tm_sec, 60, "invalid_time"), {&std::tm::tm_mday, 32, "invalid_date"}}) {
        std::tm bad = fields;
        bad.*member = value;
        for (const auto& set : std::initializer_list<std::function<void()>>{
                 [&] { changed = bad; }, [&] { changed.time_and_date(bad, 1); }, [&] { moment(bad, 0); }})
            try {
                set();
                ADD_FAILURE() << symbol;
            } catch (const ka_time_varnel_error& error) {
                EXPECT_STREQ(ka_time_varnel_error::symbol(error.code()), symbol);
            }
    }
    EXPECT_EQ(local(changed), "2024-03-10 09:00:00.000000 EDT4");
}

TEST_F(moments, a_rule_that_fails_leaves_the_time_taken_as_universal)
{
    const ka_calendar_date leap_day(ka_time_period(), 2, 29), may(ka_time_period(), 5, 1);
    ka_simple_time_zone_rule rule(leap_day, may, 2023, 2023);
    ka_time_zone zone(hour * 5, "X", "Y");
    zone.insert(rule);
    ka_time_and_date moment;
    expect_error("invalid_date", "Month( 2 ), day( 29 ), year( 2023 )", date_source,
                 [&] { moment.time_and_date(ka_time(9, 0, 0), ka_date(3, 1, 2023), zone); });
    EXPECT_EQ(utc(moment), "2023-03-01 09:00:00.000000");
    EXPECT_EQ(&moment.time_zone(), &zone);
}

TEST_F(moments, order_and_difference_go_by_the_instant)
{
    const ka_time_and_date early = moment_at("2024-01-15 12:00:00.000000", ka_time_zone::utc());
    ka_time_and_date same = early;
    same.time_zone(ka_time_zone::pacific());
    EXPECT_EQ(local(same), "2024-01-15 04:00:00.000000 PST8");
    const ka_time_and_date later = early + one_us;
    EXPECT_TRUE(same_order(early, same, 0, 0) && same_order(early, later, 0, 1) &&
                same_order(later, same, 1, 0));
    EXPECT_TRUE(early - same == ka_time_period() && later - same == one_us && same - later == -one_us);
    EXPECT_EQ(&(same + one_us).time_zone(), &ka_time_zone::pacific());

    // A day on the universal clock, over a change of the local one.
    same = moment_at("2024-03-09 20:00:00.000000", ka_time_zone::pacific());
    EXPECT_EQ(local(same += hour * 24), "2024-03-10 13:00:00.000000 PDT7");
    EXPECT_EQ(local(same -= hour * 24), "2024-03-09 12:00:00.000000 PST8");

    const ka_time_and_date before;
    ka_time_and_date::default_time_zone(ka_time_zone::central_european());
    EXPECT_EQ(&ka_time_and_date::default_time_zone(), &ka_time_zone::central_european());
    EXPECT_EQ(local(before), "1969-12-31 16:00:00.000000 PST8");
    EXPECT_EQ(local(ka_time_and_date()), "1970-01-01 01:00:00.000000 CET-1");
    EXPECT_EQ(&ka_time_and_date::now().time_zone(), &ka_time_zone::central_european());
}

TEST_F(moments, a_moment_out_of_range_fails_at_the_first_read)
{
    ka_time_and_date below = moment_at("-4713-01-01 00:00:00.000000", ka_time_zone::utc());
    ka_time_and_date above = moment_at("32766-12-31 23:59:59.999999", ka_time_zone::utc());
    EXPECT_EQ(local(below) + local(above),
              "-4713-01-01 00:00:00.000000 UTC032766-12-31 23:59:59.999999 UTC0");
    below -= one_us;
    above += one_us;
    for (const bool is_below : {true, false}) {
        ka_time_and_date moment = is_below ? below : above;
        const char* const day = is_below ? "Invalid julian day: 37" : "Invalid julian day: 13688961";
        for (const auto& read : std::initializer_list<std::function<void()>>{
                 [&] { moment.utc_date(); }, [&] { moment.std_date(); }, [&] { moment.date(); },
                 [&] { moment.time(); }, [&] { moment.is_dst(); }, [&] { moment.time(ka_time()); },
                 [&] { static_cast<void>(static_cast<std::tm>(moment)); }, [&] { moment.to_string(""); }})
            expect_error("invalid_day", day, date_source, read);
        EXPECT_EQ(moment.utc_time(), moment.std_time());
    }
    EXPECT_EQ(above.utc_time(), ka_time::min_time());
    EXPECT_EQ(below.std_time(), ka_time::max_time());
    EXPECT_EQ(utc(above - one_us), "32766-12-31 23:59:59.999999");
    below.date(ka_date(1, 1, 2024));
    EXPECT_EQ(utc(below), "2024-01-01 23:59:59.999999");

    // West of Greenwich it is in range still; in daylight time only the date is out of it.
    above.time_zone(ka_time_zone::pacific());
    EXPECT_EQ(local(above), "32766-12-31 16:00:00.000000 PST8");
    const ka_time_and_date edge = moment_at("32766-12-31 21:30:00.000000", ka_time_zone::south_africa());
    EXPECT_EQ(edge.time(), ka_time(0, 30, 0));
    expect_error("invalid_day", "Invalid julian day: 13688961", date_source, [&] { edge.date(); });
    expect_error("invalid_day", "Invalid julian day: 13688961", date_source, [&] { edge.to_string("%H"); });
    EXPECT_EQ(&ka_time_and_date::min_date(), &ka_date::min_date());
    EXPECT_EQ(&ka_time_and_date::max_date(), &ka_date::max_date());
    EXPECT_EQ(&ka_time_and_date::min_time(), &ka_time::min_time());
    EXPECT_EQ(&ka_time_and_date::max_time(), &ka_time::max_time());
}

}
