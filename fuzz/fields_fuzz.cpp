// Constructors and setters of all classes: each takes its fields and gives them
// back, or throws the code of what is wrong and leaves the object as it was.
#include <climits>
#include <initializer_list>
#include <memory>
#include <vector>

#include <time/time_varnel.h>

#include "input.h"

namespace {

using u16 = unsigned short;

constexpr int none = -1;

/// The code that an operation throws, or `none`. Nothing else may leave it.
int thrown(auto operation)
{
    try {
        operation();
    } catch (const ka_time_varnel_error& error) {
        agree(ka_time_varnel_error::symbol(error.code()) != nullptr, "code without a symbol");
        return error.code();
    }
    return none;
}

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

bool is_year(int year) { return -4713 <= year && year <= 32766 && year != 0; }
bool is_leap(int year) { return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0); }

bool is_date(int month, int day, int year)
{
    constexpr int lengths[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    return is_year(year) && 1 <= month && month <= 12 && 1 <= day &&
           day <= lengths[month - 1] + (month == 2 && is_leap(year + (year < 0)));
}

bool is(const ka_date& date, int month, int day, int year)
{
    return date.month() == month && date.day() == day && date.year() == year;
}

ka_date any_date(input& in) { return ka_date(in.between(38, 13688960)); }
ka_time any_time(input& in) { return ka_time(ka_time_period(in.between(0, 86399), in.between(0, 999999))); }

void check_date(input& in)
{
    const ka_date start = any_date(in);
    ka_date date = start;
    const auto month = near<u16>(in, 12), day = near<u16>(in, 31), weekday = near<u16>(in, 7);
    const short year = any_year(in);
    agree(thrown([&] { date.date(month, day, year); }) == (is_date(month, day, year) ? none : 3), "date");
    agree(is_date(month, day, year) ? is(date, month, day, year) : date == start, "date's fields");

    // The order of the checks decides which code leaves.
    const auto which = static_cast<ka_which_one>(near<short>(in, 10) - 5);
    date = start;
    const int code = thrown([&] { date.date(which, weekday, month, year); });
    const bool is_weekday = 1 <= weekday && weekday <= 7;
    if (month < 1 || month > 12 || !is_year(year) || !is_weekday)
        agree(code == (month < 1 || month > 12 ? 7 : !is_year(year) ? 8 : 5), "n-th weekday's first checks");
    else
        agree(code == none ? date.weekday() == weekday && date.month() == month : code == 6 || code == 4,
              "n-th weekday");
    agree(code == none || date == start, "date after a refused weekday");

    const int number = in.take<int>();
    const bool is_number = 38 <= number && number <= 13688960;
    agree(thrown([&] { date = ka_date(number); }) == (is_number ? none : 4), "day number");
    agree(thrown([&] { start.next(weekday); }) == (start.julian_day() == 13688960 ? 4
                                                   : is_weekday                   ? none
                                                                                  : 5),
          "next");
    agree(is_weekday || thrown([&] { start.week_of_year(weekday); }) == 5, "week of the year");
    const int back = thrown([&] { start.previous(weekday); });
    agree(back == (is_weekday ? none : 5) || (start.julian_day() < 45 && back == 4), "previous");
    const ka_time_period moved(in.take<int>());
    const long long reached = start.julian_day() + moved.to_days();
    agree(thrown([&] { date = start + moved; }) == (38 <= reached && reached <= 13688960 ? none : 4),
          "moved date");
}

void check_time_and_period(input& in)
{
    const ka_time start = any_time(in);
    ka_time time = start;
    const auto h = near<u16>(in, 23), m = near<u16>(in, 59), s = near<u16>(in, 59);
    const auto us = near<unsigned int>(in, 999999);
    const bool is_time = h < 24 && m < 60 && s < 60 && us < 1000000;
    agree(thrown([&] { time.time(h, m, s, us); }) == (is_time ? none : 1), "time");
    agree(is_time
              ? time.hours() == h && time.minutes() == m && time.seconds() == s && time.microseconds() == us
              : time == start,
          "time's fields");

    ka_time_period period(7, 7);
    const auto seconds = in.take<long long>();
    const int fraction = near<short>(in, 1000001) * (in.between(0, 1) == 0 ? 1 : -1);
    const bool is_period = -1000000 < fraction && fraction < 1000000 &&
                           (seconds == 0 || fraction == 0 || (seconds < 0) == (fraction < 0));
    agree(thrown([&] { period.time_period(seconds, fraction); }) == (is_period ? none : 2), "period");
    agree(period == (is_period ? ka_time_period(seconds, fraction) : ka_time_period(7, 7)),
          "period's fields");
    int parts[5], below = 0, above = 0;
    for (int& part : parts) {
        part = near<short>(in, 8) - 4;
        below += part < 0;
        above += part > 0;
    }
    period = ka_time_period(7, 7);
    const int code = thrown([&] { period.time_period(parts[0], parts[1], parts[2], parts[3], parts[4]); });
    agree(code == (below != 0 && above != 0 ? 2 : none), "period of five");
    agree(code == none || period == ka_time_period(7, 7), "period of five's fields");
}

ka_calendar_date any_point(input& in)
{
    const ka_time_period when(in.between(0, 200000), in.between(0, 1));
    const auto month = static_cast<u16>(in.between(1, 12));
    ka_calendar_date point(when, month, static_cast<u16>(in.between(1, 31)));
    if (in.between(0, 2) != 0)
        point.weekday(static_cast<ka_which_one>(in.between(-7, 7)), static_cast<u16>(in.between(1, 7)));
    return point;
}

void check_calendar_date(input& in)
{
    ka_calendar_date point = any_point(in);
    const ka_calendar_date start = point;
    const auto month = near<u16>(in, 12), day = near<u16>(in, 31), weekday = near<u16>(in, 7);
    const bool is_month = 1 <= month && month <= 12;
    agree(thrown([&] { point.month(month); }) == (is_month ? none : 7), "point's month");
    agree(point.month() == (is_month ? month : start.month()), "point's month's field");
    agree(thrown([&] { point.when(ka_time_period(-1, -day % 1000)); }) == 2 && point.when() == start.when(),
          "when");
    agree(thrown([&] { point.day(day); }) == (day <= 31 ? none : 4), "point's day");
    agree(day <= 31 ? point.day() == day && point.week() == ka_none
                    : point.day() == start.day() && point.week() == start.week(),
          "point's day's field");
    const bool is_weekday = 1 <= weekday && weekday <= 7;
    agree(thrown([&] { point.weekday(ka_last, weekday); }) == (is_weekday ? none : 5), "point's weekday");
    const short year = any_year(in);
    const int code = thrown([&] { start.date(year); });
    agree(is_year(year) ? code == none || code == 3 || code == 4 || code == 6 : code == 8, "point's date");
}

struct open_zone : ka_time_zone {
    using ka_time_zone::ka_time_zone, ka_time_zone::rule;
};

/// A moment set in a zone of any rules, of which some refuse.
void check_moment(input& in)
{
    std::vector<ka_calendar_date> points;
    std::vector<std::unique_ptr<ka_simple_time_zone_rule>> rules;
    for (int count = 0; count < 4; ++count)
        points.push_back(any_point(in));
    open_zone zone(ka_time_period(in.between(-90000, 90000)), "Z");
    const int count = in.between(0, 8);
    for (int held = 0; held < count; ++held) {
        rules.push_back(std::make_unique<ka_simple_time_zone_rule>(
            points[static_cast<unsigned int>(in.between(0, 3))],
            points[static_cast<unsigned int>(in.between(0, 3))], any_year(in), any_year(in),
            ka_time_period(in.between(-90000, 90000))));
        agree(zone.insert(*rules.back()) == (held < 7), "insert");
    }
    const int index = near<int>(in, 7);
    const ka_time_zone_rule* (ka_time_zone::*const in_slot)(int) const = &open_zone::rule;
    agree(((zone.*in_slot)(index) != nullptr) == (0 <= index && index < std::min(count, 7)),
          "rule in a slot");

    const ka_date date(static_cast<u16>(in.between(1, 12)), static_cast<u16>(in.between(1, 28)),
                       static_cast<short>(in.between(1960, 2040)));
    const ka_time time = any_time(in);
    const ka_time_period local(ka_time_period(date.julian_day(), 0, 0, 0) +
                               static_cast<ka_time_period>(time));
    ka_time_and_date moment;
    int code = thrown([&] { moment.time_and_date(time, date, zone); });
    agree(&moment.time_zone() == &zone, "zone of a moment");
    if (code != none)
        return agree(moment.utc_time_and_date() == local && thrown([&] { zone.is_dst(time, date); }) == code,
                     "moment that a rule refuses");
    agree(moment.utc_time_and_date() == local + zone.offset(time, date), "moment");
    const ka_time_period instant = moment.utc_time_and_date();
    code = thrown([&] {
        const ka_time shown = moment.time();
        agree(moment.is_dst() || (shown == moment.std_time() && moment.date() == moment.std_date()),
              "standard time");
        agree(shown == moment.std_time() + zone.dst_adjustment(moment.std_time(), moment.std_date()),
              "local time");
    });
    agree(code == none || code == thrown([&] { moment.is_dst(); }), "reading that a rule refuses");
    agree(moment.utc_time_and_date() == instant, "reading changes nothing");

    std::tm fields = {};
    fields.tm_year = in.between(-7000, 40000);
    fields.tm_mon = in.between(-1, 12);
    fields.tm_mday = in.between(0, 32);
    fields.tm_hour = in.between(0, 24);
    moment.time_zone(ka_time_zone::utc());
    const bool is_tm_date = fields.tm_year + 1900 <= SHRT_MAX &&
                            is_date(fields.tm_mon + 1, fields.tm_mday, fields.tm_year + 1900);
    code = thrown([&] { moment = fields; });
    if (fields.tm_year + 1900 <= SHRT_MAX)
        agree(code == (!is_tm_date ? 3 : fields.tm_hour < 24 ? none : 1), "moment of a record");
    agree(code == none ? is(moment.date(), fields.tm_mon + 1, fields.tm_mday, fields.tm_year + 1900)
                       : moment.utc_time_and_date() == instant,
          "moment of a record's fields");
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
            check_time_and_period(in);
            break;
        case 2:
            check_calendar_date(in);
            break;
        default:
            check_moment(in);
    }
    return 0;
}
