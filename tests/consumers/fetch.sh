#!/bin/sh
# fetch.sh SOURCES FOLDER COMPILER: the project that README.md shows, as it stands
# there, fetches the library from its repository. 77 where SOURCES are none.
set -eu
sources=$1 folder=$2 compiler=$3
git -C "$sources" rev-parse HEAD >/dev/null 2>&1 || exit 77

rm -rf "$folder"
mkdir -p "$folder"
sed -n '/^cmake_minimum_required/,/^```/{/^```/d;p;}' "$sources/README.md" >"$folder/CMakeLists.txt"
cp "$sources/tests/consumers/main.cpp" "$folder"
KA_TIME_VARNEL="$sources" cmake -S "$folder" -B "$folder/build" -DCMAKE_CXX_COMPILER="$compiler"
cmake --build "$folder/build"
"$folder/build/your_program"
