#include "files.h"

namespace platform {

const std::vector<std::string>& zone_folders()
{
    static const std::vector<std::string> folders{"/usr/share/zoneinfo", "/usr/lib/zoneinfo",
                                                  "/usr/share/lib/zoneinfo", "/etc/zoneinfo"};
    return folders;
}

std::string machine_zone_path() { return "/etc/localtime"; }

std::string machine_zone_text() { return {}; }

}
