#include "demo_music/synth/effects.h"

#include <array>

#include "demo_music/synth/filter.h"

namespace hullrider::demo {
namespace {

constexpr size_t kLines = 8;
// Mutually prime, 25 to 80 ms: no echo of one line falls on another's.
constexpr std::array<size_t, kLines> kLengths{1103, 1361, 1627, 1933, 2251, 2609, 3011, 3527};
constexpr size_t kPreDelay = 882;

struct DelayLine {
    std::vector<double> samples;
    size_t at = 0;
    double feedback = 0, damped = 0;

    DelayLine(size_t length, double seconds)
        : samples(length), feedback(std::pow(10.0, -3.0 * static_cast<double>(length) / (seconds * kSampleRate))) {}

    double Read() {
        damped += 0.55 * (samples[at] - damped);
        return damped * feedback;
    }
    void Write(double value) {
        samples[at] = value;
        at = (at + 1) % samples.size();
    }
};

}  // namespace

Stereo Reverberate(const Stereo& sent, double seconds) {
    std::vector<DelayLine> lines;
    for (const size_t length : kLengths) lines.emplace_back(length, seconds);
    Stereo room(sent.frames());
    std::array<double, kLines> out{};
    for (size_t i = kPreDelay; i < sent.frames(); ++i) {
        double sum = 0;
        for (size_t n = 0; n < kLines; ++n) sum += (out[n] = lines[n].Read());
        // A Householder reflection mixes every line into every other and loses nothing.
        const double mixed = sum * 2 / kLines;
        for (size_t n = 0; n < kLines; ++n) {
            const double in = n % 2 == 0 ? sent.left[i - kPreDelay] : sent.right[i - kPreDelay];
            lines[n].Write(in * 0.5 + mixed - out[n]);
        }
        room.Add(i, out[0] - out[2] + out[4] - out[6], out[1] - out[3] + out[5] - out[7]);
    }
    return room;
}

Stereo Echo(const Stereo& sent, double delaySeconds, double feedback) {
    Stereo echoes(sent.frames());
    const size_t delay = FramesOf(delaySeconds);
    StateVariableFilter left, right;
    left.Tune(2800, 0);
    right.Tune(2800, 0);
    for (size_t i = delay; i < sent.frames(); ++i) {
        const double in = 0.5 * (sent.left[i - delay] + sent.right[i - delay]);
        echoes.Add(i, left.LowPass(in + feedback * echoes.right[i - delay]),
                   right.LowPass(feedback * echoes.left[i - delay]));
    }
    return echoes;
}

void RemoveRumble(Stereo& sound) {
    for (std::vector<float>* channel : {&sound.left, &sound.right}) {
        StateVariableFilter filter;
        filter.Tune(28, 0.3);
        for (float& sample : *channel) sample = static_cast<float>(filter.HighPass(sample));
    }
}

}  // namespace hullrider::demo
