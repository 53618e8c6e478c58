#pragma once

#include <ostream>

/// What the six comparisons of two values say. Prints as those that hold.
struct comparisons {
    bool equal, different, less, greater, at_most, at_least;

    bool operator==(const comparisons&) const = default;

    friend std::ostream& operator<<(std::ostream& out, const comparisons& found)
    {
        return out << (found.equal ? "== " : "") << (found.different ? "!= " : "") << (found.less ? "< " : "")
                   << (found.greater ? "> " : "") << (found.at_most ? "<= " : "")
                   << (found.at_least ? ">=" : "");
    }
};

template <typename Value>
comparisons compared(const Value& x, const Value& y)
{
    return {x == y, x != y, x<y, x> y, x <= y, x >= y};
}
