#include "playback/song_category.h"

#include <gtest/gtest.h>

#include <array>

namespace hullrider {
namespace {

// In the order of Category: MIDI, MP3, tracker, favorites, radio.
using Shares = std::array<int32_t, 5>;

std::array<int32_t, 5> AsList(const SelectionWeights& weights) {
    return {weights.favorites, weights.midi, weights.mp3, weights.tracker, weights.radio};
}

Shares SharesOf(const SelectionWeights& weights) {
    Shares shares{};
    for (int32_t percent = 0; percent < 100; ++percent) {
        ++shares[static_cast<size_t>(CategoryAt(weights, percent))];
    }
    return shares;
}

TEST(SongCategory, SharesAreWholePerCentInTheirOrderAndTrackersAreTheRest) {
    struct Case {
        SelectionWeights weights;  // favorites, MIDI, MP3, tracker, radio
        Shares shares;
    };
    const Case cases[] = {{{50, 50, 50, 50, 0}, {25, 25, 25, 25, 0}},
                          {{50, 50, 50, 50, 20}, {23, 23, 22, 23, 9}},
                          {{0, 1, 2, 0, 0}, {34, 66, 0, 0, 0}},
                          {{0, 1, 1000, 0, 0}, {1, 99, 0, 0, 0}},
                          {{0, 0, 0, 0, 0}, {0, 0, 100, 0, 0}},
                          {{0, INT32_MAX, INT32_MAX, INT32_MAX, INT32_MAX}, {25, 25, 25, 0, 25}},
                          {{0, -50, 100, 50, 0}, {0, 50, 50, 0, 0}}};
    for (const Case& test : cases) EXPECT_EQ(SharesOf(test.weights), test.shares) << test.weights.mp3;
}

TEST(SongCategory, KindsThatCannotPlayLoseTheirWeightAndNoWeightAtAllGivesTheBuiltInMix) {
    struct Case {
        const char* what;
        SelectionWeights weights;
        CategoryCounts counts;  // MIDI, MP3, tracker, stations, candidates
        bool mixedMusic, excludeRadio;
        SelectionWeights expected;
    };
    const Case cases[] = {
        {"nothing missing", {5, 4, 3, 2, 1}, {9, 9, 9, 9, 9}, true, false, {5, 4, 3, 2, 1}},
        {"modules only", {5, 4, 3, 2, 1}, {0, 0, 9, 0, 9}, true, false, {5, 0, 0, 2, 0}},
        {"no list yet", {5, 4, 3, 2, 1}, {9, 9, 9, 9, 0}, true, false, {0, 4, 3, 2, 1}},
        {"no radio this time", {5, 4, 3, 2, 1}, {9, 9, 9, 9, 9}, true, true, {5, 4, 3, 2, 0}},
        {"all zero", {0, 0, 0, 0, 0}, {9, 9, 0, 0, 9}, true, false, {0, 50, 1, 0, 0}},
        {"all zero, with stations", {0, 0, 0, 0, 0}, {9, 9, 9, 9, 9}, true, false, {0, 50, 1, 1, 30}},
        {"all zero, no radio this time", {0, 0, 0, 0, 7}, {9, 9, 9, 9, 9}, true, true, {0, 50, 1, 1, 0}},
        {"no folders", {5, 4, 3, 2, 1}, {9, 9, 9, 9, 9}, false, false, {0, 1, 0, 0, 25}},
        {"no folders and no stations", {5, 4, 3, 2, 1}, {0, 9, 9, 0, 9}, false, false, {0, 1, 0, 0, 0}},
        {"empty library", {5, 4, 3, 2, 1}, {0, 0, 0, 0, 0}, true, false, {0, 0, 0, 0, 0}},
    };
    for (const Case& test : cases) {
        SCOPED_TRACE(test.what);
        SelectionState selection;
        selection.mixedMusic = test.mixedMusic;
        selection.excludeRadioOnce = test.excludeRadio;
        EXPECT_EQ(AsList(PreparedWeights(test.weights, selection, test.counts)), AsList(test.expected));
    }
}

TEST(SongCategory, TheRadioIsLeftOutOnceAndComesBackWithItsWeight) {
    SelectionState selection;
    const SelectionWeights weights{0, 1, 0, 0, 1000000};
    const CategoryCounts counts{9, 0, 0, 9, 1};
    Random random(3);
    const CategoryDraw first = PickCategory(weights, selection, counts, random);
    EXPECT_EQ(first.category, kRadioCategory);
    selection.savedRadioWeight = first.savedRadioWeight;
    selection.excludeRadioOnce = true;
    const CategoryDraw without = PickCategory(weights, selection, counts, random);
    EXPECT_EQ(without.category, kMidiCategory);
    EXPECT_EQ(without.weights.radio, 1000000);
}

TEST(SongCategory, WeightsBelowNothingPlayNothing) {
    Random random(3);
    EXPECT_EQ(PickCategory({0, -100, 50, 0, 0}, {}, {9, 9, 0, 0, 1}, random).category, kNoCategory);
}

}  // namespace
}  // namespace hullrider
