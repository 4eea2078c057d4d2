#include "display/meter_ballistics.h"

#include <algorithm>
#include <cmath>

namespace hullrider {

namespace {

constexpr float kLowestDb = -45.0F;
constexpr double kFallDbPerSec = 26.0;  // about the fall of a studio's peak meter, a little quicker
constexpr double kPeakHoldSec = 1.2;
constexpr double kPeakFallDbPerSec = 18.0;

float FallBy(float level, double dbPerSec, double elapsedSec) {
    const double fall = dbPerSec * elapsedSec / static_cast<double>(-kLowestDb);
    return std::max(static_cast<float>(static_cast<double>(level) - fall), 0.0F);
}

}  // namespace

void MeterBallistics::Step(float peak, double elapsedSec) {
    const float now = MeterScale(peak);
    level_ = std::max(now, FallBy(level_, kFallDbPerSec, elapsedSec));
    if (now >= peak_) {
        peak_ = now;
        peakHeldSec_ = 0.0;
        return;
    }
    peakHeldSec_ += elapsedSec;
    if (peakHeldSec_ > kPeakHoldSec) peak_ = std::max(level_, FallBy(peak_, kPeakFallDbPerSec, elapsedSec));
}

void MeterBallistics::Fall(double elapsedSec) {
    level_ = peak_ = FallBy(level_, kFallDbPerSec, elapsedSec);
    peakHeldSec_ = 0.0;
}

void MeterBallistics::Reset() {
    *this = {};
}

float MeterScale(float amplitude) {
    if (!(amplitude > 0.0F)) return 0.0F;
    const float db = 20.0F * std::log10(amplitude);
    return std::clamp((db - kLowestDb) / -kLowestDb, 0.0F, 1.0F);
}

int32_t LitSegments(float level, int32_t segments) {
    return std::clamp(static_cast<int32_t>(std::lround(level * static_cast<float>(segments))), 0, segments);
}

}  // namespace hullrider
