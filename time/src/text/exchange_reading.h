#pragma once

#include <cstddef>
#include <string_view>

#include <time/exchange.h>

#include "../access.h"
#include "../throw.h"

// What the texts of all standards are read with.

namespace exchange {

/// Walks over a text. The first thing that does not fit is kept, with its place;
/// each step gives whether all is well.
class scanner {
public:
    scanner(std::string_view text, ka_extent extent) noexcept : text_(text), extent_(extent) {}

    std::size_t at() const noexcept { return at_; }
    bool is_at_end() const noexcept { return at_ == text_.size(); }
    std::string_view rest() const noexcept { return text_.substr(at_); }
    bool sees(char character) const noexcept { return !is_at_end() && text_[at_] == character; }
    bool sees_digit() const noexcept { return !is_at_end() && is_digit(text_[at_]); }
    bool sees_letter() const noexcept { return !is_at_end() && is_letter(text_[at_]); }
    void skip(std::size_t count) noexcept { at_ += count; }
    char take() noexcept { return text_[at_++]; }
    int take_digit() noexcept { return text_[at_++] - '0'; }
    bool takes(char character) noexcept
    {
        if (!sees(character))
            return false;
        ++at_;
        return true;
    }
    /// The letters from here on.
    std::string_view take_word() noexcept;

    /// Exactly so many digits.
    bool number(int digits, int& value, ka_error code, const char* field) noexcept;
    /// The same, from `low` to `high`.
    bool number(int digits, int low, int high, int& value, ka_error code, const char* field) noexcept;
    /// A character, named in quotes.
    bool literal(char character, const char* quoted) noexcept
    {
        return takes(character) || fails(ka_failure, at_, 1, quoted);
    }
    /// Whether the text has to match to its end.
    bool wants_all() const noexcept { return extent_ == ka_extent::all; }
    bool ends() noexcept
    {
        return is_at_end() || !wants_all() || fails(ka_failure, at_, rest().size(), "end");
    }
    /// Back to a place where it stood.
    void back_to(std::size_t place) noexcept { at_ = place; }
    /// One of some names, whatever the case of letters where that is said; its index.
    bool name(const std::string_view* names, int count, bool in_any_case, int& index, ka_error code,
              const char* field) noexcept;

    /// Always false.
    [[gnu::cold]] bool fails(ka_error code, std::size_t position, std::size_t length,
                             const char* field) noexcept;
    ka_read_failure failure() const noexcept
    {
        return {static_cast<int>(code_), text_, position_, length_, field_};
    }

    static bool is_digit(char character) noexcept { return '0' <= character && character <= '9'; }
    static bool is_letter(char character) noexcept
    {
        const auto lower = static_cast<char>(character | 0x20);
        return 'a' <= lower && lower <= 'z';
    }

private:
    std::string_view text_;
    std::size_t at_ = 0;
    ka_extent extent_;
    ka_error code_ = ka_failure;
    std::size_t position_ = 0;
    std::size_t length_ = 0;
    const char* field_ = "";
};

/// A time of day as it stands in a text.
struct told_time {
    int second_of_day = 0;
    int microsecond = 0;
    bool has_seconds = true;
    bool is_leap_second = false;
};

/// An offset as it stands in a text.
struct told_offset {
    int seconds = 0;
    bool is_known = true;
    /// Whether it is told by "Z".
    bool is_zulu = false;
};

/// Four digits, or a sign and six; counted through 0.
bool read_year(scanner& in, int& year) noexcept;
/// A year, month and day with hyphens.
bool read_date(scanner& in, int& julian_day) noexcept;
/// A day of a month that is known.
bool is_day(scanner& in, std::size_t position, int day, int month, int year) noexcept;
/// Hours and minutes, and seconds where these are there.
bool read_clock(scanner& in, bool needs_seconds, told_time& time) noexcept;
/// The fraction behind the point, where there is one.
bool read_fraction(scanner& in, told_time& time) noexcept;
/// All of RFC 3339 but the offset, from the start of a text.
bool read_local_clock(scanner& in, std::string_view text, int& julian_day, told_time& time) noexcept;
/// The offset of RFC 3339.
bool read_offset(scanner& in, told_offset& offset) noexcept;
/// A weekday that was told, 0 (Sunday) to 6, has to be that of the date.
bool is_weekday(scanner& in, std::size_t position, int told, int julian_day) noexcept;

/// The instant of a clock so many seconds ahead.
inline ka_time_period instant_of(int julian_day, const told_time& time, int seconds_ahead) noexcept
{
    return ka_access::period(julian_day * 86400ll + time.second_of_day - seconds_ahead, time.microsecond);
}

inline ka_time_and_date moment_of(const ka_time_period& instant, const ka_time_zone& zone) noexcept
{
    ka_time_and_date moment;
    moment.time_zone(zone);
    moment.utc_time_and_date(instant);
    return moment;
}

inline ka_read_result<ka_told_moment> result_of(std::size_t end, int julian_day, const told_time& time,
                                                const told_offset& offset) noexcept
{
    const ka_told_moment told{moment_of(instant_of(julian_day, time, offset.seconds), ka_time_zone::utc()),
                              ka_time_period(offset.seconds), offset.is_known};
    return {told, end, time.is_leap_second};
}

}
