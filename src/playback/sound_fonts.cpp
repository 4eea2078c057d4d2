#include "playback/sound_fonts.h"

#include <algorithm>
#include <filesystem>
#include <stdexcept>

#include "audio/bass.h"
#include "library/music_type.h"
#include "platform/console.h"
#include "platform/message_box.h"
#include "platform/paths.h"
#include "playback/stream_slots.h"

namespace hullrider {

namespace {

void ReplaceFont(uint32_t& slotFont, HSOUNDFONT font, StreamSlot stream) {
    const BASS_MIDI_FONT entry{font, -1, 0};
    BASS_MIDI_StreamSetFonts(stream, &entry, 1);  // fails harmlessly for an empty slot or a stream that is not MIDI
    if (slotFont != 0) BASS_MIDI_FontFree(slotFont);
    slotFont = font;
}

void StepSoundFont(AppState& app, int32_t step) {
    const auto count = static_cast<int32_t>(app.soundFonts.soundFontFiles.size());
    if (count == 0) {
        ShowErrorBox("No soundfont files found.");
        return;
    }
    const int32_t index = (app.soundFonts.currentSoundFont + step + count) % count;
    SelectSoundFont(app.soundFonts, app.playback, index);
}

}  // namespace

std::vector<std::string> FindSoundFonts(const std::string& folder) {
    std::vector<std::string> files;
    if (folder.empty()) return files;
    std::error_code error;
    std::filesystem::directory_iterator entry(PathFromUtf8(folder), error);
    for (const std::filesystem::directory_iterator end; !error && entry != end; entry.increment(error)) {
        std::error_code ignored;
        if (!entry->is_regular_file(ignored)) continue;
        try {
            std::string path = Utf8FromPath(entry->path());
            if (ToLower(path).ends_with(".sf2")) files.push_back(std::move(path));
        } catch (const std::exception&) {
            continue;  // a name that is not valid text could not be saved in the settings
        }
    }
    std::sort(files.begin(), files.end());
    return files;
}

bool SelectSoundFont(SoundFontState& fonts, const PlaybackState& playback, int32_t index) {
    if (index < 0 || static_cast<size_t>(index) >= fonts.soundFontFiles.size()) {
        ShowErrorBox("Invalid sound font index.");
        return false;
    }
    const std::string& file = fonts.soundFontFiles[index];
    const HSOUNDFONT font = BASS_MIDI_FontInit(file.c_str(), 0);
    const HSOUNDFONT fontNext = font == 0 ? 0 : BASS_MIDI_FontInit(file.c_str(), 0);
    if (font == 0 && BASS_ErrorGetCode() == BASS_ERROR_INIT) {
        PrintLine("SoundFont for the next start: " + std::string(FileStem(file)));
        fonts.currentSoundFont = index;
        return true;
    }
    if (fontNext == 0) {
        BASS_MIDI_FontFree(font);
        ShowErrorBox("Failed to load the selected soundfont.");
        return false;
    }
    ReplaceFont(fonts.midiStreamFont, font, playback.musicStream);
    ReplaceFont(fonts.midiStreamNextFont, fontNext, playback.musicStreamNext);
    fonts.currentSoundFont = index;
    fonts.midiStreamFontFile = fonts.midiStreamNextFontFile = file;
    return true;
}

void NextSoundFont(AppState& app) {
    StepSoundFont(app, 1);
}

void PreviousSoundFont(AppState& app) {
    StepSoundFont(app, -1);
}

int32_t DrawSoundFont(const AppState& app, Random& random) {
    const SoundFontState& fonts = app.soundFonts;
    const int32_t songs = app.settings.songsBeforeSoundfontChange;
    if (fonts.soundFontFiles.empty() || songs < 1 || fonts.songsSinceSoundfontChange + 1 < songs) return -1;
    return static_cast<int32_t>(random.Index(fonts.soundFontFiles.size()));
}

void ApplySoundFontRule(AppState& app, int32_t drawn, const std::string& file, uint32_t font) {
    SoundFontState& fonts = app.soundFonts;
    fonts.songsSinceSoundfontChange = drawn < 0 ? fonts.songsSinceSoundfontChange + 1 : 0;
    if (font == 0) return;
    ReplaceIdleSlotFont(app.playback, fonts, font, file);
    const auto index = static_cast<size_t>(drawn);
    if (index < fonts.soundFontFiles.size() && fonts.soundFontFiles[index] == file) fonts.currentSoundFont = drawn;
}

}  // namespace hullrider
