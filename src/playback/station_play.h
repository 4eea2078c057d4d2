// A station that plays: how its stream is doing, and what it says of itself. UI thread.
#pragma once

#include "playback/opening.h"
#include "playback/picker_state.h"
#include "state/app_state.h"

namespace hullrider {

// A station that has been silent for this long, because nothing arrives, is left.
inline constexpr std::chrono::milliseconds kLongestStall{1500};

bool IsStationPlaying(const PlaybackState& playback);

// With each poll: notes since when the stream lacks data.
void NoteStall(PlaybackState& playback);
bool HasRunDry(const PlaybackState& playback);

// Its connection is lost, or nothing arrives: the next item had better be ready.
bool IsStreamInDanger(const PlaybackState& playback);

// The user has asked for this station: it plays on after the end of its window.
bool StaysWithStation(const AppState& app);

// A song plays until a station answers.
bool WaitsForStation(const AppState& app);

// The song's title without the apostrophes that servers put around it; empty when it is unknown.
std::string SongTitleOf(const StreamNowPlaying& nowPlaying);

// Reads what the stream says of what is heard, and keeps the title in the station's list of titles. Due every 5 s.
void RefreshNowPlaying(AppState& app);

// The directory is asked for a station once an hour at most.
bool MayBeRepaired(const PickerState& picker, const std::string& stationName);

// Keeps the URL that was found for the station, and the old one beside it.
void KeepRepair(AppState& app, PickerState& picker, const std::string& stationName, const Opened& opened);

}  // namespace hullrider
