#include "display/panel_keys.h"

#include <gtest/gtest.h>

#include <set>

#include "display/panel.h"
#include "state/command_ids.h"

namespace hullrider {
namespace {

class PanelKeysTest : public testing::Test {
protected:
    PanelKeysTest() {
        model_.transport = Transport::kPlaying;
        model_.canSeek = true;
        model_.lengthSec = 100.0;
        model_.position = 0.5;
        model_.volume = 0.5F;
        model_.range = PlayRange::kPlaylist;
        keys_.Enable(EnabledElements(model_));
    }

    std::optional<PanelAction> Press(PanelKey key, bool isUsed = true) {
        std::optional<PanelAction> action;
        EXPECT_EQ(keys_.Press(key, model_, action), isUsed);
        return action;
    }

    void FocusOn(PanelElement element) {
        for (size_t i = 0; i <= kElementCount && keys_.Focus() != element; ++i) Press(PanelKey::kForward);
        ASSERT_EQ(keys_.Focus(), element);
    }

    PanelModel model_;
    PanelKeys keys_;
};

TEST_F(PanelKeysTest, TheFocusGoesOverEveryEnabledElementInBothDirectionsAndAround) {
    for (const PanelKey key : {PanelKey::kForward, PanelKey::kBack}) {
        std::set<PanelElement> seen;
        for (size_t i = 0; i < EnabledElements(model_).count(); ++i) {
            Press(key);
            seen.insert(*keys_.Focus());
        }
        EXPECT_EQ(seen.size(), EnabledElements(model_).count());
        const PanelElement last = *keys_.Focus();
        Press(key);
        EXPECT_NE(keys_.Focus(), last);
        EXPECT_TRUE(seen.contains(*keys_.Focus()));
    }
    Press(PanelKey::kLeave);
    EXPECT_FALSE(keys_.Focus());
    keys_.Enable({});
    Press(PanelKey::kForward, false);
}

TEST_F(PanelKeysTest, WithoutAFocusTheKeysAreTheWindows) {
    for (const PanelKey key : {PanelKey::kAct, PanelKey::kLess, PanelKey::kMore, PanelKey::kLeave}) Press(key, false);
    FocusOn(PanelElement::kNext);
    EXPECT_FALSE(Press(PanelKey::kMore, false));
}

TEST_F(PanelKeysTest, ActingIsAClick) {
    for (const PanelElement element : {PanelElement::kNext, PanelElement::kShuffle, PanelElement::kRange}) {
        FocusOn(element);
        EXPECT_EQ(Press(PanelKey::kAct), (PanelAction{CommandOf(element)}));
    }
    FocusOn(PanelElement::kVolume);
    EXPECT_EQ(Press(PanelKey::kAct), (PanelAction{kMuteCommand}));
    FocusOn(PanelElement::kSongBar);
    EXPECT_FALSE(Press(PanelKey::kAct));
}

TEST_F(PanelKeysTest, LessAndMoreTurnTheVolumeAndMoveInTheSongWithinTheirEnds) {
    FocusOn(PanelElement::kVolume);
    EXPECT_NEAR(Press(PanelKey::kMore)->value, 0.55, 1e-6);
    model_.volume = 0.02F;
    EXPECT_EQ(Press(PanelKey::kLess), (PanelAction{kSetVolumeCommand, 0.0}));
    FocusOn(PanelElement::kSongBar);
    EXPECT_NEAR(Press(PanelKey::kLess)->value, 0.45, 1e-6);
    model_.position = 0.99;
    EXPECT_EQ(Press(PanelKey::kMore), (PanelAction{kSeekCommand, 1.0}));
    model_.canSeek = false;
    keys_.Enable(EnabledElements(model_));
    EXPECT_FALSE(keys_.Focus()) << "it is possible no longer";
}

}  // namespace
}  // namespace hullrider
