// Game controllers, through SDL. UI thread.
#pragma once

#include <array>
#include <string>

struct _SDL_GameController;

namespace hullrider {

inline constexpr int kControllerSlots = 8;

// One slot for each joystick index. A closed slot is null and nameless.
struct ControllerSlot {
    _SDL_GameController* controller = nullptr;
    std::string name;
};

using ControllerSlots = std::array<ControllerSlot, kControllerSlots>;

// Starts SDL's game-controller subsystem and opens every controller that is there. Without SDL the player runs without
// controllers; both outcomes are told on the console, silence means that none is attached.
void OpenControllers(ControllerSlots& slots);

// Takes in what has happened since the last call: opens controllers that were plugged in and closes those that are
// gone, each with a line.
void PumpControllers(ControllerSlots& slots);

void CloseControllers(ControllerSlots& slots);

}  // namespace hullrider
