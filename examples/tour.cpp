// A tour of the library: tour [ZONE]

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <iostream>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

#include <time/time_varnel.h>

#include "zones.h"

namespace {

// Columns. Names come in the user's encoding, so that neither bytes nor
// characters say how much room they take on the screen.

/// Takes one UTF-8 sequence off the front; false where the text is not UTF-8.
bool next_code_point(std::string_view& text, char32_t& code)
{
    const auto first = static_cast<unsigned char>(text[0]);
    const std::size_t length = first < 0x80 ? 1 : first < 0xC0 ? 0 : first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
    if (length == 0 || length > text.size())
        return false;
    code = length == 1 ? first : first & (0x7Fu >> length);
    for (std::size_t i = 1; i < length; ++i) {
        const auto next = static_cast<unsigned char>(text[i]);
        if ((next & 0xC0) != 0x80)
            return false;
        code = code << 6 | (next & 0x3Fu);
    }
    text.remove_prefix(length);
    return true;
}

struct range {
    char32_t first, last;
};

template <std::size_t Count>
bool is_in(const range (&ranges)[Count], char32_t code)
{
    return std::any_of(ranges, ranges + Count, [=](range r) { return r.first <= code && code <= r.last; });
}

// Of the blocks that names of months and weekdays are written in.
constexpr range wide[] = {
    {0x1100, 0x115F}, {0x2E80, 0xA4CF}, {0xAC00, 0xD7A3}, {0xF900, 0xFAFF}, {0xFF00, 0xFF60}};
constexpr range marks[] = {{0x0300, 0x036F}, {0x0591, 0x05BD}, {0x064B, 0x065F}, {0x0900, 0x0902},
                           {0x093C, 0x093C}, {0x0941, 0x0948}, {0x094D, 0x094D}, {0x0E31, 0x0E31},
                           {0x0E34, 0x0E3A}, {0x0E47, 0x0E4E}, {0x200B, 0x200F}};
constexpr range right_to_left[] = {{0x0590, 0x08FF}, {0xFB1D, 0xFDFF}, {0xFE70, 0xFEFC}};

struct extent {
    std::size_t width = 0;
    bool right_to_left = false;
};

/// What a text takes on the screen. A text that is not UTF-8 counts by bytes,
/// which is right for the usual other encodings, East Asian ones included.
extent measure(std::string_view text)
{
    extent result;
    char32_t code = 0;
    for (std::string_view rest = text; !rest.empty();) {
        if (!next_code_point(rest, code))
            return {text.size(), false};
        result.width += is_in(wide, code) ? 2 : is_in(marks, code) ? 0 : 1;
        result.right_to_left |= is_in(right_to_left, code);
    }
    return result;
}

enum class align { left, right };

/// A cell of a table. Left-to-right marks keep a terminal that knows
/// right-to-left scripts from joining neighbouring cells into one run.
std::string cell(const std::string& text, std::size_t width, align side = align::left)
{
    const extent size = measure(text);
    const std::string padding(width - std::min(width, size.width), ' ');
    const std::string mark = size.right_to_left ? "\u200E" : "";
    const std::string shown = mark + text + mark;
    return side == align::left ? shown + padding : padding + shown;
}

std::size_t widest(const std::vector<std::string>& texts)
{
    std::size_t width = 0;
    for (const std::string& text : texts)
        width = std::max(width, measure(text).width);
    return width;
}

void heading(const std::string& text)
{
    std::cout << '\n' << text << '\n' << std::string(text.size(), '-') << "\n\n";
}

// Asking the library.

/// How far local time is from universal time, as the zone has it at a moment.
ka_time_period offset_at(const ka_time_and_date& moment)
{
    return moment.time_zone().offset(moment.std_time(), moment.std_date());
}

/// "+05:30": an offset as people write it, positive in the east.
std::string ahead_of_utc(const ka_time_period& offset)
{
    const bool west = offset > ka_time_period();
    return ka_time(west ? offset : -offset).to_string(west ? "-%H:%M" : "+%H:%M");
}

/// The moments from `from` to `to` at which the clocks of their zone are moved.
/// Looks once a day, and halves a day that ends on another offset than it
/// began with down to the microsecond.
std::vector<ka_time_and_date> changes_of_clocks(ka_time_and_date from, const ka_time_and_date& to)
{
    const ka_time_period day(1, 0, 0, 0);
    const ka_time_period microsecond(0, 1);
    std::vector<ka_time_and_date> changes;
    for (; from < to; from += day) {
        ka_time_and_date low = from;
        ka_time_and_date high = from + day;
        if (offset_at(low) == offset_at(high))
            continue;
        while (high - low > microsecond) {
            const ka_time_and_date middle = low + (high - low) / 2;
            (offset_at(middle) == offset_at(low) ? low : high) = middle;
        }
        changes.push_back(high);
    }
    return changes;
}

std::string days_and_time(const ka_time_period& period)
{
    const int days = period.to_days();
    return std::to_string(days) + (days == 1 ? " day and " : " days and ") + ka_time(period).to_string("%T");
}

// The stops of the tour.

void show_now(const ka_time_and_date& now)
{
    heading("Now, here and in 17 zones");
    std::cout << "  " << cell(now.to_string("%A, %e %B %f"), 0) << "  " << now.to_string("%T %Z") << "\n\n";

    std::vector<std::string> dates;
    ka_time_and_date there = now;
    for (const named_zone& each : zones) {
        there.time_zone(each.zone());
        dates.push_back(there.to_string("%a %e"));
    }
    const std::size_t width = widest(dates);
    for (std::size_t i = 0; i < dates.size(); ++i) {
        there.time_zone(zones[i].zone());
        std::cout << "  " << cell(zones[i].name, 18) << cell(dates[i], width) << there.to_string("  %H:%M  ")
                  << ahead_of_utc(offset_at(there)) << "  " << there.to_string("%Z")
                  << (there.is_dst() ? ", daylight time" : "")
                  << (&there.time_zone() == &now.time_zone() ? "  <- yours" : "") << '\n';
    }
}

void show_month(const ka_date& today)
{
    constexpr unsigned short sunday = 1;
    constexpr unsigned short saturday = 7;
    heading("This month, with the weeks of the year");

    std::vector<std::string> weekdays;
    for (unsigned short weekday = sunday; weekday <= saturday; ++weekday)
        weekdays.push_back(ka_date::weekday_abbreviation(weekday));
    const std::size_t width = std::max<std::size_t>(widest(weekdays), 2) + 2;

    std::cout << "        " << cell(today.to_string("%B %f"), 0) << "\n\n  week ";
    for (const std::string& weekday : weekdays)
        std::cout << cell(weekday, width - 1, align::right) << ' ';

    const unsigned short month = today.month();
    const ka_date first(month, 1, today.year());
    for (ka_date day = first; day.month() == month; ++day) {
        if (day == first || day.weekday() == sunday)
            std::cout << "\n  " << day.to_string("%4U ");
        if (day == first)
            std::cout << std::string(width * (day.weekday() - sunday), ' ');
        std::cout << cell(day.to_string(day == today ? "[%e]" : "%e "), width, align::right);
    }
    std::cout << '\n';
}

void show_changes(const named_zone& named, short year)
{
    heading("The clocks of " + std::string(named.name) + " in " + std::to_string(year));
    const ka_time_zone& zone = named.zone();
    const ka_time_and_date new_year(ka_time(), ka_date(1, 1, year), zone);
    const ka_time_and_date next(ka_time(), ka_date(1, 1, static_cast<short>(year + 1)), zone);
    const auto changes = changes_of_clocks(new_year, next);
    for (ka_time_and_date change : changes) {
        const ka_time_and_date before = change - ka_time_period(1);
        const std::string reading = change.to_string("%H:%M:%S %Z");
        change.time_zone(ka_time_zone::utc());
        std::cout << "  " << change.to_string("%Y-%m-%d %H:%M:%S UTC") << "   after "
                  << before.to_string("%H:%M:%S %Z") << " comes " << reading << '\n';
    }
    if (changes.empty())
        std::cout << "  never moved: " << new_year.to_string("%Z") << " all year\n";
}

void show_durations(const ka_time_and_date& now)
{
    heading("Durations, a countdown and a stopwatch");
    const ka_time_period shift(0, 7, 30, 0);
    std::cout << "  five shifts of 7:30 hours     " << days_and_time(shift * 5) << ", which is "
              << (shift * 5).to_string() << '\n'
              << "  a night shift from 22:45      ends at " << (ka_time(22, 45, 0) + shift).to_string("%H:%M")
              << '\n';

    const ka_time_and_date landing(ka_time(20, 17, 40), ka_date(7, 20, 1969), ka_time_zone::utc());
    const ka_time_and_date new_year(ka_time(), ka_date(1, 1, static_cast<short>(now.date().year() + 1)));
    std::cout << "  since people reached the moon " << days_and_time(now - landing) << '\n'
              << "  until the next year           " << days_and_time(new_year - now) << '\n';

    ka_stopwatch watch;
    watch.start();
    constexpr unsigned short friday = 6;
    int fridays = 0;
    for (ka_date day = ka_time_and_date::min_date(); day <= ka_time_and_date::max_date(); ++day)
        fridays += day.day() == 13 && day.weekday() == friday;
    watch.stop();
    std::cout << "  Fridays the 13th, ever        " << fridays << ", by looking at each of "
              << (ka_time_and_date::max_date() - ka_time_and_date::min_date()).to_days() + 1 << " days\n"
              << "  and that took                 " << watch.lap().to_string() << '\n';
}

void show_formats(const ka_time_and_date& now)
{
    heading("One moment, a dozen formats");
    for (const char* format : {"%c", "%x", "%X", "%A, %e %B %f", "%d %b %Y", "%Y-%m-%d %H:%M:%S %Z", "%D",
                               "%I:%M %p", "%T.%q", "day %j, week %U", "<%12A|%-12b>", "%06H"})
        std::cout << "  " << cell(format, 24) << cell(now.to_string(format), 0) << '\n';
}

void show_refusals()
{
    struct attempt {
        const char* code;
        void (*run)();
    };
    const attempt attempts[] = {
        {"ka_date(2, 30, 2024)", [] { ka_date(2, 30, 2024); }},
        {"ka_date(ka_fifth, 2, 2, 2026)", [] { ka_date(ka_fifth, 2, 2, 2026); }},
        {"ka_date(13688961)", [] { ka_date(13688961); }},
        {"ka_time(25, 0, 0)", [] { ka_time(25, 0, 0); }},
        {"ka_time_period(0, 1, -30, 0)", [] { ka_time_period(0, 1, -30, 0); }},
        {"ka_time_period(90) / 0", [] { static_cast<void>(ka_time_period(90) / 0); }},
    };
    heading("What a refused value says");
    for (const attempt& each : attempts) {
        try {
            each.run();
        } catch (const ka_time_varnel_error& error) {
            std::cout << "  " << cell(each.code, 30) << ' ' << error.what() << '\n';
        }
    }
}

int refuse_zone(const char* name)
{
    std::cerr << "tour: no zone \"" << name << "\"; the zones are";
    for (const named_zone& each : zones)
        std::cerr << ' ' << each.name;
    std::cerr << '\n';
    return 2;
}

}

int main(int argc, char** argv)
{
    if (argc > 2) {
        std::cerr << "usage: tour [ZONE]\n";
        return 2;
    }
    const char* name = argc == 2 ? argv[1] : "pacific";
    const named_zone* zone = find_zone(name);
    if (zone == nullptr)
        return refuse_zone(name);
    try {
        const ka_time_and_date now = ka_time_and_date::now();
        show_now(now);
        show_month(now.date());
        show_changes(*zone, now.date().year());
        show_durations(now);
        show_formats(now);
        show_refusals();
    } catch (const ka_varnel_error& error) {
        std::cerr << "tour: " << error.what() << '\n';
        return 1;
    }
    return std::cout.flush() ? 0 : 1;
}
