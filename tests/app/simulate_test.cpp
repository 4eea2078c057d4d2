#include "app/simulate.h"

#include "tests/app/whole_player.h"

namespace hullrider {
namespace {

class SimulateTest : public WholePlayerTest {
protected:
    SimulateTest() { WriteMusic(); }
};

TEST_F(SimulateTest, TellsOfTheConfiguredMusicAndWritesNothing) {
    folder_.Write("music/Album/tone.mp3", ToneWav(400.0, 20.0));
    ConfigureMusic();
    RunOptions options;
    options.dataDir = folder_.At("data");
    options.simulate = 300;
    const ConsoleCapture quiet;
    const std::string text = SimulationText(options);
    EXPECT_NE(text.find("Simulated 300 songs of a library of 4."), std::string::npos) << text;
    // Only the tone can be played. The other kinds are promised and give way to it.
    EXPECT_NE(text.find("Audio files             100.00 %"), std::string::npos) << text;
    EXPECT_NE(text.find("Repeats within the last 20 songs: 299"), std::string::npos) << text;
    EXPECT_NE(text.find("Mean play time: 18.0 s, by the lengths of 4 files"), std::string::npos) << text;
    EXPECT_NE(text.find("Songs an hour: 200.0"), std::string::npos) << text;
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder_.Path() / "data"), {}), 1);
}

}  // namespace
}  // namespace hullrider
