// A host whose heap runs out, at each allocation of an operation in turn. Says
// nothing where all is well.
#include <cstdio>
#include <cstdlib>
#include <new>
#include <string>

#include <locale.h>

#include <time/time_varnel.h>

extern "C" void* __libc_malloc(std::size_t);
extern "C" void* __libc_calloc(std::size_t, std::size_t);
extern "C" void* __libc_realloc(void*, std::size_t);

namespace {

long live = 0;      // objects made and not deleted; what the C runtime keeps is its own affair
long first_bad = 0; // the allocation to fail, counted from 1; 0 for none
long asked = 0;     // since `first_bad` was set
bool stays_bad = false;
int faults = 0;

bool is_out_of_memory()
{
    if (first_bad == 0)
        return false;
    ++asked;
    return asked == first_bad || (stays_bad && asked > first_bad);
}

}

extern "C" void* malloc(std::size_t size) { return is_out_of_memory() ? nullptr : __libc_malloc(size); }
extern "C" void* calloc(std::size_t count, std::size_t size)
{
    return is_out_of_memory() ? nullptr : __libc_calloc(count, size);
}
extern "C" void* realloc(void* block, std::size_t size)
{
    return is_out_of_memory() ? nullptr : __libc_realloc(block, size);
}

void* operator new(std::size_t size)
{
    void* const block = std::malloc(size);
    if (block == nullptr)
        throw std::bad_alloc();
    ++live;
    return block;
}
void operator delete(void* block) noexcept
{
    live -= block != nullptr;
    std::free(block);
}
void operator delete(void* block, std::size_t) noexcept { operator delete(block); }

namespace {

void expect(bool holds, const char* what)
{
    if (!holds && ++faults < 10)
        std::printf("fault: %s\n", what);
}

/// What operations can change, when memory is there.
std::string state()
{
    const ka_time_and_date moment(ka_time(18, 28, 38), ka_date(7, 4, 2024), ka_time_zone::eastern());
    return ka_date::ad_name() + ka_date::bc_name() + ka_time::am_name() + ka_time::pm_name() +
           ka_date::default_format() + ka_time::default_format() + ka_time_and_date::default_format() +
           moment.to_string("%A %c %x %Z") + ka_time_and_date::default_time_zone().name();
}

/// Fails the allocations of an operation one by one, each alone and with all
/// that follow. Either `std::bad_alloc` leaves, or a runtime did without; and
/// all is as it was before.
template <typename Operation>
void exhaust(const char* what, Operation operation)
{
    operation(); // what the runtimes keep for good is there from now on
    int refusals = 0;
    for (const bool stays : {false, true})
        for (long bad = 1, used = 1; used >= bad; ++bad) {
            const std::string before = state();
            const long live_before = live;
            asked = 0;
            stays_bad = stays;
            first_bad = bad;
            try {
                operation();
            } catch (const std::bad_alloc&) {
                ++refusals;
            }
            first_bad = 0;
            used = asked;
            expect(live == live_before, what);
            expect(state() == before, what);
        }
    expect(refusals > 0, what);
}

/// Stops and starts; a start that memory was too short for has counted.
void restart()
{
    ka_exit_time_varnel();
    try {
        ka_init_time_varnel();
    } catch (const std::bad_alloc&) {
        first_bad = 0;
        ka_exit_time_varnel();
        ka_init_time_varnel();
        throw;
    }
    // The runtime may have gone without the user's locale.
    first_bad = 0;
    ka_exit_time_varnel();
    ka_init_time_varnel();
}

/// An error of the library arrives whole, and takes no memory but its own.
void expect_error_without_memory()
{
    asked = 0;
    stays_bad = true;
    first_bad = 1;
    try {
        (void)ka_date(37);
    } catch (const ka_time_varnel_error& error) {
        first_bad = 0;
        const std::string text = error.what();
        expect(text.starts_with("invalid_day: 37 [time/src/date:"), "error's text");
        expect(error.code() == ka_invalid_day, "error's code");
        expect(asked == 1, "error's memory");
    }
    expect(first_bad == 0, "error");
}

}

int main()
{
    // The runtime takes a locale that it once had no memory for as one that isn't
    // there. It keeps one that is in use.
    newlocale(LC_TIME_MASK, "", nullptr);
    const std::string text(100, 'x');
    const ka_time_and_date moment(ka_time(18, 28, 38), ka_date(7, 4, 2024), ka_time_zone::eastern());
    exhaust("format", [&] { (void)moment.to_string("%300d%A%c%x%Z%300B"); });
    exhaust("zone", [&] { (void)ka_time_zone(ka_time_period(3600), text, text).name(); });
    exhaust("start", restart);

    // Each text is longer than all before, so that room has to be found for it.
    void (*const setters[])(const std::string&) = {ka_date::ad_name,
                                                   ka_date::bc_name,
                                                   ka_time::am_name,
                                                   ka_time::pm_name,
                                                   ka_date::default_format,
                                                   ka_time::default_format,
                                                   ka_time_and_date::default_format};
    for (const auto set : setters) {
        std::size_t length = 100;
        set("short");
        exhaust("setter", [&] {
            set(std::string(length *= 2, 'x'));
            set("short");
        });
    }
    expect_error_without_memory();
    return faults == 0 ? 0 : 1;
}
