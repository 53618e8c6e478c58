#pragma once

#include <string_view>
#include <version>

#if defined(__cpp_lib_format)
#include <format>
#endif
#if !defined(KA_TIME_VARNEL_WITHOUT_FMT) && __has_include(<fmt/format.h>)
#define KA_TIME_VARNEL_HAS_FMT
#include <fmt/format.h>
#endif

#include <time/date.h>
#include <time/inline/format.h>
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

#if defined(__cpp_lib_format)

// In the standard library's format: "{:%H:%M}" for a time, "{:>20}" for a period.

template <>
struct std::formatter<ka_date> : ka_pattern_formatter<ka_date, std::format_error> {};
template <>
struct std::formatter<ka_time> : ka_pattern_formatter<ka_time, std::format_error> {};
template <>
struct std::formatter<ka_time_and_date> : ka_pattern_formatter<ka_time_and_date, std::format_error> {};

// What a string takes, for the text of `to_string`.

template <>
struct std::formatter<ka_time_period> : ka_text_formatter<ka_time_period, std::formatter<std::string_view>> {
};
template <>
struct std::formatter<ka_wint> : ka_text_formatter<ka_wint, std::formatter<std::string_view>> {};

#endif

#if defined(KA_TIME_VARNEL_HAS_FMT)

// The same for {fmt}.

template <>
struct fmt::formatter<ka_date> : ka_pattern_formatter<ka_date, fmt::format_error> {};
template <>
struct fmt::formatter<ka_time> : ka_pattern_formatter<ka_time, fmt::format_error> {};
template <>
struct fmt::formatter<ka_time_and_date> : ka_pattern_formatter<ka_time_and_date, fmt::format_error> {};

template <>
struct fmt::formatter<ka_time_period> : ka_text_formatter<ka_time_period, fmt::formatter<fmt::string_view>> {
};
template <>
struct fmt::formatter<ka_wint> : ka_text_formatter<ka_wint, fmt::formatter<fmt::string_view>> {};

#endif
