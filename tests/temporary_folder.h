// A folder of a test's own, removed with everything in it.
#pragma once

#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <string_view>

#include "platform/paths.h"

namespace hullrider {

class TemporaryFolder {
public:
    TemporaryFolder()
        : path_(std::filesystem::temp_directory_path() / ("hullrider-" + std::to_string(std::random_device{}()))) {
        std::filesystem::create_directories(path_);
    }
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::filesystem::path& Path() const { return path_; }
    std::string Text() const { return Utf8FromPath(path_); }

    // The full path of a file or folder below with the separators of this system; `name` is UTF-8 with forward slashes.
    std::string At(std::string_view name) const { return Utf8FromPath((path_ / PathFromUtf8(name)).make_preferred()); }

    // Creates a file below, its folders included, and returns its full path.
    std::string Write(std::string_view name, std::string_view text) const {
        const std::filesystem::path file = path_ / PathFromUtf8(name);
        std::filesystem::create_directories(file.parent_path());
        std::ofstream(file, std::ios::binary) << text;
        return At(name);
    }

    std::string Read(std::string_view name) const {
        std::ifstream in(path_ / PathFromUtf8(name), std::ios::binary);
        return {std::istreambuf_iterator<char>(in), {}};
    }

    bool Has(std::string_view name) const { return std::filesystem::exists(path_ / PathFromUtf8(name)); }

private:
    std::filesystem::path path_;
};

}  // namespace hullrider
