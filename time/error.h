#pragma once

#include <cstring>

#include <time/export.h>

/// The root of the library's exceptions.
///
/// The library throws it only as `ka_time_varnel_error`; a handler can name
/// either class. It stands apart from `std::exception`: a handler for that one,
/// such as the last resort in many a `main`, does not catch it, and one that
/// nobody catches ends the program with
///
///     terminate called after throwing an instance of 'ka_time_varnel_error'
///
/// and no text. Such a `main` needs a handler for `ka_varnel_error` beside it.
/// An object holds its text in itself, so building, copying and assigning one
/// allocate nothing.
class KA_TIME_VARNEL_API ka_varnel_error {
public:
    /// Keeps the first 511 characters of `text`; a null pointer gives "".
    explicit ka_varnel_error(const char* text) noexcept
    {
        if (text != nullptr)
            std::strncpy(message_, text, text_size - 1);
    }
    ka_varnel_error(const ka_varnel_error&) noexcept = default;
    ka_varnel_error& operator=(const ka_varnel_error&) noexcept = default;
    virtual ~ka_varnel_error() = default;

    /// The text, zero-terminated; valid as long as the object lives. It has no
    /// exception specification, so that the override of a derived class needs none.
    virtual const char* what() const { return message_; }

private:
    static constexpr int text_size = 512;
    char message_[text_size] = {};
};

/// Every failure that the library reports.
///
///     try {
///         ka_date(2, 30, 2024);
///     } catch (const ka_time_varnel_error& error) {
///         error.code();   // 3
///         error.what();   // "invalid_date: Month( 2 ), day( 30 ), year( 2024 ) [time/src/date:138]"
///     }
///
/// A message is the symbol of its code, ": ", the value that was refused, and
/// the source line that refused it. Numbers in it are plain decimal, whatever
/// the locale of the host. The codes:
///
///     code  symbol                 description
///      0    failure                Requested operation failed.
///      1    invalid_time           Invalid time value.
///      2    invalid_time_period    Invalid time period.
///      3    invalid_date           Invalid date.
///      4    invalid_day            Invalid day.
///      5    invalid_weekday        Invalid weekday.
///      6    invalid_week           Invalid week.
///      7    invalid_month          Invalid month.
///      8    invalid_year           Invalid year.
///      9    divide_by_zero         Division by zero failure.
class KA_TIME_VARNEL_API ka_time_varnel_error : public ka_varnel_error {
public:
    /// Takes any code, also one without a row above, and any text.
    ka_time_varnel_error(int code, const char* text) noexcept;
    ka_time_varnel_error(const ka_time_varnel_error&) noexcept;
    /// Copies: the source stays as it was.
    ka_time_varnel_error(ka_time_varnel_error&&) noexcept;
    ka_time_varnel_error& operator=(const ka_time_varnel_error&) noexcept;
    ka_time_varnel_error& operator=(ka_time_varnel_error&&) noexcept;
    ~ka_time_varnel_error() override;

    /// The code that the error was built with.
    int code() const noexcept;

    /// The symbol of a code, such as "invalid_day"; null for a code outside 0 to 9.
    static const char* symbol(int code) noexcept;
    /// What a code means, in a sentence; null for a code outside 0 to 9.
    static const char* description(int code) noexcept;

private:
    int code_;
};
