#include "translate.h"

#include <string_view>

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

std::string translated_code(const platform::named_locale& locale, char letter, bool is_unpadded, int depth)
{
    if (letter == 'c' || letter == 'x' || letter == 'X' || letter == 'r') {
        const char* const inner = locale.layout(letter);
        if (inner != nullptr && *inner != '\0')
            return translated(locale, inner, depth + 1);
        return letter == 'r' ? "%I:%M:%S %p" : "";
    }
    if (is_unpadded && letter == 'd')
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
        const bool is_unpadded = layout[first] == '-' || layout[first] == '_';
        const std::string code = translated_code(locale, layout[place], is_unpadded, depth);
        if (code.empty() && format.ends_with(' '))
            format.pop_back();
        format += code;
    }
    return format;
}

}

std::string translated_layout(const platform::named_locale& locale, char layout)
{
    return translated_code(locale, layout, false, 0);
}
