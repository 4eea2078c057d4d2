#include "display/panel.h"

#include <gtest/gtest.h>

#include <utility>

#include "audio/bass.h"
#include "audio/manual_output.h"
#include "display/lcd.h"
#include "display/panel_look.h"
#include "state/command_ids.h"
#include "tests/bytes.h"
#include "tests/temporary_folder.h"

namespace hullrider {
namespace {

// A player that plays one song; the handle stands for a stream that no test touches.
class PanelTest : public testing::Test {
protected:
    PanelTest() {
        Playlist first, second;
        second.albumName = "Album";
        second.songs.resize(2);
        second.songs[1].songPath = "/music/Album/Song.FlAc";
        second.songs[1].favoriteCount = 3;
        app_.library.playlists = {first, second};
        app_.soundFonts.midiStreamFontFile = "/fonts/Grand.sf2";
        app_.soundFonts.midiStreamNextFontFile = "/fonts/Upright.sf2";
        PlaybackState& playback = app_.playback;
        playback.musicStream = playback.trackerStream = 1;
        playback.currentType = kMp3;
        playback.item = {.kind = PlayItem::Kind::kSong,
                         .type = kMp3,
                         .place = {1, 1, 0, 0},
                         .address = second.songs[1].songPath,
                         .title = "Song",
                         .secondLine = "Album"};
        playback.songLengthSec = 200.0;
        playback.startSec = 50.0;
        playback.endSec = 110.0;
    }

    PanelModel At(double positionSec) const { return MakePanelModel(app_, {positionSec, false}); }

