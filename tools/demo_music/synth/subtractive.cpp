#include <algorithm>

#include "demo_music/synth/envelope.h"
#include "demo_music/synth/filter.h"

namespace hullrider::demo {

double FrequencyOf(int key) {
    return 440 * std::exp2((key - 69) / 12.0);
}

namespace {

constexpr size_t kControlFrames = 16;  // how often slow things (filter, vibrato) are looked at

// Takes the step out of a saw or pulse where it would alias: the polynomial band-limited step of Välimäki and
// Huovilainen, "Antialiasing Oscillators in Subtractive Synthesis" (IEEE Signal Processing Magazine 24/2, 2007).
double StepCorrection(double phase, double step) {
    if (phase < step) {
        const double t = phase / step;
        return t + t - t * t - 1;
    }
    if (phase > 1 - step) {
        const double t = (phase - 1) / step;
        return t * t + t + t + 1;
    }
    return 0;
}

struct Oscillator {
    double phase = 0, step = 0, left = 1, right = 1;

    double Next(Wave wave) {
        phase += step;
        if (phase >= 1) phase -= 1;
        switch (wave) {
            case Wave::kSaw:
                return 2 * phase - 1 - StepCorrection(phase, step);
            case Wave::kPulse: {
                const double half = phase < 0.5 ? phase + 0.5 : phase - 0.5;
                return (phase < 0.5 ? 1 : -1) + StepCorrection(phase, step) - StepCorrection(half, step);
            }
            case Wave::kTriangle:
                return 4 * std::abs(phase - 0.5) - 1;
            case Wave::kSine:
                break;
        }
        return std::sin(2 * kPi * phase);
    }
};

class SubtractiveVoice {
public:
    SubtractiveVoice(const SubtractivePatch& patch, const Tone& tone, Random& random)
        : patch_(patch),
          tone_(tone),
          loudness_(patch.loudness, tone.seconds),
          brightness_(patch.brightness, tone.seconds),
          oscillators_(static_cast<size_t>(patch.oscillators)) {
        for (size_t i = 0; i < oscillators_.size(); ++i) {
            oscillators_[i].phase = random.Unit();
            const double side = Side(i) * patch.width;
            oscillators_[i].left = std::sqrt((1 - side) / 2);
            oscillators_[i].right = std::sqrt((1 + side) / 2);
        }
        sub_.step = tone.hz / 2 / kSampleRate;
        gain_ = tone.velocity / std::sqrt(static_cast<double>(patch.oscillators));
    }

    void AddTo(Stereo& sound, size_t start) {
        for (size_t i = 0; start + i < sound.frames() && !loudness_.Over(); ++i) {
            const double bright = brightness_.Next();
            if (i % kControlFrames == 0) Control(static_cast<double>(i) / kSampleRate, bright);
            double left = 0, right = 0;
            for (Oscillator& oscillator : oscillators_) {
                const double value = oscillator.Next(patch_.wave);
                left += value * oscillator.left;
                right += value * oscillator.right;
            }
            const double sub = patch_.subLevel > 0 ? sub_.Next(Wave::kSine) * patch_.subLevel : 0;
            const double gain = gain_ * loudness_.Next();
            sound.Add(start + i, gain * (left_.LowPass(left) + sub), gain * (right_.LowPass(right) + sub));
        }
    }

private:
    // From -1 for the first oscillator to 1 for the last.
    double Side(size_t oscillator) const {
        if (oscillators_.size() < 2) return 0;
        return 2.0 * static_cast<double>(oscillator) / static_cast<double>(oscillators_.size() - 1) - 1;
    }

    void Control(double seconds, double bright) {
        const double vibrato = patch_.vibratoCents * std::min(1.0, seconds * 2) * std::sin(2 * kPi * 5 * seconds);
        for (size_t i = 0; i < oscillators_.size(); ++i) {
            const double cents = vibrato + Side(i) * patch_.detuneCents / 2;
            oscillators_[i].step = tone_.hz * std::exp2(cents / 1200) / kSampleRate;
        }
        const double octaves =
            patch_.brightnessOctaves * bright * (0.5 + 0.5 * tone_.velocity) + (tone_.key - 60) / 24.0;
        left_.Tune(patch_.cutoffHz * std::exp2(octaves), patch_.resonance);
        right_.Tune(patch_.cutoffHz * std::exp2(octaves), patch_.resonance);
    }

    const SubtractivePatch& patch_;
    Tone tone_;
    Envelope loudness_, brightness_;
    std::vector<Oscillator> oscillators_;
    Oscillator sub_;
    StateVariableFilter left_, right_;
    double gain_ = 1;
};

}  // namespace

Instrument Subtractive(const SubtractivePatch& patch) {
    return [patch](const Tone& tone, size_t start, Random& random, Stereo& sound) {
        SubtractiveVoice(patch, tone, random).AddTo(sound, start);
    };
}

}  // namespace hullrider::demo
