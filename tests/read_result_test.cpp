#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include <time/date.h>
#include <time/error.h>
#include <time/read_result.h>

#include "expect_error.h"

namespace {

using namespace std::string_literals;

constexpr int invalid_day = 4;

TEST(read_result, a_failure_tells_what_stood_where)
{
    const ka_read_failure failure(invalid_day, "2024-02-30", 8, 2, "%d");
    EXPECT_STREQ(failure.message(), "invalid_day: 30 at 8, %d, in 2024-02-30");
    EXPECT_EQ(failure.code(), invalid_day);
    EXPECT_EQ(failure.position(), 8u);
    EXPECT_EQ(failure.length(), 2u);
    EXPECT_EQ(failure.field(), "%d");

    const ka_read_result<ka_date> refused(failure);
    EXPECT_FALSE(refused.has_value());
    EXPECT_EQ(refused.end(), 8u);
    EXPECT_EQ(refused.value_or(ka_date(1, 2, 2024)), ka_date(1, 2, 2024));
    expect_error("invalid_day", "30 at 8, %d, in 2024-02-30", "time/src/read_result",
                 [&] { refused.value(); });
}

TEST(read_result, a_value_stands_beside_how_far_it_was_read)
{
    constexpr ka_read_result<ka_date> result(ka_date(7, 4, 2024), 10, true);
    static_assert(result.value() == ka_date(7, 4, 2024));
    EXPECT_TRUE(result);
    EXPECT_EQ(result->year(), 2024);
    EXPECT_EQ(result.end(), 10u);
    EXPECT_TRUE(result.is_leap_second());
}

TEST(read_result, hostile_texts_are_cut_and_defused)
{
    const std::string as(200, 'a'), dots = "...";
    const std::string shown_value = as.substr(0, 40) + dots, shown_text = as.substr(0, 100) + dots;
    const std::string euros =
        "\u20ac\u20ac\u20ac\u20ac\u20ac\u20ac\u20ac\u20ac\u20ac\u20ac\u20ac\u20ac\u20ac";
    const struct {
        std::string text;
        std::size_t position, length;
        std::string field, message;
    } rows[] = {
        {"", 0, 0, "%Y", "end of text at 0, %Y, in "},
        {"2024", 9, 9, "%m", "end of text at 4, %m, in 2024"},
        {as, 150, 500, std::string(60, 'f'),
         as.substr(0, 40) + "... at 150, " + std::string(31, 'f') + ", in " + shown_text},
        {"\x1b[2J\n\0\x7f"s, 0, 99, "\"\n\"", "?[2J??? at 0, \"?\", in ?[2J???"},
        // Neither half of a character.
        {"x" + euros + euros + euros, 1, 42, "x",
         euros + "... at 1, x, in x" + euros + euros + euros.substr(0, 21) + dots},
        // Bytes that are no UTF-8 at all.
        {std::string(50, '\x80'), 0, 50, "%B",
         std::string(37, '\x80') + "... at 0, %B, in " + std::string(50, '\x80')},
    };
    for (const auto& row : rows) {
        const ka_read_failure failure(ka_failure, row.text, row.position, row.length, row.field);
        EXPECT_EQ(failure.message(), "failure: " + row.message);
    }
    EXPECT_EQ(ka_read_failure(10, "x", 0, 1, "y").code(), ka_failure);
}

}
