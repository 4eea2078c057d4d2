#include "library/library_changes.h"

#include <algorithm>
#include <unordered_map>
#include <unordered_set>

#include "library/music_type.h"
#include "platform/paths.h"

namespace hullrider {

namespace {

// A normal form: the same text for the same folder.
std::string Plain(std::string_view folder) {
    while (!folder.empty() && (folder.back() == '/' || folder.back() == '\\')) folder.remove_suffix(1);
    std::string plain = ToLower(folder);
    std::replace(plain.begin(), plain.end(), '\\', '/');
    return plain;
}

std::string AlbumFolderOf(const Playlist& album) {
    return Plain(FolderOf(album.songs.front().songPath));
}

std::string MusicFolderOf(const Playlist& album) {
    return Plain(FolderOf(FolderOf(album.songs.front().songPath)));
}

std::unordered_set<std::string> PlainSet(const std::vector<std::string>& folders) {
    std::unordered_set<std::string> plain;
    for (const std::string& folder : folders) plain.insert(Plain(folder));
    return plain;
}

using Songs = std::vector<const Song*>;

Songs SongsCompared(const Playlist& playlist, Compared what) {
    Songs songs;
    for (const Song& song : playlist.songs) {
        if (what == Compared::kAllSongs || IsCachedPath(song.songPath)) songs.push_back(&song);
    }
    return songs;
}

std::vector<const Playlist*> AlbumsCompared(const std::vector<Playlist>& playlists, Compared what) {
    std::vector<const Playlist*> albums;
    for (const Playlist& playlist : playlists) {
        if (!playlist.isQueue && !SongsCompared(playlist, what).empty()) albums.push_back(&playlist);
    }
    return albums;
}

bool IsSameSong(const Song* a, const Song* b) {
    return a->musicType == b->musicType && a->songPath == b->songPath;
}

bool IsElsewhere(const Playlist& playlist, const std::unordered_set<std::string>& folders) {
    return !playlist.songs.empty() && !folders.contains(MusicFolderOf(playlist));
}

// By the order of their music folders in the list.
void SortByFolder(std::vector<Playlist>& playlists, const std::vector<std::string>& folders) {
    std::unordered_map<std::string, size_t> places;
    for (const std::string& folder : folders) places.try_emplace(Plain(folder), places.size());
    const auto placeOf = [&](const Playlist& playlist) {
        const auto found = playlist.songs.empty() ? places.end() : places.find(MusicFolderOf(playlist));
        return found == places.end() ? places.size() : found->second;
    };
    std::stable_sort(playlists.begin(), playlists.end(),
                     [&](const Playlist& a, const Playlist& b) { return placeOf(a) < placeOf(b); });
}

}  // namespace

bool IsCachedPath(const std::string& songPath) {
    return std::none_of(songPath.begin(), songPath.end(), [](char c) { return static_cast<unsigned char>(c) >= 0x80; });
}

bool IsSameMusic(const std::vector<Playlist>& a, const std::vector<Playlist>& b, Compared what) {
    const std::vector<const Playlist*> left = AlbumsCompared(a, what), right = AlbumsCompared(b, what);
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [what](const Playlist* one, const Playlist* other) {
                          if (one->albumName != other->albumName) return false;
                          const Songs songs = SongsCompared(*one, what), others = SongsCompared(*other, what);
                          return std::equal(songs.begin(), songs.end(), others.begin(), others.end(), IsSameSong);
                      });
}

bool HasMusicOf(const std::vector<Playlist>& playlists, std::string_view folder) {
    const std::string plain = Plain(folder);
    return std::any_of(playlists.begin(), playlists.end(), [&plain](const Playlist& album) {
        return !album.songs.empty() && (AlbumFolderOf(album) == plain || MusicFolderOf(album) == plain);
    });
}

bool HasMusicElsewhere(const std::vector<Playlist>& playlists, const std::vector<std::string>& folders) {
    const std::unordered_set<std::string> plain = PlainSet(folders);
    return std::any_of(playlists.begin(), playlists.end(),
                       [&](const Playlist& playlist) { return IsElsewhere(playlist, plain); });
}

void DropMusicElsewhere(std::vector<Playlist>& playlists, const std::vector<std::string>& folders) {
    const std::unordered_set<std::string> plain = PlainSet(folders);
    std::erase_if(playlists, [&](const Playlist& playlist) { return IsElsewhere(playlist, plain); });
}

void KeepMissingMusic(MusicLibrary& found, const std::vector<Playlist>& before,
                      const std::vector<std::string>& folders) {
    if (found.missingFolders.empty()) return;
    const std::unordered_set<std::string> missing = PlainSet(found.missingFolders), wanted = PlainSet(folders);
    for (const Playlist& album : before) {
        if (album.isQueue || album.songs.empty()) continue;
        const std::string musicFolder = MusicFolderOf(album);
        const bool isMissing = missing.contains(musicFolder) || missing.contains(AlbumFolderOf(album));
        if (isMissing && wanted.contains(musicFolder)) found.playlists.push_back(album);
    }
    SortByFolder(found.playlists, folders);
}

void KeepAlbumMarks(std::vector<Playlist>& found, const std::vector<Playlist>& before) {
    std::unordered_map<std::string, const Playlist*> marked;
    for (const Playlist& album : before) {
        const bool isMarked = album.isFavorite != 0 || album.favoriteCount != 0;
        if (isMarked && !album.songs.empty()) marked.try_emplace(AlbumFolderOf(album), &album);
    }
    if (marked.empty()) return;
    for (Playlist& album : found) {
        const auto known = album.songs.empty() ? marked.end() : marked.find(AlbumFolderOf(album));
        if (known == marked.end()) continue;
        album.isFavorite = known->second->isFavorite;
        album.favoriteCount = known->second->favoriteCount;
    }
}

}  // namespace hullrider
