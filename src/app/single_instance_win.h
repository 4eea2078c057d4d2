// One player for each data folder: two would overwrite each other's files. A second start brings the first one's window
// to the front. UI thread.
#pragma once

#include <windows.h>

#include <string>

namespace hullrider {

class SingleInstance {
public:
    // Claims the folder. Waits a few seconds for a player that is just ending.
    explicit SingleInstance(const std::string& dataDirectory);
    ~SingleInstance();
    SingleInstance(const SingleInstance&) = delete;
    SingleInstance& operator=(const SingleInstance&) = delete;

    // False when another player has the folder. If it shows a window, that has been told to come to the front.
    bool IsFirst() const { return isFirst_; }

    // Marks the window by which this player is found, until it is about to end.
    void Mark(HWND window) const;
    void Unmark(HWND window) const;

    // What a window is sent that is to come to the front.
    static UINT ShowMessage();

private:
    bool TellFirst() const;

    std::wstring name_;
    HANDLE mutex_ = nullptr;
    bool isFirst_ = false;
};

}  // namespace hullrider
