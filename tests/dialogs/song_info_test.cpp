#include "dialogs/song_info.h"

#include <gtest/gtest.h>

#include <utility>

#include "library/statistics.h"

namespace hullrider {
namespace {

constexpr int64_t kNow = 1'790'000'000;

TEST(SongInfo, TimesAreWholeHoursAndMinutes) {
    const std::pair<double, const char*> table[] = {{-5.0, "0:00"},      {59.9, "0:00"},   {60.0, "0:01"},
                                                    {3599.0, "0:59"},    {3600.0, "1:00"}, {36610.0, "10:10"},
                                                    {4.32e6, "1,200:00"}};
    for (const auto& [seconds, text] : table) EXPECT_EQ(HoursText(seconds), text) << seconds;
    EXPECT_EQ(WhenText(0, kNow), "");
    EXPECT_EQ(WhenText(kNow, kNow).size(), 5U);
    EXPECT_EQ(WhenText(kNow - 86400, kNow), WhenText(kNow - 86400, kNow + 86400 * 400));
    EXPECT_EQ(WhenText(kNow - 86400, kNow).size(), 16U);
}

TEST(SongInfo, CountsWhatWasHeardByKindInThisRunAndInAll) {
    AppState state;
    state.library.typedSongCount = state.library.midiSongCount = 1234;
    state.library.mp3SongCount = 3;
    state.library.trackerSongCount = 2;
    state.library.internetStationCount = 6;
    Statistics statistics;
    statistics.allTime.byType[kMidi] = {1'000'000, 3.0 * 3600.0};
    statistics.allTime.skips = 1;
    CountStart(statistics);
    struct Heard {
        int32_t type;
        bool isFavorite;
        double seconds;
    };
    const Heard heard[] = {{kMidi, true, 1800.0}, {kTracker, false, 1800.0}, {kInternetRadio, false, 5400.0}};
    for (const auto& [type, isFavorite, seconds] : heard) {
        CountPlayed(statistics, type, isFavorite);
        CountHeard(statistics, type, isFavorite, seconds);
    }

    const SongInfo info = MakeSongInfo(state, statistics, kNow);
    ASSERT_EQ(info.kinds.size(), 6U);
    EXPECT_EQ(info.kinds[kMidi], (TextRow{"MIDI", "1,234", "1", "0:30", "1,000,001", "3:30"}));
    EXPECT_EQ(info.kinds[kMp3], (TextRow{"Audio files", "3", "0", "0:00", "0", "0:00"}));
    EXPECT_EQ(info.kinds[kTracker][1], "2");
    EXPECT_EQ(info.kinds[4], (TextRow{"All", "1,240", "3", "2:30", "1,000,003", "5:30"}));
    EXPECT_EQ(info.kinds[5], (TextRow{"Favorites among them", "0", "1", "0:30", "1", "0:30"}));
    EXPECT_NEAR(info.timeShare[kMidi], 3.5 / 5.5, 1e-9);
    EXPECT_NEAR(info.timeShare[kInternetRadio], 1.5 / 5.5, 1e-9);
    EXPECT_EQ(info.library, "Library: 1,234 songs in 0 playlists, 0 favorites");
    EXPECT_EQ(info.allTime, "All time: started 1 time, 1 item skipped");
    EXPECT_EQ(MakeSongInfo(state, {}, kNow).timeShare, (std::array<double, 4>{}));
}

TEST(SongInfo, ListsTheHundredMostPlayedAndTheLatestFirst) {
    AppState state;
    for (int32_t i = 0; i < 150; ++i) {
        const std::string path = "/music/Album " + std::to_string(i % 2) + "/song " + std::to_string(i) + ".mid";
        state.playCounts.byPath[path] = i == 7 ? 2000 : i / 30;  // 0 to 4 plays, thirty songs each
        state.history.records.push_back({kMidi, 0, i, path, kNow, 1.0, ""});
    }
    state.radio.stations.push_back({"Jazz", "http://jazz", "", "", {}});
    state.history.records.push_back({kInternetRadio, 0, 0, "http://jazz", kNow, 1.0, ""});
    state.history.records.push_back({kInternetRadio, -1, 0, "http://gone", 0, 1.0, ""});
    state.history.cursor = 150;
    state.playback.item.kind = PlayItem::Kind::kStation;

    const SongInfo info = MakeSongInfo(state, {}, kNow);
    ASSERT_EQ(info.mostPlayed.size(), 100U);
    EXPECT_EQ(info.mostPlayed[0], (TextRow{"song 7", "Album 1", "2,000"}));
    EXPECT_EQ(info.mostPlayed[1], (TextRow{"song 120", "Album 0", "4"}));
    EXPECT_EQ(info.mostPlayed[31][2], "3");
    ASSERT_EQ(info.recent.size(), 100U);
    EXPECT_EQ(info.recent[0], (TextRow{"", "http://gone", "Internet radio"}));
    EXPECT_EQ(info.recent[1], (TextRow{"now", "Jazz", "Internet radio"}));
    EXPECT_EQ(info.recent[2], (TextRow{WhenText(kNow, kNow), "song 149", "Album 1"}));

    state.history.cursor = 149;
    state.history.records[149].title = "Artist - Title";
    EXPECT_EQ(MakeSongInfo(state, {}, kNow).recent[2], (TextRow{"now", "Artist - Title", "Album 1"}));

    state.playback.item.kind = PlayItem::Kind::kNone;
    EXPECT_EQ(MakeSongInfo(state, {}, kNow).recent[2][0], WhenText(kNow, kNow)) << "stopped";

    state.playCounts.byPath = {{"/a/never.mid", 0}, {"/a/once.mid", 1}};
    Statistics statistics;
    CountPlayed(statistics, kMidi, false);
    SongInfo later = info;
    UpdateSongInfo(later, state, statistics, kNow);
    EXPECT_EQ(later.mostPlayed, std::vector<TextRow>{(TextRow{"once", "a", "1"})});
    const std::string text = SongInfoText(info);
    EXPECT_NE(text.find("\nsong 7\tAlbum 1\t2,000\n"), std::string::npos) << text;
    EXPECT_NE(text.find("\nnow\tJazz\tInternet radio\n"), std::string::npos) << text;
}

}  // namespace
}  // namespace hullrider
