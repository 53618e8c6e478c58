// Texts that programs exchange: written and read back, and texts of any bytes
// against plain readers.
#include <algorithm>
#include <optional>
#include <string>
#include <string_view>

#include <time/exchange.h>

#include "../tests/support/plain_calendar.h"
#include "values.h"
#include "wide.h"

namespace {

using std::string, std::string_view;

constexpr long long million = 1000000;

int number_in(string_view digits)
{
    int number = 0;
    for (const char digit : digits)
        number = 10 * number + (digit - '0');
    return number;
}

/// Whether a text has a shape: 'd' stands for a digit, 'T' and 'Z' for any case or a blank.
bool has_shape(string_view text, string_view shape)
{
    if (text.size() != shape.size())
        return false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char wanted = shape[i], found = text[i];
        const bool fits = wanted == 'd'   ? '0' <= found && found <= '9'
                          : wanted == 'T' ? found == 'T' || found == 't' || found == ' '
                                          : found == wanted;
        if (!fits)
            return false;
    }
    return true;
}

/// A date of ISO 8601 as a day number.
std::optional<int> plain_date(string_view text)
{
    const bool is_long = !text.empty() && (text[0] == '-' || text[0] == '+');
    const std::size_t digits = is_long ? 6 : 4, start = is_long;
    if (text.size() != start + digits + 6 || !has_shape(text.substr(start + digits), "-dd-dd") ||
        !has_shape(text.substr(start, digits), string(digits, 'd')))
        return std::nullopt;
    int year = number_in(text.substr(start, digits));
    if (text[0] == '-')
        year = year == 0 ? -99999 : -year;
    const int month = number_in(text.substr(start + digits + 1, 2)),
              day = number_in(text.substr(start + digits + 4));
    const int known = year - (year < 1);
    if (!is_year(known) || month < 1 || month > 12 || day < 1 || day > month_length(month, is_leap(year)))
        return std::nullopt;
    return ka_date::calc_julian_day(static_cast<unsigned short>(month), static_cast<unsigned short>(day),
                                    static_cast<short>(known));
}

/// The microseconds of an instant from day number 0.
std::optional<int128> plain_rfc3339(string_view text)
{
    const std::size_t date_end = text.find_first_of("Tt ");
    if (date_end == text.npos)
        return std::nullopt;
    const auto day = plain_date(text.substr(0, date_end));
    const string_view clock = text.substr(date_end).substr(0, 9);
    if (!day || !has_shape(clock, "Tdd:dd:dd"))
        return std::nullopt;
    const int hour = number_in(clock.substr(1, 2)), minute = number_in(clock.substr(4, 2)),
              second = number_in(clock.substr(7, 2));
    if (hour > 23 || minute > 59 || second > 60)
        return std::nullopt;
    string_view rest = text.substr(date_end + 9);
    string fraction;
    if (rest.starts_with('.')) {
        const std::size_t end = std::min(rest.find_first_not_of("0123456789", 1), rest.size());
        fraction = rest.substr(1, end - 1);
        if (fraction.empty())
            return std::nullopt;
        rest = rest.substr(end);
    }
    fraction.resize(6, '0');
    int offset = 0;
    if (rest != "Z" && rest != "z") {
        if (!has_shape(rest, "+dd:dd") && !has_shape(rest, "-dd:dd"))
            return std::nullopt;
        const int hours = number_in(rest.substr(1, 2)), minutes = number_in(rest.substr(4));
        if (hours > 23 || minutes > 59)
            return std::nullopt;
        offset = (rest[0] == '-' ? -60 : 60) * (hours * 60 + minutes);
    }
    const int of_day = (hour * 60 + minute) * 60 + std::min(second, 59);
    return (*day * 86400ll + of_day - offset) * million + number_in(fraction);
}

int128 total(const ka_time_period& period)
{
    return int128{period.whole_seconds()} * million + period.microseconds();
}

