// Draws the panel into a window, off screen first, so that it does not flicker. UI thread; GDI+ must be running.
#pragma once

#include <windows.h>

#include <memory>

#include "display/panel.h"
#include "state/settings.h"

namespace hullrider {

class PanelView {
public:
    PanelView();
    ~PanelView();
    PanelView(const PanelView&) = delete;
    PanelView& operator=(const PanelView&) = delete;

    // Takes what to show from now on, and asks `window` to be painted if that looks different.
    void Show(HWND window, const PanelText& text);

    // Paints the client area, in the colours of `settings`. For WM_PAINT.
    void Paint(HWND window, const Settings& settings);

    // Frees the off-screen picture; the next Paint makes a new one.
    void ReleaseBuffer();

private:
    struct Buffer;
    std::unique_ptr<Buffer> buffer_;
    PanelText text_;
};

}  // namespace hullrider
