#include "playback/transport.h"

#include "audio/bass.h"
#include "playback/cross_fade.h"
#include "playback/listening.h"
#include "playback/next_item.h"
#include "playback/play_next.h"
#include "playback/playlist_ring.h"
#include "playback/stream_slots.h"

namespace hullrider {

namespace {

void LeaveReplayAndQueue(SelectionState& selection) {
    selection.previousSongMode = false;
    selection.nextQueued.reset();
}

}  // namespace

bool PlaySong(AppState& app, PickerState& picker, int32_t playlist, int32_t song) {
    return PlayNext(app, picker, {NextRequest::kSong, {playlist, song, 0, 0}});
}

bool PlayStation(AppState& app, PickerState& picker) {
    return PlayNext(app, picker, {NextRequest::kStation, {}});
}

bool PlayPreviousSong(AppState& app, PickerState& picker) {
    if (HasEarlierSong(app.history)) {
        if (PlayNext(app, picker, {NextRequest::kEarlierSong, {}})) return true;
        if (app.playback.next != nullptr) return false;  // it is being opened
    }
    // After silence, any song is better than none.
    return CurrentHandle(app.playback) == 0 && PlayNext(app, picker);
}

void NextPlaylist(AppState& app, PickerState& picker) {
    StepPlaylistForward(app);
    LeaveReplayAndQueue(app.selection);
    PlayNext(app, picker);
}

void PreviousPlaylist(AppState& app, PickerState& picker) {
    StepPlaylistBack(app);
    LeaveReplayAndQueue(app.selection);
    PlayNext(app, picker);
}

void TogglePause(AppState& app) {
    const StreamSlot handle = CurrentHandle(app.playback);
    if (handle == 0) return;
    if (BASS_ChannelIsActive(handle) == BASS_ACTIVE_PAUSED) {
        ResumeAll(app);
        ContinueListening(app.playback);
    } else {
        EndListening(app);
        PauseAll(app.playback);
    }
}

}  // namespace hullrider
