// The shell's state: where its files lie, its window, and how far start-up has come.
#pragma once

#include <cstdint>
#include <string>

namespace hullrider {

// The panel is laid out in a space of this size and scaled to the window.
inline constexpr float kPanelWidth = 500.0F;
inline constexpr float kPanelHeight = 155.0F;

// Kept between runs, besides the settings.
struct ShellOptions {
    // The window's outer box when it is not maximized, in desktop pixels; without a width: unknown.
    int32_t x = 0, y = 0, width = 0, height = 0;
    bool isMaximized = false;
    bool closesToTray = false;     // closing the window leaves the player in the notification area
    bool followsLoudness = false;  // loudness following is on

    bool operator==(const ShellOptions&) const = default;
};

struct ShellState {
    std::string dataDirectory;     // folder of all state files, UTF-8, no trailing separator
    std::string libraryCachePath;  // empty: this run's library is not saved
    void* instance = nullptr;      // the system's handle of the program; null without a window system
    void* mainWindow = nullptr;    // the one top-level window; null until created
    float horizontalScale = 1.0F;  // client width / kPanelWidth
    float verticalScale = 1.0F;    // client height / kPanelHeight
    ShellOptions options;

    // Set at the end of start-up, in the companion edition only.
    bool companionExport = false;  // write the plain-text exports for the companion game
    bool startupFinished = false;  // poll the command file
};

}  // namespace hullrider
