#include "translate.h"

#include <charconv>
#include <string_view>
#include <system_error>

#include <time/inline/codes.h>

namespace {

/// What a code of the runtime is in the format language, where it is another.
struct translation_row {
    char letter;
    std::string_view format;
};

constexpr translation_row translations[] = {
    // The year with its era below 1000, as the layouts that start finds.
    {'Y', "%f"},
    {'G', "%f"},
    {'F', "%f-%m-%d"},
    {'h', "%b"},
    {'R', "%H:%M"},
    {'T', "%H:%M:%S"},
    {'D', "%m/%d/%y"},
    {'g', "%y"},
    // Lower case, which the format language has not.
    {'P', "%p"},
    {'%', "%%"},
    {'n', "\n"},
    {'t', "\t"},
};

constexpr std::string_view same_in_both = "aAbBCdeHIjklmMpSUwWyZ";

/// Deeper than any layout holds another, unless it holds itself.
constexpr int deepest = 4;

std::string translated(const platform::named_locale& locale, std::string_view layout, int depth);

/// The fifth of May in a year of this millennium.
std::tm fields_of(int year)
{
    std::tm fields = {};
    fields.tm_year = year - 1900;
    fields.tm_mon = 4;
    fields.tm_mday = 5;
    return fields;
}

/// What `%E` or `%O` in front of a code asks for, or nothing.
std::string translated_alternate(const platform::named_locale& locale, char modifier, char letter)
{
    if (modifier == 'E' && letter == 'C')
        return locale_text(locale, "%EC", fields_of(2024));
    const char code = modifier == 'E' ? (letter == 'y' ? 'Y' : '\0') : modifier == 'O' ? letter : '\0';
    const std::size_t place = code == '\0' || (modifier == 'O' && code == 'Y')
                                  ? alternate_numbers::letters.npos
                                  : alternate_numbers::letters.find(code);
    return place == alternate_numbers::letters.npos ? std::string()
                                                    : std::string{'%', static_cast<char>(place + 1)};
}

std::string translated_code(const platform::named_locale& locale, char letter, char flag, int depth)
{
    if (letter == 'c' || letter == 'x' || letter == 'X' || letter == 'r') {
        const char* const inner = locale.layout(letter);
        if (inner != nullptr && *inner != '\0')
            return translated(locale, inner, depth + 1);
        return letter == 'r' ? "%I:%M:%S %p" : "";
    }
    const std::size_t unpadded = alternate_numbers::unpadded.find(letter == 'e' ? 'd' : letter);
    if (flag == '-' && unpadded != alternate_numbers::unpadded.npos)
        return {'%', alternate_numbers::unpadded_letter(unpadded)};
    if (flag == '_' && letter == 'd')
        return "%e";
    if (same_in_both.find(letter) != same_in_both.npos)
        return {'%', letter};
    for (const translation_row& row : translations)
        if (row.letter == letter)
            return std::string(row.format);
    return {};
}

std::string translated(const platform::named_locale& locale, std::string_view layout, int depth)
{
    constexpr std::string_view flags_and_modifiers = "-_^#0123456789EO+";
    std::string format;
    for (std::size_t place = 0; depth < deepest && place < layout.size(); ++place) {
        if (layout[place] != '%') {
            format += layout[place];
            continue;
        }
        const std::size_t first = place + 1;
        place = layout.find_first_not_of(flags_and_modifiers, first);
        if (place == layout.npos)
            break;
        std::string code = translated_alternate(locale, layout[place - 1], layout[place]);
        if (code.empty())
            code = translated_code(locale, layout[place], layout[first], depth);
        if (code.empty() && format.ends_with(' '))
            format.pop_back();
        format += code;
    }
    return format;
}

}

std::string translated_layout(const platform::named_locale& locale, char layout)
{
    return translated_code(locale, layout, '\0', 0);
}

std::string locale_text(const platform::named_locale& locale, const char* code, const std::tm& fields)
{
    char buffer[128];
    return {buffer, locale.format_time(buffer, sizeof buffer, code, fields)};
}

alternate_numbers alternates_of(const platform::named_locale& locale)
{
    alternate_numbers alternates;
    int shown_year = 2000;
    for (std::string& digits : alternates.digits)
        digits = locale_text(locale, "%Oy", fields_of(shown_year++));
    const std::string year = locale_text(locale, "%Ey", fields_of(2024));
    int number = 0;
    if (std::from_chars(year.data(), year.data() + year.size(), number).ec == std::errc() && number > 100)
        alternates.era_offset = number - 2024;
    return alternates;
}
