// Loads and unloads a library that it is told over and over. Says nothing where all is well.
#include <clocale>
#include <cstdio>
#include <cstring>
#include <string>

#include <dlfcn.h>

namespace {

int faults = 0;

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

}

int main(int, char** arguments)
{
    const char* const host_locale = std::setlocale(LC_ALL, "de_DE.UTF-8");
    expect(host_locale != nullptr, "de_DE is installed");
    for (int round = 0; round < 1000; ++round) {
        void* const library = dlopen(arguments[1], RTLD_NOW | RTLD_LOCAL);
        if (library == nullptr) {
            std::puts(dlerror());
            return 1;
        }
        const auto month =
            find<const std::string&(unsigned short)>(library, "_ZN7ka_date10month_nameB5cxx11Et");
        const auto era = find<const std::string&()>(library, "_ZN7ka_date7ad_nameB5cxx11Ev");
        const auto set_era = find<void(const std::string&)>(
            library, "_ZN7ka_date7ad_nameERKNSt7__cxx1112basic_stringIcSt11char_traitsIcESaIcEEE");
        expect(month(2) == "février", "names follow the environment, not the host");
        expect(era() == "A.D.", "what a setter stored is gone");
        set_era("of our time");
        dlclose(library);
        expect(dlopen(arguments[1], RTLD_NOW | RTLD_NOLOAD) == nullptr, "the library is unmapped");
    }
    expect(std::strcmp(std::setlocale(LC_TIME, nullptr), "de_DE.UTF-8") == 0, "the host's locale stays");
    return faults;
}
