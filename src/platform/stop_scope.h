// Which worker the calling thread works for. Any thread.
#pragma once

#include <stop_token>

namespace hullrider {

// While it lives, the calling thread works for the owner of the token, which must outlive it. Null: for nobody.
class StopScope {
public:
    explicit StopScope(const std::stop_token* stop);
    ~StopScope();
    StopScope(const StopScope&) = delete;
    StopScope& operator=(const StopScope&) = delete;

private:
    const std::stop_token* const outer_;
};

// On a thread that is not a worker, a token that never requests a stop.
std::stop_token CurrentStopToken();

}  // namespace hullrider
