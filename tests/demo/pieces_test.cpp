// What the MIDI and module pieces sound like. The recordings are listened to in tests/demo/make_test, after encoding.
#include <gtest/gtest.h>

#include "demo_music/pieces/midi_pieces.h"
#include "demo_music/pieces/module_pieces.h"
#include "demo_music/synth/effects.h"
#include "tests/demo/heard.h"

namespace hullrider::demo {
namespace {

constexpr double kMinusOneDb = 0.891, kMinusSixtyDb = 0.001;

void ExpectGoodToLeaveRunning(const Stereo& sound, double quietestLufs, double loudestLufs) {
    EXPECT_GE(sound.frames(), FramesOf(90));
    EXPECT_LE(sound.frames(), FramesOf(150));
    EXPECT_LT(PeakOf(sound), kMinusOneDb);
    EXPECT_LT(LongestSilence(sound, kMinusSixtyDb), 2);
    const double loudness = LoudnessOf(sound);
    EXPECT_GE(loudness, quietestLufs);
    EXPECT_LE(loudness, loudestLufs);
}

// The library brings them to -19 by excerpts; the recordings are at -17 LUFS.
TEST(DemoPieces, TheMidiPiecesPlayAtAnEvenLoudnessThroughTheSoundFont) {
    for (const MidiSong& song : {ComposeQuietHarbour(), ComposeCornerTable(), ComposeNeonBoulevard()}) {
        SCOPED_TRACE(song.title);
        ExpectGoodToLeaveRunning(HearMidi(WriteMidiFile(song)), -22.5, -16);
    }
}

TEST(DemoPieces, TheModulesPlayAtAnEvenLoudnessInEveryFormat) {
    using Write = std::string (*)(const Module&);
    const std::pair<TrackerPiece, Write> pieces[] = {
        {ComposeCloudJumper(), WriteS3m}, {ComposeBackstreetShuffle(), WriteMod}, {ComposeSlowAurora(), WriteXm}};
    for (const auto& [piece, write] : pieces) {
        SCOPED_TRACE(piece.title);
        ExpectGoodToLeaveRunning(HearModule(write(Sequence(piece)), piece.title), -19, -16);
    }
}

TEST(DemoPieces, AreTheSameEveryTime) {
    EXPECT_EQ(WriteMidiFile(ComposeCornerTable()), WriteMidiFile(ComposeCornerTable()));
    EXPECT_EQ(WriteXm(Sequence(ComposeSlowAurora())), WriteXm(Sequence(ComposeSlowAurora())));
}

}  // namespace
}  // namespace hullrider::demo
