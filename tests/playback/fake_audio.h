// An audio library without sound, in place of audio/bass.h's own: channels that only keep time and volume. A song's
// file holds its length in seconds, its level, 0 to 32768, and where it is silent; a file that holds no numbers cannot
// be played. A SoundFont's file holds the word "font".
#pragma once

#include <chrono>
#include <cstddef>
#include <string>

#include "state/playback_state.h"

namespace hullrider {

// What a file that the fake plays holds. A level below 0 is that of a stream that does not answer.
std::string FakeSong(double lengthSec, int level = 10'000, double quietFromSec = 0.0, double quietToSec = 0.0);

// While it lives, whoever opens a file whose path holds the text waits.
class FakeSlowDrive {
public:
    explicit FakeSlowDrive(const std::string& text);
    ~FakeSlowDrive();
    FakeSlowDrive(const FakeSlowDrive&) = delete;
    FakeSlowDrive& operator=(const FakeSlowDrive&) = delete;
};

// The stream at a URL. One that was never set does not answer.
struct FakeStation {
    bool answers = true;
    bool stalls = false;  // nothing arrives any more
    bool isConnected = true;
    int level = 10'000;
    std::chrono::milliseconds opensIn{0};
    std::string title = {};
};
void SetFakeStation(const std::string& url, const FakeStation& station);
void ForgetFakeStations();

// How much there is: nothing that play-next leaves behind may add up.
size_t FakeChannels();
size_t FakeFonts();

// The volumes of all that plays, added up.
float FakeLoudness();

// The volume that a stream has now, and the one that it slides to.
float FakeVolume(StreamSlot handle);
float FakeSlideTarget(StreamSlot handle);

}  // namespace hullrider
