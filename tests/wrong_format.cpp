#include <time/format.h>

std::string text() { return fmt::format(FORMAT, ka_time()); }
