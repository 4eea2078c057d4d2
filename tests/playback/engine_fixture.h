// The engine on an audio library that only keeps time, and on a clock that the test moves.
#pragma once

#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "playback/picker_state.h"
#include "playback/play_next.h"
#include "playback/stream_slots.h"
#include "tests/console_capture.h"
#include "tests/platform/fake_clock.h"
#include "tests/playback/fake_audio.h"
#include "tests/playback/made_library.h"
#include "tests/temporary_folder.h"

namespace hullrider {

class EngineTest : public testing::Test {
protected:
    ~EngineTest() override { FreeAllStreams(app_.playback, app_.soundFonts); }

    // A song of the kind that its name says, in a file that holds `what`.
    Song Write(const std::string& name, const std::string& what) const {
        const int32_t type = name.ends_with(".xm") ? kTracker : name.ends_with(".mid") ? kMidi : kMp3;
        return MadeSong(folder_.Write(name, what), type);
    }

    std::optional<ConsoleCapture> console_{std::in_place};
    FakeClock clock_;
    TemporaryFolder folder_;
    AppState app_;
    PickerState picker_{4};
};

}  // namespace hullrider
