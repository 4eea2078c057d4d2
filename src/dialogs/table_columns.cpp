#include "dialogs/table_columns.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace hullrider {

std::vector<int> SpreadColumns(std::vector<int> widths, const std::vector<bool>& grows, int room, int least) {
    int growing = 0;
    for (size_t i = 0; i < widths.size(); ++i) {
        if (grows[i]) {
            growing += widths[i];
        } else {
            room -= widths[i];
        }
    }
    // Each takes its share of what is left, so that the last one gets the rest of all roundings.
    for (size_t i = 0; i < widths.size(); ++i) {
        if (!grows[i]) continue;
        const int share = static_cast<int>(int64_t{room} * widths[i] / std::max(growing, 1));
        growing -= widths[i];
        widths[i] = std::max(share, least);
        room -= widths[i];
    }
    return widths;
}

}  // namespace hullrider
