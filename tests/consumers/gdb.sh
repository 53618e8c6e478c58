#!/bin/sh
# gdb.sh HOST LIBDIR: gdb finds its script by the installed library alone.
set -eu
host=$1 libdir=$2

LD_LIBRARY_PATH="$libdir" gdb -nx -batch -iex "add-auto-load-safe-path $libdir" -ex "break all_is_there" \
    -ex "run >/dev/null" -ex "info auto-load python-scripts libka" -ex "info pretty-printer global ka" \
    -ex "info pretty-printer .*libka_time_varnel.so.*" "$host" >gdb.log 2>&1 || true
grep -q "^Yes .*$libdir/libka_time_varnel.so.*-gdb.py" gdb.log && grep -q 'ka_time_and_date$' gdb.log && exit
cat gdb.log
exit 1
