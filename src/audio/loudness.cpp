#include "audio/loudness.h"

#include <cmath>
#include <numbers>

namespace hullrider {

namespace {

constexpr double kAbsoluteGate = -70.0, kRelativeGate = -10.0;

double DbOf(double energy) {
    return -0.691 + 10.0 * std::log10(energy);
}

double EnergyOf(double db) {
    return std::pow(10.0, (db + 0.691) / 10.0);
}

}  // namespace

// The standard gives coefficients for 48 kHz. For any rate, these are bilinear transforms of the same analog filters
// (frequency, Q, gain).
Loudness::Loudness(uint32_t rate) : blockFrames_(size_t{rate} * 2 / 5) {
    constexpr double kShelfHz = 1681.974450955533, kShelfQ = 0.7071752369554196, kShelfDb = 3.999843853973347;
    const double high = std::pow(10.0, kShelfDb / 20.0), band = std::pow(high, 0.4996667741545416);
    const double shelf = std::tan(std::numbers::pi * kShelfHz / rate);
    const double shelfA0 = 1.0 + shelf / kShelfQ + shelf * shelf;
    stages_[0].b = {(high + band * shelf / kShelfQ + shelf * shelf) / shelfA0, 2.0 * (shelf * shelf - high) / shelfA0,
                    (high - band * shelf / kShelfQ + shelf * shelf) / shelfA0};
    stages_[0].a = {2.0 * (shelf * shelf - 1.0) / shelfA0, (1.0 - shelf / kShelfQ + shelf * shelf) / shelfA0};

    constexpr double kPassHz = 38.13547087602444, kPassQ = 0.5003270373238773;
    const double pass = std::tan(std::numbers::pi * kPassHz / rate);
    const double passA0 = 1.0 + pass / kPassQ + pass * pass;
    stages_[1].b = {1.0, -2.0, 1.0};
    stages_[1].a = {2.0 * (pass * pass - 1.0) / passA0, (1.0 - pass / kPassQ + pass * pass) / passA0};
}

double Loudness::Stage::Pass(double in, size_t side) {
    std::array<double, 2>& s = state[side];
    const double out = b[0] * in + s[0];
    s[0] = b[1] * in - a[0] * out + s[1];
    s[1] = b[2] * in - a[1] * out;
    return out;
}

void Loudness::Add(const float* frames, size_t count) {
    for (size_t i = 0; i < count; i++) {
        for (size_t side = 0; side < kStereo; side++) {
            double value = static_cast<double>(frames[i * kStereo + side]);
            for (Stage& stage : stages_) value = stage.Pass(value, side);
            energy_ += value * value;
        }
        if (++inBlock_ < blockFrames_) continue;
        blocks_.push_back(energy_ / static_cast<double>(blockFrames_));
        energy_ = 0.0;
        inBlock_ = 0;
    }
}

// The mean of the blocks above `gate`, LKFS; 0 when there are none.
double Loudness::EnergyAbove(double gate) const {
    double sum = 0.0;
    int count = 0;
    for (const double energy : blocks_) {
        if (energy < EnergyOf(gate)) continue;
        sum += energy;
        count++;
    }
    return count == 0 ? 0.0 : sum / count;
}

std::optional<double> Loudness::Lkfs() const {
    const double audible = EnergyAbove(kAbsoluteGate);
    if (audible == 0.0) return std::nullopt;
    return DbOf(EnergyAbove(DbOf(audible) + kRelativeGate));
}

}  // namespace hullrider
