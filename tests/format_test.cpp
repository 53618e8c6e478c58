#include <sstream>
#include <string>

#include <gtest/gtest.h>

#include <time/language.h>
#include <time/time_varnel.h>

#include "expect_error.h"

namespace {

using namespace std::string_literals;

const ka_time time_(18, 28, 38, 123);
const ka_date date_(7, 4, 1991);

/// Writes what a derived class may write.
struct open_moment : ka_time_and_date {
    template <typename... Values>
    static std::string text(const Values&... values)
    {
        return formatted(values...);
    }
};

TEST(formats, a_missing_half_is_zero)
{
    EXPECT_EQ(date_.to_string("%H %I %k %l %M %p %q|%r|%S %T"),
              "00 12  0 12 00 AM 000000|12:00:00 AM|00 00:00:00");
    EXPECT_EQ(time_.to_string("%C %d %D %e|%f|%m %P %s %y %Y|%Z|"),
              "0 00 00/00/00  0|0 A.D.|00 A.D. 0 00 0||");
    // Whatever the user's layouts are.
    const ka_language user = ka_language::user();
    EXPECT_EQ(date_.to_string("%c"), date_.to_string(user.time_and_date_layout()));
    EXPECT_EQ(date_.to_string("%X"), date_.to_string(user.time_layout()));
    EXPECT_EQ(time_.to_string("%x"), time_.to_string(user.date_layout()));
    for (const char code : "aAjUwW"s)
        expect_error("invalid_date", "Month( 0 ), day( 0 ), year( 0 )", "time/src/date",
                     [&] { time_.to_string("text%"s + code); });
    expect_error("invalid_month", "0", "time/src/date", [&] { time_.to_string("%b"); });
    const ka_time_zone& before = ka_time_and_date::default_time_zone();
    ka_time_and_date::default_time_zone(ka_time_zone::pacific());
    EXPECT_EQ(date_.to_string("%Z"), "PST8");
    const std::string codes = "%Y-%m-%d %T %Z";
    EXPECT_EQ(open_moment::text(codes, nullptr, &date_), "1991-07-04 16:00:00 PDT7");
    EXPECT_EQ(open_moment::text(codes, &time_, nullptr), "1969-12-31 18:28:38 PST8");
    EXPECT_EQ(open_moment::text(codes, ka_time_and_date()), "1969-12-31 16:00:00 PST8");
    ka_time_and_date::default_time_zone(before);
}

TEST(formats, a_date_stepped_out_of_the_range)
{
    ka_date beyond = ka_date::max_date();
    ++beyond;
    EXPECT_EQ(beyond.to_string("%Y %m %d"), "32767 01 01");
    for (const char* code : {"%a", "%A", "%j", "%U"})
        expect_error("invalid_date", "Month( 1 ), day( 1 ), year( 32767 )", "time/src/date",
                     [&] { beyond.to_string(code); });
}

TEST(formats, the_year_of_a_date_stepped_far_away_is_a_short)
{
    ka_date before = ka_date::min_date();
    for (int days = 0; days < 32083; ++days)
        --before;
    ka_date beyond = ka_date::max_date();
    for (int days = 0; days < 367; ++days)
        ++beyond;
    EXPECT_EQ(beyond.to_string("%Y %s"), "-32768 32768");
    for (const ka_date& date : {before, beyond}) {
        std::string codes, texts;
        for (int count = 0; count < 200; ++count) {
            ASSERT_EQ(date.to_string(codes), texts);
            codes += "%Y";
            texts += std::to_string(date.year());
        }
    }
}

TEST(formats, flags_widths_and_unknown_letters)
{
    const ka_time_and_date moment(time_, date_, ka_time_zone::pacific());
    // clang-format off
    const std::pair<std::string, std::string> rows[] = {
        {"%%|%5%|%#d|%-3z|%3q%1Y%0H%-H|%3Z|%6Z|%-6Z|", "%|    %|#d|z  |00012319911818|PDT7|  PDT7|PDT7  |"},
        {"%5d|%-5d|%05d|%5e|%-5e|%05e|%000007d", "   04|04   |00004|    4| 4   |000 4|0000004"},
        {"%-05d|%0-5d|%--5d|% d|%12T|%-12T|%010D", "04   |-5d|-5d| d|    18:28:38|18:28:38    |0007/04/91"},
        {"%18446744073709551619d", " 04"}, {"", ""}, {"abc%", "abc\0"s}, {"%5", "    \0"s}, {"%-3", "\0  "s},
    };
    // clang-format on
    for (const auto& [format, text] : rows)
        EXPECT_EQ(moment.to_string(format.c_str()), text) << format;
    EXPECT_EQ(date_.to_string("a\0%d%\0z"s), "a\00004\0z"s);
    // The text that is longest for its format: at any length there is room for it.
    std::string codes, texts;
    for (int count = 0; count < 120; ++count) {
        ASSERT_EQ(moment.to_string(codes.c_str()), texts);
        codes += "%q";
        texts += "000123";
    }
}

template <typename Value>
void expect_default_format(const Value& value, const std::string& start, const std::string& text)
{
    EXPECT_EQ(Value::default_format(), start);
    const std::pair<std::string, std::string> rows[] = {{""s, ""s}, {"a\0%E%"s, "a\0E\0"s}, {start, text}};
    for (const auto& [format, shown] : rows) {
        Value::default_format(format);
        EXPECT_EQ(Value::default_format(), format);
        std::ostringstream printed;
        value.print(printed);
        EXPECT_EQ(value.to_string(), shown);
        EXPECT_EQ(printed.str(), shown);
    }
}

TEST(formats, default_formats_and_names_set_later)
{
    const ka_time_and_date moment(time_, date_);
    const std::string date = date_.to_string(ka_language::user().date_layout());
    expect_default_format(date_, "%x", date);
    expect_default_format(time_, "%H:%M:%S:%q", "18:28:38:000123");
    expect_default_format(moment, "%x %H:%M:%S:%q", date + " 18:28:38:000123");
    EXPECT_EQ(moment.to_string(nullptr), moment.to_string());
    ka_time::pm_name("%H");
    EXPECT_EQ(moment.to_string("%3p|%r"), " %H|06:28:38 %H");
    ka_time::pm_name("PM");
}

}
