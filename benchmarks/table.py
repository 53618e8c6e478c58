#!/usr/bin/env python3
"""Counts instructions, reads times, and prints the table of both.

    table.py BUILD counts              compares with counts.txt
    table.py BUILD update              writes counts.txt
    table.py BUILD table               times everything, and prints all
    table.py BUILD markdown OTHER      the same for a page, with the figures of another compiler's build beside
"""

import os
import pathlib
import re
import statistics
import subprocess
import sys
import tempfile

HERE = pathlib.Path(__file__).resolve().parent
COUNTS = HERE / "counts.txt"
BATCH = 4096
ROUNDS = 151
TOLERANCE = 1.05
NOW = "ka_time_and_date::now()"
NOW_OF_RUNTIME = "clock_gettime + localtime_r"
START = "start of the library, TZ=UTC"
START_PACIFIC = "start of the library, TZ=America/Los_Angeles"
SIZE = "text of the library, bytes"
ONE_TIME_GOALS = {START: 300_000, START_PACIFIC: 300_000, SIZE: 280 * 1024}
# These read the clock of the machine, and the season changes their counts.
NOT_ON_RECORD = {NOW, NOW_OF_RUNTIME, START_PACIFIC}


def environment(**more):
    """The same for every run, whatever the user's own is."""
    return {"PATH": os.environ["PATH"], "LC_ALL": "C", "TZ": "America/Los_Angeles", **more}


def output(*command, **more):
    """What a program prints. Ends this one, and tells why, where it fails."""
    done = subprocess.run(command, env=environment(**more), capture_output=True, text=True)
    if done.returncode:
        sys.exit(f"{done.stderr}{' '.join(map(str, command))}: failed with {done.returncode}")
    return done.stdout


def callgrind(program, **more):
    """The output files of a program that runs under callgrind, as texts."""
    with tempfile.TemporaryDirectory() as folder:
        output("valgrind", "--tool=callgrind", f"--callgrind-out-file={folder}/out", program, **more)
        return [path.read_text() for path in pathlib.Path(folder).iterdir()]


def total(text):
    return int(re.search(r"^(?:summary|totals): (\d+)", text, re.M).group(1))


def start_cost(build, **more):
    program, empty = (total(callgrind(build / "benchmarks" / name, **more)[0])
                      for name in ("varnel_start", "varnel_empty"))
    return program - empty


def text_size(build):
    printed = output("size", build / "libka_time_varnel.so")
    return int(printed.splitlines()[1].split()[0])


def counted(build):
    """Instructions by operation, less those of the loop that runs it."""
    totals = {}
    for text in callgrind(build / "benchmarks/varnel_count"):
        name = re.search(r"^desc: Trigger: Client Request: (.*)$", text, re.M)
        if name:
            totals[name.group(1)] = total(text)
    loop = totals.pop("loop")
    counts = {name: round((count - loop) / BATCH) for name, count in totals.items()}
    counts[START] = start_cost(build, LC_ALL="en_US.UTF-8", TZ="UTC")
    counts[SIZE] = text_size(build)
    return counts


def goals(build):
    rows = {}
    for line in output(build / "benchmarks/varnel_count", "goals").splitlines():
        name, instructions, *asked = line.split("|")
        ratios = [(peer, float(ratio)) for ratio, peer in zip(asked[::2], asked[1::2])]
        rows[name] = (ratios, int(instructions))
    return rows


def timed(build):
    """Median nanoseconds by operation and peer, "" for the library itself, and the median of the ratios to a peer.

    Each round has inputs of its own, and a ratio is of two times of one round, taken right after each other.
    """
    times = {}
    for seed in range(1, ROUNDS + 1):
        for line in output(build / "benchmarks/varnel_bench", VARNEL_SEED=str(seed)).splitlines():
            operation, name, nanoseconds = line.split("|")
            times.setdefault(operation, {}).setdefault(name, []).append(float(nanoseconds))
    medians = {operation: {name: statistics.median(rounds) for name, rounds in names.items()}
               for operation, names in times.items()}
    ratios = {operation: {name: statistics.median(ours / theirs for ours, theirs in zip(names[""], rounds))
                          for name, rounds in names.items()} for operation, names in times.items()}
    return medians, ratios, list(notes(build))


def notes(build):
    """What the reader of the times has to know."""
    differing, missing = output(build / "benchmarks/varnel_bench", "check").strip("\n").split("|")
    if differing != "0":
        yield (f"Of the {BATCH} inputs of a row, at most {differing} have another result with a peer, "
               "whose zone has other rules there.")
    one, two = zip(*([float(time) for time in output(build / "benchmarks/varnel_bench", "threads").split("|")]
                     for _ in range(15)))
    yield (f"A column of fields, in order: {statistics.median(one):.1f} ns a row by one thread, "
           f"{statistics.median(two):.1f} by the slower of two at once.")
    if missing.split():
        yield "Not here, so not compared with: " + ", ".join(missing.split())


