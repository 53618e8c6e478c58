#!/bin/sh
# exports.sh LIBRARY LIST FOLDER: the library exports what the list holds and
# nothing else, no symbol that would keep it loaded for good, asks the process
# for no locale, and names no folder of the build.
set -eu
library=$1 list=$2 folder=$3

nm -DC --defined-only "$library" | cut -c20- | sort -u | diff -u "$list" -
if nm -D "$library" | grep -E ' u |setlocale'; then exit 1; fi
if strings "$library" | grep -F "$folder"; then exit 1; fi
strings "$library" | grep -Fx time/src/timedate
