// The library on machines that a test makes up: their clock, zone and language.
#include <cerrno>
#include <clocale>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>
#include <string>

#include <malloc.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include <time/io.h>
#include <time/time_varnel.h>

#include "expect_error.h"

/// The C runtime keeps what it has read of `LOCPATH`.
extern "C" const char* __lsan_default_suppressions() { return "leak:__argz_add_sep"; }

namespace {

enum class clock_state { real, set, broken };
clock_state clock_now = clock_state::real;
std::time_t clock_set_to = 0;

}

// The library finds these before those of the runtime.
extern "C" int clock_gettime(clockid_t id, timespec* result) noexcept
{
    if (clock_now == clock_state::real)
        return static_cast<int>(syscall(SYS_clock_gettime, id, result));
    if (clock_now == clock_state::broken) {
        errno = EINVAL;
        return -1;
    }
    *result = {clock_set_to, 0};
    return 0;
}
extern "C" std::time_t time(std::time_t* result) noexcept
{
    timespec now = {};
    const std::time_t seconds = clock_gettime(CLOCK_REALTIME, &now) == 0 ? now.tv_sec : -1;
    if (result != nullptr)
        *result = seconds;
    return seconds;
}

namespace {

/// Starts anew on a machine with these settings.
void restart()
{
    ka_exit_time_varnel();
    ka_init_time_varnel();
}

void set_clock(std::time_t moment)
{
    clock_now = clock_state::set;
    clock_set_to = moment;
}

/// Noon of a day, universal time, as a `time_t`.
std::time_t noon(unsigned short month, unsigned short day, short year)
{
    return static_cast<std::time_t>((ka_date(month, day, year).julian_day() - 2440588) * 86400ll + 43200);
}

class machine : public testing::Test {
protected:
    ~machine() override
    {
        clock_now = clock_state::real;
        std::filesystem::remove_all(folder_);
    }

    const std::filesystem::path& folder()
    {
        std::filesystem::create_directories(folder_);
        return folder_;
    }

private:
    std::filesystem::path folder_ =
        std::filesystem::temp_directory_path() / ("machine_test." + std::to_string(getpid()));
};

/// How far `now` is ahead of the universal clock, in seconds.
long long lead_of_now()
{
    return (ka_time_and_date::now() - ka_time_and_date(static_cast<long long>(clock_set_to))).to_seconds();
}

/// The zones that a start looks through.
const ka_time_zone* const* searched_zones()
{
    static const ka_time_zone* zones[12];
    const ka_time_zone* const now[] = {
        &ka_time_zone::pacific(),   &ka_time_zone::mountain(), &ka_time_zone::central(),
        &ka_time_zone::eastern(),   &ka_time_zone::atlantic(), &ka_time_zone::newfoundland(),
        &ka_time_zone::yukon(),     &ka_time_zone::aleutian(), &ka_time_zone::central_european(),
        &ka_time_zone::greenwich(), &ka_time_zone::israel(),   nullptr};
    std::copy(std::begin(now), std::end(now), zones);
    return zones;
}

/// Whether a zone changes its clock within a few hours: then its rules and the
/// machine can be at odds on the moment.
bool is_near_change(ka_time_and_date moment, const ka_time_zone& zone)
{
    moment.time_zone(zone);
    return (moment - ka_time_period(4 * 3600)).is_dst() != (moment + ka_time_period(4 * 3600)).is_dst();
}

/// What is wrong with the default zone that a start at this moment chose; ""
/// for nothing, and for what docs/platforms.md gives a reason for.
std::string fault_of_start(const std::string& zone_name)
{
    std::tm local = {};
    localtime_r(&clock_set_to, &local);
    const ka_time_and_date present(static_cast<long long>(clock_set_to));
    const ka_time_zone& chosen = ka_time_and_date::default_time_zone();
    const bool is_flagged = local.tm_isdst != 0;
    const long long saving = local.tm_gmtoff + ka_time_period(chosen.offset()).to_seconds();

    bool is_built_in = false;
    std::string agreeing;
    for (const ka_time_zone* const* zone = searched_zones(); *zone != nullptr; ++zone) {
        is_built_in |= *zone == &chosen;
        ka_time_and_date there = present;
        there.time_zone(**zone);
        const long long ahead = (there.is_dst() ? 3600 : 0) - ka_time_period((*zone)->offset()).to_seconds();
        if (ahead == local.tm_gmtoff && there.is_dst() == is_flagged && !is_near_change(present, **zone))
            agreeing += (*zone)->name() + " ";
    }

    const long long lead = lead_of_now();
    std::ostringstream fault;
    // The flag can be set while the clock is behind, or with a saving of half an hour.
    const bool is_flag_of_summer = zone_name != "Africa/Windhoek" && zone_name != "America/Montevideo";
    if (!is_built_in && is_flag_of_summer && !agreeing.empty())
        fault << "not taken: " << agreeing;
    // A zone of one's own has no daylight saving time, a built-in one saves an hour.
    const long long expected = is_built_in ? (is_flagged && saving > 0 ? saving - 3600 : 0) : saving;
    if (lead != expected && !is_near_change(present, chosen))
        fault << "ahead by " << lead << ", not " << expected << ' ';
    if (!is_flagged && !is_built_in && lead != 0)
        fault << "ahead by " << lead;
    return fault.str();
}

void scan(const std::string& zone)
{
    setenv("TZ", zone.c_str(), 1);
    int faults = 0;
    for (std::time_t moment = 0; moment < 68ll * 31557600 && faults < 5; moment += 15 * 86400) {
        set_clock(moment);
        restart();
        const std::string fault = fault_of_start(zone);
        faults += !fault.empty();
        EXPECT_EQ(fault, "") << zone << " at " << ka_time_and_date(static_cast<long long>(moment))
                             << " chose " << ka_time_and_date::default_time_zone().name();
    }
}

}

