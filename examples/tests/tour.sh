#!/bin/sh
# The tour in four languages, against what date(1) says: tour.sh PROGRAM
# shellcheck disable=SC2015 # fail ends the script
set -eu
tour=$1
shown=

fail() {
    echo "$LC_ALL: $1" >&2
    echo "$shown" >&2
    exit 1
}
shows() { echo "$shown" | grep -qF -- "$1" || fail "does not show '$1'"; }
has_line() { echo "$shown" | grep -q -- "$1" || fail "has no line like '$1'"; }
# How many widths on the screen the lines on standard input have.
widths() { while IFS= read -r line; do echo "$line" | wc -L; done | sort -u | wc -l; }
# The n-th Sunday of a month of this year.
sunday() { printf '%s-%s-%02d' "$year" "$1" $(((7 - $(date -d "$year-$1-01" +%w)) % 7 + 7 * $2 - 6)); }

for locale in C en_US.UTF-8 ja_JP.UTF-8 ar_SA.UTF-8; do
    export LC_ALL=$locale
    [ "$locale" = C ] || locale -a | grep -qix "${locale%-8}-\{0,1\}8" || fail "the locale is missing"

    # Once more where a minute ends in between.
    minute=
    until [ "$minute" = "$(date '+%F %H:%M')" ]; do
        minute=$(date '+%F %H:%M')
        shown=$("$tour" eastern) || fail "failed"
    done
    year=$(date +%Y)

    shows "$(date +%A)"
    shows "$(date +%B) $year"
    has_line "^ *$(date +%U) .*\[$(date +%e)\]"

    for zone in hawaii aleutian yukon pacific mountain central eastern indiana atlantic newfoundland utc greenwich \
        western_european portuguese central_european south_africa israel; do
        has_line "^  $zone .*  [0-9][0-9]:[0-9][0-9]  [+-]"
    done
    has_line "^  utc .*  ${minute#* }  +00:00  UTC0"
    has_line "^  hawaii .*  $(date -d "$minute 10 hours ago" +%H:%M)  -10:00  HST10"
    [ "$(echo "$shown" | sed -n 's/[0-9][0-9]:[0-9][0-9]  [+-].*/|/p' | widths)" -eq 1 ] || fail "zones are ragged"
    [ "$(echo "$shown" | sed -n '/^  week /{p;n;p;}' | widths)" -eq 1 ] || fail "the month is ragged"

    [ "$(echo "$shown" | grep -c ' UTC   after ')" -eq 2 ] || fail "does not show two changes of the clocks"
    shows "$(sunday 03 2) 07:00:00 UTC   after 01:59:59 EST5 comes 03:00:00 EDT4"
    shows "$(sunday 11 1) 07:00:00 UTC   after 02:59:59 EDT4 comes 02:00:00 EST5"
    shows "1 day and 13:30:00, which is 135000 seconds"
    shows " 64465, by looking at each of 13688923 days"
    shows "invalid_date: Month( 2 ), day( 30 ), year( 2024 ) [time/src/date:"
done

export LC_ALL=C
shown=$(TZ=XXX-5:30 "$tour" utc)
has_line '^  [A-Z].* UTC+5$'
shows 'never moved: UTC0 all year'

status=0
shown=$("$tour" atlantis 2>&1) || status=$?
[ "$status" -eq 2 ] && [ "$(echo "$shown" | wc -l)" -eq 1 ] || fail "takes an unknown zone"
shows '"atlantis"'
shows ' hawaii '
