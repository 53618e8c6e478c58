// Draws the years of the built-in zones, as the library reads them.
//
//   zone_years draw FOLDER   writes a picture for each group of zones whose clocks move alike
//   zone_years list          prints the changes of each zone's offset, 1970 to 2025:
//                            zone, seconds since 1970, seconds to add to universal time
#include <cstring>
#include <fstream>
#include <iostream>
#include <stdexcept>
#include <string>
#include <vector>

#include "zones.h"
#include <time/time_varnel.h>

namespace {

constexpr short first_year = 1960;
constexpr short last_year = 2040;

constexpr int left = 44, top = 26, day_width = 2, row_height = 6;

/// Whether the clocks of a zone are ahead, by its standard clock.
bool is_ahead(const ka_time_zone& zone, const ka_date& date) { return zone.is_dst(ka_time(12, 0, 0), date); }

std::string box(int x, int y, int width, int height, const char* kind)
{
    const auto field = [](const char* name, int value) {
        return std::string(" ") + name + "=\"" + std::to_string(value) + "\"";
    };
    return "<rect class=\"" + std::string(kind) + "\"" + field("x", x) + field("y", y) +
           field("width", width) + field("height", height) + "/>\n";
}

std::string label(int x, int y, const char* anchor, const std::string& text)
{
    return "<text x=\"" + std::to_string(x) + "\" y=\"" + std::to_string(y) + "\" text-anchor=\"" + anchor +
           "\">" + text + "</text>\n";
}

int row(short year) { return top + (year - first_year) * row_height; }
int column(const ka_date& date) { return left + date.day_of_year() * day_width; }

/// The days on which the clocks are ahead at noon, as one bar for each run of them.
std::string daylight_bars(const ka_time_zone& zone)
{
    std::string bars;
    for (short year = first_year; year <= last_year; ++year) {
        const ka_date end(12, 31, year);
        ka_date start(1, 1, year);
        for (ka_date date = start; date <= end; ++date) {
            if (!is_ahead(zone, date))
                start = date + ka_time_period(1, 0, 0, 0);
            else if (date == end || !is_ahead(zone, date + ka_time_period(1, 0, 0, 0)))
                bars += box(column(start), row(year), column(date) - column(start) + day_width,
                            row_height - 1, "day");
        }
    }
    return bars;
}

std::string picture(const ka_time_zone& zone, const std::string& names)
{
    const int width = left + 366 * day_width + 8;
    const int height = row(last_year) + row_height + 4;
    // Greys and an amber that stand out from white and from black alike.
    std::string text = "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 " + std::to_string(width) +
                       " " + std::to_string(height) + "\" font-family=\"sans-serif\" font-size=\"11\">\n" +
                       "<title>Daylight time in " + names + "</title>\n" +
                       "<style>text { fill: #808080 } .day { fill: #d9922e } "
                       ".line { fill: #808080; fill-opacity: 0.35 }</style>\n";
    for (unsigned short month = 1; month <= 12; ++month) {
        const ka_date start(month, 1, 2024);
        text += box(column(start), top, 1, row(last_year) + row_height - top, "line");
        text += label(column(start) + 31, top - 8, "middle", start.to_string("%b"));
    }
    for (short year = first_year; year <= last_year; year = static_cast<short>(year + 10)) {
        text += box(left, row(year) - 1, 366 * day_width, 1, "line");
        text += label(left - 6, row(year) + 7, "end", std::to_string(year));
    }
    return text + daylight_bars(zone) + "</svg>\n";
}

/// Writes one picture for all zones with the same bars, by the name of the first.
void draw(const std::string& folder)
{
    struct group {
        std::string bars, file, names;
        const ka_time_zone* zone;
    };
    std::vector<group> groups;
    for (const named_zone& each : zones) {
        const std::string bars = daylight_bars(each.zone());
        if (bars.empty())
            continue;
        const auto found =
            std::find_if(groups.begin(), groups.end(), [&](const group& one) { return one.bars == bars; });
        if (found != groups.end())
            found->names += ", " + std::string(each.name);
        else
            groups.push_back({bars, each.name, each.name, &each.zone()});
    }
    for (const group& each : groups) {
        std::ofstream file(folder + "/" + each.file + ".svg");
        if (!(file << picture(*each.zone, each.names)).flush())
            throw std::runtime_error("cannot write to " + folder);
    }
}

/// What is added to universal time to reach local time.
int ahead_of_utc(long long seconds, const ka_time_zone& zone)
{
    ka_time_and_date moment(seconds);
    moment.time_zone(zone);
    return -zone.offset(moment.std_time(), moment.std_date()).to_seconds();
}

void list()
{
    constexpr long long day = 86400;
    constexpr long long end = (ka_date(1, 1, 2026).julian_day() - ka_date().julian_day()) * day;
    for (const named_zone& each : zones) {
        const ka_time_zone& zone = each.zone();
        std::cout << each.name << " 0 " << ahead_of_utc(0, zone) << '\n';
        for (long long before = 0; before < end; before += day) {
            const int offset = ahead_of_utc(before + day, zone);
            if (offset == ahead_of_utc(before, zone))
                continue;
            long long same = before, changed = before + day;
            while (changed - same > 1) {
                const long long middle = (same + changed) / 2;
                (ahead_of_utc(middle, zone) == offset ? changed : same) = middle;
            }
            std::cout << each.name << ' ' << changed << ' ' << offset << '\n';
        }
    }
}

}

int main(int count, char** words)
{
    try {
        if (count == 3 && std::strcmp(words[1], "draw") == 0)
            draw(words[2]);
        else if (count == 2 && std::strcmp(words[1], "list") == 0)
            list();
        else
            throw std::runtime_error("usage: zone_years draw FOLDER | zone_years list");
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
}
