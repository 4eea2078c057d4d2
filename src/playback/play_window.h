// Where a song starts and when it ends. Pure: reads what it is given, touches no globals.
#pragma once

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

// What the user has set. A demonstration has shorter turns, so that a newcomer soon hears a cross-fade, until the user
// sets others than are built in.
PlayDurations ChooseDurations(const Settings& settings, bool demonstration);

// An internet station plays for a whole number of seconds between the two settings for stations, whichever is the
// smaller one; while a custom station is active those for audiobooks count.
PlayWindow ChooseStationWindow(const Settings& settings, bool customStationActive, Random& random);

// Chooses the window of a song of the type `musicType` that is `lengthSec` long. A file under 30 s plays whole, less
// 2 s; tracker modules have no such rule. A song without the length for the shortest play time plays from its start.
PlayWindow ChoosePlayWindow(double lengthSec, int32_t musicType, const PlayDurations& durations, Random& random);

// The window that is played: as above, with its end where the cross-fade into the next song begins. A song of unknown
// length plays until it ends by itself, or the longest play time is over.
PlayWindow ChooseSongWindow(double lengthSec, int32_t musicType, const PlayDurations& durations, Random& random);

// When the cross-fade into the next song begins: at the window's end, or so much earlier that it ends with the song.
// The song would begin again within it otherwise, or its last sound die away before the next one is heard. Not so for
// what plays whole.
double FadeBeginSec(const PlayWindow& window, double lengthSec, int32_t musicType, const PlayDurations& durations);

}  // namespace hullrider
