// The calls' contract: handles, errors, states of the library.
#include "audio/bass.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <random>
#include <set>
#include <thread>

#include "audio/output_choice.h"
#include "tests/audio/midi_bytes.h"
#include "tests/audio/module_bytes.h"
#include "tests/sound/sound.h"

namespace hullrider {

namespace {

uint32_t Create(const std::string& path) {
    return BASS_StreamCreateFile(false, path.c_str(), 0, 0, BASS_SAMPLE_FLOAT | BASS_SAMPLE_LOOP);
}

}  // namespace

TEST(BassLibrary, OpensOnceAtATimeOnWhatThereIs) {
    EXPECT_EQ(OutputDescription(), "");
    for (int i = 0; i < 5; i++) {
        ASSERT_TRUE(BASS_Init(0, 44100, 0, nullptr, nullptr));
        EXPECT_FALSE(BASS_Init(0, 44100, 0, nullptr, nullptr));
        EXPECT_EQ(BASS_ErrorGetCode(), BASS_ERROR_ALREADY);
        EXPECT_NE(OutputDescription(), "");
        ASSERT_TRUE(BASS_Free());
    }
    EXPECT_EQ(OutputDescription(), "");
    for (const uint32_t rate : {0u, 1u, 4'000'000'000u}) EXPECT_FALSE(BASS_Init(0, rate, 0, nullptr, nullptr));
    EXPECT_FALSE(BASS_Init(7, 44100, 0, nullptr, nullptr));
    EXPECT_EQ(BASS_ErrorGetCode(), BASS_ERROR_DEVICE);
}

class BassCalls : public SoundTest {};

TEST_F(BassCalls, HandlesAreNeverUsedAgain) {
    const std::string path = folder_.Write("a.wav", WavBytes(Noise(44100, 1000)));
    std::set<uint32_t> seen;
    for (int i = 0; i < 20; i++) {
        const uint32_t stream = Create(path), plugin = BASS_PluginLoad("bassmidi.dll", 0);
        ASSERT_TRUE(seen.insert(stream).second && seen.insert(plugin).second);
        EXPECT_TRUE(BASS_StreamFree(stream));
        EXPECT_EQ(BASS_ErrorGetCode(), BASS_OK);
        EXPECT_TRUE(BASS_PluginFree(plugin));
    }
    BASS_Free();
    ASSERT_TRUE(InitManualOutput(44100));
    EXPECT_TRUE(seen.insert(Create(path)).second);
}

TEST_F(BassCalls, FilesThatAreNoSongsAreRefused) {
    std::minstd_rand random(3);
    std::string noise;
    for (int i = 0; i < 100000; i++) noise += static_cast<char>(random() >> 8);
    const std::string wav = WavBytes(Noise(44100, 1000));
    const std::string module = std::string(1080, '\0') + "M.K." + noise.substr(0, 100);
    std::vector<std::string> cases{"This is no music, only a text. ", "", "x", "RIFF", noise, module};
    cases.push_back(std::string(100000, '\0'));
    cases.push_back(std::string(100000, '\xFF'));
    for (const size_t bytes : {44, 30}) cases.push_back(wav.substr(0, bytes));  // its header, and less
    cases.push_back(MidiFile(1, 96, {}));
    for (const char* mark : {"fLaC", "OggS"}) cases.push_back(mark + noise.substr(0, 5000));
    cases.push_back("ID3\x03" + std::string(3, '\0') + "\x7F\x7F\x7F" + noise.substr(0, 1000));
    cases.push_back(std::string("\0\0\0 ftypM4A ", 12) + noise.substr(0, 5000));
    for (const std::string& bytes : cases) {
        for (const char* extension : {".mp3", ".mid", ".flac", ".m4a", ".wav", ".mod"}) {
            SCOPED_TRACE(testing::PrintToString(bytes.substr(0, 20)) + " as " + extension);
            const std::string path = folder_.Write(std::string("x") + extension, bytes);
            EXPECT_EQ(Create(path), 0u);
            EXPECT_EQ(BASS_ErrorGetCode(), BASS_ERROR_FILEFORM);
            if (bytes == module) continue;  // a module of silence may look so
            EXPECT_EQ(BASS_MusicLoad(false, path.c_str(), 0, 0, 0, 0), 0u);
            EXPECT_EQ(BASS_ErrorGetCode(), BASS_ERROR_FILEFORM);
        }
    }
    for (const std::string& path :
         {folder_.At("missing.mp3"), folder_.Text(), std::string(), std::string("\xFF\xC3.mp3")}) {
        EXPECT_EQ(Create(path), 0u);
        EXPECT_EQ(BASS_ErrorGetCode(), BASS_ERROR_FILEOPEN);
        EXPECT_EQ(BASS_MusicLoad(false, path.c_str(), 0, 0, 0, 0), 0u);
        EXPECT_EQ(BASS_ErrorGetCode(), BASS_ERROR_FILEOPEN);
    }
    EXPECT_EQ(BASS_StreamCreateFile(false, nullptr, 0, 0, 0), 0u);
    EXPECT_EQ(BASS_ErrorGetCode(), BASS_ERROR_ILLPARAM);
}

TEST_F(BassCalls, ContentsDecideAndNotTheName) {
    EXPECT_NE(Create(folder_.Write("wav.mp3", WavBytes(Noise(44100, 1000)))), 0u);
    EXPECT_NE(Create(folder_.Write("midi.flac", MidiFile(0, 96, {At(9, {0x90, 60, 1})}))), 0u);
    EXPECT_NE(Create(folder_.Write("\xC3\xBC\xE2\x82\xAC\xF0\x9F\x8E\xB5.wav", WavBytes(Noise(44100, 1000)))), 0u);
    EXPECT_NE(BASS_MusicLoad(false, folder_.Write("mod.txt", ModuleBytes()).c_str(), 0, 0, 0, 0), 0u);
}

TEST_F(BassCalls, TooManyChannelsAreRefusedAndFreedOnesMakeRoom) {
    const std::string path = folder_.Write("a.wav", WavBytes(Noise(44100, 100)));
    std::vector<uint32_t> streams;
    while (const uint32_t stream = Create(path)) {
        streams.push_back(stream);
        ASSERT_LE(streams.size(), 1000u);
    }
    EXPECT_EQ(BASS_ErrorGetCode(), BASS_ERROR_NOCHAN);
    EXPECT_GE(streams.size(), 64u);
    EXPECT_TRUE(BASS_StreamFree(streams.front()));
    streams.front() = Create(path);
    EXPECT_NE(streams.front(), 0u);

    // Those that still fall silent make room too.
    std::vector<float> out(10 * 2);
    for (const uint32_t stream : streams) EXPECT_TRUE(BASS_ChannelPlay(stream, false));
    ASSERT_TRUE(RenderManually(out.data(), 10));
    for (uint32_t& stream : streams) {
        EXPECT_TRUE(BASS_StreamFree(stream));
        EXPECT_NE(Create(path), 0u);
    }
}

#ifdef __linux__
TEST_F(BassCalls, AFreedStreamLetsItsFileGoWhoeverElseCallsIt) {
    const std::string path = folder_.Write("a.wav", WavBytes(Noise(44100, 100000)));
    const auto isOpen = [&] {
        for (const auto& link : std::filesystem::directory_iterator("/proc/self/fd")) {
            std::error_code closedMeanwhile;
            if (std::filesystem::read_symlink(link, closedMeanwhile) == path) return true;
        }
        return false;
    };
    std::atomic<uint32_t> newest{0};
    std::atomic<bool> done{false};
    std::thread player([&] {
        while (!done) BASS_ChannelPlay(newest, true);
    });
    for (int i = 0; i < 200; i++) {
        const uint32_t stream = Create(path);
        newest = stream;
        for (int turns = 0; turns < i % 50; turns++) BASS_ChannelIsActive(stream);
        BASS_StreamFree(stream);
    }
    done = true;
    player.join();
    const auto limit = std::chrono::steady_clock::now() + std::chrono::seconds(5);
    while (isOpen() && std::chrono::steady_clock::now() < limit) {
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    EXPECT_FALSE(isOpen());
}
#endif

TEST_F(BassCalls, ErrorsBelongToTheirThread) {
    BASS_ChannelPlay(12345, false);
    int elsewhere = -1;
    std::thread([&] { elsewhere = BASS_ErrorGetCode(); }).join();
    EXPECT_EQ(elsewhere, BASS_OK);
    EXPECT_EQ(BASS_ErrorGetCode(), BASS_ERROR_HANDLE);
}

}  // namespace hullrider
