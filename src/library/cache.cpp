#include "library/cache.h"

#include <algorithm>
#include <filesystem>
#include <optional>
#include <string_view>
#include <utility>

#include "library/cache_reader.h"
#include "library/library_changes.h"
#include "platform/console.h"
#include "platform/files.h"
#include "platform/folder.h"
#include "platform/json.h"
#include "platform/paths.h"
#include "platform/state_files.h"

namespace hullrider {

namespace {

// `before` is the punctuation and the key.
void AppendNumber(std::string& text, std::string_view before, int32_t number) {
    text += before;
    text += std::to_string(number);
}

void AppendSong(std::string& text, const Song& song) {
    AppendNumber(text, R"({"favoriteCount":)", song.favoriteCount);
    AppendNumber(text, R"(,"isFavorite":)", song.isFavorite);
    AppendNumber(text, R"(,"musicType":)", song.musicType);
    AppendNumber(text, R"(,"playCount":)", song.playCount);
    text += R"(,"songPath":)";
    text += QuotedJson(song.songPath);
    text += '}';
}

void AppendPlaylist(std::string& text, const Playlist& playlist) {
    text += R"({"albumName":)";
    text += QuotedJson(playlist.albumName);
    AppendNumber(text, R"(,"favoriteCount":)", playlist.favoriteCount);
    AppendNumber(text, R"(,"iRadioMode":)", playlist.iRadioMode);
    AppendNumber(text, R"(,"isFavorite":)", playlist.isFavorite);
    text += R"(,"songs":[)";
    std::string_view separator = "\n";
    for (const Song& song : playlist.songs) {
        if (!IsCachedPath(song.songPath)) continue;
        text += std::exchange(separator, ",\n");
        AppendSong(text, song);
    }
    text += "]}";
}

// Written song by song, one a line: a tree of the whole would take several times the library's own memory.
std::string CacheText(const std::vector<Playlist>& playlists) {
    std::string text = R"({"playlists":[)";
    std::string_view separator = "\n";
    for (const Playlist& playlist : playlists) {
        if (playlist.isQueue) continue;
        text += std::exchange(separator, ",\n");
        AppendPlaylist(text, playlist);
    }
    text += "]}\n";
    return text;
}

}  // namespace

bool SaveMusicLibraryCache(const std::string& path, const MusicLibrary& library) {
    const auto isKept = [](const Playlist& playlist) { return !playlist.isQueue; };
    if (std::none_of(library.playlists.begin(), library.playlists.end(), isKept)) {
        PrintErrorLine("Error: No valid data to save. Aborting file write.");
        return false;
    }
    std::string moveError;
    switch (WriteWholeFile(path, path + ".temp", CacheText(library.playlists), moveError)) {
        case WriteResult::kWritten:
            PrintLine("Successfully saved cache to " + path);
            return true;
        case WriteResult::kCannotOpen:
            PrintErrorLine("Error: Unable to open temporary file for writing.");
            return false;
        case WriteResult::kCannotWrite:
            PrintErrorLine("Error: Failed to write to temporary file.");
            return false;
        case WriteResult::kCannotMove:
            break;
    }
    PrintErrorLine("Error: Failed to rename temporary file to cache file. " + moveError);
    return false;
}

void RemoveMusicLibraryCache(const std::string& path) {
    std::error_code error;
    std::filesystem::remove(PathFromUtf8(path), error);
    if (error) PrintErrorLine("Failed to remove " + path + ": " + error.message());
}

std::vector<Playlist> LoadMusicLibraryCache(const std::string& path) {
    std::string error;
    const std::optional<std::string> text = ReadStateFile(path, kMostCacheBytes, error);
    if (!text) {
        PrintErrorLine("Unable to open file: " + path + (error.empty() ? "" : ": " + error));
        if (IsFile(path)) KeepBadFile(path);
        return {};
    }
    CacheReading reading = ReadMusicLibraryCache(*text);
    if (!reading.parseError.empty()) PrintErrorLine("JSON parsing error: " + reading.parseError);
    if (!reading.isCache) KeepBadFile(path);
    if (reading.droppedSongs > 0) {
        PrintErrorLine("Left out of the cache, never playable: " + std::to_string(reading.droppedSongs) + " songs");
    }
    return std::move(reading.playlists);
}

}  // namespace hullrider
