#include <string>
#include <utility>

#include <gtest/gtest.h>

#include <time/error.h>

using error = ka_time_varnel_error;

TEST(error, table)
{
    std::string table;
    for (int code = 0; code < 10; ++code)
        table += error::symbol(code) + std::string(": ") + error::description(code) + "\n";
    EXPECT_EQ(table, "failure: Requested operation failed.\ninvalid_time: Invalid time value.\n"
                     "invalid_time_period: Invalid time period.\ninvalid_date: Invalid date.\n"
                     "invalid_day: Invalid day.\ninvalid_weekday: Invalid weekday.\n"
                     "invalid_week: Invalid week.\ninvalid_month: Invalid month.\n"
                     "invalid_year: Invalid year.\ndivide_by_zero: Division by zero failure.\n");
    for (const int unknown : {-2147483647 - 1, -1, 10, 2147483647})
        EXPECT_TRUE(error::symbol(unknown) == nullptr && error::description(unknown) == nullptr) << unknown;
}

TEST(error, keeps_511_characters_in_every_copy_and_is_caught_by_its_root)
{
    for (const std::size_t length : {0u, 511u, 512u, 600u}) {
        const std::string text = std::string(length / 2, 'a') + std::string(length - length / 2, 'b');
        error source(-7, text.c_str());
        const error copied(source), moved(std::move(source));
        error copy_assigned(0, "x"), move_assigned(1, text.c_str());
        copy_assigned = source;
        move_assigned = std::move(source);
        for (const error& each : {source, copied, moved, copy_assigned, move_assigned})
            EXPECT_TRUE(each.what() == text.substr(0, 511) && each.code() == -7) << length;
    }
    EXPECT_STREQ(error(4, nullptr).what(), "");
    EXPECT_THROW(throw error(8, "text"), ka_varnel_error);
}
