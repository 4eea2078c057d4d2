#include "dialogs/playing_info.h"

#include <cmath>
#include <cstdio>

#include "library/song_counts.h"
#include "library/type_names.h"
#include "platform/paths.h"
#include "playback/candidates.h"
#include "playback/pick.h"
#include "playback/simulation.h"
#include "playback/stream_time.h"
#include "playback/volume.h"

namespace hullrider {

namespace {

std::string Percent(double share) {
    return std::to_string(std::lround(share * 100.0)) + " %";
}

int64_t ChancesOf(const Song& song) {
    if (!IsFavorite(song)) return 1;
    return song.favoriteCount < 0 ? 0 : int64_t{song.favoriteCount} + 1;
}

std::string ByTheMix(const AppState& app, PickerState& picker, const Song& song) {
    const CandidateLists& lists = BuildWeightedSongList(app.library, app.selection.favoritesFilter, picker);
    const std::array<double, 5> shares = CategoryShares(app, picker);
    const auto type = static_cast<size_t>(song.musicType);
    const WeightedSongs& list = lists.byCategory[type];
    const int64_t all = IsEmpty(list) ? 0 : list.upTo.back();
    std::string text = IsFavorite(song) ? "favorite, " : "";
    text += FormatWithThousands(ChancesOf(song)) + " of " + Counted(all, "chance") + "; kind " + kTypeNames[type].many +
            " " + Percent(shares[type]);
    if (IsFavorite(song)) text += ", favorites " + Percent(shares[kFavoritesCategory]);
    return text;
}

const char* RelaxationText(Relaxation relaxed) {
    switch (relaxed) {
        case Relaxation::kHistory:
            return "; every other song was heard lately";
        case Relaxation::kCategory:
            return "; no song of the drawn kind could be played";
        case Relaxation::kFilter:
            return "; no song passed the filter";
        default:
            return "";
    }
}

std::string PlaylistText(const AppState& app, const Playlist& playlist) {
    const std::string songs = Counted(static_cast<int64_t>(playlist.songs.size()), "song");
    return (app.selection.shuffle ? "drawn from this playlist: " : "in the order of this playlist: ") + songs;
}

std::string LengthText(const PlaybackState& playback) {
    if (!playback.item.hasLength) return "live";
    const std::string whole = FormatTime(playback.songLengthSec);
    const bool isWhole = playback.startSec <= 0.0 && playback.endSec >= playback.songLengthSec;
    if (isWhole) return whole;
    return whole + ", plays " + FormatTime(playback.startSec) + " to " + FormatTime(playback.endSec);
}

std::string FormatText(const AppState& app, const ChannelFacts& facts) {
    const PlayItem& item = app.playback.item;
    const auto type = static_cast<size_t>(item.type);
    std::string text = type < kTypeNames.size() ? kTypeNames[type].one : "Unknown";
    if (item.kind == PlayItem::Kind::kSong) text += " (" + Utf8FromPath(PathFromUtf8(item.address).extension()) + ")";
    if (facts.rateHz == 0) return text;
    text += ", " + FormatWithThousands(facts.rateHz) + " Hz, " + (facts.channels == 1 ? "mono" : "stereo");
    if (!facts.soundFont.empty()) text += ", " + std::string(FileStem(facts.soundFont));
    return text;
}

std::string LoudnessText(const AppState& app) {
    const VolumeState& volume = *app.playback.volume;
    if (!volume.realTimeVolume) return "as mastered";
    if (!(volume.averageMusicRms > 0.0F)) return "being measured";
    return GainText(static_cast<double>(WantedVolume(app)) / static_cast<double>(UserVolume(app)));
}

std::string FavoriteText(const Song* song) {
    if (song == nullptr) return {};
    return song->favoriteCount == 0 ? "no" : "count " + FormatWithThousands(song->favoriteCount);
}

}  // namespace

std::string GainText(double gain) {
    if (!(gain > 0.0) || !std::isfinite(gain)) return "silent";
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%+.1f dB", 20.0 * std::log10(gain));
    return text.data();
}

std::string DrawnAsText(const AppState& app, PickerState& picker) {
    if (app.playback.item.kind == PlayItem::Kind::kStation) {
        return "internet radio " + Percent(CategoryShares(app, picker)[kRadioCategory]);
    }
    const Song* const song = PlayingSong(app);
    if (song == nullptr) return "no longer in the library";
    const Playlist& playlist = app.library.playlists[static_cast<size_t>(app.playback.item.place.playlist)];
    if (app.selection.previousSongMode) return "heard before, from the history";
    if (playlist.isQueue) return "you asked for it";
    if (app.selection.customStationActive) return "by the station " + app.radio.activeCustomStation.name;
    if (app.selection.playMode == kPlaylistMode) return PlaylistText(app, playlist);
    return ByTheMix(app, picker, *song) + RelaxationText(app.playback.relaxed);
}

PlayingInfo MakePlayingInfo(const AppState& app, PickerState& picker, const ChannelFacts& facts) {
    const PlayItem& item = app.playback.item;
    if (facts.rateHz == 0) return {"Nothing plays"};
    const Song* const song = PlayingSong(app);
    const std::string& title = facts.title.title.empty() ? item.title : facts.title.title;
    return {title,
            facts.title.artist,
            item.secondLine,
            song == nullptr ? "" : FormatWithThousands(song->playCount),
            LengthText(app.playback),
            FormatText(app, facts),
            LoudnessText(app),
            FavoriteText(song),
            item.address,
            DrawnAsText(app, picker)};
}

}  // namespace hullrider
