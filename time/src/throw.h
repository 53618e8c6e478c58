#pragma once

#include <concepts>
#include <cstddef>
#include <string_view>
#include <type_traits>

#include <time/error.h>
#include <time/inline/integer.h>

// The source as messages name it, such as "time/src/date": each source is told
// its own, so that no path of a build gets into a message.
#ifndef KA_SOURCE
#define KA_SOURCE __FILE__
#endif

/// Where a throw stands: always `{KA_SOURCE, __LINE__}`, at the throw itself.
struct throw_site {
    const char* file;
    int line;
};

/// A message under construction. It has the room that an error has for its
/// text, and cuts what is longer: building it allocates nothing, and numbers
/// are plain decimal, whatever the host's locale.
class message {
public:
    /// Begins with the symbol of the code.
    explicit message(ka_error code) noexcept;

    void put(std::string_view text) noexcept;
    void put(long long number) noexcept;
    void put(unsigned long long number) noexcept;
    template <std::integral Number>
    void put(Number number) noexcept
    {
        put(static_cast<std::conditional_t<std::signed_integral<Number>, long long, unsigned long long>>(
            number));
    }

    void put(ka_integers::given number) noexcept
    {
        number.is_negative ? put(static_cast<long long>(number.bits)) : put(number.bits);
    }

    /// Ends with the site.
    void put(throw_site site) noexcept;

    const char* text() noexcept
    {
        text_[size_] = '\0';
        return text_;
    }

private:
    std::size_t size_ = 0;
    char text_[512];
};

/// The one way in which the library fails: throws an error of a code, with a
/// message of the code's symbol, the values shown, and the site. It is compiled
/// into its caller: each frame on the way to a handler costs as much as all of
/// the message.
template <typename... Shown>
[[noreturn, gnu::always_inline]] inline void throw_error(ka_error code, throw_site site,
                                                         const Shown&... shown)
{
    message text(code);
    (text.put(shown), ...);
    text.put(site);
    throw ka_time_varnel_error(code, text.text());
}
