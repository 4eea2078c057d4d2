// GDI+, whose headers want min and max: NOMINMAX takes the macros away, so they are given the functions.
#pragma once

#include <windows.h>
//
#include <objidl.h>

#include <algorithm>

namespace Gdiplus {
using std::max;
using std::min;
}  // namespace Gdiplus

#include <gdiplus.h>
