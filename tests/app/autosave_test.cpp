#include "app/autosave.h"

#include <gtest/gtest.h>

#include <future>
#include <set>

#include "library/favorites.h"
#include "library/play_counts.h"
#include "library/statistics.h"
#include "platform/state_files.h"
#include "tests/console_capture.h"
#include "tests/eventually.h"
#include "tests/temporary_folder.h"

namespace hullrider {
namespace {

class AutosaveTest : public testing::Test {
protected:
    AutosaveTest() {
        state_.shell.dataDirectory = folder_.Text();
        state_.library.playlists = {{"A", {{"/a.mp3", 0, 0, 0, kMp3}}}};
        Look();
    }

    // Lets the period pass, removes all files and says which are written again.
    std::set<std::string> Look() {
        for (const auto& entry : std::filesystem::directory_iterator(folder_.Path())) std::filesystem::remove(entry);
        now_ += Autosave::kPeriod;
        autosave_.Poll(state_, now_);
        EXPECT_TRUE(Eventually([&] { return autosave_.IsIdle(); }));
        std::set<std::string> written;
        for (const auto& entry : std::filesystem::directory_iterator(folder_.Path())) {
            written.insert(entry.path().filename().string());
        }
        return written;
    }

    TemporaryFolder folder_;
    AppState state_;
    Autosave autosave_;
    Autosave::Clock::time_point now_{};
};

TEST_F(AutosaveTest, WhatChangesIsWrittenAndNothingElse) {
    Song& song = state_.library.playlists[0].songs[0];
    HistoryRecord record;
    record.path = song.songPath;
    const struct {
        const char* what;
        std::function<void()> change;
        const char* file;
    } table[] = {
        {"nothing", [] {}, ""},
        {"a setting", [&] { state_.settings.historyDepth = 3; }, kSettingsFile},
        {"the window", [&] { state_.shell.options.x = 3; }, kShellOptionsFile},
        {"the volume", [&] { state_.settings.volumeLevel = 0.25F; }, kSettingsFile},
        {"loudness following", [&] { state_.playback.volume->realTimeVolume = true; }, kShellOptionsFile},
        {"a start", [&] { CountStart(state_.statistics); }, kStatisticsFile},
        {"a play", [&] { CountPlay(song, state_.playCounts); }, kPlayCountsFile},
        {"counts found",
         [&] {
             ++song.playCount;
             MergePlayCounts(state_.library, state_.playCounts);
         },
         kPlayCountsFile},
        {"the same counts", [&] { MergePlayCounts(state_.library, state_.playCounts); }, ""},
        {"a favorite", [&] { SetFavoriteCount(state_.favorites, state_.library, {0, 0}, 1); }, kFavoritesFile},
        {"its count", [&] { SetFavoriteCount(state_.favorites, state_.library, {0, 0}, 2); }, kFavoritesFile},
        {"its count by path", [&] { SetFavoriteCountAt(state_.favorites, state_.library, "/A.mp3", 3); },
         kFavoritesFile},
        {"merged ones", [&] { MergeFavorites(state_.favorites, {{kMidi, -1, -1, 1, "/b.mid"}}); }, kFavoritesFile},
        {"merged again", [&] { MergeFavorites(state_.favorites, {{kMidi, -1, -1, 1, "/b.mid"}}); }, ""},
        {"one less", [&] { SetFavoriteCount(state_.favorites, state_.library, {0, 0}, 0); }, kFavoritesFile},
        {"no more", [&] { ClearFavorites(state_.favorites, state_.library); }, kFavoritesFile},
        {"a song", [&] { ReportPick(state_.history, record); }, kSongHistoryFile},
        {"its start", [&] { state_.history.records.back().startedAt = 5; }, kSongHistoryFile},
        {"its end", [&] { state_.history.records.back().playedSec = 5.0; }, kSongHistoryFile},
    };
    for (const auto& row : table) {
        row.change();
        std::set<std::string> expected;
        if (*row.file != '\0') expected.insert(row.file);
        EXPECT_EQ(Look(), expected) << row.what;
    }
}

TEST_F(AutosaveTest, ChangesWithinAPeriodAreWrittenTogether) {
    state_.settings.historyDepth = 3;
    std::filesystem::remove(folder_.Path() / kSettingsFile);
    autosave_.Poll(state_, now_ + Autosave::kPeriod - std::chrono::milliseconds(1));
    EXPECT_TRUE(autosave_.IsIdle());
    EXPECT_FALSE(folder_.Has(kSettingsFile));
    state_.settings.historyDepth = 4;
    EXPECT_EQ(Look(), std::set<std::string>{kSettingsFile});
    EXPECT_NE(folder_.Read(kSettingsFile).find("\"historyDepth\": 4"), std::string::npos);
    EXPECT_LE(Autosave::kPeriod, std::chrono::seconds(5)) << "ten seconds are promised, a busy disk included";
}

TEST(FileWriter, WhatAFileHoldsAlreadyIsNotWrittenAgain) {
    const TemporaryFolder folder;
    const std::string path = folder.Write("a", "text");
    const auto old = std::filesystem::file_time_type::clock::now() - std::chrono::hours(1);
    std::filesystem::last_write_time(folder.Path() / "a", old);
    const auto written = std::filesystem::last_write_time(folder.Path() / "a");
    FileWriter writer;
    for (const char* text : {"text", "new text"}) {
        writer.Write(path, [text] { return text; });
        EXPECT_TRUE(Eventually([&] { return writer.IsIdle(); }));
        EXPECT_EQ(std::filesystem::last_write_time(folder.Path() / "a") == written, std::string_view(text) == "text");
        EXPECT_EQ(folder.Read("a"), text);
    }
}

TEST(FileWriter, ALaterOrderTakesThePlaceOfOneThatWaitsAndTheEndDropsWhatWaits) {
    const TemporaryFolder folder;
    std::promise<void> release;
    FileWriter writer;
    writer.Write(folder.At("slow"), [waiting = std::make_shared<std::future<void>>(release.get_future())] {
        waiting->wait();
        return std::string("slow");
    });
    writer.Write(folder.At("b"), []() -> std::string { throw std::runtime_error("taken back"); });
    writer.Write(folder.At("b"), [] { return std::string("later"); });
    EXPECT_FALSE(writer.IsIdle());
    release.set_value();
    EXPECT_TRUE(Eventually([&] { return writer.IsIdle(); }));
    EXPECT_EQ(folder.Read("slow") + folder.Read("b"), "slowlater");

    ConsoleCapture console;
    writer.Write(folder.At("c"), []() -> std::string { throw std::runtime_error("no memory"); });
    EXPECT_TRUE(Eventually([&] { return writer.IsIdle(); }));
    EXPECT_EQ(console.Errors(), "Failed to write " + folder.At("c") + ": no memory\n");
    writer.Finish();
    writer.Finish();
    EXPECT_TRUE(writer.IsIdle());
}

}  // namespace
}  // namespace hullrider
