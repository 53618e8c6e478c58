#pragma once

#include <algorithm>
#include <cstdlib>
#include <string>
#include <string_view>
#include <type_traits>

#include <time/inline/codes.h>
#include <time/time_of_day.h>
#include <time/timedate.h>

/// Reads a format up to the closing brace, and prints a value in it: what the
/// formatters of both libraries share. `Error` is the library's `format_error`.
template <typename Value, typename Error>
class ka_pattern_formatter {
public:
    template <typename Context>
    constexpr auto parse(Context& context)
    {
        const auto end = std::find(context.begin(), context.end(), '}');
        pattern_ = std::string_view(context.begin(), end);
        check(pattern_);
        return end;
    }

    template <typename Context>
    auto format(const Value& value, Context& context) const
    {
        const std::string text = pattern_.empty() ? value.to_string() : in_pattern(value);
        return std::copy(text.begin(), text.end(), context.out());
    }

private:
    static constexpr bool is_letter(char c) { return ('a' <= c && c <= 'z') || ('A' <= c && c <= 'Z'); }

    /// Whether a code has nothing to print for a value.
    static constexpr bool wants_a_date(const ka_format_code& code)
    {
        return std::is_same_v<Value, ka_time> &&
               (code.need == ka_format_need::month || code.need == ka_format_need::day);
    }

    /// No constant expression: where a compiler checks a format, a call is its
    /// error. A host that is built without exceptions ends here.
    [[noreturn]] static void refuse([[maybe_unused]] const char* why)
    {
#if defined(__cpp_exceptions)
        throw Error(why);
#else
        std::abort();
#endif
    }

    static constexpr void check(std::string_view pattern)
    {
        if (pattern.find('{') != pattern.npos)
            refuse("an opening brace in the format of a date or time");
        for (ka_format_pieces pieces(pattern); !pieces.is_at_end();) {
            const ka_format_piece piece = pieces.next();
            if (!piece.is_code)
                continue;
            if (piece.is_cut_off)
                refuse("a % without a code behind it in the format of a date or time");
            const int row = ka_format_row_of(piece.letter);
            if (row < 0 && is_letter(piece.letter))
                refuse("a letter that is no code in the format of a date or time");
            if (row >= 0 && wants_a_date(ka_format_codes[row]))
                refuse("a code that only a date has in the format of a time of day");
        }
    }

    std::string in_pattern(const Value& value) const
    {
        const std::string pattern(pattern_);
        if constexpr (std::is_same_v<Value, ka_time_and_date>)
            return open_moment::text(pattern, value);
        else
            return value.to_string(pattern);
    }

    /// Opens what takes a format of a moment with its length, and not up to a NUL.
    struct open_moment : ka_time_and_date {
        static std::string text(const std::string& format, const ka_time_and_date& value)
        {
            return formatted(format, value);
        }
    };

    /// A part of the text that the formatter was made for, which outlives it.
    std::string_view pattern_;
};

/// Formats the text of a value as a string, by the formatter of either library.
template <typename Value, typename StringFormatter>
class ka_text_formatter : public StringFormatter {
public:
    template <typename Context>
    auto format(const Value& value, Context& context) const
    {
        return StringFormatter::format(value.to_string(), context);
    }
};
