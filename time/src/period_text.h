#pragma once

#include <string_view>

#include <time/tperiod.h>

/// The text of a period, "-1.500000 seconds", without a string: for messages,
/// which need no memory.
class period_text {
public:
    explicit period_text(const ka_time_period& period) noexcept;
    std::string_view view() const noexcept { return std::string_view(text_, size_); }

private:
    static constexpr std::size_t longest = 48;

    char text_[longest];
    std::size_t size_;
};
