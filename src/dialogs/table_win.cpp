#include "dialogs/table_win.h"

#include <commctrl.h>

#include <algorithm>

#include "platform/text_win.h"

namespace hullrider {

namespace {

void SetCell(HWND table, int row, int column, const std::string& text) {
    std::wstring wide = WideFromUtf8(text);
    LVITEMW item{};
    item.mask = LVIF_TEXT;
    item.iItem = row;
    item.iSubItem = column;
    item.pszText = wide.data();
    SendMessageW(table, column == 0 ? LVM_INSERTITEMW : LVM_SETITEMW, 0, reinterpret_cast<LPARAM>(&item));
}

}  // namespace

void FillTable(HWND table, const std::vector<std::vector<std::string>>& rows) {
    const int selected = std::max(SelectedRow(table), 0);
    SendMessageW(table, WM_SETREDRAW, FALSE, 0);
    SendMessageW(table, LVM_DELETEALLITEMS, 0, 0);
    for (size_t i = 0; i < rows.size(); ++i) {
        for (size_t j = 0; j < rows[i].size(); ++j)
            SetCell(table, static_cast<int>(i), static_cast<int>(j), rows[i][j]);
    }
    if (selected < static_cast<int>(rows.size())) SelectRow(table, selected);
    SendMessageW(table, WM_SETREDRAW, TRUE, 0);
    InvalidateRect(table, nullptr, TRUE);
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

void ShowSortColumn(HWND table, int column, bool isDescending) {
    const auto header = reinterpret_cast<HWND>(SendMessageW(table, LVM_GETHEADER, 0, 0));
    const auto count = static_cast<int>(SendMessageW(header, HDM_GETITEMCOUNT, 0, 0));
    for (int i = 0; i < count; ++i) {
        HDITEMW item{};
        item.mask = HDI_FORMAT;
        SendMessageW(header, HDM_GETITEMW, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&item));
        item.fmt &= ~(HDF_SORTUP | HDF_SORTDOWN);
        if (i == column) item.fmt |= isDescending ? HDF_SORTDOWN : HDF_SORTUP;
        SendMessageW(header, HDM_SETITEMW, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&item));
    }
}

}  // namespace hullrider
