// A host program that says, line by line, how the library reads the world that
// the test has put it in.
#include <clocale>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <iostream>
#include <locale>
#include <string>

#include <sys/wait.h>
#include <unistd.h>

#include <time/time_varnel.h>

namespace {

void say(const std::string& key, const std::string& value) { std::cout << key << '=' << value << '\n'; }

/// Whether `now` in the default zone reads as the machine's local clock does.
bool agrees_with_machine()
{
    // Not `time`, which lags behind the clock that the library reads.
    const auto machine = [] {
        timespec now = {};
        clock_gettime(CLOCK_REALTIME, &now);
        return now.tv_sec;
    };
    for (int attempt = 0; attempt < 100; ++attempt) {
        const std::time_t before = machine();
        const std::string read = ka_time_and_date::now().to_string("%Y-%m-%d %H:%M:%S");
        if (machine() != before)
            continue;
        std::tm local = {};
        localtime_r(&before, &local);
        char shown[64];
        return std::strftime(shown, sizeof shown, "%Y-%m-%d %H:%M:%S", &local) != 0 && read == shown;
    }
    return false;
}

struct grouping : std::numpunct<char> {
    char do_thousands_sep() const override { return ','; }
    std::string do_grouping() const override { return "\3"; }
};

std::string refusal()
{
    try {
        return ka_date(13688961).to_string();
    } catch (const ka_varnel_error& error) {
        return error.what();
    }
}

/// What a child says that uses the library after a fork and then leaves.
int status_of_child()
{
    const pid_t child = fork();
    if (child == 0)
        std::exit(ka_date(ka_last, 1, 10, 2024).to_string("%d") == "27" && agrees_with_machine() ? 7 : 1);
    int status = 0;
    waitpid(child, &status, 0);
    return WEXITSTATUS(status);
}

}

int main(int argc, char** argv)
{
    if (argc > 1 && std::strcmp(argv[1], "grouped") == 0) {
        std::setlocale(LC_ALL, "de_DE.UTF-8");
        std::locale::global(std::locale(std::locale::classic(), new grouping));
        uselocale(newlocale(LC_ALL_MASK, "fr_FR.UTF-8", nullptr));
    }
    if (argc > 1 && std::strcmp(argv[1], "restarted") == 0) {
        std::setlocale(LC_TIME, "fr_FR.UTF-8");
        ka_exit_time_varnel();
        ka_init_time_varnel();
    }
    const ka_time_and_date moment(ka_time(18, 28, 38), ka_date(7, 14, 2024), ka_time_zone::eastern());
    say("host", std::setlocale(LC_TIME, nullptr));
    say("month", ka_date::month_name(3) + "/" + ka_date::month_abbreviation(3));
    say("weekday", ka_date::weekday_name(1) + "/" + ka_date::weekday_abbreviation(1));
    say("noon", ka_time::am_name() + "/" + ka_time::pm_name());
    say("c", moment.to_string("%c"));
    say("x", moment.to_string("%x"));
    say("X", moment.to_string("%X"));
    say("zone", ka_time_and_date::default_time_zone().name());
    say("observed", ka_time_and_date::default_time_zone().dst_observed() ? "yes" : "no");
    say("agrees", agrees_with_machine() ? "yes" : "no");
    say("refusal", refusal());
    say("period", ka_time_period(1234567, 1).to_string());
    say("child", std::to_string(status_of_child()));
}
