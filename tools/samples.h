#include <concepts>
#include <cstdlib>
#include <iomanip>
#include <iostream>
#include <sstream>
#include <string>
#include <time.h>
#include <unordered_map>

#include <time/time_varnel.h>

// Stands in front of the samples that samples.py puts into one program.

static timespec machine_clock = {1720117718, 0}; // 4 July 2024, 18:28:38 UTC

/// Takes the place of the runtime's: the samples' clock moves in `work` alone.
extern "C" int clock_gettime(clockid_t, timespec* reading) noexcept
{
    *reading = machine_clock;
    return 0;
}

[[maybe_unused]] static void work()
{
    ++machine_clock.tv_sec;
    machine_clock.tv_nsec += 250000000;
}

static std::string shown(bool value) { return value ? "true" : "false"; }
static std::string shown(std::integral auto value) { return std::to_string(value); }
static std::string shown(const std::string& value) { return '"' + value + '"'; }
static std::string shown(const char* value) { return shown(std::string(value)); }
static std::string shown(const ka_time& value) { return value.to_string("%H:%M:%S"); }
static std::string shown(const ka_time_period& value) { return value.to_string(); }
static std::string shown(const ka_date& value)
{
    return std::to_string(value.day()) + value.to_string(" %B %Y");
}

template <typename Value>
static void show(int line, const Value& value)
{
    std::cout << '\x01' << line << ' ' << shown(value) << std::endl;
}
