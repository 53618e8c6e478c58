#include <time/read.h>

auto result() { return EXPRESSION; }
