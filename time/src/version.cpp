#include <time/version.h>

int ka_time_varnel_version() noexcept { return KA_TIME_VARNEL_VERSION; }
