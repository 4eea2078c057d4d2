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

}  // namespace hullrider
