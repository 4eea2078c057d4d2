// hullrider-radio: the player without a window. It prints what it plays, takes commands on its standard input, and ends
// with "quit" or Ctrl+C, saving as the window does.
#include <atomic>
#include <chrono>

#include "app/command_lines.h"
#include "app/front.h"
#include "app/heartbeat.h"
#include "app/player.h"
#include "app/shutdown.h"
#include "app/startup.h"
#include "audio/output_choice.h"
#include "platform/console.h"
#include "platform/post.h"
#include "playback/play_next.h"
#include "playback/stream_loudness.h"

namespace hullrider {
namespace {

using Clock = std::chrono::steady_clock;

std::atomic<bool> interrupted{false};  // asks RunUntilTheEnd to return

void RunUntilTheEnd(Player& player) {
    const Clock::time_point start = Clock::now();
    Clock::time_point nextSlowPoll = start;
    ConsoleInput input;
    while (!interrupted) {
        const std::optional<std::string> line = input.WaitForLine(UntilDue(player.state.playback));
        if (line) RunConsoleLine(player, *line);
        PollPlayer(player);
        if (Clock::now() >= nextSlowPoll) {
            PollSlowly(player);
            nextSlowPoll = Clock::now() + kSlowPollPeriod;
        }
        SampleLoudness(player.state.playback);
        const std::chrono::duration<double> elapsed = Clock::now() - start;
        if (player.options.forSec && elapsed.count() >= *player.options.forSec) return;
    }
}

int Run(const RunOptions& options) {
    OnInterrupt([] { interrupted = true; });
    Player player;
    player.options = options;
    player.endProgram = [] { interrupted = true; };
    SetPostWaker(ConsoleInput::EndWait);
    StartPlayer(player);
    PrintLine("Output: " + OutputDescription());
    RunUntilTheEnd(player);
    SaveAndShutdown(player);
    return 0;
}

}  // namespace
}  // namespace hullrider

int main(int argc, char* argv[]) {
    const auto tell = [](const std::string& failure) { hullrider::PrintErrorLine(failure); };
    return hullrider::RunFront({argv + 1, argv + argc}, hullrider::Run, tell);
}
