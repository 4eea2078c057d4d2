// What the statistics window says of the song or station that plays. UI thread.
#pragma once

#include <array>
#include <cstddef>
#include <string>

#include "playback/channel_facts.h"
#include "playback/picker_state.h"
#include "state/app_state.h"

namespace hullrider {

inline constexpr std::array kPlayingNames{"Title",  "Artist",   "Album",    "Plays", "Length",
                                          "Format", "Loudness", "Favorite", "File",  "Drawn as"};
using PlayingInfo = std::array<std::string, kPlayingNames.size()>;  // in the order of the names

// Empty texts, but for the first one, when nothing plays. `picker` keeps the lists that the chances are taken from.
PlayingInfo MakePlayingInfo(const AppState& app, PickerState& picker, const ChannelFacts& facts);

// How the song came to be drawn, by the mix as it is now: "favorite, 3 of 412 chances; kind MIDI 25 %".
std::string DrawnAsText(const AppState& app, PickerState& picker);

// "-6.0 dB", the change that loudness following makes to the user's volume.
std::string GainText(double gain);

}  // namespace hullrider
