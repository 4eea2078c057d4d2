// The panel in its window: painting what has changed, off screen first, the mouse, the tooltips, and the timer that
// moves the meter. UI thread.
#pragma once

#include <windows.h>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>

#include "display/meter_ballistics.h"
#include "display/panel.h"
#include "display/panel_mouse.h"
#include "display/panel_painter.h"
#include "display/panel_tooltips_win.h"
#include "display/surface_win.h"
#include "display/text_raster_win.h"

namespace hullrider {

// The panel's own timer among those of its window. It runs only while something moves and can be seen.
inline constexpr UINT_PTR kPanelMotionTimer = 5;

// What the panel asks of the rest of the player.
struct PanelPorts {
    std::function<void(const PanelAction&)> act;  // the user wants something
    std::function<StereoLevel()> level;           // what the meter is to show now
};

class PanelView {
public:
    explicit PanelView(PanelPorts ports) : ports_(std::move(ports)) {}
    PanelView(const PanelView&) = delete;
    PanelView& operator=(const PanelView&) = delete;

    // Takes a window's client area.
    void Attach(HWND window);

    // Whether there is anyone to show something to. If not, nothing moves until the next Show.
    bool CanBeSeen();

    // Takes what to show from now on; what looks different is painted with the next WM_PAINT.
    void Show(const PanelModel& model, const PanelTheme& theme);

    // Every message of the window comes here first. Nothing is returned for one that is not (only) the panel's.
    std::optional<LRESULT> HandleMessage(UINT message, WPARAM wParam, LPARAM lParam);

    // Stops the timer and lets everything of the system's go; a later WM_PAINT takes what it needs again.
    void Release();

private:
    void Paint();
    void MakeSurface(LONG width, LONG height);
    void Look(const PanelLook& look);
    void Spoil(const ElementSet& elements);
    void OnMouse(UINT message, LPARAM lParam);
    void OnWheel(WPARAM wParam);
    void FollowMouse();
    void Act(const std::optional<PanelAction>& action);
    void StartMotion();
    void StopMotion();
    void OnMotion();

    PanelPorts ports_;
    HWND window_ = nullptr;
    GdiTextRasterizer rasterizer_;
    PanelPainter painter_{rasterizer_};
    std::unique_ptr<Surface> surface_;
    PanelTooltips tooltips_;
    PanelTheme theme_;
    PanelLook look_;
    ElementSet spoilt_;  // what the surface does not show as it should
    PanelMouse mouse_;
    MeterBallistics left_, right_;
    bool moving_ = false;
    std::chrono::steady_clock::time_point lastMotion_;
};

}  // namespace hullrider
