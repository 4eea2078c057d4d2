#include "display/panel_tooltips_win.h"

#include "platform/text_win.h"

namespace hullrider {

void PanelTooltips::Create(HWND window) {
    window_ = window;
    tips_ =
        CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr, WS_POPUP | TTS_ALWAYSTIP | TTS_NOPREFIX, CW_USEDEFAULT,
                        CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, window, nullptr, nullptr, nullptr);
    for (size_t i = 0; i < kElementCount; ++i) {
        if (CommandOf(static_cast<PanelElement>(i)) == 0) continue;
        TTTOOLINFOW tool = Tool(i);
        SendMessageW(tips_, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
    }
}

void PanelTooltips::Destroy() {
    if (tips_ != nullptr && IsWindow(tips_) != 0) DestroyWindow(tips_);
    tips_ = nullptr;
}

void PanelTooltips::Place(const PanelScale& scale) {
    for (size_t i = 0; i < kElementCount; ++i) {
        if (CommandOf(static_cast<PanelElement>(i)) == 0) continue;
        const PixelBox box = scale.ToPixels(BoxOf(static_cast<PanelElement>(i)));
        TTTOOLINFOW tool = Tool(i);
        tool.rect = {box.x, box.y, box.x + box.width, box.y + box.height};
        SendMessageW(tips_, TTM_NEWTOOLRECTW, 0, reinterpret_cast<LPARAM>(&tool));
    }
}

void PanelTooltips::Renew(PanelElement element) const {
    TTTOOLINFOW tool = Tool(IndexOf(element));
    SendMessageW(tips_, TTM_UPDATETIPTEXTW, 0, reinterpret_cast<LPARAM>(&tool));
}

void PanelTooltips::Relay(UINT message, WPARAM wParam, LPARAM lParam) const {
    MSG relayed{};
    relayed.hwnd = window_;
    relayed.message = message;
    relayed.wParam = wParam;
    relayed.lParam = lParam;
    SendMessageW(tips_, TTM_RELAYEVENT, 0, reinterpret_cast<LPARAM>(&relayed));
}

const NMTTDISPINFOW* PanelTooltips::Request(LPARAM lParam) const {
    const auto* const notice = reinterpret_cast<const NMTTDISPINFOW*>(lParam);
    const bool asks = tips_ != nullptr && notice->hdr.hwndFrom == tips_ && notice->hdr.code == TTN_GETDISPINFOW;
    return asks && notice->hdr.idFrom < kElementCount ? notice : nullptr;
}

void PanelTooltips::Answer(LPARAM lParam, const std::string& text) {
    answer_ = WideFromUtf8(text);
    reinterpret_cast<NMTTDISPINFOW*>(lParam)->lpszText = answer_.data();
}

TTTOOLINFOW PanelTooltips::Tool(size_t element) const {
    TTTOOLINFOW tool{};
    tool.cbSize = TTTOOLINFOW_V2_SIZE;
    tool.hwnd = window_;
    tool.uId = element;
    tool.lpszText = LPSTR_TEXTCALLBACKW;
    return tool;
}

}  // namespace hullrider
