#pragma once

#include <charconv>
#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <type_traits>

#include <time/date.h>
#include <time/export.h>
#include <time/inline/read.h>
#include <time/language.h>
#include <time/time_of_day.h>
#include <time/timedate.h>

/// Named by the compiler where a literal is no pattern: it has a letter that is
/// no code, such as `%Q`, or a "%" without a code at its end.
void ka_a_pattern_has_codes_of_the_format_language();

/// The text of a pattern, which the compiler has checked where it is a literal.
class ka_pattern_text {
public:
    /// A literal, up to its last character: a NUL inside it belongs to it.
    template <std::size_t Size>
    consteval ka_pattern_text(const char (&literal)[Size]) : text_(literal, Size - 1)
    {
        if (ka_misplaced_code(text_) != text_.npos)
            ka_a_pattern_has_codes_of_the_format_language();
    }
    /// A text that the program has made or been given. It must outlive this object;
    /// the pattern that is made of it keeps a copy.
    ka_pattern_text(std::string_view text) noexcept : text_(text) {}
    ka_pattern_text(const std::string& text) noexcept : text_(text) {}
    template <typename Pointer>
    requires std::is_same_v<Pointer, const char*> ka_pattern_text(const Pointer& text)
    noexcept : text_(text) {}

    constexpr std::string_view text() const noexcept { return text_; }

private:
    std::string_view text_;
};

struct ka_prepared_format;

/// A format that is checked once, in a language, to print and to read by.
///
///     const ka_pattern stamp("%d %B %Y, %H:%M", ka_language::english());
///     const ka_time_and_date call(ka_time(18, 28, 0), ka_date(7, 4, 2024), ka_time_zone::eastern());
///     stamp.to_string(call);             // "04 July 2024, 18:28"
///     char room[32];
///     *stamp.to_chars(room, room + 32, call).ptr = '\0';
///     std::string(room);                 // "04 July 2024, 18:28"
///     stamp.is_exact<ka_date>();         // true: no text of a date is read back as another
///
/// The codes are those of docs/format.md. What it prints is what `to_string` of
/// the value prints by the same format, in the pattern's language. It reads by
/// `ka_read_date` and its like (time/read.h).
/// Failure: the constructor throws `failure` for a letter that is no code and
/// for a "%" at the end; of a literal the compiler refuses both. What a code has
/// nothing to print for throws as it does from `to_string`.
/// An object never changes, so that threads can share it; a copy copies its text.
class KA_TIME_VARNEL_API ka_pattern {
public:
    /// The language's texts live as long as the pattern. In the user's language,
    /// names that are set later show, as they do from `to_string` of a value.
    explicit ka_pattern(const ka_pattern_text& format, const ka_language& language = ka_language::user());

    // Printing.

    /// A code for a number of the time of day prints zero beside a date, as one for
    /// the date does beside a time.
    std::string to_string(const ka_date& value) const;
    std::string to_string(const ka_time& value) const;
    std::string to_string(const ka_time_and_date& value) const;

    // Printing into a caller's room, from `first` to before `last`.

    /// Writes the text without a NUL, and returns its end. Where it does not
    /// fit, `ec` is `std::errc::value_too_large`, the end that of the room, and
    /// the room holds no more than a part. Allocates nothing.
    std::to_chars_result to_chars(char* first, char* last, const ka_date& value) const;
    std::to_chars_result to_chars(char* first, char* last, const ka_time& value) const;
    std::to_chars_result to_chars(char* first, char* last, const ka_time_and_date& value) const;

    /// Whether each value of a type that the pattern prints is read back as the
    /// same value: of a moment, in its zone, where the names before and after a change differ.
    /// "%Y-%m-%d" is exact for dates, "%d %B" and "%m/%d/%y" are not. For `ka_date`,
    /// `ka_time` and `ka_time_and_date` alone.
    template <typename Value>
    bool is_exact() const noexcept;

    // What it was made of.

    const std::string& format() const noexcept { return format_; }
    const ka_language& language() const noexcept { return language_; }

private:
    friend struct ka_pattern_access;

    std::string format_;
    ka_language language_;
    std::shared_ptr<const ka_prepared_format> prepared_;
};

template <>
KA_TIME_VARNEL_API bool ka_pattern::is_exact<ka_date>() const noexcept;
template <>
KA_TIME_VARNEL_API bool ka_pattern::is_exact<ka_time>() const noexcept;
template <>
KA_TIME_VARNEL_API bool ka_pattern::is_exact<ka_time_and_date>() const noexcept;
