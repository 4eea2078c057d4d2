// hullrider-radio: the player without a window. It prints what it plays, takes commands on its standard input, and ends
// with "quit" or Ctrl+C, saving as the window does.
#include <atomic>
#include <chrono>

#include "app/front.h"
#include "app/player.h"
#include "app/shutdown.h"
#include "app/startup.h"
#include "audio/output_choice.h"
#include "platform/console.h"
#include "playback/loudness.h"
#include "playback/play_next.h"

namespace hullrider {
namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::milliseconds kPollPeriod{100};
constexpr std::chrono::milliseconds kMeterPeriod{250};

std::atomic<bool> interrupted{false};

// True when the player is to end.
bool RunCommand(Player& player, const std::string& line) {
    if (line == "quit") return true;
    if (line == "NEXT_SONG") {
        PrintLine("Next Song...");
        PlayNext(player.state, player.draws);
    }
    return false;
}

void RunUntilTheEnd(Player& player) {
    const Clock::time_point start = Clock::now();
    Clock::time_point nextLevel = start;
    ConsoleInput input;
    while (!interrupted) {
        const std::optional<std::string> line = input.WaitForLine(kPollPeriod);
        if (line && RunCommand(player, *line)) return;
        PollPlayer(player);
        if (Clock::now() >= nextLevel) {
            SampleLoudness(player.state.playback);
            nextLevel = Clock::now() + kMeterPeriod;
        }
        const std::chrono::duration<double> elapsed = Clock::now() - start;
        if (player.options.forSec && elapsed.count() >= *player.options.forSec) return;
    }
}

int Run(const RunOptions& options) {
    OnInterrupt([] { interrupted = true; });
    Player player;
    player.options = options;
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
