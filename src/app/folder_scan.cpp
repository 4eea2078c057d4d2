#include "app/folder_scan.h"

#include <algorithm>
#include <chrono>
#include <iterator>
#include <utility>

#include "app/library_loading.h"
#include "library/cache.h"
#include "library/favorites.h"
#include "library/favorites_file.h"
#include "library/library_changes.h"
#include "platform/console.h"
#include "platform/folder.h"
#include "platform/message_box.h"
#include "platform/paths.h"
#include "playback/kept_place.h"
#include "playback/play_next.h"
#include "playback/queue.h"
#include "playback/stream_slots.h"

namespace hullrider {

namespace {

constexpr std::chrono::milliseconds kGraceAtStart{50};

// The queue stays, after what was found.
void FillLibraryWith(MusicLibrary& library, MusicLibrary&& found) {
    std::vector<Playlist>& playlists = library.playlists;
    const auto queue = std::stable_partition(playlists.begin(), playlists.end(),
                                             [](const Playlist& playlist) { return !playlist.isQueue; });
    found.playlists.insert(found.playlists.end(), std::make_move_iterator(queue),
                           std::make_move_iterator(playlists.end()));
    playlists = std::move(found.playlists);
    library.totalSongs += found.totalSongs;
    library.playlistCount += found.playlistCount;
}

// After the start-up scan an empty library is not saved; after the user's own changes it is.
void KeepLibrary(const AppState& app, ScanReason reason, bool isCacheOld) {
    const std::string& cache = app.shell.libraryCachePath;
    if (cache.empty()) return;
    if (reason != ScanReason::kStart && app.settings.directoryPaths.empty()) return RemoveMusicLibraryCache(cache);
    if (reason != ScanReason::kStart || (isCacheOld && app.library.typedSongCount > 0)) {
        SaveMusicLibraryCache(cache, app.library);
    }
}

// At start-up only the favorites files beside new music are merged: otherwise every start would bring back favorites
// that the user has removed.
void MergeFavoritesFiles(AppState& app, const FoundMusic& music, ScanReason reason) {
    for (const std::string& path : music.favoritesFiles) {
        const bool isKnown = reason == ScanReason::kStart && HasMusicOf(app.library.playlists, FolderOf(path));
        if (!isKnown) LoadFavorites(path, app.favorites);
    }
}

void Replace(AppState& app, FoundMusic music, ScanReason reason) {
    const bool isCacheOld = !IsSameMusic(app.library.playlists, music.library.playlists, Compared::kCachedSongs);
    const KeptPlace place = KeepPlace(app);
    MergeFavoritesFiles(app, music, reason);
    KeepAlbumMarks(music.library.playlists, app.library.playlists);
    FillLibraryWith(app.library, std::move(music.library));
    MatchFavorites(app.favorites, app.library);
    Recount(app);
    FindPlaceAgain(app, place);
    KeepLibrary(app, reason, isCacheOld);
}

void TellSource(AppState& app, MusicSource source) {
    const bool isOfLastResort = source == MusicSource::kWorkingFolder;
    app.selection.mixedMusic = isOfLastResort ? app.library.typedSongCount > 0 : source != MusicSource::kNone;
    app.playback.demonstration = source == MusicSource::kFallback;
}

// False when the library already equals the result.
bool TakeOver(AppState& app, FoundMusic music, const MusicFolders& folders, ScanReason reason) {
    MusicLibrary& library = app.library;
    if (reason != ScanReason::kAskedFor) KeepMissingMusic(music.library, library.playlists, folders.paths);
    library.missingFolders = music.library.missingFolders;
    if (reason == ScanReason::kStart && IsSameMusic(library.playlists, music.library.playlists, Compared::kAllSongs)) {
        return false;
    }
    Replace(app, std::move(music), reason);
    TellSource(app, folders.source);
    return true;
}

// Where to look when a scan has found nothing to play; nowhere if the run's library is not the user's own.
MusicFolders LastResort(const Player& player, MusicSource source) {
    const AppState& app = player.state;
    const bool isTried = source == MusicSource::kWorkingFolder || source == MusicSource::kNone;
    if (isTried || app.library.typedSongCount > 0 || app.shell.libraryCachePath.empty()) return {};
    return {MusicSource::kWorkingFolder, {JoinPath(WorkingFolder(), "Music")}};
}

void Begin(Player& player, MusicFolders folders, ScanReason reason) {
    using Haste = BackgroundScan::Haste;
    const bool isWaitedFor = reason != ScanReason::kStart || player.state.library.typedSongCount == 0;
    if (isWaitedFor && !folders.paths.empty()) PrintLine("Updating music library from directories...");
    const Haste haste = isWaitedFor ? Haste::kWaitedFor : Haste::kBeside;
    player.scan.thread = std::make_unique<BackgroundScan>(folders.paths, haste);
    player.scan.folders = std::move(folders);
    player.scan.reason = reason;
}

// Plays the first song or reports why there is none. PollFolderScan may have started one already.
void PlayFirstSong(Player& player) {
    PlaybackState& playback = player.state.playback;
    if (CurrentHandle(playback) != 0) return;
    if (IsLookingForMusic(player)) {
        TellTrouble(playback, PlaybackTrouble::kLookingForMusic);
    } else {
        PlayNext(player.state, player.picker);
    }
}

}  // namespace

void StartFolderScan(Player& player, ScanReason reason) {
    player.scan = {};
    const std::vector<std::string>& configured = player.state.settings.directoryPaths;
    if (reason == ScanReason::kStart) {
        // Without folders, music left over in the cache stays.
        MusicFolders folders = MusicOfRun(player);
        if (!folders.paths.empty()) Begin(player, std::move(folders), reason);
        return;
    }
    Begin(player, {configured.empty() ? MusicSource::kNone : MusicSource::kConfigured, configured}, reason);
}

void BeginMusic(Player& player) {
    const bool hasMusic = player.state.library.typedSongCount > 0 || HasQueuedSong(player.state);
    if (hasMusic) PlayFirstSong(player);
    if (player.shutDown) return;
    StartFolderScan(player, ScanReason::kStart);
    if (hasMusic) return;
    const auto deadline = std::chrono::steady_clock::now() + kGraceAtStart;
    while (IsLookingForMusic(player) && std::chrono::steady_clock::now() < deadline) {
        player.scan.thread->WaitUntilOver(kGraceAtStart);
        PollFolderScan(player);
    }
    PlayFirstSong(player);
}

void ScanAtOnce(Player& player) {
    for (MusicFolders folders = MusicOfRun(player); !folders.paths.empty();
         folders = LastResort(player, folders.source)) {
        TakeOver(player.state, FindMusic(folders.paths), folders, ScanReason::kStart);
    }
}

std::optional<int32_t> SongsFoundByScan(const Player& player) {
    if (player.scan.thread == nullptr) return std::nullopt;
    return player.scan.thread->SongsFound();
}

bool IsLookingForMusic(const Player& player) {
    const AppState& app = player.state;
    const bool hasNone = app.library.typedSongCount == 0 && app.radio.stations.empty();
    const bool isQueuePlayed = HasQueuedSong(app) || CurrentHandle(app.playback) != 0;
    return player.scan.thread != nullptr && hasNone && !isQueuePlayed;
}

void PollFolderScan(Player& player) {
    // An error box may have been opened in the middle of work on the library.
    if (player.scan.thread == nullptr || !player.scan.thread->IsOver() || IsErrorBoxOpen()) return;
    const FolderScan scan = std::exchange(player.scan, {});
    std::optional<FoundMusic> found = scan.thread->Take();
    if (!found) return;
    const MusicLibrary& library = player.state.library;
    if (TakeOver(player.state, std::move(*found), scan.folders, scan.reason)) {
        PrintLine("Songs in the music folders: " + std::to_string(library.typedSongCount));
        const bool gameIsKnown = !player.state.folders.hullriderPath.empty();
        if (player.started && player.state.shell.companionExport && gameIsKnown) WriteCompanionExports(player.state);
    }
    MusicFolders other = scan.reason == ScanReason::kStart ? LastResort(player, scan.folders.source) : MusicFolders{};
    if (!other.paths.empty()) return Begin(player, std::move(other), scan.reason);
    // Music exists now: skip the retry delay.
    const bool isSilent = !player.stopped && CurrentHandle(player.state.playback) == 0;
    const bool isAwaited = player.state.playback.trouble == PlaybackTrouble::kLookingForMusic;
    if (isSilent && (isAwaited || library.typedSongCount > 0)) PlayNext(player.state, player.picker);
}

}  // namespace hullrider
