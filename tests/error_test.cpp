#include <exception>
#include <string>
#include <utility>

#include <gtest/gtest.h>

#include <time/error.h>

TEST(error, table)
{
    const char* const rows[][2] = {{"failure", "Requested operation failed."},
                                   {"invalid_time", "Invalid time value."},
                                   {"invalid_time_period", "Invalid time period."},
                                   {"invalid_date", "Invalid date."},
                                   {"invalid_day", "Invalid day."},
                                   {"invalid_weekday", "Invalid weekday."},
                                   {"invalid_week", "Invalid week."},
                                   {"invalid_month", "Invalid month."},
                                   {"invalid_year", "Invalid year."},
                                   {"divide_by_zero", "Division by zero failure."}};
    int code = 0;
    for (const auto& [symbol, description] : rows) {
        EXPECT_STREQ(ka_time_varnel_error::symbol(code), symbol);
        EXPECT_STREQ(ka_time_varnel_error::description(code++), description);
    }
    for (const int unknown : {-1, 10, -2147483647 - 1, 2147483647}) {
        EXPECT_EQ(ka_time_varnel_error::symbol(unknown), nullptr);
        EXPECT_EQ(ka_time_varnel_error::description(unknown), nullptr);
    }
}

TEST(error, keeps_511_characters_in_every_copy)
{
    for (const std::size_t length : {0u, 511u, 512u, 600u}) {
        const std::string text = std::string(length / 2, 'a') + std::string(length - length / 2, 'b');
        ka_time_varnel_error source(-7, text.c_str());
        const ka_time_varnel_error copied(source);
        const ka_time_varnel_error moved(std::move(source));
        ka_time_varnel_error copy_assigned(0, "x");
        ka_time_varnel_error move_assigned(1, text.c_str());
        copy_assigned = source;
        move_assigned = std::move(source);
        for (const ka_time_varnel_error& error : {source, copied, moved, copy_assigned, move_assigned}) {
            EXPECT_EQ(error.what(), text.substr(0, 511));
            EXPECT_EQ(error.code(), -7);
        }
    }
    EXPECT_STREQ(ka_time_varnel_error(4, nullptr).what(), "");
}

TEST(error, is_caught_by_its_root_and_not_as_a_standard_exception)
{
    try {
        throw ka_time_varnel_error(8, "text");
    } catch (const std::exception&) {
        FAIL();
    } catch (const ka_varnel_error& error) {
        EXPECT_STREQ(error.what(), "text");
        EXPECT_EQ(dynamic_cast<const ka_time_varnel_error&>(error).code(), 8);
    }
}
