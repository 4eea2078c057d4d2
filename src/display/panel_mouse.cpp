#include "display/panel_mouse.h"

#include <algorithm>
#include <cmath>

#include "state/command_ids.h"

namespace hullrider {

namespace {

constexpr double kUnitsFromSilentToFull = 110.0;
constexpr double kVolumePerNotch = 0.05;
constexpr float kStillUnits = 1.5F;  // a hand does not hold quite still while it clicks

double PlaceInSong(DesignPoint place) {
    const Box track = SongTrack();
    return std::clamp(static_cast<double>((place.x - track.x) / track.width), 0.0, 1.0);
}

}  // namespace

std::optional<PanelAction> PanelMouse::Move(DesignPoint place) {
    hover_ = EnabledAt(place);
    last_ = place;
    if (held_ != PanelElement::kVolume) return std::nullopt;
    // Up and to the right is louder, as one turns a knob without looking.
    const float moved = place.x - pressedAt_.x - (place.y - pressedAt_.y);
    const bool isStill = std::abs(place.x - pressedAt_.x) + std::abs(place.y - pressedAt_.y) < kStillUnits;
    if (isStill && !isTurned_) return std::nullopt;
    isTurned_ = true;
    const double volume = volumeAtPress_ + static_cast<double>(moved) / kUnitsFromSilentToFull;
    return PanelAction{kSetVolumeCommand, std::clamp(volume, 0.0, 1.0)};
}

void PanelMouse::Press(DesignPoint place, double volume) {
    held_ = EnabledAt(place);
    hover_ = held_;
    pressedAt_ = last_ = place;
    volumeAtPress_ = volume;
    isTurned_ = false;
}

std::optional<PanelAction> PanelMouse::Release(DesignPoint place) {
    const std::optional<PanelElement> held = held_;
    held_.reset();
    hover_ = EnabledAt(place);
    last_ = place;
    if (held == PanelElement::kSongBar) return PanelAction{kSeekCommand, PlaceInSong(place)};
    if (!held || hover_ != held || (held == PanelElement::kVolume && isTurned_)) return std::nullopt;
    if (held == PanelElement::kVolume) return PanelAction{kMuteCommand};
    return PanelAction{CommandOf(*held)};
}

std::optional<PanelAction> PanelMouse::Wheel(double notches, double volume) const {
    if (!enabled_.test(IndexOf(PanelElement::kVolume))) return std::nullopt;
    return PanelAction{kSetVolumeCommand, std::clamp(volume + notches * kVolumePerNotch, 0.0, 1.0)};
}

std::optional<double> PanelMouse::PointedInSong() const {
    const bool isThere = held_ ? held_ == PanelElement::kSongBar : hover_ == PanelElement::kSongBar;
    return isThere ? std::optional(PlaceInSong(last_)) : std::nullopt;
}

// While something is held, nothing else answers.
std::optional<PanelElement> PanelMouse::Hover() const {
    return held_ && held_ != hover_ ? std::nullopt : hover_;
}

std::optional<PanelElement> PanelMouse::Pressed() const {
    const bool stays = held_ == PanelElement::kVolume || held_ == PanelElement::kSongBar || held_ == hover_;
    return stays ? held_ : std::nullopt;
}

std::optional<PanelElement> PanelMouse::EnabledAt(DesignPoint place) const {
    const std::optional<PanelElement> element = ElementAt(place);
    return element && enabled_.test(IndexOf(*element)) ? element : std::nullopt;
}

}  // namespace hullrider
