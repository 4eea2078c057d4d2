#include <windows.h>

#include "platform/thread_priority.h"

namespace hullrider {

void RaiseThreadPriority(Urgency urgency) {
    SetThreadPriority(GetCurrentThread(),
                      urgency == Urgency::kSound ? THREAD_PRIORITY_TIME_CRITICAL : THREAD_PRIORITY_ABOVE_NORMAL);
}

void LowerThreadPriority() {
    SetThreadPriority(GetCurrentThread(), THREAD_MODE_BACKGROUND_BEGIN);
}

bool RestoreThreadPriority() {
    // Fails where the thread has its usual priority.
    SetThreadPriority(GetCurrentThread(), THREAD_MODE_BACKGROUND_END);
    return true;
}

}  // namespace hullrider
