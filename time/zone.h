#pragma once

#include <iosfwd>
#include <string>

#include <time/date.h>
#include <time/export.h>
#include <time/start_stop.h>
#include <time/time_of_day.h>
#include <time/tperiod.h>
#include <time/zone_rule.h>

/// A time zone: a standard offset, two names and up to seven rules that move
/// its clocks.
///
///     const ka_time_zone& pacific = ka_time_zone::pacific();
///     pacific.offset().to_hours();                                  // 8
///     pacific.name(ka_time(12, 0, 0), ka_date(7, 1, 2024));         // "PDT7"
///     pacific.is_dst(ka_time(1, 59, 59), ka_date(3, 10, 2024));     // false
///     pacific.is_dst(ka_time(2, 0, 0), ka_date(3, 10, 2024));       // true
///
/// Offsets: the period to add to local time to reach universal time, so
/// positive west of Greenwich: +8 hours for the Pacific, -1 hour for central
/// Europe. The adjustment of a rule in effect is subtracted from it.
/// Lifetime: a zone owns its list of rules and not the rules, which must
/// outlive it. The built-in zones live from the start of the library to its stop.
/// Failure: what a rule throws passes through; the zone itself throws nothing.
/// Threads: reading is safe beside reading; `insert` and a change to a rule are
/// the caller's to keep apart from readers.
class KA_TIME_VARNEL_API ka_time_zone {
public:
    // The built-in zones: see docs/zones.md.

    static const ka_time_zone& utc() noexcept;
    static const ka_time_zone& greenwich() noexcept;
    static const ka_time_zone& central_european() noexcept;
    static const ka_time_zone& western_european() noexcept;
    static const ka_time_zone& portuguese() noexcept;
    static const ka_time_zone& south_africa() noexcept;
    static const ka_time_zone& pacific() noexcept;
    static const ka_time_zone& mountain() noexcept;
    static const ka_time_zone& central() noexcept;
    static const ka_time_zone& eastern() noexcept;
    static const ka_time_zone& atlantic() noexcept;
    static const ka_time_zone& newfoundland() noexcept;
    static const ka_time_zone& yukon() noexcept;
    static const ka_time_zone& aleutian() noexcept;
    static const ka_time_zone& israel() noexcept;
    // Without daylight saving time.
    static const ka_time_zone& indiana() noexcept;
    static const ka_time_zone& hawaii() noexcept;

    // A zone of one's own.

    /// Both names are "GMT".
    ka_time_zone(const ka_time_period& offset);
    /// The names are stems: "PST" reads as "PST8" at an offset of 8 hours.
    ka_time_zone(const ka_time_period& offset, const std::string& name, const std::string& dst_name);
    /// `name` serves as both names.
    ka_time_zone(const ka_time_period& offset, const std::string& name);
    ~ka_time_zone();

    ka_time_zone(const ka_time_zone&) = delete;
    ka_time_zone& operator=(const ka_time_zone&) = delete;

    /// Adds a rule; false, and nothing done, where the zone has seven already.
    /// Rules are asked from the latest first year down, and of one year the one
    /// inserted last; the first that is in effect counts. The construction of
    /// the rule, derived class and all, must be over.
    bool insert(ka_time_zone_rule& rule) noexcept;

    // The offset.

    /// The standard offset.
    ka_time_period offset() const noexcept { return offset_; }
    /// The offset at a time on a date, less the adjustment of a rule in effect.
    ka_time_period offset(const ka_time& time, const ka_date& date) const;
    /// The adjustment at a time on a date; zero where no rule is in effect.
    ka_time_period dst_adjustment(const ka_time& time, const ka_date& date) const;
    /// Whether a rule is in effect at a time on a date.
    bool is_dst(const ka_time& time, const ka_date& date) const;
    /// Whether the zone has rules at all.
    bool dst_observed() const noexcept { return count_ != 0; }

    // The names: the stem and the whole hours of the offset, "PST8" or "CET-1".
    // With the stem "UTC" the sign is the usual one: "UTC-5" or "UTC+1".

    /// The name in standard time.
    std::string name() const;
    /// The name in daylight time, one hour ahead whatever the rules say; without rules the stem.
    std::string dst_name() const;
    /// The name at a time on a date.
    std::string name(const ka_time& time, const ka_date& date) const;

    /// Writes "ka_time_zone( PST8, PDT7 )", or the first name alone in a zone
    /// without rules.
    void print(std::ostream& stream) const;

protected:
    /// The rule in a slot, 0 to 6; null past the rules held and for any other index.
    const ka_time_zone_rule* rule(int index) const noexcept;
    /// The rule in effect at a time on a date, or null.
    const ka_time_zone_rule* rule(const ka_time& time, const ka_date& date) const;
    /// A stem with the whole hours of an offset behind it.
    static std::string name(const std::string& stem, const ka_time_period& offset);
    /// The built-in zone with exactly this standard offset, or null. `utc`,
    /// `portuguese` and `hawaii` are not searched, and the flag has no bearing.
    static ka_time_zone* find(ka_time_period offset, bool dst) noexcept;

private:
    friend struct ka_access;

    // What the binary interface fixes: who makes and frees the built-in zones,
    // the statics that hold these, and the fields of a zone.

    friend class ka_time_and_date;
    friend void ka_init_time_varnel();
    friend void ka_exit_time_varnel();

    static void create_zones();
    static void delete_zones() noexcept;

    static ka_time_zone *utc_, *gmt_, *cet_, *wet_, *pwt_, *sast_, *hawt_, *indt_, *pst_, *mst_, *cst_, *est_,
        *ast_, *nst_, *yst_, *ast_10_, *ist_;

    /// How the zone knows its changes: by rules of the library's own kind, by
    /// asking each rule, or by a table.
    enum class rule_kind : unsigned char { simple, user_defined, table };

    std::string name_;
    std::string dst_name_;
    ka_time_period offset_;
    ka_time_zone_rule** rules_;
    int count_ = 0;
    rule_kind kind_ = rule_kind::simple;
};
