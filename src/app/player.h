// All there is of one running player. The fronts own one each.
#pragma once

#include <functional>

#include "app/companion.h"
#include "app/options.h"
#include "input/controllers.h"
#include "platform/paths.h"
#include "playback/draws.h"
#include "state/app_state.h"

namespace hullrider {

struct Player {
    RunOptions options;
    bool companionEdition = kCompanionEdition;
    std::string programFolder = ProgramFolder();
    AppState state;
    Draws draws;
    ControllerSlots controllers;

    // What the front must let go at its place in the shutdown: timers, drawing objects, hotkeys. May be empty.
    std::function<void()> releaseFront;
    bool shutDown = false;
};

}  // namespace hullrider
