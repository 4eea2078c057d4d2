// The one top-level window: class, size, menu, timers, and the routing of its messages. UI thread.
#pragma once

#include <windows.h>

#include <functional>
#include <optional>

#include "app/borderless_win.h"
#include "app/player.h"
#include "app/shortcuts_win.h"
#include "app/tray_icon_win.h"
#include "display/panel_view_win.h"

namespace hullrider {

// The window lives as long as the object. The player must outlive it.
class MainWindow {
public:
    // Registers the class and creates the window, hidden and without a menu; stores it and the scales in the player's
    // shell state.
    MainWindow(HINSTANCE instance, Player& player);
    ~MainWindow();  // destroys the window without saving anything
    MainWindow(const MainWindow&) = delete;
    MainWindow& operator=(const MainWindow&) = delete;

    HWND Handle() const { return window_; }  // null when the window could not be created

    // Sets what is called once when the program ends, before anything is saved.
    void OnEnd(std::function<void()> procedure) { onEnd_ = std::move(procedure); }

    // The last step of start-up: opacity, timers and menu.
    void Activate();

private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam);
    std::optional<LRESULT> OnInput(UINT message, WPARAM wParam, LPARAM lParam);
    std::optional<LRESULT> OnPlaceOrEnd(UINT message, WPARAM wParam, LPARAM lParam);
    void OnTimer(WPARAM timer);
    void OnPanelAction(const PanelAction& action);
    void OnKey(WPARAM key, bool isRepeated);
    void OnDrop(HDROP drop);
    void OnTrayClick(TrayIcon::Click click);
    std::string TrayTip() const;
    void Run(int32_t command);
    void BringToFront();
    void OnSize(WPARAM kind, LPARAM size);
    void LimitSize(MINMAXINFO& limits) const;
    void MakeRoomForMenu(int32_t clientHeight) const;
    void FollowDpi(const RECT& proposed);
    void RefreshPanel();
    void EndProgram();
    void KillTimers();

    Player& player_;
    PanelView panel_;
    Borderless borderless_;
    Shortcuts shortcuts_;
    TrayIcon tray_;
    std::function<void()> onEnd_;
    HWND window_ = nullptr;
};

}  // namespace hullrider
