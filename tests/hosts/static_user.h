#pragma once

#include <cstdio>

#include <time/time_varnel.h>

/// Uses names, zones and text as it is made and as it goes.
class static_user {
public:
    explicit static_user(const char* owner) : owner_(owner) { say("made"); }
    ~static_user() { say("gone"); }

private:
    void say(const char* state) const
    {
        const ka_time_and_date moment(ka_time(12, 0, 0), ka_date(7, 4, 2024), ka_time_zone::pacific());
        std::printf("%s %s: %s\n", owner_, state, moment.to_string("%A %Z").c_str());
    }

    const char* owner_;
};
