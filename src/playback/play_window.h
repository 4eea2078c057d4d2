// The play window: the part of a song that is played. Pure: reads what it is given, touches no globals.
#pragma once

#include <chrono>
#include <cstdint>

#include "playback/random.h"
#include "state/settings.h"

namespace hullrider {

// Seconds in stream time.
struct PlayWindow {
    double startSec = 0.0;
    double endSec = 0.0;
};

// How long songs are played.
struct PlayDurations {
    double minSec = 0.0;
    double maxSec = 0.0;  // below 1: songs play whole
    double fadeSec = 0.0;
};

// However short its window is, an item plays for this long.
inline constexpr std::chrono::milliseconds kShortestPlay{1000};

// What the user has set. Until the built-in durations are changed, a demonstration has shorter ones, so that a newcomer
// soon hears a cross-fade.
PlayDurations ChooseDurations(const Settings& settings, bool demonstration);

// An internet station plays for a whole number of seconds between the two settings for stations, in either order; while
// a custom station is active, between those for audiobooks.
PlayWindow ChooseStationWindow(const Settings& settings, bool customStationActive, Random& random);

// Chooses the window of a song of the type `musicType` that is `lengthSec` long. A file under 30 s plays whole, less
// 2 s, unless it is a tracker module. A song too short for the shortest play time plays from its start.
PlayWindow ChoosePlayWindow(double lengthSec, int32_t musicType, const PlayDurations& durations, Random& random);

// The same with the end moved to where the cross-fade into the next song begins. A song of unknown length plays until
// it ends, for at most the longest play time or three minutes, whichever is longer.
PlayWindow ChooseSongWindow(double lengthSec, int32_t musicType, const PlayDurations& durations, Random& random);

// When the cross-fade into the next song begins: at the window's end, or early enough to be over when the song ends. A
// later one would let the song die away before the next is heard. A short file that plays whole is not cut for it.
double FadeBeginSec(const PlayWindow& window, double lengthSec, int32_t musicType, const PlayDurations& durations);

}  // namespace hullrider
