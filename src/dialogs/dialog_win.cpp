#include "dialogs/dialog_win.h"

#include <algorithm>
#include <exception>
#include <utility>

#include "dialogs/table_win.h"
#include "platform/console.h"
#include "platform/message_box.h"
#include "platform/text_win.h"
#include "platform/window_class_win.h"

namespace hullrider {

namespace {

constexpr UINT_PTR kRefreshTimer = 1;
constexpr UINT kRefreshMs = 500;
constexpr int kLeastColumn = 40, kTableCutStep = 10, kMostTableCut = 300;  // units
constexpr DWORD kFixedStyle = WS_OVERLAPPED | WS_CAPTION | WS_SYSMENU | WS_MINIMIZEBOX;
constexpr DWORD kGrowingStyle = kFixedStyle | WS_THICKFRAME | WS_MAXIMIZEBOX;

// The system's font for message boxes and dialogs.
HFONT MakeFont(int dpi, int percent, LONG weight) {
    NONCLIENTMETRICSW metrics{};
    metrics.cbSize = sizeof metrics;
    SystemParametersInfoForDpi(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0, static_cast<UINT>(dpi));
    LOGFONTW font = metrics.lfMessageFont;
    font.lfHeight = font.lfHeight * percent / 100;
    if (weight != 0) font.lfWeight = weight;
    return CreateFontIndirectW(&font);
}

Dialog* DialogOf(HWND window) {
    return reinterpret_cast<Dialog*>(GetWindowLongPtrW(window, GWLP_USERDATA));
}

// Prints exceptions, which must not unwind through the system's frames.
template <typename Call>
LRESULT Guarded(const Call& call) {
    try {
        return call();
    } catch (const std::exception& failure) {
        PrintErrorLine(failure.what());
        return 0;
    }
}

// Paints off screen and copies the result, so that nothing flickers.
void PaintBuffered(HDC dc, const RECT& box, const std::function<void(HDC, const RECT&)>& paint) {
    const int width = box.right - box.left, height = box.bottom - box.top;
    const HDC memory = CreateCompatibleDC(dc);
    const HBITMAP bitmap = CreateCompatibleBitmap(dc, width, height);
    const HGDIOBJ before = SelectObject(memory, bitmap);
    const RECT inner{0, 0, width, height};
    FillRect(memory, &inner, GetSysColorBrush(COLOR_BTNFACE));
    SetBkMode(memory, TRANSPARENT);
    SetTextColor(memory, GetSysColor(COLOR_BTNTEXT));
    paint(memory, inner);
    BitBlt(dc, box.left, box.top, width, height, memory, 0, 0, SRCCOPY);
    SelectObject(memory, before);
    DeleteObject(bitmap);
    DeleteDC(memory);
}

RECT WorkAreaOf(HWND window) {
    MONITORINFO monitor{};
    monitor.cbSize = sizeof monitor;
    GetMonitorInfoW(MonitorFromWindow(window, MONITOR_DEFAULTTONEAREST), &monitor);
    return monitor.rcWork;
}

int ShowQuestion(HWND window, std::string_view question, UINT buttons) {
    wchar_t title[128] = {};
    GetWindowTextW(window, title, 128);
    const ModalOperation modal;
    return MessageBoxW(window, WideFromUtf8(question).c_str(), title, buttons | MB_ICONQUESTION);
}

}  // namespace

Dialog::~Dialog() {
    if (window_ != nullptr) {
        SetWindowLongPtrW(window_, GWLP_USERDATA, 0);
        DestroyWindow(window_);
    }
    DeleteObject(font_);
    DeleteObject(headingFont_);
}

bool Dialog::Open(HINSTANCE instance, const char* className, const char* title) {
    instance_ = instance;
    const std::wstring wideClass = WideFromUtf8(className);
    if (!RegisterWindowClass(instance, wideClass.c_str(), WindowProcedure, COLOR_BTNFACE)) return false;
    window_ = CreateWindowExW(WS_EX_CONTROLPARENT, wideClass.c_str(), WideFromUtf8(title).c_str(),
                              kFixedStyle | WS_CLIPCHILDREN, CW_USEDEFAULT, 0, CW_USEDEFAULT, 0, nullptr, nullptr,
                              instance, nullptr);
    if (window_ == nullptr) return false;
    TakeScale(static_cast<int>(GetDpiForWindow(window_)));
    form_ = MakeForm();
    MeasureToFit();
    SetWindowLongPtrW(window_, GWL_STYLE, GetWindowLongPtrW(window_, GWL_STYLE) | static_cast<LONG_PTR>(Style()));
    TakeRoomOnScreen();
    SetWindowLongPtrW(window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    PlaceControls();
    RefreshAll();
    SetTimer(window_, kRefreshTimer, kRefreshMs, nullptr);
    ShowWindow(window_, SW_SHOWNORMAL);
    SetForegroundWindow(window_);
    return true;
}

LRESULT CALLBACK Dialog::WindowProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    Dialog* const self = DialogOf(window);
    if (self == nullptr) return DefWindowProcW(window, message, wParam, lParam);
    return Guarded([&] { return self->OnMessage(message, wParam, lParam); });
}

LRESULT Dialog::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_COMMAND:
            OnCommand(LOWORD(wParam), HIWORD(wParam));
            return 0;
        case WM_NOTIFY:
            return OnNotice(*reinterpret_cast<const NMHDR*>(lParam));
        case WM_HSCROLL:
            if (Control* const slider = Find(reinterpret_cast<HWND>(lParam)); slider != nullptr && slider->onChange) {
                slider->onChange();
            }
            return 0;
        case WM_DRAWITEM:
            Paint(*reinterpret_cast<const DRAWITEMSTRUCT*>(lParam));
            return TRUE;
        case WM_TIMER:
            if (IsIconic(window_) == 0) RefreshAll();
            return 0;
        case WM_ACTIVATE:
            OnActivate(LOWORD(wParam) != WA_INACTIVE);
            return 0;
        case WM_SETFOCUS:
            SetFocus(FocusTarget());
            return 0;
        default:
            return OnPlaceOrEnd(message, wParam, lParam);
    }
}

