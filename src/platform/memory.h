// Memory that the program no longer uses.
#pragma once

namespace hullrider {

// Gives free memory back to the system. Takes milliseconds: worth it after much was freed at once. Any thread.
void ReturnFreeMemory();

}  // namespace hullrider
