#pragma once

#include <optional>
#include <string>
#include <system_error>

#include <time/read.h>

#include "values.h"

// The other way round: what a pattern prints, it reads back as the same value,
// whenever it calls itself exact. Texts and formats of any kind do no harm.

/// A format that tells all of a value, in any order, with anything in between.
inline std::string complete_format(input& in)
{
    constexpr const char* years[] = {"%Y", "%f", "%s %P", "%C:%y", "%y%Y"};
    constexpr const char* days[] = {"%m-%d", "%d.%m.", "%e %B", "%b%d", "%j",
                                    "%U,%a", "%A %W",  "%w/%W", "%D %j"};
    constexpr const char* hours[] = {"%H", "%k", "%I:%p", "%p %l", "%r %H", "%T|%k", "%X%H"};
    constexpr const char* rest[] = {"%M:%S.%q", "%M%S%q", "%q|%S|%M", "%T.%q", "%M %T %q", "%r%S%M%q"};
    constexpr const char* more[] = {"",   "%Z",  "%a %Z", "%x", "%c", "%n%t%%", "%C",
                                    "%s", "%5d", "A",     "9",  "-",  " "};
    const auto any_of = [&](const auto& list) {
        return std::string(list[in.take<unsigned char>() % std::size(list)]);
    };
    std::string parts[] = {any_of(years), any_of(days), any_of(hours), any_of(rest), any_of(more)};
    for (std::size_t last = std::size(parts) - 1; last > 0; --last)
        std::swap(parts[last], parts[in.take<unsigned char>() % (last + 1)]);
    std::string format;
    for (const std::string& part : parts) {
        format += part;
        if (in.one_in(4))
            continue;
        const char between = in.take<char>();
        format += between == '%' ? ' ' : between;
    }
    return format;
}

inline auto read_by(const std::string& text, const ka_pattern& pattern, const ka_date&)
{
    return ka_read_date(text, pattern);
}

inline auto read_by(const std::string& text, const ka_pattern& pattern, const ka_time&)
{
    return ka_read_time(text, pattern);
}

inline auto read_by(const std::string& text, const ka_pattern& pattern, const ka_time_and_date& value)
{
    return ka_read_time_and_date(text, pattern, value.time_zone());
}

inline std::optional<ka_pattern> pattern_of(const std::string& format)
{
    try {
        return ka_pattern(format);
    } catch (const ka_time_varnel_error&) {
        return std::nullopt;
    }
}

/// `text` is what a witness prints of the value, or nothing where there is no text.
template <typename Value>
void check_pattern(const Value& value, const std::string& format, const std::optional<std::string>& text,
                   std::size_t room, bool is_in_range)
{
    const std::optional<ka_pattern> pattern = pattern_of(format);
    if (!pattern)
        return;
    // Any text: the format itself is one.
    if (const auto read = read_by(format, *pattern, value))
        agree(read.end() == format.size(), "the end of a text");
    if (!text)
        return;
    agree(pattern->to_string(value) == *text, "the text of a pattern");
    std::string written(room + 1, '#');
    const std::to_chars_result result = pattern->to_chars(written.data(), written.data() + room, value);
    agree((result.ec == std::errc()) == (room >= text->size()), "the room of a text");
    agree(result.ec != std::errc() || std::string(written.data(), result.ptr) == *text, "the text in a room");
    agree(result.ec == std::errc() || result.ptr == written.data() + room, "the end of a room too small");
    agree(written.back() == '#', "what lies behind a room");
    if (!is_in_range || !pattern->is_exact<Value>())
        return;
    const auto read = read_by(*text, *pattern, value);
    if (!read)
        std::fprintf(stderr, "%s by %s\n", read.failure().message(), format.c_str());
    agree(read && *read == value, "what a pattern reads back");
}