// The system restores the focus only in dialogs of its own class.
void Dialog::OnActivate(bool isActive) {
    if (isActive) {
        SetFocus(FocusTarget());
        RefreshAll();
        return;
    }
    const HWND focus = GetFocus();
    if (focus != nullptr && IsChild(window_, focus) != 0) lastFocus_ = focus;
}

void Dialog::RefreshAll() {
    Refresh();
    FitTables();
}

// A scroll bar comes and goes with the rows, and takes its width from the columns.
void Dialog::FitTables() {
    for (Control& control : controls_) {
        if (control.growingColumns.empty()) continue;
        RECT client;
        GetClientRect(control.window, &client);
        if (client.right == control.fittedWidth) continue;
        control.fittedWidth = static_cast<int>(client.right);
        FitColumns(control.window, control.growingColumns, Pixels(kLeastColumn));
    }
}

// A question may be open when the program ends, which then closes the window without another one.
LRESULT Dialog::Close(bool isAsked) {
    if (isAsked) {
        if (isAsking_) return 0;
        isAsking_ = true;
        const HWND window = window_;
        const bool mayClose = MayClose();
        if (IsWindow(window) == 0) return 0;
        isAsking_ = false;
        if (!mayClose) return 0;
    }
    OnClose();
    DestroyWindow(window_);
    return 0;
}

LRESULT Dialog::OnPlaceOrEnd(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_SIZE:
            if (wParam != SIZE_MINIMIZED) PlaceControls();
            return 0;
        case WM_GETMINMAXINFO: {
            const SIZE least = OuterSize();
            reinterpret_cast<MINMAXINFO*>(lParam)->ptMinTrackSize = {least.cx, least.cy};
            return 0;
        }
        case WM_DPICHANGED:
            FollowDpi(LOWORD(wParam), *reinterpret_cast<const RECT*>(lParam));
            return 0;
        case WM_CLOSE:
            return Close(true);
        case WM_NCDESTROY:
            SetWindowLongPtrW(window_, GWLP_USERDATA, 0);
            window_ = nullptr;
            delete this;
            return 0;
        default:
            return DefWindowProcW(window_, message, wParam, lParam);
    }
}

