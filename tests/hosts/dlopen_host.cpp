// dlopen_host LIBRARY ROUNDS: loads and unloads a library over and over, while
// other threads of the host print dates. Says nothing where all is well.
#include <atomic>
#include <chrono>
#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <functional>
#include <string>
#include <thread>

#include <dlfcn.h>
#include <malloc.h>

namespace {

// As the standard library has it, whose string these speak of.
#ifdef _LIBCPP_VERSION
constexpr char month_name[] = "_ZN7ka_date10month_nameEt";
constexpr char ad_name[] = "_ZN7ka_date7ad_nameEv";
constexpr char set_ad_name[] =
    "_ZN7ka_date7ad_nameERKNSt3__112basic_stringIcNS0_11char_traitsIcEENS0_9allocatorIcEEEE";
#else
constexpr char month_name[] = "_ZN7ka_date10month_nameB5cxx11Et";
constexpr char ad_name[] = "_ZN7ka_date7ad_nameB5cxx11Ev";
constexpr char set_ad_name[] = "_ZN7ka_date7ad_nameERKNSt7__cxx1112basic_stringIcSt11char_traitsIcESaIcEEE";
#endif

std::atomic<int> faults = 0;

void expect(bool holds, const char* what)
{
    if (!holds && ++faults < 10)
        std::printf("fault: %s\n", what);
}

template <typename Function>
Function* find(void* library, const char* symbol)
{
    return reinterpret_cast<Function*>(dlsym(library, symbol));
}

void load_use_and_unload(const char* path)
{
    void* const library = dlopen(path, RTLD_NOW | RTLD_LOCAL);
    if (library == nullptr) {
        std::puts(dlerror());
        std::exit(1);
    }
    const auto month = find<const std::string&(unsigned short)>(library, month_name);
    const auto era = find<const std::string&()>(library, ad_name);
    const auto set_era = find<void(const std::string&)>(library, set_ad_name);
    expect(month(2) == "février", "names follow the environment, not the host");
    expect(era() == "A.D.", "what a setter stored is gone");
    set_era("of our time");
    dlclose(library);
    expect(dlopen(path, RTLD_NOW | RTLD_NOLOAD) == nullptr, "the library is unmapped");
}

/// The host's clock and the languages of its threads, as these see them.
void print_dates(const std::atomic<bool>& is_done, locale_t locale, const char* expected)
{
    uselocale(locale);
    const std::time_t summer = 1720117718;
    while (!is_done) {
        std::tm fields = {};
        localtime_r(&summer, &fields);
        expect(fields.tm_hour == 20 && fields.tm_isdst == 1, "the host's clock stays");
        char text[40];
        std::strftime(text, sizeof text, "%A, %d. %B", &fields);
        expect(std::strcmp(text, expected) == 0, "the host's language stays");
        std::this_thread::sleep_for(std::chrono::microseconds(50)); // valgrind runs one thread at a time
    }
}

}

int main(int, char** arguments)
{
    expect(std::setlocale(LC_ALL, "de_DE.UTF-8") != nullptr, "de_DE is installed");
    std::atomic<bool> is_done = false;
    const locale_t japanese = newlocale(LC_ALL_MASK, "ja_JP.UTF-8", nullptr);
    std::thread first(print_dates, std::cref(is_done), LC_GLOBAL_LOCALE, "Donnerstag, 04. Juli");
    std::thread second(print_dates, std::cref(is_done), japanese, "木曜日, 04. 7月");
    const int rounds = std::atoi(arguments[2]);
    std::size_t kept = 0;
    for (int round = 0; round < rounds; ++round) {
        load_use_and_unload(arguments[1]);
        if (round == rounds / 10)
            kept = mallinfo2().uordblks;
    }
    // The runtimes keep some, and no more of it in more rounds.
    expect(mallinfo2().uordblks <= kept + 8192, "no memory stays behind");
    is_done = true;
    first.join();
    second.join();
    freelocale(japanese);
    expect(std::strcmp(std::setlocale(LC_TIME, nullptr), "de_DE.UTF-8") == 0, "the host's locale stays");
    return faults == 0 ? 0 : 1;
}
