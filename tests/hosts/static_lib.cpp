#include "static_user.h"

static_user in_library("library");
