// The state files in the player's data directory: their names, and reading and writing them. Callable from any thread;
// callers keep two writers of one file apart.
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
inline constexpr const char* kStationsFile = "InternetStations.json";
inline constexpr const char* kRecentStationsFile = "RecentStations.json";

inline constexpr size_t kMostStateBytes = size_t{64} << 20;
inline constexpr size_t kMostCacheBytes = size_t{512} << 20;

// The whole file. Nothing on failure: `error` says why, and is empty when the file is missing. An existing file that
// cannot be opened is tried for up to 160 ms, because a virus scanner or a backup may hold it for a moment.
std::optional<std::string> ReadStateFile(const std::string& path, size_t maxBytes, std::string& error);

enum class StateReading {
    kWhole,
    kPartly,      // some of it was not understood; the rest was taken
    kUnreadable,  // the file is missing, or nothing was taken from it
};

// Hands the file's text to `read`, which sets its second argument to the reason when it returns anything but kWhole.
// The reason goes to the error stream, and the file is kept as "PATH.bad", because the next save replaces it. When a
// file cannot be opened or is missing, `cannotOpen` is printed; when that is empty, a missing file is no error.
StateReading LoadStateFile(const std::string& path, const std::string& cannotOpen,
                           const std::function<StateReading(std::string_view text, std::string& error)>& read);

// Writes the whole file. False, with `cannotWrite` on the error stream, when that failed; the old file stays.
bool SaveStateFile(const std::string& path, std::string_view text, std::string_view cannotWrite);

// The same with "Failed to open file for writing: PATH".
bool SaveStateFile(const std::string& path, std::string_view text);

}  // namespace hullrider
