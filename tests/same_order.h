#pragma once

/// Whether all six comparisons of `x` and `y` come out as those of `a` and `b`.
template <typename Value, typename Model>
bool same_order(const Value& x, const Value& y, const Model& a, const Model& b)
{
    return (x == y) == (a == b) && (x != y) == (a != b) && (x < y) == (a < b) && (x > y) == (a > b) &&
           (x <= y) == (a <= b) && (x >= y) == (a >= b);
}
