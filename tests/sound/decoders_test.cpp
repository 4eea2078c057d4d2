// Every compressed format, encoded at test time with the ffmpeg command. Native only: there is none under Wine.
#include <array>
#include <cmath>
#include <cstdlib>

#include "tests/sound/sound.h"

namespace hullrider {

class Decoders : public SoundTest {
protected:
    // Encodes a sound; `arguments` are ffmpeg's for the output.
    std::string Encode(const TestSound& sound, const std::string& name, const std::string& arguments = "") {
        const std::string wav = Save("source.wav", sound);
        const std::string path = folder_.At(name);
        const std::string command =
            std::string(HULLRIDER_FFMPEG) + " -v error -nostdin -y -i '" + wav + "' " + arguments + " '" + path + "'";
        EXPECT_EQ(std::system(command.c_str()), 0) << command;
        return path;
    }

    // Frames at the start that the encoder itself gets wrong.
    static constexpr size_t kAttack = 1000;

    // A chirp: every place sounds unlike any other, and lossy codecs keep it.
    static TestSound Chirp(uint32_t rate, double seconds) {
        TestSound sound{rate, 2, {}};
        double phase = 0.0;
        const auto frames = static_cast<size_t>(seconds * rate);
        for (size_t i = 0; i < frames; i++) {
            phase += (200.0 + 4000.0 * static_cast<double>(i) / static_cast<double>(frames)) * 6.283185307 / rate;
            sound.samples.insert(sound.samples.end(), 2, static_cast<float>(0.5 * std::sin(phase)));
        }
        return sound;
    }

