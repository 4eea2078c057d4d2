// Allows one player per data folder, because two would overwrite each other's files. A second start brings the first
// one's window to the front and hands it the files that it was started with. UI thread.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace hullrider {

class SingleInstance {
public:
    // Claims the folder. Waits a few seconds for a player that is shutting down, or that starts and takes no files yet.
    SingleInstance(const std::string& dataDirectory, const std::vector<std::string>& files);
    ~SingleInstance();
    SingleInstance(const SingleInstance&) = delete;
    SingleInstance& operator=(const SingleInstance&) = delete;

    // False when another player has the folder. Its window, if any, has been told to come to the front and to play the
    // files.
    bool IsFirst() const { return isFirst_; }

    // Marks the window by which this player is found, until it is about to end.
    void Mark(HWND window) const;
    void Unmark(HWND window) const;

    // The message that tells a window to come to the front.
    static UINT ShowMessage();

    // The files that a WM_COPYDATA hands over; empty for another one.
    static std::vector<std::string> FilesIn(LPARAM lParam);

private:
    bool TellFirst(const std::vector<std::string>& files) const;

    std::wstring name_;
    HANDLE mutex_ = nullptr;
    bool isFirst_ = false;
};

}  // namespace hullrider
