#include <algorithm>
#include <random>
#include <vector>

#include <gtest/gtest.h>

#include "../time/src/rules/table.h"

// The lookups of a table of changes, against its definition: the last change at
// a time or before it counts. The table is compiled into this test.

namespace {

using rules::kind;

constexpr long long fold = (400 * 365 + 97) * 86400ll; // 400 years

/// A table and what it views. The kind behind change number i is i % 5 + 1; the
/// one before the first is that of the last where the table repeats, else 0.
struct made_table {
    std::vector<long long> at;
    std::vector<unsigned char> kind_of{0};
    std::vector<kind> kinds;
    std::vector<std::uint32_t> slots;
    std::vector<rules::kind_pair> pairs;
    rules::table view;

    made_table(std::vector<long long> times, long long origin, long long end, bool repeats)
        : at(std::move(times))
    {
        for (int number = 0; number < 6; ++number)
            kinds.push_back({number * 1800, -number * 1800, 0, number % 2 == 1});
        for (std::size_t i = 0; i < at.size(); ++i)
            kind_of.push_back(static_cast<unsigned char>(i % 5 + 1));
        kind_of.front() = repeats ? kind_of.back() : kind_of.front();
        view.origin = origin;
        view.length = static_cast<unsigned long long>(end - origin);
        slots.resize(rules::slots_for(view.length));
        // Rows that are full are told as such.
        std::vector<unsigned char> rows;
        for (std::size_t i = 0; i <= at.size(); ++i) {
            rows.push_back(
                static_cast<unsigned char>(std::min(pairs.size(), std::size_t{rules::searched_row})));
            pairs.push_back({kinds[kind_of[i]], kinds[kind_of[std::min(i + 1, at.size())]]});
        }
        rules::fill_slots(slots.data(), slots.size(), origin, at.data(), rows.data(), at.size());
        view.read = view.set = {slots.data(), at.data()};
        view.pairs = pairs.data();
        view.count = at.size();
        view.kind_of = kind_of.data();
        view.kinds = kinds.data();
        view.first = kinds[kind_of.front()];
        view.last = kinds[kind_of.back()];
    }
};

/// Every change comes again each 400 years, from the first on, in both directions where `is_endless`.
struct plain_table {
    const made_table& made;
    long long period;
    bool is_endless;

    /// The number of changes at a time or before it, and the time of one by its number.
    long long number(long long time) const
    {
        const auto size = static_cast<long long>(made.at.size());
        long long rounds = 0;
        if (period != 0) {
            rounds = (time - made.view.origin) / period - ((time - made.view.origin) % period < 0);
            rounds = is_endless ? rounds : std::max(rounds, 0ll);
        }
        const auto found = std::upper_bound(made.at.begin(), made.at.end(), time - rounds * period);
        return rounds * size + (found - made.at.begin());
    }
    long long time_of(long long number) const
    {
        const auto size = static_cast<long long>(made.at.size());
        const long long rounds = number / size - (number % size < 0);
        return made.at[static_cast<std::size_t>(number - rounds * size)] + rounds * period;
    }
};

void expect_same(const made_table& made, const plain_table& plain, long long time)
{
    SCOPED_TRACE(time);
    const auto size = static_cast<long long>(made.at.size());
    const long long number = plain.number(time);
    const long long in_round = plain.period == 0 ? number : (number % size + size) % size;
    const bool is_first = number == 0 && !plain.is_endless;
    const unsigned char expected =
        made.kind_of[static_cast<std::size_t>(in_round == 0 && !is_first ? size : in_round)];
    EXPECT_EQ(rules::kind_by_standard(made.view, time).adjustment, made.kinds[expected].adjustment);
    EXPECT_EQ(rules::kind_by_local(made.view, time).is_dst, made.kinds[expected].is_dst);

    const rules::change previous = rules::previous_change(made.view, time);
    ASSERT_EQ(static_cast<bool>(previous), !is_first);
    if (previous) {
        EXPECT_EQ(previous.at, plain.time_of(number - 1));
        EXPECT_EQ(*previous.after, made.kinds[expected]);
    }
    const rules::change next = rules::next_change(made.view, time);
    ASSERT_EQ(static_cast<bool>(next), plain.period != 0 || number < size);
    if (next) {
        EXPECT_EQ(next.at, plain.time_of(number));
        EXPECT_EQ(*next.before, made.kinds[expected]);
    }
}

void expect_same_everywhere(made_table& made, const plain_table& plain)
{
    const long long step = static_cast<long long>(rules::slot_length);
    for (const bool is_searched : {true, false}) {
        // A table that has no searched slot does without its times.
        if (!is_searched && std::any_of(made.slots.begin(), made.slots.end(),
                                        [](std::uint32_t word) { return word >> 24 == rules::searched_row; }))
            break;
        if (!is_searched)
            made.view.read.at = made.view.set.at = nullptr;
        for (const long long rounds : {-3, -1, 0, 1, 2, 900})
            for (const long long near : made.at)
                for (const int second : {-1, 0, 1})
                    expect_same(made, plain, near + rounds * fold + second);
        for (long long slot = -2; slot < static_cast<long long>(made.slots.size()) + 2; ++slot)
            for (const int second : {-1, 0})
                expect_same(made, plain, made.view.origin + slot * step + second);
    }
}

std::vector<long long> changes_from(long long from, int count, std::mt19937& random)
{
    std::vector<long long> times;
    for (int i = 0; i < count; ++i)
        times.push_back(from += 7 * 86400 + static_cast<long long>(random() % 40'000'000));
    return times;
}

TEST(Table, HasAnEnd)
{
    std::mt19937 random;
    for (const int count : {0, 1, 2, 40, 300}) {
        SCOPED_TRACE(count);
        const long long origin = 200'000'000'000;
        std::vector<long long> times = changes_from(origin, count, random);
        if (count == 40) // one at the start of a slot
            times[20] = origin + ((times[20] - origin) >> rules::slot_bits << rules::slot_bits);
        std::sort(times.begin(), times.end());
        const long long end = times.empty() ? origin : times.back() + 1;
        made_table made(times, origin, end, false);
        expect_same_everywhere(made, {made, 0, false});
    }
}

TEST(Table, ComesAgainAfter400Years)
{
    std::mt19937 random;
    for (const bool is_endless : {false, true})
        for (const int rounds : {1, 2}) {
            SCOPED_TRACE(is_endless);
            SCOPED_TRACE(rounds);
            const long long origin = 200'000'000'000;
            std::vector<long long> times = changes_from(origin, 130, random);
            for (long long& time : times)
                time = origin + (time - origin) % fold;
            std::sort(times.begin(), times.end());
            for (std::size_t i = 0; rounds == 2 && i < 130; ++i)
                times.push_back(times[i] + fold);
            made_table made(times, origin, origin + rounds * fold, true);
            made.view.folds_forward = true;
            made.view.folds_back = is_endless;
            expect_same_everywhere(made, {made, rounds * fold, is_endless});
        }
}

}
