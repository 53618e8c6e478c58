// The sample of README.md. tests/readme.sh keeps both copies and the output there the same.

// README begins
#include <iostream>
#include <time/time_varnel.h>

int main()
{
    ka_time_and_date call(ka_time(18, 0, 0), ka_date(7, 4, 2024), ka_time_zone::eastern());
    call.time_zone(ka_time_zone::central_european());
    std::cout << call.to_string("%A, %d %B %f, %H:%M %Z") << '\n';

    constexpr ka_date payday(ka_last, 6, 11, 2024); // the last Friday, found by the compiler
    std::cout << payday.to_string("%x") << ", " << (payday - call.date()).to_days() << " days later\n";

    try {
        call.date(ka_date(2, 30, 2025));
    } catch (const ka_time_varnel_error& error) {
        std::cout << error.what() << '\n';
    }
}
// README ends
