// What the audiobook library holds.
#pragma once

#include <cstdint>

namespace hullrider {

struct AudiobookState {
    int32_t seriesCount = 0;
    int32_t bookCount = 0;
    int32_t fileCount = 0;
    double totalSec = 0.0;
};

}  // namespace hullrider
