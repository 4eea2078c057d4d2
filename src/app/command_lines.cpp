#include "app/command_lines.h"

#include <algorithm>
#include <cstdio>
#include <string>

#include "app/audio_start.h"
#include "app/commands.h"
#include "app/companion.h"
#include "app/current_favorite.h"
#include "app/library_loading.h"
#include "library/song_counts.h"
#include "platform/console.h"
#include "platform/files.h"
#include "platform/message_box.h"
#include "playback/command_file.h"
#include "playback/seek.h"
#include "playback/transport.h"
#include "playback/volume.h"

namespace hullrider {

namespace {

std::string NumberText(double number) {
    char text[32];
    std::snprintf(text, sizeof text, "%g", number);
    return text;
}

void ChangePosition(Player& player, double seconds) {
    PrintLine("Change position to " + NumberText(seconds) + " seconds...");
    SeekTo(player.state.playback, seconds);
}

void ChangeVolume(Player& player, double volume) {
    PrintLine("Change volume to " + NumberText(volume) + "...");
    SetVolumeLevel(player.state, static_cast<float>(std::clamp(volume, -1.0, 2.0)));  // outside 0 to 1 is refused
}

void ChangeWeight(Player& player, int32_t& weight, int32_t value) {
    weight = value;
    RecountSongs(player.state);
}

void PlaySongAt(Player& player, int32_t playlist, int32_t song) {
    if (FindSong(player.state.library, {playlist, song}) == nullptr) return;
    if (StartAudioAgain(player)) PlaySong(player.state, player.picker, playlist, song);
}

// The command that a keyword without arguments runs; 0 for other keywords.
int32_t CommandOfWord(CommandWord word) {
    switch (word) {
        case CommandWord::kNextSong:
            return kNextSongCommand;
        case CommandWord::kFavoritesOnly:
            return kFavoritesFilterCommand;
        case CommandWord::kPreviousSong:
            return kPreviousSongCommand;
        case CommandWord::kShuffle:
            return kShuffleCommand;
        case CommandWord::kNextPlaylist:
            return kNextPlaylistCommand;
        case CommandWord::kNextSoundFont:
            return kNextSoundFontCommand;
        case CommandWord::kNextStation:
            return kNextStationCommand;
        case CommandWord::kPreviousStation:
            return kPreviousStationCommand;
        default:
            return 0;
    }
}

void ChangeSetting(Player& player, const CommandLine& line) {
    Settings& settings = player.state.settings;
    switch (line.word) {
        case CommandWord::kSongPlayDurationMax:
            settings.songPlayDurationMax = line.first;
            return;
        case CommandWord::kSongPlayDurationMin:
            settings.songPlayDurationMin = std::max(line.first, 0);
            return;
        case CommandWord::kFadeDurationMs:
            settings.FADE_DURATION_MS = std::max(line.first, 0);
            return;
        case CommandWord::kRawMidi:
            return ChangeWeight(player, settings.rawMIDI, line.first);
        case CommandWord::kRawTracker:
            return ChangeWeight(player, settings.rawTracker, line.first);
        case CommandWord::kRawMp3:
            return ChangeWeight(player, settings.rawMP3, line.first);
        case CommandWord::kRawFav:
            return ChangeWeight(player, settings.rawFav, line.first);
        default:
            return;
    }
}

void Run(Player& player, const CommandLine& line) {
    if (line.word == CommandWord::kNextSong) PrintLine("Next Song...");
    if (const int32_t command = CommandOfWord(line.word); command != 0) {
        RunCommand(player, command);
        return;
    }
    switch (line.word) {
        case CommandWord::kPosition:
            return ChangePosition(player, line.number);
        case CommandWord::kVolume:
            return ChangeVolume(player, line.number);
        case CommandWord::kFavoriteCount:
            return SetCurrentFavoriteCount(player.state, line.first);
        case CommandWord::kPlaySong:
            return PlaySongAt(player, line.first, line.second);
        default:
            return ChangeSetting(player, line);
    }
}

}  // namespace

void RunCommandLine(Player& player, std::string_view line) {
    if (!player.started || player.shutDown) return;
    if (const std::optional<CommandLine> parsed = ParseCommandLine(line)) Run(player, *parsed);
}

void RunConsoleLine(Player& player, std::string_view line) {
    if (line == "quit") {
        RunCommand(player, kExitCommand);
        return;
    }
    const std::span<const Command> commands = Commands();
    const auto named =
        std::find_if(commands.begin(), commands.end(), [line](const Command& command) { return command.text == line; });
    if (!line.empty() && named != commands.end()) {
        RunCommand(player, named->id);
    } else {
        RunCommandLine(player, line);
    }
}

void PollCommandFolder(Player& player) {
    AppState& app = player.state;
    if (!app.shell.startupFinished || app.library.playlists.empty() || IsModalOperationOpen()) return;
    for (const std::string& line : player.commandFile.TakeLines(app.folders.hullriderPath)) {
        RunCommandLine(player, line);
    }
    const std::string songInfo = SongInfoText(app);
    if (songInfo == player.songInfo) return;
    const std::string& folder = app.folders.hullriderPath;
    // If the game has the file open, the next poll tries again.
    if (WriteWholeFile((folder.empty() ? "." : folder) + "/songInfo.txt", songInfo)) player.songInfo = songInfo;
}

}  // namespace hullrider
