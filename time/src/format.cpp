#include <algorithm>
#include <array>
#include <cstdlib>
#include <limits>
#include <string_view>

#include <time/timedate.h>

#include "digits.h"
#include "reading.h"
#include "text.h"

namespace {

/// The numbers that codes print as they are: most in two places, the year in as
/// many as it has, and the microseconds in six.
enum number : unsigned char {
    hour_number,
    minute_number,
    second_number,
    month_number,
    day_number,
    numbers_of_two_places,
    year_number = numbers_of_two_places,
    microsecond_number,
    no_number
};

/// The most characters that a number takes.
constexpr std::size_t longest_text(number printed)
{
    if (printed == year_number)
        return sizeof "-32768" - 1;
    return printed == microsecond_number ? 6 : 2;
}

/// How many times as long as its code, of two characters at least, a number can be.
constexpr std::size_t longest_for_code = 3;
static_assert([] {
    for (int printed = 0; printed < no_number; ++printed)
        if (longest_text(static_cast<number>(printed)) > 2 * longest_for_code)
            return false;
    return sizeof(short) == 2;
}());

/// What the codes of a format print from.
struct format_fields {
    unsigned int two_places[numbers_of_two_places];
    unsigned int microsecond;
    /// The short that `calc_calendar_date` gives, of a date stepped however far.
    short year;
    bool dst;
    /// The day number of a date, or 0: then month, day and year may form none.
    int julian_day;
    const ka_time_zone& zone;

    unsigned int hour() const { return two_places[hour_number]; }
    unsigned int hour_of_12() const { return hour() % 12 == 0 ? 12 : hour() % 12; }
    unsigned short month() const { return static_cast<unsigned short>(two_places[month_number]); }
    unsigned short day() const { return static_cast<unsigned short>(two_places[day_number]); }
    /// Throws `invalid_date` where there is no date.
    ka_date date() const { return julian_day != 0 ? ka_date(julian_day) : ka_date(month(), day(), year); }
};

}

/// What the user's language has for a value.
struct ka_locale_text {
    // The layouts for `%c`, `%x` and `%X`.
    static const std::string& timedate() { return *ka_time_and_date::format_timedate_; }
    static const std::string& date() { return *ka_time_and_date::format_date_; }
    static const std::string& time() { return *ka_time_and_date::format_time_; }

    static const std::string& weekday_name(const format_fields& value)
    {
        return *ka_time_and_date::weekday_name_[weekday(value)];
    }
    static const std::string& weekday_abbreviation(const format_fields& value)
    {
        return *ka_time_and_date::weekday_abbr_[weekday(value)];
    }
    static const std::string& half_of_day(const format_fields& value)
    {
        return value.hour() < 12 ? ka_time::am_name() : ka_time::pm_name();
    }
    static const std::string& era(const format_fields& value)
    {
        return value.year < 0 ? ka_date::bc_name() : ka_date::ad_name();
    }

private:
    /// From 0, a Sunday, on.
    static unsigned int weekday(const format_fields& value)
    {
        if (value.julian_day == 0) [[unlikely]]
            return value.date().weekday() - 1u;
        return ka_date::modulo_7(static_cast<unsigned int>(value.julian_day) + 1);
    }
};

namespace {

/// The room that a code finds behind the end of the text: enough for a number.
constexpr std::size_t code_room = 16;

char* put_number(char* at, int value, int width = 0)
{
    const auto pattern = static_cast<unsigned int>(value);
    char digits[most_digits];
    char* const end = digits + sizeof digits;
    char* first = write_before(end, value < 0 ? 0u - pattern : pattern);
    while (end - first < width)
        *--first = '0';
    if (value < 0)
        *--first = '-';
    return std::copy(first, end, at);
}

inline char* put_year(char* at, int year)
{
    if (year < 1000 || year > 9999) [[unlikely]]
        return put_number(at, year);
    const auto digits = static_cast<unsigned int>(year);
    return write_two_places(write_two_places(at, digits / 100), digits % 100);
}

/// Two places with a blank for a leading zero.
char* put_blank_place(char* at, unsigned int value)
{
    char* const end = write_two_places(at, value);
    if (value < 10)
        *at = ' ';
    return end;
}

constexpr std::string_view year_and_era(int year) { return year < 1000 ? "%s %P" : "%s"; }

char* put_formatted(char* at, text& out, std::string_view format, const format_fields& value);

/// A code that prints a number, or in a way of its own: from `at` on, where
/// there is `code_room`.
struct code_row {
    using writer = char* (*)(char* at, text& out, const format_fields& value);

    constexpr code_row(char code, number printed) : letter(code), shown(printed), put(nullptr) {}
    constexpr code_row(char code, writer own) : letter(code), shown(no_number), put(own) {}

