#include <time/months.h>

#include "throw.h"

void ka_refuse_months(ka_error code, long long given, int line)
{
    throw_error(code, {"time/inline/months", line}, given);
}
