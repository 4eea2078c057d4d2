#include "app/shutdown.h"

#include "app/companion.h"
#include "app/favorites_files.h"
#include "app/library_loading.h"
#include "app/listening_files.h"
#include "library/cache.h"
#include "platform/console.h"
#include "playback/listening.h"
#include "playback/running_marker.h"
#include "playback/stream_slots.h"

namespace hullrider {

void SaveAndShutdown(Player& player) {
    // What was not loaded yet must not be saved: an error box of start-up lets messages in.
    if (!player.started || player.shutDown) return;
    player.shutDown = true;
    player.scan.reset();

    AppState& state = player.state;
    const ShellState& shell = state.shell;
    const bool gameIsKnown = !state.folders.hullriderPath.empty();
    EndListening(state);
    SaveStatisticsFile(state);
    if (player.releaseFront) player.releaseFront();
    if (state.audiobooks.bookCount == 0) PrintLine("No audiobooks to save. Skipping save operation.");
    SaveSettingsFile(state);
    SavePlayCountsFile(state);
    if (!shell.libraryCachePath.empty()) SaveMusicLibraryCache(shell.libraryCachePath, state.library);
    if (shell.companionExport && gameIsKnown) WriteCompanionExports(state);
    FreeAllStreams(state.playback, state.soundFonts);
    CloseControllers(player.controllers);
    SaveFavoriteFile(state);
    SaveSongHistoryFile(state);
    if (gameIsKnown) WriteRunningMarker(state.folders.hullriderPath, "no");
}

}  // namespace hullrider
