// Prints any value by any format, beside a plain engine with the calendar of
// std::chrono. Names, layouts and local readings are taken from the library.
#include <bit>
#include <chrono>
#include <new>
#include <optional>
#include <stdexcept>
#include <utility>

#include <time/language.h>

#include "read_back.h"
#include "values.h"

namespace {

using std::string;

/// Without a date, month, day of the month and year are 0.
struct fields {
    explicit fields(const ka_time& time)
    {
        const ka_time_period since_midnight = time;
        second = since_midnight.to_seconds();
        microsecond = since_midnight.microseconds();
    }

    fields(const ka_time& time, const ka_date& day, const string& zone_name) : fields(time)
    {
        const int number = day.julian_day();
        if (38 <= number && number <= 13688960)
            take(std::chrono::sys_days(std::chrono::days(number - 2440588)));
        else
            take_beyond(day);
        if (year != 0)
            zone = zone_name;
    }

    void take(std::chrono::sys_days date)
    {
        const std::chrono::year_month_day parts(date);
        const int astronomical_year{parts.year()};
        year = astronomical_year < 1 ? astronomical_year - 1 : astronomical_year;
        month = static_cast<int>(unsigned{parts.month()});
        day_of_month = static_cast<int>(unsigned{parts.day()});
        day_of_year = static_cast<int>((date - std::chrono::sys_days(parts.year() / 1 / 1)).count());
        weekday = static_cast<int>(std::chrono::weekday(date).c_encoding());
        is_date = true;
    }

    /// Beyond the range the parts are those that the library tells, and they may be a date's again.
    void take_beyond(const ka_date& day)
    {
        year = day.year();
        month = day.month();
        day_of_month = day.day();
        const std::chrono::year_month_day parts(std::chrono::year(year < 0 ? year + 1 : year),
                                                std::chrono::month(day.month()), std::chrono::day(day.day()));
        if (-4713 <= year && year <= 32766 && year != 0 && parts.ok())
            take(parts);
    }

