#include "app/heartbeat.h"

#include "app/command_lines.h"
#include "app/folder_scan.h"
#include "platform/post.h"
#include "playback/play_next.h"
#include "playback/station_play.h"

namespace hullrider {

void TakePosted(const Player& player) {
    if (player.started && !player.shutDown) RunPosted();
}

void PollPlayer(Player& player) {
    TakePosted(player);
    if (!player.started || player.shutDown) return;
    if (!player.stopped && !IsLookingForMusic(player)) PollPlayback(player.state, player.picker);
    PollCommandFolder(player);
    PumpControllers(player.controllers);
    PollFolderScan(player);
    player.autosave.Poll(player.state, Autosave::Clock::now());
}

void PollSlowly(Player& player) {
    if (player.started && !player.shutDown) RefreshNowPlaying(player.state);
}

}  // namespace hullrider
