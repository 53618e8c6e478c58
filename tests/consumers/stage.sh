#!/bin/sh
# stage.sh BUILD SOURCES STAGE: installs as a packager does, with a prefix and
# DESTDIR, in a folder that moves to STAGE then. All of it is below the prefix;
# it holds each public header and no other, and the pages that these point to;
# and it names no folder that it came from.
set -eu
build=$1 sources=$2 stage=$3

rm -rf "$stage" "$stage.first"
DESTDIR="$stage.first" cmake --install "$build" --prefix /opt/ka --strip >/dev/null
mv "$stage.first/opt/ka" "$stage"
if find "$stage.first" ! -type d | grep .; then exit 1; fi
headers() { (cd "$1" && find time -name '*.h' ! -path 'time/src/*' | sort); }
headers "$sources" >"$stage/headers"
headers "$stage/include/ka_time_varnel" | diff "$stage/headers" -
for page in $(grep -rhoE 'docs/[a-z]+\.md' "$stage/include" | sort -u); do
    ls "$stage/share/doc/ka_time_varnel/$page" >/dev/null
done
if grep -rF -e "$build" -e "$sources" -e "$stage.first" -e /opt/ka "$stage"; then exit 1; fi
