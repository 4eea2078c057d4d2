// Second-order filters, described by their effect on the sound. The formulas are from R. Bristow-Johnson, "Cookbook
// formulae for audio EQ biquad filter coefficients". Pure.
#pragma once

#include <optional>

namespace hullrider {

enum class FilterType {
    kLowPass,
    kHighPass,
    kBandPass,       // 0 dB at its center
    kBandPassSkirt,  // constant skirts, a gain of Q at its center
    kNotch,
    kAllPass,
    kPeaking,
    kLowShelf,
    kHighShelf,
};

struct FilterShape {
    FilterType type = FilterType::kPeaking;
    float centerHz = 1000.0f;  // for a shelf, where half its gain in dB is reached
    float gainDb = 0.0f;       // peaking filters and shelves only
    // The width, given by one of these; 0: not given. A shelf uses its slope if given; the bandwidth takes precedence
    // over Q.
    float bandwidth = 1.0f;  // octaves
    float q = 0.0f;
    float slope = 0.0f;  // up to 1, the steepest that does not overshoot
};

// y = b0 x + b1 x' + b2 x'' - a1 y' - a2 y''. The default changes nothing.
struct Biquad {
    double b0 = 1.0, b1 = 0.0, b2 = 0.0, a1 = 0.0, a2 = 0.0;

    bool operator==(const Biquad&) const = default;
    bool IsNeutral() const { return *this == Biquad(); }
};

// The filter at a sample rate of `rate` Hz: always stable, and exactly neutral at a gain of 0 dB. Nothing when a value
// that the type needs is not a number or out of range: center within 1 Hz and half the rate, gain within 60 dB,
// bandwidth up to 10 octaves, Q from 0.01 to 100, slope from 0.01 to 1.
std::optional<Biquad> DesignBiquad(const FilterShape& shape, double rate);

}  // namespace hullrider
