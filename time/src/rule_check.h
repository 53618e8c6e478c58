#pragma once

#include <time/date.h>
#include <time/time_of_day.h>
#include <time/zone_rule.h>

/// `ka_simple_time_zone_rule::is_in_effect`, told year and month of the date,
/// which one caller works out for many rules. Nothing is kept between two
/// calls, since a rule and its points can change at any time.
bool is_simple_rule_in_effect(const ka_time_zone_rule& rule, const ka_time& time, const ka_date& date,
                              short year, unsigned short month);
