#include "dialogs/text_table_win.h"

#include <commctrl.h>

#include "platform/text_win.h"

namespace hullrider {

void TextTable::AlignRight(int column) const {
    LVCOLUMNW changed{};
    changed.mask = LVCF_FMT;
    changed.fmt = LVCFMT_RIGHT;
    SendMessageW(table_, LVM_SETCOLUMNW, static_cast<WPARAM>(column), reinterpret_cast<LPARAM>(&changed));
}

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

}  // namespace hullrider
