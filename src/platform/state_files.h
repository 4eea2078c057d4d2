// The files that the player keeps in its data directory: their names, and reading and writing them. Callable from any
// thread; two writers of the same file are the caller's to keep apart.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace hullrider {

inline constexpr const char* kSettingsFile = "MusicSettings.json";
inline constexpr const char* kShellOptionsFile = "ShellOptions.json";
inline constexpr const char* kFolderConfigFile = "config.json";
inline constexpr const char* kLibraryCacheFile = "musicLibraryCache.json";
inline constexpr const char* kFavoritesFile = "favorite.json";
inline constexpr const char* kSongHistoryFile = "Song History.json";
inline constexpr const char* kPlayCountsFile = "MusicLibraryPlayCount.json";
inline constexpr const char* kStatisticsFile = "Sonorant_Stats.json";
inline constexpr const char* kHotkeysFile = "hotkeyConfig.json";

inline constexpr size_t kMostStateBytes = size_t{64} << 20;
inline constexpr size_t kMostCacheBytes = size_t{512} << 20;

// The whole file. Nothing when it cannot be had: `error` says why and is empty when the file is missing. Waits for up
// to 160 ms for one that is there and cannot be opened, because a virus scanner or a backup may have it for itself for
// a moment.
std::optional<std::string> ReadStateFile(const std::string& path, size_t maxBytes, std::string& error);

enum class StateReading {
    kWhole,
    kPartly,      // some of it was not understood; the rest was taken
    kUnreadable,  // the file is missing, or nothing was taken from it
};

// Hands the file's text to `read`, which sets its second argument where it answers anything but kWhole. What is not
// understood wholly is told on the error stream, and the file is kept as "PATH.bad", because the next save replaces it.
// A file that cannot be opened, a missing one included, is told as `cannotOpen`; when that is empty, a missing file is
// no fault.
StateReading LoadStateFile(const std::string& path, const std::string& cannotOpen,
                           const std::function<StateReading(std::string_view text, std::string& error)>& read);

// Writes the file whole. False, with `cannotWrite` on the error stream, when that failed; the old file stays.
bool SaveStateFile(const std::string& path, std::string_view text, std::string_view cannotWrite);

// The same with "Failed to open file for writing: PATH".
bool SaveStateFile(const std::string& path, std::string_view text);

}  // namespace hullrider
