#include <time/columns.h>

#include <algorithm>
#include <climits>

#include "../rules/stretch.h"
#include "../throw.h"
#include "zone_clock.h"

namespace {

using u64 = unsigned long long;

constexpr long long million = 1000000;
constexpr long long day_length = 86400 * million;

// All times are microseconds here: instants from 1970 on, those of standard and
// local clocks from midnight at the start of day number 0.

constexpr long long epoch = ka_gregorian::unix_epoch * day_length;
constexpr long long range_start = ka_gregorian::first_day * day_length;
constexpr long long range_end = (ka_gregorian::last_day + 1) * day_length;

constexpr bool is_in_range(long long time) noexcept { return range_start <= time && time < range_end; }

constexpr long long wrapping_sum(long long a, long long b) noexcept
{
    return static_cast<long long>(static_cast<u64>(a) + static_cast<u64>(b));
}

constexpr std::optional<long long> sum_of(long long a, long long b) noexcept
{
    if (b < 0 ? a < LLONG_MIN - b : a > LLONG_MAX - b)
        return std::nullopt;
    return a + b;
}

constexpr std::optional<long long> difference_of(long long a, long long b) noexcept
{
    if (b < 0 ? a > LLONG_MAX + b : a < LLONG_MIN + b)
        return std::nullopt;
    return a - b;
}

/// A period in microseconds, where 64 bits hold them.
std::optional<long long> microseconds_of(const ka_time_period& period) noexcept
{
    constexpr long long most = LLONG_MAX / million;
    const long long seconds = period.whole_seconds();
    if (seconds < -most || most < seconds)
        return std::nullopt;
    return sum_of(seconds * million, period.microseconds());
}

/// Why a row is refused; that of a caller's rule may be any number.
struct refusal {
    bool is_one = false;
    int code = 0;

    constexpr refusal() noexcept = default;
    constexpr refusal(int why) noexcept : is_one(true), code(why) {}
    explicit operator bool() const noexcept { return is_one; }
};

/// What a caller's rule is asked may throw.
template <typename Ask>
refusal refusal_of(Ask ask)
{
    try {
        return ask();
    } catch (const ka_time_varnel_error& error) {
        return error.code();
    }
}

/// Values in a row, from the first one on.
struct window {
    long long first = 0;
    u64 length = 0;

