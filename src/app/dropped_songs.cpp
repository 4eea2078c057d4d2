#include "app/dropped_songs.h"

#include <algorithm>

#include "app/audio_start.h"
#include "app/library_loading.h"
#include "library/favorites.h"
#include "library/scan.h"
#include "playback/kept_place.h"
#include "playback/playlist_ring.h"
#include "playback/transport.h"

namespace hullrider {

namespace {

// Replaces the playlist dropped before in place, so that no other playlist moves. Returns its index.
int32_t PutIntoLibrary(std::vector<Playlist>& playlists, Playlist dropped) {
    auto place = std::find_if(playlists.begin(), playlists.end(), [](const Playlist& one) { return one.isOfThisRun; });
    if (place == playlists.end()) place = playlists.insert(place, Playlist());
    *place = std::move(dropped);
    return static_cast<int32_t>(place - playlists.begin());
}

}  // namespace

bool PlayDropped(Player& player, const std::vector<std::string>& paths) {
    Playlist dropped = GatherSongs(paths);
    if (dropped.songs.empty()) return false;
    if (!StartAudioAgain(player)) return true;
    AppState& app = player.state;
    const KeptPlace place = KeepPlace(app);
    const int32_t index = PutIntoLibrary(app.library.playlists, std::move(dropped));
    MatchFavorites(app.favorites, app.library);
    Recount(app);
    FindPlaceAgain(app, place);
    EnterPlaylist(app, index);
    app.selection.currentSongInPlaylist = 0;
    PlaySong(app, player.picker, index, 0);
    return true;
}

}  // namespace hullrider
