#include "display/panel.h"

#include <algorithm>
#include <cmath>

#include "audio/bass.h"
#include "library/type_names.h"
#include "platform/paths.h"
#include "playback/pick.h"
#include "playback/play_next.h"
#include "playback/stream_slots.h"
#include "playback/stream_time.h"
#include "playback/volume.h"

namespace hullrider {

namespace {

constexpr double kSteps = 2000.0;     // finer steps than a panel of usual size can show would be drawn for nothing
constexpr size_t kLongestText = 160;  // code points: what nobody reads to the end

double OnPanel(double fraction) {
    return std::round(std::clamp(fraction, 0.0, 1.0) * kSteps) / kSteps;
}

// The text in one line, without what a tag or file name may hold beside letters, and not endless.
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
    // A station has no length: the play window is all there is of it.
    const bool endless = playback.songLengthSec <= 0.0;
    const double lengthSec = std::max(endless ? playback.endSec : playback.songLengthSec, 0.001);
    const double played = std::max(std::floor(positionSec - playback.startSec), 0.0);
    const double windowSec = std::round(playback.endSec - playback.startSec);
    model.windowPlayed = FormatTime(played);
    model.windowLeft = FormatTime(std::max(windowSec - played, 0.0));
    model.songPosition = FormatTime(positionSec);
    if (!endless) {
        model.songLeft = '-';
        model.songLeft += FormatTime(std::max(std::round(lengthSec) - std::floor(positionSec), 0.0));
    }
    model.windowFrom = OnPanel(playback.startSec / lengthSec);
    model.windowTo = OnPanel(playback.endSec / lengthSec);
    model.position = OnPanel(positionSec / lengthSec);
}

void TellDraw(PanelModel& model, const SelectionState& selection) {
    model.shuffle = selection.shuffle;
    if (selection.favoritesFilter == kFavoritesOnly) model.filter = FavoriteFilter::kFavorites;
    if (selection.favoritesFilter == kNoFavorites) model.filter = FavoriteFilter::kOthers;
    if (selection.playMode == kPlaylistMode) model.range = PlayRange::kPlaylist;
    if (selection.playMode == kStationMode) model.range = PlayRange::kStation;
}

void TellSong(PanelModel& model, const AppState& app) {
    const PlaybackState& playback = app.playback;
    const Song* const song = PlayingSong(app);
    model.kind = KindOf(playback.item);
    model.album = ShortLine(playback.item.secondLine);
    model.title = ShortLine(playback.item.title);
    model.relaxed = playback.relaxed;
    if (song != nullptr) {
        model.favoriteCount = song->favoriteCount;
        model.playlist =
            std::to_string(playback.item.place.playlist + 1) + "/" + std::to_string(app.library.playlists.size());
    }
    const SoundFontState& fonts = app.soundFonts;
    if (playback.item.type == kMidi) {
        model.soundFont = ShortLine(std::string(FileStem(CurrentSlotFont(playback, fonts))));
    }
}

}  // namespace

ChannelReading ReadChannel(const PlaybackState& playback) {
    const StreamSlot handle = CurrentHandle(playback);
    if (handle == 0) return {};
    return {PositionSec(handle), BASS_ChannelIsActive(handle) == BASS_ACTIVE_PAUSED};
}

StereoLevel ReadLevel(const PlaybackState& playback) {
    constexpr float kFull = 32768.0F;
    const StreamSlot handle = CurrentHandle(playback);
    const uint32_t level = handle == 0 ? BASS_LEVEL_ERROR : BASS_ChannelGetLevel(handle);
    if (level == BASS_LEVEL_ERROR) return {};
    return {static_cast<float>(level & 0xFFFFU) / kFull, static_cast<float>(level >> 16U) / kFull};
}

PanelModel MakePanelModel(const AppState& app, const ChannelReading& channel) {
    PanelModel model;
    TellDraw(model, app.selection);
    model.volume = std::round(std::clamp(UserVolume(app), 0.0F, 1.0F) * 100.0F) / 100.0F;
    if (CurrentHandle(app.playback) == 0) {
        model.title = TroubleText(app.playback.trouble);
        return model;
    }
    model.transport = channel.paused ? Transport::kPaused : Transport::kPlaying;
    TellSong(model, app);
    TellTimes(model, app.playback, channel.positionSec);
    return model;
}

ElementSet ElementsThatDiffer(const PanelModel& before, const PanelModel& after) {
    ElementSet elements;
    const auto check = [&](PanelElement element, bool differs) { elements.set(IndexOf(element), differs); };
    const bool transport = before.transport != after.transport;
    check(PanelElement::kPlayPause, transport);
    check(PanelElement::kStatus, transport);
    check(PanelElement::kClock, transport || before.windowPlayed != after.windowPlayed);
    check(PanelElement::kShuffle, before.shuffle != after.shuffle);
    check(PanelElement::kFilter, before.filter != after.filter);
    check(PanelElement::kVolume, before.volume != after.volume);
    check(PanelElement::kSongBar, transport || before.windowFrom != after.windowFrom ||
                                      before.windowTo != after.windowTo || before.position != after.position);
    check(PanelElement::kKind, before.kind != after.kind);
    check(PanelElement::kAlbum, before.album != after.album);
    check(PanelElement::kTitle, transport || before.title != after.title);
    check(PanelElement::kSoundFont, before.soundFont != after.soundFont);
    check(PanelElement::kPlaylist, before.playlist != after.playlist);
    check(PanelElement::kFavorite, transport || before.favoriteCount != after.favoriteCount);
    check(PanelElement::kWindowLeft, before.windowLeft != after.windowLeft);
    check(PanelElement::kModes, before.shuffle != after.shuffle || before.filter != after.filter ||
                                    before.range != after.range || before.relaxed != after.relaxed);
    check(PanelElement::kSongPosition, before.songPosition != after.songPosition);
    check(PanelElement::kSongLeft, before.songLeft != after.songLeft);
    return elements;
}

std::string TooltipOf(PanelElement element, const PanelModel& model) {
    switch (element) {
        case PanelElement::kPrevious:
            return "Previous song";
        case PanelElement::kPlayPause:
            return model.transport == Transport::kPlaying ? "Pause" : "Play";
        case PanelElement::kNext:
            return "Next song";
        case PanelElement::kPlaylistBack:
            return "Previous playlist";
        case PanelElement::kPlaylistForward:
            return "Next playlist";
        case PanelElement::kShuffle:
            if (model.relaxed == Relaxation::kHistory) return "Shuffle is on; all songs of this kind were heard lately";
            return model.shuffle ? "Shuffle is on" : "Shuffle is off";
        case PanelElement::kFilter:
            if (model.filter == FavoriteFilter::kNone) return "All songs are played";
            if (model.relaxed == Relaxation::kFilter) {
                return model.filter == FavoriteFilter::kFavorites
                           ? "Only favorites are wanted, but none can be played: others are"
                           : "Favorites are not wanted, but nothing else can be played";
            }
            return model.filter == FavoriteFilter::kFavorites ? "Only favorites are played"
                                                              : "Favorites are not played";
        case PanelElement::kFavoriteDown:
            return "Play this song less often";
        case PanelElement::kFavoriteUp:
            return "Play this song more often";
        case PanelElement::kExit:
            return "Exit";
        case PanelElement::kVolume:
            return "Volume " + std::to_string(std::lround(model.volume * 100.0F)) + " %";
        case PanelElement::kSongBar:
            return "The song, and the part of it that is played";
        default:
            return {};
    }
}

}  // namespace hullrider
