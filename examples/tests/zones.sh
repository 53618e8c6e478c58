#!/bin/sh
# The command that explains a zone: zones.sh PROGRAM
set -eu
zones=$1
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work"

# says ARGUMENTS... : prints what stands in the file "expected"
says() {
    "$zones" "$@" >output
    diff expected output || {
        echo "zones $*" >&2
        exit 1
    }
}

cat >expected <<END
America/New_York: EST5, EDT4

2024-03-10 02:30:00 is skipped: the clocks go from UTC-05:00 to UTC-04:00.
  earlier  2024-03-10 01:30:00 EST5   2024-03-10 06:30:00 UTC
  later    2024-03-10 03:30:00 EDT4   2024-03-10 07:30:00 UTC
END
says America/New_York 2024-03-10 02:30

cat >expected <<END
CET-1CEST,M3.5.0,M10.5.0/3: CET-1, CEST-2

2024-10-27 02:30:00 comes twice: the clocks go from UTC+02:00 to UTC+01:00.
  earlier  2024-10-27 02:30:00 CEST-2   2024-10-27 00:30:00 UTC
  later    2024-10-27 02:30:00 CET-1   2024-10-27 01:30:00 UTC
END
says CET-1CEST,M3.5.0,M10.5.0/3 2024-10-27 02:30

# A day that was skipped whole.
"$zones" Pacific/Apia 2011 >output
grep -qF '2011-12-31 00:00:00 +14-14   UTC+14:00   2011-12-30 10:00:00 UTC' output

cat >expected <<END
Asia/Tokyo: JST-9, JDT-10

no change in 2024
END
says Asia/Tokyo 2024

"$zones" Asia/Tokyo | grep -q '^no change to come$'
"$zones" Europe/Kyiv | grep -q '^next change$'
"$zones" | grep -q '^Europe/Kyiv$'

if "$zones" Mars/Base >output 2>errors; then exit 1; fi
grep -q 'Zone( Mars/Base ), not in folder' errors
