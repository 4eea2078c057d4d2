#include "app/shutdown.h"

#include "app/companion.h"
#include "app/favorites_files.h"
#include "app/library_loading.h"
#include "app/listening_files.h"
#include "app/station_files.h"
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

    AppState& app = player.state;
    const ShellState& shell = app.shell;
    const LoadedFiles& loaded = player.loaded;
    const bool gameIsKnown = !app.folders.hullriderPath.empty();
    EndListening(app);
    if (loaded.statistics) SaveStatisticsFile(app);
    if (player.releaseFront) player.releaseFront();
    if (app.audiobooks.bookCount == 0) PrintLine("No audiobooks to save. Skipping save operation.");
    if (loaded.settings) SaveSettingsFile(app);
    if (loaded.playCounts) SavePlayCountsFile(app);
    if (loaded.stations) SaveRecentStationsFile(app);
    if (loaded.library && !shell.libraryCachePath.empty()) SaveMusicLibraryCache(shell.libraryCachePath, app.library);
    if (shell.companionExport && gameIsKnown) WriteCompanionExports(app);
    FreeAllStreams(app.playback, app.soundFonts);
    CloseControllers(player.controllers);
    if (loaded.stations) SaveStationsFile(app);
    if (loaded.favorites) SaveFavoriteFile(app);
    if (loaded.songHistory) SaveSongHistoryFile(app);
    if (gameIsKnown) WriteRunningMarker(app.folders.hullriderPath, "no");
    EndWorkers();
}

}  // namespace hullrider
