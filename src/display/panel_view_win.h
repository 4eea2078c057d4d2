// The panel in its window: off-screen painting of what has changed, the mouse, the tooltips, and the timer that moves
// the meter. UI thread.
#pragma once

#include <windows.h>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>

#include "display/meter_ballistics.h"
#include "display/panel.h"
#include "display/panel_keys.h"
#include "display/panel_mouse.h"
#include "display/panel_painter.h"
#include "display/panel_tooltips_win.h"
#include "display/surface_win.h"
#include "display/text_raster_win.h"
#include "display/volume_notice.h"

namespace hullrider {

// The panel's timer, among those of its window. It runs only while something visible moves.
inline constexpr UINT_PTR kPanelMotionTimer = 5;

// What the panel needs from the rest of the player.
struct PanelPorts {
    std::function<void(const PanelAction&)> act;  // carries out a click or drag
    std::function<StereoLevel()> level;           // for the meter
};

class PanelView {
public:
    explicit PanelView(PanelPorts ports) : ports_(std::move(ports)) {}
    PanelView(const PanelView&) = delete;
    PanelView& operator=(const PanelView&) = delete;

    // Attaches the panel to a window's client area.
    void Attach(HWND window);

    // Whether the panel is visible. If not, nothing moves until the next Show.
    bool CanBeSeen();

    // Sets what to show; what looks different is painted with the next WM_PAINT.
    void Show(const PanelModel& model, const PanelTheme& theme);

    // Pass every message of the window here first. Empty: the window must handle the message, too.
    std::optional<LRESULT> HandleMessage(UINT message, WPARAM wParam, LPARAM lParam);

    // Stops the timer and releases all system resources; a later WM_PAINT acquires them again.
    void Release();

private:
    void Paint();
    void MakeSurface(LONG width, LONG height);
    void Look(const PanelLook& look);
    void Spoil(const ElementSet& elements);
    void OnMouse(UINT message, LPARAM lParam);
    void OnWheel(WPARAM wParam);
    bool OnKey(WPARAM key, bool isRepeated);
    void FollowFocus();
    void FollowMouse();
    void RenewTooltip(const PanelModel& before) const;
    void LetGoOfOldSong(const PanelModel& model);
    bool IsMeterAtRest() const { return left_.AtRest() && right_.AtRest(); }
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
    ElementSet spoilt_;  // elements that are out of date on the surface
    PanelMouse mouse_;
    PanelKeys keys_;
    MeterBallistics left_, right_;
    VolumeNotice volumeNotice_;
    bool moving_ = false;
    std::chrono::steady_clock::time_point lastMotion_;
};

}  // namespace hullrider
