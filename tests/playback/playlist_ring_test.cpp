#include "playback/playlist_ring.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

namespace hullrider {
namespace {

std::string Named(char kind, int32_t index) {
    std::string name = std::to_string(index);
    name.insert(name.begin(), kind);
    return name;
}

std::string Where(const AppState& app) {
    const SelectionState& selection = app.selection;
    switch (selection.playMode) {
        case kPlaylistMode:
            EXPECT_EQ(selection.currentSongInPlaylist, -1);
            EXPECT_FALSE(selection.radioPlaying || selection.customStationActive);
            return Named('p', selection.currentPlaylist);
        case kStationMode:
            EXPECT_TRUE(selection.radioPlaying && !selection.customStationActive);
            return Named('s', selection.currentInternetStation);
        default:
            if (!selection.customStationActive) return "library";
            EXPECT_EQ(app.radio.activeCustomStation.name,
                      app.radio.customStations[static_cast<size_t>(selection.currentCustomStation)].name);
            return Named('c', selection.currentCustomStation);
    }
}

TEST(PlaylistRing, GoesRoundBothWaysThroughWhatThereIs) {
    struct Case {
        size_t playlists, customStations, stations;
        std::vector<std::string> ring;
    };
    const Case cases[] = {{2, 2, 2, {"p0", "p1", "c0", "c1", "s0", "s1"}},
                          {2, 0, 1, {"p0", "p1", "library", "s0"}},
                          {3, 0, 0, {"p0", "p1", "p2", "library"}},
                          {0, 1, 1, {"c0", "s0"}},
                          {0, 0, 0, {"library"}}};
    for (const Case& test : cases) {
        AppState app;
        app.library.playlists.resize(test.playlists);
        for (size_t i = 0; i < test.customStations; ++i) app.radio.customStations.push_back({std::to_string(i), {}});
        app.radio.stations.resize(test.stations);
        StepPlaylistForward(app);
        const size_t size = test.ring.size();
        const auto start = std::find(test.ring.begin(), test.ring.end(), Where(app));
        ASSERT_NE(start, test.ring.end()) << Where(app);
        size_t at = static_cast<size_t>(start - test.ring.begin());
        for (size_t i = 0; i < 2 * size; ++i) {
            StepPlaylistForward(app);
            at = (at + 1) % size;
            ASSERT_EQ(Where(app), test.ring[at]);
        }
        for (size_t i = 0; i < 2 * size; ++i) {
            StepPlaylistBack(app);
            at = (at + size - 1) % size;
            ASSERT_EQ(Where(app), test.ring[at]);
        }
    }
}

}  // namespace
}  // namespace hullrider
