// Allows one player per data folder, because two would overwrite each other's files. A second start brings the first
// one's window to the front. UI thread.
#pragma once

#include <windows.h>

#include <string>

namespace hullrider {

class SingleInstance {
public:
    // Claims the folder. Waits a few seconds for a player that is shutting down.
    explicit SingleInstance(const std::string& dataDirectory);
    ~SingleInstance();
    SingleInstance(const SingleInstance&) = delete;
    SingleInstance& operator=(const SingleInstance&) = delete;

    // False when another player has the folder. Its window, if any, has been told to come to the front.
    bool IsFirst() const { return isFirst_; }

    // Marks the window by which this player is found, until it is about to end.
    void Mark(HWND window) const;
    void Unmark(HWND window) const;

    // The message that tells a window to come to the front.
    static UINT ShowMessage();

private:
    bool TellFirst() const;

    std::wstring name_;
    HANDLE mutex_ = nullptr;
    bool isFirst_ = false;
};

}  // namespace hullrider
