// Weeks of unattended playing with all that can go wrong, in seconds: on an audio library that only keeps time, and a
// clock that the test moves.
#include <algorithm>
#include <cstdio>
#include <functional>
#include <utility>

#include "library/song_history.h"
#include "playback/listening.h"
#include "playback/next_up.h"
#include "playback/sound_fonts.h"
#include "playback/stream_loudness.h"
#include "playback/stream_time.h"
#include "playback/transport.h"
#include "playback/volume.h"
#include "tests/playback/engine_fixture.h"

namespace hullrider {
namespace {

using namespace std::chrono_literals;
using std::chrono::milliseconds;

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__) || defined(_WIN32)
constexpr int kSongs = 3'000;  // instrumented, or under Wine, it is many times slower
#elif defined(NDEBUG)
constexpr int kSongs = 60'000;
#else
constexpr int kSongs = 20'000;
#endif

constexpr int kAlbums = 12;
constexpr int kSongsPerAlbum = 20;
constexpr milliseconds kPoll{100};

double Seconds(PlayTime::duration time) {
    return std::chrono::duration<double>(time).count();
}

// What the process has in memory, in megabytes; 0 where the system does not tell.
double ResidentMegabytes() {
    std::ifstream in("/proc/self/status");
    std::string word;
    double kilobytes = 0.0;
    while (in >> word && word != "VmRSS:") {
    }
    in >> kilobytes;
    return kilobytes / 1024.0;
}

class MonthTest : public EngineTest {
protected:
    MonthTest() {
        std::vector<std::vector<Song>> albums(kAlbums);
        for (int album = 0; album < kAlbums; ++album) {
            for (int song = 0; song < kSongsPerAlbum; ++song) {
                albums[static_cast<size_t>(album)].push_back(MakeSong(album, song));
            }
        }
        SetLibrary(app_, std::move(albums));
        for (const char* name : {"1.sf2", "2.sf2", "3.sf2"}) {
            app_.soundFonts.soundFontFiles.push_back(folder_.Write(name, "font"));
        }
        SelectSoundFont(app_.soundFonts, app_.playback, 0);
        TakeVolumeFromSettings(app_);
    }
    ~MonthTest() override {
        if (!HasFailure()) return;
        const std::string output = console_->Output();  // what led to it
        std::printf("%s", output.substr(output.size() - std::min<size_t>(output.size(), 3000)).c_str());
    }

    Song MakeSong(int album, int song) {
        static constexpr const char* kExtensions[] = {".mid", ".mp3", ".xm"};
        static constexpr double kLengths[] = {1.0, 2.0, 29.0, 45.5, 120.0, 240.0, 333.3, 600.0, 3600.0};
        const int32_t type = album % 3;
        const int number = album * kSongsPerAlbum + song;
        const std::string name =
            "music/Album " + std::to_string(album) + "/" + std::to_string(song) + kExtensions[type];
        const bool broken = number % 17 == 3;
        const double lengthSec = kLengths[static_cast<size_t>(number) % std::size(kLengths)];
        const int level = 1'000 * (1 + number % 30);
        const std::string path = folder_.Write(name, broken ? "no music" : FakeSong(lengthSec, level));
        return MadeSong(path, type, number % 7 == 0, number % 5);
    }

    std::filesystem::path Place(const std::string& name) const { return folder_.Path() / name; }

    // Lets time pass, and looks at what is heard meanwhile.
    void Pass(milliseconds time, bool mayBeSilent = false) {
        clock_.Advance(time);
        SampleLoudness(app_.playback);
        silentSec_ = mayBeSilent || FakeLoudness() > 0.0F ? 0.0 : silentSec_ + Seconds(time);
        longestSilenceSec_ = std::max(longestSilenceSec_, silentSec_);
        mostChannels_ = std::max(mostChannels_, FakeChannels());
        mostFonts_ = std::max(mostFonts_, FakeFonts());
        mostWorkers_ = std::max(mostWorkers_, clock_.Workers());
    }

    void StartNext() { Settle(PlayNext(app_, picker_)); }

    // Opening takes no time here, but another thread.
    void Settle(bool started) {
        for (int i = 0; !started && app_.playback.next != nullptr && app_.playback.next->wish.isUrgent; ++i) {
            ASSERT_LT(i, 1000);
            clock_.Advance(1ms);
            started = PollPlayback(app_, picker_);
        }
        songs_ += started;
        if (started) startedAt_ = clock_.Now();
    }

    // How long nothing can happen, when so much is left of what plays.
    milliseconds StrideFrom(double leftSec) const {
        if (silentSec_ > 0.0 || app_.playback.trouble != PlaybackTrouble::kNone) return kPoll;
        if (leftSec > 20.0 && !app_.playback.fade->fadeInProgress) return 15s;
        return leftSec > 2.0 ? 1s : kPoll;
    }

    // Plays the current item to its end, up to the start of the next one.
    void PlayToTheEnd() {
        const double dueSec = app_.playback.endSec - app_.playback.startSec;
        const bool isWindow = app_.playback.trouble == PlaybackTrouble::kNone;
        bool started = false;
        while (!started) {
            Pass(StrideFrom(app_.playback.endSec - PositionSec(CurrentHandle(app_.playback))));
            started = PollPlayback(app_, picker_);
            if (!started && app_.playback.trouble != PlaybackTrouble::kNone) return;
            ASSERT_LT(Seconds(clock_.Now() - startedAt_), dueSec + 20.0) << app_.playback.item.title;
        }
        ++songs_;
        const double playedSec = Seconds(clock_.Now() - std::exchange(startedAt_, clock_.Now()));
        if (!isWindow) return;
        ASSERT_GE(playedSec, dueSec - 0.25) << app_.playback.item.title;
        ASSERT_LE(playedSec, std::max(dueSec, 1.0) + 0.45) << app_.playback.item.title;
    }

