// Every compressed format, encoded at test time with the ffmpeg command. Native only: there is none under Wine.
#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <random>

#include "audio/source.h"
#include "tests/bytes.h"
#include "tests/sound/encode.h"
#include "tests/sound/sound.h"

namespace hullrider {

class Decoders : public SoundTest {
protected:
    // `arguments` are ffmpeg's for the output.
    std::string Encode(const TestSound& sound, const std::string& name, const std::string& arguments = "") {
        return EncodeFile(Save("source.wav", sound), folder_.At(name), arguments);
    }

    // An ID3v2.3 tag with nothing in it but a picture of so many bytes.
    static std::string PictureTag(size_t bytes) {
        const std::string picture = std::string("\0image/png\0\3\0", 14) + std::string(bytes, 'p');
        const std::string frame = "APIC" + BigEndian(picture.size(), 4) + std::string(2, '\0') + picture;
        std::string size;  // seven bits in a byte
        for (int i = 3; i >= 0; i--) size += static_cast<char>(frame.size() >> (7 * i) & 0x7F);
        return std::string("ID3\3\0\0", 6) + size + frame;
    }

    // An MP4 whose index is at its end, with the tag by which older stores tell that an encoder put so many samples
    // before the sound.
    static std::string WithGaplessTag(const std::string& mp4, unsigned before, unsigned samples) {
        const auto number = [](size_t value) { return BigEndian(value, 4); };
        const auto atom = [&](const char* type, const std::string& content) {
            return number(content.size() + 8) + type + content;
        };
        std::array<char, 64> text{};
        std::snprintf(text.data(), text.size(), " 00000000 %08X 00000000 %016X 00000000", before, samples);
        const std::string tag = atom("mean", number(0) + "com.apple.iTunes") + atom("name", number(0) + "iTunSMPB") +
                                atom("data", number(1) + number(0) + text.data());
        const std::string handler = number(0) + number(0) + "mdirappl" + std::string(9, '\0');
        const std::string tags =
            atom("udta", atom("meta", number(0) + atom("hdlr", handler) + atom("ilst", atom("----", tag))));
        const size_t index = mp4.rfind("moov");
        return mp4.substr(0, index - 4) + atom("moov", mp4.substr(index + 4) + tags);
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
    const Case cases[] = {{"a.flac", "", 44100, 2},
                          {"b.flac", "-sample_fmt s32", 96000, 2},
                          {"c.flac", "", 8000, 1},
                          {"d.mp3", "-b:a 192k", 44100, 2},
                          {"e.mp3", "-q:a 4", 48000, 1},
                          {"f.mp3", "-b:a 64k", 22050, 2},
                          {"g.m4a", "-b:a 128k", 44100, 2},
                          {"h.m4a", "-b:a 96k", 48000, 1},
                          {"i.m4a", "-c:a alac", 44100, 2},
                          {"j.aac", "-b:a 128k", 44100, 2},
                          {"k.ogg", "-c:a libvorbis", 44100, 2},
                          {"l.opus", "-c:a libopus", 48000, 2},
                          {"m.flac", "", 48000, 6},
                          {"n.m4a", "-b:a 384k", 48000, 6},
                          {"o.flac", "", 192000, 2},
                          {"p.wav", "-c:a pcm_u8", 11025, 1},
                          {"q.wav", "-c:a pcm_s32le", 88200, 2},
                          {"r.wav", "-c:a pcm_f64le", 48000, 2}};
    for (const Case& test : cases) {
        SCOPED_TRACE(test.name);
        const HSTREAM stream = Play(Encode(Tone(test.rate, test.channels, 600.0, 2.0), test.name, test.arguments));
        BASS_CHANNELINFO info{};
        ASSERT_TRUE(BASS_ChannelGetInfo(stream, &info));
        EXPECT_EQ(info.freq, test.rate);
        EXPECT_EQ(info.chans, std::min(test.channels, 2u));
        EXPECT_NEAR(LengthSec(stream), 2.0, 0.06);
        const Samples out = Render(kRate * 3);
        const Samples middle = Part(out, kRate / 2, kRate * 5 / 2);
        EXPECT_NEAR(FrequencyOf(Left(middle), kRate), 600.0, 0.1);
        EXPECT_NEAR(AmplitudeAt(Left(middle), kRate, 600.0), 0.5, 0.03);
        EXPECT_EQ(BASS_ChannelIsActive(stream), BASS_ACTIVE_STOPPED);
    }
}

// What an encoder adds in front and behind is not heard: the sound begins and ends where it did before encoding, and
// comes round without a gap.
TEST_F(Decoders, EveryFormatBeginsEndsAndLoopsWhereTheSoundDid) {
    struct Case {
        const char* name;
        const char* arguments;
        uint32_t rate;
        double seconds;
        float tolerance;
        size_t attack;  // frames at the start that the encoder itself gets wrong
    };
    for (const Case& test : {Case{"a.flac", "", 44100, 3.0, 1e-6f, 0},
                             {"one-frame.flac", "", 44100, 0.05, 1e-6f, 0},
                             {"a.m4a", "-c:a alac", 44100, 3.0, 1e-6f, 0},
                             {"b.m4a", "-b:a 256k", 44100, 3.0, 0.1f, 1000},
                             {"a.mp3", "-b:a 256k", 44100, 3.0, 0.1f, 1000},
                             {"b.mp3", "-b:a 128k", 22050, 3.0, 0.1f, 1000}}) {
        SCOPED_TRACE(test.name);
        Reopen(test.rate);
        const TestSound sound = Sweep(test.rate, test.seconds, 200.0, 1000.0);
        const size_t frames = sound.samples.size() / 2;
        const std::string path = Encode(sound, test.name, test.arguments);
        const HSTREAM stream = Play(path);
        EXPECT_NEAR(LengthSec(stream) * test.rate, static_cast<double>(frames), 1e-6);
        EXPECT_LT(Difference(Render(frames + 2000), sound.samples, 0, test.attack), test.tolerance);
        EXPECT_EQ(BASS_ChannelGetLength(stream, BASS_POS_BYTE), frames * 8);
        EXPECT_EQ(BASS_ChannelIsActive(stream), BASS_ACTIVE_STOPPED);
        Finish(stream);
        const HSTREAM loop = Play(path, BASS_SAMPLE_LOOP);
        Render(frames * 2);
        EXPECT_LT(Difference(Render(frames), sound.samples, 0, test.attack), test.tolerance);
        EXPECT_NEAR(PositionSec(loop), 0.0, 1e-9);
        Finish(loop);
    }
}

// Downloads that broke off, sound of unknown length, junk, one file behind another, the gapless data of older stores.
TEST_F(Decoders, LengthsAndPlacesAreTrueWhateverTheFileSays) {
    constexpr double kHzPerSec = 400.0;
    const TestSound sound = Sweep(kRate, 10.0, 200.0, kHzPerSec);
    const auto cut = [](std::string bytes) {
        bytes.resize(bytes.size() / 2);
        return bytes;
    };
    const auto bytesOf = [&](const char* name, const char* arguments) {
        Encode(sound, name, arguments);
        return folder_.Read(name);
    };
    std::string junk;
    std::minstd_rand random(5);
    for (int i = 0; i < 50'000; i++) junk += static_cast<char>(random() >> 8);
    // To FFmpeg frames, each behind a few other bytes; but none follows where another one ends.
    std::string bogus;
    for (int i = 0; i < 400; i++) bogus += std::string("pppp\xFF\xFB\x90\x40") + std::string(413, 'p');
    std::string unknown = bytesOf("a.flac", "");
    unknown[21] = static_cast<char>(unknown[21] & 0xF0);  // STREAMINFO: the number of samples
    for (size_t i = 22; i < 26; i++) unknown[i] = '\0';
    const std::string mp3 = bytesOf("a.mp3", "-q:a 5");
    const std::string store = WithGaplessTag(bytesOf("a.m4a", "-b:a 256k -use_editlist 0"), 1024, 441'000);
    struct Case {
        const char* name;
        std::string bytes;
        double seconds;  // at least
    };
    for (const Case& test : {Case{"cut.mp3", cut(mp3), 4.0},
                             {"cut.m4a", cut(bytesOf("b.m4a", "-movflags +faststart")), 4.0},
                             {"junk.mp3", junk + bytesOf("c.mp3", "-b:a 64k -write_xing 0 -id3v2_version 0"), 9.99},
                             {"two.mp3", mp3 + mp3, 19.99},
                             {"two-and-bogus.mp3", mp3 + bogus + mp3, 19.99},
                             {"unfilled.mp3", mp3 + std::string(20'000'000, '\0'), 9.99},
                             {"unknown.flac", unknown, 9.99},
                             {"cut.flac", cut(bytesOf("b.flac", "")), 4.0},
                             {"cut-unknown.flac", cut(unknown), 4.0},
                             {"store.m4a", store, 9.99}}) {
        SCOPED_TRACE(test.name);
        const HSTREAM stream = Play(folder_.Write(test.name, test.bytes));
        const double told = LengthSec(stream);
        const Samples whole = Render(static_cast<size_t>(told * kRate) - 10'000);
        EXPECT_EQ(BASS_ChannelIsActive(stream), BASS_ACTIVE_PLAYING);
        Render(16'000);
        EXPECT_EQ(BASS_ChannelIsActive(stream), BASS_ACTIVE_STOPPED);
        EXPECT_NEAR(LengthSec(stream), told, 0.03);
        EXPECT_GT(told, test.seconds);
        ASSERT_TRUE(SeekToFrame(stream, 150'000));
        BASS_ChannelPlay(stream, false);
        EXPECT_LT(Difference(Render(3000), whole, 150'000, kJointFrames), 2e-2f);
        // Late in the sound, behind all that may lie on the way: at most an MP3 frame away, which is lost at a joint.
        const auto late = static_cast<size_t>(told * kRate * 0.75);
        ASSERT_TRUE(SeekToFrame(stream, static_cast<int64_t>(late)));
        BASS_ChannelPlay(stream, false);
        EXPECT_NEAR(FrequencyOf(Part(Left(Render(4000)), 1000, 3000), kRate),
                    FrequencyOf(Part(Left(whole), late + 1000, 3000), kRate), 1300.0 / kRate * kHzPerSec);
        Finish(stream);
    }
    Play(folder_.At("store.m4a"));
    EXPECT_LT(Difference(Render(400'000), sound.samples, 0, 1000), 0.1f);
}

TEST_F(Decoders, SeeksLandOnTheSampleInEveryFormat) {
    struct Case {
        const char* name;
        const char* arguments;
        float tolerance;
    };
    const Case cases[] = {{"a.flac", "", 1e-6f},
                          {"b.m4a", "-c:a alac", 1e-6f},
                          {"c.m4a", "-b:a 128k", 2e-2f},
                          {"cbr.mp3", "-b:a 128k", 1e-3f},
                          {"vbr.mp3", "-q:a 5", 1e-3f},
                          {"bare.mp3", "-q:a 5 -write_xing 0 -id3v2_version 0", 1e-3f},
                          {"picture.mp3", "-q:a 5 -id3v2_version 0", 1e-3f},
                          {"bare-picture.mp3", "-b:a 64k -write_xing 0 -id3v2_version 0", 1e-3f},
                          {"low.mp3", "-b:a 32k -write_xing 0 -id3v2_version 0", 1e-3f},
                          {"plain.wav", "", 1e-6f},
                          {"d.ogg", "-c:a libvorbis", 2e-2f},
                          {"e.aac", "-b:a 128k", 2e-2f}};
    const TestSound sound = Sweep(kRate, 20.0, 200.0, 200.0);
    for (const Case& test : cases) {
        SCOPED_TRACE(test.name);
        std::string path = Encode(sound, test.name, test.arguments);
        const std::string name = test.name;
        if (name.ends_with("picture.mp3"))
            path = folder_.Write("with-" + name, PictureTag(3000000) + folder_.Read(name));
        const HSTREAM stream = Play(path);
        EXPECT_NEAR(LengthSec(stream), 20.0, 0.2);
        const Samples whole = Render(kRate * 20, 4410);
        for (const size_t frame : {size_t{0}, size_t{1}, size_t{1000}, size_t{123457}, size_t{700001}, size_t{40}}) {
            ASSERT_TRUE(SeekToFrame(stream, static_cast<int64_t>(frame)));
            BASS_ChannelPlay(stream, false);
            EXPECT_LT(Difference(Render(3000), whole, frame, kJointFrames), test.tolerance) << "from frame " << frame;
        }
        Finish(stream);
    }
}

TEST_F(Decoders, AChangeOfRateMidwayIsFollowed) {
    for (const std::string extension : {".mp3", ".aac"}) {
        SCOPED_TRACE(extension);
        const char* const arguments = extension == ".mp3" ? "-b:a 128k -write_xing 0 -id3v2_version 0" : "-b:a 128k";
        Encode(Tone(44100, 2, 500.0, 2.0), "one" + extension, arguments);
        Encode(Tone(48000, 1, 800.0, 2.0), "two" + extension, arguments);
        const HSTREAM stream =
            Play(folder_.Write("both" + extension, folder_.Read("one" + extension) + folder_.Read("two" + extension)));
        const Samples out = Left(Render(kRate * 4));
        const Samples first = Part(out, 22050, 44100), second = Part(out, 110250, 44100);
        EXPECT_NEAR(FrequencyOf(first, kRate), 500.0, 0.2);
        EXPECT_NEAR(FrequencyOf(second, kRate), 800.0, 0.2);
        EXPECT_NEAR(AmplitudeAt(first, kRate, 500.0), 0.5, 0.03);
        EXPECT_NEAR(AmplitudeAt(second, kRate, 800.0), 0.5, 0.03);
        Finish(stream);
    }
}

TEST_F(Decoders, ACanceledSourceReadsNoMore) {
    for (const char* name : {"a.wav", "a.mp3"}) {
        int error = BASS_OK;
        const std::string path = Encode(Noise(kRate, kRate * 10), name);
        const auto source = OpenStreamSource({.path = path, .mixRate = kRate, .loop = true}, {}, error);
        ASSERT_NE(source, nullptr);
        Samples out(kRate * 2);
        source->Cancel();
        source->Seek(kRate * 5);
        size_t read = 0;
        for (int i = 0; i < 20; i++) read += source->Read(out.data(), kRate).frames;
        EXPECT_LT(read, size_t{kRate});
    }
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

TEST_F(Decoders, TagsAreThoseOfTheFile) {
    struct Case {
        const char* name;
        uint32_t kind;
        std::string expected;
    };
    const auto field = [](std::string text, size_t width) {
        text.resize(width);
        return text;
    };
    const std::string id3 = "TAG" + field("Th\xE9 dansant", 30) + field("Anna ? Bert", 30) + field("", 30) + "1987" +
                            field("", 28) + std::string("\0\7\xFF", 3);
    const Case cases[] = {{"a.mp3", BASS_TAG_ID3, id3},
                          {"a.flac", BASS_TAG_OGG, std::string("TITLE=Th\u00E9 dansant\0", 19)},
                          {"a.ogg", BASS_TAG_OGG, std::string("TRACKNUMBER=7\0", 14)},
                          {"a.m4a", BASS_TAG_MP4, std::string("ARTIST=Anna \u266B Bert\0", 21)}};
    const std::string arguments =
        "-metadata title='Th\u00E9 dansant' -metadata artist='Anna \u266B Bert' -metadata track=7 "
        "-metadata date=1987";
    for (const Case& test : cases) {
        SCOPED_TRACE(test.name);
        const HSTREAM stream = Open(Encode(Tone(kRate, 2, 500.0, 0.3), test.name, arguments));
        const char* tags = BASS_ChannelGetTags(stream, test.kind);
        ASSERT_NE(tags, nullptr);
        const bool isId3 = test.kind == BASS_TAG_ID3;
        size_t length = isId3 ? 128 : 0;
        if (!isId3) {
            do length += std::strlen(tags + length) + 1;
            while (tags[length] != '\0');
        }
        EXPECT_NE(std::string(tags, length).find(test.expected), std::string::npos) << std::string(tags, length);
        EXPECT_EQ(BASS_ChannelGetTags(stream, isId3 ? BASS_TAG_MP4 : BASS_TAG_ID3), nullptr);
        EXPECT_EQ(BASS_ErrorGetCode(), BASS_ERROR_NOTAVAIL);
    }
}

// An ID3v1 block at the end, or ID3v2 frames that claim to be ISO 8859-1, hold whatever their writers' system used.
TEST_F(Decoders, TagsOfOldMp3sAreReadWhateverTheirEncoding) {
    const std::string sound =
        folder_.Read(Encode(Tone(kRate, 2, 500.0, 0.3), "bare.mp3", "-write_id3v1 0 -id3v2_version 0"));
    const auto open = [&](const std::string& bytes) {
        const char* const tags = BASS_ChannelGetTags(Open(folder_.Write("old.mp3", bytes)), BASS_TAG_OGG);
        return std::string(tags == nullptr ? "" : tags);
    };
    const auto version1 = [&](std::string title) {
        title.resize(30);
        return open(sound + "TAG" + title + std::string(95, '\0'));
    };
    const auto version2 = [&](char encoding, const std::string& title) {
        const std::string frame = std::string("TIT2\0\0\0", 7) + static_cast<char>(title.size() + 1) +
                                  std::string("\0\0", 2) + encoding + title;
        return open(std::string("ID3\3\0\0\0\0\0", 9) + static_cast<char>(frame.size()) + frame + sound);
    };
    const std::string japanese = "\x83\x65\x83\x58\x83\x67", longTitle(60, 'x');
    EXPECT_EQ(version1("Caf\xE9"), "TITLE=Caf\u00E9");
    EXPECT_EQ(version1(japanese), "TITLE=\u30C6\u30B9\u30C8");
    EXPECT_EQ(version1("\u00C9t\u00E9"), "TITLE=\u00C9t\u00E9");
    EXPECT_EQ(version2(0, "Caf\xE9"), "TITLE=Caf\u00E9");
    EXPECT_EQ(version2(0, japanese), "TITLE=\u30C6\u30B9\u30C8");
    EXPECT_EQ(version2(0, longTitle), "TITLE=" + longTitle);
    EXPECT_EQ(version2(1, std::string("\xFF\xFE\xE5\x65\x2C\x67", 6)), "TITLE=\u65E5\u672C");
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
