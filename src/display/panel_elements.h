// The panel's elements: everything that is drawn, redrawn and clicked by itself. One row of a table tells all of an
// element: where it is, how it is painted and when anew, its tooltip and its command. UI thread.
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
    kKind,
    kAlbum,
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

// The command that a click gives, a CommandId; 0 for an element that only shows something.
int32_t CommandOf(PanelElement element);

// The element that a click at a place of the design space means.
std::optional<PanelElement> ElementAt(DesignPoint place);

// The elements whose command makes sense now.
ElementSet EnabledElements(const PanelModel& model);

// What a click does, as UTF-8; empty for an element without a command.
std::string TooltipOf(PanelElement element, const PanelModel& model);

// The elements to repaint when one look takes the place of another, except for lines that scroll.
ElementSet ElementsToRepaint(const PanelLook& before, const PanelLook& after);

// Paints the element within its box, over the bare faceplate.
void PaintElement(Brush& brush, const PanelScale& scale, PanelElement element, const PanelLook& look);

}  // namespace hullrider
