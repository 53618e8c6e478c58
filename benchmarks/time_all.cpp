#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <string>

#include "operations.h"

std::vector<peer>& all_peers()
{
    static std::vector<peer> rows;
    return rows;
}

namespace {

/// The inputs for which a peer has another result.
std::vector<std::size_t> differing_inputs(const operation& ours, const peer& other)
{
    std::vector<std::size_t> differing;
    for (std::size_t i = 0; i < batch_size; ++i)
        if (ours.result(i) != other.result(i))
            differing.push_back(i);
    return differing;
}

/// Different work must not be compared: ends the program where more than one
/// result in a hundred is another. That many may be: the zones of the peers
/// leave daylight saving time four weeks earlier in 1974, and an hour earlier
/// from 2007 on. Returns the most of any row.
std::size_t check_that_results_agree()
{
    std::size_t most = 0;
    for (const operation& ours : all_operations())
        for (const peer& other : all_peers()) {
            if (std::strcmp(ours.name, other.operation) != 0 || !ours.result || !other.result)
                continue;
            const auto differing = differing_inputs(ours, other);
            if (differing.size() > batch_size / 100) {
                std::fprintf(stderr, "%s: %zu results differ from those of %s; the first: %s, not %s\n",
                             ours.name, differing.size(), other.name, ours.result(differing.front()).c_str(),
                             other.result(differing.front()).c_str());
                std::exit(1);
            }
            most = std::max(most, differing.size());
        }
    return most;
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
    const std::size_t differing = check_that_results_agree();
    // An operation and its peers run one after the other, at the same pace of the machine.
    std::size_t matched = 0;
    for (const operation& row : all_operations()) {
        add_benchmark(std::string(row.name) + "|", row.run);
        for (const peer& other : all_peers())
            if (std::strcmp(other.operation, row.name) == 0) {
                add_benchmark(std::string(row.name) + "|" + other.name, other.run);
                ++matched;
            }
    }
    if (matched != all_peers().size()) {
        std::fprintf(stderr, "A peer names an operation that is none.\n");
        return 1;
    }
    benchmark::AddCustomContext("missing", VARNEL_MISSING_PEERS);
    benchmark::AddCustomContext("differing", std::to_string(differing));
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
