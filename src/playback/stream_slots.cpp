#include "playback/stream_slots.h"

#include "audio/bass.h"
#include "playback/fade_out.h"
#include "playback/next_up.h"

namespace hullrider {

StreamSlot CurrentHandle(const PlaybackState& playback) {
    if (playback.currentType == kTracker) {
        return playback.nextSlotActive ? playback.trackerStreamNext : playback.trackerStream;
    }
    return playback.nextSlotActive ? playback.musicStreamNext : playback.musicStream;
}

void PutIntoIdleSlot(PlaybackState& playback, int32_t type, StreamSlot handle) {
    const bool intoMain = playback.nextSlotActive;
    StreamSlot& slot = type == kTracker ? (intoMain ? playback.trackerStream : playback.trackerStreamNext)
                                        : (intoMain ? playback.musicStream : playback.musicStreamNext);
    FreeStream(slot);
    slot = handle;
}

uint32_t IdleSlotFont(const PlaybackState& playback, const SoundFontState& fonts) {
    return playback.nextSlotActive ? fonts.midiStreamFont : fonts.midiStreamNextFont;
}

void ReplaceIdleSlotFont(const PlaybackState& playback, SoundFontState& fonts, uint32_t font, const std::string& file) {
    uint32_t& slotFont = playback.nextSlotActive ? fonts.midiStreamFont : fonts.midiStreamNextFont;
    if (slotFont != 0) BASS_MIDI_FontFree(slotFont);
    slotFont = font;
    (playback.nextSlotActive ? fonts.midiStreamFontFile : fonts.midiStreamNextFontFile) = file;
}

const std::string& CurrentSlotFont(const PlaybackState& playback, const SoundFontState& fonts) {
    return playback.nextSlotActive ? fonts.midiStreamNextFontFile : fonts.midiStreamFontFile;
}

void StopAllStreams(const PlaybackState& playback) {
    const std::lock_guard lock(StreamMutex());
    for (const StreamSlot slot :
         {playback.musicStream, playback.musicStreamNext, playback.trackerStream, playback.trackerStreamNext}) {
        BASS_ChannelStop(slot);
    }
}

void CutStreamsBut(PlaybackState& playback, StreamSlot keep) {
    for (StreamSlot* slot :
         {&playback.musicStream, &playback.musicStreamNext, &playback.trackerStream, &playback.trackerStreamNext}) {
        if (*slot != keep) FreeStream(*slot);
    }
}

void FreeAllStreams(PlaybackState& playback, SoundFontState& fonts) {
    DropNext(playback);
    playback.fade->closed = true;
    playback.volume->closed = true;
    playback.volume->currentHandle = 0;
    CutStreamsBut(playback, 0);
    BASS_MIDI_FontFree(fonts.midiStreamFont);
    BASS_MIDI_FontFree(fonts.midiStreamNextFont);
    fonts.midiStreamFont = fonts.midiStreamNextFont = 0;
    BASS_Free();
    playback.fade = std::make_shared<FadeState>();
    const auto volume = std::make_shared<VolumeState>();
    volume->targetRms = playback.volume->targetRms.load();
    volume->realTimeVolume = playback.volume->realTimeVolume.load();
    playback.volume = volume;
    playback.fadingStream = 0;
}

}  // namespace hullrider
