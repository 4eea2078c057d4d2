// Outputs in real time, and everything at once from many threads.
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <cstring>
#include <random>
#include <thread>

#include "audio/bass.h"
#include "audio/output_choice.h"
#include "tests/audio/midi_bytes.h"
#include "tests/audio/module_bytes.h"
#include "tests/sound/sound.h"

// What the leak checker is not to report: the sound device's library keeps its connection when there is no server.
extern "C" const char* __lsan_default_suppressions();
extern "C" const char* __lsan_default_suppressions() {
    return "leak:libpulse";
}

namespace hullrider {

using std::chrono::milliseconds;

TEST(Outputs, TheNullOutputKeepsTime) {
    const TemporaryFolder folder;
    const std::string path = folder.Write("a.wav", WavBytes(Noise(8000, 80000)));
    ASSERT_TRUE(BASS_Init(0, 44100, 0, nullptr, nullptr));
    const HSTREAM stream = BASS_StreamCreateFile(false, path.c_str(), 0, 0, 0);
    ASSERT_TRUE(BASS_ChannelPlay(stream, false));
    const auto begin = std::chrono::steady_clock::now();
    std::this_thread::sleep_for(milliseconds(700));
    const double passed = std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
    EXPECT_NEAR(BASS_ChannelBytes2Seconds(stream, BASS_ChannelGetPosition(stream, BASS_POS_BYTE)), passed, 0.15);
    EXPECT_TRUE(BASS_Free());
}

// Longer than is decoded ahead, with pauses of the kind in which the decoders have nothing to do.
TEST(Outputs, DecodingGoesOnForAsLongAsItPlays) {
    const TemporaryFolder folder;
    const std::string path = folder.Write("a.wav", WavBytes(Noise(8000, 80000)));
    ASSERT_TRUE(BASS_Init(0, 44100, 0, nullptr, nullptr));
    std::this_thread::sleep_for(milliseconds(50));
    std::vector<HSTREAM> streams;
    for (int i = 0; i < 3; i++) {
        streams.push_back(BASS_StreamCreateFile(false, path.c_str(), 0, 0, 0));
        std::this_thread::sleep_for(milliseconds(30));
        ASSERT_TRUE(BASS_ChannelPlay(streams.back(), false));
    }
    std::this_thread::sleep_for(milliseconds(3500));
    for (const HSTREAM stream : streams) {
        EXPECT_EQ(BASS_ChannelIsActive(stream), BASS_ACTIVE_PLAYING);
        EXPECT_GT(BASS_ChannelBytes2Seconds(stream, BASS_ChannelGetPosition(stream, BASS_POS_BYTE)), 3.3);
    }
    EXPECT_TRUE(BASS_Free());
}

TEST(Outputs, TheRecordingIsPlayableWhileItGrowsAndHoldsWhatWasHeard) {
    const TemporaryFolder folder;
    const TestSound sound = Noise(44100, 44100);
    const std::string path = folder.Write("a.wav", WavBytes(sound));
    ChooseOutput({OutputKind::kWav, folder.At("out.wav")});
    ASSERT_TRUE(BASS_Init(-1, 44100, 0, nullptr, nullptr));
    const HSTREAM stream = BASS_StreamCreateFile(false, path.c_str(), 0, 0, 0);
    ASSERT_TRUE(BASS_ChannelPlay(stream, false));
    std::this_thread::sleep_for(milliseconds(1300));
    const std::string killed = folder.Write("killed.wav", folder.Read("out.wav"));  // as a kill would leave it
    EXPECT_TRUE(BASS_Free());
    ChooseOutput({});

    ASSERT_TRUE(BASS_Init(0, 44100, 0, nullptr, nullptr));
    const HSTREAM recorded = BASS_StreamCreateFile(false, killed.c_str(), 0, 0, 0);
    EXPECT_GT(BASS_ChannelBytes2Seconds(recorded, BASS_ChannelGetLength(recorded, BASS_POS_BYTE)), 0.4);
    EXPECT_TRUE(BASS_Free());
    const std::string out = folder.Read("out.wav");
    Samples samples((out.size() - out.find("data") - 8) / sizeof(float));
    std::memcpy(samples.data(), out.data() + out.find("data") + 8, samples.size() * sizeof(float));
    const auto first = std::find(samples.begin(), samples.end(), sound.samples[0]);
    ASSERT_GT(samples.end() - first, 80000);
    EXPECT_TRUE(std::equal(first, first + 80000, sound.samples.begin()));
}

TEST(Outputs, ARecordingThatCannotBeMadeIsAnError) {
    const TemporaryFolder folder;
    ChooseOutput({OutputKind::kWav, folder.At("no/folder/out.wav")});
    EXPECT_FALSE(BASS_Init(-1, 44100, 0, nullptr, nullptr));
    EXPECT_EQ(BASS_ErrorGetCode(), BASS_ERROR_FILEOPEN);
    ChooseOutput({});
}

// With a device or without one, the attempt ends in a working library or in an error, every time.
TEST(Outputs, TheDefaultDeviceOpensOrSaysWhyNot) {
    for (int i = 0; i < 3; i++) {
        if (BASS_Init(-1, 44100, 0, nullptr, nullptr)) {
            EXPECT_NE(OutputDescription(), "");
            std::this_thread::sleep_for(milliseconds(50));
            EXPECT_TRUE(BASS_Free());
        } else {
            EXPECT_EQ(BASS_ErrorGetCode(), BASS_ERROR_DRIVER);
        }
    }
}

namespace {

// One thread of the storm: a random call on a random channel of those that all threads share.
void Storm(const std::vector<std::string>& paths, std::vector<std::atomic<uint32_t>>& shared, unsigned seed,
           std::chrono::steady_clock::time_point end) {
    std::minstd_rand random(seed);
    while (std::chrono::steady_clock::now() < end) {
        std::atomic<uint32_t>& slot = shared[random() % shared.size()];
        const uint32_t channel = slot.load();
        float value = 0.0f;
        switch (random() % 12) {
            case 0: {
                const std::string& path = paths[random() % paths.size()];
                const uint32_t flags = random() % 2 == 0 ? BASS_SAMPLE_LOOP : 0;
                const bool isModule = path.ends_with(".mod");
                const uint32_t created = isModule ? BASS_MusicLoad(false, path.c_str(), 0, 0, flags, 0)
                                                  : BASS_StreamCreateFile(false, path.c_str(), 0, 0, flags);
                EXPECT_NE(created, 0u);
                BASS_ChannelPlay(created, false);
                BASS_StreamFree(slot.exchange(created));
                break;
            }
            case 1:
                BASS_ChannelPlay(channel, random() % 2 == 0);
                break;
            case 2:
                BASS_ChannelPause(channel);
                break;
            case 3:
                BASS_ChannelStop(channel);
                break;
            case 4:
                BASS_ChannelSetPosition(channel, random() % 400000, BASS_POS_BYTE);
                break;
            case 5:
                BASS_ChannelSetAttribute(channel, BASS_ATTRIB_VOL, 0.1f);
                break;
            case 6:
                BASS_ChannelSlideAttribute(channel, BASS_ATTRIB_VOL, 0.9f, static_cast<uint32_t>(random() % 100));
                break;
            case 7:
                BASS_ChannelGetAttribute(channel, BASS_ATTRIB_VOL, &value);
                break;
            case 8:
                BASS_ChannelGetLevel(channel);
                break;
            case 9:
                BASS_ChannelGetPosition(channel, BASS_POS_BYTE);
                break;
            case 10:
                BASS_ChannelIsActive(channel);
                break;
            default:
                BASS_StreamFree(channel);
                break;
        }
        EXPECT_TRUE(value >= 0.0f && value <= 1.0f);
    }
}

}  // namespace

TEST(Storm, ManyThreadsDoEverythingAtOnce) {
    const TemporaryFolder folder;
    std::string song;
    for (int i = 0; i < 50; i++) song += At(0, {0x90 | i % 16, 60, 100}) + At(20, {0x80 | i % 16, 60, 0});
    const std::vector<std::string> paths = {
        folder.Write("a.wav", WavBytes(Noise(44100, 30000))),
        folder.Write("b.wav", WavBytes(Tone(48000, 1, 440.0, 0.05))),
        folder.Write("c.mid", MidiFile(0, 96, {song})),
        folder.Write("d.mod", ModuleBytes()),
    };
    ASSERT_TRUE(BASS_Init(0, 44100, 0, nullptr, nullptr));
    std::vector<std::atomic<uint32_t>> shared(6);
    const auto end = std::chrono::steady_clock::now() + milliseconds(1500);
    std::vector<std::thread> threads;
    for (unsigned i = 0; i < 4; i++) threads.emplace_back([&, i] { Storm(paths, shared, i + 1, end); });
    for (std::thread& thread : threads) thread.join();
    EXPECT_TRUE(BASS_Free());
}

TEST(Storm, TheLibraryClosesUnderCallsThatGoOn) {
    const TemporaryFolder folder;
    const std::string path = folder.Write("a.wav", WavBytes(Noise(44100, 30000)));
    std::atomic<bool> stop{false};
    std::vector<std::thread> threads;
    for (int i = 0; i < 3; i++) {
        threads.emplace_back([&] {
            while (!stop) {
                const uint32_t stream = BASS_StreamCreateFile(false, path.c_str(), 0, 0, BASS_SAMPLE_LOOP);
                BASS_ChannelPlay(stream, false);
                BASS_ChannelGetPosition(stream, BASS_POS_BYTE);
                BASS_StreamFree(stream);
            }
        });
    }
    for (int i = 0; i < 20; i++) {
        EXPECT_TRUE(BASS_Init(0, 44100, 0, nullptr, nullptr));
        std::this_thread::sleep_for(milliseconds(20));
        EXPECT_TRUE(BASS_Free());
    }
    stop = true;
    for (std::thread& thread : threads) thread.join();
}

}  // namespace hullrider
