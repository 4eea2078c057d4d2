// The system calls behind a safe write. For files.cpp.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "platform/files.h"

namespace hullrider {

// Creates or truncates `path`, writes `text` and waits until it is on disk.
WriteResult WriteThrough(const std::filesystem::path& path, std::string_view text);

// Moves `from` over `to`, replacing it, across volumes if need be. `error` receives the system's text on failure.
bool MoveOver(const std::filesystem::path& from, const std::filesystem::path& to, std::string& error);

// Copies `from` over `to`, replacing it.
bool CopyOver(const std::filesystem::path& from, const std::filesystem::path& to);

}  // namespace hullrider