def saved_counts():
    rows = (line.rsplit("\t", 1) for line in COUNTS.read_text().splitlines())
    return {name: int(count) for name, count in rows}


def compare(counts):
    saved = saved_counts()
    failed = 0
    for name in sorted(saved.keys() | counts.keys() - NOT_ON_RECORD):
        before, after = saved.get(name), counts.get(name)
        if before is None or after is None or after > before * TOLERANCE:
            print(f"{name}: {after}, where {before} is on record")
            failed += 1
    print(f"{len(saved) - failed} of {len(saved)} counts within 5 % of benchmarks/counts.txt")
    return 1 if failed else 0


def machine(build):
    cpu = re.search(r"model name\s*: (.*)", pathlib.Path("/proc/cpuinfo").read_text())
    system = re.search(r'PRETTY_NAME="(.*)"', pathlib.Path("/etc/os-release").read_text())
    name = re.search(r"^CMAKE_CXX_COMPILER:[A-Z]+=(.*)", (build / "CMakeCache.txt").read_text(), re.M).group(1)
    compiler = output(name, "--version").splitlines()[0]
    return ", ".join([cpu.group(1) if cpu else "unknown processor", compiler, system.group(1)])


def peers_shown(times, asked):
    """The fastest peer and those that goals name, each with its goal or None; a goal without a name is the fastest's."""
    if not times:
        return []
    fastest = min(times, key=times.get)
    wanted = {peer or fastest: goal for peer, goal in asked if (peer or fastest) in times}
    return [(peer, wanted.get(peer)) for peer in sorted({fastest, *wanted}, key=times.get)]


def table_rows(build):
    counts, (times, ratios, remarks) = counted(build), timed(build)
    counts[START_PACIFIC] = start_cost(build, LC_ALL="en_US.UTF-8")
    rows = []
    for name, (asked, goal_count) in goals(build).items():
        if name == NOW:
            goal_count = counts[NOW_OF_RUNTIME] + 250
        ours = times[name].pop("")
        shown = peers_shown(times[name], asked)
        missed = [mark for mark, is_missed in (
            ("time", any(ratios[name][peer] > goal for peer, goal in shown if goal)),
            ("instructions", 0 < goal_count < counts[name])) if is_missed]
        rows.append([name, f"{ours:.1f}", ", ".join(f"{peer} {times[name][peer]:.1f}" for peer, _ in shown),
                     ", ".join(f"{ratios[name][peer]:.2f}" for peer, _ in shown),
                     ", ".join(f"{goal:g}" if goal else "-" for _, goal in shown),
                     f"{counts[name]}", f"{goal_count or ''}", " and ".join(missed)])
    for name, goal in ONE_TIME_GOALS.items():
        mark = "size" if name == SIZE else "instructions"
        rows.append([name, "", "", "", "", f"{counts[name]}", f"{goal}", mark if counts[name] > goal else ""])
    return rows, remarks


def print_table(rows, markdown):
    head = ["operation", "ns", "peers, ns", "ratio", "goal", "instructions", "goal", "short of"]
    head += ["ns by clang", "ratio", "instructions"][:len(rows[0]) - len(head)]
    widths = [max(len(row[i]) for row in [head, *rows]) for i in range(len(head))]
    edge, between = ("| ", " | ") if markdown else ("", "  ")
    for number, row in enumerate([head, *rows]):
        print(edge + between.join(cell.ljust(width) for cell, width in zip(row, widths)) + edge[::-1])
        if markdown and number == 0:
            print("|" + "|".join("-" * (width + 2) for width in widths) + "|")


def with_other_compiler(rows, other):
    """Time, ratio and instructions by another compiler as columns at the end."""
    found = {row[0]: [row[1], row[3], row[5]] for row in table_rows(other)[0]}
    return [row + found[row[0]] for row in rows]


def main(build, command, *others):
    build = pathlib.Path(build).resolve()
    if command in ("table", "markdown"):
        rows, remarks = table_rows(build)
        print(machine(build) + "\n")
        for other in map(pathlib.Path, others):
            print(machine(other) + "\n")
            rows = with_other_compiler(rows, other.resolve())
        print_table(rows, command == "markdown")
        for remark in remarks:
            print("\n" + remark)
        return 0
    counts = counted(build)
    if command == "update":
        order = [*goals(build), *ONE_TIME_GOALS]
        COUNTS.write_text("".join(f"{name}\t{counts[name]}\n" for name in order if name not in NOT_ON_RECORD))
        return 0
    return compare(counts)


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
