#include "files.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <system_error>

namespace platform {

namespace fs = std::filesystem;

namespace {

struct closer {
    void operator()(std::FILE* file) const noexcept { std::fclose(file); }
};

}

file_state read_file(const std::string& path, std::size_t most, std::string& bytes)
{
    bytes.clear();
    // Only a plain file comes to an end for certain.
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    if (status.type() == fs::file_type::not_found)
        return file_state::absent;
    if (error)
        return file_state::unreadable;
    if (!fs::is_regular_file(status))
        return file_state::irregular;
    const std::unique_ptr<std::FILE, closer> file(std::fopen(path.c_str(), "rb"));
    if (file == nullptr)
        return file_state::unreadable;
    // The pieces are as large as what is read of them, so that no second copy is made.
    std::setvbuf(file.get(), nullptr, _IONBF, 0);
    std::size_t wanted = std::min<std::size_t>(most, 4096);
    while (true) {
        const std::size_t size = bytes.size();
        bytes.resize(size + wanted);
        const std::size_t count = std::fread(bytes.data() + size, 1, wanted, file.get());
        bytes.resize(size + count);
        if (count < wanted)
            return std::ferror(file.get()) != 0 ? file_state::unreadable : file_state::read;
        if (bytes.size() == most)
            return std::fgetc(file.get()) == EOF ? file_state::read : file_state::too_long;
        wanted = std::min(most - bytes.size(), bytes.size());
    }
}

bool is_folder(const std::string& path) noexcept
{
    std::error_code error;
    return fs::is_directory(path, error);
}

std::vector<std::string> files_below(const std::string& folder)
{
    std::vector<std::string> names;
    std::error_code error;
    auto entry =
        fs::recursive_directory_iterator(folder, fs::directory_options::skip_permission_denied, error);
    for (const fs::recursive_directory_iterator end; !error && entry != end; entry.increment(error)) {
        std::error_code unknown;
        if (entry->is_regular_file(unknown))
            names.push_back(entry->path().lexically_relative(folder).generic_string());
    }
    return names;
}

std::string link_target(const std::string& path)
{
    std::error_code error;
    const fs::path target = fs::read_symlink(path, error);
    return error ? std::string() : target.generic_string();
}

}
