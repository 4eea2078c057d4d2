// For what other threads bring about: true as soon as the claim holds, false when it does not within twenty seconds.
#pragma once

#include <chrono>
#include <thread>

namespace hullrider {

template <typename Claim>
bool Eventually(const Claim& claim) {
    using namespace std::chrono_literals;
    for (int i = 0; i < 2000 && !claim(); ++i) std::this_thread::sleep_for(10ms);
    return claim();
}

}  // namespace hullrider
