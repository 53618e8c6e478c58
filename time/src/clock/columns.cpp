#include <time/columns.h>

#include <algorithm>

#include "../rules/stretch.h"
#include "../throw.h"
#include "column_rows.h"

using namespace columns;

namespace {

/// Instants with one offset, and what it makes of them.
struct same_offset {
    window instants;
    long long offset = 0;
    bool is_dst = false;
    refusal refused;
};

/// A zone that is asked again and again within a call.
class asked_zone {
public:
    explicit asked_zone(const ka_time_zone& zone) noexcept
        : zone_(zone), offset_(microseconds_of(zone.offset()))
    {
        if (ka_access::kind(zone) != ka_access::rule_kind::table || !offset_)
            return;
        // Such a table moves no clock by a week or more, and its slots are well in the range.
        const rules::table& changes = ka_access::changes(zone);
        constexpr long long week = 7 * day_length / million;
        const long long end = changes.origin + static_cast<long long>(changes.length);
        if (changes.origin < range_start / million + week || range_end / million - week < end)
            return;
        slots_ = rules::slots_by_microsecond(changes);
        origin_ = changes.origin * million - epoch + *offset_;
    }

    /// The instants around one of them that read by the same offset.
    [[gnu::always_inline]] same_offset around(long long instant) const
    {
        rules::slots_by_microsecond::part part;
        if (slots_.find(part, static_cast<u64>(instant) - static_cast<u64>(origin_))) [[likely]]
            return {{wrapping_sum(origin_, static_cast<long long>(part.first)), part.length},
                    *offset_ - part.told->adjustment * million,
                    part.told->is_dst,
                    {}};
        return around_any(instant);
    }

private:
    [[gnu::noinline]] same_offset around_any(long long instant) const
    {
        same_offset found;
        found.refused = refusal_of([&] { return find(found, instant); });
        return found;
    }

    refusal find(same_offset& found, long long instant) const
    {
        if (!offset_)
            return ka_invalid_time_period;
        const auto since_1970 = difference_of(instant, *offset_);
        const auto standard = since_1970 ? sum_of(*since_1970, epoch) : std::nullopt;
        if (!standard || !is_in_range(*standard))
            return ka_invalid_day;
        const rules::stretch told = rules::stretch_around(zone_, *standard);
        const auto adjustment = microseconds_of(told.adjustment);
        const auto local = adjustment ? sum_of(*standard, *adjustment) : std::nullopt;
        if (!local || !is_in_range(*local))
            return ka_invalid_day;
        const auto offset = difference_of(*offset_, *adjustment);
        if (!offset)
            return ka_invalid_time_period;
        const long long first = std::max(told.first, range_start - *adjustment) - epoch;
        const long long end = std::min(told.end, range_end - *adjustment) - epoch;
        found.instants =
            window_of(sum_of(first, *offset_).value_or(LLONG_MIN), sum_of(end, *offset_).value_or(LLONG_MAX));
        found.offset = *offset;
        found.is_dst = told.is_dst;
        return {};
    }

    const ka_time_zone& zone_;
    std::optional<long long> offset_;
    rules::slots_by_microsecond slots_;
    /// The instant at which the slots begin.
    long long origin_ = 0;
};

/// Hands over each instant with its offset.
template <typename Value, typename Put>
[[gnu::always_inline]] inline ka_column_result
read_all(const ka_time_zone& zone, std::span<const long long> instants, std::span<Value> values, Put put)
{
    check_lengths(instants.size(), values.size());
    const asked_zone asked(zone);
    for (std::size_t row = 0; row < instants.size();) {
        const same_offset now = asked.around(instants[row]);
        if (now.refused)
            return {row, now.refused.code};
        do {
            values[row] = put(instants[row], now);
            ++row;
        } while (row < instants.size() && now.instants.holds(instants[row]));
    }
    return {instants.size(), std::nullopt};
}

ka_clock_fields fields_at(long long instant, const same_offset& now) noexcept
{
    // The local date is in the range, whatever the sums before it come to.
    const auto local = static_cast<u64>(instant) - static_cast<u64>(now.offset) + static_cast<u64>(epoch);
    const u64 day = local / day_length;
    const u64 since_midnight = local - day * day_length;
    const auto second_of_day = static_cast<unsigned int>(since_midnight / million);
    const unsigned int minute_of_day = second_of_day / 60;
    const ka_gregorian::date_parts date = ka_gregorian::split(static_cast<int>(day));
    ka_clock_fields fields;
    fields.year = static_cast<short>(date.year);
    fields.month = static_cast<unsigned short>(date.month);
    fields.day = static_cast<unsigned short>(date.day);
    fields.hour = static_cast<unsigned short>(minute_of_day / 60);
    fields.minute = static_cast<unsigned short>(minute_of_day % 60);
    fields.second = static_cast<unsigned short>(second_of_day % 60);
    fields.microsecond = static_cast<unsigned int>(since_midnight - second_of_day * u64{million});
    fields.is_dst = now.is_dst;
    fields.weekday =
        static_cast<unsigned short>(ka_gregorian::modulo_7(static_cast<unsigned int>(day) + 1) + 1);
    fields.offset = now.offset;
    return fields;
}

}

void columns::check_lengths(std::size_t from, std::size_t to)
{
    if (from != to)
        throw_error(ka_failure, {KA_SOURCE, __LINE__}, "Columns of ", from, " and ", to, " rows");
}

ka_column_result ka_local_offsets(const ka_time_zone& zone, std::span<const long long> instants,
                                  std::span<long long> offsets)
{
    return read_all(zone, instants, offsets, [](long long, const same_offset& now) { return now.offset; });
}

ka_column_result ka_local_fields(const ka_time_zone& zone, std::span<const long long> instants,
                                 std::span<ka_clock_fields> fields)
{
    return read_all(zone, instants, fields, fields_at);
}
