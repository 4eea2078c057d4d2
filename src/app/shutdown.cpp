#include "app/shutdown.h"

#include "app/companion.h"
#include "app/favorites_files.h"
#include "app/library_loading.h"
#include "app/listening_files.h"
#include "library/cache.h"
#include "platform/console.h"
#include "platform/worker.h"
#include "playback/listening.h"
#include "playback/running_marker.h"
#include "playback/stream_slots.h"

namespace hullrider {

void SaveAndShutdown(Player& player) {
    if (player.shutDown) return;
    player.shutDown = true;
    player.scan = {};
    player.autosave.Finish();

    AppState& state = player.state;
    const ShellState& shell = state.shell;
    const LoadedFiles& loaded = player.loaded;
    const bool gameIsKnown = !state.folders.hullriderPath.empty();
    EndListening(state);
    if (loaded.statistics) SaveStatisticsFile(state);
    if (player.releaseFront) player.releaseFront();
    if (state.audiobooks.bookCount == 0) PrintLine("No audiobooks to save. Skipping save operation.");
    if (loaded.settings) SaveSettingsFile(state);
    if (loaded.playCounts) SavePlayCountsFile(state);
    if (loaded.library && !shell.libraryCachePath.empty()) SaveMusicLibraryCache(shell.libraryCachePath, state.library);
    if (shell.companionExport && gameIsKnown) WriteCompanionExports(state);
    FreeAllStreams(state.playback, state.soundFonts);
    CloseControllers(player.controllers);
    if (loaded.favorites) SaveFavoriteFile(state);
    if (loaded.songHistory) SaveSongHistoryFile(state);
    if (gameIsKnown) WriteRunningMarker(state.folders.hullriderPath, "no");
    EndWorkers();
}

}  // namespace hullrider