    AppState app_;
};

TEST_F(PanelTest, TellsTheTimesOfTheWindowAndOfTheSong) {
    const PanelModel model = At(73.4);
    EXPECT_EQ(model.timePlayed, "0:23");
    EXPECT_EQ(model.timeLeft, "0:37");
    EXPECT_EQ(model.songPosition, "1:13");
    EXPECT_EQ(model.songLeft, "-2:07");
    EXPECT_NEAR(model.windowFrom, 0.25, 1e-3);
    EXPECT_NEAR(model.windowTo, 0.55, 1e-3);
    EXPECT_NEAR(model.position, 0.367, 1e-3);
    EXPECT_EQ(model.transport, Transport::kPlaying);
    EXPECT_EQ(MakePanelModel(app_, {73.4, true}).transport, Transport::kPaused);
}

TEST_F(PanelTest, AStationShowsItsSongItsNameAndItsStream) {
    InternetStation station;
    station.name = "Jazz FM";
    station.favoriteCount = 2;
    app_.radio.stations = {station};
    PlayItem& item = app_.playback.item;
    item = {};
    item.kind = PlayItem::Kind::kStation;
    item.type = kInternetRadio;
    item.title = "Jazz FM";
    app_.playback.songLengthSec = 0.0;
    app_.radio.nowPlaying = {kUnknownStation, kUnknownSong, "", ""};
    EXPECT_EQ(At(60.0).title, "Jazz FM");
    EXPECT_EQ(At(60.0).album, "Jazz FM");
    app_.radio.nowPlaying = {"Its own name", "'Artist - Song'", "", "jazz > swing"};
    app_.selection.playMode = kStationMode;
    const PanelModel model = MakePanelModel(app_, {60.0, false, true, "MP3", 128});
    EXPECT_EQ(model.title, "Artist - Song");
    EXPECT_EQ(model.album, "Jazz FM \u00B7 MP3 128 kbit/s \u00B7 jazz > swing");
    EXPECT_EQ(model.kind, "RADIO");
    EXPECT_EQ(model.favoriteCount, 2);
    EXPECT_EQ(model.timePlayed, "0:10") << "on air";
    EXPECT_EQ(model.timeLeft, "") << "it has no end";
    EXPECT_TRUE(model.isBuffering);
}

TEST_F(PanelTest, TimesStayWithinTheirBoundsBeforeAndAfterTheWindow) {
    EXPECT_EQ(At(10.0).timePlayed, "0:00");
    EXPECT_EQ(At(10.0).timeLeft, "1:00");
    EXPECT_EQ(At(500.0).timeLeft, "0:00");
    EXPECT_EQ(At(500.0).songLeft, "-0:00");
    EXPECT_EQ(At(500.0).position, 1.0);
}

TEST_F(PanelTest, AnEndlessStreamHasOnlyItsWindow) {
    app_.playback.songLengthSec = app_.playback.startSec = 0.0;
    const PanelModel model = At(55.0);
    EXPECT_EQ(model.songLeft, "");
    EXPECT_EQ(model.windowFrom, 0.0);
    EXPECT_EQ(model.windowTo, 1.0);
    EXPECT_NEAR(model.position, 0.5, 1e-3);
}

TEST_F(PanelTest, NamesTheKindByTypeAndFile) {
    struct Case {
        int32_t type;
        const char* path;
        const char* kind;
    };
    for (const Case& one :
         {Case{kMp3, "/a/b.m4a", "M4A"}, Case{kMp3, "/a/b.FLAC", "FLAC"}, Case{kMp3, "/a/b", "MP3"},
          Case{kMp3, "/a/b.longest", "MP3"}, Case{kMp3, "/a/b.\xC3\xA4", "MP3"}, Case{kMidi, "/a/b.mp3", "MIDI"},
          Case{kTracker, "/a/b.xm", "TRACKER"}, Case{3, "", "RADIO"}}) {
        app_.playback.item.address = one.path;
        app_.playback.item.type = one.type;
        EXPECT_EQ(At(60.0).kind, one.kind) << one.path;
    }
}

TEST_F(PanelTest, TellsPlaylistFavoriteAndFontOnlyWhereTheyAre) {
    EXPECT_EQ(At(60.0).playlist, "2/2");
    EXPECT_EQ(At(60.0).favoriteCount, 3);
    EXPECT_EQ(At(60.0).soundFont, "");
    app_.playback.item.type = kMidi;
    EXPECT_EQ(At(60.0).soundFont, "Grand");
    // The next song has drawn another font already, or one that could not be loaded.
    app_.soundFonts.currentSoundFont = 7;
    EXPECT_EQ(At(60.0).soundFont, "Grand");
    // A scan made the library smaller while the song goes on.
    for (const auto& [playlist, song] : {std::pair{1, 2}, {2, 0}, {-1, 0}, {1, -1}}) {
        app_.playback.item.place.playlist = playlist;
        app_.playback.item.place.song = song;
        EXPECT_EQ(At(60.0).playlist, "");
        EXPECT_EQ(At(60.0).favoriteCount, 0);
        EXPECT_EQ(At(60.0).title, "Song");
    }
}

TEST_F(PanelTest, NamesAreOneLineAndNotEndless) {
    std::string endless;
    for (int i = 0; i < 5000; ++i) endless += "\xD0\x96";
    app_.playback.item.title = endless;
    app_.playback.item.secondLine = "two\r\nlines\tand\x7F";
    const PanelModel model = At(60.0);
    EXPECT_EQ(model.title.size(), 160U * 2 + 3);
    EXPECT_EQ(model.title.substr(318), "\xD0\x96\xE2\x80\xA6");
    EXPECT_EQ(model.album, "two  lines and ");
}

TEST_F(PanelTest, SaysWhyNothingPlays) {
    app_.playback.musicStream = 0;
    app_.playback.trouble = PlaybackTrouble::kNothingPlayable;
    app_.settings.volumeLevel = 7.0F;
    const PanelModel model = At(0.0);
    EXPECT_EQ(model.transport, Transport::kNothing);
    EXPECT_EQ(model.title, "None of the songs can be played");
    EXPECT_EQ(model.timePlayed + model.songLeft + model.kind + model.playlist, "");
    EXPECT_EQ(model.volume, 1.0F);
    EXPECT_EQ(ReadLevel(app_.playback).left, 0.0F);
    EXPECT_EQ(ReadChannel(app_.playback).positionSec, 0.0);
}

TEST_F(PanelTest, WhatWasStoppedKeepsItsNames) {
    app_.playback.musicStream = 0;
    const PanelModel model = At(0.0);
    EXPECT_EQ(model.transport, Transport::kStopped);
    EXPECT_EQ(model.kind + '|' + model.album + '|' + model.title, "FLAC|Album|Song");
    EXPECT_EQ(model.timePlayed + model.playlist, "");
    EXPECT_FALSE(EnabledElements(model).test(IndexOf(PanelElement::kFavoriteUp)));
    app_.playback.item = {};
    EXPECT_EQ(At(0.0).transport, Transport::kNothing) << "nothing was heard yet";
}

TEST_F(PanelTest, TheNextTitleTakesTheAlbumsPlaceAtTheEndOrWhenAskedFor) {
    PanelLook look{At(60.0)};
    look.hover = PanelElement::kNext;
    EXPECT_EQ(UpperLine(look), "Album") << "it is not known yet";
    look.model.next = "Another";
    EXPECT_EQ(UpperLine(look), "NEXT: Another");
    EXPECT_EQ(TooltipOf(PanelElement::kNext, look.model), "Next song (Right): Another");
    look.hover.reset();
    EXPECT_EQ(UpperLine(look), "Album");
    look.model.isNextSoon = true;
    EXPECT_EQ(UpperLine(look), "NEXT: Another");
}

TEST_F(PanelTest, MuteShowsAndLeavesTheVolumeSet) {
    app_.settings.volumeLevel = 0.65F;
    app_.playback.volume->muted = true;
    EXPECT_TRUE(At(60.0).isMuted);
    EXPECT_NEAR(At(60.0).volume, 0.65F, 1e-6F);
    EXPECT_EQ(TooltipOf(PanelElement::kVolume, At(60.0)), "Volume 65 %, muted: a click ends that (M)");
}

TEST_F(PanelTest, ASecondLaterOnlyTheTimesAreRepainted) {
    ElementSet times;
    for (const PanelElement element : {PanelElement::kClock, PanelElement::kTimeLeft, PanelElement::kSongPosition,
                                       PanelElement::kSongLeft, PanelElement::kSongBar}) {
        times.set(IndexOf(element));
    }
    EXPECT_EQ(ElementsToRepaint({At(60.0)}, {At(61.0)}), times);
    EXPECT_TRUE(ElementsToRepaint({At(60.0)}, {At(60.001)}).none());
}

TEST_F(PanelTest, TellsWhatIsDrawnFrom) {
    const auto isWayBack = [&] { return EnabledElements(At(60.0)).test(IndexOf(PanelElement::kRange)); };
    EXPECT_EQ(At(60.0).range, PlayRange::kLibrary);
    EXPECT_FALSE(isWayBack());
    app_.selection.customStationActive = true;
    EXPECT_EQ(At(60.0).range, PlayRange::kStation);
    app_.selection.customStationActive = false;
    for (const auto& [mode, range] :
         {std::pair{kPlaylistMode, PlayRange::kPlaylist}, {kStationMode, PlayRange::kStation}}) {
        app_.selection.playMode = mode;
        EXPECT_EQ(At(60.0).range, range);
        EXPECT_TRUE(isWayBack());
    }
    EXPECT_EQ(TooltipOf(PanelElement::kRange, At(60.0)), "Back to the whole library");
    EXPECT_EQ(CommandOf(PanelElement::kRange), kMusicHomeCommand);

    // Of three songs in the queue the second plays; it has no place among the playlists.
    app_.library.playlists[1].isQueue = true;
    app_.selection.nextQueued = 2;
    EXPECT_EQ(At(60.0).range, PlayRange::kQueue) << "it plays the last song of the queue";
    EXPECT_EQ(At(60.0).playlist, "");
    app_.playback.item.place.playlist = 0;
    EXPECT_EQ(At(60.0).range, PlayRange::kStation);
    app_.selection.nextQueued = 1;
    EXPECT_EQ(At(60.0).range, PlayRange::kQueue);
}

TEST_F(PanelTest, TheFilterSaysWhatIsSo) {
    struct Case {
        int32_t filter, mode;
        bool shuffle;
        int32_t favorites, songs;
        bool isLit;
        const char* tooltip;
    };
    const Case table[] = {
        {kAllSongs, kLibraryMode, true, 1, 9, false, "All songs are played; a click plays favorites only"},
        {kFavoritesOnly, kLibraryMode, true, 1, 9, true, "Only favorites are played; a click leaves favorites out"},
        {kNoFavorites, kLibraryMode, true, 1, 9, true, "Favorites are not played; a click plays all songs"},
        {kFavoritesOnly, kLibraryMode, true, 0, 9, false,
         "No favorite can be played, so all songs are played; a click leaves favorites out"},
        {kNoFavorites, kLibraryMode, true, 9, 9, false,
         "Only favorites can be played, so they are; a click plays all songs"},
        {kFavoritesOnly, kPlaylistMode, true, 1, 9, false,
         "All songs of the playlist are played; a click leaves favorites out"},
        {kNoFavorites, kStationMode, true, 1, 9, false, "All that the station has is played; a click plays all songs"},
        {kFavoritesOnly, kLibraryMode, false, 1, 9, false,
         "All songs are played, in order; a click leaves favorites out"},
    };
    for (const Case& one : table) {
        app_.selection.favoritesFilter = one.filter;
        app_.selection.playMode = one.mode;
        app_.selection.shuffle = one.shuffle;
        app_.library.favoriteSongCount = one.favorites;
        app_.library.typedSongCount = one.songs;
        EXPECT_EQ(IsFiltered(At(60.0)), one.isLit) << one.tooltip;
        EXPECT_EQ(TooltipOf(PanelElement::kFilter, At(60.0)), one.tooltip);
    }
    app_.selection = {};
    app_.selection.favoritesFilter = kFavoritesOnly;
    app_.playback.relaxed = Relaxation::kFilter;
    app_.library.favoriteSongCount = 1;
    EXPECT_FALSE(IsFiltered(At(60.0))) << "the only favorite cannot be played";
}

TEST_F(PanelTest, TheLevelsAreThoseOfTheirSides) {
    ASSERT_TRUE(InitManualOutput(44100));
    std::string frames;
    for (int i = 0; i < 44100; ++i) frames += LittleEndian(16384, 2) + LittleEndian(8192, 2);
    const TemporaryFolder folder;
    const std::string path = folder.Write("sides.wav", WavFile(1, 44100, 2, 2, frames));
    app_.playback.musicStream = BASS_StreamCreateFile(false, path.c_str(), 0, 0, 0);
    ASSERT_TRUE(BASS_ChannelPlay(app_.playback.musicStream, false));
    std::vector<float> out(4410 * 2);
    ASSERT_TRUE(RenderManually(out.data(), 4410));
    EXPECT_NEAR(ReadLevel(app_.playback).left, 0.5F, 0.01F);
    EXPECT_NEAR(ReadLevel(app_.playback).right, 0.25F, 0.01F);
    BASS_Free();
}

TEST_F(PanelTest, EveryElementThatCanBeClickedHasATooltip) {
    for (size_t i = 0; i < kElementCount; ++i) {
        const auto element = static_cast<PanelElement>(i);
        EXPECT_EQ(TooltipOf(element, At(60.0)).empty(), CommandOf(element) == 0) << i;
    }
}

TEST_F(PanelTest, ElementsWithoutAPossibleCommandAreNotEnabled) {
    const auto isEnabled = [this](PanelElement element) { return EnabledElements(At(60.0)).test(IndexOf(element)); };
    EXPECT_TRUE(isEnabled(PanelElement::kSongBar) && isEnabled(PanelElement::kFavoriteUp));
    EXPECT_FALSE(isEnabled(PanelElement::kTitle));
    app_.playback.item.canBePositioned = false;
    EXPECT_FALSE(isEnabled(PanelElement::kSongBar));
    app_.playback.item.canBePositioned = true;
    app_.playback.songLengthSec = 0.0;
    EXPECT_FALSE(isEnabled(PanelElement::kSongBar)) << "of unknown length";
    app_.playback.musicStream = 0;
    EXPECT_FALSE(isEnabled(PanelElement::kFavoriteUp));
    EXPECT_TRUE(isEnabled(PanelElement::kNext));
}

}  // namespace
}  // namespace hullrider
