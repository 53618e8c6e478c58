#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <string>

#include <time/time_varnel.h>

#include "inputs.h"

std::vector<peer>& all_peers()
{
    static std::vector<peer> rows;
    return rows;
}

namespace {

bool zones_agree_at(long long second)
{
    ka_time_and_date moment(second);
    moment.time_zone(ka_time_zone::pacific());
    const std::tm ours = moment;
    const auto instant = static_cast<std::time_t>(second);
    std::tm theirs;
    localtime_r(&instant, &theirs);
    return std::memcmp(&ours, &theirs, offsetof(std::tm, tm_isdst) + sizeof ours.tm_isdst) == 0;
}

/// Different work must not be compared: ends the program where the zone of the
/// library and that of the C runtime show different fields. The two have other
/// rules for some weeks of 1974 to 1976, which is one input in a hundred.
void check_that_zones_agree()
{
    constexpr int most_in_other_weeks = batch_size / 100;
    int differing = 0;
    for (const auto* seconds : {&inputs().early, &inputs().late, &inputs().one_day})
        for (const long long second : *seconds)
            differing += !zones_agree_at(second);
    if (differing > most_in_other_weeks) {
        std::fprintf(stderr, "The zones differ for %d inputs.\n", differing);
        std::exit(1);
    }
}

void add_benchmark(const std::string& name, batch run)
{
    benchmark::RegisterBenchmark(name.c_str(), [run](benchmark::State& state) {
        for (auto _ : state)
            run();
        state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(batch_size));
    });
}

}

int main(int argc, char** argv)
{
    setenv("TZ", "America/Los_Angeles", 1);
    tzset();
    check_that_zones_agree();
    // An operation and its peers run one after the other, at the same pace of the machine.
    for (const operation& row : all_operations()) {
        add_benchmark(std::string(row.name) + "|", row.run);
        for (const peer& other : all_peers())
            if (std::strcmp(other.operation, row.name) == 0)
                add_benchmark(std::string(row.name) + "|" + other.name, other.run);
    }
    benchmark::AddCustomContext("missing", VARNEL_MISSING_PEERS);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
