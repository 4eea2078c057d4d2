// The calling thread's priority. A thread that sound waits for must not be starved by another program, such as a game
// that uses every processor.
#pragma once

namespace hullrider {

enum class Urgency {
    kAhead,  // decodes ahead of playback
    kSound,  // mixes: anything late is lost
};

// As far as the system allows; a refusal is ignored.
void RaiseThreadPriority(Urgency urgency);

// For work that nobody waits for: the thread yields to all others, also at the disk where the system supports it.
void LowerThreadPriority();

// Undoes LowerThreadPriority. False when the system does not allow it.
bool RestoreThreadPriority();

}  // namespace hullrider
