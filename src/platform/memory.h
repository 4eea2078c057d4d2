// The heap, kept small.
#pragma once

namespace hullrider {

// One heap for all threads instead of one for each, so that memory freed by one is used by the others. Call it before
// the first thread starts.
void ShareOneHeap();

// Gives free memory back to the system. Takes milliseconds: worth it after much was freed at once. Any thread.
void ReturnFreeMemory();

}  // namespace hullrider
