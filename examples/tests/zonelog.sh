#!/bin/sh
# The filter on odd lines, on a long log and on pipes: zonelog.sh PROGRAM
# shellcheck disable=SC2015,SC2059,SC2086 # fail ends the script; formats and counts come in variables
set -eu
zonelog=$1
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work"

fail() {
    echo "$1" >&2
    exit 1
}
form=seconds there=utc
# check ZONE FORMAT INPUT OUTPUT "REWRITTEN BAD OUT_OF_RANGE", with printf's escapes
check() {
    printf -- "$3" >input
    printf -- "$4" >expected
    "$zonelog" --from "$form" --in "$there" "$1" "$2" <input >output 2>summary || fail "fails on '$3' in $1"
    cmp output expected || fail "'$3' in $1"
    set -- "$3" $5
    echo "zonelog: $2 stamps rewritten, $3 bad, $4 out of range" | diff - summary || fail "counts of '$1'"
}

time='%H:%M:%S.%q'
check utc "$time" '0 a\n1.5\tb\n' '00:00:00.000000 a\n00:00:01.500000\tb\n' '2 0 0'
check utc "$time" '-1.5 a\n-0.5 b\n-0.0000019\n' '23:59:58.500000 a\n23:59:59.500000 b\n23:59:59.999999\n' '3 0 0'
check utc "$time" '1.1234569\n007.%0999d\n' '00:00:01.123456\n00:00:07.000000\n' '2 0 0'
check utc "$time" '' '' '0 0 0'
check utc "$time" '\n\n' '\n\n' '0 2 0'
check utc "$time" '1\r\n2 \r\n3' '00:00:01.000000\r\n00:00:02.000000 \r\n00:00:03.000000' '3 0 0'
check utc "$time" 'no stamp\n4 a\0\377b\n\0005\n6\0\n7\r8\n' 'no stamp\n00:00:04.000000 a\0\377b\n\0005\n6\0\n7\r8\n' '1 4 0'
bad='-\n.\n1.\n.5\n+5\n 5\n--5\n1.2.3\n1.-2\n5x\n5:\n1e3\n0x1F\n1,5\n'
check utc "$time" "$bad" "$bad" '0 14 0'

# Both ends of the range, where the zone has them, and numbers that no counter holds.
stamp='%Y-%m-%d %H:%M:%S'
check utc "$stamp" '-210863520000\n971859427199.999999\n' '-4713-01-01 00:00:00\n32766-12-31 23:59:59\n' '2 0 0'
check pacific "$stamp" '-210863491200\n971859455999\n' '-4713-01-01 00:00:00\n32766-12-31 23:59:59\n' '2 0 0'
check south_africa "$stamp" '-210863527200\n971859416399\n' '-4713-01-01 00:00:00\n32766-12-31 23:59:59\n' '2 0 0'
far='-210863520000.000001 a\n971859427200\r\n185542587187200\n9223372036854775807\n-99999999999999999999999.5 b\n'
check utc "$stamp" "$far" "$far" '0 0 5'
check pacific "$stamp" '-210863491201\n971859456000' '-210863491201\n971859456000' '0 0 2'
check south_africa "$stamp" '-210863527201\n971859416400' '-210863527201\n971859416400' '0 0 2'
check pacific '%H:%M %Z' '1710064799\n1710064800\n' '01:59 PST8\n03:00 PDT7\n' '2 0 0'
check Europe/Kyiv '%H:%M %Z' '1711846799\n1711846800\n' '02:59 EET-2\n04:00 EEST-3\n' '2 0 0'

# Lines longer than any block, and stamps longer than any number: these are bad,
# wherever they end.
check utc %H "%04096d a%300000s\n1.%04094d" "00 a%300000s\n00" '2 0 0'
check utc %H "%04096d\r\n%04097d\n" "00\r\n%04097d\n" '1 1 0'
check utc %H "%0300000d a\n1\n%300000s\n1.%0300000d" "%0300000d a\n00\n%300000s\n1.%0300000d" '1 3 0'

