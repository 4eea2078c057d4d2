#include "audio/biquad.h"

#include <cmath>
#include <numbers>

namespace hullrider {

namespace {

constexpr double kNeutralDb = 0.001;

// The cookbook's intermediate values.
struct Terms {
    double amplitude;  // A: the square root of the gain
    double cosine;
    double alpha;
};

bool HasGain(FilterType type) {
    return type == FilterType::kPeaking || type == FilterType::kLowShelf || type == FilterType::kHighShelf;
}

bool IsShelf(FilterType type) {
    return type == FilterType::kLowShelf || type == FilterType::kHighShelf;
}

bool IsWithin(float value, double least, double most) {
    const auto wide = static_cast<double>(value);
    return wide >= least && wide <= most;
}

bool IsInRange(const FilterShape& shape, double rate) {
    if (shape.type < FilterType::kLowPass || shape.type > FilterType::kHighShelf) return false;
    if (!IsWithin(shape.centerHz, 1.0, rate / 2) || static_cast<double>(shape.centerHz) >= rate / 2) return false;
    if (HasGain(shape.type) && !IsWithin(shape.gainDb, -60.0, 60.0)) return false;
    if (IsShelf(shape.type) && shape.slope != 0.0f) return IsWithin(shape.slope, 0.01, 1.0);
    if (shape.bandwidth != 0.0f) return IsWithin(shape.bandwidth, 0.01, 10.0);
    return IsWithin(shape.q, 0.01, 100.0);
}

double Alpha(const FilterShape& shape, double w0, double amplitude) {
    const double sine = std::sin(w0);
    if (IsShelf(shape.type) && shape.slope != 0.0f) {
        const double steepness = 1.0 / static_cast<double>(shape.slope) - 1.0;
        return sine / 2 * std::sqrt((amplitude + 1 / amplitude) * steepness + 2);
    }
    if (shape.bandwidth != 0.0f) {
        return sine * std::sinh(std::numbers::ln2 / 2 * static_cast<double>(shape.bandwidth) * w0 / sine);
    }
    return sine / (2 * static_cast<double>(shape.q));
}

Biquad Divide(double b0, double b1, double b2, double a0, double a1, double a2) {
    return {b0 / a0, b1 / a0, b2 / a0, a1 / a0, a2 / a0};
}

Biquad Plain(const Terms& t, double b0, double b1, double b2) {
    return Divide(b0, b1, b2, 1 + t.alpha, -2 * t.cosine, 1 - t.alpha);
}

Biquad Peaking(const Terms& t) {
    const double up = t.alpha * t.amplitude, down = t.alpha / t.amplitude;
    return Divide(1 + up, -2 * t.cosine, 1 - up, 1 + down, -2 * t.cosine, 1 - down);
}

// `side`: 1 for the low shelf, -1 for the high one, its mirror image.
Biquad Shelf(const Terms& t, double side) {
    const double cosine = side * t.cosine;
    const double plus = t.amplitude + 1, minus = t.amplitude - 1;
    const double root = 2 * std::sqrt(t.amplitude) * t.alpha;
    return Divide(t.amplitude * (plus - minus * cosine + root), side * 2 * t.amplitude * (minus - plus * cosine),
                  t.amplitude * (plus - minus * cosine - root), plus + minus * cosine + root,
                  side * -2 * (minus + plus * cosine), plus + minus * cosine - root);
}

Biquad Design(FilterType type, const Terms& t) {
    switch (type) {
        case FilterType::kLowPass:
            return Plain(t, (1 - t.cosine) / 2, 1 - t.cosine, (1 - t.cosine) / 2);
        case FilterType::kHighPass:
            return Plain(t, (1 + t.cosine) / 2, -(1 + t.cosine), (1 + t.cosine) / 2);
        case FilterType::kBandPass:
            return Plain(t, t.alpha, 0, -t.alpha);
        case FilterType::kBandPassSkirt: {
            const double halfSine = std::sqrt(1 - t.cosine * t.cosine) / 2;
            return Plain(t, halfSine, 0, -halfSine);
        }
        case FilterType::kNotch:
            return Plain(t, 1, -2 * t.cosine, 1);
        case FilterType::kAllPass:
            return Plain(t, 1 - t.alpha, -2 * t.cosine, 1 + t.alpha);
        case FilterType::kPeaking:
            return Peaking(t);
        case FilterType::kLowShelf:
            return Shelf(t, 1);
        case FilterType::kHighShelf:
            return Shelf(t, -1);
    }
    return {};
}

// Extreme values near half the rate overflow, or rounding puts the poles on the unit circle.
bool IsStable(const Biquad& f) {
    const double sum = f.b0 + f.b1 + f.b2;
    return std::isfinite(sum) && std::fabs(f.a2) < 1.0 && std::fabs(f.a1) < 1.0 + f.a2;
}

}  // namespace

std::optional<Biquad> DesignBiquad(const FilterShape& shape, double rate) {
    if (!IsInRange(shape, rate)) return std::nullopt;
    if (HasGain(shape.type) && std::fabs(static_cast<double>(shape.gainDb)) < kNeutralDb) return Biquad();
    const double w0 = 2 * std::numbers::pi * static_cast<double>(shape.centerHz) / rate;
    const double amplitude = std::pow(10.0, static_cast<double>(shape.gainDb) / 40);
    const Terms terms = {amplitude, std::cos(w0), Alpha(shape, w0, amplitude)};
    const Biquad filter = Design(shape.type, terms);
    if (!IsStable(filter)) return std::nullopt;
    return filter;
}

}  // namespace hullrider
