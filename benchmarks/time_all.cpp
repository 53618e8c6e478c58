#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <string>

#include "inputs.h"

std::vector<peer>& all_peers()
{
    static std::vector<peer> rows;
    return rows;
}

namespace {

bool is_same(const std::string& ours, const std::string& other, difference differs)
{
    if (differs == difference::last_digit)
        return std::llabs(std::stoll(ours) - std::stoll(other)) <= 1;
    return ours == other;
}

/// The inputs for which a peer has another result.
std::vector<std::size_t> differing_inputs(const operation& ours, const peer& other)
{
    std::vector<std::size_t> differing;
    for (std::size_t i = 0; i < batch_size; ++i)
        if (!is_same(ours.result(i), other.result(i), ours.differs))
            differing.push_back(i);
    return differing;
}

/// Different work must not be compared: ends the program where results differ
/// otherwise than the row says. Returns the most of any row whose zones differ.
std::size_t check_that_results_agree()
{
    std::size_t most = 0;
    for (const operation& ours : all_operations())
        for (const peer& other : all_peers()) {
            if (std::strcmp(ours.name, other.operation) != 0 || !ours.result || !other.result)
                continue;
            const auto differing = differing_inputs(ours, other);
            if (differing.size() > (ours.differs == difference::zones ? batch_size / 100 : 0)) {
                std::fprintf(stderr, "%s: %zu results differ from those of %s; the first: %s, not %s\n",
                             ours.name, differing.size(), other.name, ours.result(differing.front()).c_str(),
                             other.result(differing.front()).c_str());
                std::exit(1);
            }
            most = std::max(most, differing.size());
        }
    return most;
}

void nothing() {}

/// Nanoseconds of the thread's own time for a batch of inputs that nobody has seen yet.
double time_of(batch run)
{
    batch_begin = 0;
    run();
    batch_begin = batch_size;
    const double begin = thread_nanoseconds();
    run();
    return thread_nanoseconds() - begin;
}

void print_time(const char* operation, const char* name, batch run, double clock)
{
    std::printf("%s|%s|%.3f\n", operation, name, (time_of(run) - clock) / batch_size);
}

}

// Prints the time of each operation and, right behind it, of its peers: one
// round, of the inputs that VARNEL_SEED chooses. With "check" it compares their
// results instead, and tells what is missing; with "threads" it times columns by one thread, and by each of
// two.
int main(int argc, char** argv)
{
    setenv("TZ", pacific_name, 1);
    tzset();
    if (argc > 1 && std::strcmp(argv[1], "check") == 0) {
        std::printf("%zu|%s\n", check_that_results_agree(), VARNEL_MISSING_PEERS);
        return 0;
    }
    if (argc > 1 && std::strcmp(argv[1], "threads") == 0) {
        std::printf("%.3f|%.3f\n", fields_at_once(1), fields_at_once(2));
        return 0;
    }
    // What the clock takes itself; the least of some, since others may use the processor meanwhile.
    double clock = time_of(nothing);
    for (int i = 0; i < 15; ++i)
        clock = std::min(clock, time_of(nothing));
    std::size_t matched = 0;
    for (const operation& row : all_operations()) {
        print_time(row.name, "", row.run, clock);
        for (const peer& other : all_peers())
            if (std::strcmp(other.operation, row.name) == 0) {
                print_time(row.name, other.name, other.run, clock);
                ++matched;
            }
    }
    if (matched != all_peers().size()) {
        std::fprintf(stderr, "A peer names an operation that is none.\n");
        return 1;
    }
    return 0;
}
