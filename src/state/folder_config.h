// The two folders of config.json.
#pragma once

#include <string>

namespace hullrider {

struct FolderConfig {
    std::string soundFontDirectoryPath;  // UTF-8; empty: none configured
    std::string hullriderPath;           // the companion game's folder, UTF-8; empty: unknown
};

}  // namespace hullrider
