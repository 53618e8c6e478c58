#!/bin/sh
# pkg_config.sh LIBDIR SOURCE TEST PROGRAM COMPILER [FLAG...]: builds a program by
# one bare call of the compiler with what pkg-config says, then runs it, by
# TEST where that is a script and not "none". 77 where the compiler is missing.
# shellcheck disable=SC2034 # eval reads them
set -eu
libdir=$1 source=$2 test=$3 program=$4
shift 4
command -v "$1" >/dev/null || exit 77

# No other folder is searched.
export PKG_CONFIG_LIBDIR="$libdir/pkgconfig"
said=$(pkg-config --cflags --libs ka_time_varnel)
# It is quoted for a shell.
eval "\"\$@\" -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror \"\$source\" $said -o \"\$program\""
export LD_LIBRARY_PATH="$libdir"
[ "$test" = none ] && exec "$program"
exec sh "$test" "$program"
