#pragma once

#include <compare>
#include <concepts>
#include <iosfwd>
#include <string>

#include <time/export.h>

/// The radix of `ka_wint::to_string`. The values are the radixes themselves.
enum ka_base : int { ka_binary = 2, ka_octal = 8, ka_decimal = 10, ka_hexadecimal = 16 };

/// A signed integer with a sign and a 64-bit magnitude, so that every signed
/// and every unsigned 64-bit value fits.
///
///     ka_wint n(18446744073709551615ull);
///     (n / 10).to_string();                      // "1844674407370955161"
///     (-n).to_string();                          // "-18446744073709551615"
///     ka_wint(255).to_string(ka_hexadecimal);    // "0XFF"
///
/// Overflow: the magnitude wraps at 2^64 in silence, the sign stays.
/// Zero has one form only and is neither positive nor negative.
/// Failure: division by zero throws `divide_by_zero`; nothing else throws.
class KA_TIME_VARNEL_API ka_wint {
public:
    // From the machine's integers: every value of each type is held exactly.

    constexpr ka_wint(int value = 0) noexcept { become(value); }
    constexpr ka_wint(long long value) noexcept { become(value); }
    constexpr ka_wint(unsigned long long value) noexcept { become(value); }
    constexpr ka_wint(unsigned int value) noexcept { become(value); }
    constexpr ka_wint(long value) noexcept { become(static_cast<long long>(value)); }
    constexpr ka_wint(unsigned long value) noexcept { become(static_cast<unsigned long long>(value)); }
    constexpr ka_wint(const ka_wint&) noexcept = default;

    constexpr ka_wint& operator=(const ka_wint&) noexcept = default;
    constexpr ka_wint& operator=(int value) noexcept { return *this = ka_wint(value); }
    constexpr ka_wint& operator=(long long value) noexcept { return *this = ka_wint(value); }
    constexpr ka_wint& operator=(unsigned long long value) noexcept { return *this = ka_wint(value); }
    constexpr ka_wint& operator=(unsigned int value) noexcept { return *this = ka_wint(value); }
    constexpr ka_wint& operator=(long value) noexcept { return *this = ka_wint(value); }
    constexpr ka_wint& operator=(unsigned long value) noexcept { return *this = ka_wint(value); }

    // Sign.

    /// True below zero.
    constexpr bool is_negative() const noexcept { return negative_; }
    /// True above zero.
    constexpr bool is_positive() const noexcept { return !negative_ && magnitude() != 0; }
    constexpr bool is_zero() const noexcept { return *this == ka_wint(); }

    // Order: the numeric one.

    constexpr bool operator==(const ka_wint& other) const noexcept;
    constexpr bool operator!=(const ka_wint& other) const noexcept { return !(*this == other); }
    constexpr bool operator<(const ka_wint& other) const noexcept;
    constexpr bool operator<=(const ka_wint& other) const noexcept { return !(other < *this); }
    constexpr bool operator>(const ka_wint& other) const noexcept { return other < *this; }
    constexpr bool operator>=(const ka_wint& other) const noexcept { return !(*this < other); }
    /// For a class that holds wide integers and defaults its own.
    constexpr std::strong_ordering operator<=>(const std::same_as<ka_wint> auto& other) const noexcept;

    // Arithmetic.

    constexpr ka_wint operator-() const noexcept { return with_sign(!negative_, magnitude()); }

    /// The sum. Where it passes 2^64 the magnitude wraps and the sign is that
    /// of the operands.
    constexpr ka_wint operator+(const ka_wint& other) const noexcept;
    constexpr ka_wint operator-(const ka_wint& other) const noexcept { return -other + *this; }

    /// The product, its magnitude modulo 2^64.
    constexpr ka_wint operator*(const ka_wint& other) const noexcept;

    /// The quotient, truncated toward zero. A zero divisor throws `divide_by_zero`.
    constexpr ka_wint operator/(const ka_wint& other) const;

    /// The remainder. It carries the sign of the quotient, not of the dividend,
    /// and is never negative where the dividend's magnitude is the smaller:
    ///
    ///     7 % 5 == 2    -7 % 5 == -2    7 % -5 == -2    -7 % -5 == 2
    ///     3 % 5 == 3    -3 % 5 ==  3    3 % -5 ==  3    -3 % -5 == 3
    ///
    /// A zero divisor throws `divide_by_zero`.
    constexpr ka_wint operator%(const ka_wint& other) const;

    constexpr ka_wint& operator++() noexcept { return *this = *this + ka_wint(1); }
    constexpr ka_wint& operator--() noexcept { return *this = *this - ka_wint(1); }

    // To the machine's integers. They keep the low bits and report nothing.

    /// The low 32 bits of the magnitude, negated below zero, wrapping.
    constexpr int to_int32_t() const noexcept;
    /// The magnitude, negated below zero, wrapping: 2^64 - 1 gives -1.
    constexpr long long to_int64_t() const noexcept;
    /// The magnitude; the sign is ignored, so -5 gives 5.
    constexpr unsigned long long to_uint64_t() const noexcept { return magnitude(); }

    // To text.

    /// The value in one of the four radixes, "-" in front of all else below zero.
    ///
    ///     radix           255                  form
    ///     ka_binary       00...011111111       64 digits
    ///     ka_octal        0377                 one leading 0
    ///     ka_decimal      255                  the digits alone
    ///     ka_hexadecimal  0XFF, or 0xff        0X, or 0x where `upper` is false
    ///
    /// A number that is none of the four radixes stands for `ka_decimal`.
    std::string to_string(ka_base radix = ka_decimal, bool upper = true) const;

    /// Writes the decimal text; the stream's width and fill apply.
    void print(std::ostream& stream) const;

protected:
    // For derived classes: the value as a sign and four digits of base 65536.

    /// `digit` x 65536^`index`; the index must be below 4 and is not checked.
    constexpr ka_wint(const unsigned short& digit, unsigned int index) noexcept { magnitude_[index] = digit; }

    /// Makes a negative zero plain zero.
    constexpr void normalize() noexcept;

    /// The number of significant digits, 0 to 4; 0 for zero.
    constexpr unsigned int digits() const noexcept;

    /// Flips the sign: a negative value turns positive.
    constexpr void make_negative() noexcept;

    /// True where both signs agree; zero counts as not negative.
    static constexpr bool same_sign(const ka_wint& a, const ka_wint& b) noexcept;

    static constexpr ka_wint abs(const ka_wint& value) noexcept;

    /// Writes quotient and remainder as `/` and `%` define them. The results
    /// can be the operands. A zero divisor throws `divide_by_zero` and leaves
    /// all four as they were.
    static constexpr void divide(const ka_wint& dividend, const ka_wint& divisor, ka_wint& quotient,
                                 ka_wint& remainder);

private:
    using digits64 = unsigned long long;

    static constexpr ka_wint with_sign(bool negative, digits64 magnitude) noexcept;
    constexpr void become(int value) noexcept { become(static_cast<long long>(value)); }
    constexpr void become(unsigned int value) noexcept { become(static_cast<digits64>(value)); }
    constexpr void become(long long value) noexcept;
    constexpr void become(digits64 value) noexcept;
    constexpr void become(const ka_wint& value) noexcept { *this = value; }

    constexpr digits64 magnitude() const noexcept;
    [[noreturn]] static void refuse_zero_divisor();

    bool negative_ = false;
    unsigned short magnitude_[4] = {};
};

#include <time/inline/wint.h>
