// What local times mean, and when the clocks change, in zones of any rules.
#include <algorithm>
#include <set>
#include <vector>

#include <time/chrono.h>
#include <time/columns.h>
#include <time/world.h>

#include "stepwise.h"

namespace {

constexpr ka_time_period microsecond(0, 1);
const ka_time_period first_time(38 * 86400ll), last_time(13688960 * 86400ll + 86399, 999999);

/// A zone whose rules are asked one by one, and what they are asked on.
struct witness {
    explicit witness(const own_zone& asked) : own(asked), stepwise(asked)
    {
        for (const ka_simple_time_zone_rule& rule : asked.rules)
            adjustments.insert(rule.adjustment());
    }

    bool knows(const ka_time_period& standard) const
    {
        return first_time <= standard && standard <= last_time;
    }
    ka_time_period adjustment(const ka_time_period& standard) const
    {
        return stepwise.zone.dst_adjustment(ka_time(standard), ka_date(standard.to_days()));
    }
    ka_time_period standard(const ka_time_and_date& moment) const
    {
        return moment.utc_time_and_date() - own.zone.offset();
    }

    const own_zone& own;
    stepwise_zone stepwise;
    std::set<ka_time_period> adjustments{ka_time_period()};
};

/// A gap is around a time that is skipped: its sides are those of a change.
void check_gap(const witness& by, const ka_local_moments& found, const ka_time_period& local)
{
    const ka_time_period before = local - by.standard(found.later),
                         after = local - by.standard(found.earlier);
    agree(by.adjustments.contains(before), "the adjustment before a gap");
    agree(by.adjustments.contains(after), "the adjustment after a gap");
    agree(before < after, "clocks go forward over a gap");
    ka_time_and_date at = found.earlier;
    for (;;) {
        const auto change = ka_next_change(by.own.zone, at);
        agree(change && change->moment <= found.later, "a change in a gap");
        if (change->before == by.own.zone.offset() - before && change->after == by.own.zone.offset() - after)
            return;
        at = change->moment;
    }
}

void check_local(const witness& by, const ka_time& time, const ka_date& date)
{
    const ka_time_period local = ka_time_period(date.julian_day() * 86400ll) + time;
    std::vector<ka_time_period> read;
    const std::string failed = result_of([&] {
        for (const ka_time_period& adjustment : by.adjustments)
            if (by.knows(local - adjustment) && by.adjustment(local - adjustment) == adjustment)
                read.push_back(local - adjustment);
    });
    std::sort(read.begin(), read.end());
    ka_local_moments found = {};
    const std::string code = result_of([&] { found = ka_local_times(by.own.zone, time, date); });
    if (!failed.empty() || !code.empty()) {
        // Where no moment reads so, more of the rules is asked.
        agree(failed.empty() ? read.empty() : !code.empty(), "a rule that refuses");
        return;
    }
    const auto kind = read.empty()       ? ka_local_kind::skipped
                      : read.size() == 1 ? ka_local_kind::once
                                         : ka_local_kind::repeated;
    agree(found.kind == kind, "kind of a local time");
    if (read.empty())
        return check_gap(by, found, local);
    agree(by.standard(found.earlier) == read.front(), "the earlier moment");
    agree(by.standard(found.later) == read.back(), "the later moment");
}

void check_changes(input& in, const witness& by, const ka_time_period& standard)
{
    ka_time_and_date moment;
    moment.time_zone(by.own.zone);
    moment.utc_time_and_date(standard + by.own.zone.offset());
    // All that is asked on the way can refuse.
    result_of([&] {
        const auto next = ka_next_change(by.own.zone, moment);
        const auto previous = ka_previous_change(by.own.zone, moment);
        const ka_time_period here = by.adjustment(standard);
        const ka_time_period end = next ? by.standard(next->moment) : last_time;
        const ka_time_period start = previous ? by.standard(previous->moment) : first_time;
        agree(start <= standard && standard <= end, "changes on both sides");
        if (next) {
            agree(next->after == by.own.zone.offset() - by.adjustment(end), "after the next change");
            agree(next->before == by.own.zone.offset() - here, "before the next change");
            agree(next->before != next->after, "the next change is one");
            agree(by.adjustment(end - microsecond) == here, "until the next change");
        }
        if (previous) {
            agree(previous->after == by.own.zone.offset() - here, "after the previous change");
            agree(previous->before == by.own.zone.offset() - by.adjustment(start - microsecond),
                  "before the previous change");
            agree(previous->before != previous->after, "the previous change is one");
            agree(by.adjustment(start) == here, "since the previous change");
        }
        // Nothing changes in between.
        for (int sample = 0; sample < 4; ++sample) {
            const int days = (end - start - microsecond).to_days(),
                      of_these = in.between(0, std::min(days, 3000));
            agree(by.adjustment(start + ka_time_period(of_these, 0, 0, 0)) == here, "between two changes");
        }
    });
}

std::string text_of(const ka_date& date, const ka_time& time, bool is_dst, long long offset)
{
    return date.to_string("%Y-%m-%d %w ") + time.to_string("%H:%M:%S.%q ") + std::to_string(offset) +
           (is_dst ? " 1" : " 0");
}

ka_date date_of(const ka_clock_fields& fields) { return {fields.month, fields.day, fields.year}; }
ka_time time_of(const ka_clock_fields& fields)
{
    return {fields.hour, fields.minute, fields.second, fields.microsecond};
}

/// Holds the rows of a column that were done, and the one that was refused,
/// against what each alone gives.
void agree_on_rows(const ka_column_result& result, auto expected, auto row_text)
{
    for (std::size_t row = 0; row < result.done; ++row)
        agree(result_of([&] { return expected(row); }) == row_text(row), "a row of a column");
    if (result.code)
        agree(result_of([&] { return expected(result.done); }) == ka_time_varnel_error::symbol(*result.code),
              "the row that is refused");
}

void check_columns(input& in, const ka_time_zone& zone, const ka_time_period& standard)
{
    constexpr std::size_t rows = 6;
    const ka_time_period epoch(2440588, 0, 0, 0);
    long long instants[rows], offsets[rows], set[rows];
    ka_clock_fields fields[rows], given[rows];
    for (std::size_t row = 0; row < rows; ++row) {
        const ka_time_period at = standard + any_shift(in) * in.between(-1, 1);
        instants[row] = ka_to_microseconds(at + zone.offset() - epoch).count();
        const ka_time time(at);
        const ka_date date(at.to_days());
        given[row] = {date.year(),
                      date.month(),
                      date.day(),
                      time.hours(),
                      time.minutes(),
                      time.seconds(),
                      time.microseconds(),
                      false,
                      0,
                      0};
    }
    const auto moment = [&](std::size_t row) {
        const std::chrono::microseconds since(instants[row]);
        return ka_to_time_and_date(std::chrono::sys_time<std::chrono::microseconds>(since), zone);
    };
    agree_on_rows(
        ka_local_fields(zone, instants, fields),
        [&](std::size_t row) {
            const ka_time_and_date at = moment(row);
            return text_of(at.date(), at.time(), at.is_dst(), ka_to_microseconds(ka_offset(at)).count());
        },
        [&](std::size_t row) {
            agree(date_of(fields[row]).weekday() == fields[row].weekday, "the weekday of a row");
            return text_of(date_of(fields[row]), time_of(fields[row]), fields[row].is_dst,
                           fields[row].offset);
        });
    agree_on_rows(
        ka_local_offsets(zone, instants, offsets),
        [&](std::size_t row) {
            (void)moment(row).date();
            return std::to_string(ka_to_microseconds(ka_offset(moment(row))).count());
        },
        [&](std::size_t row) { return std::to_string(offsets[row]); });
    const auto choice = static_cast<ka_local_choice>(in.between(0, 3));
    agree_on_rows(
        ka_instants(zone, given, choice, set),
        [&](std::size_t row) {
            const auto at = ka_local_time(zone, time_of(given[row]), date_of(given[row]), choice);
            return std::to_string(ka_to_sys_time(at).time_since_epoch().count());
        },
        [&](std::size_t row) { return std::to_string(set[row]); });
}

}

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* bytes, std::size_t size)
{
    input in(bytes, size);
    const own_zone own(in);
    const witness by(own);
    for (int count = 0; count < 4 && !in.is_empty(); ++count) {
        ka_date date = any_date(in);
        if (!in.one_in(6))
            date = ka_date(1, 1, 1989) + ka_time_period(in.between(0, 43 * 365), 0, 0, 0);
        ka_time time = any_time(in);
        // Most of them at a point, or so far from it as clocks are moved.
        if (!in.one_in(4) && !own.points.empty()) {
            const ka_calendar_date& near = own.points[in.take<unsigned short>() % own.points.size()];
            const ka_time_period shift =
                any_shift(in) * in.between(0, 1) + ka_time_period(0, in.between(-1, 1));
            result_of([&] {
                const ka_time_period at =
                    ka_time_period(near.date(date.year()).julian_day() * 86400ll) + near.time() + shift;
                time = at;
                date = ka_date(at.to_days());
            });
        }
        check_local(by, time, date);
        const ka_time_period standard = ka_time_period(date.julian_day() * 86400ll) + time;
        check_changes(in, by, standard);
        result_of([&] { check_columns(in, own.zone, standard); });
    }
    return 0;
}
