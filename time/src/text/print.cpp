#include <algorithm>
#include <array>
#include <cstdlib>
#include <iterator>
#include <string>
#include <utility>

#include "piece_stream.h"
#include "print_inline.h"

namespace {

using field = ka_format_field;
using form = ka_format_form;

constexpr unsigned int hour_of(const printed_value& value)
{
    return value.two_places[static_cast<int>(field::hour)];
}

unsigned int hour_of_12(const printed_value& value)
{
    return hour_of(value) % 12 == 0 ? 12 : hour_of(value) % 12;
}

unsigned short month_of(const printed_value& value)
{
    return static_cast<unsigned short>(value.two_places[static_cast<int>(field::month)]);
}

/// Throws `invalid_date` where there is no date.
ka_date date_of(const printed_value& value)
{
    const auto day = static_cast<unsigned short>(value.two_places[static_cast<int>(field::day)]);
    return value.julian_day != 0 ? ka_date(value.julian_day) : ka_date(month_of(value), day, value.year);
}

/// From 0, a Sunday, on.
unsigned int weekday_of(const printed_value& value)
{
    const auto day = static_cast<unsigned int>(value.julian_day);
    if (value.julian_day <= 0) [[unlikely]]
        return day == 0 ? date_of(value).weekday() - 1u : (day + 1) % 7;
    // A seventh, rounded up, of 2^34: exact for all days up to 2^31.
    constexpr std::uint64_t seventh = 2454267027;
    static_assert((0x80000000 * seventh >> 34) == 0x80000000 / 7 &&
                  (0x7fffffff * seventh >> 34) == 0x7fffffff / 7);
    const auto weeks = static_cast<unsigned int>((day + 1) * seventh >> 34);
    return day + 1 - 7 * weeks;
}

template <field Field>
int number_of(const printed_value& value)
{
    if constexpr (Field <= field::day)
        return static_cast<int>(value.two_places[static_cast<int>(Field)]);
    else if constexpr (Field == field::microsecond)
        return static_cast<int>(value.microsecond);
    else if constexpr (Field == field::hour_of_12)
        return static_cast<int>(hour_of_12(value));
    else if constexpr (Field == field::year || Field == field::year_with_era)
        return value.year;
    else if constexpr (Field == field::year_of_era)
        return std::abs(value.year);
    else if constexpr (Field == field::century)
        return value.year / 100;
    else if constexpr (Field == field::year_of_century)
        return value.year % 100;
    else if constexpr (Field == field::weekday)
        return static_cast<int>(weekday_of(value));
    else if constexpr (Field == field::day_of_year)
        return date_of(value).day_of_year() + 1;
    else if constexpr (Field == field::week_from_sunday)
        return date_of(value).week_of_year(1);
    else if constexpr (Field == field::week_from_monday)
        return date_of(value).week_of_year(2);
    else if constexpr (Field == field::half_of_day)
        return hour_of(value) < 12 ? 0 : 1;
    else if constexpr (Field == field::era)
        return value.year < 0 ? 1 : 0;
    else
        return 0;
}

/// Throws `invalid_month` where there is no month.
unsigned int month_index(const printed_value& value)
{
    const unsigned short month = month_of(value);
    if (!ka_date::is_month(month)) [[unlikely]]
        ka_date::month_name(month);
    return month - 1u;
}

template <field Field, form Form>
const std::string& text_of(const printed_value& value)
{
    const ka_language_texts& language = value.language;
    constexpr bool is_full = Form == form::name;
    if constexpr (Field == field::weekday)
        return *(is_full ? language.weekday_names : language.weekday_abbreviations)[weekday_of(value)];
    else if constexpr (Field == field::month)
        return *(is_full ? language.month_names : language.month_abbreviations)[month_index(value)];
    else if constexpr (Field == field::half_of_day)
        return **(number_of<Field>(value) == 0 ? language.am : language.pm);
    else
        return **(number_of<Field>(value) == 0 ? language.ad : language.bc);
}

template <field Field>
std::string_view format_of(const printed_value& value)
{
    const ka_language_texts& language = value.language;
    if constexpr (Field == field::year_with_era)
        return value.year < 1000 ? "%s %P" : "%s";
    else
        return **(Field == field::user_timedate ? language.timedate
                  : Field == field::user_date   ? language.date
                                                : language.time);
}

template <form Form>
inline char* write_number(char* at, int number)
{
    if constexpr (Form == form::three_digits)
        return write_signed(at, number, 3);
    else if constexpr (Form == form::six_digits)
        return write_six_places(at, static_cast<unsigned int>(number));
    else if constexpr (Form == form::plain)
        return write_plain(at, number);
    else {
        if (number < 0)
            return write_signed(at, number, 2);
        char* const end = write_two_places(at, static_cast<unsigned int>(number));
        if (Form == form::two_places && number < 10)
            *at = ' ';
        return end;
    }
}

/// Prints the code of a row. Where that is a number, there must be room for it.
template <std::size_t Row>
char* print_row(char* at, sink& out, const printed_value& value)
{
    constexpr const ka_format_code& code = ka_format_codes[Row];
    if constexpr (is_number(code.form))
        return write_number<code.form>(at, number_of<code.field>(value));
    else if constexpr (code.field == field::zone)
        return value.year == 0 ? at : out.put(at, rules::name_under(value.zone, value.is_dst, value.told));
    else if constexpr (code.field == field::pieces)
        return print(at, out, code.format, value);
    else if constexpr (code.form == form::format)
        return print(at, out, format_of<code.field>(value), value);
    else
        return out.put(at, text_of<code.field, code.form>(value));
}

/// A number in a room of its own, from where it is put as a text.
char* put_number(char* at, sink& out, unsigned char letter, const printed_value& value)
{
    char digits[2 * number_room];
    char* const end = ways[letter] < way::number ? write_common(digits, ways[letter], value)
                                                 : code_printers[letter](digits, out, value);
    return out.put(at, {digits, static_cast<std::size_t>(end - digits)});
}

/// A number with as many digits as it has.
char* put_plain(char* at, sink& out, int number)
{
    char digits[2 * number_room];
    char* const end = write_plain(digits, number);
    return out.put(at, {digits, static_cast<std::size_t>(end - digits)});
}

/// A number as the layouts of a language write it.
char* print_alternate(char* at, sink& out, char letter, const printed_value& value)
{
    const alternate_numbers& alternates = *value.language.alternates;
    if (const char unpadded = alternate_numbers::unpadded_code(letter); unpadded != '\0')
        return put_plain(at, out, field_number(row_of(unpadded), value));
    const char code = alternate_numbers::letters[static_cast<std::size_t>(letter) - 1];
    if (code == 'Y')
        return put_plain(at, out, value.year + alternates.era_offset);
    const auto number = static_cast<unsigned int>(std::abs(field_number(row_of(code), value)));
    return out.put(at, alternates.digits[number % std::size(alternates.digits)]);
}

bool is_alternate(char letter, const printed_value& value)
{
    return value.language.alternates != nullptr && '\0' < letter &&
           static_cast<std::size_t>(letter) <=
               alternate_numbers::letters.size() + alternate_numbers::unpadded.size();
}

char* print_unpadded(char* at, sink& out, unsigned char letter, const printed_value& value)
{
    switch (ways[letter]) {
        case way::text:
            return code_printers[letter](at, out, value);
        case way::letter_itself: {
            const char itself = static_cast<char>(letter);
            if (is_alternate(itself, value)) [[unlikely]]
                return print_alternate(at, out, itself, value);
            return out.put(at, {&itself, 1});
        }
        default:
            return put_number(at, out, letter, value);
    }
}

char* print_piece(char* at, sink& out, const ka_format_piece& piece, const printed_value& value)
{
    if (!piece.is_code)
        return out.put(at, {&piece.letter, 1});
    const std::size_t start = out.size(at);
    at = print_unpadded(at, out, static_cast<unsigned char>(piece.letter), value);
    const std::size_t length = out.size(at) - start;
    if (length >= piece.width || out.is_full())
        return at;
    return out.insert(at, piece.is_left ? out.size(at) : start, piece.width - length, piece.fill);
}

}

