#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

// Eight characters at once. What is left of each when the character that is
// expected there is taken away is a digit or, for a separator, zero.

namespace exchange {

/// The first character in the lowest byte, on any machine.
inline std::uint64_t eight_at(const char* text) noexcept
{
    std::uint64_t eight = 0;
    std::memcpy(&eight, text, sizeof eight);
    if constexpr (std::endian::native == std::endian::big) {
        std::uint64_t turned = 0;
        for (int byte = 0; byte < 8; ++byte)
            turned = turned << 8 | (eight >> 8 * byte & 0xff);
        return turned;
    }
    return eight;
}

/// What is expected of eight characters, whose digits are written as '0'.
struct eight_pattern {
    std::uint64_t zeros = 0;
    /// To a digit 0x76 can be added, to a zero 0x7f, and no bit is carried.
    std::uint64_t room = 0;

    explicit constexpr eight_pattern(const char* text) noexcept
    {
        for (int place = 0; place < 8; ++place) {
            const auto character = static_cast<unsigned char>(text[place]);
            zeros |= std::uint64_t{character} << 8 * place;
            room |= std::uint64_t{character == '0' ? 0x76u : 0x7fu} << 8 * place;
        }
    }
    /// The highest bit of each character that is something else. Above the
    /// first of these, a bit that was carried can set others.
    std::uint64_t others(std::uint64_t digits) const noexcept
    {
        return (digits | (digits + room)) & 0x8080808080808080;
    }
    /// The digits, or false where something else stands there.
    bool reads(const char* text, std::uint64_t& digits) const noexcept
    {
        digits = eight_at(text) ^ zeros;
        return others(digits) == 0;
    }
};

/// The number of two digits from a place on.
constexpr int two(std::uint64_t digits, int place) noexcept
{
    const auto pair = static_cast<unsigned int>(digits >> 8 * place);
    return static_cast<int>((pair & 0xff) * 10 + (pair >> 8 & 0xff));
}

/// The number of eight digits: of two, of four and of all, each in one multiplication.
constexpr unsigned int eight_digit_number(std::uint64_t digits) noexcept
{
    constexpr std::uint64_t pairs = 0x000000ff000000ff;
    const std::uint64_t two_each = digits * 10 + (digits >> 8);
    const std::uint64_t all = (two_each & pairs) * (100 + (std::uint64_t{1000000} << 32)) +
                              (two_each >> 16 & pairs) * (1 + (std::uint64_t{10000} << 32));
    return static_cast<unsigned int>(all >> 32);
}
static_assert(eight_digit_number(0x0807060504030201) == 12345678);

/// The digits from a place on, up to eight of them.
struct digit_run {
    unsigned int number = 0;
    int count = 0;

    digit_run(const char* text, const char* end) noexcept
    {
        constexpr eight_pattern all_digits("00000000");
        if (end - text >= 8) [[likely]] {
            const std::uint64_t digits = eight_at(text) ^ all_digits.zeros;
            const int bits = std::countr_zero(all_digits.others(digits)) & ~7;
            count = bits / 8;
            if (bits != 0)
                number = eight_digit_number(digits << (-bits & 63));
            return;
        }
        for (; text != end && is_digit(*text); ++text, ++count)
            number = 10 * number + static_cast<unsigned int>(*text - '0');
    }

    static constexpr bool is_digit(char character) noexcept { return '0' <= character && character <= '9'; }
};

inline constexpr unsigned int powers_of_ten[] = {1, 10, 100, 1000, 10000, 100000, 1000000, 10000000};

/// The digits behind a point, of which those beyond the sixth are dropped; false where there is none.
inline bool read_fraction_at_once(const char*& next, const char* end, int& microsecond) noexcept
{
    const digit_run run(next, end);
    next += run.count;
    if (run.count <= 6) {
        microsecond = static_cast<int>(run.number * powers_of_ten[6 - run.count]);
        return run.count != 0;
    }
    microsecond = static_cast<int>(run.number / (run.count == 7 ? 10 : 100));
    while (next != end && digit_run::is_digit(*next))
        ++next;
    return true;
}

}
