#pragma once

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

/// The most digits that `write_before` writes.
inline constexpr int most_digits = 20;

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
