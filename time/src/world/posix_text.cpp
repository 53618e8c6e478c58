#include "posix_text.h"

namespace world {

namespace {

constexpr std::size_t shortest_name = 3;
constexpr std::size_t longest_name = 255;

constexpr int days_before[] = {0, 31, 59, 90, 120, 151, 181, 212, 243, 273, 304, 334, 365};

bool is_digit(char c) noexcept { return '0' <= c && c <= '9'; }

bool is_letter(char c) noexcept { return ('a' <= c && c <= 'z') || ('A' <= c && c <= 'Z'); }

/// Goes through the text from the front. Once a character is wrong, nothing
/// that follows is read.
class posix_reader {
public:
    explicit posix_reader(std::string_view text) noexcept : text_(text) {}

    std::optional<fault> read(yearly_rules& rules)
    {
        read_name(rules.standard);
        rules.standard.east = -read_offset();
        rules.has_summer = !is_wrong() && !is_at_end();
        if (rules.has_summer)
            read_summer(rules);
        if (!is_wrong() && !is_at_end())
            refuse("the text should end here");
        return fault_;
    }

private:
    bool is_at_end() const noexcept { return next_ == text_.size(); }
    bool is_wrong() const noexcept { return fault_.has_value(); }
    bool shows(char c) const noexcept { return !is_at_end() && text_[next_] == c; }

    void refuse(const char* what) noexcept
    {
        if (!is_wrong())
            fault_ = {what, next_};
    }

    bool skip(char c) noexcept
    {
        if (is_wrong() || !shows(c))
            return false;
        ++next_;
        return true;
    }

    void expect(char c, const char* what) noexcept
    {
        if (!skip(c))
            refuse(what);
    }

    /// Each digit that leads past the highest number is one too many.
    int read_number(int lowest, int highest, int digits, const char* what) noexcept
    {
        int number = 0, count = 0;
        while (!is_wrong() && count < digits && !is_at_end() && is_digit(text_[next_])) {
            number = number * 10 + (text_[next_] - '0');
            if (number > highest)
                refuse(what);
            ++next_;
            ++count;
        }
        if (count == 0)
            refuse(what);
        // One more digit would have made it right, where there is room for one.
        if (number < lowest && !is_wrong()) {
            next_ -= count == digits;
            refuse(what);
        }
        return number;
    }

    /// A number that is written with all its digits.
    int read_two_digits(const char* what) noexcept
    {
        const std::size_t start = next_;
        const int number = read_number(0, 59, 2, what);
        if (next_ != start + 2)
            refuse(what);
        return number;
    }

    /// Hours, and minutes and seconds if there are any; the result is in seconds.
    int read_time(int highest_hour, int digits, const char* hours) noexcept
    {
        const bool is_negative = skip('-');
        if (!is_negative)
            skip('+');
        int seconds = read_number(0, highest_hour, digits, hours) * 3600;
        if (skip(':')) {
            seconds += read_two_digits("minutes of two digits") * 60;
            if (skip(':'))
                seconds += read_two_digits("seconds of two digits");
        }
        return is_negative ? -seconds : seconds;
    }

    int read_offset() noexcept { return read_time(24, 2, "hours, 0 to 24"); }

    void read_name(local_type& type)
    {
        const bool is_quoted = skip('<');
        const std::size_t start = next_;
        const auto belongs = [&](char c) {
            return is_letter(c) || (is_quoted && (is_digit(c) || c == '+' || c == '-'));
        };
        while (!is_at_end() && belongs(text_[next_]) && next_ - start < longest_name)
            ++next_;
        if (next_ - start < shortest_name)
            refuse("a name has at least three characters");
        if (is_wrong())
            return;
        type.abbreviation = text_.substr(start, next_ - start);
        if (is_quoted)
            expect('>', "a name in angle brackets has letters, digits and signs");
    }

    void read_summer(yearly_rules& rules)
    {
        rules.summer.is_dst = true;
        read_name(rules.summer);
        rules.summer.east = rules.standard.east + 3600;
        if (!is_at_end() && !shows(','))
            rules.summer.east = -read_offset();
        rules.start = {.month = 3, .week = 2};
        rules.end = {.month = 11, .week = 1};
        if (is_wrong() || is_at_end())
            return;
        expect(',', "a comma");
        read_point(rules.start);
        expect(',', "a comma");
        read_point(rules.end);
    }

    void read_point(yearly_point& point) noexcept
    {
        if (skip('M')) {
            point.kind = yearly_point::form::weekday;
            point.month = read_number(1, 12, 2, "a month, 1 to 12");
            expect('.', "a point");
            point.week = read_number(1, 5, 1, "a week, 1 to 5");
            expect('.', "a point");
            point.weekday = read_number(0, 6, 1, "a weekday, 0 to 6");
        } else if (skip('J')) {
            point.kind = yearly_point::form::julian;
            point.day = read_number(1, 365, 3, "a day, 1 to 365");
        } else {
            point.kind = yearly_point::form::day_of_year;
            point.day = read_number(0, 365, 3, "J, M or a day, 0 to 365");
        }
        if (skip('/'))
            point.time = read_time(167, 3, "hours, 0 to 167");
    }

    std::string_view text_;
    std::size_t next_ = 0;
    std::optional<fault> fault_;
};

}

std::optional<fault> read_posix_text(std::string_view text, yearly_rules& rules)
{
    return posix_reader(text).read(rules);
}

long long yearly_point::in(long long year) const noexcept
{
    // Counted from the year -4800, in the manner of astronomers: below 0 there
    // is a year 0, and nothing to divide is negative.
    const long long count = year + 4800, past = count - 1;
    const bool is_leap = count % 4 == 0 && (count % 100 != 0 || count % 400 == 0);
    const long long new_year = past * 365 + past / 4 - past / 100 + past / 400 - 31738;
    const auto month_start = [&](int number) { return days_before[number - 1] + (is_leap && number > 2); };

    long long number = new_year + day;
    if (kind == form::julian) {
        number += (is_leap && day >= 60) - 1;
    } else if (kind == form::weekday) {
        const long long first = new_year + month_start(month);
        const long long end = new_year + month_start(month + 1);
        number = first + (weekday - (first + 1) % 7 + 7) % 7 + (week - 1) * 7;
        if (number >= end)
            number -= 7;
    }
    return number * 86400 + time;
}

}
