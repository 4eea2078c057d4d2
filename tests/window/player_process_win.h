// A running HullriderRadio.exe, seen from outside.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include "tests/temporary_folder.h"

namespace hullrider {

class PlayerProcess {
public:
    // Starts the program with its standard streams in one file. Arguments are UTF-8.
    explicit PlayerProcess(const std::vector<std::string>& arguments);
    ~PlayerProcess();  // ends it by force if it still runs
    PlayerProcess(const PlayerProcess&) = delete;
    PlayerProcess& operator=(const PlayerProcess&) = delete;

    // The visible top-level window of that class and title (null: any title), or null when it does not come up in 20 s.
    HWND WaitForWindow(const wchar_t* className, const wchar_t* title);

    // How many visible top-level windows of that class there are now.
    int CountWindows(const wchar_t* className) const;

    // The exit code, or -1 when the program still runs after 20 s.
    int WaitForExit();

    // True as soon as it has printed that text so many times; false when it has not after `patienceMs`.
    bool WaitForOutput(const std::string& text, int times, DWORD patienceMs = 20000) const;

    // All that it has printed so far.
    std::string Output() const;

private:
    TemporaryFolder folder_;
    PROCESS_INFORMATION process_{};
};

}  // namespace hullrider
