#include "platform/memory.h"

#include <cstdlib>  // defines __GLIBC__ on glibc

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
