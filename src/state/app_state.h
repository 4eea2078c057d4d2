// The one process-wide record of run-time state: a list of the rooms' own records. A room's .cpp is the only writer of
// its record. Only the edges (window procedure, timers, start-up, console) name the global; everything else takes the
// record that it needs.
#pragma once

#include "state/audiobook_state.h"
#include "state/favorites.h"
#include "state/folder_config.h"
#include "state/music_library.h"
#include "state/play_item.h"
#include "state/playback_state.h"
#include "state/radio_state.h"
#include "state/selection_state.h"
#include "state/settings.h"
#include "state/shell_state.h"
#include "state/song_history.h"
#include "state/statistics.h"

namespace hullrider {

struct AppState {
    ShellState shell;
    Settings settings;
    FolderConfig folders;
    MusicLibrary library;
    FavoritesState favorites;
    SelectionWeights weights;
    SelectionState selection;
    RadioState radio;
    SongHistory history;
    PlayCounts playCounts;
    Statistics statistics;
    PlaybackState playback;
    SoundFontState soundFonts;
    AudiobookState audiobooks;
};

}  // namespace hullrider
