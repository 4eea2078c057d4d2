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

    // For the elements of a panel in `window`; they are asked for their texts with WM_NOTIFY.
    void Create(HWND window);
    void Destroy();

    // Follows the panel to another size.
    void Place(const PanelScale& scale);

    // Lets the control see a mouse message of the window.
    void Relay(UINT message, WPARAM wParam, LPARAM lParam) const;

    // The element for whose text this WM_NOTIFY asks, or null when it is another message. Answer lies in `text`.
    const NMTTDISPINFOW* Request(LPARAM lParam) const;
    void Answer(LPARAM lParam, const std::string& text);

private:
    TTTOOLINFOW Tool(size_t element) const;

    HWND window_ = nullptr, tips_ = nullptr;
    std::wstring answer_;  // must outlive the message
};

}  // namespace hullrider
