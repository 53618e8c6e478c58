#include <time/columns.h>

#include <algorithm>

#include "../rules/stretch.h"
#include "column_rows.h"
#include "zone_clock.h"

using namespace columns;

namespace {

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
        if (ka_access::kind(zone) == ka_access::rule_kind::user_defined || !offset_ || *offset_ < -most ||
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
        // What throws here is for the definition to find.
        const refusal none = refusal_of(
            [&] { return finds_window(found, local.microseconds) ? refusal() : refusal(ka_failure); });
        if (none)
            found.refused = refusal_of([&] { return find(found, local); });
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

ka_column_result ka_instants(const ka_time_zone& zone, std::span<const ka_clock_fields> fields,
                             ka_local_choice choice, std::span<long long> instants)
{
    check_lengths(fields.size(), instants.size());
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
