#!/bin/sh
# exports.sh LIBRARY MAP FOLDER [OBJDUMP]: the library exports what the version
# script holds and nothing else, no symbol that would keep it loaded for good,
# asks the process for no locale, and names no folder of the build. A DLL is read
# by the OBJDUMP of its machine.
set -eu
library=$1 map=$2 folder=$3
LC_ALL=C
export LC_ALL

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
if [ $# -gt 3 ]; then
    "$4" -p "$library" | sed '1,/Ordinal\/Name Pointer/d; /^$/q' | sed 's/.*] *//' | c++filt --no-verbose >"$work/names"
else
    if nm -D "$library" | grep -E ' u |setlocale'; then exit 1; fi
    nm -DC --defined-only "$library" | grep -v ' A ' | sed 's/^[^ ]* . //; s/@@KA_TIME_VARNEL_[0-9]*$//' >"$work/names"
fi
sed -n 's/^ *"\(.*\)";$/\1/p' "$map" | sort -u >"$work/wanted"
sed '/^$/d' "$work/names" | sort -u | diff -u "$work/wanted" -
if strings "$library" | grep -F "$folder"; then exit 1; fi
strings "$library" | grep -Fx time/src/timedate