void Dialog::OnCommand(int id, UINT code) {
    if (id == IDCANCEL) {
        PostMessageW(window_, WM_CLOSE, 0, 0);
        return;
    }
    const HWND window = GetDlgItem(window_, id);
    const Control* const control = window == nullptr ? nullptr : Find(window);
    if (control == nullptr) return;
    // Copied: the call may close the window and destroy its controls.
    const Procedure procedure = code == BN_CLICKED                             ? control->onClick
                                : code == EN_CHANGE || code == CBN_SELCHANGE   ? control->onChange
                                : code == EN_KILLFOCUS || code == BN_KILLFOCUS ? control->onLeave
                                                                               : Procedure();
    if (procedure) procedure();
}

LRESULT Dialog::OnNotice(const NMHDR& notice) {
    const Control* const control = Find(notice.hwndFrom);
    if (control == nullptr) return 0;
    LRESULT answer = 0;
    if (notice.code == NM_CUSTOMDRAW && !control->growingColumns.empty()) {
        answer = ColorSelection(reinterpret_cast<NMLVCUSTOMDRAW&>(const_cast<NMHDR&>(notice)));
    }
    const NoticeHandler handler = control->onNotice;
    return handler ? handler(notice) | answer : answer;
}

void Dialog::Paint(const DRAWITEMSTRUCT& item) {
    const Control* const canvas = Find(item.hwndItem);
    if (canvas == nullptr || !canvas->paint || item.rcItem.right <= item.rcItem.left) return;
    const HGDIOBJ before = SelectObject(item.hDC, font_);
    PaintBuffered(item.hDC, item.rcItem, [&](HDC dc, const RECT& box) {
        const HGDIOBJ other = SelectObject(dc, font_);
        canvas->paint(dc, box);
        SelectObject(dc, other);
    });
    SelectObject(item.hDC, before);
}

bool Dialog::Confirm(std::string_view question) const {
    const HWND window = window_;
    return ShowQuestion(window, question, MB_YESNO | MB_DEFBUTTON2) == IDYES && IsWindow(window) != 0;
}

Dialog::Answer Dialog::Ask(std::string_view question) const {
    const HWND window = window_;
    const int answer = ShowQuestion(window, question, MB_YESNOCANCEL);
    if (IsWindow(window) == 0) return Answer::kCancel;
    return answer == IDYES ? Answer::kYes : answer == IDNO ? Answer::kNo : Answer::kCancel;
}

// The control that had the focus last, if it can still have it.
HWND Dialog::FocusTarget() const {
    const LONG_PTR style = IsChild(window_, lastFocus_) != 0 ? GetWindowLongPtrW(lastFocus_, GWL_STYLE) : 0;
    const bool canHaveFocus = (style & (WS_VISIBLE | WS_DISABLED)) == WS_VISIBLE;
    return canHaveFocus ? lastFocus_ : GetNextDlgTabItem(window_, nullptr, FALSE);
}

int Dialog::Pixels(int units) const {
    return MulDiv(units, dpi_, USER_DEFAULT_SCREEN_DPI);
}

int Dialog::Units(int pixels) const {
    return (pixels * USER_DEFAULT_SCREEN_DPI + dpi_ - 1) / dpi_;
}

