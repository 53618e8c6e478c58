#pragma once

#include <climits>
#include <concepts>
#include <initializer_list>
#include <type_traits>

/// What is taken wherever a number is asked for: any integer of 64 bits at
/// most, and an enumerator that is a number by itself. It is looked at as it
/// was given, before anything is narrowed.
template <typename Type>
concept ka_integer = sizeof(Type) <= sizeof(long long) &&
                     (std::integral<Type> || (std::is_enum_v<Type> && std::convertible_to<Type, long long>));

/// An integer of more bits, such as a compiler's `__int128`, which is taken
/// nowhere: whether `std::integral` holds for it depends on the dialect.
template <typename Type>
concept ka_wider_integer = sizeof(Type) > sizeof(long long) && !std::is_class_v<Type> && requires(Type value)
{
    value % 2;
};

/// Those of which `long long` does not hold every value.
template <typename Type>
concept ka_unsigned_64 = std::unsigned_integral<Type> && sizeof(Type) == sizeof(long long);

/// A number that nothing is multiplied with or divided by.
template <typename Type>
concept ka_no_factor = std::floating_point<Type> || ka_wider_integer<Type>;

namespace ka_integers {

/// The number in the widest type of its sign.
template <ka_integer Number>
constexpr auto widest(Number number) noexcept
{
    const auto value = +number;
    using type = std::conditional_t<std::is_signed_v<decltype(value)>, long long, unsigned long long>;
    return static_cast<type>(value);
}

/// A number on its way into a message: its bits, and whether it is below zero.
struct given {
    template <ka_integer Number>
    constexpr given(Number number) noexcept
        : bits(static_cast<unsigned long long>(number)),
          is_negative(std::is_signed_v<decltype(widest(number))> && bits >> 63 != 0)
    {}

    unsigned long long bits;
    bool is_negative;
};

/// A number as its magnitude and its sign.
struct magnitude {
    template <ka_integer Number>
    explicit constexpr magnitude(Number number) noexcept
        : value(given(number).bits), is_negative(given(number).is_negative)
    {
        if (is_negative)
            value = 0 - value;
    }

    unsigned long long value;
    bool is_negative;
};

/// Whether a number lies from the lowest to the highest, which is not below 0.
template <ka_integer Number>
constexpr bool is_in(long long lowest, Number number, long long highest) noexcept
{
    const auto value = widest(number);
    if constexpr (std::is_signed_v<decltype(value)>)
        return lowest <= value && value <= highest;
    else
        return (lowest <= 0 || value >= static_cast<unsigned long long>(lowest)) &&
               value <= static_cast<unsigned long long>(highest);
}

/// The number where `int` holds it; `other` is one that the caller refuses.
template <ka_integer Number>
constexpr int int_or(int other, Number number) noexcept
{
    return is_in(INT_MIN, number, INT_MAX) ? static_cast<int>(number) : other;
}

/// One number, less than the divisor, times the other through the divisor, where
/// the product may not fit: bit by bit of the other, from the highest on.
constexpr unsigned long long quotient_of_product(unsigned long long number, unsigned int times,
                                                 unsigned long long divisor) noexcept
{
    unsigned long long quotient = 0;
    unsigned long long rest = 0;
    for (unsigned int bit = 1u << 31; bit != 0; bit /= 2) {
        quotient *= 2;
        for (const unsigned long long part : {rest, (times & bit) != 0 ? number : 0}) {
            const unsigned long long sum = rest + part;
            const bool is_over = sum < rest || sum >= divisor;
            rest = is_over ? sum - divisor : sum;
            quotient += is_over;
        }
    }
    return quotient;
}

}
