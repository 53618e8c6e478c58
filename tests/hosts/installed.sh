#!/bin/sh
# installed.sh BUILD LIBDIR COMPILER SOURCES: the tour, compiled with nothing but
# what an installation in a folder that has moved since holds, passes its test.
set -eu
build=$1 libdir=$2 compiler=$3 sources=$4

stage=$(mktemp -d)
trap 'rm -rf "$stage"' EXIT
cmake --install "$build" --prefix "$stage/first" >/dev/null
mv "$stage/first" "$stage/moved"
"$compiler" -std=c++20 -isystem "$stage/moved/include/ka_time_varnel" "$sources/examples/tour.cpp" \
    -L "$stage/moved/$libdir" -lka_time_varnel -Wl,-rpath,"$stage/moved/$libdir" -o "$stage/tour"
sh "$sources/examples/tests/tour.sh" "$stage/tour"
if grep -rlF "$sources" "$stage/moved"; then exit 1; fi
