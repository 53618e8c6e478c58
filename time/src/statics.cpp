#include <time/timedate.h>

#include <utility>

#include "access.h"
#include "platform.h"
#include "release.h"
#include "text/layouts.h"

std::string* ka_time_and_date::month_name_[12] = {};
std::string* ka_time_and_date::month_abbr_[12] = {};
std::string* ka_time_and_date::weekday_name_[7] = {};
std::string* ka_time_and_date::weekday_abbr_[7] = {};
std::string* ka_time_and_date::am_name_ = nullptr;
std::string* ka_time_and_date::pm_name_ = nullptr;
std::string* ka_time_and_date::ad_name_ = nullptr;
std::string* ka_time_and_date::bc_name_ = nullptr;
std::string* ka_time_and_date::default_time_format_ = nullptr;
std::string* ka_time_and_date::default_date_format_ = nullptr;
std::string* ka_time_and_date::default_time_and_date_format_ = nullptr;
std::string* ka_time_and_date::format_timedate_ = nullptr;
std::string* ka_time_and_date::format_date_ = nullptr;
std::string* ka_time_and_date::format_time_ = nullptr;
ka_time* ka_time_and_date::min_time_ = nullptr;
ka_time* ka_time_and_date::max_time_ = nullptr;
ka_date* ka_time_and_date::default_date_ = nullptr;
ka_date* ka_time_and_date::min_date_ = nullptr;
ka_date* ka_time_and_date::max_date_ = nullptr;

namespace {

/// The zone that the choice of the default zone made, where it made one. It is
/// kept apart from the default zone, which a caller can replace by his own.
ka_time_zone* made_zone = nullptr;

/// Friday, 23 December 1994, 18:27:38: the record that names are printed from.
std::tm name_probe()
{
    std::tm probe = {};
    probe.tm_year = 94;
    probe.tm_mon = 11;
    probe.tm_mday = 23;
    probe.tm_wday = 5;
    probe.tm_yday = 356;
    probe.tm_hour = 18;
    probe.tm_min = 27;
    probe.tm_sec = 38;
    return probe;
}

/// The record that the locale's layouts are read back from. All of its fields
/// print differently; the weekday is not that of the date, and need not be.
std::tm pattern_probe()
{
    std::tm probe = {};
    probe.tm_sec = 38;
    probe.tm_min = 28;
    probe.tm_hour = 18;
    probe.tm_mday = 4;
    probe.tm_mon = 6;
    probe.tm_year = 91;
    probe.tm_wday = 5;
    probe.tm_yday = 356;
    return probe;
}

}

/// The stages of a start.
struct ka_access::statics : ka_time_and_date {
    static void create_names();
    static void create_default_formats();
    static void create_patterns();
    static void create_limits();
    static void choose_default_zone();
};

void ka_time_and_date::initialize_statics()
{
    ka_access::statics::create_names();
    ka_access::statics::create_default_formats();
    ka_access::statics::create_patterns();
    ka_access::statics::create_limits();
    ka_access::statics::choose_default_zone();
}

void ka_access::statics::create_names()
{
    std::tm probe = name_probe();
    for (int month = 0; month < 12; ++month) {
        probe.tm_mon = month;
        month_name_[month] = new std::string(tm_string("%B", probe));
        month_abbr_[month] = new std::string(tm_string("%b", probe));
    }
    for (int weekday = 0; weekday < 7; ++weekday) {
        probe.tm_wday = weekday;
        weekday_name_[weekday] = new std::string(tm_string("%A", probe));
        weekday_abbr_[weekday] = new std::string(tm_string("%a", probe));
    }
    probe.tm_hour = 8;
    am_name_ = new std::string(tm_string("%p", probe));
    probe.tm_hour = 18;
    pm_name_ = new std::string(tm_string("%p", probe));
    ad_name_ = new std::string("A.D.");
    bc_name_ = new std::string("B.C.");
}

void ka_access::statics::create_default_formats()
{
    default_time_format_ = new std::string("%H:%M:%S:%q");
    default_date_format_ = new std::string("%x");
    default_time_and_date_format_ = new std::string("%x %H:%M:%S:%q");
}

void ka_access::statics::create_patterns()
{
    locale_layouts layouts = {{decode("%c"), decode("%x"), decode("%X")}};
    layouts.end_circles();
    format_timedate_ = new std::string(layouts.texts[0]);
    format_date_ = new std::string(layouts.texts[1]);
    format_time_ = new std::string(layouts.texts[2]);
}

void ka_access::statics::create_limits()
{
    min_time_ = new ka_time(0);
    max_time_ = new ka_time(23, 59, 59, 999999);
    default_date_ = new ka_date(1, 1, 1970);
    min_date_ = new ka_date(1, 1, -4713);
    max_date_ = new ka_date(12, 31, 32766);
}

void ka_access::statics::choose_default_zone()
{
    platform::read_time_zone();
    const platform::machine_zone machine = platform::read_machine_zone();
    for (const platform::zone_reading& reading : machine) {
        const ka_time_zone* const built_in =
            ka_time_zone::find(ka_time_period(reading.seconds_west), reading.is_dst);
        if (built_in == nullptr)
            continue;
        default_tzone_ = built_in;
        const ka_time_and_date now = now_if_available();
        const bool is_dst = built_in->rule(now.std_time(), now.date()) != nullptr;
        if (is_dst == reading.is_dst)
            return;
    }
    made_zone = new ka_time_zone(ka_time_period(machine.own_seconds_west), "UTC", "");
    default_tzone_ = made_zone;
}

void ka_time_and_date::delete_names() noexcept
{
    release(month_name_);
    release(month_abbr_);
    release(weekday_name_);
    release(weekday_abbr_);
    release(am_name_);
    release(pm_name_);
    release(ad_name_);
    release(bc_name_);
    release(default_time_format_);
    release(default_date_format_);
    release(default_time_and_date_format_);
    release(format_timedate_);
    release(format_date_);
    release(format_time_);
    release(min_time_);
    release(max_time_);
    release(default_date_);
    release(min_date_);
    release(max_date_);
    release(made_zone);
}

std::string ka_time_and_date::tm_string(const char* format, const std::tm& value)
{
    char buffer[128];
    if (platform::format_time(buffer, sizeof buffer, format, value) == 0)
        return {};
    return buffer;
}

void ka_time_and_date::replace_if_present(std::string& target, const std::string& search,
                                          const std::string& replacement)
{
    if (search.empty())
        return;
    const std::size_t place = target.find(search);
    if (place != std::string::npos)
        target.replace(place, search.size(), replacement);
}

std::string ka_time_and_date::decode(const char* conversion)
{
    // What the probe's fields look like, and the code that prints each. A long
    // form stands before the short one inside it, and digits before names.
    const std::pair<std::string, const char*> rows[] = {
        {"18", "%H"},
        {"06", "%I"},
        {"6", "%l"},
        {"28", "%M"},
        {"38", "%S"},
        {"1991", "%f"},
        {"91", "%y"},
        {"04", "%d"},
        {"4", "%e"},
        {"07", "%m"},
        {"7", "%m"},
        {"5", "%w"},
        {ka_date::month_name(7), "%B"},
        {ka_date::weekday_name(6), "%A"},
        {ka_date::month_abbreviation(7), "%b"},
        {ka_date::weekday_abbreviation(6), "%a"},
        {ka_time::pm_name(), "%p"},
    };
    std::string pattern = tm_string(conversion, pattern_probe());
    for (const auto& [search, replacement] : rows)
        replace_if_present(pattern, search, replacement);
    return pattern;
}
