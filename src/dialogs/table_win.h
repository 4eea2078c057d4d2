// Rows and columns of a Dialog's table. UI thread.
#pragma once

#include <windows.h>

#include <commctrl.h>

#include <string>
#include <vector>

namespace hullrider {

// A table of texts. Show sets only the cells that differ: nothing flickers, and the selection and scroll position stay.
class TextTable {
public:
    using Rows = std::vector<std::vector<std::string>>;

    TextTable() = default;
    explicit TextTable(HWND table) : table_(table) {}  // with its columns, without rows

    void Show(const Rows& rows);

private:
    void SetCell(size_t row, size_t column, const std::string& text) const;

    HWND table_ = nullptr;
    Rows shown_;
};

int SelectedRow(HWND table);              // -1: none
void SelectRow(HWND table, int row);      // and scrolls to it; -1: none
void AlignRight(HWND table, int column);  // not the first one

// Adapts the widths to the monitor's scale.
void ScaleColumns(HWND table, int dpi, int dpiBefore);

// Makes the columns fill the table, as SpreadColumns does; `least` in pixels.
void FitColumns(HWND table, const std::vector<bool>& grows, int least);

// For NM_CUSTOMDRAW: makes the selected row stand out while the table lacks the focus.
LRESULT ColorSelection(NMLVCUSTOMDRAW& draw);

// Marks the heading that the rows are sorted by.
void ShowSortColumn(HWND table, int column, bool isDescending);

}  // namespace hullrider
