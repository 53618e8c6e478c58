#!/bin/sh
# parent.sh CONSUMERS BUILD SOURCES COMPILER: a project around the library, built
# in BUILD, that sets where it installs after it has taken the library in.
set -eu
consumers=$1 build=$2 sources=$3 compiler=$4

cmake --install "$build" >"$build/install.log"
sh "$consumers/pkg_config.sh" "$build/installed/odd/lib" "$consumers/main.cpp" none "$build/installed/consumer" \
    "$compiler" -std=c++20
outside=$(grep -- '-- Installing: ' "$build/install.log" | grep -vF -- "-- Installing: $build/installed/" || true)
[ -z "$outside" ] || { echo "$outside" && exit 1; }

# It has named no build type, and has a library that is optimised.
grep -q 'O2.*time/src/calendar.cpp' "$build/compile_commands.json" || { echo "not optimised" && exit 1; }

rm -rf "$build/bare"
cmake -S "$consumers/add_subdirectory" -B "$build/bare" -DLIBRARY_SOURCES="$sources" -DVARNEL_INSTALL=OFF >/dev/null
cmake --install "$build/bare" >/dev/null
[ ! -e "$build/bare/installed" ] || { find "$build/bare/installed" && exit 1; }
