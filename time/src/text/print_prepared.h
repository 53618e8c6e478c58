#pragma once

#include "prepared.h"
#include "print_inline.h"

/// `print` by a format that was taken apart before. Letters and numbers ask for
/// room from one text to the next; where that is short, the general way fills
/// what there is.
[[gnu::always_inline]] inline char* print_prepared(char* at, sink& out, const ka_prepared_format& format,
                                                   const printed_value& value)
{
    if (!is_common_year(value.year) || !out.has_room(at, format.room)) [[unlikely]]
        return print(at, out, format.printed, value);
    for (const print_step& step : format.steps) {
        if (step.printed < way::number) {
            // A number has a character at least, which may stand where no letter does.
            *at = step.letter_in_front;
            at = write_common(at + step.letters_in_front, step.printed, value);
            continue;
        }
        if (step.letters_in_front != 0)
            *at++ = step.letter_in_front;
        if (step.printed <= way::text) [[likely]]
            at = step.printer(at, out, value);
        else if (step.printed == way::letters)
            at = copy_name(at, step.format);
        else
            at = print_padded(at, out, ka_format_pieces(step.format), value).end;
        if (!out.has_room(at, step.room_behind)) [[unlikely]]
            return print_to_the_last(at, out, ka_format_pieces(step.rest), value);
    }
    return at;
}
