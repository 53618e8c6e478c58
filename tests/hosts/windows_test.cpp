// A host on Windows: the user's language and zone at start, threads beside it,
// load and unload. A program can't choose its user's language there, so that the
// test is run in several, and knows what each says.
#include <atomic>
#include <clocale>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <string>
#include <system_error>
#include <thread>

#include <windows.h>

#include <gtest/gtest.h>

#include <time/language.h>
#include <time/time_varnel.h>
#include <time/world.h>

namespace {

const std::string made_before_main = ka_date(7, 4, 2024).to_string("%Y-%m-%d") + ka_date::ad_name();

std::string users_language()
{
    wchar_t name[LOCALE_NAME_MAX_LENGTH] = {};
    GetUserDefaultLocaleName(name, LOCALE_NAME_MAX_LENGTH);
    return std::filesystem::path(name).string();
}

/// Of standard time, by the system's setting.
long system_seconds_west()
{
    TIME_ZONE_INFORMATION zone = {};
    GetTimeZoneInformation(&zone);
    return (zone.Bias + zone.StandardBias) * 60;
}

void restart()
{
    ka_exit_time_varnel();
    ka_init_time_varnel();
}

/// The library once more, under another name: it is loaded and unloaded while
/// the one that the test is linked to stays.
class second_library {
public:
    second_library() : path_(std::filesystem::temp_directory_path() / "ka_loaded_again.dll")
    {
        char first[MAX_PATH] = {};
        GetModuleFileNameA(GetModuleHandleA("libka_time_varnel.dll"), first, MAX_PATH);
        std::filesystem::copy_file(first, path_, std::filesystem::copy_options::overwrite_existing);
    }
    ~second_library()
    {
        std::error_code stays;
        std::filesystem::remove(path_, stays);
    }
    second_library(const second_library&) = delete;
    second_library& operator=(const second_library&) = delete;

    HMODULE load() const { return LoadLibraryW(path_.c_str()); }
    bool is_mapped() const { return GetModuleHandleW(path_.c_str()) != nullptr; }

private:
    std::filesystem::path path_;
};

template <typename Function>
Function* find(HMODULE library, const char* symbol)
{
    return reinterpret_cast<Function*>(reinterpret_cast<void*>(GetProcAddress(library, symbol)));
}

using month_name_function = const std::string&(unsigned short);
constexpr const char* month_name_symbol = "_ZN7ka_date10month_nameB5cxx11Et";

/// What is in use of all heaps of the process.
std::size_t memory_in_use()
{
    HANDLE heaps[64];
    const DWORD count = GetProcessHeaps(64, heaps);
    std::size_t used = 0;
    for (DWORD i = 0; i < count && i < 64; ++i) {
        PROCESS_HEAP_ENTRY entry = {};
        while (HeapWalk(heaps[i], &entry) != 0)
            if ((entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) != 0)
                used += entry.cbData;
    }
    return used;
}

/// The weekday that another thread prints in the language of the process, over
/// and over for as long as this lives.
class printing_thread {
public:
    explicit printing_thread(const char* expected)
        : thread_([this, expected] {
              while (!is_done_) {
                  std::tm thursday = {};
                  thursday.tm_mday = 4;
                  thursday.tm_wday = 4;
                  char text[40];
                  std::strftime(text, sizeof text, "%A", &thursday);
                  if (std::string(text) == expected)
                      ++as_expected_;
                  else
                      ++otherwise_;
              }
          })
    {
        while (as_expected_ + otherwise_ == 0)
            std::this_thread::yield();
    }
    ~printing_thread()
    {
        is_done_ = true;
        thread_.join();
        EXPECT_EQ(otherwise_, 0);
        EXPECT_GT(as_expected_, 0);
    }
    printing_thread(const printing_thread&) = delete;
    printing_thread& operator=(const printing_thread&) = delete;

private:
    std::atomic<bool> is_done_ = false;
    std::atomic<int> as_expected_ = 0;
    std::atomic<int> otherwise_ = 0;
    std::thread thread_;
};

}

