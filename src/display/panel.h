// What the panel shows, made from the state records. UI thread.
#pragma once

#include <cstdint>
#include <string>

#include "playback/playing_channel.h"
#include "state/app_state.h"

namespace hullrider {

enum class Transport : uint8_t { kNothing, kStopped, kPlaying, kPaused };

// What songs are drawn from: the whole library, one playlist, one station, or the queue.
enum class PlayRange : uint8_t { kLibrary, kPlaylist, kStation, kQueue };

enum class FavoriteFilter : uint8_t { kNone, kFavorites, kOthers };

// Only random songs of the library are filtered.
enum class FilterEffect : uint8_t { kApplies, kNotHere, kNothingPasses };

// Texts are UTF-8, and empty when there is nothing to show.
struct PanelModel {
    Transport transport = Transport::kNothing;
    std::string kind;  // "MIDI", "FLAC", "TRACKER"
    std::string album;
    std::string title;         // of what plays or was stopped, or why nothing plays
    std::string next;          // the title of what comes next, once it is known
    bool isNextSoon = false;   // in the last ten seconds
    std::string timePlayed;    // "0:23", of the play window
    std::string timeLeft;      // "0:42"
    std::string songPosition;  // "1:05"
    std::string songLeft;      // "-2:07"
    double windowFrom = 0.0;   // the play window and the position within the song, 0 to 1
    double windowTo = 0.0;
    double position = 0.0;
    double lengthSec = 0.0;  // of the song; 0: none
    bool canSeek = false;
    std::string soundFont;  // of a MIDI song
    std::string playlist;   // "2/12"
    int32_t favoriteCount = 0;
    float volume = 0.0F;  // 0 to 1
    bool isMuted = false;
    // How songs are drawn.
    bool shuffle = true;
    FavoriteFilter filter = FavoriteFilter::kNone;
    FilterEffect filterEffect = FilterEffect::kApplies;
    PlayRange range = PlayRange::kLibrary;
    Relaxation relaxed = Relaxation::kNone;  // the rule that was dropped for the current song

    bool operator==(const PanelModel&) const = default;
};

// Whether an item plays or is paused.
inline bool IsOn(const PanelModel& model) {
    return model.transport == Transport::kPlaying || model.transport == Transport::kPaused;
}

// Whether the filter decides what is played now.
inline bool IsFiltered(const PanelModel& model) {
    return model.filter != FavoriteFilter::kNone && model.filterEffect == FilterEffect::kApplies;
}

// What to show for the current records. Pure.
PanelModel MakePanelModel(const AppState& app, const ChannelReading& channel);

}  // namespace hullrider
