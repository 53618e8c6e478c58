// Constructors and setters of all classes: each takes its fields and gives them
// back, or throws the code of what is wrong and leaves the object as it was.
#include <algorithm>
#include <climits>
#include <sys/time.h>
#include <vector>

#include "../tests/support/opened.h"
#include "../tests/support/plain_calendar.h"
#include "stepwise.h"
#include "values.h"

namespace {

using u16 = unsigned short;
using std::string;

/// A number from 0 to `highest`, at times the highest or the next, or any of its type.
template <typename Number>
Number near(input& in, int highest)
{
    const int choice = in.between(0, 7);
    if (choice == 0)
        return in.take<Number>();
    return static_cast<Number>(choice == 1 ? highest + in.between(0, 1) : in.between(0, highest));
}

short any_year(input& in)
{
    return in.between(0, 3) == 0 ? in.take<short>() : static_cast<short>(in.between(1960, 2040));
}

bool is_date(int month, int day, int year)
{
    return is_year(year) && 1 <= month && month <= 12 && 1 <= day &&
           day <= month_length(month, is_leap(year + (year < 0)));
}

bool is(const ka_date& date, int month, int day, int year)
{
    return date.month() == month && date.day() == day && date.year() == year;
}

void check_date(input& in)
{
    const ka_date start = any_date(in);
    ka_date date = start;
    const auto month = near<u16>(in, 12), day = near<u16>(in, 31), weekday = near<u16>(in, 7);
    const short year = any_year(in);
    const bool is_known = is_date(month, day, year);
    agree(result_of([&] { date.date(month, day, year); }) == (is_known ? "" : "invalid_date"), "date");
    agree(is_known ? is(date, month, day, year) : date == start, "date's fields");

    // The order of the checks decides which code leaves.
    const auto which = static_cast<ka_which_one>(near<short>(in, 10) - 5);
    date = start;
    const string code = result_of([&] { date.date(which, weekday, month, year); });
    const bool is_month = 1 <= month && month <= 12, is_weekday = 1 <= weekday && weekday <= 7;
    if (!is_month || !is_year(year) || !is_weekday)
        agree(code == (!is_month        ? "invalid_month"
                       : !is_year(year) ? "invalid_year"
                                        : "invalid_weekday"),
              "n-th weekday's first checks");
    else
        agree(code.empty() ? date.weekday() == weekday && date.month() == month
                           : code == "invalid_week" || code == "invalid_day",
              "n-th weekday");
    agree(code.empty() || date == start, "date after a refused weekday");

    const auto in_range = [](long long number) {
        return 38 <= number && number <= 13688960 ? "" : "invalid_day";
    };
    const int number = in.take<int>() >> in.between(0, 31);
    agree(result_of([&] { date = ka_date(number); }) == in_range(number), "day number");
    const ka_time_period length(in.take<int>());
    agree(result_of([&] { date = start + length; }) == in_range(start.julian_day() + length.to_days()),
          "date and a period");
}

void check_time(input& in)
{
    const ka_time start = any_time(in);
    ka_time time = start;
    const auto h = near<u16>(in, 23), m = near<u16>(in, 59), s = near<u16>(in, 59);
    const auto us = near<unsigned int>(in, 999999);
    std::tm record = {};
    record.tm_hour = h - 65536, record.tm_min = m, record.tm_sec = s + 65536; // the low 16 bits count
    const bool is_time = h < 24 && m < 60 && s < 60 && us < 1000000, by_record = in.one_in(2);
    const string set = result_of([&] { by_record ? time.time(record, us) : time.time(h, m, s, us); });
    agree(set == (is_time ? "" : "invalid_time"), "time");
    agree(is_time
              ? time.hours() == h && time.minutes() == m && time.seconds() == s && time.microseconds() == us
              : time == start,
          "time's fields");
}

bool is(const ka_time_period& period, long long seconds, int microseconds)
{
    return period.whole_seconds() == seconds && period.microseconds() == microseconds;
}

void check_period(input& in)
{
    ka_time_period period(7, 7);
    const auto seconds = in.one_in(4) ? 0 : in.take<long long>();
    int fraction = near<int>(in, 999999);
    if (in.one_in(2) && fraction != INT_MIN)
        fraction = -fraction;
    const bool is_period = -1000000 < fraction && fraction < 1000000 &&
                           (seconds == 0 || fraction == 0 || (seconds < 0) == (fraction < 0));
    timeval record = {};
    record.tv_sec = static_cast<decltype(record.tv_sec)>(seconds);
    record.tv_usec = fraction;
    const bool by_record = in.one_in(2) && record.tv_sec == seconds; // as many bits as it has
    const string set = result_of([&] {
        if (by_record)
            period = record;
        else
            period.time_period(seconds, fraction);
    });
    agree(set == (is_period ? "" : "invalid_time_period"), "period");
    agree(is_period ? is(period, seconds, fraction) : is(period, 7, 7), "period's fields");

    int parts[5];
    const int sign = in.between(-1, 1);
    for (int& part : parts) {
        part = in.take<int>() >> in.between(0, 31);
        if (sign != 0 && (part < 0) != (sign < 0))
            part = ~part;
    }
    const int d = parts[0], h = parts[1], m = parts[2], s = parts[3], us = parts[4];
    const bool is_refused = std::min({d, h, m, s, us}) < 0 && std::max({d, h, m, s, us}) > 0;
    period = ka_time_period(7, 7);
    const string five = result_of([&] { period.time_period(d, h, m, s, us); });
    agree(five == (is_refused ? "invalid_time_period" : ""), "period of five");
    // The seconds of the hours and of the minutes wrap, each for itself.
    const long long wrapping = static_cast<int>(h * 3600ll) + 0ll + static_cast<int>(m * 60ll);
    agree(is_refused ? is(period, 7, 7) : is(period, d * 86400ll + wrapping + s + us / 1000000, us % 1000000),
          "period of five's fields");
}

void check_calendar_date(input& in)
{
    ka_calendar_date point = any_point(in);
    const ka_calendar_date start = point;
    const auto month = near<u16>(in, 12), day = near<u16>(in, 31), weekday = near<u16>(in, 7);
    const bool is_month = 1 <= month && month <= 12;
    agree(result_of([&] { point.month(month); }) == (is_month ? "" : "invalid_month"), "point's month");
    agree(point.month() == (is_month ? month : start.month()), "point's month's field");
    agree(result_of([&] { point.when(ka_time_period(-1, -day % 1000)); }) == "invalid_time_period", "when");
    agree(point.when() == start.when(), "point after a refused when");
    agree(result_of([&] { point.day(day); }) == (day <= 31 ? "" : "invalid_day"), "point's day");
    agree(day <= 31 ? point.day() == day && point.week() == ka_none
                    : point.day() == start.day() && point.week() == start.week(),
          "point's day's field");
    const bool is_weekday = 1 <= weekday && weekday <= 7;
    agree(result_of([&] { point.weekday(ka_last, weekday); }) == (is_weekday ? "" : "invalid_weekday"),
          "point's weekday");
    const short year = any_year(in);
    const string code = result_of([&] { start.date(year); });
    agree(is_year(year)
              ? code.empty() || code == "invalid_date" || code == "invalid_day" || code == "invalid_week"
              : code == "invalid_year",
          "point's date");
}

/// A moment read and set in a zone, and in one that asks the same rules step by step.
void check_clocks(const ka_time& time, const ka_date& date, const ka_time_zone& zone,
                  const ka_time_zone& stepwise)
{
    ka_time_and_date moment;
    moment.time_zone(zone);
    moment.utc_time_and_date(time, date);
    const ka_time_period now = ka_time_period(date.julian_day() * 86400ll) + time;
    agree(moment.utc_time_and_date() == now, "universal moment");
    agree(read(moment) == read_stepwise(now, stepwise), "reading");
    agree(moment.utc_time_and_date() == now, "a reading changes nothing");

    // A rule that refuses leaves the time taken as universal.
    ka_time_period instant = now;
    const string code = result_of([&] { instant = now + stepwise.offset(time, date); });
    moment = ka_time_and_date();
    agree(result_of([&] { moment.time_and_date(time, date, zone); }) == code, "moment");
    agree(moment.utc_time_and_date() == instant, "moment's instant");
    agree(&moment.time_zone() == &zone, "moment's zone");
    const auto offset_in = [&](const ka_time_zone& asked) {
        return result_of([&] { return asked.offset(time, date).to_string(); });
    };
    agree(offset_in(zone) == offset_in(stepwise), "offset");
}

/// The built-in zones go by tables, which are to tell what the rules do: on a date,
/// and at a point of a rule in the same year or next to it.
void check_built_in(const ka_time& time, const ka_date& date)
{
    using zone = ka_time_zone;
    static const struct {
        const zone& built_in;
        stepwise_zone stepwise{built_in};
    } rows[] = {{zone::pacific()},          {zone::greenwich()},        {zone::yukon()},
                {zone::central_european()}, {zone::western_european()}, {zone::south_africa()},
                {zone::israel()},           {zone::newfoundland()}};
    const auto& row = rows[date.julian_day() & 7];
    const zone& of = row.built_in;
    const stepwise_zone& stepwise = row.stepwise;
    check_clocks(time, date, of, stepwise.zone);
    const stepwise_rule& rule = stepwise.rules[time.microseconds() % stepwise.rules.size()];
    const ka_calendar_date& point = time.is_pm() ? rule.start_point() : rule.end_point();
    const ka_time_period step(0, static_cast<int>(time.microseconds() % 3) - 1);
    result_of([&] { check_clocks(point.time() + step, point.date(date.year()), of, stepwise.zone); });
}

/// A moment set and read in a zone of any rules, of which some refuse.
void check_moment(input& in, const own_zone& own, const stepwise_zone& stepwise)
{
    ka_date date = any_date(in);
    if (!in.one_in(6))
        date = ka_date(1, 1, 1989) + ka_time_period(in.between(0, 43 * 365), 0, 0, 0);
    ka_time time = any_time(in);
    // Half of them at a point, or next to one.
    if (in.one_in(2) && !own.points.empty()) {
        const ka_calendar_date& near = own.points[in.take<u16>() % own.points.size()];
        time = near.time() + ka_time_period(0, in.between(-1, 1));
        result_of([&] { date = near.date(date.year()); });
    }
    // Single steps lead out of the range, and to instants below zero.
    if (in.one_in(10))
        for (date = ka_date::min_date(); date.julian_day() > in.between(-2, 0);)
            --date;

    for (std::size_t i = 0; i < own.rules.size(); ++i) {
        const auto is_in_effect = [&](const ka_time_zone_rule& rule) {
            return result_of([&] { return string(rule.is_in_effect(time, date) ? "yes" : "no"); });
        };
        agree(is_in_effect(own.rules[i]) == is_in_effect(stepwise.rules[i]), "rule in effect");
    }
    check_clocks(time, date, own.zone, stepwise.zone);
    check_built_in(time, date);
}

void check_zone(input& in)
{
    const own_zone own(in);
    // The rule that started last stands first; of two that start in a year, the one inserted last.
    std::vector<const ka_time_zone_rule*> expected;
    for (const ka_simple_time_zone_rule& rule : own.rules)
        if (expected.size() < 7)
            expected.insert(expected.begin(), &rule);
    std::stable_sort(expected.begin(), expected.end(), [](auto a, auto b) { return *b < *a; });
    expected.resize(7);
    for (std::size_t slot = 0; slot < 7; ++slot)
        agree(opened_zone::rule_in_slot(own.zone, static_cast<int>(slot)) == expected[slot],
              "rule in a slot");
    const auto index = in.take<int>();
    agree((0 <= index && index < 7) || opened_zone::rule_in_slot(own.zone, index) == nullptr,
          "rule outside the slots");

    const stepwise_zone stepwise(own);
    while (!in.is_empty())
        check_moment(in, own, stepwise);
}

}

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* bytes, std::size_t size)
{
    input in(bytes, size);
    switch (in.between(0, 3)) {
        case 0:
            check_date(in);
            break;
        case 1:
            check_time(in);
            check_period(in);
            break;
        case 2:
            check_calendar_date(in);
            break;
        default:
            check_zone(in);
    }
    return 0;
}
