// Memory that the program has freed.
#pragma once

namespace hullrider {

// Gives what is free back to the system. Worth its milliseconds after much was freed at once. Any thread.
void ReturnFreeMemory();

}  // namespace hullrider
