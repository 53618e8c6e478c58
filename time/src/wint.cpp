#include <time/wint.h>

#include <algorithm>
#include <charconv>
#include <ostream>

#include "text/digits.h"
#include "throw.h"

namespace {

constexpr int binary_digits = 64;

/// All other numbers are written in decimal, those that name no radix too.
constexpr bool is_power_of_two(ka_base radix)
{
    return radix == ka_binary || radix == ka_octal || radix == ka_hexadecimal;
}

constexpr char upper_case(char letter)
{
    return 'a' <= letter && letter <= 'z' ? static_cast<char>(letter - 'a' + 'A') : letter;
}

/// Apart, so that it costs decimal texts nothing.
[[gnu::noinline]] std::string power_of_two_text(bool is_negative, unsigned long long magnitude, ka_base radix,
                                                bool upper)
{
    char digits[binary_digits];
    char* const end = std::to_chars(digits, digits + sizeof digits, magnitude, radix).ptr;
    const auto count = static_cast<std::size_t>(end - digits);

    char text[1 + binary_digits];
    char* out = text;
    if (is_negative)
        *out++ = '-';
    if (radix == ka_octal || radix == ka_hexadecimal)
        *out++ = '0';
    if (radix == ka_hexadecimal)
        *out++ = upper ? 'X' : 'x';
    if (radix == ka_binary)
        out = std::fill_n(out, binary_digits - count, '0');
    out = radix == ka_hexadecimal && upper ? std::transform(digits, end, out, upper_case)
                                           : std::copy(digits, end, out);
    return std::string(text, out);
}

}

std::string ka_wint::to_string(ka_base radix, bool upper) const
{
    if (is_power_of_two(radix))
        return power_of_two_text(negative_, magnitude(), radix, upper);
    char text[1 + most_digits];
    char* begin = write_in_twenty_places(text + 1, magnitude());
    begin[-1] = '-';
    begin -= negative_;
    return std::string(begin, static_cast<std::size_t>(text + sizeof text - begin));
}

void ka_wint::print(std::ostream& stream) const { stream << to_string(ka_decimal, true); }

void ka_wint::refuse_zero_divisor() { throw_error(ka_divide_by_zero, {KA_SOURCE, __LINE__}); }
