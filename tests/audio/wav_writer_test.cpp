#include "audio/wav_writer.h"

#include <gtest/gtest.h>

#include <cstring>
#include <vector>

#include "tests/temporary_folder.h"

#ifndef _WIN32
#include <sys/resource.h>

#include <csignal>
#endif

namespace hullrider {

namespace {

uint64_t Number(const std::string& text, size_t at, int bytes) {
    uint64_t value = 0;
    for (int i = bytes - 1; i >= 0; i--)
        value = value << 8 | static_cast<unsigned char>(text.at(at + static_cast<size_t>(i)));
    return value;
}

// The place of a chunk's contents, found as a player would: chunk by chunk.
size_t FindChunk(const std::string& file, const char* name) {
    for (size_t at = 12; at + 8 <= file.size(); at += 8 + Number(file, at + 4, 4)) {
        if (file.compare(at, 4, name) == 0) return at + 8;
    }
    return 0;
}

}  // namespace

TEST(WavWriter, TheFileIsRightAfterEveryHeader) {
    const TemporaryFolder folder;
    const std::string name = "r\u00E9c.wav";
    WavWriter writer;
    ASSERT_TRUE(writer.Open(folder.At(name), 44100));
    const std::vector<float> frames(2000, 0.25f);
    for (uint64_t written = 0; written < 5000; written += 1000) {
        const std::string file = folder.Read(name);
        EXPECT_EQ(file.substr(0, 4), "RIFF");
        EXPECT_EQ(Number(file, 4, 4), file.size() - 8);
        EXPECT_EQ(Number(file, FindChunk(file, "fmt ") + 4, 4), 44100u);
        EXPECT_EQ(Number(file, FindChunk(file, "fact"), 4), written);
        EXPECT_EQ(Number(file, FindChunk(file, "data") - 4, 4), written * 8);
        EXPECT_EQ(FindChunk(file, "data") + written * 8, file.size());
        ASSERT_TRUE(writer.Write(frames.data(), 1000));
        ASSERT_TRUE(writer.UpdateHeader());
    }
}

TEST(WavWriter, PastFourGigabytesTheSizesAreInTheLongChunk) {
    const uint64_t most = 0xFFFFFFFFull - WavHeader(44100, 0).size() + 8 - 8;
    const std::string last = WavHeader(44100, most);
    EXPECT_EQ(last.substr(0, 4), "RIFF");
    EXPECT_EQ(Number(last, FindChunk(last, "data") - 4, 4), most);
    const uint64_t bytes = 5'000'000'000;
    const std::string text = WavHeader(44100, bytes);
    EXPECT_EQ(text.size(), last.size());
    EXPECT_EQ(text.substr(0, 4), "RF64");
    EXPECT_EQ(Number(text, 4, 4), 0xFFFFFFFFu);
    const size_t sizes = FindChunk(text, "ds64");
    ASSERT_EQ(sizes, 20u);  // right behind "WAVE"
    EXPECT_EQ(Number(text, sizes, 8), bytes + text.size() - 8);
    EXPECT_EQ(Number(text, sizes + 8, 8), bytes);
    EXPECT_EQ(Number(text, sizes + 16, 8), bytes / 8);
    EXPECT_EQ(Number(text, FindChunk(text, "data") - 4, 4), 0xFFFFFFFFu);
}

TEST(WavWriter, SaysWhenItCannotWrite) {
    const TemporaryFolder folder;
    WavWriter writer;
    EXPECT_FALSE(writer.Open(folder.At("no/such/folder.wav"), 44100));
    EXPECT_FALSE(writer.IsOpen());
#ifndef _WIN32
    EXPECT_FALSE(writer.Open("/dev/full", 44100));

    // A file that may not grow is like a disk that is full.
    std::signal(SIGXFSZ, SIG_IGN);
    rlimit before{};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &before), 0);
    const rlimit small{1 << 20, before.rlim_max};
    ASSERT_TRUE(writer.Open(folder.At("a.wav"), 44100));
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &small), 0);
    const std::vector<float> frames(44100 * 2, 0.5f);
    int seconds = 0;
    while (seconds < 10 && writer.Write(frames.data(), 44100) && writer.UpdateHeader()) seconds++;
    setrlimit(RLIMIT_FSIZE, &before);
    EXPECT_EQ(seconds, 2);
    EXPECT_FALSE(writer.IsOpen());
    const std::string file = folder.Read("a.wav");
    EXPECT_LE(Number(file, FindChunk(file, "data") - 4, 4) + FindChunk(file, "data"), file.size());
    EXPECT_GE(Number(file, FindChunk(file, "data") - 4, 4), 2u * 44100 * 8);
#endif
}

}  // namespace hullrider
