// The player's icon in the notification area. UI thread.
#pragma once

#include <windows.h>

#include <shellapi.h>

#include <cstdint>
#include <optional>
#include <string>

namespace hullrider {

class TrayIcon {
public:
    // What the user did with the icon.
    enum class Click { kShow, kMenu };

    ~TrayIcon() { Remove(); }

    // Shows the icon; its messages go to the window.
    void Add(HWND window);
    void Remove();

    // False when the system shows no icons: then the window must stay visible.
    bool IsShown() const { return isShown_; }

    // The tooltip, UTF-8, truncated to the system's limit.
    void SetTip(const std::string& text);

    // What a message means, if it is one of the icon's. Shows the icon again when the taskbar restarts.
    std::optional<Click> Understand(UINT message, LPARAM lParam);

    // Shows the icon's menu and returns the chosen CommandId, or 0 for none. One menu item toggles `closesToTray`:
    // closing the window leaves the player running.
    int32_t AskMenu(bool& closesToTray) const;

private:
    void ShowAgain();

    NOTIFYICONDATAW data_{};
    std::string tip_;
    UINT taskbarCreated_ = 0;
    bool isShown_ = false;
};

}  // namespace hullrider
