#pragma once

#include "prepared.h"
#include "print_inline.h"

[[gnu::always_inline]] inline char* write_literal(char* at, std::string_view literal)
{
    if (literal.size() == 1)
        *at = literal.front();
    else if (!literal.empty())
        copy_name(at, literal);
    return at + literal.size();
}

/// `print` by a format that was taken apart before. Letters and numbers ask for
/// room from one text to the next; where that is short, the general way fills
/// what there is.
[[gnu::always_inline]] inline char* print_prepared(char* at, sink& out, const ka_prepared_format& format,
                                                   const printed_value& value)
{
    if (!is_common_year(value.year) || !out.has_room(at, format.room)) [[unlikely]]
        return print(at, out, format.printed, value);
    for (const print_step& step : format.steps) {
        at = write_literal(at, step.literal);
        if (step.printed < way::number) {
            at = write_common(at, step.printed, value);
            continue;
        }
        if (step.printed == way::letter_itself) [[unlikely]]
            at = print_padded(at, out, ka_format_pieces(step.code), value).end;
        else
            at = step.printer(at, out, value);
        if (!out.has_room(at, step.room_behind)) [[unlikely]]
            return print_to_the_last(at, out, ka_format_pieces(step.rest), value);
    }
    return write_literal(at, format.tail);
}
