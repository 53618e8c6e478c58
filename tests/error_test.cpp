#include <iterator>
#include <string>
#include <utility>

#include <gtest/gtest.h>

#include <time/error.h>

using error = ka_time_varnel_error;

TEST(error, symbols_and_descriptions)
{
    const struct {
        const char *symbol, *description;
    } codes[] = {
        {"failure", "Requested operation failed."},
        {"invalid_time", "Invalid time value."},
        {"invalid_time_period", "Invalid time period."},
        {"invalid_date", "Invalid date."},
        {"invalid_day", "Invalid day."},
        {"invalid_weekday", "Invalid weekday."},
        {"invalid_week", "Invalid week."},
        {"invalid_month", "Invalid month."},
        {"invalid_year", "Invalid year."},
        {"divide_by_zero", "Division by zero failure."},
        {nullptr, nullptr},
    };
    for (int code = 0; code < static_cast<int>(std::size(codes)); ++code) {
        EXPECT_STREQ(error::symbol(code), codes[code].symbol) << code;
        EXPECT_STREQ(error::description(code), codes[code].description) << code;
    }
    for (const int unknown : {-2147483647 - 1, -1, 2147483647}) {
        EXPECT_EQ(error::symbol(unknown), nullptr) << unknown;
        EXPECT_EQ(error::description(unknown), nullptr) << unknown;
    }
}

TEST(error, keeps_511_characters_in_every_copy_and_is_caught_by_its_root)
{
    for (const std::size_t length : {0u, 511u, 512u, 600u}) {
        SCOPED_TRACE(length);
        const std::string text = std::string(length / 2, 'a') + std::string(length - length / 2, 'b');
        error source(-7, text.c_str());
        const error copied(source), moved(std::move(source));
        error copy_assigned(0, "x"), move_assigned(1, text.c_str());
        copy_assigned = source;
        move_assigned = std::move(source);
        for (const error& each : {source, copied, moved, copy_assigned, move_assigned}) {
            EXPECT_EQ(each.what(), text.substr(0, 511));
            EXPECT_EQ(each.code(), -7);
        }
    }
    EXPECT_STREQ(error(ka_invalid_day, nullptr).what(), "");
    EXPECT_THROW(throw error(ka_invalid_year, "text"), ka_varnel_error);
}
