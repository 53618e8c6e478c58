#include "exact.h"

#include <algorithm>
#include <string>

#include "piece_stream.h"

namespace {

using field = ka_format_field;

constexpr char lower(char letter)
{
    return 'A' <= letter && letter <= 'Z' ? static_cast<char>(letter + ('a' - 'A')) : letter;
}

constexpr bool is_space(char letter) { return letter == ' ' || ('\t' <= letter && letter <= '\r'); }

std::string_view without_blanks(std::string_view name)
{
    return name.substr(std::min(name.find_first_not_of(' '), name.size()));
}

/// Whether a text begins with another, and with what it goes on.
bool goes_on(std::string_view text, std::string_view start)
{
    return text.size() >= start.size() && std::equal(start.begin(), start.end(), text.begin(),
                                                     [](char x, char y) { return lower(x) == lower(y); });
}

/// What stands behind a piece in a text.
class following {
public:
    explicit following(piece_stream rest) : rest_(rest)
    {
        is_end_ = rest_.is_at_end();
        if (!is_end_)
            next_ = rest_.next();
    }

    bool is_number() const
    {
        return !is_end_ && next_.is_code() &&
               (::is_number(next_.code().form) || next_.code().field == field::year_with_era);
    }
    bool is_literal() const { return !is_end_ && !next_.is_code(); }
    bool is_blank() const { return is_literal() && is_space(next_.piece.letter); }
    bool is_digit() const { return is_literal() && '0' <= next_.piece.letter && next_.piece.letter <= '9'; }

    /// Whether the text can go on with a character. What is not known can be anything.
    bool can_begin_with(char letter) const
    {
        if (is_end_)
            return false;
        if (is_literal())
            return lower(next_.piece.letter) == lower(letter) || (is_blank() && is_space(letter));
        return !is_number() || letter == ' ' || letter == '-' || ('0' <= letter && letter <= '9');
    }

    /// What stands behind that.
    following after() { return following(rest_); }

private:
    piece_stream rest_;
    coded_piece next_;
    bool is_end_ = true;
};

/// The names that a reader knows for a field.
struct known_names {
    const ka_language_texts& language;
    field named;

    std::size_t count() const { return named == field::month ? 12 : named == field::weekday ? 7 : 2; }

    std::string_view own(std::size_t index, bool is_full) const
    {
        switch (named) {
            case field::month:
                return *(is_full ? language.month_names : language.month_abbreviations)[index];
            case field::weekday:
                return *(is_full ? language.weekday_names : language.weekday_abbreviations)[index];
            case field::half_of_day:
                return **(index == 0 ? language.am : language.pm);
            default:
                return **(index == 0 ? language.ad : language.bc);
        }
    }

    std::string_view in_english(std::size_t index, bool is_full) const
    {
        switch (named) {
            case field::month:
                return (is_full ? english.month_names : english.month_abbreviations)[index];
            case field::weekday:
                return (is_full ? english.weekday_names : english.weekday_abbreviations)[index];
            case field::half_of_day:
                return index == 0 ? english.am : english.pm;
            default:
                return index == 0 ? english.ad : english.bc;
        }
    }

    bool is_empty() const { return own(0, true).empty() && own(1, true).empty(); }
};

/// Whether a name can be taken for another one that is known.
bool is_mistaken(std::string_view name, std::size_t index, std::string_view other, std::size_t other_index,
                 const following& next)
{
    other = without_blanks(other);
    if (other.empty() || !goes_on(other, name))
        return false;
    return other.size() == name.size() ? index != other_index : next.can_begin_with(other[name.size()]);
}

bool are_names_read_one_way(const known_names& names, bool is_full, const following& next)
{
    for (std::size_t index = 0; index < names.count(); ++index) {
        const std::string_view name = without_blanks(names.own(index, is_full));
        if (name.empty() || is_space(name.front()))
            return false;
        for (std::size_t other = 0; other < names.count(); ++other)
            for (const bool is_full_other : {false, true})
                if (is_mistaken(name, index, names.own(other, is_full_other), other, next) ||
                    is_mistaken(name, index, names.in_english(other, is_full_other), other, next))
                    return false;
    }
    return true;
}

bool is_code_read_one_way(const ka_format_code& code, const ka_language_texts& language, following next)
{
    const known_names names = {language, code.field};
    const bool is_name = code.form == ka_format_form::name || code.form == ka_format_form::abbreviation;
    const bool has_number_behind = next.is_number() || next.is_digit();
    switch (code.field) {
        case field::zone:
            return next.is_blank() || !next.can_begin_with('0');
        case field::half_of_day:
            return names.is_empty() || are_names_read_one_way(names, true, next);
        case field::year_with_era:
            // Behind a late year, a text such as " B.C." would be taken for its era.
            return !has_number_behind && (!next.can_begin_with('0')) &&
                   (!next.is_blank() || next.after().is_number()) &&
                   are_names_read_one_way({language, field::era}, true, next);
        case field::year:
        case field::year_of_era:
        case field::century:
            return !has_number_behind && !next.can_begin_with('0');
        default:
            break;
    }
    if (is_name)
        return are_names_read_one_way(names, code.form == ka_format_form::name, next);
    // A blank in front of the number may have been read with those in front of it.
    return code.form != ka_format_form::two_places || !has_number_behind;
}

}

ka_told_fields fields_told(std::string_view format, const ka_language_texts& language)
{
    ka_told_fields told = 0;
    for (piece_stream pieces(format, language); !pieces.is_at_end();) {
        const coded_piece next = pieces.next();
        if (next.is_code() && !stands_for_pieces(next.code()))
            told |= ka_field_bit(next.code().field);
    }
    return told;
}

bool is_read_one_way(std::string_view format, const ka_language_texts& language, bool has_date)
{
    for (piece_stream pieces(format, language); !pieces.is_at_end();) {
        const coded_piece next = pieces.next();
        // An alternate number of a layout is no code to read by.
        const bool is_unknown = next.piece.is_code && !next.is_code() && next.piece.letter < ' ';
        if (next.piece.is_padded || next.piece.is_cut_off || is_unknown)
            return false;
        if (!next.is_code() || stands_for_pieces(next.code()))
            continue;
        const ka_format_need need = next.code().need;
        const bool is_of_date =
            need == ka_format_need::date || need == ka_format_need::month || need == ka_format_need::day;
        if (is_of_date && !has_date)
            return false;
        if (next.code().field == field::zone && !has_date)
            continue;
        const following behind(pieces);
        const bool is_unpadded = next.piece.letter < ' ';
        if (is_unpadded && (behind.is_number() || behind.is_digit()))
            return false;
        if (!is_code_read_one_way(next.code(), language, behind))
            return false;
    }
    return true;
}
