#pragma once

#include <string_view>

// The format language: its pieces and its codes. Whatever prints by a format,
// checks one or reads by one goes by what stands here, and a new code is a row.

/// A piece of a format: one literal character, or one code with flag and width.
struct ka_format_piece {
    /// The character, or the letter of the code.
    char letter = '\0';
    bool is_code = false;
    /// Whether the code has a flag or a width.
    bool is_padded = false;
    /// Whether the format ends before the letter of this code, which then is NUL.
    bool is_cut_off = false;
    /// Whether the field stands left, with blanks behind it.
    bool is_left = false;
    char fill = ' ';
    /// The least number of characters. It wraps in 64 bits.
    unsigned long long width = 0;
};

/// Cuts a format into its pieces, from the first to the last.
class ka_format_pieces {
public:
    explicit constexpr ka_format_pieces(std::string_view format) noexcept
        : next_(format.data()), end_(format.data() + format.size())
    {}

    constexpr bool is_at_end() const noexcept { return next_ == end_; }
    /// What is not cut yet.
    constexpr std::string_view rest() const noexcept
    {
        return {next_, static_cast<std::string_view::size_type>(end_ - next_)};
    }

    /// The next piece of a format that is not at its end.
    constexpr ka_format_piece next() noexcept
    {
        const char letter = take();
        return letter == '%' ? next_code() : ka_format_piece{letter};
    }

    // The same in steps, for those who print at speed: a "%" that is taken
    // stands before a code, whose letter follows where flag and width do not.

    constexpr char take() noexcept { return *next_++; }
    /// The next character, or NUL at the end.
    constexpr char peek() const noexcept { return next_ != end_ ? *next_ : '\0'; }
    /// The same where a NUL stands behind the format, as it does behind every string.
    constexpr char peek_to_nul() const noexcept { return *next_; }

    constexpr ka_format_piece next_code() noexcept
    {
        ka_format_piece piece;
        piece.is_code = true;
        const char* const first = next_;
        piece.is_left = peek() == '-';
        piece.fill = peek() == '0' ? '0' : ' ';
        if (piece.is_left || piece.fill == '0')
            ++next_;
        for (; '0' <= peek() && peek() <= '9'; ++next_)
            piece.width = piece.width * 10 + static_cast<unsigned long long>(*next_ - '0');
        piece.is_padded = next_ != first;
        piece.is_cut_off = is_at_end();
        if (!is_at_end())
            piece.letter = take();
        return piece;
    }

private:
    const char* next_;
    const char* end_;
};

/// What a code tells of a value.
enum class ka_format_field : unsigned char {
    hour,
    minute,
    second,
    month,
    day,
    year,
    microsecond,
    hour_of_12,
    half_of_day,
    century,
    year_of_century,
    year_of_era,
    year_with_era,
    era,
    weekday,
    day_of_year,
    week_from_sunday,
    week_from_monday,
    zone,
    user_timedate,
    user_date,
    user_time,
    pieces
};

/// How a code writes that.
enum class ka_format_form : unsigned char {
    two_digits,
    two_places,
    three_digits,
    six_digits,
    plain,
    name,
    abbreviation,
    /// By the pieces of another format.
    format
};

/// What a code has to be told of a value. Without a date, a number of it is 0;
/// a `day` must be one of the calendar.
enum class ka_format_need : unsigned char { nothing, time, date, month, day, zone };

struct ka_format_code {
    char letter;
    ka_format_field field;
    ka_format_form form;
    ka_format_need need;
    std::string_view format = {};
};

// clang-format off
inline constexpr ka_format_code ka_format_codes[] = {
    {'a', ka_format_field::weekday, ka_format_form::abbreviation, ka_format_need::day},
    {'A', ka_format_field::weekday, ka_format_form::name, ka_format_need::day},
    {'b', ka_format_field::month, ka_format_form::abbreviation, ka_format_need::month},
    {'B', ka_format_field::month, ka_format_form::name, ka_format_need::month},
    {'c', ka_format_field::user_timedate, ka_format_form::format, ka_format_need::nothing},
    {'C', ka_format_field::century, ka_format_form::plain, ka_format_need::date},
    {'d', ka_format_field::day, ka_format_form::two_digits, ka_format_need::date},
    {'D', ka_format_field::pieces, ka_format_form::format, ka_format_need::date, "%m/%d/%y"},
    {'e', ka_format_field::day, ka_format_form::two_places, ka_format_need::date},
    {'f', ka_format_field::year_with_era, ka_format_form::format, ka_format_need::date},
    {'H', ka_format_field::hour, ka_format_form::two_digits, ka_format_need::time},
    {'I', ka_format_field::hour_of_12, ka_format_form::two_digits, ka_format_need::time},
    {'j', ka_format_field::day_of_year, ka_format_form::three_digits, ka_format_need::day},
    {'k', ka_format_field::hour, ka_format_form::two_places, ka_format_need::time},
    {'l', ka_format_field::hour_of_12, ka_format_form::two_places, ka_format_need::time},
    {'m', ka_format_field::month, ka_format_form::two_digits, ka_format_need::date},
    {'M', ka_format_field::minute, ka_format_form::two_digits, ka_format_need::time},
    {'n', ka_format_field::pieces, ka_format_form::format, ka_format_need::nothing, "\n"},
    {'p', ka_format_field::half_of_day, ka_format_form::name, ka_format_need::time},
    {'P', ka_format_field::era, ka_format_form::name, ka_format_need::date},
    {'q', ka_format_field::microsecond, ka_format_form::six_digits, ka_format_need::time},
    {'r', ka_format_field::pieces, ka_format_form::format, ka_format_need::time, "%I:%M:%S %p"},
    {'s', ka_format_field::year_of_era, ka_format_form::plain, ka_format_need::date},
    {'S', ka_format_field::second, ka_format_form::two_digits, ka_format_need::time},
    {'t', ka_format_field::pieces, ka_format_form::format, ka_format_need::nothing, "\t"},
    {'T', ka_format_field::pieces, ka_format_form::format, ka_format_need::time, "%H:%M:%S"},
    {'U', ka_format_field::week_from_sunday, ka_format_form::two_digits, ka_format_need::day},
    {'w', ka_format_field::weekday, ka_format_form::plain, ka_format_need::day},
    {'W', ka_format_field::week_from_monday, ka_format_form::two_digits, ka_format_need::day},
    {'x', ka_format_field::user_date, ka_format_form::format, ka_format_need::nothing},
    {'X', ka_format_field::user_time, ka_format_form::format, ka_format_need::nothing},
    {'y', ka_format_field::year_of_century, ka_format_form::two_digits, ka_format_need::date},
    {'Y', ka_format_field::year, ka_format_form::plain, ka_format_need::date},
    {'Z', ka_format_field::zone, ka_format_form::name, ka_format_need::zone},
};
// clang-format on

/// The place of a letter's row in the table, or -1 where the letter is no code.
constexpr int ka_format_row_of(char letter) noexcept
{
    int row = 0;
    for (const ka_format_code& code : ka_format_codes) {
        if (code.letter == letter)
            return row;
        ++row;
    }
    return -1;
}
