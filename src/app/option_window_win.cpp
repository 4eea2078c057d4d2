#include "app/option_window_win.h"

#include <string>

#include "app/options.h"
#include "platform/console.h"
#include "platform/text_win.h"

namespace hullrider {

namespace {

constexpr int kIconResource = 32512;
constexpr int kWidth = 420, kHeight = 120;  // of the client area at 96 dots an inch
constexpr int kUsualDpi = 96;

std::wstring TextOf(HWND window) {
    wchar_t title[128] = {};
    GetWindowTextW(window, title, 128);
    const std::wstring name = title;
    if (name.starts_with(L"About")) return WideFromUtf8(VersionText());
    return name + L": still to come. MusicSettings.json holds the settings.";
}

void Paint(HWND window) {
    PAINTSTRUCT paint;
    const HDC dc = BeginPaint(window, &paint);
    const HGDIOBJ before = SelectObject(dc, GetStockObject(DEFAULT_GUI_FONT));
    SetBkMode(dc, TRANSPARENT);
    SetTextColor(dc, GetSysColor(COLOR_WINDOWTEXT));
    RECT client;
    GetClientRect(window, &client);
    const std::wstring text = TextOf(window);
    DrawTextW(dc, text.c_str(), static_cast<int>(text.size()), &client, DT_CENTER | DT_VCENTER | DT_SINGLELINE);
    SelectObject(dc, before);
    EndPaint(window, &paint);
}

LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_PAINT) {
        Paint(window);
        return 0;
    }
    if (message == WM_KEYDOWN && wParam == VK_ESCAPE) {
        DestroyWindow(window);
        return 0;
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

void RegisterOnce(HINSTANCE instance, const wchar_t* className) {
    WNDCLASSEXW windowClass{};
    windowClass.cbSize = sizeof windowClass;
    if (GetClassInfoExW(instance, className, &windowClass) != 0) return;
    windowClass.cbSize = sizeof windowClass;
    windowClass.style = CS_HREDRAW | CS_VREDRAW;
    windowClass.lpfnWndProc = Procedure;
    windowClass.hInstance = instance;
    windowClass.hIcon = windowClass.hIconSm = LoadIconW(instance, MAKEINTRESOURCEW(kIconResource));
    windowClass.hCursor = LoadCursorW(nullptr, MAKEINTRESOURCEW(32512));  // the standard arrow
    windowClass.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_WINDOW + 1);
    windowClass.lpszClassName = className;
    RegisterClassExW(&windowClass);
}

}  // namespace

void OpenOptionWindow(HINSTANCE instance, const OptionWindow& window) {
    const std::wstring className = WideFromUtf8(window.className), title = WideFromUtf8(window.title);
    HWND opened = FindWindowExW(nullptr, nullptr, className.c_str(), title.c_str());
    DWORD process = 0;
    if (opened != nullptr) GetWindowThreadProcessId(opened, &process);
    if (process != GetCurrentProcessId()) {
        RegisterOnce(instance, className.c_str());
        constexpr DWORD kStyle = WS_OVERLAPPED | WS_CAPTION | WS_SYSMENU | WS_MINIMIZEBOX;
        const int dpi = static_cast<int>(GetDpiForSystem());
        RECT outer{0, 0, MulDiv(kWidth, dpi, kUsualDpi), MulDiv(kHeight, dpi, kUsualDpi)};
        AdjustWindowRectEx(&outer, kStyle, FALSE, 0);
        opened =
            CreateWindowExW(0, className.c_str(), title.c_str(), kStyle, CW_USEDEFAULT, 0, outer.right - outer.left,
                            outer.bottom - outer.top, nullptr, nullptr, instance, nullptr);
        if (opened == nullptr) return PrintErrorLine("The window could not be created: " + std::string(window.title));
    }
    ShowWindow(opened, SW_SHOWNORMAL);
    SetForegroundWindow(opened);
}

}  // namespace hullrider
