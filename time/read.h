#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <type_traits>

#include <time/date.h>
#include <time/export.h>
#include <time/inline/read.h>
#include <time/local.h>
#include <time/pattern.h>
#include <time/read_result.h>
#include <time/time_of_day.h>
#include <time/timedate.h>
#include <time/zone.h>

/// Dates, times and moments from text, by the formats that print them.
///
///     ka_read_date("4 July 2024", "%d %B %Y").value();   // 4 July 2024
///     ka_read_time("6:28 PM", "%I:%M %p").value();       // 18:28
///
///     const auto refused = ka_read_date("2024-02-30", "%Y-%m-%d");
///     refused.failure().message();   // "invalid_day: 30 at 8, %d, in 2024-02-30"
///
///     const ka_time_zone& zone = ka_time_zone::eastern();
///     const auto call = ka_read_time_and_date("2024-07-04 18:28", "%Y-%m-%d %H:%M", zone);
///     call->to_string("%c %Z");   // "Thu Jul   4 18:28:00 2024 EDT4"
///
/// docs/format.md says what each code reads. Nothing is guessed: a value that
/// the format does not tell all of is refused, with the place in the format; so
/// are 30 February, 24:00 and a weekday that is not the date's. Only what is
/// finer than all that was told is zero. Second 60 is read as 59, and
/// `is_leap_second` tells it.
/// Names are read in the language of the pattern (of a format, in the user's)
/// and in English, in capitals or not; white space matches any white space; NUL
/// is a character like another.
/// Literals are checked by the compiler. A format that a program has made or been
/// given is a `std::string`, a `std::string_view` or a `ka_pattern`, and checked
/// when it is used; of these the pattern is checked once.
/// Failure: only in the result. Nothing is thrown and nothing allocated, but for
/// the name of a zone of more than 15 characters. Texts of any bytes and any
/// length are read in time that grows with their length alone.

/// Named by the compiler where a literal can't be read by: see `ka_read_format`.
void ka_a_format_to_read_tells_all_of_the_value();

/// A format to read a type by, which the compiler has checked where it is a
/// literal: it must tell all of the value and have no letter that is no code. A
/// literal with `%c`, `%x` or `%X` is checked at run time, as any other format is.
template <typename Value>
class ka_read_format {
public:
    /// A literal: one that can't be read by does not compile.
    template <std::size_t Size>
    consteval ka_read_format(const char (&literal)[Size])
        : text_(literal, Size - 1), is_checked_(!ka_has_user_layout(text_))
    {
        if (ka_unreadable_code(text_) != text_.npos)
            ka_a_pattern_has_codes_of_the_format_language();
        if (is_checked_ && ka_missing<Value>(ka_fields_of(text_)) != nullptr)
            ka_a_format_to_read_tells_all_of_the_value();
    }
    /// A text of the program's, which must outlive this object. Where it can't be
    /// read by, the result is a failure with `failure`.
    ka_read_format(std::string_view text) noexcept : text_(text), is_checked_(false) {}
    ka_read_format(const std::string& text) noexcept : text_(text), is_checked_(false) {}
    template <typename Pointer>
    requires std::is_same_v<Pointer, const char*> ka_read_format(const Pointer& text)
    noexcept : text_(text), is_checked_(false) {}

    constexpr std::string_view text() const noexcept { return text_; }
    /// Whether the compiler has seen to it.
    constexpr bool is_checked() const noexcept { return is_checked_; }

private:
    std::string_view text_;
    bool is_checked_;
};

/// A date. Codes for the time of day are read and not kept: "2024-07-04 18:28" by
/// "%Y-%m-%d %H:%M" is 4 July 2024.
KA_TIME_VARNEL_API ka_read_result<ka_date>
ka_read_date(std::string_view text, const ka_read_format<ka_date>& format, ka_extent extent = ka_extent::all);
KA_TIME_VARNEL_API ka_read_result<ka_date> ka_read_date(std::string_view text, const ka_pattern& pattern,
                                                        ka_extent extent = ka_extent::all);

/// A time of day. Codes for the date are read and not kept; `%Z` reads nothing.
KA_TIME_VARNEL_API ka_read_result<ka_time>
ka_read_time(std::string_view text, const ka_read_format<ka_time>& format, ka_extent extent = ka_extent::all);
KA_TIME_VARNEL_API ka_read_result<ka_time> ka_read_time(std::string_view text, const ka_pattern& pattern,
                                                        ka_extent extent = ka_extent::all);

/// A moment, by the clocks of a zone, which must outlive it. `choice` settles the
/// times that the clocks skip or repeat, as in `ka_local_time`; `refuse` makes
/// them a failure. `%Z` reads a name of the zone, which must be that of the
/// moment, and settles a time that comes twice whatever the choice.
KA_TIME_VARNEL_API ka_read_result<ka_time_and_date>
ka_read_time_and_date(std::string_view text, const ka_read_format<ka_time_and_date>& format,
                      const ka_time_zone& zone, ka_local_choice choice = ka_local_choice::compatible,
                      ka_extent extent = ka_extent::all);
KA_TIME_VARNEL_API ka_read_result<ka_time_and_date>
ka_read_time_and_date(std::string_view text, const ka_pattern& pattern, const ka_time_zone& zone,
                      ka_local_choice choice = ka_local_choice::compatible,
                      ka_extent extent = ka_extent::all);
// A temporary zone would be gone when the moment is read.

ka_read_result<ka_time_and_date> ka_read_time_and_date(std::string_view text,
                                                       const ka_read_format<ka_time_and_date>& format,
                                                       const ka_time_zone&& zone,
                                                       ka_local_choice choice = ka_local_choice::compatible,
                                                       ka_extent extent = ka_extent::all) = delete;
ka_read_result<ka_time_and_date> ka_read_time_and_date(std::string_view text, const ka_pattern& pattern,
                                                       const ka_time_zone&& zone,
                                                       ka_local_choice choice = ka_local_choice::compatible,
                                                       ka_extent extent = ka_extent::all) = delete;
