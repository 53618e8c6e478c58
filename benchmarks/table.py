#!/usr/bin/env python3
"""Counts instructions, reads times, and prints the table of both.

    table.py BUILD counts              compares with counts.txt
    table.py BUILD update              writes counts.txt
    table.py BUILD table [markdown]    times everything, and prints all
"""

import json
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
PASSES = 41
TOLERANCE = 1.05
NOW = "ka_time_and_date::now()"
NOW_OF_RUNTIME = "clock_gettime + localtime_r"
START = "start of the library"
SIZE = "text of the library, bytes"
ONE_TIME_GOALS = {START: 400_000, SIZE: 150 * 1024}
# Its count changes with the season: it reads the clock of the machine.
NOT_ON_RECORD = {NOW, NOW_OF_RUNTIME}


def environment(**more):
    """The same for every run, whatever the user's own is."""
    return {"PATH": os.environ["PATH"], "LC_ALL": "C", "TZ": "America/Los_Angeles", **more}


def callgrind(command, **more):
    """The output files of a program that runs under callgrind, as texts."""
    with tempfile.TemporaryDirectory() as folder:
        subprocess.run(
            ["valgrind", "--tool=callgrind", f"--callgrind-out-file={folder}/out", *command],
            env=environment(**more), check=True, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        return [path.read_text() for path in pathlib.Path(folder).iterdir()]


def total(text):
    return int(re.search(r"^(?:summary|totals): (\d+)", text, re.M).group(1))


def start_cost(build, **more):
    program, empty = (total(callgrind([build / "benchmarks" / name], **more)[0])
                      for name in ("varnel_start", "varnel_empty"))
    return program - empty


def text_size(build):
    printed = subprocess.run(["size", build / "libka_time_varnel.so"],
                             check=True, capture_output=True, text=True).stdout
    return int(printed.splitlines()[1].split()[0])


def counted(build):
    """Instructions by operation, less those of the loop that runs it."""
    totals = {}
    for text in callgrind([build / "benchmarks/varnel_count"]):
        name = re.search(r"^desc: Trigger: Client Request: (.*)$", text, re.M)
        if name:
            totals[name.group(1)] = total(text)
    loop = totals.pop("loop")
    counts = {name: round((count - loop) / BATCH) for name, count in totals.items()}
    # Without daylight saving time the start takes longest, and the same all year.
    counts[START] = start_cost(build, LC_ALL="en_US.UTF-8", TZ="UTC")
    counts[SIZE] = text_size(build)
    return counts


def goals(build):
    printed = subprocess.run([build / "benchmarks/varnel_count", "goals"],
                             check=True, capture_output=True, text=True).stdout
    rows = {}
    for line in printed.splitlines():
        name, ratio, instructions = line.rsplit("|", 2)
        rows[name] = (float(ratio), int(instructions))
    return rows


def timed_once(build):
    with tempfile.NamedTemporaryFile() as out:
        subprocess.run(
            [build / "benchmarks/varnel_bench", f"--benchmark_out={out.name}", "--benchmark_out_format=json",
             "--benchmark_min_time=0.005"],
            env=environment(), check=True, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        return json.load(out)


def timed(build):
    """Median nanoseconds by operation and peer; "" is the library itself."""
    times, missing = {}, []
    for _ in range(PASSES):
        results = timed_once(build)
        missing = results["context"].get("missing", "").split()
        for row in results["benchmarks"]:
            operation, name = row["name"].split("|")
            times.setdefault(operation, {}).setdefault(name, []).append(row["cpu_time"] / BATCH)
    medians = {operation: {name: statistics.median(all_passes) for name, all_passes in names.items()}
               for operation, names in times.items()}
    return medians, missing


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


def machine():
    cpu = re.search(r"model name\s*: (.*)", pathlib.Path("/proc/cpuinfo").read_text())
    system = re.search(r'PRETTY_NAME="(.*)"', pathlib.Path("/etc/os-release").read_text())
    compiler = subprocess.run(["g++", "--version"], capture_output=True, text=True).stdout.splitlines()[0]
    return ", ".join([cpu.group(1) if cpu else "unknown processor", compiler, system.group(1)])


def table_rows(build):
    counts, (times, missing) = counted(build), timed(build)
    rows = []
    for name, (goal_ratio, goal_count) in goals(build).items():
        if name == NOW:
            goal_count = counts[NOW_OF_RUNTIME] + 250
        ours = times[name].pop("")
        peer, theirs = min(times[name].items(), key=lambda item: item[1])
        ratio = ours / theirs
        marks = [mark for mark, missed in (("time", ratio > goal_ratio),
                                           ("instructions", 0 < goal_count < counts[name])) if missed]
        rows.append([name, f"{ours:.1f}", f"{peer} {theirs:.1f}", f"{ratio:.2f}", f"{goal_ratio:g}",
                     f"{counts[name]}", f"{goal_count or ''}", " and ".join(marks)])
    for name, goal in ONE_TIME_GOALS.items():
        mark = "instructions" if name == START else "size"
        rows.append([name, "", "", "", "", f"{counts[name]}", f"{goal}", mark if counts[name] > goal else ""])
    return rows, missing


def print_table(rows, markdown):
    head = ["operation", "ns", "fastest peer, ns", "ratio", "goal", "instructions", "goal", "short of"]
    widths = [max(len(row[i]) for row in [head, *rows]) for i in range(len(head))]
    edge, between = ("| ", " | ") if markdown else ("", "  ")
    for number, row in enumerate([head, *rows]):
        print(edge + between.join(cell.ljust(width) for cell, width in zip(row, widths)) + edge[::-1])
        if markdown and number == 0:
            print("|" + "|".join("-" * (width + 2) for width in widths) + "|")


def main(build, command, *options):
    build = pathlib.Path(build).resolve()
    if command == "table":
        rows, missing = table_rows(build)
        print(machine() + "\n")
        print_table(rows, "markdown" in options)
        if missing:
            print("\nNot here, so not compared with: " + ", ".join(missing))
        return 0
    counts = counted(build)
    if command == "update":
        order = [*goals(build), *ONE_TIME_GOALS]
        COUNTS.write_text("".join(f"{name}\t{counts[name]}\n" for name in order if name not in NOT_ON_RECORD))
        return 0
    return compare(counts)


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
