// Rewrites the stamps of a log, seconds since 1970 at the start of each line,
// as local time: zonelog ZONE FORMAT [FILE]. The zone is one of the world's, or a
// built-in one.
//
//     $ echo '1720130400.25 door opened' | zonelog Europe/Berlin '%d %b %T.%q'
//     05 Jul 00:00:00.250000 door opened

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstddef>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <ios>
#include <iostream>
#include <iterator>
#include <new>
#include <stdexcept>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include <time/time_varnel.h>
#include <time/world.h>

#include "zones.h"

namespace {

constexpr bool is_digit(char c) { return c >= '0' && c <= '9'; }

/// Reads "-12.5" and its like; false for anything else. Digits of the fraction
/// beyond the sixth are cut, and seconds stop counting far outside the dates
/// of the library, but before its 32 bits of days run over.
bool read_stamp(std::string_view text, ka_time_period& since_epoch)
{
    constexpr long long beyond_all_dates = 10'000'000'000'000;
    const bool negative = !text.empty() && text[0] == '-';
    std::size_t at = negative;
    if (at == text.size() || !is_digit(text[at]))
        return false;
    long long seconds = 0;
    for (; at < text.size() && is_digit(text[at]); ++at)
        seconds = std::min(seconds * 10 + (text[at] - '0'), beyond_all_dates);

    int microseconds = 0;
    if (at < text.size() && text[at] == '.') {
        const std::size_t fraction = ++at;
        int unit = 100000;
        for (; at < text.size() && is_digit(text[at]); ++at, unit /= 10)
            microseconds += unit * (text[at] - '0');
        if (at == fraction)
            return false;
    }
    const int sign = negative ? -1 : 1;
    since_epoch = ka_time_period(sign * seconds, sign * microseconds);
    return at == text.size();
}

/// Standard output, in large blocks.
class output {
public:
    void write(std::string_view text)
    {
        if (buffer_.size() + text.size() > block)
            flush();
        if (text.size() > block)
            send(text);
        else
            buffer_ += text;
    }
    void flush()
    {
        send(buffer_);
        std::fflush(stdout);
        buffer_.clear();
    }
    bool failed() const { return std::ferror(stdout) != 0; }

private:
    static constexpr std::size_t block = 1 << 16;
    static void send(std::string_view text) { std::fwrite(text.data(), 1, text.size(), stdout); }
    std::string buffer_;
};

/// Longer than any number that a program prints, so that a log without an end to
/// its first digits is not held in memory.
constexpr std::size_t longest_stamp = 4096;

/// Takes a log in pieces that end anywhere. Only a stamp is ever held back, so
/// a line can have any length.
class rewriter {
public:
    rewriter(const ka_time_zone& zone, const char* format, output& out)
        : first_(ka_time_and_date::min_time(), ka_time_and_date::min_date(), zone),
          last_(ka_time_and_date::max_time(), ka_time_and_date::max_date(), zone), format_(format), out_(out)
    {}

    void feed(std::string_view piece)
    {
        while (!piece.empty())
            piece.remove_prefix(behind_stamp_ ? pass(piece) : collect(piece));
    }
    /// The end of the log, which also ends a stamp.
    void finish()
    {
        if (!stamp_.empty())
            judge('\n');
        out_.flush();
    }
    void report() const
    {
        std::fprintf(stderr, "zonelog: %llu stamps rewritten, %llu bad, %llu out of range\n", good_, bad_,
                     out_of_range_);
    }

private:
    /// Copies the rest of a line.
    std::size_t pass(std::string_view piece)
    {
        const std::size_t newline = piece.find('\n');
        behind_stamp_ = newline == std::string_view::npos;
        const std::size_t length = behind_stamp_ ? piece.size() : newline + 1;
        out_.write(piece.substr(0, length));
        return length;
    }

    /// Gathers a stamp, up to the first byte that has no place in one. A
    /// carriage return has one before the newline only, which comes later.
    std::size_t collect(std::string_view piece)
    {
        const auto* end = std::find_if(piece.begin(), piece.end(), [](char c) {
            return !is_digit(c) && c != '.' && c != '-' && c != '\r';
        });
        stamp_.append(piece.begin(), end);
        if (end != piece.end())
            judge(*end);
        else if (stamp_.size() > longest_stamp + 1) // with a carriage return
            pass_bad_stamp();
        return static_cast<std::size_t>(end - piece.begin());
    }