constexpr by_letter<code_printer> code_printers = []<std::size_t... Row>(std::index_sequence<Row...>)
{
    by_letter<code_printer> rows = {};
    ((rows[static_cast<unsigned char>(ka_format_codes[Row].letter)] = print_row<Row>), ...);
    return rows;
}
(std::make_index_sequence<std::size(ka_format_codes)>());

int field_number(int row, const printed_value& value)
{
    static constexpr auto numbers = []<std::size_t... Row>(std::index_sequence<Row...>)
    {
        using number = int (*)(const printed_value&);
        return std::array<number, sizeof...(Row)>{number_of<ka_format_codes[Row].field>...};
    }
    (std::make_index_sequence<std::size(ka_format_codes)>());
    return numbers[static_cast<std::size_t>(row)](value);
}

char* write_signed(char* at, int number, int width)
{
    const auto pattern = static_cast<unsigned int>(number);
    char digits[most_digits];
    char* const end = digits + sizeof digits;
    char* first = write_before(end, number < 0 ? 0u - pattern : pattern);
    while (end - first < width)
        *--first = '0';
    if (number < 0)
        *--first = '-';
    return std::copy(first, end, at);
}

printed_piece print_padded(char* at, sink& out, ka_format_pieces pieces, const printed_value& value)
{
    const ka_format_piece piece = pieces.next_code();
    at = print_piece(at, out, piece, value);
    return {at, pieces};
}

char* print_to_the_last(char* at, sink& out, ka_format_pieces pieces, const printed_value& value)
{
    while (!pieces.is_at_end())
        at = print_piece(at, out, pieces.next(), value);
    return at;
}

char* print(char* at, sink& out, std::string_view format, const printed_value& value)
{
    return print_inline(at, out, format, value);
}
