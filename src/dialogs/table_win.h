// Rows and columns of a Dialog's table. UI thread.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace hullrider {

// A table that shows rows of texts as they are now. Only what differs is set anew, so that nothing flickers, and what
// is selected and scrolled to stays.
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

// The widths follow the scale of the monitor.
void ScaleColumns(HWND table, int dpi, int dpiBefore);

// The first column takes what the others leave, at least `least` pixels, with room for the scroll bar that may come.
void FitFirstColumn(HWND table, int least);

// Marks the heading that the rows are sorted by.
void ShowSortColumn(HWND table, int column, bool isDescending);

}  // namespace hullrider