    void judge(char behind)
    {
        std::string_view text = stamp_;
        if (behind == '\n' && text.ends_with('\r'))
            text.remove_suffix(1);
        const bool ended = behind == ' ' || behind == '\t' || behind == '\n';
        ka_time_period since_epoch;
        if (!ended || text.size() > longest_stamp || !read_stamp(text, since_epoch))
            return pass_bad_stamp();
        rewrite(text, since_epoch);
        out_.write(std::string_view(stamp_).substr(text.size()));
        stamp_.clear();
        behind_stamp_ = true;
    }

    void pass_bad_stamp()
    {
        ++bad_;
        out_.write(stamp_);
        stamp_.clear();
        behind_stamp_ = true;
    }

    void rewrite(std::string_view text, const ka_time_period& since_epoch)
    {
        ka_time_and_date moment(since_epoch);
        if (moment < first_ || moment > last_) {
            ++out_of_range_;
            out_.write(text);
            return;
        }
        moment.time_zone(first_.time_zone());
        ++good_;
        out_.write(moment.to_string(format_));
    }

    /// The first and the last moment that the zone has a date for.
    const ka_time_and_date first_, last_;
    const char* format_;
    output& out_;
    std::string stamp_;
    bool behind_stamp_ = false;
    unsigned long long good_ = 0, bad_ = 0, out_of_range_ = 0;
};

/// Feeds what has arrived as it arrives, and sends on all that is ready before
/// it waits for more. Some standard inputs never tell what has arrived: these are
/// read by the byte, and sent on by the line.
void copy(std::streambuf& in, rewriter& log, output& out)
{
    std::vector<char> buffer(1 << 16);
    const auto room = static_cast<std::streamsize>(buffer.size());
    while (!out.failed() && in.sgetc() != std::streambuf::traits_type::eof()) {
        const std::streamsize arrived = in.in_avail();
        const std::streamsize length = in.sgetn(buffer.data(), std::clamp<std::streamsize>(arrived, 1, room));
        log.feed({buffer.data(), static_cast<std::size_t>(length)});
        if (in.in_avail() <= 0 && (arrived > 0 || buffer[0] == '\n'))
            out.flush();
    }
    log.finish();
}

int run(std::streambuf& in, const ka_time_zone& zone, const char* format)
{
    output out;
    rewriter log(zone, format, out);
    const auto fail = [&](const std::string& message) {
        out.flush();
        std::fprintf(stderr, "zonelog: %s\n", message.c_str());
        return 1;
    };
    try {
        copy(in, log, out);
    } catch (const std::ios_base::failure& error) {
        return fail("cannot read: " + error.code().message());
    } catch (const std::bad_alloc&) {
        return fail("no memory for a stamp in this format");
    } catch (const std::length_error&) {
        return fail("no memory for a stamp in this format");
    }
    if (out.failed()) {
        if (errno != EPIPE)
            std::perror("zonelog: cannot write");
        return 1;
    }
    log.report();
    return 0;
}

/// Null, with a message, where there is no such zone.
const ka_time_zone* zone_of(const char* name)
{
    if (const named_zone* const built_in = find_zone(name))
        return &built_in->zone();
    try {
        return &ka_zone(name);
    } catch (const ka_time_varnel_error& error) {
        std::fprintf(stderr, "zonelog: %s; the built-in zones are", error.what());
        for (const named_zone& each : zones)
            std::fprintf(stderr, " %s", each.name);
        std::fputc('\n', stderr);
        return nullptr;
    }
}

}

int main(int argc, char** argv)
{
    if (argc != 3 && argc != 4) {
        std::fputs("usage: zonelog ZONE FORMAT [FILE]\n", stderr);
        return 2;
    }
    const ka_time_zone* const zone = zone_of(argv[1]);
    if (zone == nullptr)
        return 2;

#ifdef SIGPIPE
    std::signal(SIGPIPE, SIG_IGN); // a closed pipe shows as a failed write
#endif
    std::ios::sync_with_stdio(false); // gives std::cin a buffer, and with it an in_avail
    std::vector<char> buffer(1 << 16);
    // Some runtimes open a folder, and find nothing in it.
    std::error_code unknown;
    if (argc == 4 && std::filesystem::is_directory(argv[3], unknown)) {
        std::fprintf(stderr, "zonelog: cannot read: %s\n",
                     std::make_error_code(std::errc::is_a_directory).message().c_str());
        return 1;
    }
    std::filebuf file;
    file.pubsetbuf(buffer.data(), static_cast<std::streamsize>(buffer.size()));
    if (argc == 4 && file.open(argv[3], std::ios::in | std::ios::binary) == nullptr) {
        std::perror(("zonelog: " + std::string(argv[3])).c_str());
        return 1;
    }
    return run(argc == 4 ? file : *std::cin.rdbuf(), *zone, argv[2]);
}
