// Rows and columns of a Dialog's table. UI thread.
#pragma once

#include <windows.h>

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

// The first column takes the width that the others leave, at least `least` pixels, with room for a scroll bar.
void FitFirstColumn(HWND table, int least);

// Marks the heading that the rows are sorted by.
void ShowSortColumn(HWND table, int column, bool isDescending);

}  // namespace hullrider
