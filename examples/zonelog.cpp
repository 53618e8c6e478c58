// Rewrites the stamps of a log, at the start of each line, as local time:
// zonelog [--from FORM] [--in ZONE] ZONE FORMAT [FILE]. A zone is one of the
// world's, or a built-in one. Stamps are seconds since 1970, unless --from says
// rfc3339 or the format that they have; where they tell no offset, --in says
// whose clocks they are of, if not universal time.
//
//     $ echo '1720130400.25 door opened' | zonelog Europe/Berlin '%d %b %T.%q'
//     05 Jul 00:00:00.250000 door opened
//     $ echo '2024-07-04T18:00:00-04:00 door opened' | zonelog --from rfc3339 Europe/Berlin '%d %b %T'
//     05 Jul 00:00:00 door opened
//     $ echo '04/Jul/2024 18:00 door opened' |
//         zonelog --from '%d/%b/%Y %H:%M' --in America/New_York Europe/Berlin '%d %b %T'
//     05 Jul 00:00:00 door opened

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstddef>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <functional>
#include <ios>
#include <iostream>
#include <iterator>
#include <new>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

#include <time/exchange.h>
#include <time/read.h>
#include <time/time_varnel.h>
#include <time/world.h>

#include "zones.h"

namespace {

/// What reads the stamp that a line begins with.
using stamp_reader = std::function<ka_read_result<ka_time_and_date>(std::string_view)>;

/// By what stands behind --from. Stamps without an offset are of the clocks of a zone.
stamp_reader reader_of(const std::string& form, const ka_time_zone& there)
{
    constexpr ka_local_choice choice = ka_local_choice::compatible;
    constexpr ka_extent extent = ka_extent::start;
    if (form == "seconds")
        return [](std::string_view line) { return ka_read_unix_seconds(line, extent); };
    if (form == "rfc3339")
        return [&there](std::string_view line) { return ka_read_rfc3339(line, there, choice, extent); };

    const ka_pattern pattern(form);
    // A refusal of no text at all has no place in it: one that has is of the pattern.
    const auto empty = ka_read_time_and_date("", pattern, there);
    if (!empty && empty.failure().position() + empty.failure().length() > 0)
        empty.failure().raise();
    return [&there, pattern](std::string_view line) {
        return ka_read_time_and_date(line, pattern, there, choice, extent);
    };
}

/// Standard output, in large blocks.
class output {
public:
    output() : block_(1 << 16) {}

    void write(std::string_view text)
    {
        if (text.size() > room())
            send_all();
        if (text.size() > room())
            return send(text);
        std::memcpy(end(), text.data(), text.size());
        used_ += text.size();
    }
    /// The text of a moment, straight into the block; false where that has no room for it.
    bool write(const ka_time_and_date& moment, const ka_pattern& pattern)
    {
        const auto written = pattern.to_chars(end(), end() + room(), moment);
        if (written.ec != std::errc())
            return false;
        used_ = static_cast<std::size_t>(written.ptr - block_.data());
        return true;
    }
    void flush()
    {
        send_all();
        std::fflush(stdout);
    }
    bool failed() const { return std::ferror(stdout) != 0; }

private:
    char* end() { return block_.data() + used_; }
    std::size_t room() const { return block_.size() - used_; }
    void send_all() { send({block_.data(), std::exchange(used_, 0)}); }
    static void send(std::string_view text) { std::fwrite(text.data(), 1, text.size(), stdout); }

    std::vector<char> block_;
    std::size_t used_ = 0;
};

/// Longer than any stamp that a program prints, so that a log without an end to
/// its first stamp is not held in memory.
constexpr std::size_t longest_stamp = 4096;

/// Whether a stamp can end there: before a blank, a tab or the end of the line.
bool is_end_of_stamp(std::string_view line, std::size_t end)
{
    const std::string_view rest = line.substr(end);
    return end <= longest_stamp && (rest.empty() || rest[0] == ' ' || rest[0] == '\t' || rest == "\r");
}

/// Takes a log in pieces that end anywhere, and lines of any length.
class rewriter {
public:
    rewriter(stamp_reader read, const ka_time_zone& zone, const char* format, output& out)
        : read_(std::move(read)), first_(ka_time_and_date::min_time(), ka_time_and_date::min_date(), zone),
          last_(ka_time_and_date::max_time(), ka_time_and_date::max_date(), zone), format_(format), out_(out)
    {
        try {
            pattern_.emplace(format);
        } catch (const ka_time_varnel_error&) {
            // Not each format is a pattern: what is no code prints itself.
        }
    }

