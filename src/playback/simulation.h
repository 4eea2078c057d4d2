// What a rotation of songs is like without playing it: how often each kind comes, how often something comes again, how
// long songs play. UI thread.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <string>

#include "playback/picker_state.h"
#include "state/app_state.h"

namespace hullrider {

// Of all that is played, 0 to 1.
struct RotationShares {
    std::array<double, kItemTypes> byType{};
    double favorites = 0.0;  // songs of any type that are favorites
};

struct Rotation {
    int64_t plays = 0;
    int64_t unplayable = 0;  // picks that could not be played, and were picked anew
    int64_t repeats = 0;     // songs that were among those that the history should have kept away
    double meanPlaySec = 0.0;
    RotationShares drawn;
};

// The length of a song in seconds; below 0 when it cannot be played.
using LengthOf = std::function<double(const Song&)>;

// Chooses that many items and their play windows. Leaves `app` as if they had been played, but for the streams. Ends
// earlier when nothing can be chosen.
Rotation SimulateRotation(AppState& app, PickerState& picker, int64_t plays, const LengthOf& lengthOf);

// How many of all draws go to each Category by the weights, 0 to 1.
std::array<double, 5> CategoryShares(const AppState& app, PickerState& picker);

// What the weights promise, the history left aside.
RotationShares PromisedShares(const AppState& app, PickerState& picker);

}  // namespace hullrider
