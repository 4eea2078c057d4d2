#include "playback/song_title.h"

#include <gtest/gtest.h>

#include <string>

#include "audio/bass.h"
#include "tests/audio/midi_bytes.h"
#include "tests/audio/module_bytes.h"
#include "tests/temporary_folder.h"

namespace hullrider {
namespace {

TEST(SongTitle, TheFileNameStandsInForATitleWithoutASense) {
    struct Case {
        std::string title, artist, line;
    };
    const Case table[] = {
        {"Blue Monday", "New Order", "New Order - Blue Monday"},
        {"  Blue Monday\r\n", "\t", "Blue Monday"},
        {"99", "Toto", "Toto - 99"},
        {"1999", "", "1999"},
        {"Track", "Somebody", "03 file.name"},
        {"TRACK 01", "", "03 file.name"},
        {"Track 1 of my tears", "", "Track 1 of my tears"},
        {"Audio Track #7", "Somebody", "03 file.name"},
        {"Untitled (2)", "", "03 file.name"},
        {"01", "", "03 file.name"},
        {"", "Somebody", "03 file.name"},
        {" \t ", "Somebody", "03 file.name"},
        {"-----", "", "03 file.name"},
        {"a\x01" "b", "", "03 file.name"},
        {"a\nb", "", "03 file.name"},
        {"a\u0085b", "", "03 file.name"},
        {"abc\u202Egpj", "", "03 file.name"},
        {"a\uFFFDb", "", "03 file.name"},
        {"caf\xE9", "", "03 file.name"},
        {std::string(301, 'a'), "", "03 file.name"},
        {"\u65E5\u672C", "\u00C5sa", "\u00C5sa - \u65E5\u672C"},
        {"Song", "Unknown Artist", "Song"},
        {"Song", "a\x7F", "Song"},
    };
    for (const Case& test : table) {
        EXPECT_EQ(TitleLine(ChooseSongTitle(test.title, test.artist, "/music/Album/03 file.name.mp3")), test.line)
            << testing::PrintToString(test.title);
    }
}

TEST(SongTitle, TheTrackOfAMidiSongMayNameAPartInsteadOfTheSong) {
    for (const char* name : {"Piano", "Conductor", "Tempo Track", "Drums 2", "MIDI 01", "Acoustic Grand Piano", ""}) {
        EXPECT_FALSE(MayBeSongName(name)) << name;
    }
    for (const char* name : {"Piano Man", "Moonlight Sonata", "Bass Invaders"}) {
        EXPECT_TRUE(MayBeSongName(name)) << name;
    }
}

class OpenedSongTitle : public testing::Test {
protected:
    OpenedSongTitle() { BASS_Init(0, 44100, 0, nullptr, nullptr); }
    ~OpenedSongTitle() override { BASS_Free(); }

    std::string LineOf(const std::string& name, const std::string& bytes) {
        const std::string path = folder_.Write(name, bytes);
        HSTREAM handle = BASS_StreamCreateFile(false, path.c_str(), 0, 0, 0);
        if (handle == 0) handle = BASS_MusicLoad(false, path.c_str(), 0, 0, 0, 0);
        EXPECT_NE(handle, 0U) << name;
        return TitleLine(ReadSongTitle(handle, path));
    }

    TemporaryFolder folder_;
};

std::string Name(const std::string& text) {
    return Bytes({0, 0xFF, 0x03, static_cast<int>(text.size())}) + text;
}

TEST_F(OpenedSongTitle, OfMidiSongsIsTheSequenceNameWhereThereIsOne) {
    const std::string note = At(0, {0x90, 60, 100}) + At(96, {0x80, 60, 0}) + EndOfTrack();
    const std::string nothing = EndOfTrack();
    struct Case {
        uint32_t format;
        std::vector<std::string> tracks;
        std::string line;
    };
    const Case table[] = {
        {0, {Name("Sunrise") + note}, "Sunrise"},
        {0, {note}, "file"},
        {0, {Name("untitled") + note}, "file"},
        {0, {Name("Piano") + note}, "file"},
        {1, {Name("Sunrise") + nothing, Name("Flute") + note}, "Sunrise"},
        {1, {Name("Solo for a flute") + note, Name("Second") + note}, "file"},
        {1, {nothing, Name("Second") + note}, "file"},
        {0, {Name("\x83\x65\x83\x58\x83\x67") + note}, "\u30C6\u30B9\u30C8"},
        {0, {Name("F\xFCr Elise") + note}, "F\u00FCr Elise"},
    };
    for (const Case& test : table) EXPECT_EQ(LineOf("file.mid", MidiFile(test.format, 96, test.tracks)), test.line);
}

TEST_F(OpenedSongTitle, OfModulesIsTheirOwn) {
    std::string bytes = ModuleBytes();
    EXPECT_EQ(LineOf("file.mod", bytes), "test module");
    bytes.replace(0, 20, std::string("\x93\xFA\x96\x7B\x82\xCC\x89\xCC", 8) + std::string(12, '\0'));
    EXPECT_EQ(LineOf("file.mod", bytes), "\u65E5\u672C\u306E\u6B4C");
    bytes.replace(0, 20, std::string(20, ' '));
    EXPECT_EQ(LineOf("file.mod", bytes), "file");
}

}  // namespace
}  // namespace hullrider
