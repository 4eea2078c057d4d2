// Stop and start of the music while the sound device refuses.
#include "app/audio_start.h"

#include <gtest/gtest.h>

#include "app/commands.h"
#include "app/heartbeat.h"
#include "app/startup.h"
#include "audio/bass.h"
#include "platform/message_box.h"
#include "playback/stream_slots.h"
#include "tests/console_capture.h"
#include "tests/temporary_folder.h"

namespace hullrider {
namespace {

Player* starting = nullptr;
int boxes = 0;

// Whatever keys and timers do while the error box waits.
void PressEverything(std::string_view) {
    ++boxes;
    for (const int32_t command : {kNextSongCommand, kStartCommand, kPlayPauseCommand, kPreviousSongCommand}) {
        RunCommand(*starting, command);
    }
    PollPlayer(*starting);
    EXPECT_EQ(CurrentHandle(starting->state.playback), 0U);
    EXPECT_TRUE(starting->stopped);
}

TEST(AudioStart, NothingPlaysWhileItsErrorBoxWaits) {
    const TemporaryFolder folder;
    Player player;
    player.started = player.stopped = true;
    player.state.shell.dataDirectory = folder.Text();
    player.options.output.kind = OutputKind::kNull;
    starting = &player;
    boxes = 0;
    SetErrorBoxHandler(PressEverything);
    const ConsoleCapture console;
    ASSERT_TRUE(BASS_Init(0, 44100, 0, nullptr, nullptr));  // so that it cannot be opened a second time
    EXPECT_TRUE(StartAudioAgain(player));
    EXPECT_EQ(boxes, 1);
    EXPECT_FALSE(player.stopped);
    SetErrorBoxHandler(nullptr);
    BASS_Free();
}

}  // namespace
}  // namespace hullrider
