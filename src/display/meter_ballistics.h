// How the level meter moves: up at once, down slowly, with peak hold. Pure.
#pragma once

#include <cstdint>

namespace hullrider {

// One channel of the meter. Levels are fractions of the scale, which is linear in decibels.
class MeterBallistics {
public:
    // Takes the peak of the last `elapsedSec` seconds, 0 to 1 of full scale.
    void Step(float peak, double elapsedSec);
    // Nothing plays: it falls to rest, and holds no peak.
    void Fall(double elapsedSec);
    void Reset();

    float Level() const { return level_; }
    float Peak() const { return peak_; }
    bool AtRest() const { return level_ <= 0.0F && peak_ <= 0.0F; }

private:
    float level_ = 0.0F;
    float peak_ = 0.0F;
    double peakHeldSec_ = 0.0;
};

// The level of an amplitude of 0 to 1 on the scale: 0 at -45 dB and below, 1 at full scale.
float MeterScale(float amplitude);

// How many of `segments` are lit at that level.
int32_t LitSegments(float level, int32_t segments);

}  // namespace hullrider
