#include <time/timedate.h>

#include <array>
#include <charconv>
#include <cstdlib>

#include "text.h"

namespace {

/// What the codes of a format print from.
struct fields {
    unsigned short hour;
    unsigned short minute;
    unsigned short second;
    unsigned int microsecond;
    unsigned short month;
    unsigned short day;
    short year;
    const ka_time_zone& zone;
    bool dst;
    // The user's layouts, for `%c`, `%x` and `%X`.
    const std::string& timedate_layout;
    const std::string& date_layout;
    const std::string& time_layout;

    /// Throws `invalid_date` where month, day and year form none.
    ka_date date() const { return ka_date(month, day, year); }
    unsigned short hour_of_12() const { return static_cast<unsigned short>(hour % 12 == 0 ? 12 : hour % 12); }
};

void put_number(text& out, int value, int width, char fill)
{
    const auto pattern = static_cast<unsigned int>(value);
    char digits[10];
    const char* const end =
        std::to_chars(digits, digits + sizeof digits, value < 0 ? 0u - pattern : pattern).ptr;
    const auto length = static_cast<int>(end - digits);

    if (value < 0)
        out.put('-');
    if (length < width)
        out.insert(out.size(), static_cast<std::size_t>(width - length), fill);
    out.put(std::string_view(digits, static_cast<std::size_t>(length)));
}

/// The form of most codes: two places, of a number that is never negative.
void put_two_places(text& out, unsigned int value, char fill = '0')
{
    out.put(value < 10 ? fill : static_cast<char>('0' + value / 10));
    out.put(static_cast<char>('0' + value % 10));
}

/// Microseconds, in six places.
void put_six_places(text& out, unsigned int value)
{
    put_two_places(out, value / 10000);
    put_two_places(out, value / 100 % 100);
    put_two_places(out, value % 100);
}

void put_formatted(text& out, std::string_view format, const fields& value);

struct code_row {
    char letter;
    void (*put)(text& out, const fields& value);
};

constexpr code_row code_table[] = {
    {'a', [](text& out, const fields& v) { out.put(ka_date::weekday_abbreviation(v.date().weekday())); }},
    {'A', [](text& out, const fields& v) { out.put(ka_date::weekday_name(v.date().weekday())); }},
    {'b', [](text& out, const fields& v) { out.put(ka_date::month_abbreviation(v.month)); }},
    {'B', [](text& out, const fields& v) { out.put(ka_date::month_name(v.month)); }},
    {'c', [](text& out, const fields& v) { put_formatted(out, v.timedate_layout, v); }},
    {'C', [](text& out, const fields& v) { put_number(out, v.year / 100, 0, '0'); }},
    {'d', [](text& out, const fields& v) { put_two_places(out, v.day); }},
    {'D', [](text& out, const fields& v) { put_formatted(out, "%m/%d/%y", v); }},
    {'e', [](text& out, const fields& v) { put_two_places(out, v.day, ' '); }},
    {'f', [](text& out, const fields& v) { put_formatted(out, v.year < 1000 ? "%s %P" : "%s", v); }},
    {'H', [](text& out, const fields& v) { put_two_places(out, v.hour); }},
    {'I', [](text& out, const fields& v) { put_two_places(out, v.hour_of_12()); }},
    {'j', [](text& out, const fields& v) { put_number(out, v.date().day_of_year() + 1, 3, '0'); }},
    {'k', [](text& out, const fields& v) { put_two_places(out, v.hour, ' '); }},
    {'l', [](text& out, const fields& v) { put_two_places(out, v.hour_of_12(), ' '); }},
    {'m', [](text& out, const fields& v) { put_two_places(out, v.month); }},
    {'M', [](text& out, const fields& v) { put_two_places(out, v.minute); }},
    {'n', [](text& out, const fields&) { out.put('\n'); }},
    {'p', [](text& out, const fields& v) { out.put(v.hour < 12 ? ka_time::am_name() : ka_time::pm_name()); }},
    {'P', [](text& out, const fields& v) { out.put(v.year < 0 ? ka_date::bc_name() : ka_date::ad_name()); }},
    {'q', [](text& out, const fields& v) { put_six_places(out, v.microsecond); }},
    {'r', [](text& out, const fields& v) { put_formatted(out, "%I:%M:%S %p", v); }},
    {'s', [](text& out, const fields& v) { put_number(out, std::abs(v.year), 0, '0'); }},
    {'S', [](text& out, const fields& v) { put_two_places(out, v.second); }},
    {'t', [](text& out, const fields&) { out.put('\t'); }},
    {'T', [](text& out, const fields& v) { put_formatted(out, "%H:%M:%S", v); }},
    {'U', [](text& out, const fields& v) { put_two_places(out, v.date().week_of_year(1)); }},
    {'w', [](text& out, const fields& v) { put_number(out, v.date().weekday() - 1, 0, '0'); }},
    {'W', [](text& out, const fields& v) { put_two_places(out, v.date().week_of_year(2)); }},
    {'x', [](text& out, const fields& v) { put_formatted(out, v.date_layout, v); }},
    {'X', [](text& out, const fields& v) { put_formatted(out, v.time_layout, v); }},
    {'y', [](text& out, const fields& v) { put_number(out, v.year % 100, 2, '0'); }},
    {'Y', [](text& out, const fields& v) { put_number(out, v.year, 0, '0'); }},
    {'Z',
     [](text& out, const fields& v) {
         if (v.year != 0)
             out.put(v.dst ? v.zone.dst_name() : v.zone.name());
     }},
};

using code_index = std::array<const code_row*, 256>;

constexpr code_index rows_by_letter = [] {
    code_index index = {};
    for (const code_row& row : code_table)
        index[static_cast<unsigned char>(row.letter)] = &row;
    return index;
}();

/// A letter that is no code stands for itself.
void put_code(text& out, char letter, const fields& value)
{
    const code_row* const row = rows_by_letter[static_cast<unsigned char>(letter)];
    if (row != nullptr)
        row->put(out, value);
    else
        out.put(letter);
}

/// Reads one code, from behind its "%" on: flag, width and letter. At the end
/// of the format there is a NUL to read, as behind every string.
class code_reader {
public:
    code_reader(std::string_view format, std::size_t place) : format_(format), place_(place)
    {
        if (letter() == '-') {
            is_left_ = true;
            ++place_;
        } else if (letter() == '0') {
            fill_ = '0';
            ++place_;
        }
        for (; '0' <= letter() && letter() <= '9'; ++place_)
            width_ = width_ * 10 + static_cast<std::size_t>(letter() - '0');
    }

