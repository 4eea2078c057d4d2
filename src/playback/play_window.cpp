#include "playback/play_window.h"

#include <algorithm>

#include "state/music_library.h"

namespace hullrider {

namespace {

constexpr double kShortFileSec = 30.0;
constexpr double kShortFileTailSec = 2.0;
constexpr double kLeastPlaySec = 3.0;
constexpr double kUnknownLengthSec = 180.0;  // at least, for a song of unknown length

constexpr double kDemonstrationMinSec = 25.0;
constexpr double kDemonstrationMaxSec = 40.0;

PlayWindow FromStart(double playSec) {
    return {0.0, std::max(playSec, 0.0)};
}

bool IsShortFile(double lengthSec, int32_t musicType) {
    return musicType != kTracker && lengthSec < kShortFileSec;
}

// The fade in force: at most half of the stretch, so that something plays before it.
double FadeSecWithin(double stretchSec, const PlayDurations& durations) {
    return std::clamp(durations.fadeSec, 0.0, std::max(stretchSec / 2.0, 0.0));
}

// The window of a song that is long enough to start somewhere in the middle.
PlayWindow RandomWindow(double lengthSec, const PlayDurations& durations, Random& random) {
    const double latestStartSec = lengthSec - std::max(durations.minSec, kLeastPlaySec);
    const double startSec = std::max(random.Fraction() * latestStartSec, 0.0);
    const double fadeStartSec = lengthSec - FadeSecWithin(lengthSec - startSec, durations);
    if (durations.fadeSec >= lengthSec - startSec) return {startSec, fadeStartSec};

    const double endSec = startSec + durations.minSec + random.Fraction() * (durations.maxSec - durations.minSec);
    return {startSec, endSec > lengthSec ? fadeStartSec : std::max(endSec, startSec)};
}

}  // namespace

PlayDurations ChooseDurations(const Settings& settings, bool demonstration) {
    const double fadeSec = std::max(settings.FADE_DURATION_MS, 0) / 1000.0;
    const Settings builtIn;
    const bool isUntouched = settings.songPlayDurationMin == builtIn.songPlayDurationMin &&
                             settings.songPlayDurationMax == builtIn.songPlayDurationMax;
    if (demonstration && isUntouched) return {kDemonstrationMinSec, kDemonstrationMaxSec, fadeSec};
    return {static_cast<double>(settings.songPlayDurationMin), static_cast<double>(settings.songPlayDurationMax),
            fadeSec};
}

PlayWindow ChooseStationWindow(const Settings& settings, bool customStationActive, Random& random) {
    const int64_t first = customStationActive ? settings.bookPlayDurationMin : settings.iSongPlayDurationMin;
    const int64_t second = customStationActive ? settings.bookPlayDurationMax : settings.iSongPlayDurationMax;
    const auto [least, most] = std::minmax(first, second);
    const auto span = static_cast<uint64_t>(most - least) + 1;
    return {0.0, static_cast<double>(least) + static_cast<double>(random.Index(span))};
}

PlayWindow ChoosePlayWindow(double lengthSec, int32_t musicType, const PlayDurations& durations, Random& random) {
    if (lengthSec < 2.0) return FromStart(lengthSec - durations.fadeSec);
    if (IsShortFile(lengthSec, musicType)) return FromStart(lengthSec - kShortFileTailSec);
    if (durations.maxSec < 1.0) return FromStart(lengthSec - FadeSecWithin(lengthSec, durations));
    return RandomWindow(lengthSec, durations, random);
}

PlayWindow ChooseSongWindow(double lengthSec, int32_t musicType, const PlayDurations& durations, Random& random) {
    if (lengthSec <= 0.0) return {0.0, std::max(durations.maxSec, kUnknownLengthSec)};
    PlayWindow window = ChoosePlayWindow(lengthSec, musicType, durations, random);
    window.endSec = FadeBeginSec(window, lengthSec, musicType, durations);
    return window;
}

double FadeBeginSec(const PlayWindow& window, double lengthSec, int32_t musicType, const PlayDurations& durations) {
    if (IsShortFile(lengthSec, musicType)) return window.endSec;
    const double fadeSec = FadeSecWithin(lengthSec - window.startSec, durations);
    return std::max(std::min(window.endSec, lengthSec - fadeSec), window.startSec);
}

}  // namespace hullrider
