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
        mouse_.Press(MiddleOf(key), 0.5);
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
    mouse_.Press(MiddleOf(PanelElement::kSongBar), 0.5);
    EXPECT_FALSE(mouse_.PointedInSong());
    EXPECT_FALSE(mouse_.Release(MiddleOf(PanelElement::kSongBar)));
}

TEST_F(PanelMouseTest, TheKnobFollowsTheHandEvenOutsideAndStopsAtItsEnds) {
    struct Drag {
        float x, y;
        double volume;
    };
    mouse_.Press(knob_, 0.5);
    EXPECT_FALSE(mouse_.Move({knob_.x + 0.5F, knob_.y + 0.5F})) << "a click that trembles";
    for (const Drag& drag : {Drag{11.0F, 0.0F, 0.6}, Drag{0.0F, -22.0F, 0.7}, Drag{-900.0F, 0.0F, 0.0},
                             Drag{0.0F, -900.0F, 1.0}, Drag{-5.5F, 5.5F, 0.4}, Drag{0.0F, 0.0F, 0.5}}) {
        const auto action = mouse_.Move({knob_.x + drag.x, knob_.y + drag.y});
        ASSERT_TRUE(action);
        EXPECT_EQ(action->command, kSetVolumeCommand);
        EXPECT_NEAR(action->value, drag.volume, 1e-6);
        EXPECT_EQ(mouse_.Pressed(), PanelElement::kVolume);
    }
    EXPECT_FALSE(mouse_.Release(knob_)) << "turned and turned back, it was not clicked";
    EXPECT_FALSE(mouse_.Move({knob_.x + 20.0F, knob_.y})) << "let go, it stays";
    mouse_.Press(knob_, 0.5);
    mouse_.Move({knob_.x + 0.5F, knob_.y});
    EXPECT_EQ(mouse_.Release(knob_), (PanelAction{kMuteCommand}));
}

TEST_F(PanelMouseTest, TheWheelIsVolumeWithinItsRange) {
    EXPECT_NEAR(mouse_.Wheel(1.0, 0.5)->value, 0.55, 1e-9);
    EXPECT_NEAR(mouse_.Wheel(-0.5, 0.5)->value, 0.475, 1e-9);
    EXPECT_EQ(mouse_.Wheel(3.0, 0.95)->value, 1.0);
    EXPECT_EQ(mouse_.Wheel(-3.0, 0.05)->value, 0.0);
}

TEST_F(PanelMouseTest, TheSongBarIsDraggedAndTheSongGoesThereWhenItIsLetGo) {
    const Box track = SongTrack();
    const auto at = [&](double place) {
        return DesignPoint{track.x + track.width * static_cast<float>(place), track.y + 2.0F};
    };
    mouse_.Move(at(0.25));
    EXPECT_NEAR(*mouse_.PointedInSong(), 0.25, 1e-5);
    for (const double place : {0.0, 0.25, 1.0}) {
        mouse_.Press(at(0.5), 0.5);
        EXPECT_FALSE(mouse_.Move(at(place))) << "not while it is held";
        EXPECT_NEAR(*mouse_.PointedInSong(), place, 1e-5);
        const auto action = mouse_.Release(at(place));
        ASSERT_TRUE(action);
        EXPECT_EQ(action->command, kSeekCommand);
        EXPECT_NEAR(action->value, place, 1e-5);
    }
    // The hand may leave the bar, and the song.
    mouse_.Press(at(0.5), 0.5);
    mouse_.Move({-90.0F, 140.0F});
    EXPECT_EQ(mouse_.PointedInSong(), 0.0);
    EXPECT_EQ(mouse_.Pressed(), PanelElement::kSongBar);
    EXPECT_EQ(mouse_.Release({900.0F, 140.0F}), (PanelAction{kSeekCommand, 1.0}));
    EXPECT_FALSE(mouse_.PointedInSong());

    mouse_.Press(at(0.5), 0.5);
    mouse_.LoseCapture();
    EXPECT_FALSE(mouse_.Release(at(0.5)));
    mouse_.Press(next_, 0.5);
    mouse_.Move(at(0.5));
    EXPECT_FALSE(mouse_.PointedInSong()) << "a key is held";
}

}  // namespace
}  // namespace hullrider
