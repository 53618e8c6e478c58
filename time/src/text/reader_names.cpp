#include <algorithm>
#include <string>

#include "../access.h"
#include "../rules/effect.h"
#include "fields.h"
#include "reader.h"

namespace {

using field = ka_format_field;

constexpr char lower(char letter)
{
    return 'A' <= letter && letter <= 'Z' ? static_cast<char>(letter + ('a' - 'A')) : letter;
}

bool begins_with(std::string_view text, std::string_view name)
{
    return text.size() >= name.size() && std::equal(name.begin(), name.end(), text.begin(),
                                                    [](char x, char y) { return lower(x) == lower(y); });
}

std::string_view without_blanks(std::string_view text)
{
    return text.substr(std::min(text.find_first_not_of(' '), text.size()));
}

}

// The era is printed below 1000, but "A.D." behind a later year may be another piece.
bool text_reader::read_year_with_era(const read_piece& next) noexcept
{
    const std::size_t start = at_;
    const digits_row digits = next.digits;
    const auto row = next.row;
    int year = 0;
    for (; at_ - start < digits.most && is_digit_next(); ++at_)
        year = year * 10 + (text_[at_] - '0');
    if (at_ - start < digits.least)
        return refuse_word(row, start);

    const std::size_t end = at_;
    if (peek() == ' ')
        ++at_;
    const name_match era = match_pair(**language_.ad, **language_.bc, english.ad, english.bc);
    const bool is_bc = era.bits == 2;
    if (era.bits != 0 && at_ > end && (is_bc || year < 1000)) {
        at_ += era.length;
        return tell_number(row, is_bc ? -year : year, start);
    }
    at_ = end;
    return year < 1000 ? refuse(limits_of_row(row).code, start, end - start, "f")
                       : tell_number(row, year, start);
}

void text_reader::consider(std::string_view name, unsigned int index, bool is_own,
                           name_match& best) const noexcept
{
    std::string_view text = text_.substr(at_);
    std::size_t length = 0;
    // A name that is printed with blanks in front is read with as many as there are.
    if (!name.empty() && name.front() == ' ') {
        length = std::min(text.find_first_not_of(' '), text.size());
        text.remove_prefix(length);
        name.remove_prefix(std::min(name.find_first_not_of(' '), name.size()));
    }
    length += name.size();
    if (name.empty() || length < best.length || !begins_with(text, name))
        return;
    if (length > best.length)
        best = {0, length};
    else if (!is_own)
        return;
    best.bits |= 1 << index;
}

text_reader::name_match text_reader::match_month() const noexcept
{
    name_match best;
    for (unsigned int month = 0; month < 12; ++month) {
        consider(*language_.month_names[month], month, true, best);
        consider(*language_.month_abbreviations[month], month, true, best);
    }
    for (unsigned int month = 0; month < 12; ++month) {
        consider(english.month_names[month], month, false, best);
        consider(english.month_abbreviations[month], month, false, best);
    }
    return best;
}

text_reader::name_match text_reader::match_weekday() const noexcept
{
    name_match best;
    for (unsigned int weekday = 0; weekday < 7; ++weekday) {
        consider(*language_.weekday_names[weekday], weekday, true, best);
        consider(*language_.weekday_abbreviations[weekday], weekday, true, best);
    }
    for (unsigned int weekday = 0; weekday < 7; ++weekday) {
        consider(english.weekday_names[weekday], weekday, false, best);
        consider(english.weekday_abbreviations[weekday], weekday, false, best);
    }
    return best;
}

/// Of two texts one may be empty: it is what stands there where nothing else does.
text_reader::name_match text_reader::match_pair(const std::string& first, const std::string& second,
                                                std::string_view english_first,
                                                std::string_view english_second) const noexcept
{
    name_match best;
    consider(first, 0, true, best);
    consider(second, 1, true, best);
    consider(english_first, 0, false, best);
    consider(english_second, 1, false, best);
    if (best.length == 0 && first.empty() != second.empty())
        best.bits = first.empty() ? 1 : 2;
    return best;
}

bool text_reader::read_name(int row) noexcept
{
    const ka_format_code& code = ka_format_codes[row];
    const std::size_t start = at_;
    name_match found;
    bool is_optional = false;
    switch (code.field) {
        case field::month:
            found = match_month();
            break;
        case field::weekday:
            found = match_weekday();
            break;
        case field::half_of_day:
            found = match_pair(**language_.am, **language_.pm, english.am, english.pm);
            is_optional = (**language_.am).empty() && (**language_.pm).empty();
            break;
        default:
            found = match_pair(**language_.ad, **language_.bc, english.ad, english.bc);
            is_optional = (**language_.ad).empty() && (**language_.bc).empty();
            break;
    }
    at_ += found.length;
    if (found.bits != 0)
        return tell_name(row, found.bits, start);
    return is_optional || refuse_word(row, start);
}

bool text_reader::read_zone(int row)
{
    if (zone_ == nullptr)
        return true;
    const std::size_t start = at_;
    name_match found;
    consider(zone_->name(), 0, true, found);
    consider(zone_->dst_name(), 1, true, found);
    consider_names_of_table(found);
    at_ += found.length;
    return found.bits != 0 ? tell_name(row, found.bits, start) : refuse_word(row, start);
}

/// A zone that goes by a table can have had other names, one for each kind.
void text_reader::consider_names_of_table(name_match& best) const
{
    if (ka_access::kind(*zone_) != rules::zone_kind::table ||
        ka_access::changes(*zone_).abbreviations == nullptr)
        return;
    const rules::table& table = ka_access::changes(*zone_);
    constexpr unsigned int first_bit = 2, bits = 28;
    for (std::size_t kind = 0; kind < table.kind_count; ++kind)
        if (begins_with(without_blanks(text_.substr(at_)),
                        without_blanks(table.abbreviations + table.kinds[kind].abbreviation)))
            consider(rules::name_under(*zone_, table.kinds[kind].is_dst, &table.kinds[kind]),
                     first_bit + static_cast<unsigned int>(kind) % bits, true, best);
}

bool text_reader::tells_zone_name(std::string_view name) const noexcept
{
    const told_value& zone = told(field::zone);
    const std::string_view text = without_blanks(text_.substr(zone.position, zone.length));
    name = without_blanks(name);
    return text.size() == name.size() && begins_with(text, name);
}
