// What this process costs. Linux.
#pragma once

#include <cstdint>
#include <functional>

namespace hullrider {

struct ProcessLoad {
    double cpuMsPerSec = 0.0;
    double wakeUpsPerSec = 0.0;  // voluntary context switches of all threads
};

// Over so many seconds of real time, while the calling thread does `meanwhile` (nothing, when it is empty). The
// caller's own work and waking is not counted.
ProcessLoad MeasureLoad(double seconds, const std::function<void()>& meanwhile = {});

}  // namespace hullrider