/// What any reader of any text keeps to.
template <typename Result>
void check_result(const Result& result, string_view text)
{
    agree(result.end() <= text.size(), "end of what was read");
    if (result) {
        agree(result.end() == text.size(), "all of a text is read");
        return;
    }
    const ka_read_failure& failure = result.failure();
    agree(failure.position() + failure.length() <= text.size(), "place of a failure");
    agree(failure.length() > 0 || failure.position() == text.size(), "what stood there");
}

bool is_same(const ka_told_moment& a, const ka_told_moment& b)
{
    return a.moment == b.moment && a.offset == b.offset && a.is_offset_known == b.is_offset_known;
}

template <typename Value>
bool is_same(const Value& a, const Value& b)
{
    return a == b;
}

/// What any reader of any text keeps to, and of the start of a text: what was
/// read is what that part alone says.
template <typename Read>
void check_reader(string_view text, Read read)
{
    const auto whole = read(text, ka_extent::all);
    check_result(whole, text);
    const auto start = read(text, ka_extent::start);
    if (!start) {
        agree(!whole, "a text is read whose start is not");
        return;
    }
    agree(start.end() <= text.size(), "end of a start");
    const auto part = read(text.substr(0, start.end()), ka_extent::all);
    agree(part && is_same(*part, *start), "a start is read as if nothing stood behind");
    agree(!whole || is_same(*whole, *start), "a text and its start");
}

/// Zeros in front of a number, so many that it is read digit by digit, change nothing.
void check_seconds(const string& text)
{
    if (text.empty() || text[0] < '0' || text[0] > '9')
        return;
    const auto read = ka_read_unix_seconds(text), longer = ka_read_unix_seconds(string(16, '0') + text);
    agree(read.has_value() == longer.has_value(), "zeros in front of seconds");
    if (read)
        agree(read->utc_time_and_date() == longer->utc_time_and_date(),
              "what seconds with zeros in front say");
}

void check_readers(const string& text)
{
    const auto rfc3339 = ka_read_rfc3339(text);
    const auto plain = plain_rfc3339(text);
    agree(rfc3339.has_value() == plain.has_value(), "a text of RFC 3339");
    if (plain)
        agree(total(rfc3339->moment.utc_time_and_date()) == *plain, "what a text of RFC 3339 says");
    const auto date = ka_read_iso_date(text);
    const auto plain_day = plain_date(text);
    agree(date.has_value() == plain_day.has_value(), "a date of ISO 8601");
    if (plain_day)
        agree(date->julian_day() == *plain_day, "what a date of ISO 8601 says");
    check_reader(text, [](string_view all, ka_extent extent) { return ka_read_rfc3339(all, extent); });
    check_reader(text, [](string_view all, ka_extent extent) {
        return ka_read_rfc3339(all, ka_time_zone::pacific(), ka_local_choice::later, extent);
    });
    check_reader(text, ka_read_rfc5322);
    check_reader(text, ka_read_http_date);
    check_reader(text, ka_read_iso_date);
    check_reader(text, ka_read_iso_week_date);
    check_reader(text, ka_read_iso_ordinal_date);
    check_reader(text, ka_read_iso_time);
    check_reader(text, ka_read_iso_duration);
    check_reader(text, ka_read_duration);
    check_reader(text, ka_read_unix_seconds);
    check_seconds(text);
}

