#include "platform/memory.h"

namespace hullrider {

// The system's heap gives large pieces back by itself.
void ReturnFreeMemory() {}

}  // namespace hullrider
