#include "audio/stream_pace.h"

#include <algorithm>
#include <cmath>

namespace hullrider {

namespace {

constexpr double kMostChange = 0.006;       // a tenth of a semitone
constexpr double kSettleSec = 30.0;         // a burst of the server has arrived by then
constexpr double kSmoothSec = 15.0;         // servers send in pieces, and bit rates vary
constexpr double kLeastWantedSec = 4.0;     // for servers that send no burst: enough for a short pause
constexpr double kIgnoredShare = 0.15;      // of what is wanted: not worth a change
constexpr double kChangePerSecond = 0.005;  // for each second beyond that

}  // namespace

double StreamPace::Update(double aheadSec, double playedSec) {
    const bool isFirst = settledSec_ == 0.0;
    settledSec_ += playedSec;
    aheadSec_ = isFirst ? aheadSec : aheadSec_ + (aheadSec - aheadSec_) * std::min(playedSec / kSmoothSec, 1.0);
    if (settledSec_ < kSettleSec) return 1.0;
    if (wantedSec_ == 0.0) wantedSec_ = std::max(aheadSec_, kLeastWantedSec);
    const double off = aheadSec_ - wantedSec_;
    const double beyond = std::max(std::fabs(off) - wantedSec_ * kIgnoredShare, 0.0);
    return 1.0 + std::copysign(std::min(beyond * kChangePerSecond, kMostChange), off);
}

void StreamPace::Reset() {
    *this = StreamPace();
}

}  // namespace hullrider