    bool holds(long long value) const noexcept
    {
        return static_cast<u64>(value) - static_cast<u64>(first) < length;
    }
};

constexpr window window_of(long long first, long long end) noexcept
{
    return first < end ? window{first, static_cast<u64>(end) - static_cast<u64>(first)} : window{};
}

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
        if (ka_access::kind(zone) != rules::zone_kind::table || !offset_)
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

void refuse_other_length(std::size_t from, std::size_t to)
{
    if (from != to)
        throw_error(ka_failure, {KA_SOURCE, __LINE__}, "Columns of ", from, " and ", to, " rows");
}

/// Hands over each instant with its offset.
template <typename Value, typename Put>
[[gnu::always_inline]] inline ka_column_result
read_all(const ka_time_zone& zone, std::span<const long long> instants, std::span<Value> values, Put put)
{
    refuse_other_length(instants.size(), values.size());
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

/// The local time of fields, or why they are none.
struct local_time {
    explicit local_time(const ka_clock_fields& fields) noexcept
    {
        if (!ka_gregorian::is_date(fields.month, fields.day, fields.year)) {
            refused = ka_invalid_date;
            return;
        }
        if (!ka_time::is_hour(fields.hour) || !ka_time::is_minute(fields.minute) ||
            !ka_time::is_second(fields.second) || !ka_time::is_microsecond(fields.microsecond)) {
            refused = ka_invalid_time;
            return;
        }
        day = ka_gregorian::day_number(fields.month, fields.day, ka_gregorian::to_astronomical(fields.year));
        second_of_day = fields.hour * 3600 + fields.minute * 60 + fields.second;
        microsecond = static_cast<int>(fields.microsecond);
        microseconds = day * day_length + second_of_day * million + microsecond;
    }

    refusal refused;
    int day = 0;
    int second_of_day = 0;
    int microsecond = 0;
    long long microseconds = 0;
};

/// Local times in a row, each of which means one instant: itself and the shift.
struct same_shift {
    window local_times;
    long long shift = 0;
    refusal refused;
};

/// A zone that is asked for what its local times mean.
class asked_backwards {
public:
    asked_backwards(const ka_time_zone& zone, ka_local_choice choice)
        : zone_(zone), choice_(choice), offset_(microseconds_of(zone.offset()))
    {
        constexpr long long most = LLONG_MAX / 2;
        if (ka_access::kind(zone) == rules::zone_kind::user_defined || !offset_ || *offset_ < -most ||
            most < *offset_)
            return;
        has_windows_ = true;
        zone_clock::for_each_adjustment(zone, [&](const ka_time_period& adjustment) {
            const auto reach = microseconds_of(adjustment);
            has_windows_ &= reach && -7 * day_length < *reach && *reach < 7 * day_length;
            least_ = std::min(least_, reach.value_or(0));
            greatest_ = std::max(greatest_, reach.value_or(0));
        });
    }

    same_shift around(const local_time& local) const
    {
        same_shift found;
        found.refused = refusal_of([&]() -> refusal {
            if (finds_window(found, local.microseconds))
                return {};
            return find(found, local);
        });
        return found;
    }

private:
    /// A standard time that reads as a local one is earlier by one of the zone's
    /// adjustments. Where all of these lie in one stretch, one alone reads so.
    bool finds_window(same_shift& found, long long local) const
    {
        if (!has_windows_ || !is_in_range(local - greatest_))
            return false;
        const rules::stretch told = rules::stretch_around(zone_, local - greatest_);
        found.local_times = window_of(told.first + greatest_, told.end + least_);
        found.shift = *offset_ - *microseconds_of(told.adjustment) - epoch;
        return found.local_times.holds(local);
    }

    /// By the definition, for this time alone.
    refusal find(same_shift& found, const local_time& local) const
    {
        const ka_local_moments means = ka_local_times(
            zone_, ka_access::time(local.second_of_day, local.microsecond), ka_access::date(local.day));
        const bool is_once = means.kind == ka_local_kind::once;
        if (choice_ == ka_local_choice::refuse && !is_once)
            return ka_invalid_time;
        const bool is_later = choice_ == ka_local_choice::later || (choice_ == ka_local_choice::compatible &&
                                                                    means.kind == ka_local_kind::skipped);
        const ka_time_and_date& chosen = is_later ? means.later : means.earlier;
        const auto instant = microseconds_of(chosen.utc_time_and_date() - ka_time_period(epoch / million));
        if (!instant)
            return ka_invalid_time_period;
        found.local_times = {local.microseconds, 1};
        found.shift = wrapping_sum(*instant, -local.microseconds);
        return {};
    }

    const ka_time_zone& zone_;
    ka_local_choice choice_;
    std::optional<long long> offset_;
    bool has_windows_ = false;
    long long least_ = 0;
    long long greatest_ = 0;
};

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

ka_column_result ka_instants(const ka_time_zone& zone, std::span<const ka_clock_fields> fields,
                             ka_local_choice choice, std::span<long long> instants)
{
    refuse_other_length(fields.size(), instants.size());
    const asked_backwards asked(zone, choice);
    same_shift now;
    for (std::size_t row = 0; row < fields.size(); ++row) {
        const local_time local(fields[row]);
        if (local.refused)
            return {row, local.refused.code};
        if (!now.local_times.holds(local.microseconds)) {
            now = asked.around(local);
            if (now.refused)
                return {row, now.refused.code};
        }
        instants[row] = wrapping_sum(local.microseconds, now.shift);
    }
    return {fields.size(), std::nullopt};
}