    char letter() const { return place_ < format_.size() ? format_[place_] : '\0'; }
    std::size_t end() const { return place_ + 1; }

    /// Fills up the field that begins at `start`.
    void pad(text& out, std::size_t start) const
    {
        const std::size_t length = out.size() - start;
        if (length < width_)
            out.insert(is_left_ ? out.size() : start, width_ - length, fill_);
    }

private:
    std::string_view format_;
    std::size_t place_;
    std::size_t width_ = 0;
    bool is_left_ = false;
    char fill_ = ' ';
};

void put_formatted(text& out, std::string_view format, const fields& value)
{
    for (std::size_t place = 0; place < format.size();) {
        if (format[place] != '%') {
            out.put(format[place++]);
            continue;
        }
        const code_reader code(format, place + 1);
        const std::size_t start = out.size();
        put_code(out, code.letter(), value);
        code.pad(out, start);
        place = code.end();
    }
}

}

std::string ka_time_and_date::formatted(const std::string& format, const unsigned short& hour,
                                        const unsigned short& minute, const unsigned short& second,
                                        const unsigned int& microsecond, const unsigned short& month,
                                        const unsigned short& day, const short& year,
                                        const ka_time_zone& zone, bool dst)
{
    const fields value = {hour, minute, second, microsecond,       month,         day,
                          year, zone,   dst,    *format_timedate_, *format_date_, *format_time_};
    text out;
    put_formatted(out, format, value);
    return std::move(out).str();
}

std::string ka_time_and_date::formatted(const std::string& format, const ka_time_and_date& value)
{
    const reading now = value.local();
    return formatted(format, now.time.hours(), now.time.minutes(), now.time.seconds(),
                     now.time.microseconds(), now.month, now.day, now.year, *value.zone_, now.is_dst);
}

std::string ka_time_and_date::formatted(const std::string& format, const ka_time* time, const ka_date* date)
{
    ka_time_and_date value;
    if (date != nullptr)
        value.date(*date);
    if (time != nullptr)
        value.time(*time);
    return formatted(format, value);
}

std::string ka_time_and_date::to_string(int value, int width, char fill)
{
    text out;
    put_number(out, value, width, fill);
    return std::move(out).str();
}