    /// Gives back the end of a piece, where a line begins that can't be judged
    /// yet; the next piece has to begin with it.
    std::string_view feed(std::string_view piece)
    {
        while (!piece.empty()) {
            const std::size_t newline = piece.find('\n');
            const bool is_whole = newline != piece.npos;
            if (!is_whole && !is_inside_line_ &&
                piece.size() <= longest_stamp + 1) // a carriage return may come
                break;
            const std::size_t size = is_whole ? newline + 1 : piece.size();
            const std::size_t stamp = is_inside_line_ ? 0 : rewrite(piece.substr(0, newline));
            out_.write(piece.substr(stamp, size - stamp));
            is_inside_line_ = !is_whole;
            piece.remove_prefix(size);
        }
        return piece;
    }
    /// The end of the log, which also ends a line.
    void finish(std::string_view line)
    {
        if (!line.empty())
            out_.write(line.substr(rewrite(line)));
        out_.flush();
    }
    void report() const
    {
        std::fprintf(stderr, "zonelog: %llu stamps rewritten, %llu bad, %llu out of range\n", good_, bad_,
                     out_of_range_);
    }

private:
    /// Writes the stamp of a line anew, and returns how much of the line that was.
    std::size_t rewrite(std::string_view line)
    {
        const auto stamp = read_(line);
        if (!stamp || !is_end_of_stamp(line, stamp.end())) {
            ++(!stamp && is_beyond_time(line, stamp.failure()) ? out_of_range_ : bad_);
            return 0;
        }
        ka_time_and_date moment = *stamp;
        if (moment < first_ || moment > last_) {
            ++out_of_range_;
            return 0;
        }
        moment.time_zone(first_.time_zone());
        if (!pattern_ || !out_.write(moment, *pattern_))
            out_.write(moment.to_string(format_));
        ++good_;
        return stamp.end();
    }

    /// Whether a stamp is a number, of more seconds than a moment can have.
    static bool is_beyond_time(std::string_view line, const ka_read_failure& failure)
    {
        return failure.field() == "seconds" && failure.length() > 1 &&
               is_end_of_stamp(line, failure.position() + failure.length());
    }

    stamp_reader read_;
    /// The first and the last moment that the zone has a date for.
    const ka_time_and_date first_, last_;
    const char* format_;
    std::optional<ka_pattern> pattern_;
    output& out_;
    bool is_inside_line_ = false;
    unsigned long long good_ = 0, bad_ = 0, out_of_range_ = 0;
};

/// Feeds what has arrived as it arrives, and sends on all that is ready before
/// it waits for more. Some standard inputs never tell what has arrived: these are
/// read by the byte, and sent on by the line.
void copy(std::streambuf& in, rewriter& log, output& out)
{
    std::vector<char> buffer(1 << 16);
    std::size_t held = 0;
    while (!out.failed() && in.sgetc() != std::streambuf::traits_type::eof()) {
        const auto room = static_cast<std::streamsize>(buffer.size() - held);
        const std::streamsize arrived = in.in_avail();
        const std::streamsize length =
            in.sgetn(buffer.data() + held, std::clamp<std::streamsize>(arrived, 1, room));
        const std::string_view rest = log.feed({buffer.data(), held + static_cast<std::size_t>(length)});
        held = rest.size();
        std::memmove(buffer.data(), rest.data(), held);
        if (in.in_avail() <= 0 && (arrived > 0 || held == 0))
            out.flush();
    }
    log.finish({buffer.data(), held});
}

int run(std::streambuf& in, stamp_reader read, const ka_time_zone& zone, const char* format)
{
    output out;
    rewriter log(std::move(read), zone, format, out);
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

struct arguments {
    const char* form = "seconds";
    const char* there = "utc";
    const char* zone = nullptr;
    const char* format = nullptr;
    /// Null for standard input.
    const char* file = nullptr;
};

bool parse(char** word, arguments& given)
{
    for (; *word != nullptr && std::strncmp(*word, "--", 2) == 0; word += 2) {
        const std::string_view option = *word;
        if ((option != "--from" && option != "--in") || word[1] == nullptr)
            return false;
        (option == "--from" ? given.form : given.there) = word[1];
    }
    for (const char** const each : {&given.zone, &given.format, &given.file})
        if (*word != nullptr)
            *each = *word++;
    return given.format != nullptr && *word == nullptr;
}

int rewrite_file(const arguments& given, stamp_reader read, const ka_time_zone& zone)
{
    // Some runtimes open a folder, and find nothing in it.
    std::error_code unknown;
    if (std::filesystem::is_directory(given.file, unknown)) {
        std::fprintf(stderr, "zonelog: cannot read: %s\n",
                     std::make_error_code(std::errc::is_a_directory).message().c_str());
        return 1;
    }
    std::vector<char> buffer(1 << 16);
    std::filebuf file;
    file.pubsetbuf(buffer.data(), static_cast<std::streamsize>(buffer.size()));
    if (file.open(given.file, std::ios::in | std::ios::binary) == nullptr) {
        std::perror(("zonelog: " + std::string(given.file)).c_str());
        return 1;
    }
    return run(file, std::move(read), zone, given.format);
}

}

int main(int, char** argv)
{
    arguments given;
    if (!parse(argv + 1, given)) {
        std::fputs("usage: zonelog [--from seconds|rfc3339|PATTERN] [--in ZONE] ZONE FORMAT [FILE]\n",
                   stderr);
        return 2;
    }
    const ka_time_zone* const zone = zone_of(given.zone);
    const ka_time_zone* const there = zone == nullptr ? nullptr : zone_of(given.there);
    if (there == nullptr)
        return 2;
    stamp_reader read;
    try {
        read = reader_of(given.form, *there);
    } catch (const ka_time_varnel_error& error) {
        std::fprintf(stderr, "zonelog: no form of stamps: %s\n", error.what());
        return 2;
    }

#ifdef SIGPIPE
    std::signal(SIGPIPE, SIG_IGN); // a closed pipe shows as a failed write
#endif
    std::ios::sync_with_stdio(false); // gives std::cin a buffer, and with it an in_avail
    if (given.file != nullptr)
        return rewrite_file(given, std::move(read), *zone);
    return run(*std::cin.rdbuf(), std::move(read), *zone, given.format);
}
