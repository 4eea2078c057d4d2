#include "dialogs/table_win.h"

#include "dialogs/table_columns.h"
#include "platform/text_win.h"

namespace hullrider {

namespace {

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

// Two fifths of the first color, on which black text is still easy to read.
COLORREF Blend(COLORREF color, COLORREF ground) {
    const auto mixed = [](int one, int other) { return (2 * one + 3 * other) / 5; };
    return RGB(mixed(GetRValue(color), GetRValue(ground)), mixed(GetGValue(color), GetGValue(ground)),
               mixed(GetBValue(color), GetBValue(ground)));
}

}  // namespace

void TextTable::Show(const Rows& rows) {
    if (rows == shown_) return;
    while (shown_.size() > rows.size()) {
        shown_.pop_back();
        SendMessageW(table_, LVM_DELETEITEM, shown_.size(), 0);
    }
    while (shown_.size() < rows.size()) {
        LVITEMW item{};
        item.iItem = static_cast<int>(shown_.size());
        SendMessageW(table_, LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item));
        shown_.emplace_back();
    }
    for (size_t row = 0; row < rows.size(); ++row) {
        shown_[row].resize(rows[row].size());
        for (size_t column = 0; column < rows[row].size(); ++column) {
            if (shown_[row][column] != rows[row][column]) SetCell(row, column, rows[row][column]);
        }
    }
    shown_ = rows;
}

void TextTable::SetCell(size_t row, size_t column, const std::string& text) const {
    std::wstring wide = WideFromUtf8(text);
    LVITEMW item{};
    item.iSubItem = static_cast<int>(column);
    item.pszText = wide.data();
    SendMessageW(table_, LVM_SETITEMTEXTW, row, reinterpret_cast<LPARAM>(&item));
}

int SelectedRow(HWND table) {
    return static_cast<int>(SendMessageW(table, LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED));
}

void SelectRow(HWND table, int row) {
    LVITEMW item{};
    item.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
    item.state = row < 0 ? 0 : item.stateMask;
    SendMessageW(table, LVM_SETITEMSTATE, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
    if (row >= 0) SendMessageW(table, LVM_ENSUREVISIBLE, static_cast<WPARAM>(row), FALSE);
}

void AlignRight(HWND table, int column) {
    LVCOLUMNW format{};
    format.mask = LVCF_FMT;
    format.fmt = LVCFMT_RIGHT;
    SendMessageW(table, LVM_SETCOLUMNW, static_cast<WPARAM>(column), reinterpret_cast<LPARAM>(&format));
}

void ScaleColumns(HWND table, int dpi, int dpiBefore) {
    for (int i = 0; i < CountColumns(table); ++i) {
        SetColumnWidth(table, i, MulDiv(WidthOfColumn(table, i), dpi, dpiBefore));
    }
}

void FitColumns(HWND table, const std::vector<bool>& grows, int least) {
    RECT client;
    GetClientRect(table, &client);
    std::vector<int> widths;
    for (int i = 0; i < CountColumns(table); ++i) widths.push_back(WidthOfColumn(table, i));
    widths = SpreadColumns(std::move(widths), grows, static_cast<int>(client.right), least);
    for (size_t i = 0; i < widths.size(); ++i) SetColumnWidth(table, static_cast<int>(i), widths[i]);
}

LRESULT ColorSelection(NMLVCUSTOMDRAW& draw) {
    if (draw.nmcd.dwDrawStage == CDDS_PREPAINT) return CDRF_NOTIFYITEMDRAW;
    const HWND table = draw.nmcd.hdr.hwndFrom;
    const bool isSelected =
        SendMessageW(table, LVM_GETITEMSTATE, draw.nmcd.dwItemSpec, LVIS_SELECTED) != 0 && GetFocus() != table;
    if (draw.nmcd.dwDrawStage != CDDS_ITEMPREPAINT || !isSelected) return CDRF_DODEFAULT;
    draw.clrText = GetSysColor(COLOR_WINDOWTEXT);
    draw.clrTextBk = Blend(GetSysColor(COLOR_HIGHLIGHT), GetSysColor(COLOR_WINDOW));
    draw.nmcd.uItemState &= ~static_cast<UINT>(CDIS_SELECTED);  // otherwise the system's gray takes their place
    return CDRF_DODEFAULT;
}

void ShowSortColumn(HWND table, int column, bool isDescending) {
    const auto header = reinterpret_cast<HWND>(SendMessageW(table, LVM_GETHEADER, 0, 0));
    for (int i = 0; i < CountColumns(table); ++i) {
        HDITEMW item{};
        item.mask = HDI_FORMAT;
        SendMessageW(header, HDM_GETITEMW, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&item));
        item.fmt &= ~(HDF_SORTUP | HDF_SORTDOWN);
        if (i == column) item.fmt |= isDescending ? HDF_SORTDOWN : HDF_SORTUP;
        SendMessageW(header, HDM_SETITEMW, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&item));
    }
}

}  // namespace hullrider
