#include "library/song_counts.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace hullrider {

namespace {

void CountSong(const Song& song, MusicLibrary& library) {
    switch (song.musicType) {
        case kMidi:
            ++library.midiSongCount;
            break;
        case kMp3:
            ++library.mp3SongCount;
            break;
        case kTracker:
            ++library.trackerSongCount;
            break;
        default:
            break;
    }
    if (song.favoriteCount >= 1) ++library.favoriteSongCount;
}

void DropIfNone(int32_t count, int32_t& weight) {
    if (count < 1) weight = 0;
}

}  // namespace

void UpdateSongCounts(MusicLibrary& library, SelectionWeights& weights, int32_t internetStationCount) {
    ++library.revision;
    library.midiSongCount = library.mp3SongCount = library.trackerSongCount = library.favoriteSongCount = 0;
    library.numberOfPlaylists = 0;
    for (const Playlist& playlist : library.playlists) {
        if (playlist.isQueue) continue;
        ++library.numberOfPlaylists;
        for (const Song& song : playlist.songs) CountSong(song, library);
    }
    library.typedSongCount = library.midiSongCount + library.mp3SongCount + library.trackerSongCount;
    library.internetStationCount = internetStationCount;

    DropIfNone(library.favoriteSongCount, weights.favorites);
    DropIfNone(library.mp3SongCount, weights.mp3);
    DropIfNone(library.midiSongCount, weights.midi);
    DropIfNone(library.trackerSongCount, weights.tracker);
    DropIfNone(library.internetStationCount, weights.radio);
}

const Song* FindSong(const MusicLibrary& library, SongPosition position) {
    if (position.playlist < 0 || std::cmp_greater_equal(position.playlist, library.playlists.size())) return nullptr;
    const std::vector<Song>& songs = library.playlists[static_cast<size_t>(position.playlist)].songs;
    if (position.song < 0 || std::cmp_greater_equal(position.song, songs.size())) return nullptr;
    return &songs[static_cast<size_t>(position.song)];
}

Song* FindSong(MusicLibrary& library, SongPosition position) {
    return const_cast<Song*>(FindSong(std::as_const(library), position));
}

int64_t SongCountOf(const MusicLibrary& library) {
    int64_t count = 0;
    for (const Playlist& playlist : library.playlists) count += static_cast<int64_t>(playlist.songs.size());
    return count;
}

std::optional<SongPosition> SongAt(const MusicLibrary& library, int64_t number) {
    if (number < 0) return std::nullopt;
    for (size_t i = 0; i < library.playlists.size(); ++i) {
        const auto size = static_cast<int64_t>(library.playlists[i].songs.size());
        if (number < size) return SongPosition{static_cast<int32_t>(i), static_cast<int32_t>(number)};
        number -= size;
    }
    return std::nullopt;
}

std::string FormatWithThousands(int64_t value) {
    std::string text = std::to_string(value);
    const ptrdiff_t firstDigit = value < 0 ? 1 : 0;
    for (ptrdiff_t at = static_cast<ptrdiff_t>(text.size()) - 3; at > firstDigit; at -= 3) text.insert(at, 1, ',');
    return text;
}

std::string Counted(int64_t count, std::string_view noun) {
    return FormatWithThousands(count) + ' ' + std::string(noun) + (count == 1 ? "" : "s");
}

}  // namespace hullrider
