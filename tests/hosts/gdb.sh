#!/bin/sh
# gdb.sh HOST PRINTERS: gdb shows each value of the host as the library writes
# it, in the live program and in a core of it.
set -eu
host=$1 printers=$2

stage=$(mktemp -d)
trap 'rm -rf "$stage"' EXIT
"$host" >"$stage/expected"
cat >"$stage/show.py" <<'END'
import gdb
with open(gdb.convenience_variable("shown").string(), "w") as shown:
    zones = gdb.parse_and_eval("zones")
    for zone in range(zones.type.range()[1] + 1):
        print(zones[zone].dereference().format_string(), file=shown)
    for name in ("dates", "times", "periods", "numbers", "moments"):
        held = gdb.parse_and_eval(name)["_M_impl"]
        for index in range(int(held["_M_finish"] - held["_M_start"])):
            print((held["_M_start"] + index).dereference().format_string(), file=shown)
    zone = gdb.lookup_type("ka_time_zone").pointer()
    print(gdb.parse_and_eval("&lost").cast(zone).dereference().format_string(), file=shown)
END
run_gdb() { gdb -nx -batch -iex "set auto-load off" -ex "source $printers" "$@" >"$stage/log" 2>&1; }
compare() {
    sed -e 's/.*refuses it)$/refused/' -e 's/no zone at 0x[0-9a-f]*/no zone/' "$stage/$1" |
        diff -u "$stage/expected" - && [ -s "$stage/expected" ] && return
    cat "$stage/log"
    exit 1
}

run_gdb -ex "break all_is_there" -ex run -ex "set \$shown = \"$stage/live\"" -ex "source $stage/show.py" \
    -ex "generate-core-file $stage/core" "$host"
compare live
run_gdb -ex "core-file $stage/core" -ex "set \$shown = \"$stage/dead\"" -ex "source $stage/show.py" "$host"
compare dead