    bool is_date = false;
    string zone;
    int second, microsecond, year = 0, month = 0, day_of_month = 0, day_of_year = 0, weekday = 0;
};

string padded(string text, std::size_t width, char fill, bool is_left = false)
{
    while (text.size() < width)
        text.insert(is_left ? text.size() : 0, 1, fill);
    return text;
}

string number(int value, std::size_t width = 1, char fill = '0')
{
    return string(value < 0 ? "-" : "") + padded(std::to_string(std::abs(value)), width, fill);
}

string printed(const string& format, const fields& v);

string printed(char letter, const fields& v)
{
    if (!v.is_date && string("aAjUwW").find(letter) != string::npos)
        throw ka_time_varnel_error(ka_invalid_date, "");
    if (v.month == 0 && (letter == 'b' || letter == 'B'))
        throw ka_time_varnel_error(ka_invalid_month, "");
    const int hour = v.second / 3600;
    const int hour_of_12 = (hour + 11) % 12 + 1;
    const auto month = static_cast<unsigned short>(v.month);
    const auto weekday = static_cast<unsigned short>(v.weekday + 1);
    // clang-format off
    switch (letter) {
        case 'a': return ka_date::weekday_abbreviation(weekday);
        case 'A': return ka_date::weekday_name(weekday);
        case 'b': return ka_date::month_abbreviation(month);
        case 'B': return ka_date::month_name(month);
        case 'c': return printed(ka_language::user().time_and_date_layout(), v);
        case 'C': return number(v.year / 100);
        case 'd': return number(v.day_of_month, 2);
        case 'D': return printed("%m/%d/%y", v);
        case 'e': return number(v.day_of_month, 2, ' ');
        case 'f': return number(std::abs(v.year)) + (v.year < 1000 ? printed(" %P", v) : "");
        case 'H': return number(hour, 2);
        case 'I': return number(hour_of_12, 2);
        case 'j': return number(v.day_of_year + 1, 3);
        case 'k': return number(hour, 2, ' ');
        case 'l': return number(hour_of_12, 2, ' ');
        case 'm': return number(v.month, 2);
        case 'M': return number(v.second / 60 % 60, 2);
        case 'n': return "\n";
        case 'p': return hour < 12 ? ka_time::am_name() : ka_time::pm_name();
        case 'P': return v.year < 0 ? ka_date::bc_name() : ka_date::ad_name();
        case 'q': return number(v.microsecond, 6);
        case 'r': return printed("%I:%M:%S %p", v);
        case 's': return number(std::abs(v.year));
        case 'S': return number(v.second % 60, 2);
        case 't': return "\t";
        case 'T': return printed("%H:%M:%S", v);
        case 'U': return number((v.day_of_year + 7 - v.weekday) / 7, 2);
        case 'w': return number(v.weekday);
        case 'W': return number((v.day_of_year + 7 - (v.weekday + 6) % 7) / 7, 2);
        case 'x': return printed(ka_language::user().date_layout(), v);
        case 'X': return printed(ka_language::user().time_layout(), v);
        case 'y': return number(v.year % 100, 2);
        case 'Y': return number(v.year);
        case 'Z': return v.zone;
        default: return string(1, letter);
    }
    // clang-format on
}

string printed(const string& format, const fields& v)
{
    string text;
    for (std::size_t i = 0; i < format.size(); ++i) {
        if (format[i] != '%') {
            text += format[i];
            continue;
        }
        const char flag = format.c_str()[i + 1];
        const std::size_t width = i + (flag == '-' || flag == '0' ? 2 : 1);
        i = std::min(format.find_first_not_of("0123456789", width), format.size());
        const int least = std::atoi(format.substr(width, i - width).c_str());
        text += padded(printed(format.c_str()[i], v), static_cast<std::size_t>(least),
                       flag == '0' ? '0' : ' ', flag == '-');
    }
    return text;
}

/// What is left of the input, a quarter of it codes, with no number too long for a small text.
string format_of(input& in)
{
    string format;
    int digits = 0;
    for (const char letter : in.rest()) {
        digits = '0' <= letter && letter <= '9' ? digits + 1 : 0;
        if (digits <= 3)
            format += static_cast<unsigned char>(letter) < 0xc0 ? letter : '%';
    }
    return format;
}

/// Prints a value in all the ways there are, after an attempt that must leave
/// no trace, and reads the text back; `read` gives what is in the value.
template <typename Value, typename Reader>
void check(const Value& value, const string& format, const Reader& read, bool is_read_back = true)
{
    const auto plain = [&](const string& shown) { return result_of([&] { return printed(shown, read()); }); };
    Value::default_format(format);
    bool is_refused = !plain({}).empty();
    const char* const endless = format.size() % 2 != 0 ? "%18446744073709551615d" : "%-9223372036854775808d";
    try {
        result_of([&] { return value.to_string(endless); });
    } catch (const std::length_error&) {
        is_refused = true;
    } catch (const std::bad_alloc&) {
        is_refused = true;
    }
    agree(is_refused, "a text that no memory could hold");
    agree(result_of([&] { return value.to_string(); }) == plain(format), "the text of the default format");
    agree(result_of([&] { return value.to_string(format.c_str()); }) == plain(format.c_str()), "the text");

    std::optional<string> text;
    try {
        text = printed(format, read());
    } catch (const ka_time_varnel_error&) {
        text = std::nullopt;
    }
    check_pattern(value, format, text, format.size() * 3 % 97, is_read_back);
}

/// A date as `++` and `--` can leave it, up to some thousand million steps away.
ka_date stepped_to(int julian_day)
{
    static_assert(sizeof(ka_date) == sizeof julian_day);
    return std::bit_cast<ka_date>(julian_day);
}

const ka_time_zone& zone_of(input& in, std::optional<own_zone>& own)
{
    using zones = ka_time_zone;
    constexpr const zones& (*built_in[])() noexcept = {
        zones::utc,        zones::greenwich,    zones::central_european, zones::western_european,
        zones::portuguese, zones::south_africa, zones::pacific,          zones::mountain,
        zones::central,    zones::eastern,      zones::atlantic,         zones::newfoundland,
        zones::yukon,      zones::aleutian,     zones::israel,           zones::indiana,
        zones::hawaii};
    const std::size_t index = in.take<unsigned char>() % (2 * std::size(built_in));
    return index < std::size(built_in) ? built_in[index]() : own.emplace(in).zone;
}

}

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* bytes, std::size_t size)
{
    input in(bytes, size);
    const auto way = in.take<unsigned char>();
    const int kind = way % 4;
    const auto any_format = [&] { return way / 4 % 2 != 0 ? complete_format(in) : format_of(in); };
    std::optional<own_zone> own;
    const ka_time_zone& zone = zone_of(in, own);
    ka_time_and_date::default_time_zone(zone);
    const string name(in.take<unsigned char>(), 'N');
    ka_date::bc_name(name);
    ka_time::pm_name(name);
    const ka_time time = any_time(in);
    ka_date date = any_date(in);

    if (kind == 0) {
        check(time, any_format(), [&] { return fields(time); });
    } else if (kind == 1) {
        const auto beyond = in.take<signed char>();
        if (beyond % 4 == 3)
            date = stepped_to(in.take<int>());
        else if (beyond > 0)
            ++date;
        else if (beyond < 0)
            --date;
        const bool is_in_range = 38 <= date.julian_day() && date.julian_day() <= 13688960;
        check(
            date, any_format(), [&] { return fields({}, date, zone.name()); }, is_in_range);
    } else {
        ka_time_and_date moment;
        moment.utc_time_and_date(time, date);
        if (kind == 3)
            moment.utc_time_and_date(ka_time_period(in.take<long long>()));
        check(
            moment, any_format(),
            [&] {
                const string name_then = moment.is_dst() ? zone.dst_name() : zone.name();
                return fields(moment.time(), moment.date(), name_then);
            },
            !own);
    }
    ka_time_and_date::default_time_zone(ka_time_zone::utc());
    return 0;
}
