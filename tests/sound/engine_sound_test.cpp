// What the engine makes heard: cross-fades, equal loudness, starts in the middle. The audio library renders as fast as
// it can, and the engine's clock goes along with it.
#include <cmath>

#include "playback/play_next.h"
#include "playback/stream_loudness.h"
#include "playback/stream_slots.h"
#include "playback/transport.h"
#include "playback/volume.h"
#include "tests/console_capture.h"
#include "tests/inline_workers.h"
#include "tests/platform/fake_clock.h"
#include "tests/playback/made_library.h"
#include "tests/sound/sound.h"

namespace hullrider {

using namespace std::chrono_literals;

class EngineSound : public SoundTest {
protected:
    void TearDown() override { FreeAllStreams(app_.playback, app_.soundFonts); }

    // Noise in which no two songs are alike. Its peak is the square root of 3 times its root mean square.
    std::string SaveNoise(const std::string& name, double seconds, double rms) {
        TestSound sound = Noise(kRate, static_cast<size_t>(seconds * kRate), nextSeed_++);
        const double factor = rms / Rms(sound.samples);
        for (float& sample : sound.samples) sample *= static_cast<float>(factor);
        return Save(name, sound, WavFormat::kFloat);
    }

    // The next seconds as they come out, with the level meter's timer and the engine's workers.
    Samples Run(double seconds) {
        Samples out;
        for (int i = 0; i < std::lround(seconds * 100.0); ++i) {
            Append(out, Render(kRate / 100));
            clock_.Advance(10ms);
            if (++ticks_ % 25 == 0) SampleLoudness(app_.playback);
        }
        return out;
    }

    // The song of that number in the one playlist.
    void PlaySongNumber(int32_t song) { ASSERT_TRUE(PlaySong(app_, picker_, 0, song)); }

    const ConsoleCapture quiet_;
    InlineWorkers inline_;
    FakeClock clock_;
    AppState app_;
    PickerState picker_{21};
    unsigned nextSeed_ = 1;
    int ticks_ = 0;
};

TEST_F(EngineSound, ACrossFadeOfTwoSongsNeitherDipsNorExceedsFullScale) {
    constexpr double kRms = 0.57;  // peaks at 0.99
    for (const int32_t fadeMs : {500, 2000, 8000}) {
        SetLibrary(app_, {{MadeSong(SaveNoise("one.wav", 60.0, kRms), kMp3),
                           MadeSong(SaveNoise("two.wav", 60.0, kRms), kMp3)}});
        app_.settings.volumeLevel = 1.0F;
        app_.settings.songPlayDurationMin = app_.settings.songPlayDurationMax = 30;
        app_.settings.FADE_DURATION_MS = fadeMs;
        PlaySongNumber(0);
        Run(fadeMs / 1000.0 + 0.5);
        PlaySongNumber(1);
        const Samples heard = Run(fadeMs / 1000.0 + 0.5);
        EXPECT_LE(Peak(heard), 1.0F) << fadeMs;
        const size_t window = kRate / 20 * 2;
        double deepest = 0.0;
        for (size_t i = 0; i + window <= heard.size(); i += window) {
            deepest = std::min(deepest, Decibels(Rms(Part(heard, i, window)) / kRms));
        }
        EXPECT_GT(deepest, -3.5) << fadeMs;
        EXPECT_LT(deepest, -2.0) << fadeMs;  // it was a cross-fade
        CutStreamsBut(app_.playback, 0);
        Run(fadeMs / 1000.0 + 1.0);
    }
}

TEST_F(EngineSound, SongsMasteredFarApartComeOutAlikeFiveSecondsAfterTheirStart) {
    constexpr int kSongs = 10;
    std::vector<Song> songs;
    for (int i = 0; i < kSongs; ++i) {
        // -30 to -6 dB of full scale, loud and quiet ones beside each other.
        const double db = -30.0 + 24.0 * ((i * 7) % kSongs) / (kSongs - 1);
        songs.push_back(MadeSong(SaveNoise(std::to_string(i) + ".wav", 40.0, std::pow(10.0, db / 20.0)), kMp3));
    }
    SetLibrary(app_, {songs});
    app_.playback.volume->realTimeVolume = true;
    app_.playback.volumeMode = kHighVolume;
    app_.settings.highVolume = 0.05F;  // the quietest song reaches it at full volume
    double quietest = 1e9, loudest = 0.0;
    for (int i = 0; i < kSongs; ++i) {
        PlaySongNumber(i);
        Run(5.0);
        const double rms = Rms(Run(0.5));
        quietest = std::min(quietest, rms);
        loudest = std::max(loudest, rms);
        Run(5.0);
    }
    EXPECT_LT(Decibels(loudest / quietest), 3.0);
    RecordProperty("spreadDb", std::to_string(Decibels(loudest / quietest)));
}

TEST_F(EngineSound, NothingFromBeforeTheStartOfTheWindowIsHeard) {
    TestSound sound = Tone(kRate, 2, 400.0, 60.0);
    const TestSound opening = Tone(kRate, 2, 3000.0, 2.0, 0.9);
    std::copy(opening.samples.begin(), opening.samples.end(), sound.samples.begin());
    SetLibrary(app_, {{MadeSong(Save("song.wav", sound), kMp3)}});
    app_.settings.songPlayDurationMin = app_.settings.songPlayDurationMax = 20;
    app_.settings.FADE_DURATION_MS = 0;
    int started = 0;
    while (started < 5) {
        CutStreamsBut(app_.playback, 0);
        Run(0.5);
        PlaySongNumber(0);
        if (app_.playback.startSec < 2.0) continue;
        ++started;
        const Samples heard = Left(Run(0.3));
        EXPECT_LT(AmplitudeAt(heard, kRate, 3000.0), 0.002);
        EXPECT_GT(AmplitudeAt(heard, kRate, 400.0), 0.1);
    }
}

}  // namespace hullrider
