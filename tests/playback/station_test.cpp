// Internet stations in the engine: on an audio library that only keeps time, and a clock that the test moves.
#include <algorithm>

#include "playback/next_up.h"
#include "playback/selection_commands.h"
#include "playback/station_play.h"
#include "playback/transport.h"
#include "radio/station_network.h"
#include "tests/playback/engine_fixture.h"

namespace hullrider {
namespace {

using namespace std::chrono_literals;
using std::chrono::milliseconds;

class StationTest : public EngineTest {
protected:
    StationTest() {
        app_.settings.FADE_DURATION_MS = 1000;
        app_.settings.songPlayDurationMin = app_.settings.songPlayDurationMax = 30;
        app_.settings.iSongPlayDurationMin = app_.settings.iSongPlayDurationMax = 40;
        app_.settings.historyDepth = 0;
        const auto makeFetch = [this] {
            return [this](const HttpRequest& request, const std::stop_token&) { return Answer(request); };
        };
        const std::vector<std::string> mirrors{"http://directory"};
        picker_.network = std::make_shared<const StationNetwork>(
            makeFetch, std::make_shared<StationDirectoryClient>(mirrors, makeFetch, [] { return 0; }));
    }
    ~StationTest() override {
        clock_.Advance(60s);
        ForgetFakeStations();
    }

    HttpResponse Answer(const HttpRequest& request) {
        asked_.push_back(request.url);
        HttpResponse response;
        const auto page = pages_.find(request.url.substr(0, request.url.find('?')));
        if (page == pages_.end()) return response;
        response.end = HttpEnd::kComplete;
        response.body = page->second;
        return response;
    }

    void AddStation(const std::string& name, const FakeStation& station = {}) {
        InternetStation listed;
        listed.name = name;
        listed.url = "http://" + name;
        SetFakeStation(listed.url, station);
        app_.radio.stations.push_back(listed);
    }

    // Lets time pass as the window does. Keeps the longest silence.
    void Pass(milliseconds time) {
        for (milliseconds passed{0}; passed < time; passed += 50ms) {
            clock_.Advance(50ms);
            PollPlayback(app_, picker_);
            silence_ = FakeLoudness() > 0.0F ? 0ms : silence_ + 50ms;
            longestSilence_ = std::max(longestSilence_, silence_);
        }
    }
    void StartSong() {
        SetLibrary(app_, {{Write("song.mp3", FakeSong(3000.0)), Write("other.mp3", FakeSong(3000.0))}});
        app_.weights = {};
        app_.weights.mp3 = 1;
        PlayNext(app_, picker_);
        Pass(200ms);
        ASSERT_EQ(app_.playback.item.kind, PlayItem::Kind::kSong);
        longestSilence_ = 0ms;
    }
    bool PlaysStation(const std::string& name) const {
        return IsStationPlaying(app_.playback) && app_.playback.item.title == name;
    }

