#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <set>
#include <sstream>
#include <string>

#include <locale.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include <time/io.h>
#include <time/pattern.h>
#include <time/read.h>
#include <time/time_varnel.h>

/// The C runtime keeps what it has read of `LOCPATH`.
extern "C" const char* __asan_default_options() { return "detect_leaks=0"; }

namespace {

std::string output_of(const std::string& command)
{
    FILE* const pipe = popen((command + " 2>/dev/null").c_str(), "r");
    std::string text;
    for (int letter = std::fgetc(pipe); letter != EOF; letter = std::fgetc(pipe))
        text += static_cast<char>(letter);
    pclose(pipe);
    return text;
}

/// The languages that leave the numeric offset out of a code, by the page of the manual.
std::set<std::string> without_offset(const std::string& code)
{
    const std::string row = "| `" + code + "` | the numeric offset ";
    std::ifstream page(PAGE);
    std::set<std::string> languages;
    for (std::string line; std::getline(page, line);) {
        if (!line.starts_with(row))
            continue;
        std::istringstream names(line.substr(line.find(" | ", row.size()) + 3));
        for (std::string name; names >> name && name != "|";)
            languages.insert(name);
    }
    return languages;
}

/// The language of a locale: its name without the encoding.
std::string language_of(const std::string& name)
{
    const std::size_t point = std::min(name.find('.'), name.size());
    return name.substr(0, point) + name.substr(std::min(name.find('@', point), name.size()));
}

/// The texts of a code over a year, beside those of the runtime, and read back where they can be.
void compare(const std::string& name, locale_t locale, const char* code, const char* left_out)
{
    SCOPED_TRACE(name + " " + code);
    const ka_pattern pattern(code, ka_language(name));
    const bool is_exact = pattern.is_exact<ka_date>();
    for (int day = 0; day < 366; ++day) {
        const ka_date date = ka_date(1, 1, 2024) + ka_time_period(day, 0, 0, 0);
        const ka_time time(day * 7 % 24 * 3600 + day * 13 % 60 * 60 + day % 60);
        const ka_time_and_date moment(time, date, ka_time_zone::utc());
        std::tm fields = static_cast<std::tm>(moment);
        fields.tm_zone = "UTC0"; // as the library calls it
        char there[256] = "";
        strftime_l(there, sizeof there, code, &fields, locale);
        ASSERT_EQ(pattern.to_string(moment) + left_out, there);
        if (is_exact) {
            const auto read = ka_read_date(pattern.to_string(date), pattern);
            ASSERT_TRUE(read.has_value()) << read.failure().message();
            ASSERT_EQ(*read, date);
        }
    }
}

/// Whether the machine has the language, and is compared.
bool compare(const std::string& name)
{
    const locale_t locale = newlocale(LC_TIME_MASK, name.c_str(), nullptr);
    if (locale == nullptr)
        return false;
    static const std::map<std::string, std::set<std::string>> shorter = {{"%c", without_offset("%c")},
                                                                         {"%X", without_offset("%X")}};
    for (const std::string code : {"%c", "%x", "%X", "%A %d %B %Y", "%a %d %b %Y %I %p"}) {
        const auto row = shorter.find(code);
        const bool is_shorter = row != shorter.end() && row->second.contains(language_of(name));
        compare(name, locale, code.c_str(), is_shorter ? " +0000" : "");
    }
    freelocale(locale);
    return true;
}

/// The locales of the machine, and those of the folder that is named in their place.
std::set<std::string> locale_names()
{
    std::istringstream listed(output_of("locale -a"));
    std::set<std::string> names{std::istream_iterator<std::string>(listed), {}};
    if (const char* const folder = std::getenv("LOCPATH"))
        for (const auto& entry : std::filesystem::directory_iterator(folder))
            names.insert(entry.path().filename().string());
    return names;
}

TEST(languages, print_as_the_runtime_does)
{
    ASSERT_FALSE(without_offset("%c").empty()) << PAGE;
    int count = 0;
    for (const std::string& name : locale_names())
        count += compare(name); // a machine that this one plays the part of has fewer
    EXPECT_GE(count, 5);
}

/// Years and digits of other calendars and scripts, which no probe can find.
TEST(languages, have_their_own_years_and_digits)
{
    const std::string folder = testing::TempDir() + "/languages_" + std::to_string(getpid());
    std::filesystem::create_directories(folder);
    setenv("LOCPATH", folder.c_str(), 1);
    for (const std::string language : {"th_TH", "fa_IR", "my_MM"}) {
        output_of(LOCALEDEF " -c -i " + language + " -f UTF-8 '" + folder + "/" + language + ".UTF-8'");
        EXPECT_TRUE(compare(language + ".UTF-8")) << language;
    }
    const ka_pattern thai("%x", ka_language("th_TH.UTF-8"));
    EXPECT_EQ(thai.to_string(ka_date(7, 4, 2024)), "04/07/2567");
    EXPECT_FALSE(thai.is_exact<ka_date>());
    unsetenv("LOCPATH");
    std::filesystem::remove_all(folder);
}

}