    void Disturb() {
        const std::function<void()> disturbances[] = {
            [&] {  // the user is in a hurry
                for (int i = 0; i < 2; ++i) StartNext(), Pass(300ms);
            },
            [&] {
                TogglePause(app_);
                Pass(30s, true);
                TogglePause(app_);
                startedAt_ += 30s;
            },
            [&] { NextSoundFont(app_); },
            [&] { Settle(PlayPreviousSong(app_, picker_)); },
            [&] { app_.selection.shuffle = chance_.Index(3) != 0; },
            [&] { NextPlaylist(app_, picker_), Settle(false), startedAt_ = clock_.Now(); },
            [&] { app_.selection.playMode = kLibraryMode; },
            [&] { SetLoudnessFollowing(app_, !app_.playback.volume->realTimeVolume); },
            [&] { ToggleHighLowVolume(app_); },
            [&] { ChangeSettings(); },
            [&] { MoveAlbums(); },
        };
        const uint64_t chosen = chance_.Index(60);
        if (chosen < std::size(disturbances)) disturbances[chosen]();
    }

    void ChangeSettings() {
        static constexpr int32_t kMinima[] = {45, 45, 10, 200, -5, 2'000'000'000};
        static constexpr int32_t kMaxima[] = {110, 110, 5, 0, 30, 2'000'000'000};
        static constexpr int32_t kFadesMs[] = {8000, 8000, 0, 500, 60'000, 2'000'000'000};
        static constexpr int32_t kDepths[] = {20, -1, 0, 5'000, 2'000'000'000};
        static constexpr int32_t kWeights[] = {50, 0, 1, 2'000'000'000};
        Settings& settings = app_.settings;
        const uint64_t durations = chance_.Index(std::size(kMinima));
        settings.songPlayDurationMin = kMinima[durations];
        settings.songPlayDurationMax = kMaxima[durations];
        settings.FADE_DURATION_MS = kFadesMs[chance_.Index(std::size(kFadesMs))];
        settings.historyDepth = kDepths[chance_.Index(std::size(kDepths))];
        settings.rawFav = kWeights[chance_.Index(std::size(kWeights))];
        settings.rawMIDI = kWeights[chance_.Index(std::size(kWeights))];
        settings.songsBeforeSoundfontChange = static_cast<int32_t>(chance_.Index(3));
        Recount(app_);
    }

    // A folder goes away, or all of them; or they come back.
    void MoveAlbums() {
        std::error_code ignored;
        if (away_.empty()) {
            away_ = chance_.Index(4) == 0 ? "music" : "music/Album " + std::to_string(chance_.Index(kAlbums));
            std::filesystem::rename(Place(away_), Place("away"), ignored);
        } else {
            std::filesystem::rename(Place("away"), Place(away_), ignored);
            away_.clear();
        }
    }

    Random chance_{78};
    std::string away_;

    int songs_ = 0;
    PlayTime startedAt_;
    double silentSec_ = 0.0, longestSilenceSec_ = 0.0;
    size_t mostChannels_ = 0, mostFonts_ = 0, mostWorkers_ = 0;
};

TEST_F(MonthTest, NothingGrowsNothingHangsAndTheMusicNeverStops) {
    double settledMb = 0.0;
    while (songs_ < kSongs) {
        if (songs_ == 0 || app_.playback.trouble != PlaybackTrouble::kNone) StartNext();
        PlayToTheEnd();
        if (HasFatalFailure()) return;
        Disturb();
        // The history is full and every song was met.
        if (settledMb == 0.0 && songs_ >= kSongs / 3) settledMb = ResidentMegabytes();
    }
    const double grownMb = ResidentMegabytes() - settledMb;
    EXPECT_LE(longestSilenceSec_, 2.0);
    EXPECT_LE(mostChannels_, 4U);
    EXPECT_LE(mostFonts_, 3U);  // one of them for the item that is prepared
    EXPECT_LE(mostWorkers_, 10U);
    EXPECT_LE(app_.history.records.size(), kMostHistory);
    EXPECT_LE(app_.history.lastPick.size(), static_cast<size_t>(kAlbums * kSongsPerAlbum));
    EXPECT_LE(app_.playCounts.byPath.size(), static_cast<size_t>(kAlbums * kSongsPerAlbum));
    if (kSongs >= 20'000) {
        EXPECT_LT(grownMb, 4.0);  // the sanitizers keep memory that was freed
    }
    const Statistics soFar = StatisticsSoFar(app_);
    EndListening(app_);
    double heardSec = 0.0, heardSoFarSec = 0.0;
    for (const Played& played : app_.statistics.thisRun.byType) heardSec += played.seconds;
    for (const Played& played : soFar.thisRun.byType) heardSoFarSec += played.seconds;
    EXPECT_EQ(heardSoFarSec, heardSec);
    RecordProperty("days", std::to_string(heardSec / 86'400.0));
    RecordProperty("grownMb", std::to_string(grownMb));
    EXPECT_GT(heardSec, kSongs * 20.0);
}

}  // namespace
}  // namespace hullrider
