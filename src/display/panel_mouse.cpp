#include "display/panel_mouse.h"

#include <algorithm>

#include "state/command_ids.h"

namespace hullrider {

namespace {

constexpr double kUnitsFromSilentToFull = 110.0;
constexpr double kVolumePerNotch = 0.05;

double PlaceInSong(DesignPoint place) {
    const Box track = SongTrack();
    return std::clamp(static_cast<double>((place.x - track.x) / track.width), 0.0, 1.0);
}

}  // namespace

std::optional<PanelAction> PanelMouse::Move(DesignPoint place) {
    hover_ = EnabledAt(place);
    if (held_ != PanelElement::kVolume) return std::nullopt;
    // Up and to the right is louder, as one turns a knob without looking.
    const float moved = place.x - pressedAt_.x - (place.y - pressedAt_.y);
    const double volume = volumeAtPress_ + static_cast<double>(moved) / kUnitsFromSilentToFull;
    return PanelAction{kSetVolumeCommand, std::clamp(volume, 0.0, 1.0)};
}

std::optional<PanelAction> PanelMouse::Press(DesignPoint place, double volume) {
    held_ = EnabledAt(place);
    hover_ = held_;
    pressedAt_ = place;
    volumeAtPress_ = volume;
    if (held_ != PanelElement::kSongBar) return std::nullopt;
    return PanelAction{kSeekCommand, PlaceInSong(place)};
}

std::optional<PanelAction> PanelMouse::Release(DesignPoint place) {
    const std::optional<PanelElement> held = held_;
    held_.reset();
    hover_ = EnabledAt(place);
    if (!held || hover_ != held || held == PanelElement::kVolume || held == PanelElement::kSongBar) return std::nullopt;
    return PanelAction{CommandOf(*held)};
}

std::optional<PanelAction> PanelMouse::Wheel(double notches, double volume) const {
    if (!enabled_.test(IndexOf(PanelElement::kVolume))) return std::nullopt;
    return PanelAction{kSetVolumeCommand, std::clamp(volume + notches * kVolumePerNotch, 0.0, 1.0)};
}

// While something is held, nothing else answers.
std::optional<PanelElement> PanelMouse::Hover() const {
    return held_ && held_ != hover_ ? std::nullopt : hover_;
}

std::optional<PanelElement> PanelMouse::Pressed() const {
    const bool stays = held_ == PanelElement::kVolume || held_ == hover_;
    return stays ? held_ : std::nullopt;
}

std::optional<PanelElement> PanelMouse::EnabledAt(DesignPoint place) const {
    const std::optional<PanelElement> element = ElementAt(place);
    return element && enabled_.test(IndexOf(*element)) ? element : std::nullopt;
}

}  // namespace hullrider
