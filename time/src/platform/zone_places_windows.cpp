#include "files.h"

namespace platform {

// No tz data come with this system: TZDIR names a folder of them.

const std::vector<std::string>& zone_folders()
{
    static const std::vector<std::string> none;
    return none;
}

std::string machine_zone_path() { return {}; }

std::string machine_zone_text() { return {}; }

}
