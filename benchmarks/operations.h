#pragma once

#include <cstddef>
#include <ctime>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

/// A batch runs an operation over all inputs, and keeps every result.
using batch = void (*)();

/// Tells the result for one input as text: the same for the same result.
using result_text = std::string (*)(std::size_t);

constexpr std::size_t batch_size = 4096;

/// Where the inputs of a batch begin: those of the first are seen to warm up, those of the second once alone.
inline std::size_t batch_begin = 0;
constexpr std::size_t input_count = 2 * batch_size;

/// An operation of the library, with what it has to reach: the time at most, as
/// a multiple of the fastest peer's, and the instructions at most. 0 stands for
/// no goal.
struct operation {
    const char* name;
    batch run;
    double goal_ratio;
    int goal_instructions;
    result_text result = nullptr;
};

/// The operations by topic; `all_operations` is the one list.
std::vector<operation> calendar_operations();
std::vector<operation> zone_operations();
std::vector<operation> world_operations();
std::vector<operation> text_operations();
std::vector<operation> exchange_operations();
std::vector<operation> arithmetic_operations();
std::vector<operation> all_operations();

/// What is asked for by its name, and for how many inputs one zone is loaded.
inline constexpr const char* world_names[] = {
    "America/New_York", "Europe/Berlin", "Asia/Tokyo",        "Europe/Kyiv",
    "Australia/Sydney", "Asia/Kolkata",  "America/Sao_Paulo", "UTC"};
inline constexpr std::size_t loads_each = 256;

/// The same work as it is done with something else.
struct peer {
    const char* operation;
    const char* name;
    batch run;
    result_text result = nullptr;
};

/// Each source of peers that is built adds its rows here.
std::vector<peer>& all_peers();

struct peers {
    peers(std::initializer_list<peer> rows) { all_peers().insert(all_peers().end(), rows); }
};

/// Has the compiler take a value for used.
template <typename Value>
void keep(const Value& value)
{
    asm volatile("" : : "m"(value) : "memory");
}

/// Runs a function of an index over all inputs.
template <typename Function>
[[gnu::always_inline]] inline void for_each_input(Function function)
{
    const std::size_t begin = batch_begin;
    for (std::size_t i = begin; i < begin + batch_size; ++i)
        keep(function(i));
}

/// The batch of what `Make` returns, a function of an index.
template <auto Make>
void run_all()
{
    for_each_input(Make());
}

/// Its result for one input; `Show` makes a text of it.
template <auto Make, auto Show = std::identity()>
std::string result_of(std::size_t i)
{
    return Show(Make()(i));
}

/// A reading of a clock as text, for `result_of`.
std::string reading_text(long long year, int month, int day, int hour, int minute, int second, bool is_dst);
std::string fields_text(const std::tm& fields);
