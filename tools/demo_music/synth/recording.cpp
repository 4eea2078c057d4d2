#include "demo_music/synth/recording.h"

#include <algorithm>

#include "demo_music/synth/effects.h"

namespace hullrider::demo {
namespace {

constexpr double kRingSeconds = 4;
constexpr double kLoudnessLufs = -17;
constexpr double kCeiling = 0.78;  // -2.2 dBFS: lossy encoders overshoot

Stereo PerformTrack(const Track& track, double secondsPerBeat, size_t frames, Random& random) {
    Stereo sound(frames);
    for (const Note& note : track.phrase.notes) {
        const Tone tone{note.key, FrequencyOf(note.key), note.beats * secondsPerBeat, note.velocity};
        track.instrument(tone, FramesOf(note.start * secondsPerBeat), random, sound);
    }
    return sound;
}

void FadeTail(Stereo& sound) {
    const size_t length = std::min(sound.frames(), FramesOf(kRingSeconds / 2));
    for (size_t i = 0; i < length; ++i) {
        const auto gain = static_cast<float>(i) / static_cast<float>(length);
        sound.left[sound.frames() - 1 - i] *= gain;
        sound.right[sound.frames() - 1 - i] *= gain;
    }
}

}  // namespace

Stereo Perform(const Recording& recording) {
    const double secondsPerBeat = 60 / recording.beatsPerMinute;
    double beats = 0;
    for (const Track& track : recording.tracks) beats = std::max(beats, track.phrase.beats);
    const size_t frames = FramesOf(beats * secondsPerBeat + kRingSeconds);

    Random random(recording.seed);
    Stereo mix(frames), toReverb(frames), toEcho(frames);
    for (const Track& track : recording.tracks) {
        const Stereo sound = PerformTrack(track, secondsPerBeat, frames, random);
        const double gain = std::pow(10.0, (track.levelLu - 20 - LoudnessOf(sound)) / 20);
        const double left = gain * std::min(1.0, 1 - track.pan), right = gain * std::min(1.0, 1 + track.pan);
        MixIn(mix, sound, left, right);
        if (track.reverb > 0) MixIn(toReverb, sound, left * track.reverb, right * track.reverb);
        if (track.echo > 0) MixIn(toEcho, sound, left * track.echo, right * track.echo);
    }
    const Stereo echoes = Echo(toEcho, recording.echoBeats * secondsPerBeat, recording.echoFeedback);
    MixIn(mix, echoes, 1, 1);
    MixIn(toReverb, echoes, 0.3, 0.3);
    MixIn(mix, Reverberate(toReverb, recording.reverbSeconds), 1, 1);
    RemoveRumble(mix);
    Master(mix, kLoudnessLufs, kCeiling);
    FadeTail(mix);
    return mix;
}

}  // namespace hullrider::demo
