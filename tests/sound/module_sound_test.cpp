#include <cmath>

#include "tests/audio/module_bytes.h"
#include "tests/sound/sound.h"

namespace hullrider {

class ModuleSound : public SoundTest {
protected:
    HMUSIC Load(const std::string& bytes, uint32_t flags = 0) {
        const HMUSIC music = BASS_MusicLoad(false, folder_.Write("song.mod", bytes).c_str(), 0, 0, flags, 0);
        EXPECT_NE(music, 0u) << BASS_ErrorGetCode();
        return music;
    }
    // 64 rows of 6 ticks of 20 ms.
    static constexpr double kPatternSec = 7.68;
};

TEST_F(ModuleSound, PlaysAtItsPitchForItsLength) {
    // The PAL clock over twice the period is the sample rate (8287 Hz at 428), and 32 samples are one wave.
    for (const int period : {428, 214}) {
        const HMUSIC music = Load(ModuleBytes(period));
        EXPECT_NEAR(LengthSec(music), kPatternSec, 0.01);
        BASS_CHANNELINFO info{};
        ASSERT_TRUE(BASS_ChannelGetInfo(music, &info));
        EXPECT_EQ(info.ctype, BASS_CTYPE_MUSIC_MOD);
        EXPECT_STREQ(BASS_ChannelGetTags(music, BASS_TAG_MUSIC_NAME), "test module");
        ASSERT_TRUE(BASS_ChannelPlay(music, false));
        Render(kRate / 4);
        EXPECT_NEAR(FrequencyOf(Left(Render(kRate / 2)), kRate), 7093789.2 / (2 * period) / 32, 1.0);
        Render(kRate * 8);
        EXPECT_EQ(BASS_ChannelIsActive(music), BASS_ACTIVE_STOPPED);
        EXPECT_TRUE(BASS_MusicFree(music));
    }
}

TEST_F(ModuleSound, AnEndlessModuleHasALengthAndAnEnd) {
    const HMUSIC music = Load(ModuleBytes(428, 1, true));
    EXPECT_NEAR(LengthSec(music), kPatternSec, 0.01);
    BASS_ChannelPlay(music, false);
    Render(kRate * 8);
    EXPECT_EQ(BASS_ChannelIsActive(music), BASS_ACTIVE_STOPPED);
}

// Pattern 0, then pattern 2 again and again.
TEST_F(ModuleSound, AModuleThatGoesOnInItsMiddleIsWhereItSounds) {
    const HMUSIC music = Load(ModuleBytes(428, 4, true, 4, 2), BASS_SAMPLE_LOOP);
    EXPECT_NEAR(LengthSec(music), 2 * kPatternSec, 0.01);
    BASS_ChannelPlay(music, false);
    double heardUntil = 0.0;
    for (const auto& [heard, place] :
         {std::pair{7.0, 7.0}, {14.0, 14.0}, {16.0, 16.0 - kPatternSec}, {24.0, 24.0 - 2 * kPatternSec}}) {
        Render(static_cast<size_t>((heard - heardUntil) * kRate));
        heardUntil = heard;
        EXPECT_NEAR(PositionSec(music), place, 0.03) << heard;
        EXPECT_GT(Rms(Render(100)), 0.05);
    }
    ASSERT_TRUE(SeekToFrame(music, kRate * 15));
    Render(kRate);
    EXPECT_NEAR(PositionSec(music), 16.0 - kPatternSec, 0.03);
}

// At a tempo whose ticks are no whole number of frames at 44100 Hz. A note is struck once in a pattern, and cut in its
// middle.
TEST_F(ModuleSound, ASeekSoundsAsIfTheSongHadBeenPlayedUpToThere) {
    constexpr size_t kPattern = 1084, kRowBytes = 16;
    std::string bytes = ModuleBytes(428, 30, false, 1);
    for (size_t row = 8; row < 64; row += 8) bytes.replace(kPattern + row * kRowBytes, 4, 4, '\0');
    bytes.replace(kPattern + 32 * kRowBytes, 4, "\0\0\x0C\0", 4);
    bytes.replace(kPattern + 12, 4, "\0\0\x0F\x8C", 4);  // the fourth channel: tempo 140
    const HMUSIC music = Load(bytes);
    const double length = LengthSec(music);
    const auto cutFrame = [](const Samples& heard) {
        size_t frame = heard.size() / 2;
        while (frame > 0 && std::fabs(heard[frame * 2 - 2]) < 0.01f) frame--;
        return static_cast<double>(frame);
    };
    ASSERT_TRUE(SeekToFrame(music, kRate * 193));
    BASS_ChannelPlay(music, false);
    const Samples sought = Render(kRate * 4);
    BASS_ChannelPlay(music, true);
    Render(kRate * 193);
    const Samples played = Render(kRate * 4);
    EXPECT_GT(Rms(Part(played, 1000, 10'000)), 0.05);
    EXPECT_NEAR(Rms(Part(sought, 1000, 10'000)), Rms(Part(played, 1000, 10'000)), 0.001);
    EXPECT_NEAR(cutFrame(sought), cutFrame(played), 250);
    EXPECT_LT(cutFrame(played), kRate * 3);
    Render(kRate * 60);
    EXPECT_NEAR(LengthSec(music), length, 0.15);  // the last notes fade
}

TEST_F(ModuleSound, AModuleThatWouldFillTheMemoryIsRefused) {
    EXPECT_NE(Load(PackedModuleBytes(1, 1'000'000)), 0u);
    const std::string packed = PackedModuleBytes(99, 1'000'000);
    for (const std::string& bytes : {packed, "tpm." + packed.substr(4), WrappedModuleBytes(packed),
                                     PolyModuleBytes(200, 1'000'000), std::string(100'000, 'x')}) {
        EXPECT_EQ(BASS_MusicLoad(false, folder_.Write("bad.it", bytes).c_str(), 0, 0, 0, 0), 0u);
        EXPECT_EQ(BASS_ErrorGetCode(), BASS_ERROR_FILEFORM);
    }
}

}  // namespace hullrider
