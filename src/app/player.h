// The whole state of a running player. Each front owns one.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "app/autosave.h"
#include "app/companion.h"
#include "app/music_folders.h"
#include "app/options.h"
#include "input/controllers.h"
#include "input/hotkeys.h"
#include "platform/paths.h"
#include "platform/play_clock.h"
#include "platform/worker.h"
#include "playback/command_file.h"
#include "playback/picker_state.h"
#include "state/app_state.h"

namespace hullrider {

// What start-up has loaded so far. Saving anything else would replace the user's file with defaults.
struct LoadedFiles {
    bool statistics = false;
    bool stations = false;
    bool library = false;
    bool playCounts = false;
    bool settings = false;
    bool songHistory = false;
    bool favorites = false;
};

// Files handed to the player (app/handed_files.h).
struct HandedFiles {
    std::vector<std::string> paths;  // whose songs are being looked for
    Worker search;
    std::optional<PlayTime> queuedAt;  // when songs were last queued
};

struct Player {
    RunOptions options;
    bool companionEdition = kCompanionEdition;
    std::string programFolder = ProgramFolder();
    AppState state;
    PickerState picker;
    ControllerSlots controllers;
    HotkeyBindings hotkeys = BuiltInHotkeys();
    std::vector<RefusedHotkey> refusedHotkeys;  // by the last registration
    CommandFile commandFile;
    std::string songInfo;  // as last written
    FolderScan scan;
    HandedFiles handed;
    Autosave autosave;
    bool stopped = false;      // by the user: nothing plays until something is started
    bool startsAudio = false;  // the audio library is being opened; an error box may be open

    // What only a front can do. Each may be empty.
    std::function<void()> takeHotkeys;  // once the bindings are known
    std::function<void(int32_t command)> openWindow;
    std::function<void()> bringToFront;
    std::function<void()> endProgram;

    // Called during shutdown: the front releases its timers, drawing objects and hotkeys. May be empty.
    std::function<void()> releaseFront;
    LoadedFiles loaded;
    bool started = false;   // start-up is over; before, commands are refused
    bool shutDown = false;  // possibly during start-up, which then stops
};

}  // namespace hullrider
