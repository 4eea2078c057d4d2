// Everything at once from many threads. The sanitizers say what is wrong with it.
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <functional>
#include <random>
#include <thread>

#include "audio/bass.h"
#include "tests/audio/font_bytes.h"
#include "tests/audio/midi_bytes.h"
#include "tests/audio/module_bytes.h"
#include "tests/sound/sound.h"

namespace hullrider {

using std::chrono::milliseconds;

namespace {

constexpr unsigned kThreads = 4;

// Songs that open quickly, of every kind.
std::vector<std::string> WriteSongs(const TemporaryFolder& folder) {
    std::string notes;
    for (int i = 0; i < 50; i++) notes += At(0, {0x90 | i % 16, 60, 100}) + At(20, {0x80 | i % 16, 60, 0});
    return {folder.Write("a.wav", WavBytes(Noise(44100, 30000))),
            folder.Write("b.wav", WavBytes(Tone(48000, 1, 440.0, 0.05))),
            folder.Write("c.mid", MidiFile(0, 96, {notes})), folder.Write("d.mod", ModuleBytes())};
}

uint32_t OpenSong(const std::string& path, uint32_t flags) {
    const bool isModule = path.ends_with(".mod");
    return isModule ? BASS_MusicLoad(false, path.c_str(), 0, 0, flags, 0)
                    : BASS_StreamCreateFile(false, path.c_str(), 0, 0, flags);
}

void RunOnAll(const std::function<void(unsigned thread)>& work) {
    std::vector<std::thread> threads;
    for (unsigned i = 0; i < kThreads; i++) threads.emplace_back([&, i] { work(i); });
    for (std::thread& thread : threads) thread.join();
}

// One short life of a song, in which nothing may fail.
void LiveOnce(const std::string& path, std::minstd_rand& random) {
    const uint32_t channel = OpenSong(path, BASS_SAMPLE_LOOP);
    ASSERT_NE(channel, 0u);
    EXPECT_TRUE(BASS_ChannelSetAttribute(channel, BASS_ATTRIB_VOL, 0.0f));
    EXPECT_TRUE(BASS_ChannelPlay(channel, false));
    EXPECT_TRUE(BASS_ChannelSlideAttribute(channel, BASS_ATTRIB_VOL, 1.0f, static_cast<uint32_t>(random() % 50)));
    const uint64_t length = BASS_ChannelGetLength(channel, BASS_POS_BYTE);
    EXPECT_TRUE(BASS_ChannelSetPosition(channel, random() % length, BASS_POS_BYTE)) << path;
    EXPECT_TRUE(random() % 4 != 0 || BASS_ChannelPause(channel));
    if (random() % 8 == 0) std::this_thread::sleep_for(milliseconds(1));
    BASS_ChannelGetLevel(channel);
    EXPECT_NE(BASS_ChannelGetPosition(channel, BASS_POS_BYTE), BASS_QWORD_ERROR);
    EXPECT_TRUE(BASS_StreamFree(channel));
}

// One thread of the storm: a random call on a random channel of those that all threads share. The last path is that of
// a SoundFont.
void Storm(const std::vector<std::string>& paths, std::vector<std::atomic<uint32_t>>& shared, unsigned seed,
           std::chrono::steady_clock::time_point end) {
    std::minstd_rand random(seed);
    const std::function<void(uint32_t)> calls[] = {
        [&](uint32_t h) { BASS_ChannelPlay(h, random() % 2 == 0); },
        BASS_ChannelPause,
        BASS_ChannelStop,
        [&](uint32_t h) { BASS_ChannelSetPosition(h, random() % 400000, BASS_POS_BYTE); },
        [](uint32_t h) { BASS_ChannelSetAttribute(h, BASS_ATTRIB_VOL, 0.1f); },
        [&](uint32_t h) {
            BASS_ChannelSlideAttribute(h, BASS_ATTRIB_VOL, 0.9f, static_cast<uint32_t>(random() % 100));
        },
        [](uint32_t h) {
            float value = 0.0f;
            BASS_ChannelGetAttribute(h, BASS_ATTRIB_VOL, &value);
            EXPECT_TRUE(value >= 0.0f && value <= 1.0f);
        },
        BASS_ChannelGetLevel,
        [](uint32_t h) { BASS_ChannelGetPosition(h, BASS_POS_BYTE); },
        BASS_ChannelIsActive,
        [&](uint32_t h) {
            const HFX filter = BASS_ChannelSetFX(h, BASS_FX_BFX_PEAKEQ, static_cast<int>(random() % 3));
            const BASS_BFX_PEAKEQ band = {0, 1.0f, 0.0f, 1000.0f, static_cast<float>(random() % 25) - 12.0f, -1};
            BASS_FXSetParameters(filter, &band);
            BASS_ChannelRemoveFX(h, filter);
        },
        [&](uint32_t h) {
            const BASS_MIDI_FONT font{BASS_MIDI_FontInit(paths.back().c_str(), 0), -1, 0};
            EXPECT_NE(font.font, 0u);
            BASS_MIDI_StreamSetFonts(h, &font, 1);
            BASS_MIDI_FontFree(font.font);
        },
        BASS_StreamFree,
    };
    while (std::chrono::steady_clock::now() < end) {
        std::atomic<uint32_t>& slot = shared[random() % shared.size()];
        const size_t call = random() % (std::size(calls) + 1);
        if (call < std::size(calls)) {
            calls[call](slot);
            continue;
        }
        const uint32_t created =
            OpenSong(paths[random() % (paths.size() - 1)], random() % 2 == 0 ? BASS_SAMPLE_LOOP : 0);
        EXPECT_NE(created, 0u);
        BASS_ChannelPlay(created, false);
        BASS_StreamFree(slot.exchange(created));
    }
}

}  // namespace

TEST(Storm, ManyThreadsDoEverythingAtOnce) {
    const TemporaryFolder folder;
    std::vector<std::string> paths = WriteSongs(folder);
    paths.push_back(folder.Write("a.sf2", FontBytes({})));
    ASSERT_TRUE(BASS_Init(0, 44100, 0, nullptr, nullptr));
    std::vector<std::atomic<uint32_t>> shared(6);
    const auto end = std::chrono::steady_clock::now() + milliseconds(1500);
    RunOnAll([&](unsigned thread) { Storm(paths, shared, thread + 1, end); });
    EXPECT_TRUE(BASS_Free());
}

TEST(Storm, TenThousandSongsComeAndGo) {
    const TemporaryFolder folder;
    const std::vector<std::string> paths = WriteSongs(folder);
    ASSERT_TRUE(BASS_Init(0, 8000, 0, nullptr, nullptr));  // a low rate, for speed
    RunOnAll([&](unsigned thread) {
        std::minstd_rand random(thread + 1);
        for (unsigned i = 0; i < 10'000 / kThreads; i++) {
            // Mostly a WAV file: the others take ten times as long.
            const unsigned kind = i % 8;
            LiveOnce(paths[kind < paths.size() ? kind : kind % 2], random);
        }
    });
    EXPECT_TRUE(BASS_Free());
}

}  // namespace hullrider
