#include "playback/transport.h"

#include "audio/bass.h"
#include "playback/listening.h"
#include "playback/next_item.h"
#include "playback/play_next.h"
#include "playback/playlist_ring.h"
#include "playback/stream_slots.h"

namespace hullrider {

namespace {

bool PlayRequested(AppState& app, Draws& draws, const NextRequest& request) {
    app.playback.request = request;
    return PlayNext(app, draws);
}

}  // namespace

bool PlaySong(AppState& app, Draws& draws, int32_t playlist, int32_t song) {
    return PlayRequested(app, draws, {NextRequest::kSong, {playlist, song, 0, 0}});
}

bool PlayStation(AppState& app, Draws& draws) {
    return PlayRequested(app, draws, {NextRequest::kStation, {}});
}

bool PlayPreviousSong(AppState& app, Draws& draws) {
    if (!HasEarlierSong(app.history)) return false;
    return PlayRequested(app, draws, {NextRequest::kEarlierSong, {}});
}

void NextPlaylist(AppState& app, Draws& draws) {
    StepPlaylistForward(app);
    app.selection.previousSongMode = false;
    PlayNext(app, draws);
}

void PreviousPlaylist(AppState& app, Draws& draws) {
    StepPlaylistBack(app);
    app.selection.previousSongMode = false;
    PlayNext(app, draws);
}

void TogglePause(AppState& app) {
    const StreamSlot handle = CurrentHandle(app.playback);
    if (handle == 0) return;
    if (BASS_ChannelIsActive(handle) == BASS_ACTIVE_PAUSED) {
        BASS_ChannelPlay(handle, false);
        ContinueListening(app.playback);
    } else {
        EndListening(app);
        BASS_ChannelPause(handle);
    }
}

}  // namespace hullrider
