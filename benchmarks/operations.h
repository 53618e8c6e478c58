#pragma once

#include <cstddef>
#include <ctime>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

/// A batch runs an operation over all inputs, and keeps every result.
using batch = void (*)();

/// Tells the result for one input as text: the same for the same result.
using result_text = std::string (*)(std::size_t);

constexpr std::size_t batch_size = 4096;

/// Where the inputs of a batch begin: those of the first are seen to warm up, those of the second once alone.
inline std::size_t batch_begin = 0;
constexpr std::size_t input_count = 2 * batch_size;

/// The time at most, as a multiple of that of a peer; of the fastest one where none is named.
struct goal {
    double ratio;
    const char* peer = "";
};

/// In what a peer's results may differ from the library's.
enum class difference {
    none,
    /// For one input in a hundred at most: the zones of the peers leave daylight
    /// saving time four weeks earlier in 1974 and, from 2007 on, an hour earlier,
    /// and of a local time that comes twice some take the other one.
    zones,
    /// By one: a quotient of periods truncates seconds and microseconds apart.
    last_digit
};

/// An operation of the library, with what it has to reach; without goals and 0 where nothing is asked.
struct operation {
    const char* name;
    std::vector<goal> goals;
    int goal_instructions;
    batch run;
    result_text result = nullptr;
    difference differs = difference::none;
};

/// The operations by topic; `all_operations` is the one list.
std::vector<operation> calendar_operations();
std::vector<operation> zone_operations();
std::vector<operation> world_operations();
std::vector<operation> column_operations();
std::vector<operation> text_operations();
std::vector<operation> exchange_operations();
std::vector<operation> arithmetic_operations();
std::vector<operation> all_operations();

/// Threads that each read a column of fields of its own, all at once: nanoseconds a row of the slowest.
double fields_at_once(int threads);

/// The time of the thread itself.
inline double thread_nanoseconds()
{
    timespec clock;
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &clock);
    return static_cast<double>(clock.tv_sec) * 1e9 + static_cast<double>(clock.tv_nsec);
}

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

/// Numbers and texts show themselves.
struct as_it_is {
    template <typename Value>
    std::string operator()(const Value& value) const
    {
        if constexpr (std::is_arithmetic_v<Value>)
            return std::to_string(value);
        else
            return std::string(value);
    }
};

/// Its result for one input; `Show` makes a text of it.
template <auto Make, auto Show = as_it_is()>
std::string result_of(std::size_t i)
{
    return Show(Make()(i));
}

/// A row whose results are compared with those of its peers.
template <auto Make, auto Show = as_it_is()>
operation row(const char* name, std::vector<goal> goals = {}, int goal_instructions = 0,
              difference differs = difference::none)
{
    return {name, std::move(goals), goal_instructions, run_all<Make>, result_of<Make, Show>, differs};
}

/// One whose results nobody else has.
template <auto Make>
operation row_alone(const char* name, std::vector<goal> goals = {}, int goal_instructions = 0)
{
    return {name, std::move(goals), goal_instructions, run_all<Make>};
}

template <auto Make, auto Show = as_it_is()>
peer beside(const char* operation, const char* name)
{
    return {operation, name, run_all<Make>, result_of<Make, Show>};
}

template <auto Make>
peer beside_alone(const char* operation, const char* name)
{
    return {operation, name, run_all<Make>};
}

// What results show as: dates as their parts and as days since 1970, periods as
// microseconds, instants as seconds since 1970.

std::string calendar_text(long long year, unsigned int month, unsigned int day);
std::string seconds_text(long long microseconds);
std::string reading_text(long long year, int month, int day, int hour, int minute, int second, bool is_dst);
