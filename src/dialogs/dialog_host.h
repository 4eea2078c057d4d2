// What the option windows work on, and what only the application can do for them. UI thread.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "input/hotkeys.h"
#include "library/song_counts.h"
#include "state/app_state.h"

namespace hullrider {

struct DialogHost {
    AppState& state;
    HotkeyBindings& hotkeys;
    const std::vector<RefusedHotkey>& refusedHotkeys;  // of those that were to be registered
    std::string versionText;

    std::function<void()> recountSongs;    // after a change of weights or of the songs' marks
    std::function<void()> takeHotkeys;     // registers the bindings as they are now
    std::function<void()> releaseHotkeys;  // none is registered any more, so that each key can be pressed

    std::function<void(SongPosition)> playSong = {};
    // Begins to; the library follows when that is done. Songs of folders that are away now go only when the user has
    // asked for the scan.
    std::function<void(bool isAskedFor)> scanMusicFolders = {};
    std::function<std::optional<int32_t>()> songsFoundByScan = {};  // so far; nothing when no scan is under way
    std::function<bool(const std::string& folder)> takeSoundFonts = {};  // false: none to use, and the old ones stay
};

}  // namespace hullrider
