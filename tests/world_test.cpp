#include <chrono>
#include <filesystem>
#include <fstream>
#include <string>
#include <thread>
#include <vector>

#include <unistd.h>

#include <gtest/gtest.h>

#include <time/time_varnel.h>
#include <time/world.h>

#include "expect_error.h"
#include "printers.h"
#include "tzif_bytes.h"

// Stores, names, the machine's zone and what is refused. What zones read and
// mean is swept in sweep_world_test.cpp.

namespace {

using files = std::vector<ka_zone_file>;

constexpr const char* place = "time/src/world/zone_library";

ka_time_and_date at(const ka_time_zone& zone, long long unix_seconds)
{
    ka_time_and_date moment(unix_seconds);
    moment.time_zone(zone);
    return moment;
}

std::string shown_at(const ka_time_zone& zone, long long unix_seconds)
{
    return at(zone, unix_seconds).to_string("%Y-%m-%d %H:%M:%S %Z");
}

/// A store of one file.
ka_zone_store store_of(const std::string& bytes) { return ka_zone_store(files{{"Test/Zone", bytes}}); }

void expect_damage(const std::string& what, std::size_t byte, const std::string& bytes)
{
    const ka_zone_store store = store_of(bytes);
    expect_error("failure",
                 "Zone( Test/Zone ), file( memory ): " + what + ", at byte( " + std::to_string(byte) + " )",
                 place, [&] { store.zone("Test/Zone"); });
}

const tzif_bytes sample{.changes = {{1000, 1}, {2000, 0}},
                        .types = {{3600, false, "CET"}, {7200, true, "CEST"}},
                        .leaps = {},
                        .footer = "\nCET-1CEST,M3.5.0,M10.5.0/3\n"};

TEST(World, AStoreHoldsFilesInMemory)
{
    const ka_zone_store store(files{{"One", sample.file()},
                                    {"Two/Two", tzif_bytes().file()},
                                    {"One", "nothing"},
                                    {"readme", "text"},
                                    {"+VERSION", "2026c\n"}});
    EXPECT_EQ(store.names(), (std::vector<std::string>{"One", "Two/Two"}));
    EXPECT_EQ(store.version(), "2026c");
    EXPECT_EQ(&store.zone("One"), &store.zone("One"));
    EXPECT_EQ(shown_at(store.zone("One"), 1500), "1970-01-01 02:25:00 CEST-2");
    EXPECT_EQ(ka_zone_store(files{{"tzdata.zi", "# version 2025b\n# more"}}).version(), "2025b");
    EXPECT_EQ(ka_zone_store(files{{"One", sample.file()}}).version(), "");
}

TEST(World, AFileWithoutRulesStaysAsItWasLast)
{
    // Version 1, 32 bits; and an empty footer.
    tzif_bytes plain = sample;
    plain.version = '\0';
    const ka_zone_store first = store_of(plain.file());
    EXPECT_EQ(shown_at(first.zone("Test/Zone"), 1500), "1970-01-01 02:25:00 CEST-2");
    EXPECT_EQ(shown_at(first.zone("Test/Zone"), 1720000000), "2024-07-03 10:46:40 CET-1");
    plain.version = '2';
    plain.footer = "\n\n";
    const ka_zone_store second = store_of(plain.file());
    EXPECT_EQ(shown_at(second.zone("Test/Zone"), 1720000000), "2024-07-03 10:46:40 CET-1");
}

TEST(World, AChangeOutsideTheRangeCountsWhereItShows)
{
    tzif_bytes wide = sample;
    wide.changes = {{-(1ll << 59), 1}, {1ll << 59, 0}};
    wide.footer = "\n\n";
    const ka_zone_store store = store_of(wide.file());
    const ka_time_zone& zone = store.zone("Test/Zone");
    EXPECT_EQ(
        ka_time_and_date(ka_time(), ka_date::min_date() + ka_time_period(86400), zone).to_string("%H:%M %Z"),
        "00:00 CEST-2");
    EXPECT_EQ(ka_time_and_date(ka_time(), ka_date::max_date(), zone).to_string("%H:%M %Z"), "00:00 CEST-2");
}

TEST(World, SecondsOfLeapsAreTakenOut)
{
    tzif_bytes leaping = sample;
    leaping.leaps = {{1200, 1}, {2500, 2}};
    leaping.changes = {{1000, 1}, {2001, 0}};
    const ka_zone_store with = store_of(leaping.file()), without = store_of(sample.file());
    for (const long long second : {999, 1000, 1999, 2000, 2001, 3000})
        EXPECT_EQ(shown_at(with.zone("Test/Zone"), second), shown_at(without.zone("Test/Zone"), second));
}

TEST(World, DamagedFilesAreRefusedWithThePlace)
{
    const auto changed = [](auto change) {
        tzif_bytes bytes = sample;
        change(bytes);
        return bytes.file();
    };
    const std::string whole = sample.file();
    const auto with_count = [&](std::size_t place_of_count, long long value) {
        std::string bytes = whole;
        bytes.replace(place_of_count, 4, tzif_bytes::number(value, 4));
        return bytes;
    };
    constexpr std::size_t second = 44 + 6 + 4; // the second header
    expect_damage("no tz file", 0, "TZ if" + std::string(100, '\0'));
    expect_damage("a version other than 1 to 4", 4, changed([](tzif_bytes& b) { b.version = '5'; }));
    expect_damage("the file ends in a block of data", whole.size(), with_count(32, 0xffffffff));
    expect_damage("counts for more bytes than there are", second + 20, with_count(second + 32, 0xffffffff));
    expect_damage("counts for more bytes than there are", second + 20, with_count(second + 40, 0xffffffff));
    expect_damage("a count of types other than 1 to 250", second + 36, with_count(second + 36, 0));
    expect_damage("a count of marks other than that of types", second + 20, with_count(second + 20, 1));
    expect_damage("a change that is not after the one before", second + 44 + 8, changed([](tzif_bytes& b) {
                      b.changes = {{1000, 1}, {1000, 0}};
                  }));
    expect_damage("a change to a type that is not there", second + 44 + 17,
                  changed([](tzif_bytes& b) { b.changes[1].type = 2; }));
    expect_damage("an offset outside -25 to 26 hours", second + 44 + 18,
                  changed([](tzif_bytes& b) { b.types[0].east = 93600; }));
    expect_damage("a leap second that is not after the one before", second + 44 + 39 + 12,
                  changed([](tzif_bytes& b) {
                      b.leaps = {{5, 1}, {5, 2}};
                  }));
    expect_damage("a footer that is no line, or not the end", second + 44 + 39,
                  changed([](tzif_bytes& b) { b.footer += "more"; }));
    expect_damage("a month, 1 to 12", second + 44 + 39 + 13,
                  changed([](tzif_bytes& b) { b.footer = "\nCET-1CEST,M0.5.0,M10.5.0/3\n"; }));
    tzif_bytes old = sample;
    old.version = '\0';
    expect_damage("more bytes than a file of version 1 has", old.file().size(), old.file() + "more");
    for (std::size_t size = 0; size < whole.size(); ++size) {
        const ka_zone_store store = store_of(whole.substr(0, size));
        SCOPED_TRACE(size);
        EXPECT_THROW(store.zone("Test/Zone"), ka_time_varnel_error);
    }
}

TEST(World, TextsAreRefusedAtTheFirstWrongCharacter)
{
    const struct {
        const char* text;
        const char* what;
        int at;
    } rows[] = {
        {"", "a name has at least three characters", 0},
        {"ES5", "a name has at least three characters", 2},
        {"<+3>-3", "a name has at least three characters", 3},
        {"<+03-3", "a name in angle brackets has letters, digits and signs", 6},
        {"EST", "hours, 0 to 24", 3},
        {"EST25", "hours, 0 to 24", 4},
        {"EST5:60", "minutes of two digits", 6},
        {"EST5:3", "minutes of two digits", 6},
        {"EST5:30:1x", "seconds of two digits", 9},
        {"EST5,M3.2.0,M11.1.0", "a name has at least three characters", 4},
        {"EST5EDT,", "J, M or a day, 0 to 365", 8},
        {"EST5EDT,M3.2.0", "a comma", 14},
        {"EST5EDT,M13.2.0,M11.1.0", "a month, 1 to 12", 10},
        {"EST5EDT,M3.0.0,M11.1.0", "a week, 1 to 5", 11},
        {"EST5EDT,M3.2.7,M11.1.0", "a weekday, 0 to 6", 13},
        {"EST5EDT,J0,J9", "a day, 1 to 365", 10},
        {"EST5EDT,366,J9", "J, M or a day, 0 to 365", 10},
        {"EST5EDT,0/168,J9", "hours, 0 to 167", 12},
        {"EST5EDT,M3.2.0,M11.1.0 ", "the text should end here", 22},
    };
    const ka_zone_store store(files{});
    for (const auto& [text, what, at] : rows)
        expect_error("failure",
                     std::string("TZ string( ") + text + " ), at( " + std::to_string(at) + " ): " + what,
                     place, [&, zone_text = text] { store.posix_zone(zone_text); });
}

TEST(World, NamesStayInTheFolder)
{
    const ka_zone_store store("/usr/share/zoneinfo");
    for (const char* const name : {"", "/etc/localtime", "../zoneinfo/UTC", "Europe/../UTC", "Europe//Kyiv",
                                   ".hidden", "Europe/", "Europe\\Kyiv", "Europe/Ky iv"})
        expect_error("failure", std::string("Zone( ") + name + " ), no name of a zone", place,
                     [&] { store.zone(name); });
    expect_error("failure",
                 "Zone( Mars/Base ), no folder( /no/such/folder ); tz data come with the package tzdata",
                 place, [] { ka_zone_store("/no/such/folder").zone("Mars/Base"); });
}

/// A folder of its own, which goes when the test ends.
struct own_folder {
    std::filesystem::path path =
        std::filesystem::temp_directory_path() / ("zones" + std::to_string(::getpid()));
    own_folder() { std::filesystem::create_directories(path / "Area"); }
    ~own_folder() { std::filesystem::remove_all(path); }
    void write(const char* name, const std::string& bytes) const
    {
        std::ofstream(path / name, std::ios::binary) << bytes;
    }
};

TEST(World, AStoreReadsAFolder)
{
    const own_folder folder;
    folder.write("Area/One", sample.file());
    folder.write("notes", "text");
    folder.write("long", std::string(1 << 20, 'x'));
    std::error_code no_links;
    std::filesystem::create_directory_symlink(folder.path, folder.path / "Area/again", no_links);
    const ka_zone_store store(folder.path.string());
    EXPECT_EQ(store.names(), std::vector<std::string>{"Area/One"});
    EXPECT_EQ(store.zone("Area/One").name(), "CET-1");
    const std::string root = folder.path.string();
    expect_error("failure", "Zone( Area ), file( " + root + "/Area ) is no file", place,
                 [&] { store.zone("Area"); });
    expect_error("failure", "Zone( Area/Two ), not in folder( " + root + " )", place,
                 [&] { store.zone("Area/Two"); });
    expect_error("failure", "Zone( long ), file( " + root + "/long ) is longer than 256 KB", place,
                 [&] { store.zone("long"); });
    expect_error("failure", "Zone( notes ), file( " + root + "/notes ): no tz file, at byte( 0 )", place,
                 [&] { store.zone("notes"); });

    // A zone stays as it was loaded; a new store reads anew.
    const ka_time_zone& loaded = store.zone("Area/One");
    folder.write("Area/One", tzif_bytes().file());
    EXPECT_EQ(&store.zone("Area/One"), &loaded);
    EXPECT_EQ(ka_zone_store(folder.path.string()).zone("Area/One").name(), "UTC0");
}

TEST(World, ThreadsGetOneZone)
{
    const ka_zone_store store(files{{"One", sample.file()}, {"Two", sample.file()}});
    std::vector<const ka_time_zone*> found(8);
    std::vector<std::thread> threads;
    for (std::size_t i = 0; i < found.size(); ++i)
        threads.emplace_back([&, i] { found[i] = &store.zone(i % 2 == 0 ? "One" : "Two"); });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(found, (std::vector<const ka_time_zone*>{found[0], found[1], found[0], found[1], found[0],
                                                       found[1], found[0], found[1]}));
    EXPECT_NE(found[0], found[1]);
}

TEST(World, ThePresentIsThatOfTheUniversalClock)
{
    const ka_time_zone& kathmandu = ka_posix_zone("<+0545>-5:45");
    const auto before = std::chrono::system_clock::now().time_since_epoch();
    const ka_time_and_date now = ka_present(kathmandu);
    const auto after = std::chrono::system_clock::now().time_since_epoch();
    const ka_time_period since = now - ka_time_and_date(0);
    const auto count = std::chrono::microseconds(since.to_seconds() * 1000000ll + since.microseconds());
    EXPECT_LE(std::chrono::floor<std::chrono::microseconds>(before), count);
    EXPECT_LE(count, after);
    EXPECT_EQ(&now.time_zone(), &kathmandu);
}

TEST(World, AnyZoneTellsAbbreviationAndOffset)
{
    const auto told = [](const ka_time_zone& zone, long long second) {
        const ka_time_and_date moment = at(zone, second);
        return ka_zone_abbreviation(moment) + ' ' + ka_offset(moment).to_string();
    };
    EXPECT_EQ(told(ka_posix_zone("<+0545>-5:45"), 0), "+0545 " + ka_time_period(-20700).to_string());
    EXPECT_EQ(told(ka_posix_zone("IST-1GMT0,M10.5.0,M3.5.0/1"), 1704067200),
              "GMT " + ka_time_period().to_string());
    EXPECT_EQ(told(ka_time_zone::pacific(), 1720000000), "PDT " + ka_time_period(25200).to_string());
    EXPECT_EQ(told(ka_time_zone::hawaii(), 1720000000), "HST " + ka_time_period(36000).to_string());
    const ka_time_zone own(ka_time_period(-1800), "Z9", "");
    EXPECT_EQ(told(own, 0), "Z9 " + ka_time_period(-1800).to_string());
}

}
