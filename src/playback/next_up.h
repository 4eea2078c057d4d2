// The next item: picked, being opened or ready. UI thread.
#pragma once

#include <memory>

#include "playback/opening.h"
#include "playback/pick.h"
#include "playback/picker_state.h"
#include "playback/selection_basis.h"

namespace hullrider {

// How long an item that is needed may take to open before another one is tried.
inline constexpr std::chrono::milliseconds kPatience{3000}, kPatienceWithStation{15000};
std::chrono::milliseconds PatienceWith(const PlayItem& item);

// What an item is opened for.
struct Wish {
    NextRequest request;
    bool isUrgent = false;      // starts as soon as it is ready; otherwise it is only prepared
    bool skips = false;         // cuts the old item short
    bool isForStation = false;  // starts as soon as a station answers; a song plays until then
};

struct NextUp {
    Wish wish;
    Pick pick;
    SelectionBasis basis;
    std::shared_ptr<Opening> opening;
    int32_t newFont = -1;  // index of the SoundFont that comes with it; -1: the slot keeps its own
    std::string newFontFile;
    PlayTime patientUntil;  // when another item is tried if this one is not open yet
};

// The durations for a pick; a replayed item and a queued one play whole.
PlayDurations DurationsFor(const AppState& app, const Pick& pick);

// Starts opening what was picked and drops what was next before. False when no worker could be started.
bool OpenNext(AppState& app, PickerState& picker, const Wish& wish, const Pick& pick);

// Starts the prepared item as soon as it is open.
void MakeUrgent(NextUp& next, bool skips);

// Whether the rules that it was picked by are unchanged.
bool StillFits(const AppState& app, const NextUp& next);

void DropNext(PlaybackState& playback);

}  // namespace hullrider
