#include "platform/folder.h"

#include <filesystem>

namespace hullrider {

std::string JoinPath(std::string_view folder, std::string_view name) {
    constexpr char kSeparator = static_cast<char>(std::filesystem::path::preferred_separator);
    const bool separated = !folder.empty() && (folder.back() == '/' || folder.back() == kSeparator);
    std::string path;
    path.reserve(folder.size() + 1 + name.size());
    path += folder;
    if (!separated) path += kSeparator;
    path += name;
    return path;
}

}  // namespace hullrider
