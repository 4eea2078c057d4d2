// A table that shows rows of texts as they are now. Only what differs is set anew, so that nothing flickers, and what
// is selected and scrolled to stays. UI thread.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace hullrider {

class TextTable {
public:
    using Rows = std::vector<std::vector<std::string>>;

    TextTable() = default;
    explicit TextTable(HWND table) : table_(table) {}  // with its columns, without rows

    void AlignRight(int column) const;  // not the first one
    void Show(const Rows& rows);

private:
    void SetCell(size_t row, size_t column, const std::string& text) const;

    HWND table_ = nullptr;
    Rows shown_;
};

}  // namespace hullrider
