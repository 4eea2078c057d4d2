// Rows of a Dialog's table. UI thread.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace hullrider {

// Replaces all rows; a row has a text for each column. The selection goes back to the same index, if there is one;
// the first row is selected when none was.
void FillTable(HWND table, const std::vector<std::vector<std::string>>& rows);

int SelectedRow(HWND table);          // -1: none
void SelectRow(HWND table, int row);  // and scrolls to it; -1: none
void AlignRight(HWND table, int column);

// Marks the heading that the rows are sorted by.
void ShowSortColumn(HWND table, int column, bool isDescending);

}  // namespace hullrider
