// TZ strings: any text is read or refused at the same character as every other
// text that begins so far alike; what is read means what the plain rules say.
#include "plain_zone.h"

namespace {

/// The character at which a text is refused, or -1.
int refused_at(const std::string& text)
{
    const ka_zone_store store(std::vector<ka_zone_file>{});
    try {
        store.posix_zone(text);
        return -1;
    } catch (const ka_time_varnel_error& error) {
        const std::string message = error.what();
        const std::string mark = " ), at( ";
        const std::size_t place = message.rfind(mark);
        agree(error.code() == ka_failure, "the code of a refused text");
        agree(place != std::string::npos, "a place in the message");
        return std::atoi(message.c_str() + place + mark.size());
    }
}

void check_text(const std::string& text)
{
    const int at = refused_at(text);
    if (at < 0)
        return;
    const auto place = static_cast<std::size_t>(at);
    agree(place <= text.size(), "a place in the text");
    // What follows has no bearing, and what comes before is not wrong yet.
    if (place < text.size())
        agree(refused_at(text.substr(0, place + 1)) == at, "the first wrong character");
    const int before = refused_at(text.substr(0, place));
    agree(before == -1 || before == at, "the characters before the first wrong one");
}

/// Pieces of which most texts are nearly right.
std::string any_text(input& in)
{
    constexpr const char* pieces[] = {"EST",    "<+03>", "5", "-",   "+",  ":30", ",",
                                      "M3.2.0", "J60",   "/", "167", "25", "0",   "EDT",
                                      "M",      ".",     "J", "365", "<",  ">",   " "};
    std::string text;
    while (!in.is_empty() && text.size() < 100)
        text += pieces[in.take<unsigned char>() % std::size(pieces)];
    return text;
}

void check_meaning(input& in)
{
    const plain_rules rules = plain_rules::any(in);
    const ka_zone_store store(std::vector<ka_zone_file>{});
    const ka_time_zone& zone = store.posix_zone(rules.text());
    agree(&store.posix_zone(rules.text()) == &zone, "a zone that is loaded");
    for (int count = 0; count < 20 && !in.is_empty(); ++count) {
        const int year = in.one_in(4) ? in.between(1, 30000) : in.between(1900, 2500);
        const bool is_start = in.one_in(2);
        const plain_point& point = is_start ? rules.start : rules.end;
        const long long near = point.in(year) - (is_start ? rules.standard : rules.summer).east;
        const long long time = near + (in.one_in(4) ? in.between(-20000000, 20000000) : in.between(-1, 1));
        agree(state_at(zone, time) == rules.at(time), "rules of a text");
    }
}

}

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* bytes, std::size_t size)
{
    input in(bytes, size);
    switch (in.between(0, 2)) {
        case 0:
            check_text(in.rest());
            break;
        case 1:
            check_text(any_text(in));
            break;
        default:
            check_meaning(in);
    }
    return 0;
}
