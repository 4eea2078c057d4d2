#include "playback/song_selection.h"

#include <chrono>

#include "library/song_counts.h"
#include "platform/folder.h"

namespace hullrider {

namespace {

// With one file in ten still there, the chance to miss it in so many draws is below 1 in 30 000.
constexpr int kMostDraws = 100;
constexpr std::chrono::milliseconds kMostTime{500};  // a network share that is gone takes its time for each

}  // namespace

bool PickUniformSong(const MusicLibrary& library, Random& random, SongChoice& choice) {
    choice = {};
    const int64_t count = SongCountOf(library);
    if (count == 0) return false;
    const size_t drawn = random.Index(static_cast<size_t>(count));
    const std::optional<SongPosition> at = SongAt(library, static_cast<int64_t>(drawn));
    if (!at) return false;
    choice = {at->playlist, at->song, static_cast<int32_t>(drawn), 0};
    return true;
}

bool SelectNextSong(const MusicLibrary& library, Random& random, SongChoice& choice) {
    const auto start = std::chrono::steady_clock::now();
    for (int draw = 0; draw < kMostDraws && std::chrono::steady_clock::now() - start < kMostTime; ++draw) {
        if (!PickUniformSong(library, random, choice)) return false;
        if (IsFile(library.playlists[choice.playlist].songs[choice.song].songPath)) return true;
    }
    choice = {};
    return false;
}

}  // namespace hullrider