TEST_F(machine, without_a_clock_fails)
{
    clock_now = clock_state::broken;
    const auto expect_failure = [] {
        expect_error("failure", "Could not determine current time and date", "time/src/timedate",
                     [] { ka_time_and_date::now(); });
    };
    expect_failure();
    restart();
    expect_failure();
}

TEST_F(machine, that_sets_its_clock_back_shows_on_a_stopwatch)
{
    set_clock(noon(1, 15, 2026));
    ka_stopwatch watch;
    watch.start();
    set_clock(noon(1, 15, 2026) - 3600);
    watch.stop();
    EXPECT_EQ(watch.lap(), ka_time_period(-3600));
}

TEST_F(machine, chooses_the_zone_that_agrees_today)
{
    // A zone of tz data where summer is the standard, and that moves west for good.
    std::ofstream(folder() / "rules") << "Rule R 2025 only - Feb 23 3:00 -1:00 -\n"
                                         "Rule R 2025 only - Apr 6 2:00 0 -\n"
                                         "Rule R 2026 only - Feb 15 3:00 -1:00 -\n"
                                         "Rule R 2026 only - Mar 22 2:00 0 -\n"
                                         "Zone moved 1:00 R +01/+00 2026 Sep 20 2:00\n"
                                         "           0:00 - +00\n";
    const std::string moved = folder() / "moved";
    ASSERT_EQ(
        std::system(("/usr/sbin/zic -d " + folder().string() + " " + folder().string() + "/rules").c_str()),
        0);

    const std::string all_year_summer = "EST5EDT4,0/0,J365/25";
    const struct {
        std::string machine;
        unsigned short month, day;
        short year;
        const char* chosen;
        int lead;
    } rows[] = {
        {"UTC0", 1, 15, 2026, "GMT0", 0},
        {"UTC0", 7, 1, 2026, "UTC0", 0},
        {"Europe/London", 1, 15, 2026, "GMT0", 0},
        {"Europe/London", 7, 1, 2026, "GMT0", 0},
        {"Europe/Dublin", 1, 15, 2026, "GMT0", 0},
        {"Europe/Dublin", 7, 1, 2026, "GMT0", 0},
        {"IST-1GMT0,M10.5.0,M3.5.0/1", 1, 15, 2026, "GMT0", 0},
        {"IST-1GMT0,M10.5.0,M3.5.0/1", 7, 1, 2026, "GMT0", 0},
        {"Europe/Berlin", 1, 15, 2026, "CET-1", 0},
        {"Europe/Berlin", 7, 1, 2026, "CET-1", 0},
        {"America/New_York", 1, 15, 2026, "EST5", 0},
        {"America/New_York", 7, 1, 2026, "EST5", 0},
        {"America/St_Johns", 1, 15, 2026, "NST3", 0},
        {"America/St_Johns", 7, 1, 2026, "NST3", 0},
        {"America/Phoenix", 1, 15, 2026, "MST7", 0},
        {"America/Phoenix", 7, 1, 2026, "UTC-7", 0},
        {"Australia/Sydney", 1, 15, 2026, "UTC+10", 3600},
        {"Australia/Sydney", 7, 1, 2026, "UTC+10", 0},
        {"Asia/Kolkata", 1, 15, 2026, "UTC+5", 0},
        {"Africa/Johannesburg", 1, 15, 2026, "IST-2", 0},
        {"Africa/Johannesburg", 7, 1, 2026, "UTC+2", 0},
        {"Pacific/Honolulu", 1, 15, 2026, "AST10", 0},
        {"Pacific/Honolulu", 7, 1, 2026, "UTC-10", 0},
        {all_year_summer, 7, 1, 2026, "EST5", 0},
        {all_year_summer, 1, 15, 2026, "UTC-5", 3600},
        {moved, 1, 15, 2026, "CET-1", 0},
        {moved, 3, 1, 2026, "GMT0", 0},
        {moved, 7, 1, 2026, "GMT0", 0},
        {moved, 11, 15, 2026, "GMT0", 0},
        {moved, 7, 1, 2027, "UTC0", 0},
        // The standard offset changed with the flag, or the flag is of winter.
        {"Africa/Windhoek", 6, 15, 2017, "UTC+1", 0},
        {"Africa/Windhoek", 11, 15, 2017, "IST-2", 0},
        {"America/Argentina/Buenos_Aires", 10, 15, 1999, "AST4", 0},
        {"America/Argentina/Buenos_Aires", 1, 15, 2000, "UTC-3", 0},
        {"America/Cambridge_Bay", 4, 15, 2001, "MST7", 0},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::Message() << row.machine << " in month " << row.month << " of " << row.year);
        setenv("TZ", row.machine.c_str(), 1);
        set_clock(noon(row.month, row.day, row.year));
        restart();
        EXPECT_EQ(ka_time_and_date::default_time_zone().name(), row.chosen);
        EXPECT_EQ(lead_of_now(), row.lead);
    }
}

