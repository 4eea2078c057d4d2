#include "platform/memory.h"

namespace hullrider {

// The system's heap is one already.
void ShareOneHeap() {}

// The system's heap returns large blocks by itself.
void ReturnFreeMemory() {}

}  // namespace hullrider
