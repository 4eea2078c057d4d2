// The queue: songs handed to the player, which play once, whole and in their order, before the mix goes on. It is one
// playlist of the library, the last one, for this run only; nothing else is drawn from it. `SelectionState::nextQueued`
// is the place of its next song. UI thread.
#pragma once

#include <cstdint>
#include <optional>

#include "state/app_state.h"

namespace hullrider {

// The index of its playlist; nothing while no song has been queued.
std::optional<int32_t> QueueIn(const MusicLibrary& library);

// The number of playlists without the queue.
int32_t AlbumCountOf(const MusicLibrary& library);

// True when one of its songs is still to come.
bool HasQueuedSong(const AppState& app);

// True when what plays, or played last, came from it.
bool IsQueuedSongPlaying(const AppState& app);

}  // namespace hullrider
