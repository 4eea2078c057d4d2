#include "platform/memory.h"

#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace hullrider {

void ReturnFreeMemory() {
#ifdef __GLIBC__
    malloc_trim(0);
#endif
}

}  // namespace hullrider
