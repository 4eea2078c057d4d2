#include "playback/song_category.h"

#include <array>
#include <utility>

namespace hullrider {

namespace {

// The built-in mix for a player without any weight.
constexpr int32_t kDefaultMidi = 50, kDefaultMp3 = 1, kDefaultTracker = 1, kDefaultRadio = 30;
// The mix for a player without music folders.
constexpr int32_t kUnmixedMidi = 1, kUnmixedRadio = 25;

int64_t SumOf(const SelectionWeights& weights) {
    return int64_t{weights.midi} + weights.mp3 + weights.tracker + weights.favorites + weights.radio;
}

void TakeDefaults(SelectionWeights& weights, const CategoryCounts& counts, bool withRadio) {
    if (counts.mp3 > 0) weights.mp3 = kDefaultMp3;
    if (counts.midi > 0) weights.midi = kDefaultMidi;
    if (counts.tracker > 0) weights.tracker = kDefaultTracker;
    if (counts.stations > 0 && withRadio) weights.radio = kDefaultRadio;
}

}  // namespace

Category CategoryAt(const SelectionWeights& weights, int32_t percent) {
    const int64_t sum = SumOf(weights);
    if (sum == 0) return kTrackerCategory;
    const std::array<std::pair<int32_t, Category>, 4> order{{{weights.midi, kMidiCategory},
                                                             {weights.mp3, kMp3Category},
                                                             {weights.favorites, kFavoritesCategory},
                                                             {weights.radio, kRadioCategory}}};
    float cumulative = 0.0F;
    for (const auto& [weight, category] : order) {
        cumulative += static_cast<float>(weight) / static_cast<float>(sum) * 100.0F;
        if (cumulative > static_cast<float>(percent)) return category;
    }
    return kTrackerCategory;
}

SelectionWeights PreparedWeights(const SelectionWeights& weights, const SelectionState& selection,
                                 const CategoryCounts& counts) {
    SelectionWeights prepared = weights;
    const bool withRadio = !selection.excludeRadioOnce;
    if (!withRadio || counts.stations < 1) prepared.radio = 0;
    if (counts.mp3 < 1) prepared.mp3 = 0;
    if (counts.midi < 1) prepared.midi = 0;
    if (counts.tracker < 1) prepared.tracker = 0;
    if (counts.lastCandidateCount < 1) prepared.favorites = 0;
    if (!selection.mixedMusic && withRadio) {
        prepared.midi = kUnmixedMidi;
        prepared.mp3 = prepared.tracker = prepared.favorites = 0;
        if (counts.stations > 0) prepared.radio = kUnmixedRadio;
    }
    if (SumOf(prepared) == 0) TakeDefaults(prepared, counts, withRadio);
    return prepared;
}

CategoryDraw PickCategory(const SelectionWeights& weights, const SelectionState& selection,
                          const CategoryCounts& counts, Random& random) {
    CategoryDraw draw;
    draw.savedRadioWeight = selection.savedRadioWeight.value_or(weights.radio);
    draw.weights = PreparedWeights(weights, selection, counts);
    if (SumOf(draw.weights) < 0) return draw;
    draw.category = CategoryAt(draw.weights, static_cast<int32_t>(random.Index(100)));
    if (selection.excludeRadioOnce) draw.weights.radio = draw.savedRadioWeight;
    return draw;
}

}  // namespace hullrider
