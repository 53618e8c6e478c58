#!/bin/sh
# exports.sh LIBRARY MAP FOLDER: the library exports what the version script
# holds and nothing else, no symbol that would keep it loaded for good, asks the
# process for no locale, and names no folder of the build.
set -eu
library=$1 map=$2 folder=$3
LC_ALL=C
export LC_ALL

wanted=$(mktemp)
trap 'rm -f "$wanted"' EXIT
sed -n 's/^ *"\(.*\)";$/\1/p' "$map" | sort -u >"$wanted"
nm -DC --defined-only "$library" | grep -v ' A ' | sed 's/^[^ ]* . //; s/@@KA_TIME_VARNEL_[0-9]*$//' | sort -u | diff -u "$wanted" -
if nm -D "$library" | grep -E ' u |setlocale'; then exit 1; fi
if strings "$library" | grep -F "$folder"; then exit 1; fi
strings "$library" | grep -Fx time/src/timedate
