#include <array>
#include <cstdio>
#include <map>
#include <sstream>
#include <string>

#include <gtest/gtest.h>

#include <time/time_varnel.h>

namespace {

/// The output of a command that is given this environment and no other.
std::string output_of(const std::string& environment, const std::string& command)
{
    const std::string line =
        "env -i PATH=/usr/bin:/bin ASAN_OPTIONS=detect_leaks=0 " + environment + " " + command + " 2>&1";
    FILE* const pipe = popen(line.c_str(), "r");
    std::string text;
    std::array<char, 4096> block;
    while (const std::size_t count = std::fread(block.data(), 1, block.size(), pipe))
        text.append(block.data(), count);
    EXPECT_EQ(pclose(pipe), 0) << line << '\n' << text;
    return text;
}

/// What the probe says in this environment, in this mode.
std::map<std::string, std::string> probe(const std::string& environment, const std::string& mode = "")
{
    std::istringstream lines(output_of(environment, PROBE " " + mode));
    std::map<std::string, std::string> said;
    for (std::string line; std::getline(lines, line);)
        said[line.substr(0, line.find('='))] = line.substr(line.find('=') + 1);
    return said;
}

}

TEST(start, speaks_the_language_of_the_environment)
{
    const struct {
        const char *environment, *month, *weekday, *noon, *c, *x, *X;
    } rows[] = {
        {"LC_ALL=C", "March/Mar", "Sunday/Sun", "AM/PM", "Sun Jul  14 18:28:38 2024", "07/14/24", "18:28:38"},
        {"LC_ALL=xx_XX.UTF-8", "March/Mar", "Sunday/Sun", "AM/PM", "Sun Jul  14 18:28:38 2024", "07/14/24",
         "18:28:38"},
        {"LC_ALL=en_US.UTF-8", "March/Mar", "Sunday/Sun", "AM/PM", "Sun 14 Jul 2024 06:28:38 PM EDT4",
         "07/14/2024", "06:28:38 PM"},
        {"LANG=fr_FR.UTF-8 LC_TIME=de_DE.UTF-8", "März/Mär", "Sonntag/So", "/",
         "So 14 Jul 2024 18:28:38 EDT4", "14.07.2024", "18:28:38"},
        {"LANG=fr_FR.UTF-8", "mars/mars", "dimanche/dim.", "/", "dim. 14 juil. 2024 18:28:38", "14/07/2024",
         "18:28:38"},
        {"LC_ALL=ja_JP.UTF-8", "3月/ 3月", "日曜日/日", "午前/午後", "2024年07月14日 18時28分38秒",
         "2024年07月14日", "18時28分38秒"},
        {"LC_ALL=ar_SA.UTF-8", "مارس/مارس", "الأحد/ح", "/", "الأحد  14 يوليو 2024 18:28:38",
         "الأحد  14 يوليو 2024", "18:28:38"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.environment);
        auto said = probe(std::string("TZ=UTC0 ") + row.environment);
        EXPECT_EQ(said["host"], "C");
        EXPECT_EQ(said["month"], row.month);
        EXPECT_EQ(said["weekday"], row.weekday);
        EXPECT_EQ(said["noon"], row.noon);
        EXPECT_EQ(said["c"], row.c);
        EXPECT_EQ(said["x"], row.x);
        EXPECT_EQ(said["X"], row.X);
        EXPECT_EQ(said["child"], "7");
    }
}

TEST(start, leaves_the_locale_of_the_host_and_falls_back_on_it)
{
    auto said = probe("TZ=UTC0 LC_ALL=de_DE.UTF-8", "restarted");
    EXPECT_EQ(said["month"] + said["host"], "März/Märfr_FR.UTF-8");
    said = probe("TZ=UTC0 LC_ALL=xx_XX.UTF-8", "restarted");
    EXPECT_EQ(said["month"] + said["host"], "mars/marsfr_FR.UTF-8");
}

TEST(start, numbers_stay_plain_in_a_host_that_groups_digits)
{
    auto said = probe("LC_ALL=C TZ=UTC0", "grouped");
    EXPECT_EQ(said["host"], "de_DE.UTF-8");
    EXPECT_EQ(said["refusal"].substr(0, 22), "invalid_day: 13688961 ");
    EXPECT_EQ(said["period"], "1234567.000001 seconds");
    EXPECT_EQ(said["c"], "Sun Jul  14 18:28:38 2024");
}

TEST(start, serves_the_static_objects_of_its_hosts)
{
    EXPECT_EQ(output_of("LC_ALL=C TZ=UTC0", STATIC_HOST),
              "library made: Thursday PDT7\nhost made: Thursday PDT7\nmain\n"
              "host gone: Thursday PDT7\nlibrary gone: Thursday PDT7\n");
}

TEST(start, is_new_after_each_reload)
{
    EXPECT_EQ(output_of("LC_ALL=fr_FR.UTF-8 TZ=Europe/Berlin", DLOPEN_HOST " '" LIBRARY "' 1000"), "");
}
