// What the calling thread is worth beside others. One that sound waits for must not be starved by a program beside this
// one, such as a game that uses every processor.
#pragma once

namespace hullrider {

enum class Urgency {
    kAhead,  // works ahead of what is heard
    kSound,  // what it is late with is not heard
};

// As far as the system allows it; there is nothing to be done about a refusal.
void RaiseThreadPriority(Urgency urgency);

// For work that nobody waits for: everything else goes before the calling thread, at the disk too where the system can.
void LowerThreadPriority();

}  // namespace hullrider
