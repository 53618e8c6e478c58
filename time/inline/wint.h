#pragma once

#include <time/wint.h>

constexpr bool ka_wint::operator==(const ka_wint& other) const noexcept
{
    return negative_ == other.negative_ && magnitude() == other.magnitude();
}

constexpr bool ka_wint::operator<(const ka_wint& other) const noexcept
{
    if (negative_ != other.negative_)
        return negative_;
    return negative_ ? magnitude() > other.magnitude() : magnitude() < other.magnitude();
}

constexpr std::strong_ordering ka_wint::operator<=>(const std::same_as<ka_wint> auto& other) const noexcept
{
    if (negative_ != other.negative_)
        return other.negative_ <=> negative_;
    return negative_ ? other.magnitude() <=> magnitude() : magnitude() <=> other.magnitude();
}

constexpr ka_wint ka_wint::operator+(const ka_wint& other) const noexcept
{
    const digits64 mine = magnitude();
    const digits64 theirs = other.magnitude();
    if (negative_ == other.negative_)
        return with_sign(negative_, mine + theirs);
    return mine < theirs ? with_sign(other.negative_, theirs - mine) : with_sign(negative_, mine - theirs);
}

constexpr ka_wint ka_wint::operator*(const ka_wint& other) const noexcept
{
    return with_sign(negative_ != other.negative_, magnitude() * other.magnitude());
}

constexpr ka_wint ka_wint::operator/(const ka_wint& other) const
{
    ka_wint quotient;
    ka_wint remainder;
    divide(*this, other, quotient, remainder);
    return quotient;
}

constexpr ka_wint ka_wint::operator%(const ka_wint& other) const
{
    ka_wint quotient;
    ka_wint remainder;
    divide(*this, other, quotient, remainder);
    return remainder;
}

constexpr int ka_wint::to_int32_t() const noexcept
{
    const auto low = static_cast<unsigned int>(magnitude());
    return static_cast<int>(negative_ ? 0u - low : low);
}

constexpr long long ka_wint::to_int64_t() const noexcept
{
    return static_cast<long long>(negative_ ? 0ull - magnitude() : magnitude());
}

constexpr void ka_wint::normalize() noexcept
{
    if (magnitude() == 0)
        negative_ = false;
}

constexpr unsigned int ka_wint::digits() const noexcept
{
    unsigned int count = 4;
    while (count > 0 && magnitude_[count - 1] == 0)
        --count;
    return count;
}

constexpr void ka_wint::make_negative() noexcept
{
    negative_ = !negative_;
    normalize();
}

constexpr bool ka_wint::same_sign(const ka_wint& a, const ka_wint& b) noexcept
{
    return a.negative_ == b.negative_;
}

constexpr ka_wint ka_wint::abs(const ka_wint& value) noexcept { return with_sign(false, value.magnitude()); }

constexpr void ka_wint::divide(const ka_wint& dividend, const ka_wint& divisor, ka_wint& quotient,
                               ka_wint& remainder)
{
    const digits64 a = dividend.magnitude();
    const digits64 b = divisor.magnitude();
    if (b == 0)
        refuse_zero_divisor();
    const bool negative = a >= b && dividend.negative_ != divisor.negative_;
    quotient = with_sign(negative, a / b);
    remainder = with_sign(negative, a % b);
}

constexpr ka_wint ka_wint::with_sign(bool negative, digits64 magnitude) noexcept
{
    ka_wint value(magnitude);
    value.negative_ = negative && magnitude != 0;
    return value;
}

constexpr void ka_wint::become(long long value) noexcept
{
    // Negated as unsigned, so that the lowest value keeps its magnitude.
    const auto pattern = static_cast<digits64>(value);
    become(value < 0 ? 0 - pattern : pattern);
    negative_ = value < 0;
}

constexpr void ka_wint::become(digits64 value) noexcept
{
    // Digit by digit without a loop: a compiler makes one store of it.
    negative_ = false;
    magnitude_[0] = static_cast<unsigned short>(value);
    magnitude_[1] = static_cast<unsigned short>(value >> 16);
    magnitude_[2] = static_cast<unsigned short>(value >> 32);
    magnitude_[3] = static_cast<unsigned short>(value >> 48);
}

constexpr ka_wint::digits64 ka_wint::magnitude() const noexcept
{
    return digits64{magnitude_[0]} | digits64{magnitude_[1]} << 16 | digits64{magnitude_[2]} << 32 |
           digits64{magnitude_[3]} << 48;
}
