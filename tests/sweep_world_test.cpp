#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <time/local.h>
#include <time/time_varnel.h>
#include <time/world.h>

#include "printers.h"

// All zones of the machine, change by change, beside the C runtime, which reads
// the same files and texts by a code of its own.

namespace {

constexpr long long year = 31556952, first = -170 * year, last = 430 * year;
/// Shorter than the time between any two changes on record.
constexpr long long step = 6 * 86400;

/// What holds at a moment.
struct state {
    long west;
    bool is_dst;
    std::string abbreviation;

    bool operator==(const state&) const = default;

    friend std::ostream& operator<<(std::ostream& out, const state& of)
    {
        return out << "offset " << of.west << ", dst " << of.is_dst << ", " << of.abbreviation;
    }
};

/// All that a moment shows.
struct reading {
    std::string date, tm, text, name;
    state now;

    bool operator==(const reading&) const = default;

    friend std::ostream& operator<<(std::ostream& out, const reading& of)
    {
        return out << "fields " << of.date << ", tm " << of.tm << ", text " << of.text << ", name " << of.name
                   << ", " << of.now;
    }
};

/// The C runtime in a zone, for as long as the object lives.
class runtime_zone {
public:
    explicit runtime_zone(const std::string& setting)
    {
        ::setenv("TZ", setting.c_str(), 1);
        ::tzset();
    }
    ~runtime_zone()
    {
        ::setenv("TZ", before_.c_str(), 1);
        ::tzset();
    }

    static std::tm local(std::time_t second)
    {
        std::tm fields = {};
        ::localtime_r(&second, &fields);
        return fields;
    }
    static state at(std::time_t second)
    {
        const std::tm fields = local(second);
        return {-fields.tm_gmtoff, fields.tm_isdst > 0, fields.tm_zone};
    }
    static reading read(std::time_t second)
    {
        const std::tm fields = local(second);
        char text[80];
        std::strftime(text, sizeof text, "%Y-%m-%d %H:%M:%S", &fields);
        // The house style of names: the hours of the offset, without their fraction.
        const long hours = -fields.tm_gmtoff / 3600;
        const bool is_utc = std::string(fields.tm_zone) == "UTC";
        const std::string name = std::string(fields.tm_zone) + std::string(is_utc && hours < 0 ? "+" : "") +
                                 std::to_string(is_utc ? -hours : hours);
        return {text, shown(fields), std::string(text) + ' ' + name, name, at(second)};
    }

private:
    std::string before_ = std::getenv("TZ") != nullptr ? std::getenv("TZ") : "UTC0";
};

/// A zone of the library.
struct library_zone {
    const ka_time_zone& zone;

    ka_time_and_date moment(long long second) const
    {
        ka_time_and_date moment(second);
        moment.time_zone(zone);
        return moment;
    }
    state at(long long second) const
    {
        const ka_time_and_date now = moment(second);
        return {ka_offset(now).to_seconds(), now.is_dst(), ka_zone_abbreviation(now)};
    }
    reading read(long long second) const
    {
        const ka_time_and_date now = moment(second);
        const ka_date date = now.date();
        const ka_time time = now.time();
        return {date.to_string("%Y-%m-%d") + time.to_string(" %H:%M:%S"), shown(static_cast<std::tm>(now)),
                now.to_string("%Y-%m-%d %H:%M:%S %Z"), now.to_string("%Z"), at(second)};
    }
    /// The second that a local time is taken for.
    long long set(const std::tm& local) const
    {
        ka_time_and_date moment = ka_time_and_date(0);
        moment.time_zone(zone);
        moment.time_and_date(local);
        return seconds_since_1970(moment);
    }

    ka_local_kind kind(const std::tm& local) const
    {
        return ka_local_times(zone, ka_time(local.tm_hour, local.tm_min, local.tm_sec),
                              ka_date(local.tm_mon + 1, local.tm_mday, local.tm_year + 1900))
            .kind;
    }

