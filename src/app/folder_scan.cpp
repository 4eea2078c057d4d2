#include "app/folder_scan.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "app/library_loading.h"
#include "library/cache.h"
#include "library/favorites.h"
#include "library/favorites_file.h"
#include "platform/console.h"
#include "platform/message_box.h"
#include "playback/kept_place.h"
#include "playback/play_next.h"
#include "playback/stream_slots.h"

namespace hullrider {

namespace {

// What was dropped on the window stays, behind what was found.
void FillLibraryWith(MusicLibrary& library, MusicLibrary&& found) {
    std::vector<Playlist>& playlists = library.playlists;
    const auto dropped = std::stable_partition(playlists.begin(), playlists.end(),
                                               [](const Playlist& playlist) { return !playlist.isOfThisRun; });
    found.playlists.insert(found.playlists.end(), std::make_move_iterator(dropped),
                           std::make_move_iterator(playlists.end()));
    playlists = std::move(found.playlists);
    library.missingFolders = std::move(found.missingFolders);
    library.totalSongs += found.totalSongs;
    library.playlistCount += found.playlistCount;
}

void KeepLibrary(const AppState& state) {
    const std::string& cache = state.shell.libraryCachePath;
    if (cache.empty()) return;
    if (state.settings.directoryPaths.empty()) {
        RemoveMusicLibraryCache(cache);
    } else {
        SaveMusicLibraryCache(cache, state.library);
    }
}

void TakeOver(AppState& state, FoundMusic music) {
    const KeptPlace place = NotePlace(state);
    FillLibraryWith(state.library, std::move(music.library));
    for (const std::string& path : music.favoritesFiles) LoadFavorites(path, state.favorites);
    MatchFavorites(state.favorites, state.library);
    Recount(state);
    FindPlaceAgain(state, place);
    state.selection.mixedMusic = !state.settings.directoryPaths.empty();
    state.playback.demonstration = false;
    KeepLibrary(state);
}

}  // namespace

void StartFolderScan(Player& player) {
    player.scan.reset();
    const std::vector<std::string>& folders = player.state.settings.directoryPaths;
    if (!folders.empty()) PrintLine("Updating music library from directories...");
    player.scan = std::make_unique<BackgroundScan>(folders);
}

std::optional<int32_t> SongsFoundByScan(const Player& player) {
    if (player.scan == nullptr) return std::nullopt;
    return player.scan->SongsFound();
}

void PollFolderScan(Player& player) {
    // A box that waits for an answer may have been opened in the midst of work on the library.
    if (player.scan == nullptr || !player.scan->IsOver() || IsErrorBoxOpen()) return;
    std::optional<FoundMusic> found = player.scan->Take();
    player.scan.reset();
    if (!found) return;
    TakeOver(player.state, std::move(*found));
    PrintLine("Songs in the music folders: " + std::to_string(player.state.library.typedSongCount));
    // Music at last: not after the pause that an attempt in vain is followed by.
    const bool isSilent = !player.stopped && CurrentHandle(player.state.playback) == 0;
    if (isSilent && player.state.library.typedSongCount > 0) PlayNext(player.state, player.draws);
}

}  // namespace hullrider
