#include "app/audio_start.h"

#include <stdexcept>

#include "audio/bass.h"
#include "platform/console.h"
#include "platform/message_box.h"
#include "playback/listening.h"
#include "playback/play_next.h"
#include "playback/sound_fonts.h"
#include "playback/stream_slots.h"

namespace hullrider {

namespace {

constexpr uint32_t kMixingRateHz = 44100;

bool IsRecording(const Player& player) {
    return player.options.output.kind == OutputKind::kWav;
}

}  // namespace

void InitAudio(Player& player) {
    const OutputChoice& output = player.options.output;
    ChooseOutput(output);
    if (!BASS_Init(-1, kMixingRateHz, 0, player.state.shell.mainWindow, nullptr)) {
        if (IsRecording(player)) throw std::runtime_error("Cannot record to " + output.wavPath);
        ShowErrorBox("Failed to initialize BASS library!");
        if (player.shutDown) return;
        PrintErrorLine("No sound device could be opened: playing silently.");
        BASS_Init(0, kMixingRateHz, 0, player.state.shell.mainWindow, nullptr);
        return;
    }
    BASS_PluginLoad("bassmidi.dll", 0);
    BASS_PluginLoad("bass_aac.dll", 0);
    if (BASS_PluginLoad("BASSFLAC.dll", 0) == 0) PrintLine("Failed to load BASSFLAC.dll");
}

void StopMusic(Player& player) {
    if (player.stopped) return;
    player.stopped = true;
    EndListening(player.state);
    StopAllStreams(player.state.playback);
    if (IsRecording(player)) {
        CutStreamsBut(player.state.playback, 0);
    } else {
        FreeAllStreams(player.state.playback, player.state.soundFonts);
    }
}

bool StartAudioAgain(Player& player) {
    if (!player.stopped) return true;
    if (player.startsAudio) return false;
    if (!IsRecording(player)) {
        // Timers and hotkeys keep running while InitAudio shows its error box: they must not play anything yet.
        player.startsAudio = true;
        InitAudio(player);
        player.startsAudio = false;
    }
    if (player.shutDown) return false;
    player.stopped = false;
    if (IsRecording(player)) return true;
    SoundFontState& fonts = player.state.soundFonts;
    if (!fonts.soundFontFiles.empty()) SelectSoundFont(fonts, player.state.playback, fonts.currentSoundFont);
    return !player.shutDown;
}

void StartMusic(Player& player) {
    StopMusic(player);
    if (StartAudioAgain(player)) PlayNext(player.state, player.picker);
}

}  // namespace hullrider
