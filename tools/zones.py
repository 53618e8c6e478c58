#!/usr/bin/env python3
"""Keeps docs/zones.md beside the truth: the pictures, and the hours in which a zone differs from the tz data.

    zones.py check ROOT ZONE_YEARS    fails where the page or a picture is not what the library gives
    zones.py write ROOT ZONE_YEARS    brings both up to date

ZONE_YEARS is the program of tools/zone_years.cpp; the tz data are those of the machine.
"""
import bisect, datetime, difflib, subprocess, sys, tempfile, zoneinfo
from pathlib import Path

TZ = {"utc": "UTC", "greenwich": "Europe/London", "central_european": "Europe/Berlin",
      "western_european": "Atlantic/Canary", "portuguese": "Europe/Lisbon", "south_africa": "Africa/Johannesburg",
      "hawaii": "Pacific/Honolulu", "indiana": "America/Indiana/Indianapolis", "pacific": "America/Los_Angeles",
      "mountain": "America/Denver", "central": "America/Chicago", "eastern": "America/New_York",
      "atlantic": "America/Halifax", "newfoundland": "America/St_Johns", "yukon": "America/Anchorage",
      "aleutian": "America/Adak", "israel": "Asia/Jerusalem"}
PERIODS = [(1970, 1979), (1980, 1989), (1990, 1999), (2000, 2006), (2007, 2025)]
BEGIN, END = "<!-- differences begin -->\n", "<!-- differences end -->\n"
DAY = 86400


def new_year(year):
    return int(datetime.datetime(year, 1, 1, tzinfo=datetime.timezone.utc).timestamp())


def library_changes(program):
    changes = {}
    for line in subprocess.run([program, "list"], check=True, capture_output=True, text=True).stdout.splitlines():
        zone, moment, offset = line.split()
        changes.setdefault(zone, []).append((int(moment), int(offset)))
    return changes


def tz_changes(name):
    zone = zoneinfo.ZoneInfo(name)

    def offset(moment):
        return int(datetime.datetime.fromtimestamp(moment, zone).utcoffset().total_seconds())

    changes = [(0, offset(0))]
    for day in range(DAY, new_year(2026) + 1, DAY):
        if offset(day) == changes[-1][1]:
            continue
        moment = day - DAY + 1 + bisect.bisect_left(range(day - DAY + 1, day), True,
                                                    key=lambda each: offset(each) == offset(day))
        changes.append((moment, offset(day)))
    return changes


def seconds_apart(ours, theirs, begin, end):
    """How many seconds from begin to end have different offsets."""
    moments = sorted({begin, end, *(each for each, _ in ours + theirs if begin < each < end)})

    def offset(changes, moment):
        return changes[bisect.bisect_right(changes, (moment, 10**6)) - 1][1]

    return sum(until - since for since, until in zip(moments, moments[1:])
               if offset(ours, since) != offset(theirs, since))


def hours(ours, theirs, first, last):
    years = [seconds_apart(ours, theirs, new_year(year), new_year(year + 1)) / 3600
             for year in range(first, last + 1)]
    low, high = round(min(years)), round(max(years))
    return f"{low:,}" if low == high else f"{low:,} to {high:,}"


def table(program):
    rows = ["| Zone | tz data | " + " | ".join(f"{first}–{last}" for first, last in PERIODS) + " |",
            "|---|---|" + "---|" * len(PERIODS)]
    changes = library_changes(program)
    for zone, name in TZ.items():
        theirs = tz_changes(name)
        ours = changes.pop(zone)
        cells = [hours(ours, theirs, first, last) for first, last in PERIODS]
        rows.append(f"| `{zone}` | {name} | " + " | ".join(cells) + " |")
    if changes:
        sys.exit(f"no tz zone for {', '.join(changes)}")
    return "\n".join(rows) + "\n"


def pictures(folder):
    return {each.name: each.read_text() for each in sorted(Path(folder).glob("*.svg"))}


def main(action, root, program):
    page = Path(root, "docs", "zones.md")
    shown = page.read_text()
    head, rest = shown.split(BEGIN)
    tail = rest.split(END)[1]
    fresh = head + BEGIN + table(program) + END + tail
    kept = page.parent / "zones"
    if action == "write":
        page.write_text(fresh)
        kept.mkdir(exist_ok=True)
        subprocess.run([program, "draw", kept], check=True)
        return
    with tempfile.TemporaryDirectory() as folder:
        subprocess.run([program, "draw", folder], check=True)
        drawn = pictures(folder)
    stale = sorted(name for name in drawn | pictures(kept) if drawn.get(name) != pictures(kept).get(name))
    not_shown = [name for name in drawn if f"(zones/{name})" not in shown]
    sys.stdout.writelines(difflib.unified_diff(shown.splitlines(True), fresh.splitlines(True), "shown", "fresh"))
    print(f"{len(drawn)} pictures; stale: {stale}, not shown: {not_shown}")
    sys.exit(bool(stale or not_shown or shown != fresh or not drawn))


main(*sys.argv[1:])
