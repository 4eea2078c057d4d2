#include "playback/candidates.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace hullrider {

namespace {

// Draws with replacement before the search turns to one without, which costs a pass over the whole list.
constexpr int kDirectDraws = 64;

bool PassesFilter(const Song& song, int32_t filter) {
    if (filter == kFavoritesOnly) return IsFavorite(song);
    return filter != kNoFavorites || !IsFavorite(song);
}

int64_t WeightOf(const Song& song) {
    if (!IsFavorite(song)) return 1;
    return song.favoriteCount < 0 ? 0 : int64_t{song.favoriteCount} + 1;
}

void AddSong(CandidateLists& lists, const Song& song, const SongChoice& where) {
    const int64_t weight = WeightOf(song);
    lists.weightOfAll += weight;
    if (IsFavorite(song)) {
        ++lists.songsOf[kFavoritesCategory];
        Append(lists.byCategory[kFavoritesCategory], where, weight);
    }
    if (song.musicType < kMidi || song.musicType > kTracker) return;
    ++lists.songsOf[song.musicType];
    if (PassesFilter(song, lists.builtFilter)) Append(lists.byCategory[song.musicType], where, weight);
}

// The list in an order as if its songs were drawn one after the other, each only once: the smallest of exponentially
// distributed times, each with its song's weight for a rate, comes first (Efraimidis and Spirakis, "Weighted random
// sampling with a reservoir", 2006).
std::vector<SongChoice> DrawOrder(const WeightedSongs& list, Random& random) {
    std::vector<std::pair<double, size_t>> times;
    times.reserve(list.songs.size());
    int64_t before = 0;
    for (size_t i = 0; i < list.songs.size(); ++i) {
        const auto weight = static_cast<double>(list.upTo[i] - std::exchange(before, list.upTo[i]));
        times.emplace_back(-std::log1p(-random.Fraction()) / weight, i);
    }
    std::sort(times.begin(), times.end());
    std::vector<SongChoice> order;
    order.reserve(times.size());
    for (const auto& [time, index] : times) order.push_back(list.songs[index]);
    return order;
}

}  // namespace

bool IsFavorite(const Song& song) {
    return song.isFavorite == 1;
}

bool IsEmpty(const WeightedSongs& list) {
    return list.songs.empty();
}

void Append(WeightedSongs& list, const SongChoice& song, int64_t weight) {
    if (weight < 1) return;
    list.songs.push_back(song);
    list.upTo.push_back((list.upTo.empty() ? 0 : list.upTo.back()) + weight);
}

const CandidateLists& BuildWeightedSongList(const MusicLibrary& library, SelectionState& selection) {
    CandidateLists& lists = selection.candidates;
    const bool upToDate = lists.builtFrom == library.playlists.data() && lists.builtCount == library.playlists.size() &&
                          lists.builtRevision == library.revision && lists.builtFilter == selection.favoritesFilter;
    if (!upToDate) {
        lists = {};
        lists.builtFrom = library.playlists.data();
        lists.builtCount = library.playlists.size();
        lists.builtRevision = library.revision;
        lists.builtFilter = selection.favoritesFilter;
        for (size_t i = 0; i < library.playlists.size(); ++i) {
            const std::vector<Song>& songs = library.playlists[i].songs;
            for (size_t j = 0; j < songs.size(); ++j) {
                AddSong(lists, songs[j], {static_cast<int32_t>(i), static_cast<int32_t>(j), 0, 0});
            }
        }
    }
    selection.lastCandidateCount = static_cast<int32_t>(std::min<int64_t>(lists.weightOfAll, INT32_MAX));
    return lists;
}

WeightedSongs BuildStationList(const RadioState& radio, const MusicLibrary& library) {
    WeightedSongs list;
    for (size_t i = 0; i < radio.stations.size(); ++i) {
        if (!radio.stations[i].isIncluded) continue;
        Append(list, {static_cast<int32_t>(i), 0, 0, 0}, int64_t{radio.stations[i].favoriteCount} + 1);
    }
    for (size_t i = 0; i < library.playlists.size(); ++i) {
        if (library.playlists[i].iRadioMode == 0) continue;
        const auto index = static_cast<int32_t>(radio.stations.size() + i);
        Append(list, {index, 0, 0, 0}, int64_t{library.playlists[i].favoriteCount} + 1);
    }
    return list;
}

const SongChoice& DrawSong(const WeightedSongs& list, Random& random) {
    const auto drawn = static_cast<int64_t>(random.Index(static_cast<uint64_t>(list.upTo.back())));
    const auto at = std::upper_bound(list.upTo.begin(), list.upTo.end(), drawn);
    return list.songs[static_cast<size_t>(at - list.upTo.begin())];
}

std::optional<SongChoice> DrawPassing(const WeightedSongs& list, Random& random,
                                      const std::function<bool(const SongChoice&)>& passes) {
    if (IsEmpty(list)) return std::nullopt;
    for (int draw = 0; draw < kDirectDraws; ++draw) {
        const SongChoice& song = DrawSong(list, random);
        if (passes(song)) return song;
    }
    for (const SongChoice& song : DrawOrder(list, random)) {
        if (passes(song)) return song;
    }
    return std::nullopt;
}

}  // namespace hullrider
