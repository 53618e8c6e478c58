"""Shows the library's values in gdb as text: dates, times, periods, moments and zones.

gdb loads this by itself for a library installed below its own prefix, /usr on
most systems. Elsewhere: source <sources>/time/gdb/printers.py

All is read from memory and nothing in the program is called, so it works in a
core file too. The host needs debug information; the library needs none.
Zones, rules and their points are read by their places in the library's binary
interface, since a host need not know their types.
"""

import bisect
import struct

import gdb
import gdb.printing

SECOND = 1000000
DAY = 86400 * SECOND
FIRST_DAY = 38
LAST_DAY = 13688960
USER_DEFINED, TABLE = 1, 2  # how a zone knows its changes; 0 is by simple rules


class Refused(Exception):
    """What the library would throw on."""


class NoZone(Exception):
    """Memory that holds no zone, or none any more."""


def toward_zero(number, divisor):
    return number // divisor if number >= 0 else -(-number // divisor)


def int32(number):
    return (number + 2**31) % 2**32 - 2**31


# The calendar. Years without an era are astronomical: 1 B.C. is 0.


def astronomical(year):
    return year + (year < 0)


def day_number(month, day, year):
    counted = astronomical(year) + 4800 - (month < 3)
    from_march = (153 * ((month + 9) % 12) + 2) // 5
    return 365 * counted + counted // 4 - counted // 100 + counted // 400 + from_march + day - 32045


def split(julian_day):
    """Month, day and year of a day number."""
    days = julian_day + 32044
    century = (4 * days + 3) // 146097
    days -= 146097 * century // 4
    counted = (4 * days + 3) // 1461
    days -= 1461 * counted // 4
    from_march = (5 * days + 2) // 153
    year = 100 * century + counted - 4800 + (from_march >= 10)
    month = (from_march + 2) % 12 + 1
    return month, days - (153 * from_march + 2) // 5 + 1, year - (year < 1)


def month_length(month, year):
    astro = astronomical(year)
    is_leap = astro % 4 == 0 and (astro % 100 != 0 or astro % 400 == 0)
    return 29 if month == 2 and is_leap else (31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31)[month - 1]


def checked_day(julian_day):
    if not FIRST_DAY <= julian_day <= LAST_DAY:
        raise Refused
    return julian_day


def nth_weekday(which, weekday, month, year):
    first = day_number(month, 1, year)
    end = first + month_length(month, year)
    if which > 0:
        found = first + (weekday - 2 - first) % 7 + 7 * (which - 1)
    else:
        last = checked_day(end) - 1
        found = last - (last + 2 - weekday) % 7 + 7 * (which + 1)
    if split(checked_day(found))[0] != month:
        raise Refused
    return found


# Periods are counted in microseconds, dates by their day numbers.


def period(value):
    return int(value["seconds_"]) * SECOND + int(value["microseconds_"])


def date_of(since_day_zero):
    return checked_day(int32(toward_zero(since_day_zero, DAY)))


def date_text(julian_day):
    if not FIRST_DAY <= julian_day <= LAST_DAY:
        return "day number %d, out of range" % julian_day
    month, day, year = split(julian_day)
    return "%d-%02d-%02d%s" % (abs(year), month, day, " B.C." if year < 0 else "")


