#pragma once

#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include <time/error.h>

/// Runs `operation` and checks that it throws the code of `symbol`, with
/// exactly the text "symbol: shown [source:line]".
///
///     expect_error("invalid_day", "37", "time/src/date", [] { ka_date(37); });
template <typename Operation>
void expect_error(const std::string& symbol, const std::string& shown, const std::string& source,
                  Operation operation)
{
    const std::string head = symbol + ": " + shown + " [" + source + ":";
    SCOPED_TRACE(head);
    try {
        operation();
    } catch (const ka_time_varnel_error& error) {
        EXPECT_STREQ(ka_time_varnel_error::symbol(error.code()), symbol.c_str());
        const std::string_view text = error.what();
        ASSERT_EQ(text.substr(0, head.size()), head);
        const std::string_view line = text.substr(head.size());
        EXPECT_GT(line.size(), 1u) << text;
        EXPECT_EQ(line.find_first_not_of("0123456789"), line.size() - 1) << text;
        EXPECT_TRUE(line.ends_with(']')) << text;
        return;
    }
    ADD_FAILURE() << "nothing was thrown";
}