    // The loudest difference between a rendering and a whole one from `frame` on, skipping a beginning of it.
    static float Difference(const Samples& part, const Samples& whole, size_t frame, size_t skipFrames = 0) {
        float worst = 0.0f;
        for (size_t i = skipFrames * 2; i < part.size() && frame * 2 + i < whole.size(); i++) {
            worst = std::max(worst, std::fabs(part[i] - whole[frame * 2 + i]));
        }
        return worst;
    }
};

TEST_F(Decoders, EveryFormatPlaysAtItsPitchLevelAndLength) {
    struct Case {
        const char* name;
        const char* arguments;
        uint32_t rate, channels;
    };
    const Case cases[] = {
        {"a.flac", "", 44100, 2},         {"b.flac", "-sample_fmt s32", 96000, 2}, {"c.flac", "", 8000, 1},
        {"d.mp3", "-b:a 192k", 44100, 2}, {"e.mp3", "-q:a 4", 48000, 1},           {"f.mp3", "-b:a 64k", 22050, 2},
        {"g.m4a", "-b:a 128k", 44100, 2}, {"h.m4a", "-b:a 96k", 48000, 1},         {"i.m4a", "-c:a alac", 44100, 2},
        {"j.aac", "-b:a 128k", 44100, 2}, {"k.ogg", "-c:a libvorbis", 44100, 2},   {"l.opus", "-c:a libopus", 48000, 2},
        {"m.flac", "", 48000, 6},         {"n.m4a", "-b:a 384k", 48000, 6},
    };
    for (const Case& test : cases) {
        SCOPED_TRACE(test.name);
        const HSTREAM stream = Play(Encode(Tone(test.rate, test.channels, 600.0, 2.0), test.name, test.arguments));
        BASS_CHANNELINFO info{};
        ASSERT_TRUE(BASS_ChannelGetInfo(stream, &info));
        EXPECT_EQ(info.freq, test.rate);
        EXPECT_EQ(info.chans, std::min(test.channels, 2u));
        EXPECT_NEAR(LengthSec(stream), 2.0, 0.06);
        const Samples out = Render(kRate * 3);
        const Samples middle(out.begin() + kRate / 2, out.begin() + kRate * 3);
        EXPECT_NEAR(FrequencyOf(Left(middle), kRate), 600.0, 0.1);
        if (test.channels <= 2) {
            EXPECT_NEAR(AmplitudeAt(Left(middle), kRate, 600.0), 0.5, 0.03);
        }
        EXPECT_EQ(BASS_ChannelIsActive(stream), BASS_ACTIVE_STOPPED);
    }
}

TEST_F(Decoders, LosslessFormatsGiveTheVerySamples) {
    const TestSound sound = Noise(kRate, 60000);
    for (const std::array<const char*, 2>& file : {std::array{"a.flac", ""}, {"a.m4a", "-c:a alac"}}) {
        SCOPED_TRACE(file[0]);
        const HSTREAM stream = Play(Encode(sound, file[0], file[1]));
        EXPECT_EQ(BASS_ChannelGetLength(stream, BASS_POS_BYTE), 60000u * 8);
        EXPECT_LT(Difference(Render(60000), sound.samples, 0), 1e-6f);
        BASS_StreamFree(stream);
        Render(1000);
    }
}

// What an encoder adds in front and behind is not heard: the sound begins and ends where it did before encoding.
TEST_F(Decoders, LossyFormatsBeginAndEndWhereTheSoundDid) {
    const TestSound sound = Chirp(kRate, 3.0);
    for (const std::array<const char*, 2>& file : {std::array{"a.mp3", "-b:a 256k"}, {"a.m4a", "-b:a 256k"}}) {
        SCOPED_TRACE(file[0]);
        const HSTREAM stream = Play(Encode(sound, file[0], file[1]));
        const size_t frames = sound.samples.size() / 2;
        const Samples out = Render(frames + 2000);
        EXPECT_LT(Difference(out, sound.samples, 0, kAttack), 0.1f);
        EXPECT_EQ(BASS_ChannelIsActive(stream), BASS_ACTIVE_STOPPED);
        EXPECT_EQ(BASS_ChannelGetLength(stream, BASS_POS_BYTE), frames * 8);
        BASS_StreamFree(stream);
        Render(1000);
    }
}

TEST_F(Decoders, SeeksLandOnTheSampleInEveryFormat) {
    struct Case {
        const char* name;
        const char* arguments;
        float tolerance;
    };
    const Case cases[] = {
        {"a.flac", "", 1e-6f},
        {"b.m4a", "-c:a alac", 1e-6f},
        {"c.m4a", "-b:a 128k", 2e-2f},
        {"cbr.mp3", "-b:a 128k", 1e-3f},
        {"vbr.mp3", "-q:a 5", 1e-3f},
        {"bare.mp3", "-q:a 5 -write_xing 0 -id3v2_version 0", 1e-3f},
        {"d.ogg", "-c:a libvorbis", 2e-2f},
        {"e.aac", "-b:a 128k", 2e-2f},
    };
    const TestSound sound = Chirp(kRate, 20.0);
    for (const Case& test : cases) {
        SCOPED_TRACE(test.name);
        const HSTREAM stream = Play(Encode(sound, test.name, test.arguments));
        const Samples whole = Render(kRate * 20, 4410);
        for (const size_t frame : {size_t{0}, size_t{1}, size_t{1000}, size_t{123457}, size_t{700001}, size_t{40}}) {
            ASSERT_TRUE(SeekToFrame(stream, static_cast<int64_t>(frame)));
            BASS_ChannelPlay(stream, false);
            EXPECT_LT(Difference(Render(3000), whole, frame, kJointFrames), test.tolerance) << "from frame " << frame;
        }
        BASS_StreamFree(stream);
        Render(1000);
    }
}

TEST_F(Decoders, LoopsHaveNoGapInEveryFormat) {
    const TestSound sound = Chirp(kRate, 1.0);
    for (const std::array<const char*, 2>& file :
         {std::array{"a.flac", ""}, {"b.m4a", "-c:a alac"}, {"c.m4a", "-b:a 256k"}, {"d.mp3", "-b:a 256k"}}) {
        SCOPED_TRACE(file[0]);
        const HSTREAM stream = Play(Encode(sound, file[0], file[1]), BASS_SAMPLE_LOOP);
        const Samples out = Render(kRate * 3);
        const Samples second(out.begin() + kRate * 2, out.end());
        EXPECT_LT(Difference(second, sound.samples, 0, kAttack), 0.1f);
        EXPECT_NEAR(PositionSec(stream), 0.0, 1e-9);
        BASS_StreamFree(stream);
        Render(1000);
    }
}

TEST_F(Decoders, AChangeOfRateMidwayIsFollowed) {
    const char* arguments = "-b:a 128k -write_xing 0 -id3v2_version 0";
    Encode(Tone(44100, 2, 500.0, 2.0), "one.mp3", arguments);
    Encode(Tone(48000, 1, 800.0, 2.0), "two.mp3", arguments);
    const HSTREAM stream = Play(folder_.Write("both.mp3", folder_.Read("one.mp3") + folder_.Read("two.mp3")));
    const Samples out = Left(Render(kRate * 4));
    EXPECT_NEAR(FrequencyOf(Samples(out.begin() + 22050, out.begin() + 66150), kRate), 500.0, 0.2);
    EXPECT_NEAR(FrequencyOf(Samples(out.begin() + 110250, out.begin() + 154350), kRate), 800.0, 0.2);
    EXPECT_NE(stream, 0u);
}

TEST_F(Decoders, DamagedFilesPlayWhatIsLeft) {
    for (const char* name : {"a.mp3", "a.flac", "a.m4a", "a.ogg"}) {
        SCOPED_TRACE(name);
        Encode(Tone(kRate, 2, 500.0, 3.0), name);
        std::string bytes = folder_.Read(name);
        for (size_t i = bytes.size() / 2; i < bytes.size() / 2 + 200; i++) bytes[i] = static_cast<char>(i * 37);
        bytes.resize(bytes.size() - 300);
        const HSTREAM stream = Open(folder_.Write(std::string("damaged-") + name, bytes));
        if (stream == 0) {
            EXPECT_STREQ(name, "a.m4a");  // its index may be at the end, and so be what was cut off
            continue;
        }
        BASS_ChannelPlay(stream, false);
        EXPECT_GT(AmplitudeAt(Left(Render(kRate)), kRate, 500.0), 0.4);
        Render(kRate * 3);
        EXPECT_EQ(BASS_ChannelIsActive(stream), BASS_ACTIVE_STOPPED);
    }
}

// A song that names other files or addresses would make the player open them.
TEST_F(Decoders, PlaylistsAndScriptsInTheGuiseOfSongsAreRefused) {
    const std::string song = Encode(Tone(kRate, 2, 500.0, 1.0), "real.mp3");
    const std::array<std::string, 4> texts = {
        "ffconcat version 1.0\nfile 'real.mp3'\n",
        "#EXTM3U\n#EXT-X-TARGETDURATION:5\n#EXTINF:5,\nreal.mp3\n#EXT-X-ENDLIST\n",
        "#EXTM3U\nhttp://127.0.0.1:9/x.mp3\n", "<MPD></MPD>"};
    for (const std::string& text : texts) {
        for (const char* name : {"x.mp3", "x.m3u8", "x.flac"}) {
            EXPECT_EQ(Open(folder_.Write(name, text)), 0u) << text;
            EXPECT_EQ(BASS_ErrorGetCode(), BASS_ERROR_FILEFORM);
        }
    }
    EXPECT_EQ(Open("http://127.0.0.1:9/x.mp3"), 0u);
    EXPECT_EQ(BASS_ErrorGetCode(), BASS_ERROR_FILEOPEN);
}

}  // namespace hullrider