    char letter;
    number shown;
    writer put;
};

using fields = const format_fields&;

// clang-format off
constexpr code_row code_table[] = {
    {'a', [](char* at, text& out, fields v) { return out.put(at, ka_locale_text::weekday_abbreviation(v)); }},
    {'A', [](char* at, text& out, fields v) { return out.put(at, ka_locale_text::weekday_name(v)); }},
    {'b', [](char* at, text& out, fields v) { return out.put(at, ka_date::month_abbreviation(v.month())); }},
    {'B', [](char* at, text& out, fields v) { return out.put(at, ka_date::month_name(v.month())); }},
    {'c', [](char* at, text& out, fields v) { return put_formatted(at, out, ka_locale_text::timedate(), v); }},
    {'C', [](char* at, text&, fields v) { return put_number(at, v.year / 100); }},
    {'d', day_number},
    {'D', [](char* at, text& out, fields v) { return put_formatted(at, out, "%m/%d/%y", v); }},
    {'e', [](char* at, text&, fields v) { return put_blank_place(at, v.day()); }},
    {'f', [](char* at, text& out, fields v) { return put_formatted(at, out, year_and_era(v.year), v); }},
    {'H', hour_number},
    {'I', [](char* at, text&, fields v) { return write_two_places(at, v.hour_of_12()); }},
    {'j', [](char* at, text&, fields v) { return put_number(at, v.date().day_of_year() + 1, 3); }},
    {'k', [](char* at, text&, fields v) { return put_blank_place(at, v.hour()); }},
    {'l', [](char* at, text&, fields v) { return put_blank_place(at, v.hour_of_12()); }},
    {'m', month_number},
    {'M', minute_number},
    {'n', [](char* at, text& out, fields) { return out.put(at, "\n"); }},
    {'p', [](char* at, text& out, fields v) { return out.put(at, ka_locale_text::half_of_day(v)); }},
    {'P', [](char* at, text& out, fields v) { return out.put(at, ka_locale_text::era(v)); }},
    {'q', microsecond_number},
    {'r', [](char* at, text& out, fields v) { return put_formatted(at, out, "%I:%M:%S %p", v); }},
    {'s', [](char* at, text&, fields v) { return put_year(at, std::abs(v.year)); }},
    {'S', second_number},
    {'t', [](char* at, text& out, fields) { return out.put(at, "\t"); }},
    {'T', [](char* at, text& out, fields v) { return put_formatted(at, out, "%H:%M:%S", v); }},
    {'U', [](char* at, text&, fields v) { return write_two_places(at, v.date().week_of_year(1)); }},
    {'w', [](char* at, text&, fields v) { return put_number(at, v.date().weekday() - 1); }},
    {'W', [](char* at, text&, fields v) { return write_two_places(at, v.date().week_of_year(2)); }},
    {'x', [](char* at, text& out, fields v) { return put_formatted(at, out, ka_locale_text::date(), v); }},
    {'X', [](char* at, text& out, fields v) { return put_formatted(at, out, ka_locale_text::time(), v); }},
    {'y', [](char* at, text&, fields v) { return put_number(at, v.year % 100, 2); }},
    {'Y', year_number},
    {'Z', [](char* at, text& out, fields v) {
         return v.year == 0 ? at : out.put(at, v.dst ? v.zone.dst_name() : v.zone.name());
     }},
};
// clang-format on

template <typename Value>
using by_letter = std::array<Value, 256>;

constexpr by_letter<number> number_of_letter = [] {
    by_letter<number> numbers = {};
    numbers.fill(no_number);
    for (const code_row& row : code_table)
        numbers[static_cast<unsigned char>(row.letter)] = row.shown;
    return numbers;
}();

constexpr by_letter<code_row::writer> writer_of_letter = [] {
    by_letter<code_row::writer> writers = {};
    for (const code_row& row : code_table)
        writers[static_cast<unsigned char>(row.letter)] = row.put;
    return writers;
}();

inline char* put_shown(char* at, number shown, const format_fields& value)
{
    if (shown < numbers_of_two_places)
        return write_two_places(at, value.two_places[shown]);
    return shown == year_number ? put_year(at, value.year) : write_six_places(at, value.microsecond);
}

/// The end of the text, and the place in the format.
struct cursor {
    char* at;
    const char* place;
};

/// Puts what begins behind a "%": flag, width and code. A letter that is no
/// code stands for itself.
[[gnu::noinline]] cursor put_padded_code(cursor now, text& out, const format_fields& value)
{
    const char* place = now.place;
    const bool is_left = *place == '-';
    const char fill = *place == '0' ? '0' : ' ';
    if (is_left || fill == '0')
        ++place;
    unsigned long long width = 0;
    for (; '0' <= *place && *place <= '9'; ++place)
        width = width * 10 + static_cast<unsigned long long>(*place - '0');

    const std::size_t start = out.size(now.at);
    const auto code = static_cast<unsigned char>(*place);
    char* at = now.at;
    if (writer_of_letter[code] != nullptr)
        at = writer_of_letter[code](at, out, value);
    else if (number_of_letter[code] != no_number)
        at = put_shown(at, number_of_letter[code], value);
    else
        *at++ = *place;

    const std::size_t length = out.size(at) - start;
    if (length >= width)
        return {at, place + 1};
    // A width that memory has no numbers for is as far beyond it as the highest number.
    const unsigned long long missing = width - length;
    const auto count = static_cast<std::size_t>(
        std::min<unsigned long long>(missing, std::numeric_limits<std::size_t>::max()));
    return {out.insert(at, is_left ? out.size(at) : start, count, fill), place + 1};
}

/// The format must have a NUL behind its end, as every string has: a code that
/// is cut off there has it for its letter.
///
/// Letters and plain numbers become at most `longest_for_code` times as long as
/// they are in the format. So they need no test for room, as long as there is as much of it
/// for the format left, and `code_room` for a code of another kind.
[[gnu::always_inline]] inline char* write_format(char* at, text& out, std::string_view format,
                                                 const format_fields& value)
{
    const char* const end = format.data() + format.size();
    cursor now = {out.room(at, longest_for_code * format.size() + code_room), format.data()};
    while (now.place < end) {
        const char letter = *now.place++;
        if (letter != '%') {
            *now.at++ = letter;
            continue;
        }
        const auto code = static_cast<unsigned char>(*now.place);
        const number shown = number_of_letter[code];
        if (shown < numbers_of_two_places) {
            now = {write_two_places(now.at, value.two_places[shown]), now.place + 1};
            continue;
        }
        if (shown != no_number) {
            now = {put_shown(now.at, shown, value), now.place + 1};
            continue;
        }
        if (writer_of_letter[code] != nullptr)
            now = {writer_of_letter[code](now.at, out, value), now.place + 1};
        else
            now = put_padded_code(now, out, value);
        now.at =
            out.room(now.at, longest_for_code * static_cast<std::size_t>(end + 1 - now.place) + code_room);
    }
    return now.at;
}

char* put_formatted(char* at, text& out, std::string_view format, const format_fields& value)
{
    return write_format(at, out, format, value);
}

[[gnu::always_inline]] inline std::string made_text(std::string_view format, const format_fields& value)
{
    text out;
    const char* const end = write_format(out.begin(), out, format, value);
    return std::move(out).str(end);
}

}

