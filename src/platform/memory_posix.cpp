#include "platform/memory.h"

#include <cstdlib>  // defines __GLIBC__ on glibc

#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace hullrider {

void ShareOneHeap() {
#ifdef __GLIBC__
    mallopt(M_ARENA_MAX, 1);
#endif
}

void ReturnFreeMemory() {
#ifdef __GLIBC__
    malloc_trim(0);
#endif
}

}  // namespace hullrider
