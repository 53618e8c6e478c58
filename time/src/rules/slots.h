#pragma once

class ka_time_zone_rule;

namespace rules {

struct table;

/// What a zone owns: the slots of its rules, to which it points, and behind them
/// the table of a zone that goes by one.
struct slots {
    static constexpr int count = 7;

    ka_time_zone_rule* rules[count] = {};
    const table* changes = nullptr;
};

}
