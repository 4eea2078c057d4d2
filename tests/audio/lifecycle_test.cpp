// The library opened and closed again and again, and what that leaves in the process.
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <thread>

#include "audio/bass.h"
#include "audio/live_device.h"
#include "audio/output_choice.h"
#include "tests/audio/midi_bytes.h"
#include "tests/audio/module_bytes.h"
#include "tests/sound/sound.h"

namespace hullrider {

using std::chrono::milliseconds;

namespace {

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr bool kMemoryIsOurs = false;  // the sanitizers keep what was freed
#else
constexpr bool kMemoryIsOurs = true;
#endif

// What the process holds; nothing where the system does not tell.
struct Holdings {
    size_t threads = 0;
    size_t openFiles = 0;
    size_t addressKb = 0;
    size_t residentKb = 0;
};

Holdings WhatIsHeld() {
    Holdings held;
#ifdef __linux__
    const auto entries = [](const char* folder) {
        const std::filesystem::directory_iterator all(folder);
        return static_cast<size_t>(std::distance(begin(all), end(all)));
    };
    held.threads = entries("/proc/self/task");
    held.openFiles = entries("/proc/self/fd");
    std::ifstream sizes("/proc/self/statm");
    constexpr size_t kPageKb = 4;
    sizes >> held.addressKb >> held.residentKb;
    held.addressKb *= kPageKb;
    held.residentKb *= kPageKb;
#endif
    return held;
}

// Runs some rounds to reach what is kept for good, then many more, which must add nothing. Threads may take a moment to
// be gone.
void ExpectNothingLeft(int warmUp, int rounds, const std::function<void(int)>& round) {
    for (int i = 0; i < warmUp; i++) round(i);
    const Holdings before = WhatIsHeld();
    for (int i = 0; i < rounds; i++) round(i);
    const auto limit = std::chrono::steady_clock::now() + std::chrono::seconds(5);
    while (WhatIsHeld().threads > before.threads && std::chrono::steady_clock::now() < limit) {
        std::this_thread::sleep_for(milliseconds(10));
    }
    const Holdings after = WhatIsHeld();
    EXPECT_LE(after.threads, before.threads);
    EXPECT_LE(after.openFiles, before.openFiles);
    if (!kMemoryIsOurs) return;
    constexpr size_t kSlackKb = 8192;  // what the allocator takes for a thread that comes late
    EXPECT_LE(after.residentKb, before.residentKb + kSlackKb);
    constexpr size_t kHeapKb = 256 * 1024;  // the allocator reserves a piece for each of several threads
    EXPECT_LE(after.addressKb, before.addressKb + kHeapKb);
}

class Lifecycle : public testing::Test {
protected:
    void PlayAll(bool andPause) const {
        for (const std::string& path : songs_) {
            const HSTREAM stream = BASS_StreamCreateFile(false, path.c_str(), 0, 0, BASS_SAMPLE_LOOP);
            EXPECT_TRUE(BASS_ChannelPlay(stream, false));
            EXPECT_TRUE(!andPause || BASS_ChannelPause(stream));
        }
        const HMUSIC music = BASS_MusicLoad(false, module_.c_str(), 0, 0, 0, 0);
        EXPECT_TRUE(BASS_ChannelPlay(music, false));
    }

    TemporaryFolder folder_;
    std::string module_ = folder_.Write("c.mod", ModuleBytes());
    std::vector<std::string> songs_ = {
        folder_.Write("a.wav", WavBytes(Noise(44100, 30000))),
        folder_.Write("b.mid", MidiFile(0, 96, {At(9, {0x90, 60, 100}) + At(96, {0x80, 60, 0})})),
    };
};

}  // namespace

TEST_F(Lifecycle, OpeningAndClosingLeavesNothingBehind) {
    ExpectNothingLeft(100, 300, [&](int i) {
        ASSERT_TRUE(BASS_Init(0, 44100, 0, nullptr, nullptr));
        if (i % 3 != 0) PlayAll(i % 2 == 0);
        if (i % 5 == 0) std::this_thread::sleep_for(milliseconds(5));
        ASSERT_TRUE(BASS_Free());
    });
}

TEST_F(Lifecycle, AnotherThreadMayCloseARecordingWhileStreamsPlay) {
    ChooseOutput({OutputKind::kWav, folder_.At("out.wav")});
    ExpectNothingLeft(5, 50, [&](int i) {
        ASSERT_TRUE(BASS_Init(-1, 44100, 0, nullptr, nullptr));
        PlayAll(false);
        std::this_thread::sleep_for(milliseconds(i % 5));
        bool freed = false;
        std::thread([&] { freed = BASS_Free(); }).join();
        ASSERT_TRUE(freed);
        EXPECT_EQ(folder_.Read("out.wav").substr(0, 4), "RIFF");
    });
    ChooseOutput({});
}

// Every call that a close meets has worked before it or says that there is no library, or no such channel.
TEST_F(Lifecycle, CallsUnderWayWhileItClosesEndInOrder) {
    std::atomic<bool> stop{false};
    std::vector<std::thread> callers;
    const auto expectOrder = [](bool good) {
        const int error = BASS_ErrorGetCode();
        EXPECT_TRUE(good || error == BASS_ERROR_INIT || error == BASS_ERROR_HANDLE) << error;
    };
    for (int i = 0; i < 3; i++) {
        callers.emplace_back([&, i] {
            while (!stop) {
                const HSTREAM stream = i == 0 ? BASS_MusicLoad(false, module_.c_str(), 0, 0, BASS_SAMPLE_LOOP, 0)
                                              : BASS_StreamCreateFile(false, songs_[i % 2].c_str(), 0, 0, 0);
                expectOrder(stream != 0);
                expectOrder(BASS_ChannelPlay(stream, false));
                expectOrder(BASS_ChannelSetPosition(stream, 0, BASS_POS_BYTE));
                expectOrder(BASS_ChannelSlideAttribute(stream, BASS_ATTRIB_VOL, 0.5f, 20));
                expectOrder(BASS_ChannelGetPosition(stream, BASS_POS_BYTE) != BASS_QWORD_ERROR);
                expectOrder(BASS_StreamFree(stream));
            }
        });
    }
    for (int i = 0; i < 40; i++) {
        EXPECT_TRUE(BASS_Init(0, 44100, 0, nullptr, nullptr));
        std::this_thread::sleep_for(milliseconds(i % 20));
        EXPECT_TRUE(BASS_Free());
    }
    stop = true;
    for (std::thread& caller : callers) caller.join();
}

#ifdef __linux__
TEST(SoundServer, AttemptsToReachOneThatIsNotThereLeaveNothingBehind) {
    const TemporaryFolder folder;
    const char* const was = std::getenv("PULSE_SERVER");
    const std::string kept = was == nullptr ? "" : was;
    setenv("PULSE_SERVER", ("unix:" + folder.At("none")).c_str(), 1);
    ExpectNothingLeft(10, 200, [](int) {
        const auto device = LiveDevice::BeginOpening(48000, ma_backend_pulseaudio);
        EXPECT_EQ(device->WaitWhileOpening(std::chrono::seconds(10)), LiveDevice::State::kClosed);
    });
    was == nullptr ? unsetenv("PULSE_SERVER") : setenv("PULSE_SERVER", kept.c_str(), 1);
}
#endif

}  // namespace hullrider
