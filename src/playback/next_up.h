// The item that is going to be next: picked, being opened or ready. UI thread.
#pragma once

#include <memory>

#include "playback/opening.h"
#include "playback/pick.h"
#include "playback/picker_state.h"
#include "playback/selection_basis.h"

namespace hullrider {

// With an item that is needed and does not open.
inline constexpr std::chrono::milliseconds kPatience{3000};

// What an item is opened for.
struct Wish {
    NextRequest request;
    bool isUrgent = false;  // it is to be started as soon as it is ready; otherwise it is prepared
    bool skips = false;     // the user does not hear the old item to its end
};

struct NextUp {
    Wish wish;
    Pick pick;
    SelectionBasis basis;
    std::shared_ptr<Opening> opening;
    int32_t newFont = -1;   // index of the SoundFont that comes with it; -1: the slot keeps its own
    std::string newFontFile;
    PlayTime patientUntil;  // when another item is tried if this one still is not open
};

// Begins to open what was picked; what was next before is dropped. False when no worker could be started.
bool OpenNext(AppState& app, PickerState& picker, const Wish& wish, const Pick& pick);

// What was prepared is wanted now.
void MakeUrgent(NextUp& next, bool skips);

// Whether the same rules that it was picked by are still in force.
bool StillFits(const AppState& app, const NextUp& next);

void DropNext(PlaybackState& playback);

}  // namespace hullrider
