#include <sys/resource.h>
#include <unistd.h>

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

bool RestoreThreadPriority() {
#ifdef __linux__
    const int usual = getpriority(PRIO_PROCESS, static_cast<id_t>(getpid()));  // of the main thread
    return getpriority(PRIO_PROCESS, 0) <= usual || setpriority(PRIO_PROCESS, 0, usual) == 0;
#else
    return true;
#endif
}

}  // namespace hullrider
