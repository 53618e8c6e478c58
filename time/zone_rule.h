#pragma once

#include <iosfwd>

#include <time/calendar.h>
#include <time/date.h>
#include <time/export.h>
#include <time/time_of_day.h>
#include <time/tperiod.h>

/// For a span of years: when a zone's clocks are moved, and by how much.
///
/// Derive from it for a rule of a kind of your own; most zones are served by
/// `ka_simple_time_zone_rule`.
///
/// Lifetime: a rule keeps the addresses of its two points. It neither copies
/// nor owns them; they must outlive the rule, and a change to a point shows in
/// every rule that has it. A temporary point does not compile.
/// Failure: years, points and adjustment are taken as they come.
class KA_TIME_VARNEL_API ka_time_zone_rule {
public:
    virtual ~ka_time_zone_rule();

    /// Whether the clocks are moved at a time on a date. Which clock the two
    /// are on is the caller's choice: a moment asks on the zone's standard
    /// clock when it is read, and on the time handed in when it is set.
    virtual bool is_in_effect(const ka_time& time, const ka_date& date) const = 0;

    /// Where the adjustment begins each year.
    const ka_calendar_date& start_point() const noexcept { return *start_point_; }
    void start_point(const ka_calendar_date& start) noexcept { start_point_ = &start; }
    void start_point(const ka_calendar_date&&) = delete;
    /// Where the adjustment ends each year.
    const ka_calendar_date& end_point() const noexcept { return *end_point_; }
    void end_point(const ka_calendar_date& end) noexcept { end_point_ = &end; }
    void end_point(const ka_calendar_date&&) = delete;

    /// The first year in which the rule holds.
    short start_year() const noexcept { return start_year_; }
    void start_year(short year) noexcept { start_year_ = year; }
    /// The last year in which the rule holds; 0 means that there is no last year.
    short end_year() const noexcept { return end_year_; }
    void end_year(short year) noexcept { end_year_ = year; }
    /// Whether there is no last year.
    bool is_open_ended() const noexcept { return end_year_ == 0; }

    /// How far the clocks are moved: positive where daylight time is ahead.
    const ka_time_period& adjustment() const noexcept { return adjustment_; }

    /// By the first year alone: of two rules of one year neither is less.
    bool operator<(const ka_time_zone_rule& other) const noexcept { return start_year_ < other.start_year_; }

    /// Writes "ka_time_zone_rule()", whatever the rule.
    void print(std::ostream& stream) const;

protected:
    /// Points, years and adjustment are those of the derived rule, untested.
    ka_time_zone_rule(const ka_calendar_date& start, const ka_calendar_date& end, short start_year,
                      short end_year, const ka_time_period& adjustment) noexcept;
    /// A point that is a temporary would be gone when the rule is asked.
    ka_time_zone_rule(const ka_calendar_date&&, const ka_calendar_date&, short, short,
                      const ka_time_period&) = delete;
    ka_time_zone_rule(const ka_calendar_date&, const ka_calendar_date&&, short, short,
                      const ka_time_period&) = delete;
    ka_time_zone_rule(const ka_calendar_date&&, const ka_calendar_date&&, short, short,
                      const ka_time_period&) = delete;

private:
    const ka_calendar_date* start_point_;
    const ka_calendar_date* end_point_;
    short start_year_;
    short end_year_;
    ka_time_period adjustment_;
};

/// A rule with one start and one end a year.
///
///     ka_calendar_date start(ka_time_period(0, 2, 0, 0, 0), 3, ka_second, 1);
///     ka_calendar_date end(ka_time_period(0, 2, 0, 0, 0), 11, ka_first, 1);
///     ka_simple_time_zone_rule rule(start, end, 2007, 0);
///     rule.is_in_effect(ka_time(12, 0, 0), ka_date(7, 1, 2024));    // true
class KA_TIME_VARNEL_API ka_simple_time_zone_rule : public ka_time_zone_rule {
public:
    /// With an adjustment of one hour.
    ka_simple_time_zone_rule(const ka_calendar_date& start, const ka_calendar_date& end, short start_year,
                             short end_year) noexcept;
    /// With any adjustment: negative ones put the clocks back.
    ka_simple_time_zone_rule(const ka_calendar_date& start, const ka_calendar_date& end, short start_year,
                             short end_year, const ka_time_period& adjustment) noexcept;
    /// As above, of temporary points.
    ka_simple_time_zone_rule(const ka_calendar_date&&, const ka_calendar_date&, short, short,
                             const ka_time_period& = {}) = delete;
    ka_simple_time_zone_rule(const ka_calendar_date&, const ka_calendar_date&&, short, short,
                             const ka_time_period& = {}) = delete;
    ka_simple_time_zone_rule(const ka_calendar_date&&, const ka_calendar_date&&, short, short,
                             const ka_time_period& = {}) = delete;
    ~ka_simple_time_zone_rule() override;

    /// From the start point, included, to the end point, excluded, in the years
    /// of the rule. Where the end lies before the start in the year, the rule
    /// spans New Year: it holds from 1 January to the end and from the start to
    /// 31 December. A point that has no date in the year throws as
    /// `ka_calendar_date::date` does; a year out of the span asks no point.
    bool is_in_effect(const ka_time& time, const ka_date& date) const override;
};
