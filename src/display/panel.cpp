#include "display/panel.h"

#include <algorithm>
#include <cmath>

#include "library/type_names.h"
#include "platform/paths.h"
#include "platform/play_clock.h"
#include "playback/next_up.h"
#include "playback/pick.h"
#include "playback/play_next.h"
#include "playback/queue.h"
#include "playback/station_play.h"
#include "playback/stream_slots.h"
#include "playback/stream_time.h"
#include "playback/volume.h"

namespace hullrider {

namespace {

constexpr double kSteps = 2000.0;     // finer ones are invisible on a panel of usual size
constexpr size_t kLongestText = 160;  // code points

double OnPanel(double fraction) {
    return std::round(std::clamp(fraction, 0.0, 1.0) * kSteps) / kSteps;
}

// The text as one line: control characters become spaces, and a long text is cut.
std::string ShortLine(const std::string& text) {
    std::string line;
    size_t codePoints = 0;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        const bool beginsCodePoint = (byte & 0xC0) != 0x80;
        if (beginsCodePoint && ++codePoints > kLongestText) return line + "\xE2\x80\xA6";
        line += byte < 0x20 || byte == 0x7F ? ' ' : c;
    }
    return line;
}

std::string InCapitals(std::string text) {
    for (char& c : text) c = c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
    return text;
}

// The extension of an audio file, "FLAC", if it is short and plain; the name of the type otherwise.
std::string KindOf(const PlayItem& item) {
    constexpr size_t kLongestExtension = 4;
    const auto type = static_cast<size_t>(item.type);
    if (type < kTypeNames.size() && item.type != kMp3) return InCapitals(kTypeNames[type].brief);
    const std::u8string extension = PathFromUtf8(item.address).extension().u8string();
    const std::string kind = InCapitals({extension.begin() + (extension.empty() ? 0 : 1), extension.end()});
    const bool isPlain = std::all_of(kind.begin(), kind.end(), [](char c) { return c > ' ' && c < 127; });
    return kind.empty() || kind.size() > kLongestExtension || !isPlain ? kTypeNames[kMp3].brief : kind;
}

void TellTimes(PanelModel& model, const PlaybackState& playback, double positionSec) {
    // A station has no length: its play window stands in for one.
    const bool endless = playback.songLengthSec <= 0.0;
    const double lengthSec = std::max(endless ? playback.endSec : playback.songLengthSec, 0.001);
    const double played = std::max(std::floor(positionSec - playback.startSec), 0.0);
    const double windowSec = std::round(playback.endSec - playback.startSec);
    model.timePlayed = FormatTime(played);
    model.timeLeft = FormatTime(std::max(windowSec - played, 0.0));
    model.songPosition = FormatTime(positionSec);
    if (!endless) {
        model.songLeft = '-';
        model.songLeft += FormatTime(std::max(std::round(lengthSec) - std::floor(positionSec), 0.0));
    }
    model.windowFrom = OnPanel(playback.startSec / lengthSec);
    model.windowTo = OnPanel(playback.endSec / lengthSec);
    model.position = OnPanel(positionSec / lengthSec);
    model.lengthSec = playback.songLengthSec;
    model.canSeek = !endless && playback.item.canBePositioned;
}

PlayRange RangeOf(const AppState& app) {
    const SelectionState& selection = app.selection;
    const bool isQueuedSongOn = IsQueuedSongPlaying(app) && CurrentHandle(app.playback) != 0;
    if (HasQueuedSong(app) || isQueuedSongOn) return PlayRange::kQueue;
    if (selection.playMode == kPlaylistMode) return PlayRange::kPlaylist;
    const bool isStation = selection.playMode == kStationMode || selection.customStationActive;
    return isStation ? PlayRange::kStation : PlayRange::kLibrary;
}

FilterEffect EffectOfFilter(const PanelModel& model, const AppState& app) {
    if (model.filter == FavoriteFilter::kNone) return FilterEffect::kApplies;
    if (model.range != PlayRange::kLibrary || !model.shuffle) return FilterEffect::kNotHere;
    const MusicLibrary& library = app.library;
    const int32_t favorites = library.favoriteSongCount;
    const int32_t passing = model.filter == FavoriteFilter::kFavorites ? favorites : library.typedSongCount - favorites;
    const bool isDropped = IsOn(model) && app.playback.relaxed == Relaxation::kFilter;
    return passing < 1 || isDropped ? FilterEffect::kNothingPasses : FilterEffect::kApplies;
}

void TellDraw(PanelModel& model, const AppState& app) {
    const SelectionState& selection = app.selection;
    model.shuffle = selection.shuffle;
    if (selection.favoritesFilter == kFavoritesOnly) model.filter = FavoriteFilter::kFavorites;
    if (selection.favoritesFilter == kNoFavorites) model.filter = FavoriteFilter::kOthers;
    model.range = RangeOf(app);
    model.filterEffect = EffectOfFilter(model, app);
}

void TellNames(PanelModel& model, const PlayItem& item) {
    model.kind = KindOf(item);
    model.album = ShortLine(item.secondLine);
    model.title = ShortLine(item.title);
}

// One song after another has failed to open.
bool IsSearchLong(const PlaybackState& playback) {
    constexpr std::chrono::seconds kLong{1};
    return playback.next != nullptr && playback.next->wish.isUrgent && PlayNow() - playback.lastAttempt > kLong;
}

void TellSilence(PanelModel& model, const PlaybackState& playback) {
    model.title = TroubleText(IsSearchLong(playback) ? PlaybackTrouble::kLookingForMusic : playback.trouble);
    if (IsSearchLong(playback)) return;
    if (playback.trouble != PlaybackTrouble::kNone || playback.item.kind == PlayItem::Kind::kNone) return;
    model.transport = Transport::kStopped;
    TellNames(model, playback.item);
}

// What was picked may still change; what is open starts, unless the user changes something.
void TellNext(PanelModel& model, const AppState& app, double positionSec) {
    constexpr double kSoonSec = 10.0;
    const NextUp* const next = app.playback.next.get();
    if (next == nullptr || !next->opening->IsDone() || next->opening->Result().result != OpenResult::kReady) return;
    if (!StillFits(app, *next)) return;
    model.next = ShortLine(next->opening->Result().title);
    model.isNextSoon = app.playback.endSec - positionSec <= kSoonSec;
}

void TellSong(PanelModel& model, const AppState& app) {
    const PlaybackState& playback = app.playback;
    const Song* const song = PlayingSong(app);
    TellNames(model, playback.item);
    model.relaxed = playback.relaxed;
    if (song != nullptr) model.favoriteCount = song->favoriteCount;
    if (song != nullptr && !IsQueuedSongPlaying(app)) {
        model.playlist =
            std::to_string(playback.item.place.playlist + 1) + "/" + std::to_string(AlbumCountOf(app.library));
    }
    const SoundFontState& fonts = app.soundFonts;
    if (playback.item.type == kMidi) {
        model.soundFont = ShortLine(std::string(FileStem(CurrentSlotFont(playback, fonts))));
    }
}

// The title of the song, and below it the station with what is known of its stream.
void TellStation(PanelModel& model, const AppState& app, const ChannelReading& channel) {
    const RadioState& radio = app.radio;
    model.isBuffering = channel.isBuffering;
    if (const std::string song = SongTitleOf(radio.nowPlaying); !song.empty()) model.title = ShortLine(song);
    std::string line = app.playback.item.title;
    if (!channel.codec.empty()) line += " \u00B7 " + channel.codec;
    if (channel.bitRate > 0) line += ' ' + std::to_string(channel.bitRate) + " kbit/s";
    if (!radio.nowPlaying.stationGenre.empty()) line += " \u00B7 " + radio.nowPlaying.stationGenre;
    model.album = ShortLine(line);
    const auto place = static_cast<size_t>(app.playback.item.place.playlist);
    if (place < radio.stations.size()) model.favoriteCount = radio.stations[place].favoriteCount;
    if (app.selection.playMode == kStationMode) model.timeLeft.clear();  // it plays on
}

}  // namespace

PanelModel MakePanelModel(const AppState& app, const ChannelReading& channel) {
    PanelModel model;
    model.volume = std::round(std::clamp(UserVolume(app), 0.0F, 1.0F) * 100.0F) / 100.0F;
    model.isMuted = app.playback.volume->muted;
    if (CurrentHandle(app.playback) == 0) {
        TellSilence(model, app.playback);
    } else {
        model.transport = channel.paused ? Transport::kPaused : Transport::kPlaying;
        TellSong(model, app);
        TellTimes(model, app.playback, channel.positionSec);
        if (app.playback.item.kind == PlayItem::Kind::kStation) TellStation(model, app, channel);
        TellNext(model, app, channel.positionSec);
    }
    TellDraw(model, app);
    return model;
}

}  // namespace hullrider
