#include "dialogs/table_win.h"

#include <commctrl.h>

#include <algorithm>

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

void FitFirstColumn(HWND table, int least) {
    RECT box;
    GetWindowRect(table, &box);
    const auto dpi = GetDpiForWindow(table);
    int left =
        box.right - box.left - GetSystemMetricsForDpi(SM_CXVSCROLL, dpi) - 2 * GetSystemMetricsForDpi(SM_CXEDGE, dpi);
    for (int i = 1; i < CountColumns(table); ++i) left -= WidthOfColumn(table, i);
    SetColumnWidth(table, 0, std::max(left, least));
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
