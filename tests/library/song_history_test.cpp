#include "library/song_history.h"

#include <gtest/gtest.h>

#include "state/play_item.h"
#include "tests/temporary_folder.h"

namespace hullrider {
namespace {

HistoryRecord Record(int32_t playlist, int32_t song) {
    return {kMp3, playlist, song, std::to_string(playlist) + "/" + std::to_string(song), 0, 0.0, ""};
}

bool Forbidden(const SongHistory& history, int32_t song, int32_t depth) {
    return WasPickedLately(history, {kMp3, 0, song}, depth);
}

TEST(SongHistory, ForbidsJustTheLastItemsOfTheKind) {
    SongHistory history;
    for (const int32_t song : {1, 2, 1, 3}) ReportPick(history, Record(0, song));
    EXPECT_TRUE(Forbidden(history, 3, 1));
    EXPECT_FALSE(Forbidden(history, 1, 1));
    EXPECT_TRUE(Forbidden(history, 1, 2));
    EXPECT_FALSE(Forbidden(history, 2, 2));
    EXPECT_TRUE(Forbidden(history, 2, 3));
    EXPECT_TRUE(Forbidden(history, 2, INT32_MAX));
    EXPECT_FALSE(Forbidden(history, 3, 0));
    EXPECT_FALSE(Forbidden(history, 3, -1));
    EXPECT_FALSE(WasPickedLately(history, {kMidi, 0, 3}, 5));
    EXPECT_FALSE(WasPickedLately(history, {kMp3, 1, 3}, 5));
    // An item of a later kind at the same place is another one.
    ReportPick(history, {kChapter, 0, 3, "book", 0, 0.0, ""});
    EXPECT_FALSE(Forbidden(history, 3, 1));
    EXPECT_TRUE(WasPickedLately(history, {kChapter, 0, 3}, 1));
}

TEST(SongHistory, IsBoundedAndForgetsWhatFellOut) {
    SongHistory history;
    ReportPick(history, Record(0, 1));
    for (size_t i = 0; i < 3 * kMostHistory; ++i) ReportPick(history, Record(1, static_cast<int32_t>(i % 5000)));
    EXPECT_EQ(history.records.size(), kMostHistory);
    EXPECT_EQ(history.lastPick.size(), 5000U);
    EXPECT_FALSE(Forbidden(history, 1, INT32_MAX));
    EXPECT_TRUE(WasPickedLately(history, {kMp3, 1, 0}, INT32_MAX));
    EXPECT_EQ(history.cursor, kMostHistory - 1);
}

TEST(SongHistory, IsSavedAndFoundAgainInALibraryThatWasRebuilt) {
    const TemporaryFolder folder;
    SongHistory history;
    ReportPick(history, {kMp3, 0, 0, "gone.mp3", 10, 1.5, ""});
    ReportPick(history, {kMidi, 0, 1, "\xC3\xA4.mid", 20, 2.5, ""});
    ReportPick(history, {3, 0, 0, "http://station", 30, 3.5, "Title"});
    ASSERT_TRUE(SaveSongHistory(folder.At("Song History.json"), history));

    SongHistory loaded;
    ASSERT_TRUE(LoadSongHistory(folder.At("Song History.json"), loaded));
    ASSERT_EQ(loaded.records.size(), 3U);
    EXPECT_EQ(loaded.cursor, 3U);  // none of it plays
    EXPECT_EQ(loaded.records[1].path, "\xC3\xA4.mid");
    EXPECT_EQ(loaded.records[1].startedAt, 20);
    EXPECT_EQ(loaded.records[1].playedSec, 2.5);
    EXPECT_EQ(loaded.records[2].type, 3);
    EXPECT_EQ(loaded.records[2].title, "Title");

    MusicLibrary library;
    library.playlists = {{"A", {}}, {"B", {{"new.mp3", 0, 0, 0, kMp3}, {"\xC3\xA4.mid", 0, 0, 0, kMidi}}}};
    FindHistoryInLibrary(loaded, library);
    EXPECT_EQ(loaded.records[0].playlist, -1);
    EXPECT_EQ(loaded.records[1].playlist, 1);
    EXPECT_TRUE(WasPickedLately(loaded, {kMidi, 1, 1}, 2));
    EXPECT_FALSE(WasPickedLately(loaded, {kMidi, 1, 1}, 1));
    EXPECT_FALSE(WasPickedLately(loaded, {kMp3, 0, 0}, 9));
}

TEST(SongHistory, JunkIsPassedOverAndAFileThatIsNoneIsKept) {
    SongHistory history;
    std::string error;
    for (const char* text : {"", "{", "[]", "null", "{\"songs\":7}", "{}", "\xFF"}) {
        EXPECT_EQ(ReadSongHistory(text, history, error), StateReading::kUnreadable) << text;
        EXPECT_FALSE(error.empty());
    }
    const std::string odd = R"({"songs":[1, {}, {"path":7}, {"path":"a","type":9}, null, [],
        {"path":"good","type":2,"startedAt":-5,"playedSec":-1}, {"path":"b","type":1.5,"playedSec":"x"}]})";
    ASSERT_EQ(ReadSongHistory(odd, history, error), StateReading::kPartly);
    EXPECT_EQ(error, "invalid entries: 6");
    ASSERT_EQ(history.records.size(), 2U);
    EXPECT_EQ(history.records[0].path, "good");
    EXPECT_EQ(history.records[0].startedAt, 0);

    const TemporaryFolder folder;
    folder.Write("Song History.json", "no history");
    EXPECT_FALSE(LoadSongHistory(folder.At("Song History.json"), history));
    EXPECT_EQ(folder.Read("Song History.json.bad"), "no history");
    EXPECT_TRUE(LoadSongHistory(folder.Write("Song History.json", odd), history));
    EXPECT_EQ(folder.Read("Song History.json.bad"), odd) << "the next save would lose the entries";
    EXPECT_FALSE(LoadSongHistory(folder.At("missing.json"), history));
}

}  // namespace
}  // namespace hullrider
