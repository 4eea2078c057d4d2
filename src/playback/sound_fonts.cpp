#include "playback/sound_fonts.h"

#include <algorithm>
#include <filesystem>
#include <stdexcept>

#include "audio/bass.h"
#include "library/music_type.h"
#include "platform/console.h"
#include "platform/message_box.h"
#include "platform/paths.h"

namespace hullrider {

namespace {

void ReplaceFont(uint32_t& slotFont, HSOUNDFONT font, StreamSlot stream) {
    const BASS_MIDI_FONT entry{font, -1, 0};
    BASS_MIDI_StreamSetFonts(stream, &entry, 1);  // refused by an empty slot and by a stream that is not MIDI
    if (slotFont != 0) BASS_MIDI_FontFree(slotFont);
    slotFont = font;
}

void StepSoundFont(AppState& app, int32_t step) {
    const auto count = static_cast<int32_t>(app.soundFonts.soundFontFiles.size());
    if (count == 0) {
        ShowErrorBox("No soundfont files found.");
        return;
    }
    SelectSoundFont(app.soundFonts, app.playback, (app.soundFonts.currentSoundFont + step + count) % count);
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
            continue;  // a name that is not text cannot be kept in the settings either
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
    if (fontNext == 0) {
        BASS_MIDI_FontFree(font);
        ShowErrorBox("Failed to load the selected soundfont.");
        return false;
    }
    ReplaceFont(fonts.midiStreamFont, font, playback.musicStream);
    ReplaceFont(fonts.midiStreamNextFont, fontNext, playback.musicStreamNext);
    fonts.currentSoundFont = index;
    return true;
}

void NextSoundFont(AppState& app) {
    StepSoundFont(app, 1);
}

void PreviousSoundFont(AppState& app) {
    StepSoundFont(app, -1);
}

void ApplySoundFontRule(AppState& app, Random& random) {
    SoundFontState& fonts = app.soundFonts;
    const int32_t songs = app.settings.songsBeforeSoundfontChange;
    if (fonts.soundFontFiles.empty() || songs < 1 || fonts.songsSinceSoundfontChange < songs) return;
    fonts.songsSinceSoundfontChange = 0;
    fonts.currentSoundFont = static_cast<int32_t>(random.Index(fonts.soundFontFiles.size()));
    const std::string& file = fonts.soundFontFiles[static_cast<size_t>(fonts.currentSoundFont)];
    const HSOUNDFONT font = BASS_MIDI_FontInit(file.c_str(), 0);
    if (font == 0) {
        PrintErrorLine("Error loading sound font from " + file + ": " + std::to_string(BASS_ErrorGetCode()));
        return;
    }
    const bool intoMain = app.playback.nextSlotActive;
    const BASS_MIDI_FONT entry{font, -1, 0};
    if (!BASS_MIDI_StreamSetFonts(intoMain ? app.playback.musicStream : app.playback.musicStreamNext, &entry, 1)) {
        PrintErrorLine(std::string("Error setting sound font for ") + (intoMain ? "midiStream" : "midiStreamNext") +
                       ": " + std::to_string(BASS_ErrorGetCode()));
        BASS_MIDI_FontFree(font);
        return;
    }
    uint32_t& slotFont = intoMain ? fonts.midiStreamFont : fonts.midiStreamNextFont;
    if (slotFont != 0) BASS_MIDI_FontFree(slotFont);
    slotFont = font;
}

}  // namespace hullrider
