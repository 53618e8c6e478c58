#pragma once

#include <climits>
#include <cstddef>
#include <string_view>

#include <time/tperiod.h>

#include "../access.h"

namespace exchange {

inline constexpr long long million = 1000000;

/// A sum of parts, each a number of units, in 64 bits of seconds.
class sum {
public:
    /// Units of so many microseconds; `fraction` has the digits behind the point.
    /// False where the sum is too large.
    bool add(unsigned long long number, std::string_view fraction, long long unit, bool is_negative) noexcept
    {
        // Digit by digit from the last on: what a division drops never matters.
        long long rest = 0;
        for (std::size_t place = fraction.size(); place-- > 0;)
            rest = ((fraction[place] - '0') * unit + rest) / 10;
        const auto in_unit = static_cast<unsigned long long>(unit);
        const unsigned long long whole_units = unit < million ? number / (million / in_unit) : number;
        const unsigned long long seconds_each = unit < million ? 1 : in_unit / million;
        constexpr unsigned long long most = LLONG_MAX + 1ull;
        if (whole_units > most / seconds_each)
            return false;
        if (unit < million)
            rest += static_cast<long long>(number % (million / in_unit) * in_unit);
        return add_signed(whole_units * seconds_each, is_negative) &&
               add_signed(static_cast<unsigned long long>(rest / million), is_negative) &&
               add_fraction(static_cast<int>(rest % million), is_negative);
    }

    ka_time_period period() const noexcept
    {
        // Parts of different signs can leave two signs here.
        return ka_time_period(seconds_) + ka_access::period(0, fraction_);
    }

private:
    bool add_signed(unsigned long long seconds, bool is_negative) noexcept
    {
        const auto room =
            is_negative
                ? static_cast<unsigned long long>(seconds_) - static_cast<unsigned long long>(LLONG_MIN)
                : static_cast<unsigned long long>(LLONG_MAX) - static_cast<unsigned long long>(seconds_);
        if (seconds > room)
            return false;
        const auto bits = static_cast<unsigned long long>(seconds_);
        seconds_ = static_cast<long long>(is_negative ? bits - seconds : bits + seconds);
        return true;
    }

    bool add_fraction(int microseconds, bool is_negative) noexcept
    {
        fraction_ += is_negative ? -microseconds : microseconds;
        if (fraction_ > -million && fraction_ < million)
            return true;
        fraction_ += static_cast<int>(is_negative ? million : -million);
        return add_signed(1, is_negative);
    }

    long long seconds_ = 0;
    int fraction_ = 0;
};

}
