// The widths of a table's columns. Pure.
#pragma once

#include <string>
#include <vector>

namespace hullrider {

struct TableColumn {
    std::string heading;
    int width = 0;  // in units of 1/96 inch, before the table is enlarged
    bool grows = true;
};

// Fills `room` exactly: the columns that grow share what the others leave, in proportion to their widths, and keep at
// least `least` each.
std::vector<int> SpreadColumns(std::vector<int> widths, const std::vector<bool>& grows, int room, int least);

}  // namespace hullrider
