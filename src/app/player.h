// All there is of one running player. The fronts own one each.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "app/companion.h"
#include "app/options.h"
#include "input/controllers.h"
#include "input/hotkeys.h"
#include "library/background_scan.h"
#include "platform/paths.h"
#include "playback/command_file.h"
#include "playback/draws.h"
#include "state/app_state.h"

namespace hullrider {

// A window of its own for one subject.
struct OptionWindow {
    const char* className = nullptr;
    const char* title = nullptr;
};

struct Player {
    RunOptions options;
    bool companionEdition = kCompanionEdition;
    std::string programFolder = ProgramFolder();
    AppState state;
    Draws draws;
    ControllerSlots controllers;
    HotkeyBindings hotkeys = BuiltInHotkeys();
    std::vector<RefusedHotkey> refusedHotkeys;  // of those that were to be registered
    CommandFile commandFile;
    std::string songInfo;                  // as it was last written
    std::unique_ptr<BackgroundScan> scan;  // under way; null: none
    bool stopped = false;                  // by the user: nothing plays until something is started

    // What only a front can do. Each may be empty.
    std::function<void()> takeHotkeys;  // once the bindings are known
    std::function<void(const OptionWindow&)> openWindow;
    std::function<void()> bringToFront;
    std::function<void()> endProgram;

    // What the front must let go at its place in the shutdown: timers, drawing objects, hotkeys. May be empty.
    std::function<void()> releaseFront;
    bool started = false;  // start-up is over: before it, nothing may be commanded and nothing saved
    bool shutDown = false;
};

}  // namespace hullrider
