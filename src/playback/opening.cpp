#include "playback/opening.h"

#include <algorithm>
#include <utility>

#include "audio/bass.h"
#include "platform/console.h"
#include "platform/folder.h"
#include "platform/paths.h"
#include "platform/post.h"
#include "playback/song_title.h"
#include "playback/sounding_start.h"
#include "playback/stream_time.h"
#include "state/music_library.h"

namespace hullrider {

namespace {

constexpr int kAttempts = 3;
constexpr uint32_t kStreamFlags = BASS_SAMPLE_FLOAT | BASS_SAMPLE_LOOP;

std::atomic<int> underWay{0};

// Counts a worker while it exists, and wakes the UI thread when it ends in any way.
struct UnderWayCount {
    UnderWayCount() { ++underWay; }
    ~UnderWayCount() {
        --underWay;
        Post([] {});  // the poll that follows takes the item
    }
    UnderWayCount(const UnderWayCount&) = delete;
    UnderWayCount& operator=(const UnderWayCount&) = delete;
};

void PrintAudioError(const std::string& text) {
    PrintErrorLine(text + " Error code: " + std::to_string(BASS_ErrorGetCode()));
}

HSTREAM CreateFileStream(const std::string& path, bool intoMain) {
    PrintLine(intoMain ? "Loading song/radio into main musicStream." : "Loading next song/radio into musicStreamNext.");
    for (int attempt = 1; attempt <= kAttempts; ++attempt) {
        const HSTREAM stream = BASS_StreamCreateFile(false, path.c_str(), 0, 0, kStreamFlags);
        if (stream != 0) return stream;
        PrintAudioError("Error creating stream.");
    }
    PrintErrorLine("Failed to create stream after " + std::to_string(kAttempts) +
                   " attempts. Attempting to play next song.");
    return 0;
}

HMUSIC CreateModule(const std::string& path, bool intoMain) {
    PrintLine(intoMain ? "Loading song into main trackerStream as HMUSIC."
                       : "Loading next song into trackerStreamNext as HMUSIC.");
    const HMUSIC module = BASS_MusicLoad(false, path.c_str(), 0, 0, kStreamFlags, 0);
    if (module == 0) {
        PrintAudioError(intoMain ? "Error creating trackerStream (HMUSIC)."
                                 : "Error creating trackerStreamNext (HMUSIC).");
    }
    return module;
}

// The topmost missing folder above a missing file; empty when its own folder exists.
std::string TopmostMissingFolder(const std::string& path) {
    std::string_view missing;
    for (std::string_view folder = FolderOf(path); !folder.empty() && !IsFolder(std::string(folder));
         folder = FolderOf(folder)) {
        missing = folder;
    }
    return std::string(missing);
}

}  // namespace

std::shared_ptr<Opening> Opening::Begin(OpenRequest request) {
    auto opening = std::make_shared<Opening>();
    opening->request_ = std::move(request);
    opening->begunAt_ = PlayNow();
    const auto count = std::make_shared<UnderWayCount>();
    const bool started = opening->worker_.Start([opening, count](const std::stop_token& stop) { opening->Run(stop); });
    return started ? opening : nullptr;
}

int Opening::UnderWay() {
    return underWay;
}

void Opening::Run(const std::stop_token& stop) {
    opened_.title = request_.item.title;
    const bool isRadio = request_.item.kind == PlayItem::Kind::kStation;
    if (isRadio ? OpenRadio(stop) : OpenSong()) {
        opened_.result = Settle() ? OpenResult::kReady : OpenResult::kSilent;
    }
    took_ = std::chrono::duration_cast<std::chrono::milliseconds>(PlayNow() - begunAt_);
    if (opened_.result != OpenResult::kReady) Free();
    State expected = State::kOpening;
    if (!state_.compare_exchange_strong(expected, State::kDone)) Free();
}

void Opening::Free() {
    BASS_StreamFree(opened_.handle);
    if (opened_.newFont != 0) BASS_MIDI_FontFree(opened_.newFont);
    opened_.handle = opened_.newFont = 0;
}

void Opening::Abandon() {
    if (state_.exchange(State::kAbandoned) == State::kDone) {
        if (!isReleased_) Free();
    } else {
        worker_.Cancel();
        BASS_StreamFree(handle_);  // ends the worker's wait for its sound
    }
}

// False when it is silent from start to end. A stream may be silent for the moment.
bool Opening::Settle() {
    if (request_.item.kind == PlayItem::Kind::kStation) {
        opened_.rms = MeasureAhead(opened_.handle, isHurried_);
        return true;
    }
    return opened_.lengthSec <= 0.0 || SettleOnSound(opened_.handle, opened_.lengthSec, request_.durations.fadeSec,
                                                     opened_.window, isHurried_, opened_.rms);
}

bool Opening::OpenRadio(const std::stop_token& stop) {
    const OpenedStation station = OpenStation(request_.station, stop);
    opened_.handle = station.handle;
    handle_ = opened_.handle;
    opened_.repairedUrl = station.repairedUrl;
    opened_.wasSearched = station.wasSearched;
    opened_.nowPlaying = station.nowPlaying;
    opened_.window = request_.stationWindow;
    if (opened_.handle == 0) return false;
    BASS_ChannelSetAttribute(opened_.handle, BASS_ATTRIB_VOL, 0.0F);
    return true;
}

bool Opening::OpenSong() {
    const PlayItem& item = request_.item;
    if (!IsFile(item.address)) {
        opened_.result = OpenResult::kAway;
        opened_.awayFolder = TopmostMissingFolder(item.address);
        return false;
    }
    opened_.handle = item.type == kTracker ? CreateModule(item.address, request_.intoMain)
                                           : CreateFileStream(item.address, request_.intoMain);
    handle_ = opened_.handle;
    if (opened_.handle == 0) return false;
    BASS_ChannelFlags(opened_.handle, 0, BASS_SAMPLE_LOOP);  // a song plays once
    BASS_ChannelSetAttribute(opened_.handle, BASS_ATTRIB_VOL, 0.0F);
    if (item.type == kMidi) AttachFont();
    opened_.title = TitleLine(ReadSongTitle(opened_.handle, item.address));
    opened_.lengthSec = LengthSec(opened_.handle);
    ChooseWindow();
    return true;
}

// The slot's font stays when the new one cannot be used.
void Opening::AttachFont() {
    const auto attach = [this](uint32_t font) {
        const BASS_MIDI_FONT entry{font, -1, 0};
        return font != 0 && BASS_MIDI_StreamSetFonts(opened_.handle, &entry, 1);
    };
    const std::string& file = request_.newFontFile;
    if (!file.empty()) {
        const HSOUNDFONT font = BASS_MIDI_FontInit(file.c_str(), 0);
        if (font == 0) {
            PrintErrorLine("Error loading sound font from " + file + ": " + std::to_string(BASS_ErrorGetCode()));
        } else if (attach(font)) {
            opened_.newFont = font;
            return;
        } else {
            PrintErrorLine(std::string("Error setting sound font for ") +
                           (request_.intoMain ? "midiStream" : "midiStreamNext") + ": " +
                           std::to_string(BASS_ErrorGetCode()));
            BASS_MIDI_FontFree(font);
        }
    }
    attach(request_.slotFont);
}

// A song that cannot be positioned plays from its start, for as long as was drawn.
void Opening::ChooseWindow() {
    Random random(request_.windowSeed);
    const PlayWindow drawn = ChooseSongWindow(opened_.lengthSec, request_.item.type, request_.durations, random);
    const bool positioned =
        drawn.startSec > 0.0 &&
        BASS_ChannelSetPosition(opened_.handle, BASS_ChannelSeconds2Bytes(opened_.handle, drawn.startSec),
                                BASS_POS_BYTE);
    const double startSec = positioned ? drawn.startSec : 0.0;
    opened_.window = {startSec, startSec + (drawn.endSec - drawn.startSec)};
}

}  // namespace hullrider
