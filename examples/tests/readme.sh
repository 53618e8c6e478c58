#!/bin/sh
# README.md shows the sample as it is and prints what it prints: readme.sh PROGRAM SOURCE README
set -eu
program=$1 source=$2 readme=$3
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

block() { sed -n "/^\`\`\`$1\$/,/^\`\`\`\$/p" "$readme" | sed '1d;$d'; }
# Lines of the library's sources move; a message still has to name the source.
without_line() { sed 's|\(\[time/src/[a-z]*\):[0-9]*\]|\1:N]|'; }

sed -n '/^\/\/ README begins$/,/^\/\/ README ends$/p' "$source" | sed '1d;$d' >"$work/code"
block cpp >"$work/code.shown"
"$program" | without_line >"$work/output"
block text | without_line >"$work/output.shown"
[ -s "$work/code" ] && [ -s "$work/output" ]
diff -u "$work/code.shown" "$work/code"
diff -u "$work/output.shown" "$work/output"
