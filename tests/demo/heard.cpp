#include "tests/demo/heard.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <libopenmpt/libopenmpt.hpp>
#include <sstream>
#include <vector>

#include "audio/bass.h"
#include "audio/manual_output.h"
#include "tests/temporary_folder.h"

namespace hullrider::demo {
namespace {

constexpr auto kSoundFont = "/usr/share/sounds/sf2/TimGM6mb.sf2";
constexpr size_t kBlock = 4096, kLongest = kSampleRate * 600;

void Append(Stereo& sound, const float* frames, size_t count) {
    for (size_t i = 0; i < count; ++i) {
        sound.left.push_back(frames[2 * i]);
        sound.right.push_back(frames[2 * i + 1]);
    }
}

}  // namespace

Stereo HearMidi(const std::string& bytes) {
    Stereo sound;
    const TemporaryFolder folder;
    const std::string path = folder.Write("piece.mid", bytes);
    EXPECT_TRUE(InitManualOutput(kSampleRate));
    const BASS_MIDI_FONT font{BASS_MIDI_FontInit(kSoundFont, 0), -1, 0};
    EXPECT_TRUE(BASS_MIDI_StreamSetFonts(0, &font, 1)) << "timgm6mb-soundfont is not installed";
    const HSTREAM stream = BASS_StreamCreateFile(false, path.c_str(), 0, 0, 0);
    EXPECT_TRUE(BASS_ChannelPlay(stream, false));
    std::vector<float> block(2 * kBlock);
    while (BASS_ChannelIsActive(stream) != BASS_ACTIVE_STOPPED && sound.frames() < kLongest) {
        EXPECT_TRUE(RenderManually(block.data(), kBlock, kBlock));
        Append(sound, block.data(), kBlock);
    }
    BASS_Free();
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
