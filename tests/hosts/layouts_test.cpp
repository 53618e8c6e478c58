#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>

#include <gtest/gtest.h>
#include <unistd.h>

namespace {

/// A locale in English with layouts of its own, for as long as the object lives.
class crafted_locale {
public:
    crafted_locale(const std::string& timedate, const std::string& date, const std::string& time)
    {
        const std::string source = folder_ + "/source";
        std::filesystem::create_directories(folder_);
        std::ofstream(source)
            << "LC_TIME\n"
               "abday \"Sun\";\"Mon\";\"Tue\";\"Wed\";\"Thu\";\"Fri\";\"Sat\"\n"
               "day \"Sunday\";\"Monday\";\"Tuesday\";\"Wednesday\";\"Thursday\";\"Friday\";\"Saturday\"\n"
               "abmon \"Jan\";\"Feb\";\"Mar\";\"Apr\";\"May\";\"Jun\";\"Jul\";\"Aug\";\"Sep\";\"Oct\";"
               "\"Nov\";\"Dec\"\n"
               "mon \"January\";\"February\";\"March\";\"April\";\"May\";\"June\";\"July\";\"August\";"
               "\"September\";\"October\";\"November\";\"December\"\n"
               "am_pm \"AM\";\"PM\"\n"
            << "d_t_fmt \"" << timedate << "\"\nd_fmt \"" << date << "\"\nt_fmt \"" << time
            << "\"\nt_fmt_ampm \"%r\"\nEND LC_TIME\n";
        output_of(LOCALEDEF " -c -i '" + source + "' -f UTF-8 '" + folder_ + "/xx_XX.UTF-8'");
    }
    ~crafted_locale() { std::filesystem::remove_all(folder_); }

    /// What the probe says there behind "key=".
    std::string said(const std::string& key) const
    {
        const std::string text = output_of(
            "env -i PATH=/usr/bin:/bin TZ=UTC0 ASAN_OPTIONS=detect_leaks=0 LC_TIME=xx_XX.UTF-8 LOCPATH='" +
            folder_ + "' " PROBE);
        const std::size_t line = ("\n" + text).find("\n" + key + "=");
        return line == text.npos ? text
                                 : text.substr(line, text.find('\n', line) - line).substr(key.size() + 1);
    }

private:
    static std::string output_of(const std::string& command)
    {
        FILE* const pipe = popen((command + " 2>&1").c_str(), "r");
        std::string text;
        for (int letter = std::fgetc(pipe); letter != EOF; letter = std::fgetc(pipe))
            text += static_cast<char>(letter);
        pclose(pipe);
        return text;
    }

    std::string folder_ = testing::TempDir() + "/crafted_" + std::to_string(getpid());
};

}

/// The probe prints 14 July 2024, 18:28:38, in each layout.
TEST(layouts, that_hold_each_other_come_to_an_end)
{
    const struct {
        const char *timedate, *date, *time, *c, *x, *X;
    } rows[] = {
        // One in another is printed by its codes.
        {"%%x, %%9X", "%d.%m.", "%H:%M", "14.07.,     18:28", "14.07.", "18:28"},
        // One in itself, or in the one that it holds, stays as text.
        {"%%c %H", "%%-9x|%d", "%%X", "%c 18", "%-9x|14", "%X"},
        {"%%x %H", "%%X %d", "%%03c", "%x 18", "%X 14", "%03c"},
        {"%%%%c %H", "%d", "%H", "%c 18", "14", "18"},
    };
    for (const auto& row : rows) {
        const crafted_locale locale(row.timedate, row.date, row.time);
        SCOPED_TRACE(row.timedate);
        EXPECT_EQ(locale.said("c"), row.c);
        EXPECT_EQ(locale.said("x"), row.x);
        EXPECT_EQ(locale.said("X"), row.X);
    }
}