    milliseconds silence_{0}, longestSilence_{0};
    std::map<std::string, std::string> pages_;
    std::vector<std::string> asked_;
};

TEST_F(StationTest, ThePlayingSongGoesOnUntilTheStationSounds) {
    AddStation("slow", {.opensIn = 4s});
    StartSong();
    StepStation(app_, picker_, 1);
    Pass(3s);
    EXPECT_FALSE(IsStationPlaying(app_.playback));
    Pass(2s);
    EXPECT_TRUE(PlaysStation("slow"));
    EXPECT_TRUE(app_.selection.radioPlaying);
    EXPECT_EQ(longestSilence_, 0ms);
    EXPECT_EQ(app_.history.records.back().type, kInternetRadio);
}

TEST_F(StationTest, AStationThatTheUserChoseStaysAndADrawnOneEndsWithItsWindow) {
    AddStation("one");
    StartSong();
    StepStation(app_, picker_, 1);
    Pass(200s);
    EXPECT_TRUE(PlaysStation("one"));
    EXPECT_EQ(app_.history.records.size(), 2U) << "it did not begin again";
    ReturnToLibrary(app_.selection);
    Pass(60s);
    EXPECT_EQ(app_.playback.item.kind, PlayItem::Kind::kSong);
    EXPECT_EQ(longestSilence_, 0ms);
}

TEST_F(StationTest, DeadStationsCostNoSilenceAndTheNextOneThatAnswersPlays) {
    AddStation("dead", {.answers = false});
    AddStation("dead too", {.answers = false});
    AddStation("alive");
    StartSong();
    app_.selection.currentInternetStation = 2;
    StepStation(app_, picker_, 1);  // the first
    Pass(5s);
    EXPECT_TRUE(PlaysStation("alive"));
    EXPECT_EQ(longestSilence_, 0ms);
    EXPECT_NE(console_->Errors().find("Failed to create stream after 3 attempts. Attempting to play next song."),
              std::string::npos);
}

TEST_F(StationTest, WhileNoStationAnswersSongsPlayAndTheStationComesBack) {
    AddStation("radio", {.answers = false});
    StartSong();
    StepStation(app_, picker_, 1);
    Pass(100s);
    EXPECT_EQ(app_.playback.item.kind, PlayItem::Kind::kSong);
    EXPECT_EQ(app_.selection.playMode, kStationMode);
    EXPECT_LT(asked_.size(), 10U) << "the directory is not asked again and again";
    SetFakeStation("http://radio", {});
    Pass(90s);
    EXPECT_TRUE(PlaysStation("radio"));
    EXPECT_EQ(longestSilence_, 0ms);
}

TEST_F(StationTest, AStationThatFallsSilentGivesWayToASongWithinTwoSeconds) {
    for (const bool saysSo : {true, false}) {
        app_.radio.stations.clear();
        AddStation("radio");
        AddStation("unreachable", {.answers = false, .opensIn = 10s});
        StartSong();
        StepStation(app_, picker_, 0);
        Pass(5s);
        ASSERT_TRUE(PlaysStation("radio"));
        SetFakeStation("http://radio", {.answers = false, .isConnected = !saysSo});
        Pass(20s);
        SetFakeStation("http://radio", {.answers = false, .stalls = true, .isConnected = !saysSo});
        Pass(10s);
        EXPECT_EQ(app_.playback.item.kind, PlayItem::Kind::kSong);
        EXPECT_LT(longestSilence_, 2s);
        SetFakeStation("http://radio", {});
        Pass(90s);
        EXPECT_TRUE(PlaysStation("radio")) << "it is back";
        ReturnToLibrary(app_.selection);
    }
}

TEST_F(StationTest, AStationIsRepairedOnceAnHourAndKeepsItsOldUrl) {
    AddStation("moved", {.answers = false});
    SetFakeStation("http://new", {});
    pages_["http://directory/json/stations/search"] = R"([{"name":"moved","url":"http://list.m3u"}])";
    pages_["http://list.m3u"] = "#EXTM3U\nhttp://new\n";
    pages_["http://directory"] = "";
    StartSong();
    StepStation(app_, picker_, 1);
    Pass(3s);
    EXPECT_TRUE(PlaysStation("moved"));
    EXPECT_EQ(app_.playback.item.address, "http://new");
    EXPECT_EQ(app_.radio.stations[0].url, "http://new");
    EXPECT_EQ(app_.radio.stations[0].oldUrl, "http://moved");
    EXPECT_NE(console_->Output().find("Found valid URL for station 'moved': http://new\nURL fixed. Retrying..."),
              std::string::npos);

    const size_t asked = asked_.size();
    SetFakeStation("http://new", {.answers = false, .stalls = true});
    Pass(30min);
    EXPECT_EQ(asked_.size(), asked);
    Pass(40min);
    EXPECT_GT(asked_.size(), asked);
}

TEST_F(StationTest, TitlesAreKeptForEachStation) {
    AddStation("radio", {.title = "One"});
    StartSong();
    StepStation(app_, picker_, 1);
    Pass(1s);
    for (int i = 0; i < 250; i++) {
        SetFakeStation("http://radio", {.title = "Title " + std::to_string(i / 2)});
        RefreshNowPlaying(app_);
    }
    EXPECT_EQ(app_.radio.nowPlaying.songTitle, "Title 124");
    const std::vector<HeardTitle>& titles = app_.radio.heardTitles["http://radio"];
    ASSERT_EQ(titles.size(), 100U);
    EXPECT_EQ(titles.front().title, "Title 25");
}

}  // namespace
}  // namespace hullrider