TEST_F(machine, zone_of_its_own_goes_with_a_stop)
{
    setenv("TZ", "Asia/Kolkata", 1);
    restart();
    ASSERT_EQ(ka_time_and_date::default_time_zone().name(), "UTC+5");
    const std::size_t before = mallinfo2().uordblks;
    for (int round = 0; round < 100; ++round)
        restart();
    EXPECT_LT(mallinfo2().uordblks, before + 100 * sizeof(ka_time_zone));
}

TEST_F(machine, chooses_well_at_each_time_of_troublesome_zones)
{
    for (const char* const zone : {"Africa/Casablanca",
                                   "Africa/Johannesburg",
                                   "Africa/Windhoek",
                                   "America/Anchorage",
                                   "America/Argentina/Catamarca",
                                   "America/Cambridge_Bay",
                                   "America/Kentucky/Louisville",
                                   "America/Montevideo",
                                   "America/New_York",
                                   "America/Scoresbysund",
                                   "America/St_Johns",
                                   "Antarctica/Troll",
                                   "Asia/Aqtau",
                                   "Asia/Jerusalem",
                                   "Asia/Ust-Nera",
                                   "Australia/Lord_Howe",
                                   "Europe/Berlin",
                                   "Europe/Dublin",
                                   "Europe/Lisbon",
                                   "Europe/London",
                                   "Pacific/Apia"})
        scan(zone);
}

// Half a minute long: run by name, as the long tests do.
TEST_F(machine, DISABLED_chooses_well_at_each_time_of_all_zones)
{
    std::ifstream data("/usr/share/zoneinfo/tzdata.zi");
    std::set<std::string> zones;
    for (std::string line; std::getline(data, line);)
        if (line.starts_with("Z "))
            zones.insert(line.substr(2, line.find(' ', 2) - 2));
    EXPECT_GT(zones.size(), 300u);
    for (const std::string& zone : zones)
        scan(zone);
}

TEST_F(machine, layout_of_each_language_is_read_back)
{
    const struct {
        const char *language, *c, *x, *X, *ides_of_march;
    } rows[] = {
        {"C", "Wed Dec  25 21:37:59 2019", "12/25/19", "21:37:59", "03/15/-44"},
        {"en_US.UTF-8", "Wed 25 Dec 2019 09:37:59 after UTC0", "12/25/2019", "09:37:59 after",
         "03/15/44 B.C."},
        {"de_DE.UTF-8", "Mi 25 Dez 2019 21:37:59 UTC0", "25.12.2019", "21:37:59", "15.03.44 B.C."},
        {"fr_FR.UTF-8", "mer. 25 déc. 2019 21:37:59", "25/12/2019", "21:37:59", "15/03/44 B.C."},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.language);
        setenv("LC_ALL", row.language, 1);
        restart();
        ka_time::pm_name("after");
        // No field prints as it does in the record that layouts are read from.
        const ka_time_and_date moment(ka_time(21, 37, 59), ka_date(12, 25, 2019), ka_time_zone::utc());
        EXPECT_EQ(moment.to_string("%c"), row.c);
        EXPECT_EQ(moment.to_string("%x"), row.x);
        EXPECT_EQ(moment.to_string("%X"), row.X);
        EXPECT_EQ(ka_date(3, 15, -44).to_string("%x"), row.ides_of_march);
    }
}

TEST_F(machine, of_one_byte_a_letter_knows_its_capitals)
{
    const std::string locale = "de_DE.ISO-8859-1";
    ASSERT_EQ(
        std::system(
            (LOCALEDEF " --no-archive -i de_DE -f ISO-8859-1 " + folder().string() + "/" + locale).c_str()),
        0);
    setenv("LOCPATH", folder().c_str(), 1);
    setenv("LC_ALL", locale.c_str(), 1);
    restart();
    EXPECT_EQ(ka_date::month_name(3), "M\xE4rz");
    EXPECT_EQ(ka_date::month_index("M\xC4RZ"), 0);
    ASSERT_NE(std::setlocale(LC_CTYPE, locale.c_str()), nullptr);
    EXPECT_EQ(ka_date::month_index("M\xC4RZ"), 3);
    std::setlocale(LC_CTYPE, "C");
    unsetenv("LOCPATH");
}