TEST(start, speaks_the_language_of_the_user)
{
    // In the ANSI code pages 1252 and 932.
    const struct {
        const char *user, *month, *weekday, *am, *pm, *c, *x, *X;
    } rows[] = {
        {"en-US", "March/Mar", "Sunday/Sun", "AM", "PM", "07/14/2024  6:28:38 PM", "07/14/2024",
         " 6:28:38 PM"},
        {"de-DE", "M\xE4rz/M\xE4r", "Sonntag/So.", "AM", "PM", "14.07.2024 18:28:38", "14.07.2024",
         "18:28:38"},
        {"ja-JP", "3\x8C\x8E/3\x8C\x8E", "\x93\xFA\x97j\x93\xFA/\x93\xFA", "\x8C\xDF\x91O",
         "\x8C\xDF\x8C\xE3", "2024/07/14 18:28:38", "2024/07/14", "18:28:38"},
    };
    const std::string user = users_language();
    const ka_time_and_date moment(ka_time(18, 28, 38), ka_date(7, 14, 2024), ka_time_zone::eastern());
    int found = 0;
    for (const auto& row : rows) {
        if (user != row.user)
            continue;
        ++found;
        EXPECT_EQ(ka_date::month_name(3) + "/" + ka_date::month_abbreviation(3), row.month);
        EXPECT_EQ(ka_date::weekday_name(1) + "/" + ka_date::weekday_abbreviation(1), row.weekday);
        EXPECT_EQ(ka_time::am_name(), row.am);
        EXPECT_EQ(ka_time::pm_name(), row.pm);
        EXPECT_EQ(moment.to_string("%c"), row.c);
        EXPECT_EQ(moment.to_string("%x"), row.x);
        EXPECT_EQ(moment.to_string("%X"), row.X);
    }
    EXPECT_EQ(found, 1) << "no row for a user of " << user;
}

TEST(start, chooses_the_zone_of_the_environment)
{
    const struct {
        const char* setting;
        const ka_time_zone& (*built_in)();
        int seconds_west;
    } rows[] = {
        {"UTC0", ka_time_zone::greenwich, 0},
        {"CET-1CEST", ka_time_zone::central_european, -3600},
        {"EST5EDT", ka_time_zone::eastern, 5 * 3600},
        {"NPT-5:45", nullptr, -20700},
    };
    const std::time_t moment = std::time(nullptr);
    for (const auto& row : rows) {
        SCOPED_TRACE(row.setting);
        const std::string before = std::getenv("TZ") != nullptr ? std::getenv("TZ") : "";
        _putenv((std::string("TZ=") + row.setting).c_str());
        restart();
        const ka_time_zone& chosen = ka_time_and_date::default_time_zone();
        EXPECT_EQ(chosen.offset(), ka_time_period(row.seconds_west));
        // The runtime has the rules of the United States for each zone: where a built-in one
        // is at odds with it today, the zone is one of its own.
        const bool agrees = row.built_in != nullptr &&
                            ka_time_and_date(ka_time::now(), ka_date::today(), row.built_in()).is_dst() ==
                                (std::localtime(&moment)->tm_isdst != 0);
        EXPECT_EQ(row.built_in != nullptr && &chosen == &row.built_in(), agrees);
        EXPECT_EQ(chosen.dst_observed(), agrees && row.built_in().dst_observed());
        _putenv(("TZ=" + before).c_str());
    }
    restart();
}

TEST(start, reads_the_clock_of_the_machine)
{
    // Again where the second has turned meanwhile.
    std::string machine, library;
    for (int attempt = 0; attempt < 100 && (machine.empty() || machine != library); ++attempt) {
        SYSTEMTIME now = {};
        GetLocalTime(&now);
        machine = ka_date(now.wMonth, now.wDay, static_cast<short>(now.wYear)).to_string("%Y-%m-%d ") +
                  ka_time(now.wHour, now.wMinute, now.wSecond).to_string("%H:%M:%S");
        library = ka_time_and_date::now().to_string("%Y-%m-%d %H:%M:%S");
    }
    EXPECT_EQ(library, machine);
}

