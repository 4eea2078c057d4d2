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

// Starts SDL's game-controller subsystem and opens every connected controller, each with a line. When SDL fails, a line
// says so and the player runs without controllers.
void OpenControllers(ControllerSlots& slots);

// Handles what has happened since the last call: opens controllers that were plugged in and closes those that were
// removed, each with a line.
void PumpControllers(ControllerSlots& slots);

void CloseControllers(ControllerSlots& slots);

}  // namespace hullrider
