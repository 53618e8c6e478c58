#include "format.h"

#include <array>
#include <cstdlib>

#include <time/timedate.h>

#include "digits.h"
#include "text.h"

/// The user's layouts, for `%c`, `%x` and `%X`.
struct format_layout {
    static const std::string& timedate() { return *ka_time_and_date::format_timedate_; }
    static const std::string& date() { return *ka_time_and_date::format_date_; }
    static const std::string& time() { return *ka_time_and_date::format_time_; }
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

char* put_year(char* at, int year)
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

char* put_formatted(char* at, text& out, std::string_view format, const format_fields& value);

/// A code that prints a number in two places, or in a way of its own: from `at`
/// on, where there is `code_room`.
struct code_row {
    using writer = char* (*)(char* at, text& out, const format_fields& value);

    constexpr code_row(char code, two_places number) : letter(code), place(number), put(nullptr) {}
    constexpr code_row(char code, writer own) : letter(code), place(places_count), put(own) {}

    char letter;
    two_places place;
    writer put;
};

using fields = const format_fields&;

// clang-format off
constexpr code_row code_table[] = {
    {'a', [](char* at, text& out, fields v) { return out.put(at, ka_date::weekday_abbreviation(v.date().weekday())); }},
    {'A', [](char* at, text& out, fields v) { return out.put(at, ka_date::weekday_name(v.date().weekday())); }},
    {'b', [](char* at, text& out, fields v) { return out.put(at, ka_date::month_abbreviation(v.month())); }},
    {'B', [](char* at, text& out, fields v) { return out.put(at, ka_date::month_name(v.month())); }},
    {'c', [](char* at, text& out, fields v) { return put_formatted(at, out, format_layout::timedate(), v); }},
    {'C', [](char* at, text&, fields v) { return put_number(at, v.year / 100); }},
    {'d', day_place},
    {'D', [](char* at, text& out, fields v) { return put_formatted(at, out, "%m/%d/%y", v); }},
    {'e', [](char* at, text&, fields v) { return put_blank_place(at, v.day()); }},
    {'f', [](char* at, text& out, fields v) { return put_formatted(at, out, v.year < 1000 ? "%s %P" : "%s", v); }},
    {'H', hour_place},
    {'I', [](char* at, text&, fields v) { return write_two_places(at, v.hour_of_12()); }},
    {'j', [](char* at, text&, fields v) { return put_number(at, v.date().day_of_year() + 1, 3); }},
    {'k', [](char* at, text&, fields v) { return put_blank_place(at, v.hour()); }},
    {'l', [](char* at, text&, fields v) { return put_blank_place(at, v.hour_of_12()); }},
    {'m', month_place},
    {'M', minute_place},
    {'n', [](char* at, text& out, fields) { return out.put(at, "\n"); }},
    {'p', [](char* at, text& out, fields v) { return out.put(at, v.hour() < 12 ? ka_time::am_name() : ka_time::pm_name()); }},
    {'P', [](char* at, text& out, fields v) { return out.put(at, v.year < 0 ? ka_date::bc_name() : ka_date::ad_name()); }},
    {'q', [](char* at, text&, fields v) { return write_six_places(at, v.microsecond); }},
    {'r', [](char* at, text& out, fields v) { return put_formatted(at, out, "%I:%M:%S %p", v); }},
    {'s', [](char* at, text&, fields v) { return put_year(at, std::abs(v.year)); }},
    {'S', second_place},
    {'t', [](char* at, text& out, fields) { return out.put(at, "\t"); }},
    {'T', [](char* at, text& out, fields v) { return put_formatted(at, out, "%H:%M:%S", v); }},
    {'U', [](char* at, text&, fields v) { return write_two_places(at, v.date().week_of_year(1)); }},
    {'w', [](char* at, text&, fields v) { return put_number(at, v.date().weekday() - 1); }},
    {'W', [](char* at, text&, fields v) { return write_two_places(at, v.date().week_of_year(2)); }},
    {'x', [](char* at, text& out, fields v) { return put_formatted(at, out, format_layout::date(), v); }},
    {'X', [](char* at, text& out, fields v) { return put_formatted(at, out, format_layout::time(), v); }},
    {'y', [](char* at, text&, fields v) { return put_number(at, v.year % 100, 2); }},
    {'Y', [](char* at, text&, fields v) { return put_year(at, v.year); }},
    {'Z', [](char* at, text& out, fields v) {
         return v.year == 0 ? at : out.put(at, v.dst ? v.zone.dst_name() : v.zone.name());
     }},
};
// clang-format on

template <typename Value>
using by_letter = std::array<Value, 256>;

constexpr by_letter<two_places> place_of_letter = [] {
    by_letter<two_places> places = {};
    places.fill(places_count);
    for (const code_row& row : code_table)
        places[static_cast<unsigned char>(row.letter)] = row.place;
    return places;
}();

constexpr by_letter<code_row::writer> writer_of_letter = [] {
    by_letter<code_row::writer> writers = {};
    for (const code_row& row : code_table)
        writers[static_cast<unsigned char>(row.letter)] = row.put;
    return writers;
}();

/// The end of the text, and the place in the format.
struct cursor {
    char* at;
    const char* place;
};

/// Puts a code, or a letter that is no code and stands for itself.
char* put_code(char* at, text& out, char code, const format_fields& value)
{
    const auto letter = static_cast<unsigned char>(code);
    at = out.room(at, code_room);
    if (place_of_letter[letter] != places_count)
        return write_two_places(at, value.places[place_of_letter[letter]]);
    if (writer_of_letter[letter] != nullptr)
        return writer_of_letter[letter](at, out, value);
    *at = code;
    return at + 1;
}

/// Puts what begins behind a "%": flag, width and code.
[[gnu::noinline]] cursor put_padded_code(cursor now, text& out, const format_fields& value)
{
    const char* place = now.place;
    const bool is_left = *place == '-';
    const char fill = *place == '0' ? '0' : ' ';
    if (is_left || fill == '0')
        ++place;
    std::size_t width = 0;
    for (; '0' <= *place && *place <= '9'; ++place)
        width = width * 10 + static_cast<std::size_t>(*place - '0');

    const std::size_t start = out.size(now.at);
    char* const at = put_code(now.at, out, *place, value);
    const std::size_t length = out.size(at) - start;
    if (length >= width)
        return {at, place + 1};
    return {out.insert(at, is_left ? out.size(at) : start, width - length, fill), place + 1};
}

/// The format must have a NUL behind its end, as every string has: a code that
/// is cut off there has it for its letter.
///
/// Plain letters and numbers of two places become no longer than they are in
/// the format. So they need no test for room, as long as there is as much of it
/// as of the format left, and `code_room` for the next code of another kind.
char* put_formatted(char* at, text& out, std::string_view format, const format_fields& value)
{
    const char* const end = format.data() + format.size();
    cursor now = {out.room(at, format.size() + code_room), format.data()};
    while (now.place < end) {
        const char letter = *now.place++;
        if (letter != '%') {
            *now.at++ = letter;
            continue;
        }
        const auto code = static_cast<unsigned char>(*now.place);
        const two_places number = place_of_letter[code];
        if (number != places_count) {
            write_two_places(now.at, value.places[number]);
            now.at += 2;
            ++now.place;
            continue;
        }
        const code_row::writer put = writer_of_letter[code];
        if (put != nullptr)
            now = {put(now.at, out, value), now.place + 1};
        else
            now = put_padded_code(now, out, value);
        now.at = out.room(now.at, static_cast<std::size_t>(end + 1 - now.place) + code_room);
    }
    return now.at;
}

}

char* write_formatted(text& out, std::string_view format, const format_fields& value)
{
    return put_formatted(out.begin(), out, format, value);
}

std::string ka_time_and_date::formatted(const std::string& format, const unsigned short& hour,
                                        const unsigned short& minute, const unsigned short& second,
                                        const unsigned int& microsecond, const unsigned short& month,
                                        const unsigned short& day, const short& year,
                                        const ka_time_zone& zone, bool dst)
{
    return made_text(format, {{hour, minute, second, month, day}, microsecond, year, dst, 0, zone});
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
    return made_text(
        format,
        {{0, 0, 0, date.month, date.day}, 0, date.year, false, known_day, *ka_time_and_date::default_tzone_});
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
