#include "playback/sounding_start.h"

#include <algorithm>
#include <cmath>

#include "audio/ahead.h"
#include "audio/bass.h"

namespace hullrider {

namespace {

constexpr double kFullScale = 32768.0;
constexpr size_t kMeasuredLevels = 10;
constexpr double kStepSec = kLookAheadMs / 1000.0;
constexpr double kPeakSec = kPeakMs / 1000.0;

bool GoTo(StreamSlot handle, double seconds) {
    return BASS_ChannelSetPosition(handle, BASS_ChannelSeconds2Bytes(handle, seconds), BASS_POS_BYTE);
}

// The peaks from the stream's position on, for up to kLookAheadMs.
std::vector<StereoPeak> LookAhead(StreamSlot handle, const std::atomic<bool>& isHurried) {
    std::vector<StereoPeak> peaks;
    for (const uint32_t ms : {kLookAheadMs / 8, kLookAheadMs / 2, kLookAheadMs}) {
        if (!BASS_ChannelUpdate(handle, ms)) return {};
        peaks = PeaksAhead(handle, kPeakMs);
        if (isHurried && FirstSounding(peaks)) break;
    }
    return peaks;
}

void MoveWindow(PlayWindow& window, double startSec, double lengthSec, double fadeSec) {
    const double latestEndSec = std::max(window.endSec, lengthSec - fadeSec);
    const double endSec = window.startSec > 0.0 ? startSec + (window.endSec - window.startSec) : window.endSec;
    window = {startSec, std::max(std::min(endSec, latestEndSec), startSec)};
}

}  // namespace

std::optional<size_t> FirstSounding(std::span<const StereoPeak> peaks) {
    const auto sounds = [](const StereoPeak& peak) { return std::max(peak.left, peak.right) > LevelMeter::kQuiet; };
    const auto first = std::find_if(peaks.begin(), peaks.end(), sounds);
    if (first == peaks.end()) return std::nullopt;
    return static_cast<size_t>(first - peaks.begin());
}

std::optional<float> RmsOfPeaks(std::span<const StereoPeak> peaks) {
    double sum = 0.0;
    size_t taken = 0;
    for (const StereoPeak& peak : peaks) {
        const double rms = std::sqrt((double{peak.left} * peak.left + double{peak.right} * peak.right) * 0.5);
        if (rms * kFullScale < 1.0) continue;
        sum += std::min(rms, 1.0);
        if (++taken == kMeasuredLevels) break;
    }
    if (taken == 0) return std::nullopt;
    return static_cast<float>(sum / static_cast<double>(taken) * kFullScale);
}

bool SettleOnSound(StreamSlot handle, double lengthSec, double fadeSec, PlayWindow& window,
                   const std::atomic<bool>& isHurried, std::optional<float>& rms) {
    double placeSec = window.startSec;
    for (double searchedSec = 0.0; searchedSec < lengthSec + kStepSec; searchedSec += kStepSec) {
        const std::vector<StereoPeak> peaks = LookAhead(handle, isHurried);
        const std::optional<size_t> first = FirstSounding(peaks);
        if (first && static_cast<double>(*first) * kPeakSec < kLongestSilentStartSec) {
            if (placeSec != window.startSec) MoveWindow(window, placeSec, lengthSec, fadeSec);
            rms = RmsOfPeaks(peaks);
            return true;
        }
        placeSec += first ? static_cast<double>(*first) * kPeakSec : kStepSec;
        // No peaks: the file breaks off before this place.
        if (peaks.empty() || placeSec >= lengthSec) placeSec = 0.0;
        if (!GoTo(handle, placeSec)) return false;
    }
    return false;
}

std::optional<float> MeasureAhead(StreamSlot handle, const std::atomic<bool>& isHurried) {
    return RmsOfPeaks(LookAhead(handle, isHurried));
}

}  // namespace hullrider
