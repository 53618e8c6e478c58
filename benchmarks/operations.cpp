#include "operations.h"

#include <cstdio>

std::string calendar_text(long long year, unsigned int month, unsigned int day)
{
    char out[60];
    std::snprintf(out, sizeof out, "%lld-%u-%u", year, month, day);
    return out;
}

std::string seconds_text(long long microseconds)
{
    char out[40];
    std::snprintf(out, sizeof out, "%lld.%06lld", microseconds / 1000000, microseconds % 1000000);
    return out;
}

std::string reading_text(long long year, int month, int day, int hour, int minute, int second, bool is_dst)
{
    char out[80];
    std::snprintf(out, sizeof out, "%lld-%d-%d %d:%d:%d %d", year, month, day, hour, minute, second, is_dst);
    return out;
}

std::vector<operation> all_operations()
{
    std::vector<operation> all;
    for (const auto topic : {calendar_operations, zone_operations, world_operations, column_operations,
                             text_operations, exchange_operations, arithmetic_operations}) {
        const std::vector<operation> rows = topic();
        all.insert(all.end(), rows.begin(), rows.end());
    }
    return all;
}
