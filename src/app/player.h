// All there is of one running player. The fronts own one each.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "app/autosave.h"
#include "app/companion.h"
#include "app/music_folders.h"
#include "app/options.h"
#include "input/controllers.h"
#include "input/hotkeys.h"
#include "platform/paths.h"
#include "playback/command_file.h"
#include "playback/picker_state.h"
#include "state/app_state.h"

namespace hullrider {

// What start-up has loaded so far: nothing else may be saved, or it would be lost.
struct LoadedFiles {
    bool statistics = false;
    bool library = false;
    bool playCounts = false;
    bool settings = false;
    bool songHistory = false;
    bool favorites = false;
};

struct Player {
    RunOptions options;
    bool companionEdition = kCompanionEdition;
    std::string programFolder = ProgramFolder();
    AppState state;
    PickerState picker;
    ControllerSlots controllers;
    HotkeyBindings hotkeys = BuiltInHotkeys();
    std::vector<RefusedHotkey> refusedHotkeys;  // of those that were to be registered
    CommandFile commandFile;
    std::string songInfo;  // as it was last written
    FolderScan scan;
    Autosave autosave;
    bool stopped = false;      // by the user: nothing plays until something is started
    bool startsAudio = false;  // the audio library is being opened, and an error box may wait for the user

    // What only a front can do. Each may be empty.
    std::function<void()> takeHotkeys;  // once the bindings are known
    std::function<void(int32_t command)> openWindow;
    std::function<void()> bringToFront;
    std::function<void()> endProgram;

    // What the front must let go at its place in the shutdown: timers, drawing objects, hotkeys. May be empty.
    std::function<void()> releaseFront;
    LoadedFiles loaded;
    bool started = false;   // start-up is over: before it, nothing may be commanded
    bool shutDown = false;  // possibly before the end of start-up, which then goes no further
};

}  // namespace hullrider
