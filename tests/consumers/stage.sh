#!/bin/sh
# stage.sh BUILD SOURCES STAGE PREFIX: installs as a packager does, in a folder
# that moves to STAGE then. It holds each public header and no other, and names
# no folder that it came from.
set -eu
build=$1 sources=$2 stage=$3 prefix=$4

rm -rf "$stage" "$stage.first"
DESTDIR="$stage.first" cmake --install "$build" --strip >/dev/null
mv "$stage.first" "$stage"
headers() { (cd "$1" && find time -name '*.h' ! -path 'time/src/*' | sort); }
headers "$sources" >"$stage/headers"
headers "$stage$prefix/include/ka_time_varnel" | diff "$stage/headers" -
if grep -rF -e "$build" -e "$sources" -e "$stage.first" "$stage"; then exit 1; fi
