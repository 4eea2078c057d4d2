// The panel's elements: everything that is drawn, redrawn and clicked on its own. One row of a table defines an
// element: its box, how and when it is painted, its tooltip and its command. UI thread.
#pragma once

#include <bitset>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "display/panel_layout.h"

namespace hullrider {

struct Brush;
struct PanelLook;
struct PanelModel;

enum class PanelElement : uint8_t {
    kPrevious,
    kPlayPause,
    kNext,
    kPlaylistBack,
    kPlaylistForward,
    kShuffle,
    kFilter,
    kFavoriteDown,
    kFavoriteUp,
    kExit,
    kVolume,
    kSongBar,
    kRange,
    kKind,
    kUpperLine,
    kStatus,
    kTitle,
    kClock,
    kSoundFont,
    kPlaylist,
    kFavorite,
    kTimeLeft,
    kMeter,
    kModes,
    kSongPosition,
    kSongLeft,
    kCount,
};
inline constexpr auto kElementCount = static_cast<size_t>(PanelElement::kCount);

using ElementSet = std::bitset<kElementCount>;

inline constexpr size_t IndexOf(PanelElement element) {
    return static_cast<size_t>(element);
}

// The box of an element in the design space; it holds all that the element draws.
Box BoxOf(PanelElement element);

// The bar within kSongBar's box, from end to end of the song.
Box SongTrack();

// The CommandId of a click; 0 for an element that only shows something.
int32_t CommandOf(PanelElement element);

// The element that a click at that point hits.
std::optional<PanelElement> ElementAt(DesignPoint place);

// The elements whose command is possible now.
ElementSet EnabledElements(const PanelModel& model);

// What a click does, as UTF-8; empty for an element without a command.
std::string TooltipOf(PanelElement element, const PanelModel& model);

// The elements to repaint when the look changes, except for scrolling lines.
ElementSet ElementsToRepaint(const PanelLook& before, const PanelLook& after);

// Paints the element within its box, over the bare faceplate.
void PaintElement(Brush& brush, const PanelScale& scale, PanelElement element, const PanelLook& look);

}  // namespace hullrider
