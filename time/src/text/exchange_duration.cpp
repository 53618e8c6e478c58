#include <algorithm>
#include <climits>
#include <iterator>

#include "exchange_reading.h"
#include "exchange_sum.h"
#include "exchange_writing.h"

namespace exchange {

namespace {

/// A number and its unit, as far as a period has a part in it.
char* write_part(char* out, long long number, char unit) noexcept
{
    if (number == 0)
        return out;
    if (number < 0)
        out = write_character(out, '-');
    const auto bits = static_cast<unsigned long long>(number);
    return write_character(write_number(out, number < 0 ? 0 - bits : bits), unit);
}

char* write_seconds(char* out, long long seconds, int microseconds) noexcept
{
    if (seconds == 0 && microseconds == 0)
        return out;
    if (seconds < 0 || microseconds < 0)
        out = write_character(out, '-');
    out = write_number(out, static_cast<unsigned long long>(seconds < 0 ? -seconds : seconds));
    if (microseconds != 0) {
        *out = '.';
        out = write_six_places(out + 1,
                               static_cast<unsigned int>(microseconds < 0 ? -microseconds : microseconds));
        while (out[-1] == '0')
            --out;
    }
    return write_character(out, 'S');
}

auto iso_duration_writer(const ka_time_period& period)
{
    return [seconds = period.whole_seconds(), fraction = period.microseconds()](char* out) {
        *out = 'P';
        out = write_part(out + 1, seconds / 86400, 'D');
        const long long of_day = seconds % 86400;
        if (of_day == 0 && fraction == 0)
            return seconds != 0 ? out : write_text(out, "T0S");
        *out = 'T';
        out = write_part(out + 1, of_day / 3600, 'H');
        out = write_part(out, of_day / 60 % 60, 'M');
        return write_seconds(out, of_day % 60, fraction);
    };
}

/// A number as it stands in a text.
struct told_number {
    unsigned long long whole = 0;
    std::string_view fraction;
};

bool read_number(scanner& in, told_number& number) noexcept
{
    const std::size_t start = in.at();
    if (!in.sees_digit())
        return in.fails(ka_invalid_time_period, start, 1, "number");
    while (in.sees_digit()) {
        const auto digit = static_cast<unsigned long long>(in.take_digit());
        if (number.whole > (ULLONG_MAX - digit) / 10)
            return in.fails(ka_invalid_time_period, start, in.at() - start, "number");
        number.whole = 10 * number.whole + digit;
    }
    if (!in.sees('.') && !in.sees(','))
        return true;
    in.skip(1);
    const std::string_view digits = in.rest();
    while (in.sees_digit())
        in.skip(1);
    number.fraction = digits.substr(0, digits.size() - in.rest().size());
    return !number.fraction.empty() || in.fails(ka_invalid_time_period, in.at(), 1, "fraction");
}

struct unit {
    std::string_view name;
    long long microseconds;
};

bool fails_as_too_long(scanner& in, std::size_t start) noexcept
{
    return in.fails(ka_invalid_time_period, start, in.at() - start, "number");
}

/// The unit behind a number of ISO 8601, which has to be smaller than the one before.
bool read_iso_unit(scanner& in, bool is_time, long long below, long long& microseconds) noexcept
{
    constexpr unit date_units[] = {{"W", 604800 * million}, {"D", 86400 * million}};
    constexpr unit time_units[] = {{"H", 3600 * million}, {"M", 60 * million}, {"S", million}};
    const std::size_t start = in.at();
    if (!is_time && (in.sees('Y') || in.sees('M')))
        return in.fails(ka_invalid_time_period, start, 1, "no period has years or months");
    const auto is_known = [&](const unit& each) {
        microseconds = each.microseconds;
        return in.sees(each.name[0]) && each.microseconds < below;
    };
    const bool is_found = is_time ? std::any_of(std::begin(time_units), std::end(time_units), is_known)
                                  : std::any_of(std::begin(date_units), std::end(date_units), is_known);
    if (!is_found)
        return in.fails(ka_invalid_time_period, start, 1, "unit");
    in.skip(1);
    return true;
}

bool read_iso_part(scanner& in, bool is_negative, bool is_time, long long& below, sum& total,
                   bool& is_last) noexcept
{
    const std::size_t start = in.at();
    const bool is_part_negative = in.takes('-');
    if (!is_part_negative)
        in.takes('+');
    told_number number;
    if (!read_number(in, number) || !read_iso_unit(in, is_time, below, below))
        return false;
    is_last = !number.fraction.empty();
    return total.add(number.whole, number.fraction, below, is_negative != is_part_negative) ||
           fails_as_too_long(in, start);
}

bool begins_iso_part(const scanner& in, bool is_time) noexcept
{
    return in.sees_digit() || in.sees('-') || in.sees('+') || (!is_time && in.sees('T'));
}

bool read_iso_duration(scanner& in, sum& total) noexcept
{
    const bool is_negative = in.takes('-');
    if (!is_negative)
        in.takes('+');
    if (!in.literal('P', "'P'"))
        return false;
    bool is_time = false, is_last = false;
    long long below = LLONG_MAX;
    do {
        if (!is_time && in.takes('T'))
            is_time = true;
        if (!read_iso_part(in, is_negative, is_time, below, total, is_last))
            return false;
    } while (!is_last && (in.wants_all() ? !in.is_at_end() : begins_iso_part(in, is_time)));
    return in.ends();
}

constexpr unit peoples_units[] = {
    {"w", 604800 * million},
    {"week", 604800 * million},
    {"weeks", 604800 * million},
    {"d", 86400 * million},
    {"day", 86400 * million},
    {"days", 86400 * million},
    {"h", 3600 * million},
    {"hr", 3600 * million},
    {"hrs", 3600 * million},
    {"hour", 3600 * million},
    {"hours", 3600 * million},
    {"m", 60 * million},
    {"min", 60 * million},
    {"mins", 60 * million},
    {"minute", 60 * million},
    {"minutes", 60 * million},
    {"s", million},
    {"sec", million},
    {"secs", million},
    {"second", million},
    {"seconds", million},
    {"ms", 1000},
    {"millisecond", 1000},
    {"milliseconds", 1000},
    {"us", 1},
    {"microsecond", 1},
    {"microseconds", 1},
};

bool read_peoples_unit(scanner& in, long long below, long long& microseconds) noexcept
{
    const std::size_t start = in.at();
    const std::string_view word = in.take_word();
    const auto* const found = std::find_if(std::begin(peoples_units), std::end(peoples_units),
                                           [&](const unit& each) { return each.name == word; });
    if (found != std::end(peoples_units) && found->microseconds < below) {
        microseconds = found->microseconds;
        return true;
    }
    const bool is_of_calendar = word.starts_with("mo") || word.starts_with('y');
    return in.fails(ka_invalid_time_period, start, std::max<std::size_t>(word.size(), 1),
                    is_of_calendar ? "no period has years or months" : "unit");
}

void skip_blanks(scanner& in) noexcept
{
    while (in.takes(' ')) {
    }
}

bool read_peoples_duration(scanner& in, sum& total) noexcept
{
    const bool is_negative = in.takes('-');
    long long below = LLONG_MAX;
    for (;;) {
        const std::size_t start = in.at();
        told_number number;
        if (!read_number(in, number))
            return false;
        skip_blanks(in);
        if (!read_peoples_unit(in, below, below))
            return false;
        if (!total.add(number.whole, number.fraction, below, is_negative))
            return fails_as_too_long(in, start);
        // A fraction stands in the last number alone.
        if (!number.fraction.empty() || in.is_at_end())
            return in.ends();
        const std::size_t end = in.at();
        in.takes(',');
        skip_blanks(in);
        if (!in.wants_all() && !in.sees_digit()) {
            in.back_to(end);
            return true;
        }
    }
}

}

}

using namespace exchange;

std::string ka_iso_duration(const ka_time_period& period)
{
    return string_of([&](char* first, char* last) { return ka_write_iso_duration(first, last, period); });
}

std::to_chars_result ka_write_iso_duration(char* first, char* last, const ka_time_period& period)
{
    return write_in(first, last, iso_duration_writer(period));
}

ka_read_result<ka_time_period> ka_read_iso_duration(std::string_view text, ka_extent extent) noexcept
{
    scanner in(text, extent);
    sum total;
    if (!read_iso_duration(in, total))
        return in.failure();
    return {total.period(), in.at()};
}

ka_read_result<ka_time_period> ka_read_duration(std::string_view text, ka_extent extent) noexcept
{
    scanner in(text, extent);
    sum total;
    const bool is_iso = text.find('P') < 2;
    if (!(is_iso ? read_iso_duration(in, total) : read_peoples_duration(in, total)))
        return in.failure();
    return {total.period(), in.at()};
}
