#include "platform/memory.h"

#include <cstdlib>  // defines __GLIBC__, where that is the library

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
