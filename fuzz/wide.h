#pragma once

// Signed integers of 128 bits: the compiler's, or where it has none, as on a
// 32-bit machine, two halves that are added, doubled and compared.

#ifdef __SIZEOF_INT128__

__extension__ typedef __int128 int128;

#else

#include <compare>
#include <concepts>

class int128 {
    using half = unsigned long long;

public:
    template <std::integral Number>
    constexpr int128(Number value) : high_(value < Number{} ? ~half{} : 0), low_(static_cast<half>(value))
    {}

    template <std::integral Number>
    explicit constexpr operator Number() const
    {
        return static_cast<Number>(low_);
    }

    bool operator==(const int128&) const = default;
    friend constexpr std::strong_ordering operator<=>(const int128& a, const int128& b)
    {
        const auto order = static_cast<long long>(a.high_) <=> static_cast<long long>(b.high_);
        return order != 0 ? order : a.low_ <=> b.low_;
    }

    constexpr int128 operator-() const
    {
        int128 negated = ~low_ + 1;
        negated.high_ = ~high_ + (low_ == 0);
        return negated;
    }
    friend constexpr int128 operator+(int128 a, const int128& b)
    {
        a.low_ += b.low_;
        a.high_ += b.high_ + (a.low_ < b.low_);
        return a;
    }
    constexpr int128& operator+=(const int128& b) { return *this = *this + b; }
    friend constexpr int128 operator-(const int128& a, const int128& b) { return a + -b; }

    friend constexpr int128 operator*(const int128& a, const int128& b)
    {
        int128 product = 0;
        for (int place = 127; place >= 0; --place) {
            product = product + product;
            if (b.bit(place))
                product = product + a;
        }
        return product;
    }

    friend constexpr int128 operator/(const int128& a, const int128& b)
    {
        const int128 divisor = b < 0 ? -b : b;
        const int128 dividend = a < 0 ? -a : a;
        int128 rest = 0, quotient = 0;
        for (int place = 127; place >= 0; --place) {
            rest = rest + rest + dividend.bit(place);
            quotient = quotient + quotient;
            if (rest >= divisor) {
                rest = rest - divisor;
                quotient = quotient + 1;
            }
        }
        return (a < 0) == (b < 0) ? quotient : -quotient;
    }
    friend constexpr int128 operator%(const int128& a, const int128& b) { return a - a / b * b; }

private:
    constexpr int bit(int place) const
    {
        return ((place < 64 ? low_ >> place : high_ >> (place - 64)) & 1) != 0;
    }

    half high_, low_;
};

#endif
