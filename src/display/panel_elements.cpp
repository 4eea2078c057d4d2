#include "display/panel_elements.h"

#include <array>
#include <cmath>

#include "display/controls.h"
#include "display/gauges.h"
#include "display/lcd.h"
#include "display/panel_look.h"
#include "state/command_ids.h"

namespace hullrider {

namespace {

struct ElementRow {
    PanelElement element;
    Box box;
    void (*paint)(Brush& brush, const Frame& frame, const PanelLook& look, ControlState state);
    // Whether the element looks different, apart from the state that all controls show; null: never.
    bool (*differs)(const PanelLook& before, const PanelLook& after) = nullptr;
    std::string (*tooltip)(const PanelModel& model) = nullptr;
    int32_t command = 0;
    bool (*isEnabled)(const PanelModel& model) = nullptr;  // null: always
};

using Model = PanelModel;

// Painters: a key with a fixed icon, and a part of the display that needs only the model.
template <Icon icon>
void Key(Brush& brush, const Frame& frame, const PanelLook&, ControlState state) {
    PaintKey(brush, frame, {icon}, state);
}

template <void (*paint)(Brush&, const Frame&, const PanelModel&)>
void Shows(Brush& brush, const Frame& frame, const PanelLook& look, ControlState) {
    paint(brush, frame, look.model);
}

template <void (*paint)(Brush&, const Frame&, const PanelLook&)>
void ShowsLook(Brush& brush, const Frame& frame, const PanelLook& look, ControlState) {
    paint(brush, frame, look);
}

void PlayPauseKey(Brush& brush, const Frame& frame, const PanelLook& look, ControlState state) {
    PaintKey(brush, frame, {look.model.transport == Transport::kPlaying ? Icon::kPause : Icon::kPlay}, state);
}

void ShuffleKey(Brush& brush, const Frame& frame, const PanelLook& look, ControlState state) {
    PaintKey(brush, frame, {Icon::kShuffle, look.model.shuffle}, state);
}

void FilterKey(Brush& brush, const Frame& frame, const PanelLook& look, ControlState state) {
    PaintKey(brush, frame, {Icon::kFilter, IsFiltered(look.model)}, state);
}

void RangeSign(Brush& brush, const Frame& frame, const PanelLook& look, ControlState state) {
    PaintRange(brush, frame, look.model, state);
}

void VolumeKnob(Brush& brush, const Frame& frame, const PanelLook& look, ControlState state) {
    PaintVolume(brush, frame, look.model, state);
}

void Meter(Brush& brush, const Frame& frame, const PanelLook& look, ControlState) {
    PaintMeter(brush, frame, look.meter);
}

// One of these parts of the model differs.
template <auto... parts>
bool Differ(const PanelLook& before, const PanelLook& after) {
    return ((before.model.*parts != after.model.*parts) || ...);
}

bool StatusDiffers(const PanelLook& before, const PanelLook& after) {
    const bool isNews = before.volumeIsNews || after.volumeIsNews;
    return before.volumeIsNews != after.volumeIsNews ||
           Differ<&Model::transport, &Model::isMuted, &Model::isBuffering>(before, after) ||
           (isNews && Differ<&Model::volume>(before, after));
}

bool SongBarDiffers(const PanelLook& before, const PanelLook& after) {
    return before.pointed != after.pointed ||
           Differ<&Model::transport, &Model::windowFrom, &Model::windowTo, &Model::position>(before, after);
}

bool SongPositionDiffers(const PanelLook& before, const PanelLook& after) {
    return before.pointed != after.pointed || Differ<&Model::songPosition>(before, after);
}

bool MeterDiffers(const PanelLook& before, const PanelLook& after) {
    return before.meter != after.meter;
}

std::string ShuffleTooltip(const PanelModel& model) {
    if (model.relaxed == Relaxation::kHistory) return "Shuffle is on; all songs of this kind were heard lately";
    return model.shuffle ? "Shuffle is on; a click plays the songs in order"
                         : "The songs play in order; a click shuffles";
}

// What is played although the filter is set.
std::string UnfilteredText(const PanelModel& model) {
    switch (model.range) {
        case PlayRange::kPlaylist:
            return "All songs of the playlist are played";
        case PlayRange::kStation:
            return "All that the station has is played";
        case PlayRange::kQueue:
            return "All queued songs are played";
        case PlayRange::kLibrary:
            break;
    }
    return "All songs are played, in order";
}

std::string FilterState(const PanelModel& model) {
    const bool favorites = model.filter == FavoriteFilter::kFavorites;
    if (model.filter == FavoriteFilter::kNone) return "All songs are played";
    if (model.filterEffect == FilterEffect::kNotHere) return UnfilteredText(model);
    if (model.filterEffect == FilterEffect::kNothingPasses) {
        return favorites ? "No favorite can be played, so all songs are played"
                         : "Only favorites can be played, so they are";
    }
    return favorites ? "Only favorites are played" : "Favorites are not played";
}

std::string FilterTooltip(const PanelModel& model) {
    switch (model.filter) {
        case FavoriteFilter::kFavorites:
            return FilterState(model) + "; a click leaves favorites out";
        case FavoriteFilter::kOthers:
            return FilterState(model) + "; a click plays all songs";
        case FavoriteFilter::kNone:
            break;
    }
    return FilterState(model) + "; a click plays favorites only";
}

std::string VolumeTooltip(const PanelModel& model) {
    const std::string volume = "Volume " + std::to_string(std::lround(model.volume * 100.0F)) + " %";
    return volume + (model.isMuted ? ", muted: a click ends that (M)" : "; a click mutes (M)");
}

std::string RangeTooltip(const PanelModel& model) {
    return model.range == PlayRange::kLibrary ? "The whole library is played" : "Back to the whole library";
}

bool CanSeek(const PanelModel& model) {
    return IsOn(model) && model.canSeek;
}

constexpr Box KeyBox(float x, float width) {
    return {x, 115.0F, width, 23.0F};
}

// In the order of PanelElement.
constexpr std::array<ElementRow, kElementCount> kElements{{
    {.element = PanelElement::kPrevious,
     .box = KeyBox(10.5F, 32.0F),
     .paint = Key<Icon::kPrevious>,
     .tooltip = [](const Model&) -> std::string { return "Previous song (Left)"; },
     .command = kPreviousSongCommand},
    {.element = PanelElement::kPlayPause,
     .box = KeyBox(46.5F, 37.0F),
     .paint = PlayPauseKey,
     .differs = Differ<&Model::transport>,
     .tooltip = [](const Model& m) -> std::string {
         return m.transport == Transport::kPlaying ? "Pause (Space)" : "Play (Space)";
     },
     .command = kPlayPauseCommand},
    {.element = PanelElement::kNext,
     .box = KeyBox(87.5F, 31.0F),
     .paint = Key<Icon::kNext>,
     .tooltip = [](const Model& m) { return "Next song (Right)" + (m.next.empty() ? "" : ": " + m.next); },
     .command = kNextSongCommand},
    {.element = PanelElement::kPlaylistBack,
     .box = KeyBox(132.0F, 26.0F),
     .paint = Key<Icon::kBack>,
     .tooltip = [](const Model&) -> std::string { return "Previous playlist"; },
     .command = kPreviousPlaylistCommand},
    {.element = PanelElement::kPlaylistForward,
     .box = KeyBox(162.0F, 26.0F),
     .paint = Key<Icon::kForward>,
     .tooltip = [](const Model&) -> std::string { return "Next playlist"; },
     .command = kNextPlaylistCommand},
    {.element = PanelElement::kShuffle,
     .box = KeyBox(202.0F, 26.0F),
     .paint = ShuffleKey,
     .differs = Differ<&Model::shuffle>,
     .tooltip = ShuffleTooltip,
     .command = kShuffleCommand},
    {.element = PanelElement::kFilter,
     .box = KeyBox(232.0F, 26.0F),
     .paint = FilterKey,
     .differs = Differ<&Model::filter, &Model::filterEffect>,
     .tooltip = FilterTooltip,
     .command = kFavoritesFilterCommand},
    {.element = PanelElement::kFavoriteDown,
     .box = KeyBox(272.0F, 26.0F),
     .paint = Key<Icon::kFewer>,
     .tooltip = [](const Model&) -> std::string { return "Play this song less often (Ctrl+-)"; },
     .command = kFavoriteDownCommand,
     .isEnabled = IsOn},
    {.element = PanelElement::kFavoriteUp,
     .box = KeyBox(302.0F, 26.0F),
     .paint = Key<Icon::kMore>,
     .tooltip = [](const Model&) -> std::string { return "Play this song more often (Ctrl+=)"; },
     .command = kFavoriteUpCommand,
     .isEnabled = IsOn},
    {.element = PanelElement::kExit,
     .box = KeyBox(438.0F, 28.0F),
     .paint = Key<Icon::kPower>,
     .tooltip = [](const Model&) -> std::string { return "Exit"; },
     .command = kExitCommand},
    {.element = PanelElement::kVolume,
     .box = {414.0F, 17.0F, 76.0F, 76.0F},
     .paint = VolumeKnob,
     .differs = Differ<&Model::volume, &Model::isMuted>,
     .tooltip = VolumeTooltip,
     .command = kSetVolumeCommand},
    {.element = PanelElement::kSongBar,
     .box = {68.0F, 87.0F, 286.0F, 13.0F},
     .paint = ShowsLook<PaintSongBar>,
     .differs = SongBarDiffers,
     .tooltip = [](const Model&) -> std::string { return "The song, and the part of it that is played: go there"; },
     .command = kSeekCommand,
     .isEnabled = CanSeek},
    {.element = PanelElement::kRange,
     .box = {360.0F, 72.5F, 36.0F, 12.0F},
     .paint = RangeSign,
     .differs = Differ<&Model::range>,
     .tooltip = RangeTooltip,
     .command = kMusicHomeCommand,
     .isEnabled = [](const Model& m) { return m.range != PlayRange::kLibrary; }},
    {.element = PanelElement::kKind,
     .box = {24.0F, 17.0F, 46.0F, 12.0F},
     .paint = Shows<PaintKind>,
     .differs = Differ<&Model::kind>},
    {.element = PanelElement::kUpperLine,
     .box = {76.0F, 16.0F, 206.0F, 14.0F},
     .paint = ShowsLook<PaintUpperLine>,
     .differs = [](const PanelLook& a, const PanelLook& b) { return UpperLine(a) != UpperLine(b); }},
    {.element = PanelElement::kStatus,
     .box = {290.0F, 16.0F, 106.0F, 14.0F},
     .paint = ShowsLook<PaintStatus>,
     .differs = StatusDiffers},
    {.element = PanelElement::kTitle,
     .box = {20.0F, 30.0F, 264.0F, 28.0F},
     .paint = ShowsLook<PaintTitle>,
     .differs = Differ<&Model::transport, &Model::title>},
    {.element = PanelElement::kClock,
     .box = {288.0F, 30.0F, 110.0F, 28.0F},
     .paint = Shows<PaintClock>,
     .differs = Differ<&Model::transport, &Model::timePlayed>},
    {.element = PanelElement::kSoundFont,
     .box = {138.0F, 59.0F, 146.0F, 11.0F},
     .paint = Shows<PaintSoundFont>,
     .differs = Differ<&Model::soundFont>},
    {.element = PanelElement::kPlaylist,
     .box = {24.0F, 59.0F, 66.0F, 11.0F},
     .paint = Shows<PaintPlaylist>,
     .differs = Differ<&Model::playlist>},
    {.element = PanelElement::kFavorite,
     .box = {92.0F, 59.0F, 44.0F, 11.0F},
     .paint = Shows<PaintFavorite>,
     .differs = Differ<&Model::transport, &Model::favoriteCount>},
    {.element = PanelElement::kTimeLeft,
     .box = {290.0F, 59.0F, 106.0F, 11.0F},
     .paint = Shows<PaintTimeLeft>,
     .differs = Differ<&Model::timeLeft>},
    {.element = PanelElement::kMeter, .box = {24.0F, 72.5F, 260.0F, 12.0F}, .paint = Meter, .differs = MeterDiffers},
    {.element = PanelElement::kModes,
     .box = {290.0F, 72.5F, 70.0F, 12.0F},
     .paint = Shows<PaintModes>,
     .differs = Differ<&Model::shuffle, &Model::filter, &Model::filterEffect, &Model::relaxed>},
    {.element = PanelElement::kSongPosition,
     .box = {24.0F, 88.0F, 42.0F, 11.0F},
     .paint = ShowsLook<PaintSongPosition>,
     .differs = SongPositionDiffers},
    {.element = PanelElement::kSongLeft,
     .box = {354.0F, 88.0F, 42.0F, 11.0F},
     .paint = Shows<PaintSongLeft>,
     .differs = Differ<&Model::songLeft>},
}};

constexpr bool IsInOrder() {
    for (size_t i = 0; i < kElementCount; ++i) {
        if (IndexOf(kElements[i].element) != i) return false;
    }
    return true;
}
static_assert(IsInOrder());

const ElementRow& RowOf(PanelElement element) {
    return kElements[IndexOf(element)];
}

bool IsEnabled(const ElementRow& row, const PanelModel& model) {
    return row.command != 0 && (row.isEnabled == nullptr || row.isEnabled(model));
}

ControlState StateOf(const ElementRow& row, const PanelLook& look) {
    return {IsEnabled(row, look.model), look.hover == row.element, look.pressed == row.element,
            look.focus == row.element};
}

bool IsInKnob(const Box& box, DesignPoint place) {
    const float radius = box.width / 2.0F;
    return std::hypot(place.x - box.x - radius, place.y - box.y - radius) <= radius;
}

}  // namespace

Box BoxOf(PanelElement element) {
    return RowOf(element).box;
}

Box SongTrack() {
    constexpr float kInset = 3.0F;  // room for the mark at either end
    const Box box = BoxOf(PanelElement::kSongBar);
    return {box.x + kInset, box.y, box.width - 2.0F * kInset, box.height};
}

int32_t CommandOf(PanelElement element) {
    return RowOf(element).command;
}

std::optional<PanelElement> ElementAt(DesignPoint place) {
    for (const ElementRow& row : kElements) {
        if (row.command == 0 || !row.box.Contains(place.x, place.y)) continue;
        if (row.element == PanelElement::kVolume && !IsInKnob(row.box, place)) return std::nullopt;
        return row.element;
    }
    return std::nullopt;
}

ElementSet EnabledElements(const PanelModel& model) {
    ElementSet elements;
    for (const ElementRow& row : kElements) elements.set(IndexOf(row.element), IsEnabled(row, model));
    return elements;
}

std::string TooltipOf(PanelElement element, const PanelModel& model) {
    const ElementRow& row = RowOf(element);
    return row.tooltip == nullptr ? std::string() : row.tooltip(model);
}

ElementSet ElementsToRepaint(const PanelLook& before, const PanelLook& after) {
    ElementSet elements;
    for (const ElementRow& row : kElements) {
        const bool differs =
            StateOf(row, before) != StateOf(row, after) || (row.differs != nullptr && row.differs(before, after));
        elements.set(IndexOf(row.element), differs);
    }
    return elements;
}

void PaintElement(Brush& brush, const PanelScale& scale, PanelElement element, const PanelLook& look) {
    const ElementRow& row = RowOf(element);
    const Frame frame(scale, row.box);
    row.paint(brush, frame, look, StateOf(row, look));
    if (look.focus == element) PaintFocus(brush, frame, element == PanelElement::kVolume);
}

}  // namespace hullrider