def time_text(since_midnight):
    seconds, microseconds = divmod(since_midnight % DAY, SECOND)
    return "%02d:%02d:%02d.%06d" % (seconds // 3600, seconds // 60 % 60, seconds % 60, microseconds)


def period_text(seconds, microseconds):
    if microseconds != 0:
        sign = "-" if seconds == 0 and microseconds < 0 else ""
        return "%s%d.%06d seconds" % (sign, seconds, abs(microseconds))
    return "%d second%s" % (seconds, "" if abs(seconds) == 1 else "s")


# What lies in the memory of the program.


def fields(layout, address):
    memory = gdb.selected_inferior().read_memory(address, struct.calcsize(layout))
    return struct.unpack(layout, memory)


class Point:
    """A recurring date, as the library's `ka_calendar_date` has it."""

    def __init__(self, address):
        seconds, microseconds, self.month, self.day, self.weekday, self.week = fields("=qi4xHHHxxi", address)
        if not 1 <= self.month <= 12:
            raise NoZone
        self.time = (seconds * SECOND + microseconds) % DAY

    def date(self, year):
        if self.week != 0:
            return nth_weekday(self.week, self.weekday, self.month, year)
        if not 1 <= self.day <= month_length(self.month, year):
            raise Refused
        return day_number(self.month, self.day, year)


class Rule:
    def __init__(self, address):
        (self.start, self.end, self.first_year, self.last_year, seconds, microseconds) = fields(
            "=8xQQhh4xqi4x", address)
        self.adjustment = seconds * SECOND + microseconds

    def is_in_effect(self, time, date):
        year = split(date)[2]
        if year < self.first_year or (year > self.last_year and self.last_year != 0):
            return False
        start, end = Point(self.start), Point(self.end)
        start_date, end_date = start.date(year), end.date(year)
        is_after_start = (date, time) >= (start_date, start.time)
        is_before_end = (date, time) < (end_date, end.time)
        if end_date < start_date:
            return is_after_start or is_before_end
        return is_after_start and is_before_end


class Table:
    """A table of changes, as time/src/rules/table.h has it."""

    FOLD = 146097 * 86400

    def __init__(self, address):
        (self.origin, self.length, self.slots, self.at, self.pairs, self.count, self.kind_of, self.kinds,
         self.abbreviations) = fields("=qQQQ16xQQQQ8xQ", address)
        self.first, self.last = address + 96, address + 112
        self.folds_forward, self.folds_back = fields("=??", address + 128)

    def kind(self, second):
        """The adjustment in seconds, the flag and the abbreviation at a time of the standard clock."""
        adjustment, abbreviation, is_dst = fields("=i4xH?", self.address_of_kind(second - self.origin))
        return adjustment, is_dst, self.abbreviations and self.abbreviations + abbreviation

    def address_of_kind(self, since):
        if since < 0:
            if not self.folds_back:
                return self.first
            since += self.FOLD * ((-since - 1) // self.FOLD + 1)
        if since >= self.length:
            if not self.folds_forward:
                return self.last
            since -= self.FOLD * ((since - self.length) // self.FOLD + 1)
        word, = fields("=I", self.slots + 4 * (since >> 23))
        if word >> 24 != 255:
            return self.pairs + 32 * (word >> 24) + (16 if since % 2**23 >= word % 2**24 else 0)
        times = fields("=%dq" % self.count, self.at)
        number, = fields("=B", self.kind_of + bisect.bisect_right(times, self.origin + since))
        return self.kinds + 16 * number


class Zone:
    def __init__(self, address):
        (name, name_size, dst_name, dst_name_size, seconds, microseconds, self.rules, self.count,
         self.rule_kind) = fields("=QQ16xQQ16xqi4xQiB", address)
        if not 0 <= self.count <= 7:
            raise NoZone
        self.offset = seconds * SECOND + microseconds
        self.stem = self.text(name, name_size)
        self.dst_stem = self.text(dst_name, dst_name_size)

    @staticmethod
    def text_to_nul(address):
        size = 0
        while fields("=B", address + size) != (0,):
            size += 1
        return Zone.text(address, size)

    @staticmethod
    def text(address, size):
        memory = gdb.selected_inferior().read_memory(address, min(size, 200)) if size else b""
        return bytes(memory).decode("utf-8", "replace")

    @staticmethod
    def named(stem, offset):
        hours = int32(toward_zero(toward_zero(offset, SECOND), 3600))
        return "%s%+d" % (stem, -hours) if stem == "UTC" and hours < 0 else "%s%d" % (
            stem, -hours if stem == "UTC" else hours)

    def name(self):
        return self.named(self.stem, self.offset)

    def dst_name(self):
        return self.named(self.dst_stem, self.offset - 3600 * SECOND) if self.count else self.dst_stem

    def local(self, standard):
        """The local clock, and what the zone is called then."""
        date = date_of(standard)
        if self.rule_kind == TABLE:
            table, = fields("=56xQ", self.rules)
            adjustment, is_dst, abbreviation = Table(table).kind(standard // SECOND)
            moved = adjustment * SECOND
            if abbreviation:
                return standard + moved, self.named(self.text_to_nul(abbreviation), self.offset - moved)
            return standard + moved, self.dst_name() if is_dst else self.name()
        rule = self.rule(standard % DAY, date)
        return (standard + rule.adjustment, self.dst_name()) if rule else (standard, self.name())

    def rule(self, time, date):
        """The rule in effect, or None, on the standard clock."""
        for address in fields("=%dQ" % self.count, self.rules):
            rule = Rule(address)
            if rule.is_in_effect(time, date):
                return rule
        return None


def universal_text(instant, why):
    try:
        return "%s %s universal time (%s)" % (date_text(date_of(instant)), time_text(instant), why)
    except Refused:
        seconds = toward_zero(instant, SECOND)
        return "%s after day number 0, out of range" % period_text(seconds, instant - seconds * SECOND)


def no_zone_text(address):
    return "no zone at 0x%x" % address


def moment_text(instant, zone_address):
    try:
        zone = Zone(zone_address)
        if zone.rule_kind == USER_DEFINED:
            return universal_text(instant, zone.name() + " with rules of a kind of its own")
        local, name = zone.local(instant - zone.offset)
        return "%s %s %s" % (date_text(date_of(local)), time_text(local), name)
    except Refused:
        return universal_text(instant, zone.name() + " refuses it")
    except (gdb.MemoryError, NoZone):
        return universal_text(instant, no_zone_text(zone_address))


def zone_text(address):
    try:
        zone = Zone(address)
    except (gdb.MemoryError, NoZone):
        return no_zone_text(address)
    return "%s, %s" % (zone.name(), zone.dst_name()) if zone.count else zone.name()


def wint_text(value):
    magnitude = sum(int(value["magnitude_"][digit]) << 16 * digit for digit in range(4))
    return str(-magnitude if value["negative_"] else magnitude)


TEXTS = {
    "ka_date": lambda value: date_text(int(value["julian_day_"])),
    "ka_time": lambda value: time_text(period(value["since_midnight_"])),
    "ka_time_and_date": lambda value: moment_text(period(value["instant_"]), int(value["zone_"])),
    "ka_time_period": lambda value: period_text(int(value["seconds_"]), int(value["microseconds_"])),
    "ka_time_zone": lambda value: zone_text(int(value.address)),
    "ka_wint": wint_text,
}


class Printer:
    def __init__(self, name, value):
        self.name = name
        self.value = value

    def to_string(self):
        return TEXTS[self.name](self.value)


def printers():
    collection = gdb.printing.RegexpCollectionPrettyPrinter("ka_time_varnel")
    for name in TEXTS:
        collection.add_printer(name, "^%s$" % name, lambda value, name=name: Printer(name, value))
    return collection


gdb.printing.register_pretty_printer(gdb.current_objfile(), printers(), replace=True)
