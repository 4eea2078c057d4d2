// GDI+. Its headers use min and max; NOMINMAX removes the macros, so they get the functions.
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
