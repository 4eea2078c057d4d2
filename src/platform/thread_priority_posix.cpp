#include <sys/resource.h>

#include "platform/thread_priority.h"

namespace hullrider {

// On Linux niceness belongs to a thread; 0 means the calling one.
void RaiseThreadPriority(Urgency urgency) {
#ifdef __linux__
    constexpr int kAheadNice = -5, kSoundNice = -11;
    setpriority(PRIO_PROCESS, 0, urgency == Urgency::kSound ? kSoundNice : kAheadNice);
#else
    static_cast<void>(urgency);
#endif
}

void LowerThreadPriority() {
#ifdef __linux__
    constexpr int kLastNice = 19;
    setpriority(PRIO_PROCESS, 0, kLastNice);
#endif
}

}  // namespace hullrider