/// What is written reads back as the same.
string check_written(input& in)
{
    const own_zone own(in);
    ka_time_and_date moment(any_time(in), any_date(in), ka_time_zone::utc());
    if (in.one_in(8))
        moment.utc_time_and_date(ka_time_period(in.take<long long>()));
    const ka_time_period instant = moment.utc_time_and_date();
    const string seconds = ka_unix_seconds(moment);
    agree(ka_read_unix_seconds(seconds).value().utc_time_and_date() == instant, "seconds since 1970");
    const ka_time_period apart = instant - ka_time_period(in.take<long long>());
    const string duration = ka_iso_duration(apart);
    agree(ka_read_iso_duration(duration).value() == apart, "a duration");
    agree(ka_read_duration(duration).value() == apart, "a duration, read as people's");
    if (in.one_in(2))
        moment.time_zone(own.zone);
    string texts[] = {seconds, duration, "", "", "", "", ""};
    // What is out of the range, and a rule that refuses, has no text.
    result_of([&] {
        texts[2] = ka_rfc3339(moment);
        agree(ka_read_rfc3339(texts[2]).value().moment == moment, "RFC 3339");
        agree(ka_rfc3339(moment, ka_fraction::microseconds).size() >= texts[2].size(), "six digits");
    });
    result_of([&] {
        texts[3] = ka_rfc5322(moment);
        agree(ka_read_rfc5322(texts[3]).value().moment == moment - ka_time_period(0, instant.microseconds()),
              "RFC 5322");
    });
    result_of([&] {
        texts[4] = ka_http_date(moment);
        agree(ka_read_http_date(texts[4]).value() == moment - ka_time_period(0, instant.microseconds()),
              "HTTP");
    });
    const ka_date date = any_date(in);
    const ka_time time = any_time(in);
    texts[5] = in.one_in(2) ? ka_iso_week_date(date) : ka_iso_ordinal_date(date);
    texts[6] = in.one_in(2) ? ka_iso_date(date) : ka_iso_time(time);
    agree(ka_read_iso_time(ka_iso_time(time)).value() == time, "time of ISO 8601");
    agree(ka_read_iso_date(ka_iso_date(date)).value() == date, "date of ISO 8601");
    agree(ka_read_iso_week_date(ka_iso_week_date(date)).value() == date, "week date of ISO 8601");
    agree(ka_read_iso_ordinal_date(ka_iso_ordinal_date(date)).value() == date, "ordinal date of ISO 8601");
    return texts[in.between(0, 6)];
}

/// A sum of parts, as 128 bits add them up.
void check_duration(input& in)
{
    const struct {
        const char* unit;
        long long length;
    } units[] = {{"W", 604800}, {"D", 86400}, {"H", 3600}, {"M", 60}, {"S", 1}};
    string text = in.one_in(2) ? "-P" : "P";
    const int sign = text[0] == '-' ? -1 : 1;
    int128 sum = 0, most = 0;
    for (int i = 0; i < 5; ++i) {
        if (i == 2)
            text += 'T';
        if (in.one_in(2) && !(i == 4 && text.back() == 'T'))
            continue;
        const bool is_negative = in.one_in(4);
        const unsigned long long number = in.take<unsigned long long>() >> in.between(0, 63);
        if (is_negative)
            text += '-';
        text += std::to_string(number);
        text += units[i].unit;
        const int128 part = int128{number} * units[i].length;
        sum += is_negative ? -sign * part : sign * part;
        most = std::max({most, part, sum < 0 ? -sum : sum});
    }
    if (text.back() == 'T')
        return;
    constexpr int128 limit = 1ull << 63;
    const auto read = ka_read_iso_duration(text);
    // 64 bits have to hold each part, and the sum on the way.
    if (most < limit)
        agree(read.has_value() && total(read.value()) == sum * million, "a sum of parts");
    else
        agree(!read.has_value() || total(read.value()) == sum * million, "a sum of parts that is too large");
}

/// A few bytes changed, added or left out.
void spoil(string& text, input& in)
{
    static const string_view common = "0123456789-+:.TZWtz PDHMS,()";
    for (int count = in.between(0, 3); count > 0 && !text.empty(); --count) {
        const auto place = static_cast<std::size_t>(in.between(0, static_cast<int>(text.size()) - 1));
        const char character =
            in.one_in(4) ? in.take<char>() : common[in.take<unsigned char>() % common.size()];
        switch (in.between(0, 3)) {
            case 0:
                text.insert(place, 1, character);
                break;
            case 1:
                text.erase(place, 1);
                break;
            default:
                text[place] = character;
        }
    }
}

}

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* bytes, std::size_t size)
{
    input in(bytes, size);
    if (in.one_in(8)) {
        check_readers(in.rest());
        return 0;
    }
    check_duration(in);
    string text = check_written(in);
    check_readers(text);
    for (int count = 0; count < 4; ++count) {
        string spoilt = text;
        spoil(spoilt, in);
        check_readers(spoilt);
    }
    return 0;
}