// The old fonts are freed once no control uses them.
void Dialog::TakeScale(int dpi) {
    for (const Control& control : controls_) {
        if (!control.growingColumns.empty()) ScaleColumns(control.window, dpi, dpi_);
    }
    dpi_ = dpi;
    const HFONT oldFont = font_, oldHeading = headingFont_;
    font_ = MakeFont(dpi, 100, 0);
    headingFont_ = MakeFont(dpi, 130, FW_SEMIBOLD);
    for (const Control& control : controls_) {
        const HFONT font = control.isHeading ? headingFont_ : font_;
        SendMessageW(control.window, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
    }
    DeleteObject(oldFont);
    DeleteObject(oldHeading);
}

FormSize Dialog::ClientSize() const {
    const FormSize size = SizeOfForm(form_, [this](void* control) { return SizeOf(control); });
    return {size.width + 2 * kMargin, size.height + 2 * kMargin};
}

DWORD Dialog::Style() const {
    return (GrowsHigh(form_) ? kGrowingStyle : kFixedStyle) | WS_CLIPCHILDREN;
}

void Dialog::PlaceControls() {
    RECT client;
    GetClientRect(window_, &client);
    const FormSize least = ClientSize();
    const auto inner = [this](LONG pixels, int units) {
        return std::max(MulDiv(pixels, USER_DEFAULT_SCREEN_DPI, dpi_), units) - 2 * kMargin;
    };
    const FormBox box{kMargin, kMargin, inner(client.right, least.width), inner(client.bottom, least.height)};
    const auto place = [this](void* handle, const FormBox& where) {
        const Control& control = *Find(static_cast<HWND>(handle));
        const int left = Pixels(where.x), top = Pixels(where.y);
        SetWindowPos(control.window, nullptr, left, top, Pixels(where.x + where.width) - left,
                     Pixels(where.y + where.height + control.listHeight) - top, SWP_NOZORDER | SWP_NOACTIVATE);
    };
    PlaceForm(
        form_, box, [this](void* control) { return SizeOf(control); }, place);
    FitTables();
    InvalidateRect(window_, nullptr, TRUE);
}

void Dialog::FollowDpi(int dpi, const RECT& proposed) {
    TakeScale(dpi);
    MeasureToFit();
    SetWindowPos(window_, nullptr, proposed.left, proposed.top, proposed.right - proposed.left,
                 proposed.bottom - proposed.top, SWP_NOZORDER | SWP_NOACTIVATE);
    PlaceControls();
}

// Tables give up height that the monitor does not have.
void Dialog::MeasureToFit() {
    const RECT work = WorkAreaOf(window_);
    for (tableCut_ = 0;; tableCut_ += kTableCutStep) {
        MeasureControls();
        if (OuterSize().cy <= work.bottom - work.top || tableCut_ >= kMostTableCut) return;
    }
}

// The system has chosen a place without knowing the window's size: moves the window into the monitor's work area.
void Dialog::TakeRoomOnScreen() const {
    const SIZE outer = OuterSize();
    RECT box;
    GetWindowRect(window_, &box);
    const RECT work = WorkAreaOf(window_);
    const LONG left = std::max(work.left, std::min(box.left, work.right - outer.cx));
    const LONG top = std::max(work.top, std::min(box.top, work.bottom - outer.cy));
    SetWindowPos(window_, nullptr, left, top, outer.cx, outer.cy, SWP_NOZORDER | SWP_NOACTIVATE | SWP_FRAMECHANGED);
}

SIZE Dialog::OuterSize() const {
    const FormSize size = ClientSize();
    RECT outer{0, 0, Pixels(size.width), Pixels(size.height)};
    AdjustWindowRectExForDpi(&outer, Style(), FALSE, WS_EX_CONTROLPARENT, static_cast<UINT>(dpi_));
    return {outer.right - outer.left, outer.bottom - outer.top};
}

const Dialog::Control* Dialog::Find(HWND control) const {
    const auto found = std::find_if(controls_.begin(), controls_.end(),
                                    [control](const Control& one) { return one.window == control; });
    return found == controls_.end() ? nullptr : &*found;
}

Dialog::Control* Dialog::Find(HWND control) {
    return const_cast<Control*>(std::as_const(*this).Find(control));
}

bool IsDialog(HWND window) {
    return reinterpret_cast<WNDPROC>(GetWindowLongPtrW(window, GWLP_WNDPROC)) == Dialog::WindowProcedure;
}

void CloseUnasked(HWND dialog) {
    if (Dialog* const self = DialogOf(dialog)) Guarded([self] { return self->Close(false); });
}

bool TranslateDialogMessage(MSG& message) {
    if (message.hwnd == nullptr) return false;
    const HWND root = GetAncestor(message.hwnd, GA_ROOT);
    if (!IsDialog(root)) return false;
    Dialog* const dialog = DialogOf(root);
    const bool isKey = message.message == WM_KEYDOWN || message.message == WM_SYSKEYDOWN;
    constexpr LPARAM kWasDown = 1 << 30;
    if (isKey && dialog != nullptr) {
        const bool isRepeated = dialog->keyIsRepeated_ = (message.lParam & kWasDown) != 0;
        if (Guarded([&] { return LRESULT{dialog->OnKey(message.wParam) ? 1 : 0}; }) != 0) return true;
        // Holding Enter presses a button only once.
        if (message.wParam == VK_RETURN && isRepeated) return true;
    }
    return IsDialogMessageW(root, &message) != 0;
}

}  // namespace hullrider
