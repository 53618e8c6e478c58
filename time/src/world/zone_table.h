#pragma once

#include <string>
#include <vector>

#include "../rules/table.h"
#include "zone_data.h"

namespace world {

/// The table of a zone of the world, with all that it views. It does not move.
class zone_table {
public:
    /// The name is kept as it is given, null for none.
    zone_table(const zone_data& data, const char* name);
    zone_table(const zone_table&) = delete;
    zone_table& operator=(const zone_table&) = delete;

    const rules::table& view() const noexcept { return view_; }
    /// The standard offset in seconds, positive west of Greenwich: that of the
    /// rules that hold in the end, or of the last change that has one.
    int offset() const noexcept { return -base_east_; }
    /// What the zone is called in the end; in summer empty where it has none.
    const std::string& standard_name() const noexcept { return standard_name_; }
    const std::string& summer_name() const noexcept { return summer_name_; }
    bool has_summer() const noexcept { return has_summer_; }

private:
    struct yearly_change {
        long long at;
        unsigned char kind;
    };

    void choose_base(const zone_data& data);
    unsigned char kind_number(const local_type& type);
    void add_change(long long universal, unsigned char kind);
    void add_told_changes(const zone_data& data);
    /// More than 400 years of changes, in order, from before a time on.
    std::vector<yearly_change> yearly_changes(const yearly_rules& rules, long long after);
    void add_yearly_changes(const zone_data& data);
    void set_timelines();
    void set_span();
    /// The row of each change, and one for the end.
    void make_rows(std::vector<unsigned char>& rows);
    void fill_index();

    std::vector<local_type> types_;
    std::vector<rules::kind> kinds_;
    std::vector<unsigned char> kind_of_;
    std::vector<long long> read_at_;
    std::vector<long long> set_at_;
    std::vector<std::uint32_t> slots_;
    std::vector<rules::kind_pair> pairs_;
    std::string abbreviations_;
    std::string standard_name_;
    std::string summer_name_;
    bool has_summer_ = false;
    int base_east_ = 0;
    /// The number of changes before those of yearly rules.
    std::size_t told_ = 0;
    bool is_yearly_ = false;
    /// Whether the rules hold in all years.
    bool is_endless_ = false;
    rules::table view_;
};

}
