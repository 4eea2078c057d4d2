// The standard controls of a Dialog.
#include <algorithm>

#include "dialogs/dialog_win.h"
#include "platform/text_win.h"

namespace hullrider {

namespace {

constexpr int kFirstId = 100;  // lower ids are the system's: Enter, Escape

// In units of 1/96 inch.
constexpr int kLeastLine = 20, kLeastButton = 96, kButtonPadding = 12, kFieldPadding = 14, kCheckBoxWidth = 22;
constexpr int kMostArrowSteps = 1000, kLeastTable = 72;
constexpr int kArrowWidth = 18, kListHeight = 240, kSliderWidth = 220;

}  // namespace

HWND Dialog::AddControl(const wchar_t* className, std::string_view text, DWORD style, std::function<FormSize()> size,
                        DWORD extended) {
    const auto id = static_cast<INT_PTR>(kFirstId + controls_.size());
    const HWND control = CreateWindowExW(extended, className, WideFromUtf8(text).c_str(), WS_CHILD | WS_VISIBLE | style,
                                         0, 0, 0, 0, window_, reinterpret_cast<HMENU>(id), instance_, nullptr);
    SendMessageW(control, WM_SETFONT, reinterpret_cast<WPARAM>(font_), FALSE);
    controls_.push_back({});
    Last().window = control;
    Last().size = std::move(size);
    return control;
}

HWND Dialog::AddLabel(std::string_view text, DWORD style) {
    return AddControl(L"STATIC", text, style | SS_CENTERIMAGE, [this, text = std::string(text)] {
        return FormSize{TextWidth(text), LineHeight()};
    });
}

HWND Dialog::AddHeading(std::string_view text) {
    const HWND heading =
        AddControl(L"STATIC", text, SS_LEFT, [this, text = std::string(text)] { return TextSize(text, headingFont_); });
    Last().isHeading = true;
    SendMessageW(heading, WM_SETFONT, reinterpret_cast<WPARAM>(headingFont_), FALSE);
    return heading;
}

HWND Dialog::AddParagraph(std::string_view text, int width) {
    return AddControl(L"STATIC", text, SS_LEFT, [this, text = std::string(text), width] {
        return FormSize{width, TextSize(text, font_, width).height};
    });
}

HWND Dialog::AddLine(std::string_view widest) {
    return AddControl(L"STATIC", "", kOneLine | SS_CENTERIMAGE, [this, widest = std::string(widest)] {
        return FormSize{TextWidth(widest), LineHeight()};
    });
}

HWND Dialog::AddButton(std::string_view text, Procedure onClick) {
    const HWND button = AddControl(L"BUTTON", text, WS_TABSTOP | BS_PUSHBUTTON, [this, text = std::string(text)] {
        return FormSize{std::max(TextWidth(text) + 2 * kButtonPadding, kLeastButton), LineHeight() + kGap};
    });
    Last().onClick = std::move(onClick);
    return button;
}

HWND Dialog::AddCloseButton() {
    return AddButton("&Close", [this] { PostMessageW(window_, WM_CLOSE, 0, 0); });
}

HWND Dialog::AddFieldButton(std::string_view widest, Procedure onClick, Procedure onLeave) {
    const HWND button =
        AddControl(L"BUTTON", "", WS_TABSTOP | BS_PUSHBUTTON | BS_NOTIFY, [this, widest = std::string(widest)] {
            return FormSize{TextWidth(widest) + 2 * kButtonPadding, FieldHeight()};
        });
    Last().onClick = std::move(onClick);
    Last().onLeave = std::move(onLeave);
    return button;
}

HWND Dialog::AddCheckBox(std::string_view text, bool isChecked, Procedure onClick) {
    const HWND box = AddControl(L"BUTTON", text, WS_TABSTOP | BS_AUTOCHECKBOX, [this, text = std::string(text)] {
        return FormSize{TextWidth(text) + kCheckBoxWidth, LineHeight()};
    });
    SetChecked(box, isChecked);
    Last().onClick = std::move(onClick);
    return box;
}

HWND Dialog::AddEdit(int width, DWORD style, Procedure onChange, Procedure onLeave) {
    const HWND edit = AddControl(
        L"EDIT", "", WS_TABSTOP | ES_AUTOHSCROLL | style,
        [this, width] {
            return FormSize{width, FieldHeight()};
        },
        WS_EX_CLIENTEDGE);
    Last().onChange = std::move(onChange);
    Last().onLeave = std::move(onLeave);
    return edit;
}

NumberControls Dialog::AddNumber(Procedure onChange, Procedure onLeave, std::function<void(int)> onArrow) {
    const HWND edit = AddEdit(TextWidth("9999999") + kFieldPadding, 0, std::move(onChange), std::move(onLeave));
    SendMessageW(edit, EM_SETLIMITTEXT, 9, 0);
    const HWND arrows = AddControl(UPDOWN_CLASSW, "", UDS_ARROWKEYS, [this] {
        return FormSize{kArrowWidth, FieldHeight()};
    });
    // The arrows' own number stays 0, between bounds that make "up" positive.
    SendMessageW(arrows, UDM_SETRANGE32, static_cast<WPARAM>(-kMostArrowSteps), kMostArrowSteps);
    SendMessageW(arrows, UDM_SETBUDDY, reinterpret_cast<WPARAM>(edit), 0);
    Last().onNotice = [onArrow = std::move(onArrow)](const NMHDR& notice) {
        if (notice.code == UDN_DELTAPOS) onArrow(reinterpret_cast<const NMUPDOWN&>(notice).iDelta);
        return LRESULT{1};
    };
    return {edit, arrows};
}

HWND Dialog::AddChoice(std::string_view widest, Procedure onChange) {
    const HWND choice =
        AddControl(L"COMBOBOX", "", WS_TABSTOP | WS_VSCROLL | CBS_DROPDOWNLIST, [this, widest = std::string(widest)] {
            return FormSize{TextWidth(widest) + kFieldPadding + kArrowWidth, FieldHeight()};
        });
    Last().listHeight = kListHeight;
    Last().onChange = std::move(onChange);
    return choice;
}

HWND Dialog::AddSlider(int lowest, int highest, int at, Procedure onChange) {
    const HWND slider = AddControl(TRACKBAR_CLASSW, "", WS_TABSTOP | TBS_HORZ | TBS_NOTICKS, [this] {
        return FormSize{kSliderWidth, FieldHeight()};
    });
    SendMessageW(slider, TBM_SETRANGEMIN, FALSE, lowest);
    SendMessageW(slider, TBM_SETRANGEMAX, FALSE, highest);
    SendMessageW(slider, TBM_SETPAGESIZE, 0, std::max(1, (highest - lowest) / 10));
    SendMessageW(slider, TBM_SETPOS, TRUE, at);
    Last().onChange = std::move(onChange);
    return slider;
}

HWND Dialog::AddTabs(const std::vector<std::string>& names, std::function<void(int)> onSelect) {
    const HWND tabs = AddControl(WC_TABCONTROLW, "", WS_TABSTOP | WS_CLIPSIBLINGS, [this] {
        return FormSize{0, LineHeight() + 6};
    });
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

HWND Dialog::AddTable(FormSize least, const std::vector<TableColumn>& columns, NoticeHandler onNotice, DWORD style) {
    const HWND table = AddControl(
        WC_LISTVIEWW, "", WS_TABSTOP | LVS_REPORT | LVS_SINGLESEL | LVS_SHOWSELALWAYS | style,
        [least] { return least; }, WS_EX_CLIENTEDGE);
    SendMessageW(table, LVM_SETEXTENDEDLISTVIEWSTYLE, 0, LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER | LVS_EX_INFOTIP);
    for (size_t i = 0; i < columns.size(); ++i) {
        std::wstring heading = WideFromUtf8(columns[i].heading);
        LVCOLUMNW column{};
        column.mask = LVCF_TEXT | LVCF_WIDTH | LVCF_SUBITEM;
        column.pszText = heading.data();
        column.cx = Pixels(columns[i].width);
        column.iSubItem = static_cast<int>(i);
        SendMessageW(table, LVM_INSERTCOLUMNW, i, reinterpret_cast<LPARAM>(&column));
        Last().growingColumns.push_back(columns[i].grows);
    }
    Last().onNotice = std::move(onNotice);
    return table;
}

HWND Dialog::AddProgressBar() {
    return AddControl(PROGRESS_CLASSW, "", PBS_MARQUEE, [] { return FormSize{kLeastButton, 14}; });
}

HWND Dialog::AddIcon() {
    const HWND icon = AddControl(L"STATIC", "", SS_ICON, [] { return FormSize{40, 40}; });
    SendMessageW(icon, STM_SETICON, static_cast<WPARAM>(GetClassLongPtrW(window_, GCLP_HICON)), 0);
    return icon;
}

HWND Dialog::AddCanvas(FormSize size, Painter paint) {
    const HWND canvas = AddControl(L"STATIC", "", SS_OWNERDRAW, [size] { return size; });
    Last().paint = std::move(paint);
    return canvas;
}

void Dialog::AlignWidths(const std::vector<HWND>& controls) {
    ++widthGroups_;
    for (const HWND control : controls) Find(control)->sameWidth = widthGroups_;
}

FormSize Dialog::TextSize(std::string_view text, HFONT font, int width) const {
    const HDC dc = GetDC(window_);
    const HGDIOBJ before = SelectObject(dc, font);
    RECT box{0, 0, width == 0 ? 0x7FFF : Pixels(width), 0};
    const std::wstring wide = WideFromUtf8(text.empty() ? " " : text);
    DrawTextW(dc, wide.c_str(), -1, &box, DT_CALCRECT | (width == 0 ? DT_SINGLELINE : DT_WORDBREAK));
    SelectObject(dc, before);
    ReleaseDC(window_, dc);
    return {text.empty() ? 0 : Units(box.right), Units(box.bottom)};
}

int Dialog::TextWidth(std::string_view text) const {
    return TextSize(text, font_).width;
}

int Dialog::LineHeight() const {
    return std::max(TextSize("", font_).height + 2, kLeastLine);
}

int Dialog::FieldHeight() const {
    return LineHeight() + 4;
}

void Dialog::MeasureControls() {
    std::vector<int> widths(widthGroups_ + 1, 0);
    for (Control& control : controls_) {
        control.measured = control.size();
        if (!control.growingColumns.empty()) {
            const int cut = std::clamp(control.measured.height - kLeastTable, 0, tableCut_);
            control.measured.height -= cut;
        }
        widths[control.sameWidth] = std::max(widths[control.sameWidth], control.measured.width);
    }
    for (Control& control : controls_) {
        if (control.sameWidth != 0) control.measured.width = widths[control.sameWidth];
    }
}

void EnableControl(HWND control, bool isEnabled, HWND heir) {
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
