#include "input/controllers.h"

#include <SDL.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "tests/console_capture.h"

namespace hullrider {
namespace {

// A controller that exists only for SDL.
int PlugIn() {
    return SDL_JoystickAttachVirtual(SDL_JOYSTICK_TYPE_GAMECONTROLLER, SDL_CONTROLLER_AXIS_MAX,
                                     SDL_CONTROLLER_BUTTON_MAX, 0);
}

TEST(Controllers, ComeAndGoWhileThePlayerRuns) {
    ControllerSlots slots;
    OpenControllers(slots);
    const auto others = std::count_if(slots.begin(), slots.end(), [](const auto& slot) { return slot.controller; });
    if (SDL_WasInit(SDL_INIT_GAMECONTROLLER) == 0 || others != 0) GTEST_SKIP() << "controllers of this machine";
    const auto printed = [&] {
        ConsoleCapture console;
        for (int i = 0; i < 3; ++i) PumpControllers(slots);
        return console.Output();
    };
    EXPECT_EQ(printed(), "");
    ASSERT_GE(PlugIn(), 0);
    EXPECT_EQ(printed(), "Controller 0 connected.\n");
    EXPECT_NE(slots[0].controller, nullptr);
    EXPECT_EQ(printed(), "");
    ASSERT_GE(PlugIn(), 0);
    EXPECT_EQ(printed(), "Controller 1 connected.\n");

    SDL_JoystickDetachVirtual(0);
    EXPECT_EQ(printed(), "Controller 0 disconnected.\n");
    EXPECT_EQ(slots[0].controller, nullptr);
    EXPECT_NE(slots[1].controller, nullptr);
    ASSERT_GE(PlugIn(), 0);  // as the second joystick, into the free slot
    EXPECT_EQ(printed(), "Controller 0 connected.\n");
    CloseControllers(slots);
    EXPECT_EQ(slots[0].controller, nullptr);
    ASSERT_GE(PlugIn(), 0);
    OpenControllers(slots);
    EXPECT_EQ(printed(), "") << "what was there at the start is known when it is told of";
    CloseControllers(slots);
    while (SDL_NumJoysticks() > 0 && SDL_JoystickDetachVirtual(0) == 0) {
    }
}

}  // namespace
}  // namespace hullrider
