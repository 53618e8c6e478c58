#include <algorithm>

#include "exchange_names.h"
#include "exchange_reading.h"
#include "exchange_writing.h"

namespace exchange {

namespace {

constexpr int first_year = 1900;

auto rfc5322_writer(const ka_time_and_date& moment)
{
    const shown_moment shown(moment);
    if (shown.date.astronomical_year < first_year)
        throw_error(ka_invalid_year, {KA_SOURCE, __LINE__}, shown.date.year);
    return [shown](char* out) {
        out = write_number(write_weekday(out, shown.julian_day), shown.date.day);
        out = write_month_year_and_clock(out, shown);
        const auto minutes = static_cast<unsigned int>(shown.ahead < 0 ? -shown.ahead : shown.ahead) / 60;
        out = write_text(out, shown.ahead < 0 ? " -" : " +");
        return write_two_places(write_two_places(out, minutes / 60), minutes % 60);
    };
}

bool sees_blank(const scanner& in) noexcept
{
    return in.sees(' ') || in.sees('\t') || in.sees('\r') || in.sees('\n');
}

/// A comment in brackets, which can hold others.
bool skip_comment(scanner& in) noexcept
{
    const std::size_t start = in.at();
    std::size_t depth = 0;
    while (!in.is_at_end()) {
        const char taken = in.take();
        if (taken == '(')
            ++depth;
        else if (taken == ')' && --depth == 0)
            return true;
        else if (taken == '\\' && !in.is_at_end())
            in.skip(1);
    }
    return in.fails(ka_failure, start, in.at() - start, "comment");
}

bool skip_blanks(scanner& in) noexcept
{
    while (sees_blank(in) || in.sees('(')) {
        if (!in.sees('('))
            in.skip(1);
        else if (!skip_comment(in))
            return false;
    }
    return true;
}

bool needs_blanks(scanner& in) noexcept
{
    if (!sees_blank(in) && !in.sees('('))
        return in.fails(ka_failure, in.at(), 1, "' '");
    return skip_blanks(in);
}

/// Digits, as many as there are up to `most`; how many.
int take_number(scanner& in, int most, int& value) noexcept
{
    int digits = 0;
    for (value = 0; digits < most && in.sees_digit(); ++digits)
        value = 10 * value + in.take_digit();
    return digits;
}

/// Two digits are 1950 to 2049, and three count from 1900 (4.3).
bool read_mail_year(scanner& in, int& year) noexcept
{
    const std::size_t start = in.at();
    const int digits = take_number(in, 5, year);
    if (digits == 2)
        year += year < 50 ? 2000 : 1900;
    else if (digits == 3)
        year += 1900;
    return (digits >= 2 && first_year <= year && year <= ka_gregorian::last_year) ||
           in.fails(ka_invalid_year, start, std::max<std::size_t>(in.at() - start, 1), "year");
}

bool read_mail_date(scanner& in, int& julian_day) noexcept
{
    int day = 0, month = 0, year = 0;
    const std::size_t start = in.at();
    if (take_number(in, 2, day) == 0)
        return in.fails(ka_invalid_day, start, 1, "day");
    const std::size_t day_end = in.at();
    if (!needs_blanks(in) || !in.name(month_names, 12, true, month, ka_invalid_month, "month") ||
        !needs_blanks(in) || !read_mail_year(in, year))
        return false;
    if (day < 1 || day > ka_gregorian::month_length(month + 1, ka_gregorian::is_leap(year)))
        return in.fails(ka_invalid_day, start, day_end - start, "day");
    julian_day = ka_gregorian::day_number(month + 1, day, year);
    return true;
}

/// The date, with its weekday where there is one.
bool read_day(scanner& in, int& julian_day) noexcept
{
    const std::size_t start = in.at();
    if (!in.sees_letter())
        return read_mail_date(in, julian_day);
    int weekday = 0;
    return in.name(weekday_names, 7, true, weekday, ka_invalid_weekday, "weekday") && skip_blanks(in) &&
           in.literal(',', "','") && skip_blanks(in) && read_mail_date(in, julian_day) &&
           is_weekday(in, start, weekday, julian_day);
}

struct named_zone {
    std::string_view name;
    int hours;
};

constexpr named_zone zones[] = {{"UT", 0},   {"GMT", 0},  {"EST", -5}, {"EDT", -4}, {"CST", -6},
                                {"CDT", -5}, {"MST", -7}, {"MDT", -6}, {"PST", -8}, {"PDT", -7}};

bool is_same_word(std::string_view word, std::string_view upper) noexcept
{
    return std::equal(word.begin(), word.end(), upper.begin(), upper.end(),
                      [](char a, char b) { return (a & ~0x20) == b; });
}

bool read_named_zone(scanner& in, told_offset& offset) noexcept
{
    const std::size_t start = in.at();
    const std::string_view word = in.take_word();
    for (const named_zone& zone : zones)
        if (is_same_word(word, zone.name)) {
            offset.seconds = zone.hours * 3600;
            return true;
        }
    // The letters of the military were used with either sign, so they tell nothing. J is none of them.
    offset.is_known = false;
    return (word.size() == 1 && !is_same_word(word, "J")) ||
           in.fails(ka_failure, start, std::max<std::size_t>(word.size(), 1), "zone");
}

bool read_zone(scanner& in, told_offset& offset) noexcept
{
    const bool is_negative = in.takes('-');
    if (!is_negative && !in.takes('+'))
        return read_named_zone(in, offset);
    int hours = 0, minutes = 0;
    if (!in.number(2, 0, 23, hours, ka_failure, "zone") || !in.number(2, 0, 59, minutes, ka_failure, "zone"))
        return false;
    const int seconds = (hours * 60 + minutes) * 60;
    offset.seconds = is_negative ? -seconds : seconds;
    offset.is_known = !is_negative || seconds != 0;
    return true;
}

}

}

using namespace exchange;

std::string ka_rfc5322(const ka_time_and_date& moment)
{
    return string_of([&](char* first, char* last) { return ka_write_rfc5322(first, last, moment); });
}

std::to_chars_result ka_write_rfc5322(char* first, char* last, const ka_time_and_date& moment)
{
    return write_in(first, last, rfc5322_writer(moment));
}

ka_read_result<ka_told_moment> ka_read_rfc5322(std::string_view text, ka_extent extent) noexcept
{
    scanner in(text, extent);
    int julian_day = 0;
    told_time time;
    told_offset offset;
    if (!skip_blanks(in) || !read_day(in, julian_day) || !needs_blanks(in) || !read_clock(in, false, time) ||
        !needs_blanks(in) || !read_zone(in, offset))
        return in.failure();
    if (in.wants_all() && (!skip_blanks(in) || !in.ends()))
        return in.failure();
    return result_of(in.at(), julian_day, time, offset);
}
