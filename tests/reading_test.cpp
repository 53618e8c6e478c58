#include <ctime>
#include <deque>
#include <optional>
#include <random>
#include <string>

#include <gtest/gtest.h>

#include <time/time_varnel.h>

// The library takes short cuts to what a moment reads and which rule is in
// effect. Here both are worked out step by step, with rules, offsets and instants
// of which many are out of the ordinary.

namespace {

/// The result of an operation, or the symbol of its error.
std::string result_of(auto operation)
{
    try {
        return operation();
    } catch (const ka_time_varnel_error& error) {
        return ka_time_varnel_error::symbol(error.code());
    }
}

std::string shown(const ka_time_period& period) { return period.to_string(); }

/// A simple rule as its definition has it, asked like a rule of a host's own.
class stepwise_rule : public ka_time_zone_rule {
public:
    stepwise_rule(const ka_calendar_date& start, const ka_calendar_date& end, short first, short last,
                  const ka_time_period& adjustment)
        : ka_time_zone_rule(start, end, first, last, adjustment)
    {}

    bool is_in_effect(const ka_time& time, const ka_date& date) const override
    {
        const short year = date.year();
        if (year < start_year() || (end_year() != 0 && end_year() < year))
            return false;
        const ka_date start = start_point().date(year);
        const ka_date end = end_point().date(year);
        if (end < start ? date < start && end < date : date < start || end < date)
            return false;
        if (date == start && time < start_point().time())
            return false;
        return !(date == end && end_point().time() <= time);
    }
};

class zones : public testing::Test {
protected:
    long long pick(long long low, long long high)
    {
        return low + static_cast<long long>(random_() % static_cast<unsigned long long>(high - low + 1));
    }
    bool one_in(int count) { return pick(1, count) == 1; }

    ka_time_period when() { return ka_time_period(one_in(4) ? 0 : pick(0, 100000), one_in(2) ? 1 : 0); }

    ka_calendar_date& point()
    {
        const auto month = static_cast<unsigned short>(pick(1, 12));
        if (one_in(3))
            return points_.emplace_back(when(), month, static_cast<unsigned short>(pick(1, 31)));
        const auto week = static_cast<ka_which_one>(one_in(8) ? pick(-7, 7) : pick(1, 4));
        return points_.emplace_back(when(), month, week, static_cast<unsigned short>(pick(1, 7)));
    }

    ka_time_period shift()
    {
        if (one_in(4))
            return ka_time_period(pick(-200000, 200000));
        return one_in(4) ? ka_time_period(pick(0, 3), 999999) : ka_time_period(pick(-2, 2) * 1800);
    }

    /// Two zones of the same rules, the second with those worked out stepwise.
    void make_zones()
    {
        points_.clear(), quick_rules_.clear(), stepwise_rules_.clear();
        const ka_time_period offset = shift();
        quick_.emplace(offset);
        stepwise_.emplace(offset);
        for (long long count = pick(0, 7); count > 0; --count) {
            const auto first = static_cast<short>(one_in(4) ? -4713 : pick(1990, 2030));
            const auto last = static_cast<short>(one_in(2) ? 0 : first + pick(0, 1));
            ka_calendar_date& start = point();
            ka_calendar_date& end = one_in(4) ? points_.emplace_back(start) : point();
            if (one_in(2))
                end.when(when());
            const ka_time_period adjustment = shift();
            quick_->insert(quick_rules_.emplace_back(start, end, first, last, adjustment));
            stepwise_->insert(stepwise_rules_.emplace_back(start, end, first, last, adjustment));
        }
    }

    std::mt19937_64 random_{7};
    std::deque<ka_calendar_date> points_;
    std::deque<ka_simple_time_zone_rule> quick_rules_;
    std::deque<stepwise_rule> stepwise_rules_;
    std::optional<ka_time_zone> quick_, stepwise_;
};

/// What a moment shows, by the operations that show it.
std::string read(const ka_time_and_date& moment)
{
    const auto time = result_of([&] { return shown(moment.time()); });
    const auto date = result_of([&] { return std::to_string(moment.date().julian_day()); });
    const auto shown_fields = result_of([&] {
        const char* const format = "%Y-%m-%d %H:%M:%S %j %w ";
        const std::tm record = moment;
        char text[60];
        const std::string fields(text, std::strftime(text, sizeof text, format, &record));
        EXPECT_EQ(moment.to_string(format), fields);
        return fields + (moment.is_dst() ? "1" : "0") + std::to_string(record.tm_isdst);
    });
    return time + " " + date + " " + shown_fields;
}

/// The same from the definitions, and from what date and time show themselves.
std::string read_stepwise(const ka_time_period& instant, const ka_time_zone& zone)
{
    const ka_time_period standard = instant - zone.offset();
    const auto std_date = [&] { return ka_date(standard.to_days()); };
    const auto local_time = [&] {
        return ka_time(standard) + zone.dst_adjustment(ka_time(standard), std_date());
    };
    const auto local_date = [&] {
        return ka_date((standard + zone.dst_adjustment(ka_time(standard), std_date())).to_days());
    };
    const auto time = result_of([&] { return shown(local_time()); });
    const auto date = result_of([&] { return std::to_string(local_date().julian_day()); });
    const auto fields = result_of([&] {
        return local_date().to_string("%Y-%m-%d ") + local_time().to_string("%H:%M:%S ") +
               local_date().to_string("%j %w ") + (zone.is_dst(ka_time(standard), std_date()) ? "11" : "00");
    });
    return time + " " + date + " " + fields;
}

TEST_F(zones, rules_and_readings_are_those_of_the_steps)
{
    for (int round = 0; round < 40000; ++round) {
        if (round % 20 == 0)
            make_zones();
        const auto edge = one_in(2) ? -4713 : pick(32765, 32766);
        const auto year = static_cast<short>(one_in(6) ? edge : pick(1989, 2032));
        ka_date date = ka_date(1, 1, year) + ka_time_period(pick(0, 364) * 86400);
        ka_time time(when());
        // Half of them at a point, or next to one.
        if (one_in(2) && !points_.empty()) {
            const ka_calendar_date& near = points_[random_() % points_.size()];
            time = near.time() + ka_time_period(0, static_cast<int>(pick(-1, 1)));
            result_of([&] { return (date = near.date(year)).to_string(); });
        }
        // Single steps lead out of the range, and to instants below zero.
        if (one_in(10))
            for (date = ka_date::min_date(); date.julian_day() > pick(-2, 0);)
                --date;
        SCOPED_TRACE(std::to_string(date.julian_day()) + " " + time.to_string());
        const auto is_in_effect = [&](const ka_time_zone_rule& rule) {
            return result_of([&] { return rule.is_in_effect(time, date) ? "yes" : "no"; });
        };
        for (std::size_t rule = 0; rule < quick_rules_.size(); ++rule)
            ASSERT_EQ(is_in_effect(quick_rules_[rule]), is_in_effect(stepwise_rules_[rule]));

        ka_time_and_date moment;
        moment.time_zone(*quick_);
        moment.utc_time_and_date(time, date);
        const auto now = ka_time_period(date.julian_day() * 86400ll) + time;
        ASSERT_EQ(moment.utc_time_and_date(), now);
        ASSERT_EQ(read(moment), read_stepwise(moment.utc_time_and_date(), *stepwise_));

        const auto set = [&] { return shown(ka_time_and_date(time, date, *quick_).utc_time_and_date()); };
        ASSERT_EQ(result_of(set), result_of([&] { return shown(now + stepwise_->offset(time, date)); }));
    }
}

}
