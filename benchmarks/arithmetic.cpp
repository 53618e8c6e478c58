#include <time/time_varnel.h>

#include "inputs.h"

namespace {

template <int Which>
const column<ka_time_period>& periods()
{
    static const auto made = made_column([](std::size_t i) {
        return ka_time_period(inputs().seconds[Which][i], inputs().fractions[Which][i]);
    });
    return made;
}

void add()
{
    const auto& a = periods<0>();
    const auto& b = periods<1>();
    for_each_input([&](std::size_t i) { return a[i] + b[i]; });
}

void subtract()
{
    const auto& a = periods<0>();
    const auto& b = periods<1>();
    for_each_input([&](std::size_t i) { return a[i] - b[i]; });
}

void compare()
{
    const auto& a = periods<0>();
    const auto& b = periods<1>();
    for_each_input([&](std::size_t i) { return a[i] < b[i]; });
}

void divide()
{
    const auto& a = periods<0>();
    const auto& by = inputs().divisors;
    for_each_input([&](std::size_t i) { return a[i] / by[i]; });
}

void divide_any()
{
    static const auto a =
        made_column([](std::size_t i) { return ka_time_period(inputs().any_numbers[i] >> 20, 0); });
    const auto& by = inputs().divisors;
    for_each_input([&](std::size_t i) { return a[i] / by[i]; });
}

auto any_wint_text()
{
    static const auto in = made_column([](std::size_t i) { return ka_wint(inputs().any_numbers[i]); });
    return [](std::size_t i) { return in[i].to_string(); };
}

const column<ka_wint>& long_wints()
{
    static const auto made = made_column([](std::size_t i) { return ka_wint(inputs().long_numbers[i]); });
    return made;
}

const column<ka_wint>& short_wints()
{
    static const auto made = made_column([](std::size_t i) { return ka_wint(inputs().short_numbers[i]); });
    return made;
}

auto wint_text()
{
    const auto& in = long_wints();
    return [&in](std::size_t i) { return in[i].to_string(); };
}

void wint_multiply()
{
    const auto& a = long_wints();
    const auto& b = short_wints();
    for_each_input([&](std::size_t i) { return a[i] * b[i]; });
}

void wint_divide()
{
    const auto& a = long_wints();
    const auto& b = short_wints();
    for_each_input([&](std::size_t i) { return a[i] / b[i]; });
}

void refuse()
{
    for_each_input([](std::size_t i) {
        try {
            return ka_date(13, 1, static_cast<short>(i + 1)).julian_day();
        } catch (const ka_time_varnel_error& error) {
            return static_cast<int>(error.what()[0]);
        }
    });
}

}

std::vector<operation> arithmetic_operations()
{
    return {
        {"period + period", add, 1.2, 22},
        {"period - period", subtract, 1.2, 22},
        {"period < period", compare, 1.0, 8},
        {"period / int", divide, 1.5, 40},
        {"period / int, to 43 bits of seconds", divide_any, 1.5, 0},
        {"ka_wint to 12 digits", run_all<wint_text>, 1.0, 230, result_of<wint_text>},
        {"ka_wint to 1 to 19 digits", run_all<any_wint_text>, 0.95, 0, result_of<any_wint_text>},
        {"ka_wint * ka_wint", wint_multiply, 2.5, 20},
        {"ka_wint / ka_wint", wint_divide, 1.1, 32},
        {"a refused value, thrown and caught", refuse, 0.6, 0},
    };
}

std::vector<operation> all_operations()
{
    std::vector<operation> all = calendar_operations();
    for (const auto& topic : {zone_operations(), world_operations(), text_operations(), exchange_operations(),
                              arithmetic_operations()})
        all.insert(all.end(), topic.begin(), topic.end());
    return all;
}
