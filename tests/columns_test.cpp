#include <algorithm>
#include <climits>
#include <deque>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <time/chrono.h>
#include <time/columns.h>
#include <time/world.h>

#include "../examples/zones.h"
#include "expect_error.h"
#include "printers.h"

// Columns against moments, row by row, in zones of each kind.

static void PrintTo(const ka_clock_fields& fields, std::ostream* out)
{
    *out << fields.year << '-' << fields.month << '-' << fields.day << ' ' << fields.hour << ':'
         << fields.minute << ':' << fields.second << '.' << fields.microsecond << ", weekday "
         << fields.weekday << ", offset " << fields.offset << (fields.is_dst ? ", daylight time" : "");
}

namespace {

using std::chrono::microseconds;

constexpr ka_time_period hour(3600), day(86400), microsecond(0, 1);
constexpr ka_time_period none;

template <typename Value>
struct row {
    Value value = {};
    std::optional<int> code;

    bool operator==(const row&) const = default;

    friend std::ostream& operator<<(std::ostream& out, const row& shown)
    {
        if (shown.code)
            return out << ka_time_varnel_error::symbol(*shown.code);
        return out << testing::PrintToString(shown.value);
    }
};

/// What an operation gives, or the code that it throws.
template <typename Operation>
auto row_of(Operation operation) -> row<decltype(operation())>
{
    try {
        return {operation(), std::nullopt};
    } catch (const ka_time_varnel_error& error) {
        return {{}, error.code()};
    }
}

ka_clock_fields fields_of(const ka_date& date, const ka_time& time)
{
    return {date.year(),    date.month(),        date.day(), time.hours(),   time.minutes(),
            time.seconds(), time.microseconds(), false,      date.weekday(), 0};
}

ka_clock_fields fields_by_moment(const ka_time_zone& zone, long long instant)
{
    const ka_time_and_date moment =
        ka_to_time_and_date(std::chrono::sys_time<microseconds>(microseconds(instant)), zone);
    ka_clock_fields fields = fields_of(moment.date(), moment.time());
    fields.is_dst = moment.is_dst();
    fields.offset = ka_to_microseconds(ka_offset(moment)).count();
    return fields;
}

long long instant_of(const ka_time_and_date& moment)
{
    return ka_to_sys_time(moment).time_since_epoch().count();
}

long long instant_by_moment(const ka_time_zone& zone, const ka_clock_fields& fields, ka_local_choice choice)
{
    const ka_date date(fields.month, fields.day, fields.year);
    const ka_time time(fields.hour, fields.minute, fields.second, fields.microsecond);
    return instant_of(ka_local_time(zone, time, date, choice));
}

/// All rows of a column, going on behind those that are refused.
template <typename To, typename From, typename Operation>
std::vector<row<To>> all_rows(const std::vector<From>& from, Operation operation)
{
    std::vector<To> to(from.size());
    std::vector<row<To>> rows(from.size());
    for (std::size_t at = 0; at < from.size(); ++at) {
        const ka_column_result result =
            operation(std::span<const From>(from).subspan(at), std::span<To>(to).subspan(at));
        for (std::size_t behind = at + result.done; at < behind; ++at)
            rows[at].value = to[at];
        if (at < from.size())
            rows[at].code = result.code;
    }
    return rows;
}

void expect_as_moments(const ka_time_zone& zone, const std::vector<long long>& instants)
{
    const auto fields = all_rows<ka_clock_fields>(
        instants, [&](auto from, auto to) { return ka_local_fields(zone, from, to); });
    const auto offsets =
        all_rows<long long>(instants, [&](auto from, auto to) { return ka_local_offsets(zone, from, to); });
    for (std::size_t i = 0; i < instants.size(); ++i) {
        const auto expected = row_of([&] { return fields_by_moment(zone, instants[i]); });
        ASSERT_EQ(fields[i], expected) << instants[i];
        ASSERT_EQ(offsets[i].value, expected.value.offset) << instants[i];
        ASSERT_EQ(offsets[i].code, expected.code) << instants[i];
    }
}

void expect_back_as_moments(const ka_time_zone& zone, const std::vector<ka_clock_fields>& fields)
{
    using enum ka_local_choice;
    for (const ka_local_choice choice : {compatible, earlier, later, refuse}) {
        const auto instants = all_rows<long long>(
            fields, [&](auto from, auto to) { return ka_instants(zone, from, choice, to); });
        for (std::size_t i = 0; i < fields.size(); ++i) {
            const auto expected = row_of([&] { return instant_by_moment(zone, fields[i], choice); });
            ASSERT_EQ(instants[i], expected)
                << testing::PrintToString(fields[i]) << ", choice " << static_cast<int>(choice);
        }
    }
}

/// On the tenth of a month, from noon to 18:00; refuses all of 2003.
struct afternoons : ka_time_zone_rule {
    explicit afternoons(const ka_calendar_date& point) : ka_time_zone_rule(point, point, 2000, 2010, hour / 2)
    {}
    bool is_in_effect(const ka_time& time, const ka_date& date) const override
    {
        if (date.year() == 2003)
            throw ka_time_varnel_error(ka_invalid_year, "2003");
        return date.day() == 10 && ka_time(12, 0, 0) <= time && time < ka_time(18, 0, 0);
    }
};

struct sample {
    std::string name;
    const ka_time_zone& zone;
};

/// A zone of each kind, and what is odd in one.
class samples {
public:
    samples()
    {
        for (const named_zone& built_in : zones)
            all.push_back({built_in.name, built_in.zone()});
        for (const char* const name : {"America/New_York", "Europe/Dublin", "Africa/Casablanca",
                                       "Australia/Lord_Howe", "Pacific/Apia", "Asia/Kathmandu", "UTC"})
            all.push_back({name, ka_zone(name)});
        all.push_back({"TZ string", ka_posix_zone("<-04>4<-03>,M9.1.6/24,M4.1.6/24")});
        add("none", 5 * hour);
        add("weekdays", 8 * hour, {2 * hour, 3, ka_second, 1}, {hour, 11, ka_first, 1}, 2007, 0, hour);
        add("over New Year", -10 * hour, {2 * hour, 10, ka_first, 1}, {2 * hour, 4, ka_first, 1}, -4713, 0,
            hour / 2);
        add("fixed days", none, {hour / 2, 6, 1}, {hour, 6, 30}, 1990, 2030, 30 * hour);
        add("a day that is not in all years", none, {none, 2, 29}, {none, 10, 1}, 1990, 2030, hour);
        add("a week that is not in all months", none, {none, 3, ka_fifth, 1}, {none, 9, 1}, 0, 0, hour);
        add("fractions", hour + 7 * microsecond, {3 * microsecond, 5, 5}, {none, 9, 9}, 0, 0, -microsecond);
        add("years ahead", none, {none, 5, 5}, {none, 9, 9}, 2000, 2001, 500 * day);
        add("far ahead", none, {none, 5, 5}, {none, 9, 9}, 2000, 2001, ka_time_period(LLONG_MAX));
        add("millennia west", ka_time_period(100'000'000'000));
        add("at the end of 64 bits", ka_time_period(9'000'000'000'000));
        add("at the other end", ka_time_period(-9'200'000'000'000));
        const ka_calendar_date& point = points.emplace_back(none, 1, 1);
        afternoons& of_host = hosts.emplace_back(point);
        add("a host's own rule", -5 * hour).insert(of_host);
    }

    std::vector<sample> all;

private:
    ka_time_zone& add(const char* name, const ka_time_period& offset)
    {
        all.push_back({name, own.emplace_back(offset)});
        return own.back();
    }
    void add(const char* name, const ka_time_period& offset, const ka_calendar_date& start,
             const ka_calendar_date& end, short first_year, short last_year, const ka_time_period& adjustment)
    {
        add(name, offset)
            .insert(rules.emplace_back(points.emplace_back(start), points.emplace_back(end), first_year,
                                       last_year, adjustment));
    }

    std::deque<ka_time_zone> own;
    std::deque<ka_calendar_date> points;
    std::deque<ka_simple_time_zone_rule> rules;
    std::deque<afternoons> hosts;
};

std::vector<long long> random_instants(std::size_t count)
{
    constexpr long long year = 31556952000000;
    std::mt19937_64 random;
    std::vector<long long> instants;
    for (std::size_t i = 0; i < count; ++i) {
        // Of our own time, of the range and somewhat more, and of all that there is.
        const long long spans[][2] = {
            {-20 * year, 90 * year}, {-6800 * year, 31000 * year}, {LLONG_MIN / 2, LLONG_MAX / 2}};
        const auto& [low, high] = spans[i % 16 == 0 ? 2 : i % 4 == 0];
        instants.push_back(std::uniform_int_distribution<long long>(low, high)(random));
    }
    return instants;
}

/// Each side of each change of some years, of both ends of the range, and of 64 bits.
std::vector<long long> edges(const ka_time_zone& zone)
{
    std::vector<long long> instants{LLONG_MIN, LLONG_MIN + 1, LLONG_MAX - 1, LLONG_MAX, LLONG_MIN, -1, 0, 1};
    for (const int date : {38, 13688960})
        for (const ka_time_period& from : {none, day})
            for (const ka_time_period& shift : {-hour, none, hour}) {
                const ka_time_period time = ka_time_period(date * 86400ll) + from + shift + zone.offset() -
                                            ka_time_period(2440588, 0, 0, 0);
                if (const auto at = row_of([&] { return ka_to_microseconds(time).count(); }); !at.code)
                    instants.insert(instants.end(), {at.value - 1, at.value});
            }
    row_of([&] {
        ka_time_and_date at(ka_time(), {1, 1, 1998}, zone);
        for (int count = 0; count < 20; ++count) {
            const auto change = ka_next_change(zone, at);
            if (!change)
                break;
            at = change->moment;
            for (const long long shift : {-3600000000ll, -1ll, 0ll, 1ll, 3600000000ll})
                instants.push_back(instant_of(at) + shift);
        }
        return 0;
    });
    return instants;
}

}

TEST(columns, read_as_moments_do)
{
    std::vector<long long> random = random_instants(4000);
    std::vector<long long> sorted = random;
    std::sort(sorted.begin(), sorted.end());
    for (const auto& [name, zone] : samples().all) {
        SCOPED_TRACE(name);
        ASSERT_NO_FATAL_FAILURE(expect_as_moments(zone, random));
        ASSERT_NO_FATAL_FAILURE(expect_as_moments(zone, sorted));
        ASSERT_NO_FATAL_FAILURE(expect_as_moments(zone, edges(zone)));
    }
}

TEST(columns, mean_what_local_times_mean)
{
    for (const sample& of : samples().all) {
        SCOPED_TRACE(of.name);
        const ka_time_zone& zone = of.zone;
        std::vector<ka_clock_fields> fields;
        // What reads at the changes, and what they skip and repeat.
        for (const long long instant : edges(zone))
            for (const ka_time_period& shift : {-hour / 2, none, hour / 2})
                if (const auto read = row_of([&] { return fields_by_moment(zone, instant); }); !read.code) {
                    const ka_time_period local = ka_date(read.value.month, read.value.day, read.value.year) -
                                                 ka_date(38) + 38 * day +
                                                 ka_time(read.value.hour, read.value.minute,
                                                         read.value.second, read.value.microsecond) +
                                                 shift;
                    if (ka_date::is_julian_day(local.to_days()))
                        fields.push_back(fields_of(local.to_days(), local));
                }
        for (const long long instant : random_instants(300))
            if (const auto read = row_of([&] { return fields_by_moment(zone, instant); }); !read.code)
                fields.push_back(read.value);
        ASSERT_NO_FATAL_FAILURE(expect_back_as_moments(zone, fields));
    }
}

TEST(columns, fields_that_are_none)
{
    const ka_clock_fields good = fields_by_moment(ka_time_zone::pacific(), 1720117718000123);
    std::vector<ka_clock_fields> fields(11, good);
    fields[1].year = 0;
    fields[2].month = 13;
    fields[3].day = 0;
    fields[4].hour = 24;
    fields[5].minute = 60;
    fields[6].second = 65535;
    fields[7].microsecond = UINT_MAX;
    fields[8] = {32766, 12, 31, 23, 59, 59, 999999, true, 9, LLONG_MIN};
    fields[9] = {-4713, 1, 1, 0, 0, 0, 0, true, 0, LLONG_MAX};
    ASSERT_NO_FATAL_FAILURE(expect_back_as_moments(ka_time_zone::pacific(), fields));
}

TEST(columns, an_offset_beyond_64_bits)
{
    const ka_time_zone zone(ka_time_period(LLONG_MAX));
    const long long instants[] = {0};
    long long offsets[] = {-7};
    EXPECT_EQ(ka_local_offsets(zone, instants, offsets).code, ka_invalid_time_period);
    const ka_clock_fields fields[] = {fields_of({7, 4, 2024}, ka_time())};
    EXPECT_EQ(ka_instants(zone, fields, ka_local_choice::later, offsets).code, ka_invalid_time_period);
    EXPECT_EQ(offsets[0], -7);
}

TEST(columns, lengths_that_differ)
{
    const long long instants[] = {1, 2, 3};
    long long offsets[] = {-7, -7};
    ka_clock_fields fields[4];
    const ka_time_zone& utc = ka_time_zone::utc();
    expect_error("failure", "Columns of 3 and 2 rows", "time/src/clock/columns",
                 [&] { (void)ka_local_offsets(utc, instants, offsets); });
    EXPECT_EQ(offsets[0], -7);
    expect_error("failure", "Columns of 3 and 4 rows", "time/src/clock/columns",
                 [&] { (void)ka_local_fields(utc, instants, fields); });
    expect_error("failure", "Columns of 4 and 2 rows", "time/src/clock/columns",
                 [&] { (void)ka_instants(utc, fields, ka_local_choice::later, offsets); });
    EXPECT_TRUE(ka_local_offsets(utc, {}, {}));
}

TEST(columns, what_a_rule_throws_passes_through)
{
    struct failing : ka_time_zone_rule {
        explicit failing(const ka_calendar_date& point) : ka_time_zone_rule(point, point, 0, 0, hour) {}
        bool is_in_effect(const ka_time&, const ka_date& date) const override
        {
            return date.year() == 1971 ? throw std::runtime_error("1971") : false;
        }
    };
    const ka_calendar_date point(none, 1, 1);
    failing rule(point);
    ka_time_zone zone(hour);
    zone.insert(rule);
    const long long instants[] = {0, 1, 31'540'000'000'000, 2};
    long long offsets[] = {-7, -7, -7, -7};
    EXPECT_THROW((void)ka_local_offsets(zone, instants, offsets), std::runtime_error);
    EXPECT_EQ(offsets[1], 3'600'000'000);
    EXPECT_EQ(offsets[2], -7);
}
