#pragma once

#include <algorithm>
#include <cstdlib>
#include <string>
#include <string_view>
#include <type_traits>
#include <version>

#if defined(__cpp_lib_format)
#include <format>
#endif
#if !defined(KA_TIME_VARNEL_WITHOUT_FMT) && __has_include(<fmt/format.h>)
#define KA_TIME_VARNEL_HAS_FMT
#include <fmt/format.h>
#endif

#include <time/date.h>
#include <time/inline/codes.h>
#include <time/time_of_day.h>
#include <time/timedate.h>
#include <time/tperiod.h>
#include <time/wint.h>

/// Formatters, for `std::format` and for {fmt}.
///
///     #include <time/format.h>
///
///     ka_date date(7, 4, 2024);
///     fmt::format("{:%A, %d %B %f}", date);       // "Thursday, 04 July 2024"
///     fmt::format("{}", date);                    // "07/04/24", as date.to_string()
///     fmt::format("{:%Y|%8H|%-8H|}", date);       // "2024|      00|00      |"
///     fmt::format("{:>20}", ka_time_period(90));  // "          90 seconds"
///
/// Which of the two, whose `format` are called alike: that of the standard library where the compiler has it,
/// and that of {fmt} where <fmt/format.h> is found, whichever is included
/// first. A program that wants no {fmt} defines KA_TIME_VARNEL_WITHOUT_FMT.
///
/// Dates, times and moments: behind the colon comes a format of docs/format.md,
/// up to the closing brace. Widths are those of its codes. Nothing behind the
/// colon, or no colon, is the default format.
/// Durations and wide integers: behind the colon comes what a string takes:
/// fill, alignment (to the left, if none is named), width, precision.
/// Failure: the library itself refuses no format, but here one is mostly meant
/// for a compiler to check. These don't compile, or throw `format_error` where
/// the text is read at run time:
/// - a `%` at the end, with no code behind it;
/// - a letter that is no code, such as `%Q`; other characters print themselves,
///   as in `%%`;
/// - for a time of day, the names and numbers that only a date has: `%a %A %b
///   %B %j %U %w %W`;
/// - an opening brace. A closing one ends the format.
/// What `to_string` throws passes through as it is: a layout of the user's
/// locale (`%c`, `%x`) can hold a code that a time of day has nothing for.
/// Text of `char` only.

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

#if defined(__cpp_lib_format)

template <>
struct std::formatter<ka_date> : ka_pattern_formatter<ka_date, std::format_error> {};
template <>
struct std::formatter<ka_time> : ka_pattern_formatter<ka_time, std::format_error> {};
template <>
struct std::formatter<ka_time_and_date> : ka_pattern_formatter<ka_time_and_date, std::format_error> {};

template <>
struct std::formatter<ka_time_period> : std::formatter<std::string_view> {
    template <typename Context>
    auto format(const ka_time_period& period, Context& context) const
    {
        return std::formatter<std::string_view>::format(period.to_string(), context);
    }
};
template <>
struct std::formatter<ka_wint> : std::formatter<std::string_view> {
    template <typename Context>
    auto format(const ka_wint& value, Context& context) const
    {
        return std::formatter<std::string_view>::format(value.to_string(), context);
    }
};

#endif

#if defined(KA_TIME_VARNEL_HAS_FMT)

template <>
struct fmt::formatter<ka_date> : ka_pattern_formatter<ka_date, fmt::format_error> {};
template <>
struct fmt::formatter<ka_time> : ka_pattern_formatter<ka_time, fmt::format_error> {};
template <>
struct fmt::formatter<ka_time_and_date> : ka_pattern_formatter<ka_time_and_date, fmt::format_error> {};

template <>
struct fmt::formatter<ka_time_period> : fmt::formatter<fmt::string_view> {
    template <typename Context>
    auto format(const ka_time_period& period, Context& context) const
    {
        return fmt::formatter<fmt::string_view>::format(period.to_string(), context);
    }
};
template <>
struct fmt::formatter<ka_wint> : fmt::formatter<fmt::string_view> {
    template <typename Context>
    auto format(const ka_wint& value, Context& context) const
    {
        return fmt::formatter<fmt::string_view>::format(value.to_string(), context);
    }
};

#endif
