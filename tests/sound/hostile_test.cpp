// Files that are damaged, cut or lie about themselves: they play what they can, or do not open.
#include <array>
#include <cmath>
#include <cstdlib>
#include <random>
#include <vector>

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

    // The bytes of the file of that name, which FFmpeg makes of a WAV file.
    std::string Convert(const std::string& wav, const std::string& options, const std::string& name) const {
        const std::string command = std::string(HULLRIDER_FFMPEG) + " -v error -nostdin -y -i '" + wav + "' " +
                                    options + " -metadata title=Title '" + folder_.At(name) + "'";
        EXPECT_EQ(std::system(command.c_str()), 0) << command;
        return folder_.Read(name);
    }

    // Some bytes so far behind the name of a box.
    static void Overwrite(std::string& file, const std::string& box, int behind, const std::string& bytes) {
        const size_t name = file.find(box);
        ASSERT_NE(name, std::string::npos) << box;
        file.replace(name + box.size() + static_cast<size_t>(behind), bytes.size(), bytes);
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
        const std::string bytes = Convert(wav, file[1], file[0]);
        ASSERT_FALSE(bytes.empty());
        for (int i = 0; i < kMutants; i++) {
            SCOPED_TRACE(testing::Message() << file[0] << ", mutant " << i);
            const std::string name = "mutant" + std::to_string(i) + file[0];
            TryToPlay(folder_.Write(name, Mutated(bytes, random)), i % 2 == 0 ? BASS_SAMPLE_LOOP : 0);
        }
    }
}

// FFmpeg would make room for all of them, wherever in the file they are told of.
TEST_F(Hostile, AnMp4ThatTellsOfMillionsOfSamplesIsRefused) {
    const std::string wav = Save("source.wav", Tone(kRate, 2, 500.0, 1.0));
    const std::string fragmented = Convert(wav, "-movflags frag_keyframe+empty_moov+default_base_moof", "a.m4a");
    EXPECT_NE(Open(folder_.At("a.m4a")), 0u);

    std::string many = fragmented;
    Overwrite(many, "trun", 1, std::string("\0\0\1\0\x30\0\0", 7));  // no sizes of their own, three million
    std::vector<std::string> lies{many};
    for (const char* container : {"dinf", "mvex", "sinf", "schi"}) {
        Overwrite(lies.emplace_back(many), "traf", -4, container);
    }
    const size_t behindType = many.find("ftyp") - 4 + static_cast<unsigned char>(many[3]);
    std::string padding;
    for (int i = 0; i < 10'010; i++) padding += std::string("\0\0\0\x08", 4) + "free";
    lies.push_back(std::string(many).insert(behindType, padding));

    // Three million of a byte each, which the file has, in a track beside one that plays.
    const std::string million("\0\x30\0\0", 4), one("\0\0\0\1", 4);
    const std::string two = Convert(wav, "-map 0 -map 0", "b.m4a");
    std::string track = two.substr(two.rfind("trak"));
    Overwrite(track, "stsz", 4, one + million);
    Overwrite(track, "stsc", 4, one + one + million + one);
    Overwrite(track, "stts", 4, one + million + std::string("\0\0\4\0", 4));
    lies.push_back(two.substr(0, two.rfind("trak")) + track);
    lies.back().resize(4'000'000);
    for (size_t i = 0; i < lies.size(); i++) {
        EXPECT_EQ(Open(folder_.Write("lie.m4a", lies[i])), 0u) << i;
        EXPECT_EQ(BASS_ErrorGetCode(), BASS_ERROR_FILEFORM) << i;
    }
    EXPECT_NE(Open(folder_.Write("padded.m4a", std::string(fragmented).insert(behindType, padding))), 0u);
}

TEST_F(Hostile, UncompressedSoundMayTellOfMillionsOfSamples) {
    const std::string minute = Save("minute.wav", Noise(8000, 60 * 8000));
    const std::string bytes = Convert(minute, "-c:a pcm_u8 -movflags faststart -f mov", "plain.m4a");
    EXPECT_NE(Open(folder_.At("plain.m4a")), 0u);
    EXPECT_NE(Open(folder_.Write("cut.m4a", bytes.substr(0, bytes.size() / 3))), 0u);

    std::string lie = bytes;  // of which FFmpeg would make groups, a million for each place of a sound
    Overwrite(lie, "stsc", 12, std::string("\x7F\0\0\0", 4));
    EXPECT_EQ(Open(folder_.Write("lie.m4a", lie)), 0u);
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
