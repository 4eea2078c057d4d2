#include "input/controllers.h"

#include <SDL.h>

#include <algorithm>

#include "platform/console.h"

namespace hullrider {

namespace {

void OpenController(int index, ControllerSlot& slot) {
    slot.controller = SDL_GameControllerOpen(index);
    if (slot.controller == nullptr) {
        PrintLine("Warning: Unable to open game controller " + std::to_string(index) +
                  "! SDL Error: " + SDL_GetError());
        return;
    }
    const char* const name = SDL_GameControllerName(slot.controller);
    slot.name = name == nullptr ? "" : name;
    PrintLine("Controller " + std::to_string(index) + " is connected: " + slot.name);
}

// The slot that holds the device; null when none does.
ControllerSlot* FindSlot(ControllerSlots& slots, SDL_JoystickID device) {
    const auto holds = [device](const ControllerSlot& slot) {
        return slot.controller != nullptr &&
               SDL_JoystickInstanceID(SDL_GameControllerGetJoystick(slot.controller)) == device;
    };
    const auto found = std::find_if(slots.begin(), slots.end(), holds);
    return found == slots.end() ? nullptr : &*found;
}

// `index` counts the joysticks present now, so its slot may hold another one.
void Connect(ControllerSlots& slots, int index) {
    if (FindSlot(slots, SDL_JoystickGetDeviceInstanceID(index)) != nullptr) return;  // opened at start-up
    const auto isFree = [](const ControllerSlot& slot) { return slot.controller == nullptr; };
    const auto free = std::find_if(slots.begin(), slots.end(), isFree);
    if (free == slots.end()) return;
    free->controller = SDL_GameControllerOpen(index);
    if (free->controller == nullptr) return;
    const char* const name = SDL_GameControllerName(free->controller);
    free->name = name == nullptr ? "" : name;
    PrintLine("Controller " + std::to_string(free - slots.begin()) + " connected.");
}

void Disconnect(ControllerSlots& slots, SDL_JoystickID device) {
    ControllerSlot* const slot = FindSlot(slots, device);
    if (slot == nullptr) return;
    SDL_GameControllerClose(slot->controller);
    *slot = {};
    PrintLine("Controller " + std::to_string(slot - slots.data()) + " disconnected.");
}

}  // namespace

void OpenControllers(ControllerSlots& slots) {
    SDL_SetMainReady();
    // The player is in the background while its user plays a game, so presses must arrive there too. The program
    // handles Ctrl+C itself.
    SDL_SetHint(SDL_HINT_JOYSTICK_ALLOW_BACKGROUND_EVENTS, "1");
    SDL_SetHint(SDL_HINT_NO_SIGNAL_HANDLERS, "1");
    if (SDL_Init(SDL_INIT_GAMECONTROLLER) != 0) {
        PrintLine(std::string("SDL could not initialize! SDL Error: ") + SDL_GetError());
        return;
    }
    const int count = std::min(SDL_NumJoysticks(), kControllerSlots);
    for (int index = 0; index < count; ++index) {
        if (SDL_IsGameController(index) == SDL_TRUE) OpenController(index, slots[static_cast<size_t>(index)]);
    }
}

void PumpControllers(ControllerSlots& slots) {
    if (SDL_WasInit(SDL_INIT_GAMECONTROLLER) == 0) return;
    SDL_Event event;
    while (SDL_PollEvent(&event) != 0) {
        if (event.type == SDL_CONTROLLERDEVICEADDED) Connect(slots, event.cdevice.which);
        if (event.type == SDL_CONTROLLERDEVICEREMOVED) Disconnect(slots, event.cdevice.which);
    }
}

void CloseControllers(ControllerSlots& slots) {
    for (ControllerSlot& slot : slots) {
        if (slot.controller != nullptr) SDL_GameControllerClose(slot.controller);
        slot = {};
    }
    // SDL is left running until the process ends: quitting would unload controller libraries whose threads may still
    // run.
}

}  // namespace hullrider
