// The controls of a Dialog, each as the system has it.
#include <algorithm>

#include "dialogs/dialog_win.h"
#include "platform/text_win.h"

namespace hullrider {

namespace {

constexpr int kFirstId = 100;  // below are the system's own: Enter, Escape

}  // namespace

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

NumberControls Dialog::AddNumber(const Place& place, int lowest, int highest, Procedure onChange, Procedure onLeave) {
    constexpr int kArrowWidth = 18;
    Place field = place, arrows = place;
    field.width -= kArrowWidth;
    arrows.x += field.width;
    arrows.width = kArrowWidth;
    const HWND edit = AddEdit(field, 0, std::move(onChange), std::move(onLeave));
    const HWND upDown = AddControl(arrows, UPDOWN_CLASSW, "", UDS_SETBUDDYINT | UDS_ARROWKEYS | UDS_NOTHOUSANDS);
    SendMessageW(upDown, UDM_SETRANGE32, static_cast<WPARAM>(lowest), highest);
    SendMessageW(upDown, UDM_SETBUDDY, reinterpret_cast<WPARAM>(edit), 0);
    return {edit, upDown};
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
    return AddControl(place, PROGRESS_CLASSW, "", PBS_MARQUEE);
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

void Dialog::Enable(HWND control, bool isEnabled, HWND heir) {
    if (!isEnabled && GetFocus() == control) SetFocus(heir);
    EnableWindow(control, isEnabled ? TRUE : FALSE);
}

void Dialog::ShowControls(size_t from, size_t to, bool isShown) const {
    for (size_t i = from; i < to; ++i) ShowWindow(controls_[i].window, isShown ? SW_SHOW : SW_HIDE);
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
