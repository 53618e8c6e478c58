#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <sstream>
#include <string>

#include <langinfo.h>
#include <locale.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include <time/pattern.h>
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

/// Without what pads a number: blanks, and zeros in front of a digit.
std::string without_padding(const std::string& text)
{
    std::string rest;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const auto is_digit = [&](std::size_t place) {
            return place < text.size() && '0' <= text[place] && text[place] <= '9';
        };
        const bool is_padding =
            text[at] == ' ' || (text[at] == '0' && is_digit(at + 1) && (at == 0 || !is_digit(at - 1)));
        if (!is_padding)
            rest += text[at];
    }
    return rest;
}

/// What the format language has no code for, by the code of the runtime.
enum class kind { same, padding, otherwise };

kind told_kind(const std::string& layout)
{
    for (const char* const other : {"%P", "%z", "%u", "%V"})
        if (layout.find(other) != layout.npos)
            return kind::otherwise;
    for (const char* const unpadded : {"%-", "%_"})
        if (layout.find(unpadded) != layout.npos)
            return kind::padding;
    return kind::same;
}

/// The texts of a code over a year, beside those of the runtime.
void compare(const std::string& name, locale_t locale, const char* code, nl_item item)
{
    SCOPED_TRACE(name + " " + code);
    const ka_pattern pattern(code, ka_language(name));
    std::string layout = nl_langinfo_l(item, locale);
    if (layout.find("%r") != layout.npos)
        layout += nl_langinfo_l(T_FMT_AMPM, locale);
    for (int day = 0; day < 366; ++day) {
        const ka_date date = ka_date(1, 1, 2024) + ka_time_period(day, 0, 0, 0);
        const ka_time time(day * 7 % 24 * 3600 + day * 13 % 60 * 60 + day % 60);
        const ka_time_and_date moment(time, date, ka_time_zone::utc());
        std::tm fields = static_cast<std::tm>(moment);
        fields.tm_zone = "UTC0"; // as the library calls it
        char text[256];
        const std::string there(text, strftime_l(text, sizeof text, code, &fields, locale));
        const std::string here = pattern.to_string(moment);
        switch (told_kind(layout)) {
            case kind::same:
                ASSERT_EQ(here, there) << layout;
                break;
            case kind::padding:
                ASSERT_EQ(without_padding(here), without_padding(there)) << layout;
                break;
            default:
                break;
        }
    }
}

/// Whether the machine has the language, and is compared.
bool compare(const std::string& name)
{
    const locale_t locale = newlocale(LC_TIME_MASK, name.c_str(), nullptr);
    if (locale == nullptr)
        return false;
    compare(name, locale, "%c", D_T_FMT);
    compare(name, locale, "%x", D_FMT);
    compare(name, locale, "%X", T_FMT);
    freelocale(locale);
    return true;
}

TEST(languages, lay_out_as_the_runtime_does)
{
    std::istringstream names(output_of("locale -a"));
    int count = 0;
    for (std::string name; std::getline(names, name);)
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
