#include "platform/stop_scope.h"

namespace hullrider {

namespace {

thread_local const std::stop_token* current = nullptr;

}  // namespace

StopScope::StopScope(const std::stop_token* stop) : outer_(current) {
    current = stop;
}

StopScope::~StopScope() {
    current = outer_;
}

std::stop_token CurrentStopToken() {
    return current == nullptr ? std::stop_token() : *current;
}

}  // namespace hullrider
