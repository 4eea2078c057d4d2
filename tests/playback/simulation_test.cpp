#include "playback/simulation.h"

#include <gtest/gtest.h>

#include "playback/picker_state.h"
#include "tests/playback/made_library.h"

namespace hullrider {

TEST(Simulation, FindsWhatTheWeightsPromiseAndTheSettingsMean) {
    AppState app;
    std::vector<Song> midi, files;
    for (int i = 0; i < 50; ++i) midi.push_back(MadeSong("a/" + std::to_string(i) + ".mid", kMidi, i < 5, 4));
    for (int i = 0; i < 200; ++i) files.push_back(MadeSong("b/" + std::to_string(i) + ".mp3", kMp3, i < 10, 9));
    SetLibrary(app, {midi, files, {MadeSong("c/1.xm", kTracker)}});
    app.weights = {25, 25, 50, 0, 0};
    app.settings.historyDepth = 0;
    PickerState picker(8);
    const RotationShares promised = PromisedShares(app, picker);
    EXPECT_NEAR(promised.byType[kMidi], 0.25 + 0.25 * 25 / 125, 1e-9);
    EXPECT_NEAR(promised.byType[kMp3], 0.50 + 0.25 * 100 / 125, 1e-9);
    EXPECT_NEAR(promised.favorites, 0.25 + 0.25 * 25 / 70 + 0.50 * 100 / 290, 1e-9);

    const Rotation rotation = SimulateRotation(app, picker, 50'000, [](const Song&) { return 400.0; });
    EXPECT_EQ(rotation.plays, 50'000);
    EXPECT_EQ(rotation.unplayable, 0);
    EXPECT_NEAR(rotation.drawn.byType[kMidi], promised.byType[kMidi], 0.01);
    EXPECT_NEAR(rotation.drawn.byType[kMp3], promised.byType[kMp3], 0.01);
    EXPECT_NEAR(rotation.drawn.favorites, promised.favorites, 0.01);
    EXPECT_GT(rotation.meanPlaySec, 70.0);
    EXPECT_LT(rotation.meanPlaySec, 78.0);
    EXPECT_EQ(rotation.repeats, 0);  // none are forbidden

    app.settings.historyDepth = 10;  // fewer than there are favorites
    EXPECT_EQ(SimulateRotation(app, picker, 20'000, [](const Song&) { return 400.0; }).repeats, 0);
}

TEST(Simulation, EndsWhenNothingCanBePlayed) {
    AppState app;
    PickerState picker(8);
    EXPECT_EQ(SimulateRotation(app, picker, 100, [](const Song&) { return 400.0; }).plays, 0);
    SetLibrary(app, {{MadeSong("a/1.mp3", kMp3), MadeSong("a/2.mp3", kMp3)}});
    const Rotation rotation = SimulateRotation(app, picker, 100, [](const Song&) { return -1.0; });
    EXPECT_EQ(rotation.plays, 0);
    EXPECT_EQ(rotation.unplayable, 2);
    EXPECT_TRUE(app.history.records.empty());
}

TEST(Simulation, AReplayedSongPlaysWhole) {
    AppState app;
    PickerState picker(8);
    SetLibrary(app, {{MadeSong("a/1.mp3", kMp3)}});
    app.history.records.assign(2, {kMp3, 0, 0, "a/1.mp3", 0, 0.0, "1"});
    app.selection.previousSongMode = true;
    const Rotation rotation = SimulateRotation(app, picker, 1, [](const Song&) { return 400.0; });
    EXPECT_EQ(rotation.meanPlaySec, 392.0);  // up to the fade
}

}  // namespace hullrider
