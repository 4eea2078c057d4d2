#include "display/panel_mouse.h"

#include <gtest/gtest.h>

#include "state/command_ids.h"

namespace hullrider {
namespace {

DesignPoint MiddleOf(PanelElement element) {
    const Box box = BoxOf(element);
    return {box.x + box.width / 2.0F, box.y + box.height / 2.0F};
}

class PanelMouseTest : public testing::Test {
protected:
    PanelMouseTest() { mouse_.Enable(ElementSet().set()); }

    PanelMouse mouse_;
    const DesignPoint next_ = MiddleOf(PanelElement::kNext);
    const DesignPoint shuffle_ = MiddleOf(PanelElement::kShuffle);
    const DesignPoint knob_ = MiddleOf(PanelElement::kVolume);
};

TEST_F(PanelMouseTest, EveryKeyActsWhenItIsLetGoWhereItWasPressed) {
    for (size_t i = 0; i < IndexOf(PanelElement::kVolume); ++i) {
        const auto key = static_cast<PanelElement>(i);
        mouse_.Move(MiddleOf(key));
        EXPECT_EQ(mouse_.Hover(), key);
        EXPECT_FALSE(mouse_.Press(MiddleOf(key), 0.5));
        EXPECT_EQ(mouse_.Pressed(), key);
        EXPECT_EQ(mouse_.Release(MiddleOf(key)), (PanelAction{CommandOf(key), 0.0}));
        EXPECT_FALSE(mouse_.Pressed());
    }
}

TEST_F(PanelMouseTest, AKeyThatTheHandLeavesDoesNotAct) {
    mouse_.Press(next_, 0.5);
    mouse_.Move(shuffle_);
    EXPECT_FALSE(mouse_.Pressed());
    EXPECT_FALSE(mouse_.Hover()) << "while one is held, no other answers";
    EXPECT_FALSE(mouse_.Release(shuffle_));
    mouse_.Press(next_, 0.5);
    mouse_.LoseCapture();
    EXPECT_FALSE(mouse_.Release(next_));
    mouse_.Leave();
    EXPECT_FALSE(mouse_.Hover());
}

TEST_F(PanelMouseTest, WhatIsNotEnabledDoesNotAnswer) {
    mouse_.Enable(ElementSet().set(IndexOf(PanelElement::kNext)));
    mouse_.Move(shuffle_);
    EXPECT_FALSE(mouse_.Hover());
    mouse_.Press(shuffle_, 0.5);
    EXPECT_FALSE(mouse_.Holds());
    EXPECT_FALSE(mouse_.Release(shuffle_));
    EXPECT_FALSE(mouse_.Wheel(1.0, 0.5));
    EXPECT_FALSE(mouse_.Press(MiddleOf(PanelElement::kSongBar), 0.5));
}

TEST_F(PanelMouseTest, TheKnobFollowsTheHandEvenOutsideAndStopsAtItsEnds) {
    struct Drag {
        float x, y;
        double volume;
    };
    mouse_.Press(knob_, 0.5);
    for (const Drag& drag : {Drag{0.0F, 0.0F, 0.5}, Drag{11.0F, 0.0F, 0.6}, Drag{0.0F, -22.0F, 0.7},
                             Drag{-900.0F, 0.0F, 0.0}, Drag{0.0F, -900.0F, 1.0}, Drag{-5.5F, 5.5F, 0.4}}) {
        const auto action = mouse_.Move({knob_.x + drag.x, knob_.y + drag.y});
        ASSERT_TRUE(action);
        EXPECT_EQ(action->command, kSetVolumeCommand);
        EXPECT_NEAR(action->value, drag.volume, 1e-6);
        EXPECT_EQ(mouse_.Pressed(), PanelElement::kVolume);
    }
    EXPECT_FALSE(mouse_.Release(next_));
    EXPECT_FALSE(mouse_.Move(knob_)) << "let go, it stays";
}

TEST_F(PanelMouseTest, TheWheelIsVolumeWithinItsRange) {
    EXPECT_NEAR(mouse_.Wheel(1.0, 0.5)->value, 0.55, 1e-9);
    EXPECT_NEAR(mouse_.Wheel(-0.5, 0.5)->value, 0.475, 1e-9);
    EXPECT_EQ(mouse_.Wheel(3.0, 0.95)->value, 1.0);
    EXPECT_EQ(mouse_.Wheel(-3.0, 0.05)->value, 0.0);
}

TEST_F(PanelMouseTest, AClickInTheSongBarNamesThePlaceInTheSong) {
    const Box track = SongTrack();
    for (const double place : {0.0, 0.25, 1.0}) {
        const float x = track.x + track.width * static_cast<float>(place);
        const auto action = mouse_.Press({x, track.y + 2.0F}, 0.5);
        ASSERT_TRUE(action);
        EXPECT_EQ(action->command, kSeekCommand);
        EXPECT_NEAR(action->value, place, 1e-5);
        EXPECT_FALSE(mouse_.Release({x, track.y + 2.0F}));
    }
}

}  // namespace
}  // namespace hullrider
