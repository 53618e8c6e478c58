#include <time/columns.h>

#include <span>
#include <thread>

#include "inputs.h"

// Whole columns in one call, so that a batch is one.

namespace {

template <typename Value>
std::span<const Value> now(const column<Value>& all)
{
    return std::span<const Value>(all).subspan(batch_begin, batch_size);
}

/// What a batch gives, where the one before it was.
template <typename Value>
using results = std::array<Value, batch_size>;
results<long long> offsets;
results<ka_clock_fields> fields;
results<long long> instants;

std::string shown(const ka_clock_fields& at)
{
    return reading_text(at.year, at.month, at.day, at.hour, at.minute, at.second, at.is_dst);
}

template <column<long long> plain_inputs::*Instants>
void read_offsets()
{
    keep(ka_local_offsets(ka_time_zone::pacific(), now(inputs().*Instants), offsets));
    keep(offsets);
}

template <column<long long> plain_inputs::*Instants>
void read_fields()
{
    keep(ka_local_fields(ka_time_zone::pacific(), now(inputs().*Instants), fields));
    keep(fields);
}

/// Seconds that the local clock is ahead, as the peers have them.
template <column<long long> plain_inputs::*Instants>
std::string offset_result(std::size_t i)
{
    long long offset = 0;
    (void)ka_local_offsets(ka_time_zone::pacific(), std::span(&(inputs().*Instants)[i], 1), {&offset, 1});
    return std::to_string(-offset / 1000000);
}

template <column<long long> plain_inputs::*Instants>
std::string fields_result(std::size_t i)
{
    ka_clock_fields read;
    (void)ka_local_fields(ka_time_zone::pacific(), std::span(&(inputs().*Instants)[i], 1), {&read, 1});
    return shown(read);
}

const column<ka_clock_fields>& read_before()
{
    static const auto made = [] {
        column<ka_clock_fields> read;
        keep(ka_local_fields(ka_time_zone::pacific(), inputs().instants, read));
        return read;
    }();
    return made;
}

void set_instants()
{
    keep(ka_instants(ka_time_zone::pacific(), now(read_before()), ka_local_choice::later, instants));
    keep(instants);
}

std::string set_result(std::size_t i)
{
    long long instant = 0;
    (void)ka_instants(ka_time_zone::pacific(), std::span(&read_before()[i], 1), ka_local_choice::later,
                      {&instant, 1});
    return std::to_string(instant / 1000000);
}

}

double fields_at_once(int threads)
{
    constexpr int rounds = 400;
    std::vector<double> taken(static_cast<std::size_t>(threads));
    const auto read = [](double& nanoseconds) {
        static thread_local results<ka_clock_fields> own;
        const double begin = thread_nanoseconds();
        for (int round = 0; round < rounds; ++round) {
            keep(ka_local_fields(ka_time_zone::pacific(), now(inputs().instants_in_order), own));
            keep(own);
        }
        nanoseconds = thread_nanoseconds() - begin;
    };
    std::vector<std::thread> all;
    for (double& one : taken)
        all.emplace_back(read, std::ref(one));
    for (std::thread& one : all)
        one.join();
    return *std::max_element(taken.begin(), taken.end()) / (rounds * static_cast<double>(batch_size));
}

std::vector<operation> column_operations()
{
    constexpr auto random = &plain_inputs::instants;
    constexpr auto in_order = &plain_inputs::instants_in_order;
    constexpr auto zones = difference::zones;
    return {
        {"a column of offsets", {}, 0, read_offsets<random>, offset_result<random>, zones},
        {"a column of offsets, in order", {}, 0, read_offsets<in_order>, offset_result<in_order>, zones},
        {"a column of fields", {{0.17, "cctz"}}, 160, read_fields<random>, fields_result<random>, zones},
        {"a column of fields, in order",
         {{0.5, "Hinnant's date, kept"}},
         0,
         read_fields<in_order>,
         fields_result<in_order>,
         zones},
        {"a column of local times", {}, 0, set_instants, set_result, zones},
    };
}
