#include "app/commands.h"

#include <algorithm>
#include <array>
#include <utility>

#include "app/audio_start.h"
#include "app/companion.h"
#include "app/current_favorite.h"
#include "input/hotkeys.h"
#include "platform/console.h"
#include "playback/play_next.h"
#include "playback/selection_commands.h"
#include "playback/sound_fonts.h"
#include "playback/transport.h"
#include "playback/volume.h"

namespace hullrider {

namespace {

constexpr float kVolumeStep = 0.05F;

template <void (*operation)(AppState&, PickerState&)>
void Play(Player& player) {
    if (StartAudioAgain(player)) operation(player.state, player.picker);
}

template <bool (*operation)(AppState&, PickerState&)>
void Play(Player& player) {
    if (StartAudioAgain(player)) operation(player.state, player.picker);
}

template <int32_t step>
void PlayStationBeside(Player& player) {
    if (player.state.radio.stations.empty()) return PrintLine("There are no internet stations.");
    if (StartAudioAgain(player)) StepStation(player.state, player.picker, step);
}

template <int32_t step>
void ChangeFavorite(Player& player) {
    const std::optional<int32_t> count = CurrentFavoriteCount(player.state);
    if (count) SetCurrentFavoriteCount(player.state, int64_t{*count} + step);
}

template <int steps>
void ChangeVolume(Player& player) {
    SetVolumeLevel(player.state, std::clamp(UserVolume(player.state) + steps * kVolumeStep, 0.0F, 1.0F));
}

void PlayOrPause(Player& player) {
    if (player.stopped) {
        StartMusic(player);
    } else {
        TogglePause(player.state);
    }
}

void StopOrStart(Player& player) {
    if (player.stopped) {
        StartMusic(player);
    } else {
        StopMusic(player);
    }
}

void GoHome(Player& player) {
    ReturnToLibrary(player.state.selection);
    Play<PlayNext>(player);
}

void Exit(Player& player) {
    if (player.endProgram) player.endProgram();
}

void ShowPlayer(Player& player) {
    if (player.bringToFront) player.bringToFront();
}

void Toggle(int32_t& flag) {
    flag = flag == 0 ? 1 : 0;
}

constexpr std::array kCommands{
    Command{kFoldersCommand, "Select Local Folders"},
    Command{kStationsCommand, "Select Internet URL"},
    Command{kExitCommand, "Exit", Exit},
    Command{kPlayPauseCommand, "Play/Pause", PlayOrPause},
    Command{kStartCommand, "Start", StartMusic},
    Command{kStopCommand, "Stop", StopMusic},
    Command{kNextSongCommand, "Next Song", Play<PlayNext>},
    Command{kPreviousSongCommand, "Previous Song", Play<PlayPreviousSong>},
    Command{kNextSoundFontCommand, "Next Sound Font", [](Player& player) { NextSoundFont(player.state); }},
    Command{kPreviousSoundFontCommand, "Previous Sound Font", [](Player& player) { PreviousSoundFont(player.state); }},
    Command{kNextPlaylistCommand, "Next Play List", Play<NextPlaylist>},
    Command{kPreviousPlaylistCommand, "Previous Play List", Play<PreviousPlaylist>},
    Command{kRadioOptionsCommand, "Radio"},
    Command{kFavoriteOptionsCommand, "Favorites"},
    Command{kHotkeyOptionsCommand, "Hotkeys \\ Game Controllers"},
    Command{kVisualOptionsCommand, "Display"},
    Command{kEqualizerCommand, "Equalizer "},
    Command{kCustomStationCommand, "Custom Radio Station"},
    Command{kSongInfoCommand, "View"},
    Command{kPlayGameCommand, "Play Hullrider ", [](Player& player) { LaunchCompanionGame(player.state); }},
    Command{kMergeFavoritesCommand, "Merge Favorites", [](Player& player) { MergeCompanionFavorites(player.state); }},
    Command{kSyncLibraryCommand, "Sync Music Library", [](Player& player) { SyncCompanionLibrary(player.state); }},
    Command{kAboutCommand, "About Hullrider Radio"},
    Command{kUpdateCommand, "Check For Updates"},

    Command{kStopStartCommand, "", StopOrStart},
    Command{kVolumeToggleCommand, "", [](Player& player) { ToggleHighLowVolume(player.state); }},
    Command{kMuteCommand, "", [](Player& player) { ToggleMute(player.state); }},
    Command{kVolumeUpCommand, "", ChangeVolume<1>},
    Command{kVolumeDownCommand, "", ChangeVolume<-1>},
    Command{kFavoriteUpCommand, "", ChangeFavorite<1>},
    Command{kFavoriteDownCommand, "", ChangeFavorite<-1>},
    Command{kMusicHomeCommand, "", GoHome},
    Command{kNextStationCommand, "", PlayStationBeside<1>},
    Command{kPreviousStationCommand, "", PlayStationBeside<-1>},
    Command{kShuffleCommand, "", [](Player& player) { ToggleShuffle(player.state); }},
    Command{kFavoritesFilterCommand, "", [](Player& player) { CycleFavoritesFilter(player.state.selection); }},
    Command{kShowPlayerCommand, "", ShowPlayer},
    Command{kButtonRumbleCommand, "", [](Player& player) { Toggle(player.state.settings.useRumble); }},
    Command{kToggleRumbleCommand, "", [](Player& player) { Toggle(player.state.settings.useRumbleToggle); }},
};

constexpr std::array<int32_t, 3> kFile{kFoldersCommand, kStationsCommand, kExitCommand};
constexpr std::array<int32_t, 9> kPlayback{kPlayPauseCommand,         kStartCommand,        kStopCommand,
                                           kNextSongCommand,          kPreviousSongCommand, kNextSoundFontCommand,
                                           kPreviousSoundFontCommand, kNextPlaylistCommand, kPreviousPlaylistCommand};
constexpr std::array<int32_t, 6> kSettings{kRadioOptionsCommand,  kFavoriteOptionsCommand, kHotkeyOptionsCommand,
                                           kVisualOptionsCommand, kEqualizerCommand,       kCustomStationCommand};
constexpr std::array<int32_t, 1> kSongInfo{kSongInfoCommand};
constexpr std::array<int32_t, 3> kGame{kPlayGameCommand, kMergeFavoritesCommand, kSyncLibraryCommand};
constexpr std::array<int32_t, 1> kAbout{kAboutCommand};
constexpr std::array<int32_t, 1> kUpdate{kUpdateCommand};

constexpr std::array<MenuPopup, 7> kMenu{{
    {"&File", kFile},
    {"&Playback", kPlayback},
    {"&Settings", kSettings},
    {"&Song Info", kSongInfo},
    {"&Hullrider", kGame},
    {"&About", kAbout},
    {"&Update", kUpdate},
}};

constexpr std::array<std::pair<int32_t, int32_t>, 22> kHotkeys{{
    {kNextSongKey, kNextSongCommand},
    {kPreviousSongKey, kPreviousSongCommand},
    {kPlayPauseKey, kPlayPauseCommand},
    {kStopStartKey, kStopStartCommand},
    {kVolumeToggleKey, kVolumeToggleCommand},
    {kNextSoundFontKey, kNextSoundFontCommand},
    {kPreviousSoundFontKey, kPreviousSoundFontCommand},
    {kFavoriteUpKey, kFavoriteUpCommand},
    {kFavoriteDownKey, kFavoriteDownCommand},
    {kQuitKey, kExitCommand},
    {kVolumeUpKey, kVolumeUpCommand},
    {kVolumeDownKey, kVolumeDownCommand},
    {kMusicHomeKey, kMusicHomeCommand},
    {kNextStationKey, kNextStationCommand},
    {kPreviousStationKey, kPreviousStationCommand},
    {kButtonRumbleKey, kButtonRumbleCommand},
    {kToggleRumbleKey, kToggleRumbleCommand},
    {kShowPlayerKey, kShowPlayerCommand},
    {kMediaNextKey, kNextSongCommand},
    {kMediaPreviousKey, kPreviousSongCommand},
    {kMediaStopKey, kStopCommand},
    {kMediaPlayPauseKey, kPlayPauseCommand},
}};

}  // namespace

std::span<const Command> Commands() {
    return kCommands;
}

std::span<const MenuPopup> MainMenu() {
    return kMenu;
}

const Command* FindCommand(int32_t id) {
    const auto* const found =
        std::find_if(kCommands.begin(), kCommands.end(), [id](const Command& command) { return command.id == id; });
    return found == kCommands.end() ? nullptr : found;
}

bool RunCommand(Player& player, int32_t id) {
    const Command* const command = FindCommand(id);
    if (command == nullptr || !player.started || player.shutDown) return false;
    if (command->run != nullptr) {
        command->run(player);
        return true;
    }
    if (!player.openWindow) return false;
    player.openWindow(id);
    return true;
}

int32_t CommandOfHotkey(int32_t action) {
    const auto* const found =
        std::find_if(kHotkeys.begin(), kHotkeys.end(), [action](const auto& hotkey) { return hotkey.first == action; });
    return found == kHotkeys.end() ? 0 : found->second;
}

}  // namespace hullrider
