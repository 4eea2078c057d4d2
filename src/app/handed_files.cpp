#include "app/handed_files.h"

#include <utility>

#include "app/audio_start.h"
#include "app/library_loading.h"
#include "library/favorites.h"
#include "library/scan.h"
#include "platform/message_box.h"
#include "platform/post.h"
#include "playback/kept_place.h"
#include "playback/play_next.h"
#include "playback/queue.h"

namespace hullrider {

namespace {

constexpr std::chrono::seconds kOneBatch{2};

void ReplaceQueue(AppState& app, Playlist songs) {
    std::vector<Playlist>& playlists = app.library.playlists;
    if (QueueIn(app.library)) playlists.pop_back();
    playlists.push_back(std::move(songs));
    app.selection.nextQueued = 0;
    app.selection.previousSongMode = false;
}

void AppendToQueue(Playlist& queue, Playlist songs) {
    queue.songs.insert(queue.songs.end(), std::make_move_iterator(songs.songs.begin()),
                       std::make_move_iterator(songs.songs.end()));
    queue.songCount = static_cast<int32_t>(queue.songs.size());
}

// False when the songs were queued behind others, of which one plays or is about to.
bool Queue(Player& player, Playlist songs) {
    AppState& app = player.state;
    const PlayTime now = PlayNow();
    const bool isSameBatch = player.handed.queuedAt && now - *player.handed.queuedAt < kOneBatch &&
                             QueueIn(app.library) && app.selection.nextQueued;
    const KeptPlace place = KeepPlace(app);
    if (isSameBatch) {
        AppendToQueue(app.library.playlists.back(), std::move(songs));
    } else {
        ReplaceQueue(app, std::move(songs));
    }
    player.handed.queuedAt = now;
    MatchFavorites(app.favorites, app.library);
    Recount(app);
    FindPlaceAgain(app, place);
    return !isSameBatch;
}

bool HasSongs(const Playlist& songs) {
    if (songs.songs.empty()) ShowErrorBox("The files contain no music that can be played.");
    return !songs.songs.empty();
}

void Play(Player& player, Playlist songs) {
    player.handed.paths.clear();
    if (!HasSongs(songs) || !StartAudioAgain(player)) return;
    if (Queue(player, std::move(songs))) PlayNext(player.state, player.picker);
}

}  // namespace

void PlayFiles(Player& player, const std::vector<std::string>& paths) {
    if (player.shutDown) return;
    HandedFiles& handed = player.handed;
    handed.paths.insert(handed.paths.end(), paths.begin(), paths.end());
    if (handed.paths.empty()) return;
    // A search that is under way begins again, with all of them.
    handed.search.Start([&player, all = handed.paths](const std::stop_token&) {
        Post([&player, songs = GatherSongs(all)] { Play(player, songs); });
    });
}

void QueueFilesOfRun(Player& player) {
    const std::vector<std::string>& files = player.options.files;
    if (files.empty()) return;
    Playlist songs = GatherSongs(files);
    if (HasSongs(songs) && !player.shutDown) Queue(player, std::move(songs));
}

}  // namespace hullrider
