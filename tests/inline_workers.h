// While it lives, a worker does its job before its start returns, so that what a test asks for has happened then.
#pragma once

#include "platform/worker.h"

namespace hullrider {

struct InlineWorkers {
    InlineWorkers() { RunWorkersInline(true); }
    ~InlineWorkers() { RunWorkersInline(false); }
    InlineWorkers(const InlineWorkers&) = delete;
    InlineWorkers& operator=(const InlineWorkers&) = delete;
};

}  // namespace hullrider
