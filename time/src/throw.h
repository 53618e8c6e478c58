#pragma once

#include <algorithm>
#include <charconv>
#include <concepts>
#include <cstring>
#include <string_view>

#include <time/error.h>

/// The codes of `ka_time_varnel_error`, in the order of its table.
enum class error_code : int {
    failure,
    invalid_time,
    invalid_time_period,
    invalid_date,
    invalid_day,
    invalid_weekday,
    invalid_week,
    invalid_month,
    invalid_year,
    divide_by_zero
};

/// Where a throw stands: always `{__FILE__, __LINE__}`, at the throw itself.
struct throw_site {
    const char* file;
    int line;
};

/// A message under construction. It has the room that an error has for its
/// text, and cuts what is longer: building it allocates nothing, and numbers
/// are plain decimal, whatever the host's locale.
class message {
public:
    void put(std::string_view text) noexcept
    {
        const std::size_t count = std::min(text.size(), sizeof text_ - 1 - size_);
        std::memcpy(text_ + size_, text.data(), count);
        size_ += count;
    }
    template <std::integral Number>
    void put(Number number) noexcept
    {
        char digits[20];
        const char* end = std::to_chars(digits, digits + sizeof digits, number).ptr;
        put(std::string_view(digits, static_cast<std::size_t>(end - digits)));
    }
    const char* c_str() const noexcept { return text_; }

private:
    char text_[512] = {};
    std::size_t size_ = 0;
};

/// The one way in which the library fails: throws an error of a code, with a
/// message of the code's symbol, the values shown, and the site.
template <typename... Shown>
[[noreturn]] void throw_error(error_code code, throw_site site, const Shown&... shown)
{
    const int number = static_cast<int>(code);
    message text;
    text.put(std::string_view(ka_time_varnel_error::symbol(number)));
    text.put(": ");
    (text.put(shown), ...);
    text.put(" [");
    text.put(std::string_view(site.file));
    text.put(":");
    text.put(site.line);
    text.put("]");
    throw ka_time_varnel_error(number, text.c_str());
}
