#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <type_traits>

#include <time/error.h>

/// Values from the bytes that a fuzzer is given; zeros when these have run out.
class input {
public:
    input(const unsigned char* bytes, std::size_t size) noexcept : next_(bytes), end_(bytes + size) {}

    bool is_empty() const noexcept { return next_ == end_; }

    /// A number of a type, any value of it.
    template <typename Number>
    Number take() noexcept
    {
        static_assert(std::is_integral_v<Number>);
        Number value = 0;
        const auto size = std::min(sizeof value, static_cast<std::size_t>(end_ - next_));
        std::memcpy(&value, next_, size);
        next_ += size;
        return value;
    }

    /// A number from `low` to `high`.
    int between(int low, int high) noexcept
    {
        return low + static_cast<int>(take<unsigned int>() % (static_cast<unsigned int>(high - low) + 1u));
    }

    bool one_in(int count) noexcept { return between(1, count) == 1; }

    /// All that is left.
    std::string rest()
    {
        const std::string text(reinterpret_cast<const char*>(next_), static_cast<std::size_t>(end_ - next_));
        next_ = end_;
        return text;
    }

private:
    const unsigned char* next_;
    const unsigned char* end_;
};

/// Ends the run where library and witness disagree: a find.
inline void agree(bool holds, const char* what) noexcept
{
    if (holds)
        return;
    std::fprintf(stderr, "disagreement: %s\n", what);
    std::abort();
}

/// The text that an operation gives, if any, or the symbol of the error of the
/// library in its place. Nothing else may leave it.
inline std::string result_of(auto operation)
{
    try {
        if constexpr (!std::is_void_v<decltype(operation())>)
            return operation();
        else
            operation();
        return {};
    } catch (const ka_time_varnel_error& error) {
        const char* const symbol = ka_time_varnel_error::symbol(error.code());
        agree(symbol != nullptr, "an error of a known code");
        return symbol;
    }
}
