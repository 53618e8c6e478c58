#include <climits>
#include <ctime>
#include <functional>
#include <new>
#include <random>
#include <sstream>
#include <stdexcept>
#include <string>

#include <gtest/gtest.h>

#include <time/time_varnel.h>

#include "expect_error.h"

namespace {

using namespace std::string_literals;

class formats : public testing::Test {
protected:
    formats() { ka_time_and_date::default_time_zone(ka_time_zone::pacific()); }
    ~formats() override { ka_time_and_date::default_time_zone(before_); }

    const ka_time time_ = ka_time(18, 28, 38, 123);
    const ka_date date_ = ka_date(7, 4, 1991);
    const ka_time_and_date moment_ = ka_time_and_date(time_, date_, ka_time_zone::pacific());

private:
    const ka_time_zone& before_ = ka_time_and_date::default_time_zone();
};

TEST_F(formats, a_missing_half_is_zero)
{
    const std::string no_date = "Month( 0 ), day( 0 ), year( 0 )";
    // A code, what it prints of a date, and what of a time.
    // clang-format off
    const char* const rows[][3] = {
        {"a", "Thu", nullptr}, {"A", "Thursday", nullptr}, {"b", "Jul", nullptr}, {"B", "July", nullptr},
        {"c", "Thu Jul   4 00:00:00 1991", nullptr}, {"C", "19", "0"}, {"d", "04", "00"},
        {"D", "07/04/91", "00/00/00"}, {"e", " 4", " 0"}, {"f", "1991", "0 A.D."}, {"H", "00", "18"},
        {"I", "12", "06"}, {"j", "185", nullptr}, {"k", " 0", "18"}, {"l", "12", " 6"}, {"m", "07", "00"},
        {"M", "00", "28"}, {"n", "\n", "\n"}, {"p", "AM", "PM"}, {"P", "A.D.", "A.D."},
        {"q", "000000", "000123"}, {"r", "12:00:00 AM", "06:28:38 PM"}, {"s", "1991", "0"}, {"S", "00", "38"},
        {"t", "\t", "\t"}, {"T", "00:00:00", "18:28:38"}, {"U", "26", nullptr}, {"w", "4", nullptr},
        {"W", "26", nullptr}, {"x", "07/04/91", "00/00/00"}, {"X", "00:00:00", "18:28:38"}, {"y", "91", "00"},
        {"Y", "1991", "0"}, {"Z", "PST8", ""}, {"z", "z", "z"},
    };
    // clang-format on
    for (const auto& [code, of_date, of_time] : rows) {
        const std::string format = "%"s + code;
        EXPECT_EQ(date_.to_string(format), of_date) << format;
        if (of_time != nullptr) {
            EXPECT_EQ(time_.to_string(format), of_time) << format;
            continue;
        }
        const bool is_month = *code == 'b' || *code == 'B';
        expect_error(is_month ? "invalid_month" : "invalid_date", is_month ? "0" : no_date, "time/src/date",
                     [&] { time_.to_string("text" + format); });
    }
    EXPECT_EQ(moment_.to_string("%Z"), "PDT7");
}

TEST_F(formats, years_and_eras)
{
    const std::pair<short, const char*> rows[] = {
        {-4713, "-4713|4713|-47|-13|4713 B.C."},
        {-145, "-145|145|-1|-45|145 B.C."},
        {-44, "-44|44|0|-44|44 B.C."},
        {-5, "-5|5|0|-05|5 B.C."},
        {5, "5|5|0|05|5 A.D."},
        {999, "999|999|9|99|999 A.D."},
        {1000, "1000|1000|10|00|1000"},
        {32766, "32766|32766|327|66|32766"},
    };
    for (const auto& [year, text] : rows)
        EXPECT_EQ(ka_date(5, 6, year).to_string("%Y|%s|%C|%y|%f"), text);
}

TEST_F(formats, codes_that_strftime_has_too)
{
    const std::string codes =
        "%a %A %b %B %C %d %D %e %H %I %j %k %l %m %M %n %p %r %S %t %T %U %w %W %x %X %y %Y";
    std::mt19937 random(1);
    for (int i = 0; i < 20000; ++i) {
        const std::time_t seconds = static_cast<std::time_t>(random() % 200000000000ULL) - 30000000000;
        std::tm fields = {};
        gmtime_r(&seconds, &fields);
        char expected[256];
        std::strftime(expected, sizeof expected, codes.c_str(), &fields);
        ka_time_and_date moment(seconds);
        moment.time_zone(ka_time_zone::utc());
        ASSERT_EQ(moment.to_string(codes.c_str()), expected);
    }
}

TEST_F(formats, flags_widths_and_unknown_letters)
{
    const std::pair<std::string, std::string> rows[] = {
        {"", ""},
        {"%%", "%"},
        {"%5%", "    %"},
        {"%#d", "#d"},
        {"%5d|%-5d|%05d", "   04|04   |00004"},
        {"%5e|%-5e|%05e", "    4| 4   |000 4"},
        {"%-05d|%0-5d|%--5d|% d", "04   |-5d|-5d| d"},
        {"%000007d", "0000004"},
        {"%3q%1Y%0H%-H", "00012319911818"},
        {"%12T|%-12T|%010D|%08n", "    18:28:38|18:28:38    |0007/04/91|0000000\n"},
        {"%3Z|%6Z|%-6Z|%-3z|", "PDT7|  PDT7|PDT7  |z  |"},
        {"%18446744073709551619d", " 04"},
        {"abc%", "abc\0"s},
        {"%5", "    \0"s},
        {"%-3", "\0  "s},
        {"%0", "\0"s},
    };
    for (const auto& [format, text] : rows)
        EXPECT_EQ(moment_.to_string(format.c_str()), text) << format;
    EXPECT_EQ(date_.to_string("a\0%d%\0z"s), "a\00004\0z"s);
    for (const char* format : {"%18446744073709551615d", "%-9223372036854775808d"})
        try {
            date_.to_string(format);
            ADD_FAILURE() << format;
        } catch (const std::length_error&) {
        } catch (const std::bad_alloc&) {
        }
}

TEST_F(formats, texts_of_any_length)
{
    for (const std::size_t before : {0u, 1u, 200u, 253u, 254u, 255u, 256u, 257u, 1000u})
        for (const std::size_t width : {0u, 2u, 3u, 55u, 56u, 255u, 256u, 257u, 1000u}) {
            const std::string literal(before, 'x'), pad(width < 2 ? 0 : width - 2, ' ');
            const std::string field = std::to_string(width) + "d";
            EXPECT_EQ(date_.to_string(literal + (width ? "%" : "%0") + field + "%B"),
                      literal + pad + "04July");
            EXPECT_EQ(date_.to_string(literal + "%-" + field + "%B"), literal + "04" + pad + "July");
        }
}

template <typename Value>
std::string printed(const Value& value, int width = 0)
{
    std::ostringstream out;
    out.fill('*');
    out.width(width);
    value.print(out);
    return out.str();
}

/// `Value`'s default format, which a test changes and puts back.
template <typename Value>
void expect_default_format(const Value& value, const std::string& start, const std::string& text,
                           const std::function<std::string()>& to_string)
{
    EXPECT_EQ(Value::default_format(), start);
    EXPECT_EQ(to_string(), text);
    EXPECT_EQ(printed(value), text);
    EXPECT_EQ(printed(value, 40), std::string(40 - text.size(), '*') + text);
    for (const std::string& literal : {""s, "a\0b"s, "%E%"s}) {
        Value::default_format(literal);
        EXPECT_EQ(Value::default_format(), literal);
        EXPECT_EQ(to_string(), literal == "%E%" ? "E\0"s : literal);
        EXPECT_EQ(printed(value), to_string());
    }
    Value::default_format("%B");
    const std::string copy = Value::default_format();
    Value::default_format(start);
    EXPECT_EQ(copy, "%B");
    EXPECT_EQ(to_string(), text);
}

TEST_F(formats, default_formats)
{
    expect_default_format(date_, "%x", "07/04/91", [&] { return date_.to_string(); });
    expect_default_format(time_, "%H:%M:%S:%q", "18:28:38:000123", [&] { return time_.to_string(); });
    expect_default_format(moment_, "%x %H:%M:%S:%q", "07/04/91 18:28:38:000123",
                          [&] { return moment_.to_string(nullptr); });
    EXPECT_EQ(date_.to_string("") + time_.to_string("") + moment_.to_string(""), "");
}

TEST_F(formats, names_set_later_show)
{
    const std::string& pm = ka_time::pm_name();
    const std::string at_start = pm;
    ka_time::pm_name("");
    EXPECT_EQ(pm + time_.to_string("%p%r"), "06:28:38 ");
    ka_time::pm_name("%H");
    EXPECT_EQ(moment_.to_string("%3p|%r"), " %H|06:28:38 %H");
    ka_time::pm_name(at_start);
}

TEST_F(formats, what_derived_classes_may_use)
{
    struct open : ka_time_and_date {
        static std::string text(const ka_time_and_date& value) { return formatted("%T %Z", value); }
        static std::string text(const ka_time* time, const ka_date* date)
        {
            return formatted("%Y-%m-%d %T.%q %Z", time, date);
        }
    };
    EXPECT_EQ(open::text(moment_), "18:28:38 PDT7");
    EXPECT_EQ(open::text(nullptr, nullptr), "1969-12-31 16:00:00.000000 PST8");
    EXPECT_EQ(open::text(nullptr, &date_), "1991-07-04 16:00:00.000000 PDT7");
    EXPECT_EQ(open::text(&time_, nullptr), "1969-12-31 18:28:38.000123 PST8");
    EXPECT_EQ(open::text(&time_, &date_), "1991-07-04 18:28:38.000123 PDT7");
}

}
