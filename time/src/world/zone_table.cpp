#include "zone_table.h"

#include <algorithm>

namespace world {

namespace {

// Changes that no date of the range can show are as good as none.
constexpr long long first_second = (38 - 3) * 86400ll;
constexpr long long last_second = (13688960 + 3) * 86400ll;
constexpr long long fold = static_cast<long long>(rules::fold_length);
/// Longer than any change is away from midnight of its day on any clock.
constexpr long long week = 8 * 86400;

/// The years for which changes by yearly rules are worked out.
constexpr long long yearly_span = 420;
constexpr std::size_t most_yearly_changes = 2 * (yearly_span + 1);

long long clamped(long long unix_time) noexcept
{
    return std::clamp(unix_time, first_second - unix_epoch - 1, last_second - unix_epoch + 1) + unix_epoch;
}

/// A year that has begun by a time, and not three years before.
long long year_before(long long time) noexcept { return time / 86400 * 400 / 146097 - 4714; }

}

zone_table::zone_table(const zone_data& data, const char* name)
{
    view_.name = name;
    choose_base(data);
    // A file that tells no change leaves all to its rules.
    kind_of_.push_back(kind_number(data.has_rules && data.at.empty() ? data.rules.standard : data.types[0]));
    add_told_changes(data);
    told_ = read_at_.size();
    if (data.has_rules && data.rules.has_summer)
        add_yearly_changes(data);
    set_timelines();
    set_span();
    fill_index();
}

void zone_table::choose_base(const zone_data& data)
{
    // The last type in force of each sort, the rules being the very last.
    const local_type* standard = nullptr;
    const local_type* summer = nullptr;
    const auto note = [&](const local_type& type) { (type.is_dst ? summer : standard) = &type; };
    if (!data.types.empty())
        note(data.types[0]);
    for (const unsigned char type : data.type_of)
        note(data.types[type]);
    if (data.has_rules) {
        note(data.rules.standard);
        if (data.rules.has_summer)
            note(data.rules.summer);
    }
    has_summer_ = summer != nullptr;
    if (has_summer_)
        summer_name_ = summer->abbreviation;
    const local_type& base = standard != nullptr ? *standard : *summer;
    base_east_ = base.east;
    standard_name_ = base.abbreviation;
}

unsigned char zone_table::kind_number(const local_type& type)
{
    const auto known = std::find(types_.begin(), types_.end(), type);
    const auto number = static_cast<unsigned char>(known - types_.begin());
    if (known == types_.end()) {
        types_.push_back(type);
        kinds_.push_back({type.east - base_east_, -type.east,
                          static_cast<unsigned short>(abbreviations_.size()), type.is_dst});
        abbreviations_.append(type.abbreviation).push_back('\0');
    }
    return number;
}

void zone_table::add_change(long long universal, unsigned char kind)
{
    // Of two changes at one time the second counts.
    if (!read_at_.empty() && read_at_.back() == universal + base_east_) {
        read_at_.pop_back();
        kind_of_.pop_back();
    }
    if (kind_of_.back() == kind)
        return;
    read_at_.push_back(universal + base_east_);
    kind_of_.push_back(kind);
}

void zone_table::add_told_changes(const zone_data& data)
{
    std::vector<unsigned char> numbers;
    for (const local_type& type : data.types)
        numbers.push_back(kind_number(type));
    for (std::size_t i = 0; i < data.at.size(); ++i) {
        const long long at = clamped(data.at[i]);
        const unsigned char kind = numbers[data.type_of[i]];
        if (at > last_second)
            break;
        if (at < first_second)
            kind_of_.front() = kind;
        else
            add_change(at, kind);
    }
}

std::vector<zone_table::yearly_change> zone_table::yearly_changes(const yearly_rules& rules, long long after)
{
    const unsigned char standard = kind_number(rules.standard);
    const unsigned char summer = kind_number(rules.summer);
    const auto start_of = [&](long long year) { return rules.start.in(year)-rules.standard.east; };
    std::vector<yearly_change> changes;
    const long long first_year = year_before(after) - 1, last_year = first_year + yearly_span;
    changes.reserve(most_yearly_changes);
    long long next_start = start_of(first_year);
    for (long long year = first_year; year <= last_year; ++year) {
        const long long start = next_start, end = rules.end.in(year)-rules.summer.east;
        next_start = start_of(year + 1);
        if (start < end) {
            changes.push_back({start, summer});
            // A summer that lasts until the next begins has no end.
            if (end < next_start)
                changes.push_back({end, standard});
        } else if (end < start) {
            changes.push_back({end, standard});
            changes.push_back({start, summer});
        }
    }
    const auto earlier = [](const yearly_change& a, const yearly_change& b) { return a.at < b.at; };
    if (!std::is_sorted(changes.begin(), changes.end(), earlier))
        std::stable_sort(changes.begin(), changes.end(), earlier);
    return changes;
}

void zone_table::add_yearly_changes(const zone_data& data)
{
    // Rules alone hold for ever; one round of years tells all of them.
    is_endless_ = data.at.empty();
    const long long after = is_endless_ ? unix_epoch : clamped(data.at.back());
    read_at_.reserve(read_at_.size() + most_yearly_changes);
    kind_of_.reserve(kind_of_.size() + most_yearly_changes);
    for (const yearly_change& change : yearly_changes(data.rules, after))
        if (change.at > after)
            add_change(change.at, change.kind);
    is_yearly_ = read_at_.size() > told_ + 1;
    if (is_endless_ && !is_yearly_ && !read_at_.empty()) {
        // It is summer all the year.
        kind_of_.erase(kind_of_.begin());
        read_at_.clear();
    }
}

void zone_table::set_timelines()
{
    // A change holds for setting from the earlier of the two local times on that
    // it joins, and of two that overlap for that reason the later counts.
    set_at_ = read_at_;
    long long next = last_second * 2;
    for (std::size_t i = set_at_.size(); i-- > 0;) {
        const int before = kinds_[kind_of_[i]].adjustment, after = kinds_[kind_of_[i + 1]].adjustment;
        next = std::min(next, set_at_[i] + std::min(before, after));
        set_at_[i] = next;
    }
}

void zone_table::set_span()
{
    view_.first = kinds_[kind_of_.front()];
    view_.last = kinds_[kind_of_.back()];
    if (read_at_.empty())
        return;
    view_.origin = std::min(read_at_.front(), set_at_.front());
    long long end = std::max(read_at_.back(), set_at_.back()) + 1;
    if (is_yearly_) {
        // From the first change by the rules on, all comes again.
        end = read_at_[told_] + fold + week;
        view_.folds_forward = true;
        view_.folds_back = is_endless_;
        const auto kept = static_cast<std::size_t>(
            std::lower_bound(read_at_.begin(), read_at_.end(), end + week) - read_at_.begin());
        read_at_.resize(kept);
        set_at_.resize(kept);
        kind_of_.resize(kept + 1);
    }
    view_.length = static_cast<unsigned long long>(end - view_.origin);
}

void zone_table::make_rows(std::vector<unsigned char>& rows)
{
    const std::size_t kinds = kinds_.size();
    std::vector<unsigned char> known(kinds * kinds, rules::searched_row);
    const auto row_of = [&](unsigned char before, unsigned char after) {
        unsigned char& row = known[before * kinds + after];
        if (row == rules::searched_row && pairs_.size() < rules::searched_row) {
            row = static_cast<unsigned char>(pairs_.size());
            pairs_.push_back({kinds_[before], kinds_[after]});
        }
        return row;
    };
    for (std::size_t i = 0; i < read_at_.size(); ++i)
        rows.push_back(row_of(kind_of_[i], kind_of_[i + 1]));
    rows.push_back(row_of(kind_of_.back(), kind_of_.back()));
}

void zone_table::fill_index()
{
    std::vector<unsigned char> rows;
    rows.reserve(read_at_.size() + 1);
    make_rows(rows);
    const std::size_t count = rules::slots_for(view_.length);
    slots_.resize(2 * count);
    std::uint32_t* const set_slots = slots_.data() + count;
    rules::fill_slots(slots_.data(), count, view_.origin, read_at_.data(), rows.data(), read_at_.size());
    rules::fill_slots(set_slots, count, view_.origin, set_at_.data(), rows.data(), set_at_.size());
    view_.read = {slots_.data(), read_at_.data()};
    view_.set = {set_slots, set_at_.data()};
    view_.pairs = pairs_.data();
    view_.count = read_at_.size();
    view_.kind_of = kind_of_.data();
    view_.kinds = kinds_.data();
    view_.kind_count = kinds_.size();
    view_.abbreviations = abbreviations_.data();
}

}
