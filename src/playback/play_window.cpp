#include "playback/play_window.h"

#include <algorithm>

#include "state/music_library.h"

namespace hullrider {

namespace {

constexpr double kShortFileSec = 30.0;
constexpr double kShortFileTailSec = 2.0;
constexpr double kLeastPlaySec = 3.0;

PlayWindow FromStart(double playSec) {
    return {0.0, std::max(playSec, 0.0)};
}

// The window of a song that is long enough to start somewhere in the middle.
PlayWindow RandomWindow(double lengthSec, double fadeSec, const Settings& settings, Random& random) {
    const double minSec = settings.songPlayDurationMin;
    const double maxSec = settings.songPlayDurationMax;
    const double latestStartSec = lengthSec - std::max(minSec, kLeastPlaySec);
    const double startSec = std::max(random.Fraction() * latestStartSec, 0.0);
    if (fadeSec >= lengthSec - startSec) return {startSec, std::max(lengthSec - fadeSec, startSec)};

    double endSec = startSec + minSec + random.Fraction() * (maxSec - minSec);
    if (endSec > lengthSec) endSec = lengthSec - fadeSec;
    return {startSec, std::max(endSec, startSec)};
}

}  // namespace

PlayWindow ChoosePlayWindow(double lengthSec, int32_t musicType, const Settings& settings, Random& random) {
    const double fadeSec = std::max(settings.FADE_DURATION_MS, 0) / 1000.0;
    if (lengthSec < 2.0) return FromStart(lengthSec - fadeSec);
    if (musicType != kTracker && lengthSec < kShortFileSec) return FromStart(lengthSec - kShortFileTailSec);
    if (settings.songPlayDurationMax < 1) return FromStart(lengthSec - fadeSec);
    return RandomWindow(lengthSec, fadeSec, settings, random);
}

}  // namespace hullrider
