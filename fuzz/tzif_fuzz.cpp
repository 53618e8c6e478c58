// tz files: any bytes are read or refused; those of a right file, of any version,
// mean what its list of changes and its rules say, read and set.
#include "../tests/support/tzif_bytes.h"
#include "plain_zone.h"

namespace {

using bytes_of_file = tzif_bytes;

const ka_time_zone& load(const ka_zone_store& store) { return store.zone("Zone"); }

ka_zone_store store_of(const std::string& bytes)
{
    return ka_zone_store(std::vector<ka_zone_file>{{"Zone", bytes}});
}

/// Whatever they are, they do no harm.
void check_any_bytes(const std::string& bytes, long long time)
{
    const ka_zone_store store = store_of(bytes);
    store.names();
    const std::string code = result_of([&] {
        const ka_time_zone& zone = load(store);
        const plain_state first = state_at(zone, time);
        agree(first == state_at(load(store), time), "a zone that is loaded");
        ka_time_and_date moment(ka_time(2, 30, 0), ka_date(3, 31, 2024), zone);
        moment += ka_time_period(1);
    });
    agree(code.empty() || code == "failure", "the code of a damaged file");
}

struct plain_zone {
    bytes_of_file file;
    bool has_rules = false;
    plain_rules rules;

    explicit plain_zone(input& in)
    {
        constexpr char versions[] = {'\0', '2', '3', '4'};
        constexpr const char* names[] = {"ABC", "+03", "-0330", "Five5", "E"};
        constexpr int gaps[] = {1, 3600, 86400, 7 * 86400, 90 * 86400, 400 * 86400};
        file.version = versions[in.between(0, 3)];
        file.types.clear();
        for (int type = in.between(1, 5); type > 0; --type)
            file.types.push_back({in.one_in(3) ? in.between(-89999, 93599) : 1800 * in.between(-24, 24),
                                  in.one_in(2), names[type - 1]});
        long long at = in.one_in(4) && file.version != '\0' ? -in.between(0, 2000000000) * 100ll
                                                            : in.between(-1000000000, 1000000000);
        for (int count = in.between(0, 20); count > 0; --count) {
            file.changes.push_back({at, in.between(0, static_cast<int>(file.types.size()) - 1)});
            at += in.between(1, gaps[in.between(0, 5)]);
        }
        has_rules = file.version != '\0' && in.one_in(2);
        rules = plain_rules::any(in);
        if (has_rules)
            file.footer.insert(1, rules.text());
    }

    plain_state of_type(int number) const
    {
        const bytes_of_file::type& type = file.types[static_cast<std::size_t>(number)];
        return {type.east, type.is_dst, type.name};
    }

    /// The rules take over at the first change that they tell after the last of the list.
    bool is_ruled(long long time) const
    {
        if (!has_rules)
            return false;
        if (file.changes.empty())
            return true;
        return rules.change_between(file.changes.back().at, time);
    }

    plain_state at(long long time) const
    {
        if (is_ruled(time))
            return rules.at(time);
        int type = 0;
        for (const auto& change : file.changes)
            if (change.at <= time)
                type = change.type;
        return of_type(type);
    }

    /// Seconds from local to universal time for a local time before the rules.
    int offset_for(long long local) const
    {
        int type = 0, last = 0;
        for (const auto& change : file.changes) {
            const int before = of_type(last).east, after = of_type(change.type).east;
            last = change.type;
            if (change.at + std::min(before, after) <= local)
                type = change.type;
        }
        return -of_type(type).east;
    }
};

void check_zone(input& in)
{
    const plain_zone plain(in);
    const ka_zone_store store = store_of(plain.file.file());
    const ka_time_zone& zone = load(store);
    for (int count = 0; count < 20 && !in.is_empty(); ++count) {
        long long near = in.between(-1000000000, 1000000000) * 20ll;
        if (!plain.file.changes.empty() && !in.one_in(4)) {
            const auto index = in.take<unsigned char>() % plain.file.changes.size();
            near = plain.file.changes[index].at +
                   (in.one_in(2) ? in.between(-1, 1) : in.between(-200000, 200000));
        }
        agree(state_at(zone, near) == plain.at(near), "changes of a file");

        const bool is_before_rules = !plain.has_rules || (!plain.file.changes.empty() &&
                                                          near < plain.file.changes.back().at - 3 * 86400);
        if (!is_before_rules)
            continue;
        ka_time_and_date local(near);
        local.time_zone(ka_time_zone::utc());
        const ka_time_and_date set(local.time(), local.date(), zone);
        agree(set - local == ka_time_period(plain.offset_for(near)), "a local time set");
    }
}

}

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* bytes, std::size_t size)
{
    input in(bytes, size);
    switch (in.between(0, 2)) {
        case 0:
            check_any_bytes(in.rest(), 1720000000);
            break;
        case 1: {
            // A right file with some bytes wrong, or cut.
            std::string file = plain_zone(in).file.file();
            for (int count = in.between(0, 3); count > 0; --count)
                file[in.take<unsigned short>() % file.size()] = static_cast<char>(in.take<unsigned char>());
            if (in.one_in(4))
                file.resize(in.take<unsigned short>() % file.size());
            check_any_bytes(file, in.between(-1000000000, 1000000000) * 20ll);
            break;
        }
        default:
            check_zone(in);
    }
    return 0;
}
