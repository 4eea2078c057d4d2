// The tooltips of the panel's elements. UI thread.
#pragma once

#include <windows.h>
//
#include <commctrl.h>

#include <string>

#include "display/panel_elements.h"

namespace hullrider {

class PanelTooltips {
public:
    PanelTooltips() = default;
    ~PanelTooltips() { Destroy(); }
    PanelTooltips(const PanelTooltips&) = delete;
    PanelTooltips& operator=(const PanelTooltips&) = delete;

    // For the elements of a panel in `window`, which is asked for the texts with WM_NOTIFY.
    void Create(HWND window);
    void Destroy();

    // Adapts to the panel's new size.
    void Place(const PanelScale& scale);

    // Shows the element's text anew if its tooltip is open.
    void Renew(PanelElement element) const;

    // Passes a mouse message of the window to the control.
    void Relay(UINT message, WPARAM wParam, LPARAM lParam) const;

    // The request for an element's text, its id in hdr.idFrom; null for another WM_NOTIFY. Reply with Answer.
    const NMTTDISPINFOW* Request(LPARAM lParam) const;
    void Answer(LPARAM lParam, const std::string& text);

private:
    TTTOOLINFOW Tool(size_t element) const;

    HWND window_ = nullptr, tips_ = nullptr;
    std::wstring answer_;  // must outlive the message
};

}  // namespace hullrider
