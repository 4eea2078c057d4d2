#include "display/panel_keys.h"

#include <algorithm>

#include "display/panel.h"
#include "state/command_ids.h"

namespace hullrider {

namespace {

constexpr double kVolumeStep = 0.05;
constexpr double kSongStepSec = 5.0;

}  // namespace

void PanelKeys::Enable(const ElementSet& enabled) {
    enabled_ = enabled;
    if (focus_ && !enabled_.test(IndexOf(*focus_))) Leave();
}

bool PanelKeys::Press(PanelKey key, const PanelModel& model, std::optional<PanelAction>& action) {
    switch (key) {
        case PanelKey::kForward:
            return Move(1);
        case PanelKey::kBack:
            return Move(-1);
        case PanelKey::kLeave:
            if (!focus_) return false;
            Leave();
            return true;
        case PanelKey::kAct:
            action = Act();
            return focus_.has_value();
        case PanelKey::kLess:
            action = Change(-1, model);
            return action.has_value();
        case PanelKey::kMore:
            action = Change(1, model);
            return action.has_value();
    }
    return false;
}

bool PanelKeys::Move(int step) {
    constexpr auto kCount = static_cast<int>(kElementCount);
    int at = focus_ ? static_cast<int>(IndexOf(*focus_)) : (step > 0 ? -1 : kCount);
    for (int tried = 0; tried < kCount; ++tried) {
        at = (at + step + kCount) % kCount;
        if (!enabled_.test(static_cast<size_t>(at))) continue;
        focus_ = static_cast<PanelElement>(at);
        return true;
    }
    return false;
}

std::optional<PanelAction> PanelKeys::Act() const {
    if (!focus_ || focus_ == PanelElement::kSongBar) return std::nullopt;
    return PanelAction{focus_ == PanelElement::kVolume ? kMuteCommand : CommandOf(*focus_)};
}

std::optional<PanelAction> PanelKeys::Change(int step, const PanelModel& model) const {
    if (focus_ == PanelElement::kVolume) {
        return PanelAction{kSetVolumeCommand,
                           std::clamp(static_cast<double>(model.volume) + step * kVolumeStep, 0.0, 1.0)};
    }
    if (focus_ != PanelElement::kSongBar || model.lengthSec <= 0.0) return std::nullopt;
    return PanelAction{kSeekCommand, std::clamp(model.position + step * kSongStepSec / model.lengthSec, 0.0, 1.0)};
}

}  // namespace hullrider
