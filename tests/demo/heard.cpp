#include "tests/demo/heard.h"

#include <fluidsynth.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <libopenmpt/libopenmpt.hpp>
#include <memory>
#include <sstream>

namespace hullrider::demo {
namespace {

constexpr auto kSoundFont = "/usr/share/sounds/sf2/TimGM6mb.sf2";
constexpr size_t kBlock = 1024, kLongest = kSampleRate * 600;

template <typename T>
using Handle = std::unique_ptr<T, void (*)(T*)>;

void Append(Stereo& sound, const float* frames, size_t count) {
    for (size_t i = 0; i < count; ++i) {
        sound.left.push_back(frames[2 * i]);
        sound.right.push_back(frames[2 * i + 1]);
    }
}

}  // namespace

Stereo HearMidi(const std::string& bytes) {
    const Handle<fluid_settings_t> settings(new_fluid_settings(), delete_fluid_settings);
    fluid_settings_setnum(settings.get(), "synth.gain", 0.8);
    fluid_settings_setnum(settings.get(), "synth.sample-rate", kSampleRate);
    fluid_settings_setstr(settings.get(), "player.timing-source", "sample");
    const Handle<fluid_synth_t> synth(new_fluid_synth(settings.get()), delete_fluid_synth);
    const Handle<fluid_player_t> player(new_fluid_player(synth.get()), delete_fluid_player);
    EXPECT_NE(fluid_synth_sfload(synth.get(), kSoundFont, 1), FLUID_FAILED) << "timgm6mb-soundfont is not installed";
    EXPECT_EQ(fluid_player_add_mem(player.get(), bytes.data(), bytes.size()), FLUID_OK);
    fluid_player_play(player.get());

    Stereo sound;
    float block[2 * kBlock];
    const auto render = [&] {
        fluid_synth_write_float(synth.get(), kBlock, block, 0, 2, block, 1, 2);
        Append(sound, block, kBlock);
    };
    while (fluid_player_get_status(player.get()) == FLUID_PLAYER_PLAYING && sound.frames() < kLongest) render();
    for (size_t tail = FramesOf(2), done = 0; done < tail; done += kBlock) render();
    return sound;
}

Stereo HearModule(const std::string& bytes, const std::string& title) {
    Stereo sound;
    try {
        std::ostringstream log;
        openmpt::module module(bytes.data(), bytes.size(), log);
        EXPECT_EQ(module.get_metadata("title"), title);
        EXPECT_EQ(module.get_metadata("warnings"), "");
        EXPECT_EQ(log.str(), "");
        float block[2 * kBlock];
        while (const size_t frames = module.read_interleaved_stereo(kSampleRate, kBlock, block)) {
            Append(sound, block, frames);
        }
    } catch (const openmpt::exception& refused) {
        ADD_FAILURE() << refused.what();
    }
    return sound;
}

double LongestSilence(const Stereo& sound, double level) {
    size_t silent = 0, longest = 0;
    for (size_t i = 0; i < std::min(sound.frames(), FramesOf(60)); ++i) {
        const bool isSilent = std::abs(sound.left[i]) < level && std::abs(sound.right[i]) < level;
        silent = isSilent ? silent + 1 : 0;
        longest = std::max(longest, silent);
    }
    return static_cast<double>(longest) / kSampleRate;
}

double PeakOf(const Stereo& sound) {
    double peak = 0;
    for (const auto* channel : {&sound.left, &sound.right}) {
        for (const float sample : *channel) peak = std::max(peak, std::abs(static_cast<double>(sample)));
    }
    return peak;
}

}  // namespace hullrider::demo