    static long long seconds_since_1970(const ka_time_and_date& moment)
    {
        const ka_time_period since = moment - ka_time_and_date(0);
        return since.to_days() * 86400ll + (since - ka_time_period(since.to_days(), 0, 0, 0)).to_seconds();
    }
};

/// The seconds at which something else holds than just before, as one side tells it.
template <typename Zone>
std::vector<long long> changes(const Zone& zone)
{
    std::vector<long long> found;
    state before = zone.at(first);
    for (long long high = first + step; high <= last; high += step) {
        const state now = zone.at(high);
        if (now == before)
            continue;
        long long same = high - step, different = high;
        while (different - same > 1) {
            const long long middle = (same + different) / 2;
            (zone.at(middle) == before ? same : different) = middle;
        }
        found.push_back(different);
        before = now;
    }
    return found;
}

/// Every local time is one second on one side of the change or both, or on neither.
void expect_settings(const library_zone& ours, long long change)
{
    const long before = runtime_zone::at(change - 1).west, after = runtime_zone::at(change).west;
    const long long gap = before - after, size = std::abs(gap);
    for (const long long distance :
         {-size - 1, -size, -size / 2 - 1, -1ll, 0ll, size / 2, size - 1, size, size + 1}) {
        SCOPED_TRACE(distance);
        // What the clock shows so long after the change, as it went on before, and afterwards.
        const long long second = change + distance;
        const std::time_t shown_before = second - before, shown_after = second - after;
        std::tm local = {};
        ::gmtime_r(&shown_before, &local);
        if (distance < 0) {
            const bool comes_again = gap < 0 && distance >= gap;
            EXPECT_EQ(ours.set(local), comes_again ? second - gap : second);
            EXPECT_EQ(ours.kind(local), comes_again ? ka_local_kind::repeated : ka_local_kind::once);
        } else if (gap > 0 && distance < gap) {
            // Skipped: it reads back earlier by what is skipped.
            EXPECT_EQ(ours.set(local), second - gap);
            EXPECT_EQ(ours.kind(local), ka_local_kind::skipped);
        }
        if (distance >= 0) {
            ::gmtime_r(&shown_after, &local);
            EXPECT_EQ(ours.set(local), second);
        }
    }
}

/// The zones of the machine whose files differ, each by one of its names.
std::vector<std::string> different_zones()
{
    std::vector<std::string> different;
    std::set<std::string> seen;
    for (const std::string& name : ka_zone_names()) {
        std::ifstream file("/usr/share/zoneinfo/" + name, std::ios::binary);
        if (seen.insert({std::istreambuf_iterator<char>(file), {}}).second)
            different.push_back(name);
    }
    return different;
}

TEST(SweepWorld, EveryChangeIsReadAndSetAsTheRuntimeHasIt)
{
    const std::vector<std::string> zones = different_zones();
    ASSERT_GT(zones.size(), 300u);
    for (std::size_t i = 0; i < zones.size(); i += SWEEP_STRIDE) {
        SCOPED_TRACE(zones[i]);
        const runtime_zone theirs(zones[i]);
        const library_zone ours{ka_zone(zones[i])};
        const std::vector<long long> expected = changes(theirs);
        ASSERT_EQ(changes(ours), expected);
        for (const long long change : expected) {
            SCOPED_TRACE(change);
            ASSERT_EQ(ours.read(change - 1), theirs.read(change - 1));
            ASSERT_EQ(ours.read(change), theirs.read(change));
            expect_settings(ours, change);
            ASSERT_FALSE(HasFailure());
        }
    }
}

/// A folder of its own, filled by the compiler of tz data.
struct compiled {
    std::filesystem::path path;

    explicit compiled(const std::string& form)
        : path(std::filesystem::temp_directory_path() / (form + std::to_string(::getpid())))
    {
        const std::string command = "PATH=$PATH:/usr/sbin:/sbin zic -b " + form + " -d '" + path.string() +
                                    "' /usr/share/zoneinfo/tzdata.zi";
        EXPECT_EQ(std::system(command.c_str()), 0);
    }
    ~compiled() { std::filesystem::remove_all(path); }
};

TEST(SweepWorld, SlimAndFatFilesAgree)
{
    const compiled slim("slim"), fat("fat");
    const ka_zone_store slim_store(slim.path), fat_store(fat.path);
    const std::vector<std::string> names = slim_store.names();
    ASSERT_EQ(names, fat_store.names());
    ASSERT_GT(names.size(), 300u);
    for (std::size_t i = 0; i < names.size(); i += 2 * SWEEP_STRIDE) {
        SCOPED_TRACE(names[i]);
        // The compiler leaves changes of these after 2072 out of its slim files.
        if (names[i] == "Asia/Gaza" || names[i] == "Asia/Hebron")
            continue;
        const library_zone one{slim_store.zone(names[i])}, other{fat_store.zone(names[i])};
        const std::vector<long long> expected = changes(other);
        ASSERT_EQ(changes(one), expected);
        for (const long long change : expected) {
            ASSERT_EQ(one.read(change - 1), other.read(change - 1));
            ASSERT_EQ(one.read(change), other.read(change));
        }
    }
}

/// TZ strings at random.
class any_text {
public:
    explicit any_text(std::mt19937& random) : random_(random)
    {
        const int hour = between(-14, 12);
        text_ << (one_in(2) ? "ABC" : "<+0330>");
        put_offset(hour);
        if (one_in(5))
            return;
        text_ << (one_in(2) ? "XYZW" : "<-05>");
        if (one_in(2))
            put_offset(hour + between(-2, 2));
        // Two seasons that keep away from each other and from New Year, in either order.
        const bool is_north = one_in(2);
        put_point(is_north ? 2 : 8);
        put_point(is_north ? 8 : 2);
    }

    std::string text() const { return text_.str(); }

private:
    int between(int low, int high) { return low + static_cast<int>(random_() % unsigned(high - low + 1)); }
    bool one_in(int count) { return between(1, count) == 1; }

    void put_offset(int hour)
    {
        text_ << hour;
        if (one_in(3))
            text_ << ':' << between(10, 59);
    }

    /// A point in one of the three forms, in four months from one on.
    void put_point(int from)
    {
        const int month = from + between(0, 3), form = between(0, 2);
        text_ << (form == 0 ? ",J" : form == 1 ? "," : ",M");
        if (form == 2)
            text_ << month << '.' << between(1, 5) << '.' << between(0, 6);
        else
            text_ << month * 30 - between(5, 25);
        if (one_in(2))
            return;
        text_ << '/' << (one_in(4) ? between(-167, 167) : between(-25, 25));
        if (one_in(3))
            text_ << ":3" << between(0, 9) << ":0" << between(0, 9);
    }

    std::mt19937& random_;
    std::ostringstream text_;
};

TEST(SweepWorld, TextsMeanWhatTheRuntimeTakesThemFor)
{
    std::mt19937 random;
    const ka_zone_store store(std::vector<ka_zone_file>{});
    for (int round = 0; round < 20000 / SWEEP_STRIDE; ++round) {
        const std::string text = any_text(random).text();
        SCOPED_TRACE(text);
        const runtime_zone theirs(text);
        const library_zone ours{store.posix_zone(text)};
        const long long start = static_cast<long long>(random() % 400) * year;
        for (long long second = start; second < start + year; second += step)
            ASSERT_EQ(ours.at(second), theirs.at(second));
    }
}

}