std::string ka_time_and_date::formatted(const std::string& format, const unsigned short& hour,
                                        const unsigned short& minute, const unsigned short& second,
                                        const unsigned int& microsecond, const unsigned short& month,
                                        const unsigned short& day, const short& year,
                                        const ka_time_zone& zone, bool dst)
{
    return made_text(format, {{hour, minute, second, month, day}, microsecond, year, dst, 0, zone});
}

std::string ka_time_and_date::text_of(std::string_view format, const ka_time_and_date& value)
{
    const reading now = value.local();
    const unsigned int second_of_day = now.time.second_of_day();
    const unsigned int minute_of_day = second_of_day / 60;
    return made_text(
        format, {{minute_of_day / 60, minute_of_day % 60, second_of_day % 60, now.day.month, now.day.day},
                 now.time.microseconds(),
                 static_cast<short>(now.day.year),
                 now.is_dst,
                 now.date.julian_day(),
                 *value.zone_});
}

std::string ka_time_and_date::to_string(const char* format) const
{
    return text_of(format == nullptr ? std::string_view(*default_time_and_date_format_) : format, *this);
}

std::string ka_time_and_date::formatted(const std::string& format, const ka_time_and_date& value)
{
    return text_of(format, value);
}

std::string ka_time_and_date::formatted(const std::string& format, const ka_time* time, const ka_date* date)
{
    ka_time_and_date value;
    if (date != nullptr)
        value.date(*date);
    if (time != nullptr)
        value.time(*time);
    return text_of(format, value);
}

std::string ka_time_and_date::to_string(int value, int width, char fill)
{
    char digits[most_digits];
    char* const end = digits + sizeof digits;
    const auto pattern = static_cast<unsigned int>(value);
    const char* const first = write_before(end, value < 0 ? 0u - pattern : pattern);
    const auto length = static_cast<int>(end - first);

    std::string text(value < 0 ? 1 : 0, '-');
    if (length < width)
        text.append(static_cast<std::size_t>(width - length), fill);
    return text.append(first, static_cast<std::size_t>(length));
}

std::string ka_date::to_string(const std::string& format) const
{
    const parts date = split(julian_day_);
    const int known_day = is_julian_day(julian_day_) ? julian_day_ : 0;
    return made_text(format, {{0, 0, 0, date.month, date.day},
                              0,
                              static_cast<short>(date.year),
                              false,
                              known_day,
                              *ka_time_and_date::default_tzone_});
}

std::string ka_time::to_string(const std::string& format) const
{
    const unsigned int minute_of_day = second_of_day() / 60;
    return made_text(format, {{minute_of_day / 60, minute_of_day % 60, second_of_day() % 60, 0, 0},
                              microseconds(),
                              0,
                              false,
                              0,
                              *ka_time_and_date::default_tzone_});
}
