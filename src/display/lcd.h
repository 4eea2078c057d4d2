// What the display shows: one painter for each of its elements. Each paints within its frame, over the bare glass.
#pragma once

#include "display/brush.h"
#include "display/controls.h"
#include "display/panel_look.h"

namespace hullrider {

void PaintKind(Brush& brush, const Frame& frame, const PanelModel& model);
void PaintUpperLine(Brush& brush, const Frame& frame, const PanelLook& look);
void PaintTitle(Brush& brush, const Frame& frame, const PanelLook& look);
void PaintStatus(Brush& brush, const Frame& frame, const PanelLook& look);
void PaintClock(Brush& brush, const Frame& frame, const PanelModel& model);
void PaintSoundFont(Brush& brush, const Frame& frame, const PanelModel& model);
void PaintPlaylist(Brush& brush, const Frame& frame, const PanelModel& model);
void PaintFavorite(Brush& brush, const Frame& frame, const PanelModel& model);
void PaintTimeLeft(Brush& brush, const Frame& frame, const PanelModel& model);
void PaintModes(Brush& brush, const Frame& frame, const PanelModel& model);
void PaintRange(Brush& brush, const Frame& frame, const PanelModel& model, ControlState state);
void PaintSongPosition(Brush& brush, const Frame& frame, const PanelLook& look);
void PaintSongLeft(Brush& brush, const Frame& frame, const PanelModel& model);

// The album; in the last seconds, and while the mouse is on the key for the next song, the title that comes next.
std::string UpperLine(const PanelLook& look);

// How many pixels a name has scrolled to the left; 0 for one that fits its box.
int32_t UpperLineOffset(Brush& brush, const Frame& frame, const PanelLook& look, LineMotion motion);
int32_t TitleOffset(Brush& brush, const Frame& frame, const PanelModel& model, LineMotion motion);

}  // namespace hullrider
