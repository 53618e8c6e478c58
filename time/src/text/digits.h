#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstring>

// Decimal digits, two at a time: one division by 100 and one copy for a pair.

struct digit_pairs {
    char text[200];
};

inline constexpr digit_pairs pairs_of_digits = [] {
    digit_pairs pairs = {};
    for (int value = 0; value < 100; ++value) {
        pairs.text[2 * value] = static_cast<char>('0' + value / 10);
        pairs.text[2 * value + 1] = static_cast<char>('0' + value % 10);
    }
    return pairs;
}();

/// Writes a value of 0 to 99 in two places, and returns the end.
inline char* write_two_places(char* out, unsigned int value) noexcept
{
    std::memcpy(out, pairs_of_digits.text + std::size_t{2} * value, 2);
    return out + 2;
}

/// Writes a value of 0 to 999999 in six places, and returns the end.
inline char* write_six_places(char* out, unsigned int value) noexcept
{
    out = write_two_places(out, value / 10000);
    out = write_two_places(out, value / 100 % 100);
    return write_two_places(out, value % 100);
}

/// The most digits that a number of 64 bits has.
inline constexpr int most_digits = 20;

/// The number of a number's digits; that of 0 is 1.
inline unsigned int digit_count(unsigned long long number) noexcept
{
    static constexpr auto powers = [] {
        std::array<unsigned long long, most_digits> made = {};
        unsigned long long power = 1;
        for (unsigned int digits = 1; digits < most_digits; ++digits)
            made[digits] = power *= 10;
        return made;
    }();
    // 1233 / 4096 is the logarithm of 2 to the base of 10, as far as 64 bits need it.
    const auto highest_bit = 63 ^ static_cast<unsigned int>(std::countl_zero(number | 1));
    const unsigned int least = (highest_bit + 1) * 1233 >> 12;
    return least + 1 - (number < powers[least]);
}

/// Writes a value of 0 to 99999999 in eight places, and returns the end.
inline char* write_eight_places(char* out, unsigned int value) noexcept
{
    const unsigned int high = value / 10000;
    const unsigned int low = value % 10000;
    out = write_two_places(out, high / 100);
    out = write_two_places(out, high % 100);
    out = write_two_places(out, low / 100);
    return write_two_places(out, low % 100);
}

/// Writes a number at the end of twenty places, and returns its first digit.
/// What is in front of it is not told. However many digits a number has, there
/// is one branch on the way, so that texts of all lengths cost the same.
inline char* write_in_twenty_places(char* out, unsigned long long number) noexcept
{
    constexpr unsigned long long eight_places = 100000000;
    constexpr unsigned long long sixteen_places = eight_places * eight_places;
    unsigned long long rest = number;
    if (number >= sixteen_places) {
        const auto four = static_cast<unsigned int>(number / sixteen_places);
        write_two_places(write_two_places(out, four / 100), four % 100);
        rest = number % sixteen_places;
    }
    char* const middle = write_eight_places(out + 4, static_cast<unsigned int>(rest / eight_places));
    char* const end = write_eight_places(middle, static_cast<unsigned int>(rest % eight_places));
    return end - digit_count(number);
}

/// Writes a number so that it ends before `end`, and returns its first digit.
inline char* write_before(char* end, unsigned long long number) noexcept
{
    // Four digits at a time, of which a division of 32 bits makes two pairs.
    for (; number >= 10000; number /= 10000) {
        const auto four = static_cast<unsigned int>(number % 10000);
        end -= 4;
        write_two_places(write_two_places(end, four / 100), four % 100);
    }
    auto rest = static_cast<unsigned int>(number);
    if (rest >= 100) {
        end -= 2;
        write_two_places(end, rest % 100);
        rest /= 100;
    }
    if (rest < 10) {
        *--end = static_cast<char>('0' + rest);
        return end;
    }
    end -= 2;
    write_two_places(end, rest);
    return end;
}
