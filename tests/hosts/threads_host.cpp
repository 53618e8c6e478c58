// Sixteen threads that read moments, write texts and meet errors at once. Says
// nothing where all is well; a race is the thread sanitizer's to find.
#include <atomic>
#include <cstdio>
#include <string>
#include <thread>
#include <vector>

#include <time/time_varnel.h>

namespace {

/// What one thread sees of a year, in zones that all of them read.
std::string seen()
{
    std::string text;
    for (const auto zone : {ka_time_zone::pacific, ka_time_zone::greenwich, ka_time_zone::israel})
        for (unsigned short month = 1; month <= 12; ++month) {
            const ka_time_and_date moment(ka_time(2, 30, 0), ka_date(ka_last, 1, month, 2024), zone());
            text += moment.to_string("%A %d %B %c %Z ") + moment.time_zone().name();
            try {
                text += ka_time(1, 2, 3).to_string("%b");
            } catch (const ka_varnel_error& error) {
                text += error.what();
            }
        }
    ka_time_and_date::now();
    return text + ka_time_and_date().to_string();
}

}

int main()
{
    const std::string expected = seen();
    std::atomic<int> faults = 0;
    std::vector<std::thread> threads;
    for (int count = 0; count < 16; ++count)
        threads.emplace_back([&] {
            for (int round = 0; round < 50; ++round)
                faults += seen() != expected;
        });
    for (std::thread& thread : threads)
        thread.join();
    if (faults != 0)
        std::printf("fault: %d readings differ\n", faults.load());
    return faults != 0;
}
