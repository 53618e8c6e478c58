#pragma once

#include <cstddef>
#include <string_view>
#include <type_traits>

#include <time/export.h>

/// Why a text was not read: where, what stood there, and what was wanted.
///
///     const ka_read_failure failure(4, "2024-02-30", 8, 2, "%d");
///     failure.message();    // "invalid_day: 30 at 8, %d, in 2024-02-30"
///     failure.position();   // 8
///     failure.length();     // 2
///     failure.code();       // 4, which is invalid_day
///
/// It holds its texts in itself, so that building and copying one allocate
/// nothing and nothing can dangle.
class KA_TIME_VARNEL_API ka_read_failure {
public:
    /// What every reader builds its refusals with.
    ///
    /// `code` is one of `ka_time_varnel_error`, 0 to 9; any other is taken as 0. Position and length are
    /// in bytes of `text`, and are cut where they reach beyond it. `field` is
    /// what was to be read: a code such as "%d", a name such as "day", or the
    /// literal characters in quotes.
    ka_read_failure(int code, std::string_view text, std::size_t position, std::size_t length,
                    std::string_view field) noexcept;

    /// One of the codes of `ka_time_varnel_error`: that of the field, such as
    /// `invalid_month`, or `failure` where no field of a date or time is at fault.
    int code() const noexcept { return code_; }
    /// The first byte, from 0, that did not fit; the length of the text where it ended too early.
    std::size_t position() const noexcept { return position_; }
    /// The bytes that did not fit; 0 where the text ended too early.
    std::size_t length() const noexcept { return length_; }
    /// What was to be read there, cut after 31 bytes.
    std::string_view field() const noexcept { return {field_, field_size_}; }
    /// The symbol of the code, what stood there, the position, the field and
    /// the text. Long texts are cut ("...") and control characters shown as
    /// "?", so that a hostile text does no harm in a log. Zero-terminated.
    const char* message() const noexcept { return message_; }

    /// Throws the `ka_time_varnel_error` of this code with this message.
    [[noreturn]] void raise() const;

private:
    /// None, ever: it makes the class one of constant expressions, and with it
    /// the results that hold a value.
    constexpr ka_read_failure() noexcept {}

    std::size_t position_;
    std::size_t length_;
    int code_;
    unsigned char field_size_;
    char field_[31];
    char message_[256];
};

/// How much of a text has to match.
enum class ka_extent {
    all,  ///< to its last character
    start ///< as far as the form goes; `end` of the result tells where
};

/// What a reader gives: the value, or why there is none.
///
///     const ka_read_result<ka_date> read(ka_date(7, 4, 2024), 10);
///     read.has_value();   // true
///     read->year();       // 2024
///     read.value();       // 4 July 2024; of a failure, this throws
///
/// Nothing is thrown but by `value`, and nothing is allocated. `T` is a plain
/// value such as `ka_date`.
template <typename T>
class ka_read_result {
    static_assert(std::is_trivially_copyable_v<T>);

public:
    /// A value that was read from the first `end` bytes of a text.
    constexpr ka_read_result(const T& value, std::size_t end, bool is_leap_second = false) noexcept
        : value_(value), end_(end), has_value_(true), is_leap_second_(is_leap_second)
    {}
    ka_read_result(const ka_read_failure& failure) noexcept
        : failure_(failure), end_(failure.position()), has_value_(false), is_leap_second_(false)
    {}

    constexpr bool has_value() const noexcept { return has_value_; }
    constexpr explicit operator bool() const noexcept { return has_value_; }

    /// The value; without one, throws the `ka_time_varnel_error` of the failure.
    constexpr const T& value() const
    {
        if (!has_value_)
            failure_.raise();
        return value_;
    }
    constexpr T value_or(const T& other) const noexcept { return has_value_ ? value_ : other; }
    /// The value, which must be there.
    constexpr const T& operator*() const noexcept { return value_; }
    constexpr const T* operator->() const noexcept { return &value_; }

    /// The failure, which must be there.
    const ka_read_failure& failure() const noexcept { return failure_; }

    /// How many bytes of the text were read: all of them, unless the caller has
    /// asked for less, or those before the failure.
    constexpr std::size_t end() const noexcept { return end_; }
    /// Whether the text said second 60, which was read as 59.
    constexpr bool is_leap_second() const noexcept { return is_leap_second_; }

private:
    union {
        T value_;
        ka_read_failure failure_;
    };
    std::size_t end_;
    bool has_value_;
    bool is_leap_second_;
};