/// The system tells the rules of its own zone, to a program that has no `TZ`.
TEST(start, machine_zone_is_the_one_of_the_system)
{
    const std::string before = std::getenv("TZ") != nullptr ? std::getenv("TZ") : "";
    _putenv("TZ=");
    const ka_time_and_date now = ka_present(ka_machine_zone());
    SYSTEMTIME local = {};
    GetLocalTime(&local);
    const ka_time_and_date shown(ka_time(local.wHour, local.wMinute, local.wSecond),
                                 ka_date(local.wMonth, local.wDay, static_cast<short>(local.wYear)),
                                 ka_machine_zone());
    EXPECT_LT((shown - now).to_seconds(), 2);
    EXPECT_GT((shown - now).to_seconds(), -2);
    EXPECT_EQ(now.time_zone().offset(), ka_time_period(system_seconds_west()));
    _putenv(("TZ=" + before).c_str());
}

TEST(start, serves_objects_made_before_main) { EXPECT_EQ(made_before_main, "2024-07-04A.D."); }

TEST(start, leaves_the_language_of_the_process_and_of_its_threads)
{
    const std::string month = ka_date::month_name(3);
    ASSERT_NE(std::setlocale(LC_ALL, "Spanish_Spain.1252"), nullptr);
    {
        const printing_thread other("jueves");
        for (int round = 0; round < 300; ++round) {
            restart();
            ASSERT_EQ(ka_date::month_name(3), month);
            ASSERT_EQ(ka_language("French_France.1252").month_name(3), "mars");
            ASSERT_STREQ(std::setlocale(LC_ALL, nullptr), "Spanish_Spain.1252");
        }
    }
    // What another thread sets is set here too.
    std::thread([] { std::setlocale(LC_ALL, "C"); }).join();
    EXPECT_STREQ(std::setlocale(LC_ALL, nullptr), "C");
}

TEST(languages, have_their_layouts_read_back_from_what_they_print)
{
    const ka_language french("French_France.1252");
    EXPECT_EQ(french.date_layout(), "%d/%m/%f");
    EXPECT_EQ(french.time_layout(), "%H:%M:%S");
}

TEST(reload, is_new_each_time_and_leaves_nothing)
{
    const second_library second;
    const std::string month = ka_date::month_name(2);
    constexpr int rounds = 1000;
    std::size_t kept = 0;
    for (int round = 0; round < rounds; ++round) {
        const HMODULE library = second.load();
        ASSERT_NE(library, nullptr);
        const auto month_name = find<month_name_function>(library, month_name_symbol);
        const auto era = find<const std::string&()>(library, "_ZN7ka_date7ad_nameB5cxx11Ev");
        const auto set_era = find<void(const std::string&)>(
            library, "_ZN7ka_date7ad_nameERKNSt7__cxx1112basic_stringIcSt11char_traitsIcESaIcEEE");
        ASSERT_EQ(month_name(2), month);
        ASSERT_EQ(era(), "A.D.");
        set_era("of a time so long ago that its name takes memory");
        ASSERT_NE(FreeLibrary(library), 0);
        ASSERT_FALSE(second.is_mapped());
        if (round == rounds / 10)
            kept = memory_in_use();
    }
    EXPECT_GT(kept, 0u);
    EXPECT_LE(memory_in_use(), kept + 8192);
}

TEST(border, is_crossed_by_errors)
{
    const second_library second;
    const HMODULE library = second.load();
    ASSERT_NE(library, nullptr);
    const auto month_name = find<month_name_function>(library, month_name_symbol);
    std::string message;
    int code = 0;
    try {
        month_name(13);
    } catch (const ka_time_varnel_error& error) {
        message = error.what();
        code = error.code();
    }
    EXPECT_EQ(message.substr(0, 18), "invalid_month: 13 ");
    EXPECT_EQ(code, 7);
    FreeLibrary(library);
}
