#include "static_user.h"

static_user in_host("host");

int main() { std::puts("main"); }
