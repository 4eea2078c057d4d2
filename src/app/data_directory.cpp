#include "app/data_directory.h"

#include <filesystem>

#include "platform/paths.h"

namespace hullrider {

namespace {

#ifdef HULLRIDER_PORTABLE
constexpr bool kPortableBuild = true;
#else
constexpr bool kPortableBuild = false;
#endif

bool IsPortable() {
    std::error_code error;
    return kPortableBuild || std::filesystem::exists(PathFromUtf8(StatePath(ProgramFolder(), "portable.txt")), error);
}

}  // namespace

std::string ChooseDataDirectory(const RunOptions& options) {
    if (options.dataDir) return *options.dataDir;
    if (IsPortable()) return WorkingFolder();
    return StatePath(DocumentsFolder().value_or(WorkingFolder()), "\\Hullrider Radio v1.1");
}

void CreateDataDirectory(const std::string& folder) {
    const std::filesystem::path path = PathFromUtf8(folder);
    std::error_code error;
    if (std::filesystem::is_directory(path, error)) return;
    if (!std::filesystem::create_directory(path, error) && !error) {
        error = std::make_error_code(std::errc::not_a_directory);  // a file of that name is in the way
    }
    if (error) throw std::filesystem::filesystem_error("create_directory", path, error);
}

}  // namespace hullrider
