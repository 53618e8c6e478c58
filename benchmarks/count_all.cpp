#include <valgrind/callgrind.h>

#include <cstdio>
#include <cstring>
#include <ctime>

#include "operations.h"

// Run under callgrind, which writes one file for each row, with its name in it.
// The first row is the loop alone, which the other rows have in them, and the
// second what the C runtime needs for the present time. With "goals" it prints
// what each operation has to reach.

namespace {

void loop_alone()
{
    static const char in[batch_size] = {};
    for_each_input([](std::size_t i) -> const char& { return in[i]; });
}

/// What the present time costs in any case.
void clock_of_the_runtime()
{
    for_each_input([](std::size_t) {
        timespec clock;
        clock_gettime(CLOCK_REALTIME, &clock);
        std::tm fields;
        localtime_r(&clock.tv_sec, &fields);
        return fields;
    });
}

void count(const char* name, batch run)
{
    run();
    CALLGRIND_ZERO_STATS;
    run();
    CALLGRIND_DUMP_STATS_AT(name);
}

}

int main(int argc, char** argv)
{
    if (argc > 1 && std::strcmp(argv[1], "goals") == 0) {
        for (const operation& row : all_operations()) {
            std::printf("%s|%d", row.name, row.goal_instructions);
            for (const goal& asked : row.goals)
                std::printf("|%g|%s", asked.ratio, asked.peer);
            std::puts("");
        }
        return 0;
    }
    count("loop", loop_alone);
    count("clock_gettime + localtime_r", clock_of_the_runtime);
    for (const operation& row : all_operations())
        count(row.name, row.run);
}
