// Simulates a rotation of songs without playing it: how often each type comes, how often songs repeat, how long they
// play. UI thread.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <string>

#include "playback/picker_state.h"
#include "state/app_state.h"

namespace hullrider {

// Shares of all plays, 0 to 1.
struct RotationShares {
    std::array<double, kItemTypes> byType{};
    double favorites = 0.0;  // songs of any type that are favorites
};

struct Rotation {
    int64_t plays = 0;
    int64_t unplayable = 0;  // picks that could not be played and were replaced
    int64_t repeats = 0;     // songs that the history should have excluded
    double meanPlaySec = 0.0;
    RotationShares drawn;
};

// The length of a song in seconds; below 0 when it cannot be played.
using LengthOf = std::function<double(const Song&)>;

// Chooses that many items and their play windows. Leaves `app` as if they had been played, apart from the streams. Ends
// early when nothing can be chosen.
Rotation SimulateRotation(AppState& app, PickerState& picker, int64_t plays, const LengthOf& lengthOf);

// The share of each Category in the draws, 0 to 1.
std::array<double, 5> CategoryShares(const AppState& app, PickerState& picker);

// The shares that the weights promise, without the history.
RotationShares PromisedShares(const AppState& app, PickerState& picker);

}  // namespace hullrider
