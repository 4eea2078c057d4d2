// SoundFonts.
#include <span>

#include "audio/channel_call.h"
#include "audio/fonts.h"

using namespace hullrider;

HSOUNDFONT BASS_MIDI_FontInit(const char* file, uint32_t) {
    const std::shared_ptr<Engine> engine = CurrentEngine();
    if (engine == nullptr) return 0;
    if (file == nullptr) return Fail(BASS_ERROR_ILLPARAM);
    int error = BASS_OK;
    std::shared_ptr<const Font> font = LoadFont(file, error);
    if (font == nullptr) return Fail(error);
    Succeed();
    return engine->Fonts().Add(std::move(font));
}

bool BASS_MIDI_FontFree(HSOUNDFONT font) {
    const std::shared_ptr<Engine> engine = CurrentEngine();
    if (engine == nullptr) return false;
    return engine->Fonts().Take(font) != nullptr ? Succeed() : Fail(BASS_ERROR_HANDLE);
}

bool BASS_MIDI_StreamSetFonts(HSTREAM handle, const BASS_MIDI_FONT* fonts, uint32_t count) {
    const std::shared_ptr<Engine> engine = CurrentEngine();
    if (engine == nullptr) return false;
    constexpr uint32_t kMostFonts = 64;
    if (fonts == nullptr || count == 0 || count > kMostFonts) return Fail(BASS_ERROR_ILLPARAM);
    FontList list;
    for (const BASS_MIDI_FONT& entry : std::span(fonts, count)) {
        std::shared_ptr<const Font> font = engine->Fonts().Find(entry.font);
        if (font == nullptr) return Fail(BASS_ERROR_HANDLE);
        if (entry.preset != -1) return Fail(BASS_ERROR_ILLPARAM);
        list.push_back({std::move(font), entry.bank});
    }
    if (handle == 0) {
        engine->SetDefaultFonts(list);
        return Succeed();
    }
    const ChannelCall call(handle);
    if (!call) return false;
    if (!call.channel->SetFonts(list, engine->LatencyFrames())) return Fail(BASS_ERROR_NOTAVAIL);
    call.engine->Decoders().Attend(call.channel);
    return true;
}
