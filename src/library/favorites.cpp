#include "library/favorites.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>

#include "library/music_type.h"

namespace hullrider {

namespace {

// Most paths differ in length already, so this is far faster than two copies in lower case.
bool IsSamePath(std::string_view a, std::string_view b) {
    return a.size() == b.size() && (a == b || ToLower(a) == ToLower(b));
}

void Mark(Song& song, int32_t count) {
    song.favoriteCount = count;
    song.isFavorite = count != 0 ? 1 : 0;
}

void Remove(FavoritesState& favorites, std::string_view path) {
    const auto found = favorites.byPath.find(ToLower(path));
    if (found == favorites.byPath.end()) return;
    const size_t place = found->second;
    ++favorites.revision;
    favorites.list.erase(favorites.list.begin() + static_cast<ptrdiff_t>(place));
    favorites.byPath.erase(found);
    for (auto& [key, index] : favorites.byPath) {
        if (index > place) --index;
    }
}

FavoriteEntry EntryFor(const Song& song, size_t playlist, size_t index, int32_t count) {
    return {song.musicType, static_cast<int32_t>(index), static_cast<int32_t>(playlist), count, song.songPath};
}

void MarkSongsAt(MusicLibrary& library, const std::string& path, int32_t count) {
    for (Playlist& playlist : library.playlists) {
        for (Song& song : playlist.songs) {
            if (IsSamePath(song.songPath, path)) Mark(song, count);
        }
    }
}

// The entry points to the first song at its path.
void PlaceEntry(FavoriteEntry& entry, const Song& song, size_t playlist, size_t index) {
    if (entry.plistIndex >= 0) return;
    entry.songType = song.musicType;
    entry.plistIndex = static_cast<int32_t>(playlist);
    entry.songIndex = static_cast<int32_t>(index);
}

}  // namespace

bool IsSameFavorite(const FavoriteEntry& a, const FavoriteEntry& b) {
    return IsSamePath(a.songPath, b.songPath);
}

void MergeFavorites(FavoritesState& favorites, const std::vector<FavoriteEntry>& entries) {
    for (const FavoriteEntry& entry : entries) {
        const bool isNew = favorites.byPath.try_emplace(ToLower(entry.songPath), favorites.list.size()).second;
        if (!isNew) continue;
        favorites.list.push_back(entry);
        ++favorites.revision;
    }
}

void AdoptFavorites(FavoritesState& favorites, const MusicLibrary& library) {
    std::vector<FavoriteEntry> marked;
    for (size_t i = 0; i < library.playlists.size(); ++i) {
        const std::vector<Song>& songs = library.playlists[i].songs;
        for (size_t j = 0; j < songs.size(); ++j) {
            if (songs[j].isFavorite != 1 && songs[j].favoriteCount < 1) continue;
            const int32_t count = songs[j].favoriteCount;
            marked.push_back(EntryFor(songs[j], i, j, count == 0 ? 1 : count));
        }
    }
    MergeFavorites(favorites, marked);
}

void MatchFavorites(FavoritesState& favorites, MusicLibrary& library) {
    for (FavoriteEntry& entry : favorites.list) entry.plistIndex = entry.songIndex = -1;
    for (size_t i = 0; i < library.playlists.size(); ++i) {
        std::vector<Song>& songs = library.playlists[i].songs;
        for (size_t j = 0; j < songs.size(); ++j) {
            const auto found = favorites.byPath.find(ToLower(songs[j].songPath));
            if (found == favorites.byPath.end()) {
                Mark(songs[j], 0);
                continue;
            }
            FavoriteEntry& entry = favorites.list[found->second];
            PlaceEntry(entry, songs[j], i, j);
            Mark(songs[j], entry.favoriteCount);
        }
    }
}

void SetFavoriteCount(FavoritesState& favorites, MusicLibrary& library, SongPosition position, int32_t count) {
    if (FindSong(library, position) == nullptr) return;
    const auto playlist = static_cast<size_t>(position.playlist), index = static_cast<size_t>(position.song);
    const Song& changed = library.playlists[playlist].songs[index];
    const int32_t kept = std::max(count, 0);
    if (kept == 0) {
        Remove(favorites, changed.songPath);
    } else {
        MergeFavorites(favorites, {EntryFor(changed, playlist, index, kept)});
        favorites.list[favorites.byPath.at(ToLower(changed.songPath))].favoriteCount = kept;
        ++favorites.revision;
    }
    MarkSongsAt(library, changed.songPath, kept);
}

void SetFavoriteCountAt(FavoritesState& favorites, MusicLibrary& library, const std::string& path, int32_t count) {
    const auto found = favorites.byPath.find(ToLower(path));
    if (found == favorites.byPath.end()) return;
    const int32_t kept = std::max(count, 0);
    MarkSongsAt(library, path, kept);
    if (kept == 0) {
        Remove(favorites, path);
    } else {
        favorites.list[found->second].favoriteCount = kept;
        ++favorites.revision;
    }
}

void ClearFavorites(FavoritesState& favorites, MusicLibrary& library) {
    favorites.list.clear();
    favorites.byPath.clear();
    ++favorites.revision;
    MatchFavorites(favorites, library);
}

}  // namespace hullrider
