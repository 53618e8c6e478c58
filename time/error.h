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

    /// The text, zero-terminated; valid as long as the object lives. Declared
    /// without `noexcept`, so that the override of a derived class needs none.
    virtual const char* what() const { return message_; }

private:
    static constexpr int text_size = 512;
    char message_[text_size] = {};
};

/// The codes of failures. The symbol of each is its name here without the
/// first three characters, and its description is what stands beside it.
enum ka_error : int {
    ka_failure = 0,             ///< Requested operation failed.
    ka_invalid_time = 1,        ///< Invalid time value.
    ka_invalid_time_period = 2, ///< Invalid time period.
    ka_invalid_date = 3,        ///< Invalid date.
    ka_invalid_day = 4,         ///< Invalid day.
    ka_invalid_weekday = 5,     ///< Invalid weekday.
    ka_invalid_week = 6,        ///< Invalid week.
    ka_invalid_month = 7,       ///< Invalid month.
    ka_invalid_year = 8,        ///< Invalid year.
    ka_divide_by_zero = 9,      ///< Division by zero failure.
};

/// Every failure that the library reports.
///
///     try {
///         ka_date(2, 30, 2024);
///     } catch (const ka_time_varnel_error& error) {
///         error.code() == ka_invalid_date;   // true
///         error.what();   // "invalid_date: Month( 2 ), day( 30 ), year( 2024 ) [time/src/date:135]"
///     }
///
/// A message is the symbol of its code, ": ", the value that was refused, and
/// the source line that refused it. Numbers in it are plain decimal, whatever
/// the locale of the host.
class KA_TIME_VARNEL_API ka_time_varnel_error : public ka_varnel_error {
public:
    /// Takes any code, also one that is not in `ka_error`, and any text.
    ka_time_varnel_error(int code, const char* text) noexcept;
    ka_time_varnel_error(const ka_time_varnel_error&) noexcept;
    /// Copies: the source stays as it was.
    ka_time_varnel_error(ka_time_varnel_error&&) noexcept;
    ka_time_varnel_error& operator=(const ka_time_varnel_error&) noexcept;
    ka_time_varnel_error& operator=(ka_time_varnel_error&&) noexcept;
    ~ka_time_varnel_error() override;

    /// The code that the error was built with: of the library's own errors a `ka_error`.
    int code() const noexcept;

    /// The symbol of a code, such as "invalid_day"; null for a code outside 0 to 9.
    static const char* symbol(int code) noexcept;
    /// What a code means, in a sentence; null for a code outside 0 to 9.
    static const char* description(int code) noexcept;

private:
    int code_;
};
