// Songs that play once before the mix goes on, on an audio library that only keeps time.
#include "playback/queue.h"

#include "playback/playlist_ring.h"
#include "playback/selection_commands.h"
#include "playback/song_selection.h"
#include "playback/transport.h"
#include "tests/playback/engine_fixture.h"

namespace hullrider {
namespace {

using namespace std::chrono_literals;
using std::chrono::milliseconds;

class QueueTest : public EngineTest {
protected:
    QueueTest() {
        app_.settings.FADE_DURATION_MS = 1000;
        app_.settings.songPlayDurationMin = app_.settings.songPlayDurationMax = 30;
        SetLibrary(app_, {{Write("a.mp3", FakeSong(300.0))}, {Write("b.mp3", FakeSong(300.0))}});
    }

    void Pass(milliseconds time) {
        for (milliseconds passed{0}; passed < time; passed += 50ms) {
            clock_.Advance(50ms);
            PollPlayback(app_, picker_);
        }
    }

    void Next() {
        PlayNext(app_, picker_);
        Pass(2s);
    }

    void Queue(std::vector<Song> songs) {
        if (QueueIn(app_.library)) app_.library.playlists.pop_back();
        app_.library.playlists.push_back({"Queued songs", std::move(songs)});
        app_.library.playlists.back().isQueue = true;
        app_.selection.nextQueued = 0;
        Recount(app_);
    }

    const std::string& Title() const { return app_.playback.item.title; }
    bool IsOfTheMix() const { return Title() == "a" || Title() == "b"; }
};

TEST_F(QueueTest, PlaysOnceWholeAndInOrderThenTheMixGoesOnWhateverItIs) {
    for (const bool shuffle : {true, false}) {
        app_.selection.shuffle = shuffle;
        Queue({Write("q1.mp3", FakeSong(60.0)), Write("broken.mp3", "no music"), Write("q2.mid", FakeSong(50.0))});
        Next();
        EXPECT_EQ(Title(), "q1");
        EXPECT_EQ(app_.playback.startSec, 0.0);
        EXPECT_EQ(app_.playback.endSec, 59.0) << "the fade begins where the song is to be faded out";
        Pass(50s);
        EXPECT_EQ(Title(), "q1");
        EXPECT_TRUE(HasQueuedSong(app_));
        Pass(10s);
        EXPECT_EQ(Title(), "q2");
        EXPECT_FALSE(HasQueuedSong(app_));
        EXPECT_TRUE(IsQueuedSongPlaying(app_));
        for (int i = 0; i < 20; ++i) {
            Next();
            EXPECT_TRUE(IsOfTheMix()) << Title();
        }
    }
}

TEST_F(QueueTest, NothingElseLeadsIntoIt) {
    Queue({Write("q.mid", FakeSong(60.0))});
    EXPECT_EQ(app_.library.typedSongCount, 2);
    EXPECT_EQ(app_.weights.midi, 0) << "the mix has none";
    app_.selection.nextQueued.reset();
    for (int i = 0; i < 50; ++i) EXPECT_NE(PickUniformSong(app_, picker_).result, Selection::kNothing);
    app_.settings.historyDepth = -1;
    app_.selection.selectionCalls = 10000;  // the next call draws uniformly
    for (int i = 0; i < 50; ++i) EXPECT_NE(SelectNextSong(app_, picker_, kMidiCategory).item.title, "q");
    EXPECT_FALSE(EnterPlaylist(app_, 2));
    StepPlaylistBack(app_);
    EXPECT_EQ(app_.selection.currentPlaylist, 1);
    StepPlaylistForward(app_);
    EXPECT_EQ(app_.selection.playMode, kLibraryMode);
}

TEST_F(QueueTest, IsLeftByAnyStepElsewhereAndItsSongsCanBeHeardAgain) {
    const std::function<void()> ways[] = {[&] { NextPlaylist(app_, picker_); },
                                          [&] { PreviousPlaylist(app_, picker_); },
                                          [&] {
                                              ReturnToLibrary(app_.selection);
                                              PlayNext(app_, picker_);
                                          }};
    for (const auto& leave : ways) {
        Queue({Write("q1.mp3", FakeSong(60.0)), Write("q2.mp3", FakeSong(60.0))});
        Next();
        EXPECT_EQ(Title(), "q1");
        leave();
        Pass(2s);
        EXPECT_TRUE(IsOfTheMix()) << Title();
        EXPECT_FALSE(HasQueuedSong(app_));
    }
    PlayPreviousSong(app_, picker_);
    Pass(2s);
    EXPECT_EQ(Title(), "q1");
}

TEST_F(QueueTest, PreviousGoesBackIntoTheMixAndTheQueueGoesOnAfterIt) {
    Next();
    const std::string mix = Title();
    Queue({Write("q1.mp3", FakeSong(60.0)), Write("q2.mp3", FakeSong(60.0))});
    Next();
    PlayPreviousSong(app_, picker_);
    Pass(2s);
    EXPECT_EQ(Title(), mix);
    Next();
    EXPECT_EQ(Title(), "q1");
    Next();
    EXPECT_EQ(Title(), "q2");
}

TEST_F(QueueTest, WithoutAnyOtherMusicItEndsInsteadOfRepeating) {
    SetLibrary(app_, {});
    Queue({Write("q.mp3", FakeSong(60.0))});
    Next();
    EXPECT_EQ(Title(), "q");
    Pass(70s);
    EXPECT_EQ(CurrentHandle(app_.playback), 0U);
    EXPECT_EQ(app_.playback.trouble, PlaybackTrouble::kNoMusic);
}

}  // namespace
}  // namespace hullrider