form=rfc3339
check Europe/Berlin %T '2024-07-04T18:00:00-04:00 a\n2024-07-04 22:00:00.5Z\tb\n2024-07-04T22:00:00\r\n' \
    '00:00:00 a\n00:00:00\tb\n00:00:00\r\n' '3 0 0'
bad='2024-02-30T00:00:00Z a\n2024-07-04\n1720130400 a\n2024-07-04T18:00:00Z: b\n'
check utc %T "$bad" "$bad" '0 4 0'
check utc %T '+032766-12-31T23:59:59-01:00' '+032766-12-31T23:59:59-01:00' '0 0 1'
form='%d/%b/%Y %H:%M:%S' there=America/New_York
check Europe/Berlin "$stamp" '4/Jul/2024 18:00:00 a\n03/Nov/2024 01:30:00\n30/Feb/2024 00:00:00\n4/Jul/2024 18:00:00,5\n' \
    '2024-07-05 00:00:00 a\n2024-11-03 06:30:00\n30/Feb/2024 00:00:00\n4/Jul/2024 18:00:00,5\n' '2 2 0'

# A million lines, with the expected text by plain arithmetic.
awk 'BEGIN {
    for (i = 0; i < 1000000; ++i) {
        t = i * 2003
        rest = sprintf(" host service[%d]: the usual line, number %d", i % 997, i)
        printf "%d.%03d%s\n", t, i % 1000, rest >"log"
        printf "%02d:%02d:%02d.%03d000%s\n", int(t / 3600) % 24, int(t / 60) % 60, t % 60, i % 1000, rest >"expected"
    }
}'
"$zonelog" utc "$time" log 2>summary | cmp - expected || fail "a million lines"
grep -q ' 1000000 stamps rewritten, 0 bad, 0 out of range' summary || fail "counts of a million lines"

# A reader that leaves, a disk that is full.
{ status=0; "$zonelog" utc "$time" log 2>summary || status=$?; echo "$status" >status; } | head -n 1 >output
[ "$(cat status)" -eq 1 ] && [ ! -s summary ] || fail "a closed pipe: $(cat status summary)"
! "$zonelog" utc "$time" log >/dev/full 2>summary || fail "writes to a full disk"
grep -q '^zonelog: cannot write' summary || fail "says nothing of the full disk"

# A text that no memory holds: what stands before it goes out, and no more.
printf 'no stamp\n1 a\n' >input
status=0
"$zonelog" utc %9999999999999999999d <input >output 2>summary || status=$?
[ "$status" -eq 1 ] && grep -q '^zonelog: no memory' summary || fail "no memory: $status $(cat summary)"
echo 'no stamp' | cmp - output || fail "what stands before a text too long"

# A line goes out while the next is still to come.
mkfifo in out
"$zonelog" utc %H <in >out 2>summary &
exec 3>in 4<out
echo '0 first' >&3
read -r line <&4
[ "$line" = '00 first' ] || fail "live: $line"
exec 3>&-
wait

# refused STATUS MESSAGE ARGUMENTS...
refused() {
    expected=$1 message=$2 status=0
    shift 2
    "$zonelog" "$@" </dev/null >output 2>summary || status=$?
    [ "$status" -eq "$expected" ] && [ ! -s output ] && [ "$(grep -c '' summary)" -eq 1 ] || fail "refused: $*"
    grep -q "$message" summary || fail "'$message' is not said of: $*"
}
refused 2 'Zone( atlantis ).*; the built-in zones are hawaii .* israel$' atlantis %H
refused 2 '^usage' utc
refused 2 '^usage' --into utc utc %H
refused 2 'Zone( atlantis )' --in atlantis utc %H
refused 2 'no form of stamps.*a year, in %d' --from %d utc %H
refused 2 'no form of stamps.*No code of a pattern at 3 in %H:%Q' --from %H:%Q utc %H
refused 1 'nowhere: No such file' utc %H nowhere
refused 1 'cannot read: Is a directory' utc %H .
