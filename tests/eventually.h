// For what other threads bring about: true as soon as the claim holds, false when it does not within twenty seconds.
#pragma once

#include <chrono>
#include <thread>

namespace hullrider {

template <typename Claim>
bool Eventually(const Claim& claim, std::chrono::milliseconds step = std::chrono::milliseconds(10)) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    while (!claim()) {
        if (std::chrono::steady_clock::now() >= end) return false;
        std::this_thread::sleep_for(step);
    }
    return true;
}

}  // namespace hullrider
