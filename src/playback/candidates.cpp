#include "playback/candidates.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace hullrider {

namespace {

// Draws with replacement before switching to one without, which costs a pass over the whole list.
constexpr int kDirectDraws = 64;

int64_t WeightOf(const Song& song) {
    if (!IsFavorite(song)) return 1;
    return song.favoriteCount < 0 ? 0 : int64_t{song.favoriteCount} + 1;
}

void AddSong(CandidateLists& lists, const Song& song, const SongChoice& where, bool isAway) {
    const int64_t weight = WeightOf(song);
    lists.weightOfAll += weight;
    const auto append = [&](size_t category, bool passes) {
        ++lists.songsOf[category];
        if (passes && !isAway) Append(lists.byCategory[category], where, weight);
    };
    if (IsFavorite(song)) append(kFavoritesCategory, true);
    if (song.musicType < kMidi || song.musicType > kTracker) return;
    append(static_cast<size_t>(song.musicType), PassesFilter(song, lists.filter));
}

bool AreUpToDate(const CandidateLists& lists, const MusicLibrary& library, int32_t filter, uint64_t unavailable) {
    return lists.playlists == library.playlists.data() && lists.playlistCount == library.playlists.size() &&
           lists.libraryRevision == library.revision && lists.filter == filter &&
           lists.unavailableRevision == unavailable;
}

// Gives each song an exponentially distributed arrival time with its weight as the rate: the first arrival is a draw by
// weight (Efraimidis and Spirakis, "Weighted random sampling with a reservoir", 2006).
double ArrivalOf(int64_t weight, Random& random) {
    return -std::log1p(-random.Fraction()) / static_cast<double>(weight);
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

bool PassesFilter(const Song& song, int32_t filter) {
    if (filter == kFavoritesOnly) return IsFavorite(song);
    return filter != kNoFavorites || !IsFavorite(song);
}

const CandidateLists& BuildWeightedSongList(const MusicLibrary& library, int32_t filter, PickerState& picker) {
    CandidateLists& lists = picker.candidates;
    const uint64_t unavailable = picker.unavailable.Revision();
    if (AreUpToDate(lists, library, filter, unavailable)) return lists;
    lists = {};
    lists.playlists = library.playlists.data();
    lists.playlistCount = library.playlists.size();
    lists.libraryRevision = library.revision;
    lists.unavailableRevision = unavailable;
    lists.filter = filter;
    for (size_t i = 0; i < library.playlists.size(); ++i) {
        if (library.playlists[i].isQueue) continue;
        const std::vector<Song>& songs = library.playlists[i].songs;
        for (size_t j = 0; j < songs.size(); ++j) {
            const bool isAway = picker.unavailable.IsAway(songs[j].songPath);
            AddSong(lists, songs[j], {static_cast<int32_t>(i), static_cast<int32_t>(j), 0, 0}, isAway);
        }
    }
    return lists;
}

const WeightedSongs& EverySong(const MusicLibrary& library, int32_t filter, PickerState& picker) {
    const auto [place, isNew] = picker.candidates.every.try_emplace(filter);
    WeightedSongs& list = place->second;
    if (!isNew) return list;
    for (size_t i = 0; i < library.playlists.size(); ++i) {
        if (library.playlists[i].isQueue) continue;
        const std::vector<Song>& songs = library.playlists[i].songs;
        for (size_t j = 0; j < songs.size(); ++j) {
            const bool isDrawn = WeightOf(songs[j]) > 0 && PassesFilter(songs[j], filter);
            if (!isDrawn || picker.unavailable.IsAway(songs[j].songPath)) continue;
            Append(list, {static_cast<int32_t>(i), static_cast<int32_t>(j), 0, 0}, 1);
        }
    }
    return list;
}

WeightedSongs EverySongOf(const MusicLibrary& library, int32_t playlist) {
    WeightedSongs list;
    for (size_t j = 0; j < library.playlists[static_cast<size_t>(playlist)].songs.size(); ++j) {
        Append(list, {playlist, static_cast<int32_t>(j), 0, 0}, 1);
    }
    return list;
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

std::optional<SongChoice> DrawPassing(const WeightedSongs& list, Random& random, const SongTest& passes) {
    if (IsEmpty(list)) return std::nullopt;
    for (int draw = 0; draw < kDirectDraws; ++draw) {
        const SongChoice& song = DrawSong(list, random);
        if (passes(song)) return song;
    }
    std::optional<SongChoice> first;
    double earliest = std::numeric_limits<double>::infinity();
    int64_t before = 0;
    for (size_t i = 0; i < list.songs.size(); ++i) {
        const double arrival = ArrivalOf(list.upTo[i] - std::exchange(before, list.upTo[i]), random);
        if (arrival >= earliest || !passes(list.songs[i])) continue;
        earliest = arrival;
        first = list.songs[i];
    }
    return first;
}

std::optional<SongChoice> LowestPassing(const WeightedSongs& list, const SongTest& passes,
                                        const std::function<uint64_t(const SongChoice&)>& rank) {
    std::optional<SongChoice> lowest;
    uint64_t lowestRank = 0;
    for (const SongChoice& song : list.songs) {
        const uint64_t ranked = rank(song);
        if ((lowest && ranked >= lowestRank) || !passes(song)) continue;
        lowest = song;
        lowestRank = ranked;
    }
    return lowest;
}

}  // namespace hullrider
