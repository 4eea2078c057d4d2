#include "playback/stream_slots.h"

#include <string>

#include "audio/bass.h"
#include "platform/console.h"
#include "playback/fade_out.h"

namespace hullrider {

namespace {

constexpr int kAttempts = 3;

bool IsValidChoice(const MusicLibrary& library, const SongChoice& choice) {
    if (choice.playlist < 0 || static_cast<size_t>(choice.playlist) >= library.playlists.size()) {
        PrintLine("Error: Invalid playlist index.");
        return false;
    }
    const Playlist& playlist = library.playlists[choice.playlist];
    if (choice.song < 0 || static_cast<size_t>(choice.song) >= playlist.songs.size()) {
        PrintLine("Error: Invalid song index.");
        return false;
    }
    return true;
}

void PrintAudioError(const std::string& text) {
    PrintErrorLine(text + " Error code: " + std::to_string(BASS_ErrorGetCode()));
}

void AttachFont(HSTREAM stream, HSOUNDFONT font) {
    if (font == 0) return;
    const BASS_MIDI_FONT entry{font, -1, 0};
    BASS_MIDI_StreamSetFonts(stream, &entry, 1);
}

HSTREAM CreateFileStream(const std::string& path) {
    for (int attempt = 1; attempt <= kAttempts; ++attempt) {
        const HSTREAM stream = BASS_StreamCreateFile(false, path.c_str(), 0, 0, BASS_SAMPLE_FLOAT | BASS_SAMPLE_LOOP);
        if (stream != 0) return stream;
        PrintAudioError("Error creating stream.");
    }
    PrintErrorLine("Failed to create stream after " + std::to_string(kAttempts) +
                   " attempts. Attempting to play next song.");
    return 0;
}

}  // namespace

StreamSlot CurrentHandle(const PlaybackState& playback) {
    if (playback.currentType == kTracker) {
        return playback.nextSlotActive ? playback.trackerStreamNext : playback.trackerStream;
    }
    return playback.nextSlotActive ? playback.musicStreamNext : playback.musicStream;
}

StreamSlot LoadMusicStream(AppState& app, const SongChoice& choice) {
    PlaybackState& playback = app.playback;
    if (playback.currentType == kInternetRadio || !IsValidChoice(app.library, choice)) return 0;
    StreamSlot& slot = playback.nextSlotActive ? playback.musicStream : playback.musicStreamNext;
    FreeStream(slot);
    PrintLine(playback.nextSlotActive ? "Loading song/radio into main musicStream."
                                      : "Loading next song/radio into musicStreamNext.");
    const Song& song = app.library.playlists[choice.playlist].songs[choice.song];
    slot = CreateFileStream(song.songPath);
    if (slot == 0) return 0;
    BASS_ChannelSetAttribute(slot, BASS_ATTRIB_VOL, 0.0F);
    if (song.musicType == kMidi) {
        AttachFont(slot, playback.nextSlotActive ? app.soundFonts.midiStreamFont : app.soundFonts.midiStreamNextFont);
    }
    return slot;
}

StreamSlot LoadTrackerStream(PlaybackState& playback, const MusicLibrary& library, const SongChoice& choice) {
    if (!IsValidChoice(library, choice)) return 0;
    const bool intoMain = playback.nextSlotActive;
    StreamSlot& slot = intoMain ? playback.trackerStream : playback.trackerStreamNext;
    FreeStream(slot);
    PrintLine(intoMain ? "Loading song into main trackerStream as HMUSIC."
                       : "Loading next song into trackerStreamNext as HMUSIC.");
    const Song& song = library.playlists[choice.playlist].songs[choice.song];
    slot = BASS_MusicLoad(false, song.songPath.c_str(), 0, 0, BASS_SAMPLE_FLOAT | BASS_SAMPLE_LOOP, 0);
    if (slot == 0) {
        PrintAudioError(intoMain ? "Error creating trackerStream (HMUSIC)."
                                 : "Error creating trackerStreamNext (HMUSIC).");
        return 0;
    }
    BASS_ChannelSetAttribute(slot, BASS_ATTRIB_VOL, 0.0F);
    return slot;
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
    playback.fade->closed = true;
    playback.volume->closed = true;
    playback.volume->currentHandle = 0;
    CutStreamsBut(playback, 0);
    BASS_MIDI_FontFree(fonts.midiStreamFont);
    BASS_MIDI_FontFree(fonts.midiStreamNextFont);
    fonts.midiStreamFont = fonts.midiStreamNextFont = 0;
    BASS_Free();
    const float targetRms = playback.volume->targetRms;
    playback.fade = std::make_shared<FadeState>();
    playback.volume = std::make_shared<VolumeState>();
    playback.volume->targetRms = targetRms;
}

}  // namespace hullrider
