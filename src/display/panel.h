// What the panel says, made from the state records. UI thread.
#pragma once

#include <cstdint>
#include <string>

#include "display/panel_layout.h"
#include "state/app_state.h"

namespace hullrider {

enum class Transport : uint8_t { kNothing, kPlaying, kPaused };

// Which songs are drawn: from all of the library, from one playlist, or from one station.
enum class PlayRange : uint8_t { kLibrary, kPlaylist, kStation };

enum class FavoriteFilter : uint8_t { kNone, kFavorites, kOthers };

// Texts are UTF-8, and empty where there is nothing to say. The window is the part of a song that is played.
struct PanelModel {
    Transport transport = Transport::kNothing;
    std::string kind;  // "MIDI", "FLAC", "TRACKER"
    std::string album;
    std::string title;         // or why nothing plays
    std::string windowPlayed;  // "0:23"
    std::string windowLeft;    // "0:42"
    std::string songPosition;  // "1:05"
    std::string songLeft;      // "-2:07"
    double windowFrom = 0.0;   // the play window and the position within the song, 0 to 1
    double windowTo = 0.0;
    double position = 0.0;
    std::string soundFont;  // of a MIDI song
    std::string playlist;   // "2/12"
    int32_t favoriteCount = 0;
    float volume = 0.0F;  // 0 to 1
    // How songs are drawn. No record holds it; the defaults say what the selection does.
    bool shuffle = true;
    FavoriteFilter filter = FavoriteFilter::kNone;
    PlayRange range = PlayRange::kLibrary;
    Relaxation relaxed = Relaxation::kNone;  // what was given up for the song that plays

    bool operator==(const PanelModel&) const = default;
};

// What plays, as the audio library tells it at one moment.
struct ChannelReading {
    double positionSec = 0.0;
    bool paused = false;
};

// The peaks of the last moments, 0 to 1.
struct StereoLevel {
    float left = 0.0F, right = 0.0F;
};

ChannelReading ReadChannel(const PlaybackState& playback);
StereoLevel ReadLevel(const PlaybackState& playback);

// What to show for the records as they stand. Pure.
PanelModel MakePanelModel(const AppState& app, const ChannelReading& channel);

// The clickable or showing elements that look different for the two models.
ElementSet ElementsThatDiffer(const PanelModel& before, const PanelModel& after);

// What an element does, for its tooltip; UTF-8.
std::string TooltipOf(PanelElement element, const PanelModel& model);

}  // namespace hullrider
