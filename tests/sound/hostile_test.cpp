// Files that are damaged, cut or lie about themselves: they play what they can, or do not open.
#include <array>
#include <cmath>
#include <cstdlib>
#include <random>

#include "tests/sound/sound.h"

namespace hullrider {

class Hostile : public SoundTest {
protected:
    // Plays some of a file from its beginning and from late in it.
    void TryToPlay(const std::string& path, uint32_t flags) {
        const HSTREAM stream = Open(path, BASS_SAMPLE_FLOAT | flags);
        if (stream == 0) return;
        const uint64_t length = BASS_ChannelGetLength(stream, BASS_POS_BYTE);
        for (const uint64_t place : {uint64_t{0}, length / 8 * 7, length / 16 * 5}) {
            BASS_ChannelSetPosition(stream, place, BASS_POS_BYTE);
            BASS_ChannelPlay(stream, false);
            for (const float sample : Render(9600)) ASSERT_TRUE(std::isfinite(sample));
        }
        BASS_StreamFree(stream);
        Render(480);
    }
};

// What the random numbers choose: a flipped bit, a wild byte or number (more often where headers are), or a cut.
std::string Mutated(std::string bytes, std::minstd_rand& random) {
    const auto place = [&] {
        return random() % (random() % 3 == 0 ? bytes.size() : std::min<size_t>(bytes.size(), 200));
    };
    for (unsigned i = random() % 4 + 1; i > 0; i--) {
        const size_t at = place();
        switch (random() % 4) {
            case 0:
                bytes[at] = static_cast<char>(bytes[at] ^ (1 << random() % 8));
                break;
            case 1:
                bytes[at] = static_cast<char>(random());
                break;
            case 2:
                for (size_t j = at; j < std::min(at + 4, bytes.size()); j++)
                    bytes[j] = random() % 2 == 0 ? '\x7F' : '\xFF';
                break;
            default:
                if (i == 1) bytes.resize(at + 1);
        }
    }
    return bytes;
}

TEST_F(Hostile, MutatedFilesNeverDoHarm) {
    constexpr int kMutants = 40;
    const std::string wav = Save("source.wav", Tone(kRate, 2, 500.0, 1.0));
    std::minstd_rand random(1);
    for (const std::array<const char*, 2>& file : {std::array{"a.wav", ""},
                                                   {"a.flac", ""},
                                                   {"a.mp3", "-q:a 5"},
                                                   {"b.mp3", "-write_xing 0"},
                                                   {"a.m4a", ""},
                                                   {"b.m4a", "-c:a alac"},
                                                   {"c.m4a", "-movflags frag_keyframe+empty_moov"},
                                                   {"a.aac", ""},
                                                   {"a.ogg", "-c:a libvorbis"},
                                                   {"a.opus", "-c:a libopus"}}) {
        const std::string path = folder_.At(file[0]);
        const std::string command = std::string(HULLRIDER_FFMPEG) + " -v error -nostdin -y -i '" + wav + "' " +
                                    file[1] + " -metadata title=Title '" + path + "'";
        ASSERT_EQ(std::system(command.c_str()), 0) << command;
        const std::string bytes = folder_.Read(file[0]);
        for (int i = 0; i < kMutants; i++) {
            SCOPED_TRACE(testing::Message() << file[0] << ", mutant " << i);
            const std::string name = "mutant" + std::to_string(i) + file[0];
            TryToPlay(folder_.Write(name, Mutated(bytes, random)), i % 2 == 0 ? BASS_SAMPLE_LOOP : 0);
        }
    }
}

// FFmpeg would make room for all of them.
TEST_F(Hostile, AnMp4ThatTellsOfMillionsOfSamplesIsRefused) {
    const std::string wav = Save("source.wav", Tone(kRate, 2, 500.0, 1.0));
    const std::string command = std::string(HULLRIDER_FFMPEG) + " -v error -nostdin -y -i '" + wav +
                                "' -movflags frag_keyframe+empty_moov '" + folder_.At("a.m4a") + "'";
    ASSERT_EQ(std::system(command.c_str()), 0) << command;
    std::string bytes = folder_.Read("a.m4a");
    EXPECT_NE(Open(folder_.At("a.m4a")), 0u);
    const size_t run = bytes.find("trun");
    ASSERT_NE(run, std::string::npos);
    bytes.replace(run + 5, 7, std::string("\0\0\1\0\x30\0\0", 7));  // no sizes of their own, three million
    EXPECT_EQ(Open(folder_.Write("many.m4a", bytes)), 0u);
    EXPECT_EQ(BASS_ErrorGetCode(), BASS_ERROR_FILEFORM);

    // As many as that are no wonder in uncompressed sound.
    const std::string minute = Save("minute.wav", Noise(8000, 60 * 8000));
    const std::string uncompressed = std::string(HULLRIDER_FFMPEG) + " -v error -nostdin -y -i '" + minute +
                                     "' -c:a pcm_u8 -f mov '" + folder_.At("plain.m4a") + "'";
    ASSERT_EQ(std::system(uncompressed.c_str()), 0) << uncompressed;
    EXPECT_NE(Open(folder_.At("plain.m4a")), 0u);
}

// A WAV file's header says each of these.
TEST_F(Hostile, AbsurdHeadersAreRefusedOrPlay) {
    constexpr size_t kChannels = 22, kRateAt = 24, kBlockAlign = 32, kBits = 34, kDataBytes = 40;
    struct Case {
        size_t at;
        std::array<unsigned char, 4> value;
        size_t bytes;
        bool plays;
    };
    const std::string good = WavBytes(Tone(kRate, 2, 500.0, 0.5));
    for (const Case& test : {Case{kChannels, {0xFF, 0xFF}, 2, false},
                             {kChannels, {0, 0}, 2, false},
                             {kRateAt, {0, 0, 0, 0}, 4, false},
                             {kRateAt, {0xFF, 0xFF, 0xFF, 0xFF}, 4, false},
                             {kRateAt, {0xFF, 0xFF, 0xFF, 0x7F}, 4, false},
                             {kBits, {0xFF, 0xFF}, 2, false},
                             {kBlockAlign, {0, 0}, 2, true},
                             {kDataBytes, {0xFF, 0xFF, 0xFF, 0xFF}, 4, true},
                             {kDataBytes, {0, 0, 0, 0}, 4, true}}) {
        SCOPED_TRACE(testing::Message() << "at " << test.at);
        std::string bytes = good;
        for (size_t i = 0; i < test.bytes; i++) bytes[test.at + i] = static_cast<char>(test.value[i]);
        const std::string path = folder_.Write("absurd.wav", bytes);
        const HSTREAM stream = Open(path);
        EXPECT_EQ(stream != 0, test.plays);
        TryToPlay(path, 0);
        BASS_StreamFree(stream);
    }
}

}  // namespace hullrider
