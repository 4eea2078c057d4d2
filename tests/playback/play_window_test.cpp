#include "playback/play_window.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "state/music_library.h"

namespace hullrider {
namespace {

PlayDurations WithDurations(int32_t minSec, int32_t maxSec, int32_t fadeMs) {
    Settings settings;
    settings.songPlayDurationMin = minSec;
    settings.songPlayDurationMax = maxSec;
    settings.FADE_DURATION_MS = fadeMs;
    return ChooseDurations(settings, false);
}

TEST(PlayWindow, ALongSongStartsAnywhereAndPlaysBetweenTheTwoDurations) {
    Random random(1);
    double earliest = 1e9, latest = 0.0, shortest = 1e9, longest = 0.0;
    for (int i = 0; i < 5000; ++i) {
        const PlayWindow window = ChoosePlayWindow(600.0, kMp3, WithDurations(45, 110, 8000), random);
        earliest = std::min(earliest, window.startSec);
        latest = std::max(latest, window.startSec);
        shortest = std::min(shortest, window.endSec - window.startSec);
        longest = std::max(longest, window.endSec - window.startSec);
        ASSERT_LE(window.endSec, 600.0);
        // The cross-fade ends with the song at the latest.
        const double fadeBegin = FadeBeginSec(window, 600.0, kMp3, WithDurations(45, 110, 8000));
        ASSERT_DOUBLE_EQ(fadeBegin, std::min(window.endSec, 592.0));
    }
    EXPECT_LT(earliest, 2.0);
    EXPECT_GT(latest, 550.0);
    EXPECT_LE(latest, 555.0);  // room for the shortest play time
    EXPECT_GT(longest, 109.0);
    EXPECT_LE(longest, 110.0);
    // A window that would pass the end stops one fade before it: at least 45 - 8 s.
    EXPECT_GE(shortest, 37.0);
}

TEST(PlayWindow, ADemonstrationHasShortWindowsUntilTheUserSetsOthers) {
    Settings settings;
    EXPECT_EQ(ChooseDurations(settings, true).maxSec, 40.0);
    settings.songPlayDurationMin = 60;
    EXPECT_EQ(ChooseDurations(settings, true).minSec, 60.0);
    EXPECT_EQ(ChooseDurations(settings, true).maxSec, 110.0);
}

TEST(PlayWindow, StationsAndCustomStationsHaveLengthsOfTheirOwnInEitherOrder) {
    Settings settings;
    settings.iSongPlayDurationMin = 60, settings.iSongPlayDurationMax = 62;
    settings.bookPlayDurationMin = 402, settings.bookPlayDurationMax = 400;
    Random random(5);
    for (const bool custom : {false, true}) {
        std::set<double> lengths;
        for (int i = 0; i < 100; ++i) lengths.insert(ChooseStationWindow(settings, custom, random).endSec);
        EXPECT_EQ(lengths, (custom ? std::set{400.0, 401.0, 402.0} : std::set{60.0, 61.0, 62.0}));
    }
}

TEST(PlayWindow, AFadeLongerThanASongTakesOnlyHalfOfIt) {
    Random random(4);
    const PlayDurations durations = WithDurations(45, 110, 60'000);
    const PlayWindow window = ChooseSongWindow(40.0, kMp3, durations, random);
    EXPECT_EQ(window.startSec, 0.0);
    EXPECT_EQ(window.endSec, 20.0);
}

TEST(PlayWindow, ShortAndSpecialSongsFollowTheirRules) {
    struct Case {
        const char* what;
        double lengthSec;
        int32_t type;
        PlayDurations durations;
        double startSec, endSec;
    };
    const Case cases[] = {
        {"a file under 30 s plays whole, less 2 s", 29.0, kMp3, WithDurations(45, 110, 8000), 0.0, 27.0},
        {"so does a MIDI song", 20.0, kMidi, WithDurations(45, 110, 8000), 0.0, 18.0},
        {"a maximum below 1 plays from the start to the fade", 100.0, kMp3, WithDurations(0, 0, 8000), 0.0, 92.0},
        {"the same for a module", 20.0, kTracker, WithDurations(45, 0, 8000), 0.0, 12.0},
        {"under 2 s the fade leaves nothing", 1.5, kMp3, WithDurations(45, 110, 8000), 0.0, 0.0},
        {"under 2 s with a short fade", 1.5, kTracker, WithDurations(45, 110, 500), 0.0, 1.0},
        {"no length at all", 0.0, kMp3, WithDurations(45, 110, 8000), 0.0, 0.0},
        {"a song shorter than the minimum starts at its start", 40.0, kMp3, WithDurations(45, 45, 8000), 0.0, 32.0},
    };
    for (const Case& test : cases) {
        Random random(7);
        const PlayWindow window = ChoosePlayWindow(test.lengthSec, test.type, test.durations, random);
        EXPECT_NEAR(window.startSec, test.startSec, 1e-9) << test.what;
        EXPECT_NEAR(window.endSec, test.endSec, 1e-9) << test.what;
        EXPECT_DOUBLE_EQ(FadeBeginSec(window, test.lengthSec, test.type, test.durations), window.endSec) << test.what;
    }
}

TEST(PlayWindow, SettingsWithoutSenseStillGiveAWindowInsideTheSong) {
    Random random(3);
    const int32_t values[] = {-2000000000, -1, 0, 1, 3, 45, 2000000000};
    for (const int32_t minSec : values) {
        for (const int32_t maxSec : values) {
            for (const int32_t fadeMs : values) {
                for (const double lengthSec : {0.0, 1.0, 29.0, 31.0, 300.0}) {
                    for (const int32_t type : {kMp3, kTracker}) {
                        const PlayWindow window =
                            ChoosePlayWindow(lengthSec, type, WithDurations(minSec, maxSec, fadeMs), random);
                        ASSERT_GE(window.startSec, 0.0) << minSec << ' ' << maxSec << ' ' << fadeMs;
                        ASSERT_LE(window.startSec, lengthSec) << minSec << ' ' << maxSec << ' ' << fadeMs;
                        ASSERT_GE(window.endSec, window.startSec) << minSec << ' ' << maxSec << ' ' << fadeMs;
                        ASSERT_LE(window.endSec, lengthSec) << minSec << ' ' << maxSec << ' ' << fadeMs;
                    }
                }
            }
        }
    }
}

}  // namespace
}  // namespace hullrider
