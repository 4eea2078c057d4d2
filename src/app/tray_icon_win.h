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

    // The messages of the icon go to the window.
    void Add(HWND window);
    void Remove();

    // False when the system shows no icons: then nothing may hide behind it.
    bool IsShown() const { return isShown_; }

    // The text beside the mouse, UTF-8; what is too long for the system is cut.
    void SetTip(const std::string& text);

    // What a message means, if it is one of the icon's. The icon comes back by itself when the task bar starts anew.
    std::optional<Click> Understand(UINT message, LPARAM lParam);

    // Shows the icon's menu until the user has chosen: a CommandId, or 0 for none. `closesToTray` is one of the menu's
    // items: that closing the window leaves the player running.
    int32_t AskMenu(bool& closesToTray) const;

private:
    void ShowAgain();

    NOTIFYICONDATAW data_{};
    std::string tip_;
    UINT taskbarCreated_ = 0;
    bool isShown_ = false;
};

}  // namespace hullrider
