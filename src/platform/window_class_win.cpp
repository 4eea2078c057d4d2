#include "platform/window_class_win.h"

namespace hullrider {

namespace {

constexpr int kIconResource = 32512;
constexpr int kArrowCursor = 32512;

}  // namespace

bool RegisterWindowClass(HINSTANCE instance, const wchar_t* name, WNDPROC procedure, int backgroundColor) {
    WNDCLASSEXW windowClass{};
    windowClass.cbSize = sizeof windowClass;
    if (GetClassInfoExW(instance, name, &windowClass) != 0) return true;
    windowClass.cbSize = sizeof windowClass;
    windowClass.style = CS_HREDRAW | CS_VREDRAW;
    windowClass.lpfnWndProc = procedure;
    windowClass.hInstance = instance;
    windowClass.hIcon = windowClass.hIconSm = LoadIconW(instance, MAKEINTRESOURCEW(kIconResource));
    windowClass.hCursor = LoadCursorW(nullptr, MAKEINTRESOURCEW(kArrowCursor));
    windowClass.hbrBackground = reinterpret_cast<HBRUSH>(static_cast<INT_PTR>(backgroundColor) + 1);
    windowClass.lpszClassName = name;
    return RegisterClassExW(&windowClass) != 0;
}

}  // namespace hullrider
