#include "dialogs/dialog_win.h"

#include <algorithm>
#include <exception>

#include "platform/console.h"
#include "platform/text_win.h"
#include "platform/window_class_win.h"

namespace hullrider {

namespace {

constexpr UINT_PTR kRefreshTimer = 1;
constexpr UINT kRefreshMs = 500;
constexpr int kFirstId = 100;  // below are the system's own: Enter, Escape
constexpr DWORD kFixedStyle = WS_OVERLAPPED | WS_CAPTION | WS_SYSMENU | WS_MINIMIZEBOX;
constexpr DWORD kGrowingStyle = kFixedStyle | WS_THICKFRAME | WS_MAXIMIZEBOX;

// The font that the system uses for message boxes, which is what its own dialogs are set in.
HFONT MakeFont(int dpi, int percent, LONG weight) {
    NONCLIENTMETRICSW metrics{};
    metrics.cbSize = sizeof metrics;
    SystemParametersInfoForDpi(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0, static_cast<UINT>(dpi));
    LOGFONTW font = metrics.lfMessageFont;
    font.lfHeight = font.lfHeight * percent / 100;
    if (weight != 0) font.lfWeight = weight;
    return CreateFontIndirectW(&font);
}

int CountColumns(HWND table) {
    const auto header = reinterpret_cast<HWND>(SendMessageW(table, LVM_GETHEADER, 0, 0));
    return static_cast<int>(SendMessageW(header, HDM_GETITEMCOUNT, 0, 0));
}

int WidthOfColumn(HWND table, int column) {
    return static_cast<int>(SendMessageW(table, LVM_GETCOLUMNWIDTH, static_cast<WPARAM>(column), 0));
}

void SetColumnWidth(HWND table, int column, int width) {
    SendMessageW(table, LVM_SETCOLUMNWIDTH, static_cast<WPARAM>(column), MAKELPARAM(width, 0));
}

void ScaleColumns(HWND table, int dpi, int dpiBefore) {
    for (int i = 0; i < CountColumns(table); ++i) {
        SetColumnWidth(table, i, MulDiv(WidthOfColumn(table, i), dpi, dpiBefore));
    }
}

// The first column takes what the others leave, with room for the scroll bar that may come.
void FitFirstColumn(HWND table, int least) {
    RECT box;
    GetWindowRect(table, &box);
    const auto dpi = GetDpiForWindow(table);
    int left =
        box.right - box.left - GetSystemMetricsForDpi(SM_CXVSCROLL, dpi) - 2 * GetSystemMetricsForDpi(SM_CXEDGE, dpi);
    for (int i = 1; i < CountColumns(table); ++i) left -= WidthOfColumn(table, i);
    SetColumnWidth(table, 0, std::max(left, least));
}

Dialog* DialogOf(HWND window) {
    return reinterpret_cast<Dialog*>(GetWindowLongPtrW(window, GWLP_USERDATA));
}

// The same picture drawn beside the screen and copied over at once.
void PaintBuffered(HDC dc, const RECT& box, const std::function<void(HDC, const RECT&)>& paint) {
    const int width = box.right - box.left, height = box.bottom - box.top;
    const HDC memory = CreateCompatibleDC(dc);
    const HBITMAP bitmap = CreateCompatibleBitmap(dc, width, height);
    const HGDIOBJ before = SelectObject(memory, bitmap);
    const RECT inner{0, 0, width, height};
    FillRect(memory, &inner, GetSysColorBrush(COLOR_BTNFACE));
    SetBkMode(memory, TRANSPARENT);
    paint(memory, inner);
    BitBlt(dc, box.left, box.top, width, height, memory, 0, 0, SRCCOPY);
    SelectObject(memory, before);
    DeleteObject(bitmap);
    DeleteDC(memory);
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
                              (ClientSize().canGrow ? kGrowingStyle : kFixedStyle) | WS_CLIPCHILDREN, CW_USEDEFAULT, 0,
                              CW_USEDEFAULT, 0, nullptr, nullptr, instance, nullptr);
    if (window_ == nullptr) return false;
    TakeScale(static_cast<int>(GetDpiForWindow(window_)));
    const SIZE outer = OuterSize();
    SetWindowPos(window_, nullptr, 0, 0, outer.cx, outer.cy, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    AddControls();
    SetWindowLongPtrW(window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    PlaceControls();
    Refresh();
    SetTimer(window_, kRefreshTimer, kRefreshMs, nullptr);
    lastFocus_ = GetNextDlgTabItem(window_, nullptr, FALSE);
    ShowWindow(window_, SW_SHOWNORMAL);
    SetForegroundWindow(window_);
    return true;
}

LRESULT CALLBACK Dialog::WindowProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    Dialog* const self = DialogOf(window);
    if (self == nullptr) return DefWindowProcW(window, message, wParam, lParam);
    try {
        return self->OnMessage(message, wParam, lParam);
    } catch (const std::exception& failure) {
        PrintErrorLine(failure.what());  // it must not pass through the system's own frames
        return 0;
    }
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
            if (IsIconic(window_) == 0) Refresh();
            return 0;
        case WM_ACTIVATE:
            // A window of its own class has to remember its focus itself.
            if (LOWORD(wParam) == WA_INACTIVE) {
                const HWND focus = GetFocus();
                if (focus != nullptr && IsChild(window_, focus) != 0) lastFocus_ = focus;
            } else {
                SetFocus(lastFocus_);
                Refresh();
            }
            return 0;
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
            OnClose();
            DestroyWindow(window_);
            return 0;
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
    // Copied: what is called may close the window and so its controls.
    const Procedure procedure = code == BN_CLICKED                             ? control->onClick
                                : code == EN_CHANGE || code == CBN_SELCHANGE   ? control->onChange
                                : code == EN_KILLFOCUS || code == BN_KILLFOCUS ? control->onLeave
                                                                               : Procedure();
    if (procedure) procedure();
}

LRESULT Dialog::OnNotice(const NMHDR& notice) {
    const Control* const control = Find(notice.hwndFrom);
    if (control == nullptr || !control->onNotice) return 0;
    const NoticeHandler handler = control->onNotice;
    return handler(notice);
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

HWND Dialog::AddControl(const Place& place, const wchar_t* className, std::string_view text, DWORD style,
                        DWORD extended) {
    const auto id = static_cast<INT_PTR>(kFirstId + controls_.size());
    const HWND control = CreateWindowExW(extended, className, WideFromUtf8(text).c_str(), WS_CHILD | WS_VISIBLE | style,
                                         0, 0, 0, 0, window_, reinterpret_cast<HMENU>(id), instance_, nullptr);
    SendMessageW(control, WM_SETFONT, reinterpret_cast<WPARAM>(font_), FALSE);
    controls_.push_back({});
    Last().window = control;
    Last().place = place;
    return control;
}

HWND Dialog::AddLabel(const Place& place, std::string_view text, DWORD style) {
    return AddControl(place, L"STATIC", text, style);
}

HWND Dialog::AddButton(const Place& place, std::string_view text, Procedure onClick) {
    const HWND button = AddControl(place, L"BUTTON", text, WS_TABSTOP | BS_PUSHBUTTON);
    Last().onClick = std::move(onClick);
    return button;
}

HWND Dialog::AddFieldButton(const Place& place, std::string_view text, Procedure onClick, Procedure onLeave) {
    const HWND button = AddControl(place, L"BUTTON", text, WS_TABSTOP | BS_PUSHBUTTON | BS_NOTIFY);
    Last().onClick = std::move(onClick);
    Last().onLeave = std::move(onLeave);
    return button;
}

HWND Dialog::AddCheckBox(const Place& place, std::string_view text, bool isChecked, Procedure onClick) {
    const HWND box = AddControl(place, L"BUTTON", text, WS_TABSTOP | BS_AUTOCHECKBOX);
    SetChecked(box, isChecked);
    Last().onClick = std::move(onClick);
    return box;
}

HWND Dialog::AddEdit(const Place& place, DWORD style, Procedure onChange, Procedure onLeave) {
    const HWND edit = AddControl(place, L"EDIT", "", WS_TABSTOP | ES_AUTOHSCROLL | style, WS_EX_CLIENTEDGE);
    Last().onChange = std::move(onChange);
    Last().onLeave = std::move(onLeave);
    return edit;
}

HWND Dialog::AddNumber(const Place& place, int lowest, int highest, Procedure onChange, Procedure onLeave) {
    constexpr int kArrowWidth = 18;
    Place field = place, arrows = place;
    field.width -= kArrowWidth;
    arrows.x += field.width;
    arrows.width = kArrowWidth;
    const HWND edit = AddEdit(field, 0, std::move(onChange), std::move(onLeave));
    const HWND upDown = AddControl(arrows, UPDOWN_CLASSW, "", UDS_SETBUDDYINT | UDS_ARROWKEYS | UDS_NOTHOUSANDS);
    SendMessageW(upDown, UDM_SETRANGE32, static_cast<WPARAM>(lowest), highest);
    SendMessageW(upDown, UDM_SETBUDDY, reinterpret_cast<WPARAM>(edit), 0);
    return edit;
}

HWND Dialog::AddChoice(const Place& place, Procedure onChange) {
    constexpr int kListHeight = 240;
    Place open = place;  // what the system calls its height is that with the list
    open.height += kListHeight;
    const HWND choice = AddControl(open, L"COMBOBOX", "", WS_TABSTOP | WS_VSCROLL | CBS_DROPDOWNLIST);
    Last().onChange = std::move(onChange);
    return choice;
}

HWND Dialog::AddSlider(const Place& place, int lowest, int highest, int at, Procedure onChange) {
    const HWND slider = AddControl(place, TRACKBAR_CLASSW, "", WS_TABSTOP | TBS_HORZ | TBS_NOTICKS);
    SendMessageW(slider, TBM_SETRANGEMIN, FALSE, lowest);
    SendMessageW(slider, TBM_SETRANGEMAX, FALSE, highest);
    SendMessageW(slider, TBM_SETPAGESIZE, 0, std::max(1, (highest - lowest) / 10));
    SendMessageW(slider, TBM_SETPOS, TRUE, at);
    Last().onChange = std::move(onChange);
    return slider;
}

HWND Dialog::AddTabs(const Place& place, const std::vector<std::string>& names, std::function<void(int)> onSelect) {
    const HWND tabs = AddControl(place, WC_TABCONTROLW, "", WS_TABSTOP | WS_CLIPSIBLINGS);
    for (size_t i = 0; i < names.size(); ++i) {
        std::wstring name = WideFromUtf8(names[i]);
        TCITEMW item{};
        item.mask = TCIF_TEXT;
        item.pszText = name.data();
        SendMessageW(tabs, TCM_INSERTITEMW, i, reinterpret_cast<LPARAM>(&item));
    }
    Last().onNotice = [tabs, onSelect = std::move(onSelect)](const NMHDR& notice) {
        if (notice.code == TCN_SELCHANGE) onSelect(static_cast<int>(SendMessageW(tabs, TCM_GETCURSEL, 0, 0)));
        return LRESULT{0};
    };
    return tabs;
}

HWND Dialog::AddTable(const Place& place, const std::vector<std::pair<std::string, int>>& columns,
                      NoticeHandler onNotice, DWORD style) {
    const HWND table = AddControl(
        place, WC_LISTVIEWW, "", WS_TABSTOP | LVS_REPORT | LVS_SINGLESEL | LVS_SHOWSELALWAYS | style, WS_EX_CLIENTEDGE);
    Last().isTable = true;
    SendMessageW(table, LVM_SETEXTENDEDLISTVIEWSTYLE, 0, LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER | LVS_EX_INFOTIP);
    for (size_t i = 0; i < columns.size(); ++i) {
        std::wstring heading = WideFromUtf8(columns[i].first);
        LVCOLUMNW column{};
        column.mask = LVCF_TEXT | LVCF_WIDTH | LVCF_SUBITEM;
        column.pszText = heading.data();
        column.cx = Pixels(columns[i].second);
        column.iSubItem = static_cast<int>(i);
        SendMessageW(table, LVM_INSERTCOLUMNW, i, reinterpret_cast<LPARAM>(&column));
    }
    Last().onNotice = std::move(onNotice);
    return table;
}

HWND Dialog::AddProgressBar(const Place& place) {
    return AddControl(place, PROGRESS_CLASSW, "", 0);
}

HWND Dialog::AddIcon(const Place& place) {
    const HWND icon = AddControl(place, L"STATIC", "", SS_ICON);
    SendMessageW(icon, STM_SETICON, static_cast<WPARAM>(GetClassLongPtrW(window_, GCLP_HICON)), 0);
    return icon;
}

HWND Dialog::AddCanvas(const Place& place, Painter paint) {
    const HWND canvas = AddControl(place, L"STATIC", "", SS_OWNERDRAW);
    Last().paint = std::move(paint);
    return canvas;
}

void Dialog::UseHeadingFont(HWND control) {
    if (Control* const found = Find(control)) found->isHeading = true;
    SendMessageW(control, WM_SETFONT, reinterpret_cast<WPARAM>(headingFont_), FALSE);
}

bool Dialog::Confirm(std::string_view question) const {
    const HWND window = window_;
    wchar_t title[128] = {};
    GetWindowTextW(window, title, 128);
    const int answer =
        MessageBoxW(window, WideFromUtf8(question).c_str(), title, MB_YESNO | MB_ICONQUESTION | MB_DEFBUTTON2);
    return answer == IDYES && IsWindow(window) != 0;
}

void Dialog::ShowControls(size_t from, size_t to, bool isShown) const {
    for (size_t i = from; i < to; ++i) ShowWindow(controls_[i].window, isShown ? SW_SHOW : SW_HIDE);
}

int Dialog::Pixels(int units) const {
    return MulDiv(units, dpi_, USER_DEFAULT_SCREEN_DPI);
}

// The fonts of before are let go when no control uses them any more.
void Dialog::TakeScale(int dpi) {
    for (const Control& control : controls_) {
        if (control.isTable) ScaleColumns(control.window, dpi, dpi_);
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

void Dialog::PlaceControls() {
    RECT client;
    GetClientRect(window_, &client);
    const Size size = ClientSize();
    const int wider = std::max(0, static_cast<int>(client.right) - Pixels(size.width));
    const int higher = std::max(0, static_cast<int>(client.bottom) - Pixels(size.height));
    for (const Control& control : controls_) {
        const Place& place = control.place;
        const auto share = [&](Follow follow, int growth) { return (place.follow & follow) != 0 ? growth : 0; };
        SetWindowPos(control.window, nullptr, Pixels(place.x) + share(kMoveRight, wider),
                     Pixels(place.y) + share(kMoveDown, higher), Pixels(place.width) + share(kGrowWide, wider),
                     Pixels(place.height) + share(kGrowHigh, higher), SWP_NOZORDER | SWP_NOACTIVATE);
        if (control.isTable) FitFirstColumn(control.window, Pixels(80));
    }
    InvalidateRect(window_, nullptr, TRUE);
}

void Dialog::FollowDpi(int dpi, const RECT& proposed) {
    TakeScale(dpi);
    SetWindowPos(window_, nullptr, proposed.left, proposed.top, proposed.right - proposed.left,
                 proposed.bottom - proposed.top, SWP_NOZORDER | SWP_NOACTIVATE);
    PlaceControls();
}

SIZE Dialog::OuterSize() const {
    const Size size = ClientSize();
    RECT outer{0, 0, Pixels(size.width), Pixels(size.height)};
    AdjustWindowRectExForDpi(&outer, size.canGrow ? kGrowingStyle : kFixedStyle, FALSE, WS_EX_CONTROLPARENT,
                             static_cast<UINT>(dpi_));
    return {outer.right - outer.left, outer.bottom - outer.top};
}

Dialog::Control* Dialog::Find(HWND control) {
    const auto found = std::find_if(controls_.begin(), controls_.end(),
                                    [control](const Control& one) { return one.window == control; });
    return found == controls_.end() ? nullptr : &*found;
}

bool IsDialog(HWND window) {
    return reinterpret_cast<WNDPROC>(GetWindowLongPtrW(window, GWLP_WNDPROC)) == Dialog::WindowProcedure;
}

bool TranslateDialogMessage(MSG& message) {
    if (message.hwnd == nullptr) return false;
    const HWND root = GetAncestor(message.hwnd, GA_ROOT);
    if (!IsDialog(root)) return false;
    Dialog* const dialog = DialogOf(root);
    const bool isKey = message.message == WM_KEYDOWN || message.message == WM_SYSKEYDOWN;
    constexpr LPARAM kWasDown = 1 << 30;
    if (dialog != nullptr) dialog->keyIsRepeated_ = (message.lParam & kWasDown) != 0;
    if (isKey && dialog != nullptr && dialog->OnKey(message.wParam)) return true;
    return IsDialogMessageW(root, &message) != 0;
}

void SetText(HWND control, std::string_view text) {
    if (TextOf(control) != text) SetWindowTextW(control, WideFromUtf8(text).c_str());
}

std::string TextOf(HWND control) {
    std::wstring text(static_cast<size_t>(GetWindowTextLengthW(control)), L'\0');
    const int length = GetWindowTextW(control, text.data(), static_cast<int>(text.size()) + 1);
    text.resize(static_cast<size_t>(length));
    return Utf8FromWide(text);
}

void SetChecked(HWND checkBox, bool isChecked) {
    SendMessageW(checkBox, BM_SETCHECK, isChecked ? BST_CHECKED : BST_UNCHECKED, 0);
}

bool IsChecked(HWND checkBox) {
    return SendMessageW(checkBox, BM_GETCHECK, 0, 0) == BST_CHECKED;
}

}  // namespace hullrider
